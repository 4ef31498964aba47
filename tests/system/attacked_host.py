#!/usr/bin/env python3
"""Attacks a host in the ways in which one is attacked, and measures what its other clients see of it.

usage: attacked_host.py HOST MODULE [--seconds N] [--only NAME]...

Nothing leaves 127.0.0.1. The attackers run at a lower priority, since they would run on machines of their own: what is
measured is what they cost the host, as far as one machine can tell. Needs slowhttptest and wrk. Fails when
the median of the other clients is beyond twice the quiet one, a client is turned away, or memory or descriptors are beyond
their bounds.
"""

import argparse
import asyncio
import http.client
import json
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import threading
import time

from local_host import LocalHost

IDLE = 10000
MEMORY_BOUND = 250  # MiB
DESCRIPTOR_BOUND = 2048 + 256  # the connections, and what a host has besides
SLOWER = 2.0
NOISE = 0.5  # ms that a median may differ by on any machine


def ask(connection, token):
    """Seconds that a read takes; None when it is not answered."""
    start = time.perf_counter()
    try:
        connection.request("GET", "/api/v1/mirn/state", headers={"Authorization": "Bearer " + token})
        answer = connection.getresponse()
        answer.read()
        if answer.status != 200:
            return None
    except (OSError, http.client.HTTPException):
        return None
    return time.perf_counter() - start


def probe(port, token, seconds):
    """What two clients see, one that keeps its connection and one that makes a new one for each request."""
    kept, fresh, lost = [], [], {"kept": 0, "fresh": 0}
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        taken = ask(connection, token)
        if taken is None:
            lost["kept"] += 1
            connection.close()
        else:
            kept.append(taken * 1000)
        another = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
        taken = ask(another, token)
        another.close()
        if taken is None:
            lost["fresh"] += 1
        else:
            fresh.append(taken * 1000)
        time.sleep(0.01)
    print(json.dumps({"kept": kept, "fresh": fresh, "lost": lost}))


async def hold_idle(port, seconds):
    """Opens connections that say nothing, and opens those again that the host closes, at most 2000 a second."""
    turned_away = 0
    held = set()

    async def hold(number):
        nonlocal turned_away
        await asyncio.sleep(number / 2000)
        while True:
            try:
                reader, writer = await asyncio.open_connection("127.0.0.1", port,
                                                               local_addr=(f"127.0.0.{2 + number % 40}", 0))
                held.add(number)
                await reader.read(1)
                writer.close()
            except OSError:
                pass
            held.discard(number)
            turned_away += 1
            await asyncio.sleep(5)

    tasks = [asyncio.create_task(hold(number)) for number in range(IDLE)]
    await asyncio.sleep(seconds)
    print(json.dumps(f"{len(held)} held, {turned_away} closed by the host"))
    sys.stdout.flush()
    for task in tasks:
        task.cancel()
    os._exit(0)  # closing ten thousand connections one by one tells nothing


class Use:
    """The most that the host's process had of memory and descriptors, looked at ten times a second."""

    def __init__(self, pid):
        self.folder = pathlib.Path(f"/proc/{pid}")
        self.memory = self.descriptors = 0
        self.done = threading.Event()
        self.thread = threading.Thread(target=self.look)
        self.thread.start()

    def look(self):
        while not self.done.wait(0.1):
            status = (self.folder / "status").read_text()
            self.memory = max(self.memory, int(status.split("VmRSS:")[1].split()[0]) / 1024)
            self.descriptors = max(self.descriptors, len(os.listdir(self.folder / "fd")))

    def end(self):
        self.done.set()
        self.thread.join()


def slow(kind, port, seconds):
    options = {"header": ["-H"], "body": ["-B", "-t", "POST", "-s", "8192"],
               "read": ["-X", "-w", "1", "-y", "2", "-n", "5", "-z", "1", "-k", "3"]}[kind]
    return ["slowhttptest", "-c", "1000", "-r", "300", "-i", "5", "-l", str(seconds), "-p", "5", *options,
            "-u", f"http://127.0.0.1:{port}/api/v1/mirn/state"]


def flood(target, seconds, *header):
    return ["wrk", "-t", "1", "-c", "64", "-d", f"{seconds}s", *header, target]


