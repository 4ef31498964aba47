#!/usr/bin/env python3
"""Counts what one request costs the host, in figures that other load does not change.

usage: request_cost.py HOST MODULE MIRN_SCENARIO [--only NAME]... [--keep FOLDER]

For each kind of request: processor instructions and allocations (callgrind), bytes that the process copies itself (dhat),
and system calls by name (strace), of some hundred requests over one connection, one after the other. With --keep the
profiles stay in FOLDER, for callgrind_annotate. Needs valgrind and strace.
"""

import argparse
import collections
import contextlib
import http.client
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from callgrind_profile import Profile  # noqa: E402
from host_throughput import machine, VOLUMES  # noqa: E402

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "system"))
from local_host import LocalHost  # noqa: E402

PATH = "/api/v1/" + VOLUMES
WARM_UP, ROUNDS, COUNTED = 20, 6, 600
KINDS = ["kept answer", "304", "each answer made anew", "/healthz"]


class Client:
    """One connection to the host, which asks the same again and again."""

    def __init__(self, host, kind):
        self.connection = http.client.HTTPConnection("127.0.0.1", host.port, timeout=120)
        self.path, self.headers = ("/healthz", {}) if kind == "/healthz" else (PATH, {})
        if kind != "/healthz":
            self.headers["Authorization"] = "Bearer " + host.token()
        if kind == "304":
            self.headers["If-None-Match"] = self.ask().headers["ETag"]
        self.status = 304 if kind == "304" else 200

    def ask(self):
        self.connection.putrequest("GET", self.path, skip_accept_encoding=True)
        for name, value in self.headers.items():
            self.connection.putheader(name, value)
        self.connection.endheaders()
        answer = self.connection.getresponse()
        answer.read()
        return answer

    def ask_often(self, count):
        for _ in range(count):
            status = self.ask().status
            if status != self.status:
                raise AssertionError(f"answered {status} instead of {self.status}")


@contextlib.contextmanager
def serving(arguments, kind, launcher):
    with tempfile.TemporaryDirectory(prefix="mirn-") as name:
        folder = pathlib.Path(name)
        (folder / "scenario.json").write_text(machine(arguments.scenario))
        options = ["--max-kept", "0"] if kind == "each answer made anew" else []
        host = LocalHost(arguments.host, arguments.module, folder, options, launcher=launcher,
                         VEXL2_SCENARIO=str(folder / "scenario.json"), VEXL2_CLOCK_SPEED="0",
                         VEXL2_EVENT_WAIT_CAP="600000")
        try:
            yield host.await_serving()
        finally:
            host.kill()


def control(pid, order):
    subprocess.run(["callgrind_control", order, str(pid)], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def profiled(arguments, kind, folder):
    """Instructions and allocations of a request: of several rounds the cheapest one, since the plug-in takes a picture of
    the machine now and then."""
    costs = []
    with serving(arguments, kind, ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/profile"]) as host:
        client = Client(host, kind)
        client.ask_often(WARM_UP)
        control(host.process.pid, "--zero")
        for number in range(1, ROUNDS + 1):
            client.ask_often(COUNTED // ROUNDS)
            control(host.process.pid, "--dump")
            seen = Profile(pathlib.Path(f"{folder}/profile.{number}"))
            costs.append((seen.instructions, seen.allocations))
    return [cost / (COUNTED // ROUNDS) for cost in min(costs)]


def copied(arguments, kind, folder):
    """Bytes that a request has the process copy: of two runs, the longer one's less the shorter one's."""
    totals = []
    counts = (COUNTED, 2 * COUNTED)
    for number in counts:
        file = f"{folder}/copies.{number}"
        with serving(arguments, kind, ["valgrind", "--tool=dhat", "--mode=copy", f"--dhat-out-file={file}"]) as host:
            client = Client(host, kind)
            client.ask_often(number)
            client.connection.close()
            host.stop()
        totals.append(sum(point["tb"] for point in json.loads(pathlib.Path(file).read_text())["pps"]))
    return (totals[1] - totals[0]) / (counts[1] - counts[0])


def called(arguments, kind, folder):
    """System calls of a request, by name."""
    with serving(arguments, kind, []) as host:
        client = Client(host, kind)
        client.ask_often(WARM_UP)
        tracer = subprocess.Popen(["strace", "-f", "-qq", "-o", f"{folder}/calls", "-p", str(host.process.pid)],
                                  stderr=subprocess.DEVNULL)
        try:
            time.sleep(1)
            client.ask_often(COUNTED)
        finally:
            tracer.terminate()
            tracer.wait()
    names = collections.Counter(re.findall(r"^\d+ +(\w+)\(", pathlib.Path(f"{folder}/calls").read_text(), re.M))
    return {name: calls / COUNTED for name, calls in names.most_common() if calls >= COUNTED / 20}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in "host", "module", "scenario":
        parser.add_argument(name, type=os.path.abspath)
    parser.add_argument("--only", action="append", choices=KINDS)
    parser.add_argument("--keep", type=os.path.abspath)
    arguments = parser.parse_args()
    print("| Request | Instructions | Allocations | Bytes copied | System calls |\n|---|---|---|---|---|")
    for kind in arguments.only or KINDS:
        with contextlib.ExitStack() as stack:
            folder = arguments.keep or stack.enter_context(tempfile.TemporaryDirectory(prefix="mirn-"))
            folder = pathlib.Path(folder) / kind.replace("/", "").replace(" ", "-")
            folder.mkdir(parents=True, exist_ok=True)
            instructions, allocations = profiled(arguments, kind, folder)
            calls = ", ".join(f"{name} {count:.2f}" for name, count in called(arguments, kind, folder).items())
            print(f"| {kind} | {instructions:,.0f} | {allocations:.1f} | {copied(arguments, kind, folder):,.0f} | {calls} |",
                  flush=True)


if __name__ == "__main__":
    sys.exit(main())
