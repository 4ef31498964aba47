#!/usr/bin/env python3
"""Asks hosts for the list of 24 volumes over 64 connections, one server after the other on the same cores.

usage: host_throughput.py HOST MODULE MIRN_SCENARIO CONSTANT_SERVER [--rounds N] [--seconds N]

Beside the host stand nginx, which serves the same bytes from a file, and a bare Beast server with constant bytes, the
ceiling. Servers are asked in turn, round after round; told are the medians of the rounds, each beside nginx's, and the
processor time that a request took of the server. Needs nginx and wrk.
"""

import argparse
import contextlib
import http.client
import json
import os
import pathlib
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "system"))
from local_host import LocalHost, end_with_parent  # noqa: E402

CONNECTIONS = 64
DISKS, VOLUME_COUNT = 84, 24
VOLUMES = "mirn/volumes"
THREADS = os.cpu_count()
NGINX = """
daemon off; master_process on; pid {folder}/nginx.pid; worker_processes {threads}; error_log {folder}/nginx.log crit;
events {{ worker_connections 1024; }}
http {{
  access_log off; client_body_temp_path {folder}; proxy_temp_path {folder}; fastcgi_temp_path {folder};
  uwsgi_temp_path {folder}; scgi_temp_path {folder}; keepalive_requests 100000000; sendfile on; tcp_nopush on;
  open_file_cache max=10; default_type application/json;
  server {{ listen 127.0.0.1:{port}; root {folder}/files; }}
}}
"""


def processor_seconds(pid):
    """Of a process and its children that still run."""
    ticks = 0
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            fields = (entry / "stat").read_text().rpartition(")")[2].split()
            if int(entry.name) == pid or int(fields[1]) == pid:
                ticks += int(fields[11]) + int(fields[12])
    return ticks / os.sysconf("SC_CLK_TCK")


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def ask_once(port, path, headers):
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=30)
    connection.request("GET", path, headers=headers)
    answer = connection.getresponse()
    return answer, answer.read()


def await_port(port):
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", port), 1):
            return
        time.sleep(0.02)
    raise AssertionError(f"nothing listens on port {port}")


class Subject:
    """A server under a request: what it is asked, and what it came to in each round."""

    def __init__(self, name, pid, port, path, headers, status, size):
        self.name, self.pid, self.port, self.path, self.headers = name, pid, port, path, headers
        self.rates, self.costs = [], []
        answer, body = ask_once(port, path, headers)
        if answer.status != status or (size is not None and len(body) != size):
            raise AssertionError(f"{name}: {answer.status} with {len(body)} bytes")
        self.is_success = status == 200

    def measure(self, seconds):
        before = processor_seconds(self.pid)
        headers = [part for name, value in self.headers.items() for part in ("-H", f"{name}: {value}")]
        told = subprocess.run(["wrk", "-t", "1", "-c", str(CONNECTIONS), "-d", f"{seconds}s", *headers,
                               f"http://127.0.0.1:{self.port}{self.path}"], check=True, capture_output=True,
                              text=True).stdout
        if "Socket errors" in told or (self.is_success and "Non-2xx" in told):
            raise AssertionError(f"{self.name}: {told}")
        self.rates.append(float(re.search(r"Requests/sec:\s*([\d.]+)", told).group(1)))
        count = int(re.search(r"(\d+) requests in", told).group(1))
        self.costs.append((processor_seconds(self.pid) - before) / count * 1e6)


def start(stack, arguments):
    process = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                               text=True, preexec_fn=end_with_parent)
    stack.callback(process.wait)
    stack.callback(process.terminate)
    return process


def start_nginx(stack, folder, content):
    (folder / "files").mkdir()
    (folder / "files" / "volumes").write_bytes(content)
    folder.chmod(0o755)
    port = free_port()
    (folder / "nginx.conf").write_text(NGINX.format(folder=folder, threads=THREADS, port=port))
    process = start(stack, ["nginx", "-c", str(folder / "nginx.conf"), "-e", str(folder / "nginx.log")])
    await_port(port)
    return process.pid, port


def machine(program):
    """A scenario with just as many volumes."""
    scenario = json.loads(subprocess.run([program, "--devices", str(DISKS)], check=True, capture_output=True).stdout)
    del scenario["volumes"][VOLUME_COUNT:]
    return json.dumps(scenario)


def start_host(stack, arguments, *options):
    folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="mirn-")))
    (folder / "scenario.json").write_text(machine(arguments.scenario))
    host = LocalHost(arguments.host, arguments.module, folder, options,
                     VEXL2_SCENARIO=str(folder / "scenario.json"), VEXL2_CLOCK_SPEED="0")
    stack.callback(host.kill)
    return host.await_serving()


def subjects(stack, arguments):
    """What is measured, the first of them beside which the others stand."""
    kept = start_host(stack, arguments)
    fresh = start_host(stack, arguments, "--max-kept", "0")
    path = "/api/v1/" + VOLUMES
    let_in = {"Authorization": "Bearer " + kept.token()}
    answer, content = ask_once(kept.port, path, let_in)
    if len(json.loads(content)) != VOLUME_COUNT:
        raise AssertionError("another number of volumes than asked for")
    folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="mirn-")))
    nginx, nginx_port = start_nginx(stack, folder, content)
    bare = start(stack, [arguments.constant_server, str(folder / "files" / "volumes"), str(THREADS)])
    bare_port = int(bare.stdout.readline())
    known = {**let_in, "If-None-Match": str(answer.headers["ETag"])}
    size = len(content)
    return [
        Subject("nginx, a file", nginx, nginx_port, "/volumes", {}, 200, size),
        Subject("Beast, constant bytes", bare.pid, bare_port, "/", {}, 200, size),
        Subject("host, kept answer", kept.process.pid, kept.port, path, let_in, 200, size),
        Subject("host, 304", kept.process.pid, kept.port, path, known, 304, 0),
        Subject("host, each answer made anew", fresh.process.pid, fresh.port, path,
                {"Authorization": "Bearer " + fresh.token()}, 200, size),
        Subject("host, /healthz", kept.process.pid, kept.port, "/healthz", {}, 200, None),
    ], size


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in "host", "module", "scenario", "constant_server":
        parser.add_argument(name, type=os.path.abspath)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--seconds", type=int, default=4)
    arguments = parser.parse_args()
    with contextlib.ExitStack() as stack:
        measured, size = subjects(stack, arguments)
        for _ in range(arguments.rounds):
            for subject in measured:
                subject.measure(arguments.seconds)
    print(f"{VOLUME_COUNT} volumes, {size} bytes, {CONNECTIONS} connections, {THREADS} cores, medians of {arguments.rounds} rounds of "
          f"{arguments.seconds} s\n\n| Server | Requests a second | Beside nginx | Processor time a request (µs) |\n"
          "|---|---|---|---|")
    for subject in measured:
        beside = statistics.median(ours / theirs for ours, theirs in zip(subject.rates, measured[0].rates))
        print(f"| {subject.name} | {statistics.median(subject.rates):,.0f} | {beside:.2f} | "
              f"{statistics.median(subject.costs):.1f} |")


if __name__ == "__main__":
    sys.exit(main())