def attacks(port, seconds):
    """Name to commands that run at once."""
    idle = [sys.executable, "-B", __file__, "--hold-idle", str(port), str(seconds)]
    state = f"http://127.0.0.1:{port}/api/v1/mirn/state"
    wrong = flood(state, seconds, "-H", "Authorization: Bearer " + "x" * 64)
    healthz = flood(f"http://127.0.0.1:{port}/healthz", seconds)
    return {
        "quiet": [],
        "10,000 idle connections": [idle],
        "slow headers": [slow("header", port, seconds)],
        "slow bodies": [slow("body", port, seconds)],
        "slow readers": [slow("read", port, seconds)],
        "flood of wrong tokens": [wrong],
        "flood of /healthz": [healthz],
        "all at once": [idle, slow("header", port, seconds), slow("body", port, seconds), slow("read", port, seconds),
                        wrong, healthz],
    }


def rate_of(text):
    """What an attacker tells of itself, in few words."""
    for line in text.splitlines():
        if line.startswith("Requests/sec:"):
            return line.split()[1].split(".")[0] + " requests/s"
        if line.startswith('"'):
            return json.loads(line)
    return ""


def measure(host, commands, seconds):
    """The probes' figures, the host's use, and what the attackers tell."""
    attackers = [subprocess.Popen(["nice", "-n", "5", *command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, text=True) for command in commands]
    use = Use(host.process.pid)
    try:
        time.sleep(min(6, seconds / 3) if commands else 1)  # until the attack is at its height
        told = subprocess.run([sys.executable, "-B", __file__, "--probe", str(host.port), host.token(),
                               str(int(seconds / 2))], check=True, capture_output=True, text=True).stdout
        rates = [rate_of(attacker.communicate(timeout=seconds + 90)[0]) for attacker in attackers]
    finally:
        for attacker in attackers:
            attacker.kill()
        use.end()
    return json.loads(told), use, [rate for rate in rates if rate]


def figures(times):
    if not times:
        return "none"
    return f"{statistics.median(times):.1f} / {sorted(times)[int(len(times) * 0.99)]:.1f}"


def faults_of(name, probed, use, quiet):
    for kind in "kept", "fresh":
        if probed["lost"][kind]:
            yield f"{name}: {probed['lost'][kind]} requests on {kind} connections were not answered"
        if not probed[kind] or statistics.median(probed[kind]) > max(SLOWER * quiet[kind], quiet[kind] + NOISE):
            yield f"{name}: the median on {kind} connections is beyond {SLOWER} times the quiet one"
    if use.memory > MEMORY_BOUND:
        yield f"{name}: {use.memory:.0f} MiB"
    if use.descriptors > DESCRIPTOR_BOUND:
        yield f"{name}: {use.descriptors} descriptors"


def attack(program, module, seconds, only):
    faults, quiet = [], None
    print("| Attack | Kept connection: median / 99 % (ms) | New connection: median / 99 % (ms) | Not answered: kept, new | "
          "Memory (MiB) | Descriptors | The attackers |\n|---|---|---|---|---|---|---|")
    for name in attacks(0, seconds):
        if only and name not in only and name != "quiet":
            continue
        with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
            host = LocalHost(program, module, pathlib.Path(folder)).await_serving()
            try:
                probed, use, rates = measure(host, attacks(host.port, seconds)[name], seconds)
                lived = host.process.poll() is None
            finally:
                host.kill()
        quiet = quiet or {kind: statistics.median(probed[kind]) for kind in ("kept", "fresh")}
        print(f"| {name} | {figures(probed['kept'])} | {figures(probed['fresh'])} | "
              f"{probed['lost']['kept']}, {probed['lost']['fresh']} of {len(probed['fresh']) + probed['lost']['fresh']} | "
              f"{use.memory:.0f} | {use.descriptors} | {'; '.join(rates)} |", flush=True)
        faults += faults_of(name, probed, use, quiet)
        if not lived:
            faults.append(f"{name}: the host ended")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


def main():
    if sys.argv[1:2] == ["--probe"]:
        return probe(int(sys.argv[2]), sys.argv[3], int(sys.argv[4]))
    limit = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(limit, 65536) if limit != resource.RLIM_INFINITY else 65536, limit))
    if sys.argv[1:2] == ["--hold-idle"]:
        return asyncio.run(hold_idle(int(sys.argv[2]), int(sys.argv[3])))
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("host")
    parser.add_argument("module")
    parser.add_argument("--seconds", type=int, default=20)
    parser.add_argument("--only", action="append")
    arguments = parser.parse_args()
    return attack(os.path.abspath(arguments.host), os.path.abspath(arguments.module), arguments.seconds, arguments.only)


if __name__ == "__main__":
    sys.exit(main())
