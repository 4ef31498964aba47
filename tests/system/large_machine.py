#!/usr/bin/env python3
"""Reads the lists of a large machine, and measures what they take and what memory the host keeps.

usage: large_machine.py HOST MODULE MIRN_SCENARIO [DEVICES [READS]]

10,000 end devices, 32 reads of these unless told otherwise. Fails when more stays resident than the bound. The simulated
library is part of the process: what it takes for the machine is told apart, as far as the start tells it. Each list is
read from a host that keeps no answer, as at a new revision, and from one that keeps it.
"""

import http.client
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

from local_host import LocalHost

BOUND = 250  # MiB
LISTS = ["raids", "controllers", "arrays", "enddevices", "ports", "volumes"]
TIMES = 5  # of each list, whose median is told


def mebibytes(pid, name):
    status = pathlib.Path(f"/proc/{pid}/status").read_text()
    return int(status.split(name + ":")[1].split()[0]) / 1024


def processor_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def read(host, path):
    """Bytes and seconds of an answer."""
    begun = time.monotonic()
    connection = http.client.HTTPConnection("127.0.0.1", host.port, timeout=600)
    connection.request("GET", "/api/v1/" + path, headers={"Authorization": "Bearer " + host.token()})
    answer = connection.getresponse()
    size = len(answer.read())
    connection.close()
    if answer.status != 200:
        raise AssertionError(f"{path}: {answer.status}")
    return size, time.monotonic() - begun


def times_of(host):
    """Bytes, and milliseconds of a read of each list by the clock (the median) and of the processor, the first read left
    out."""
    told = {}
    for name in LISTS:
        size, _ = read(host, "mirn/" + name)
        before = processor_seconds(host.process.pid)
        median = statistics.median(read(host, "mirn/" + name)[1] for _ in range(TIMES))
        told[name] = size, 1000 * median, 1000 * (processor_seconds(host.process.pid) - before) / TIMES
    return told


def measure_lists(start):
    fresh = start("--max-kept", "0")
    try:
        anew = times_of(fresh)
    finally:
        fresh.kill()
    begun = time.monotonic()
    host = start()
    started = time.monotonic() - begun
    try:
        kept = times_of(host)
        begun = time.monotonic()
        status = host.stop()
        stopped = time.monotonic() - begun
    finally:
        host.kill()
    print("| List | Bytes | At a new revision: ms, of the processor | Kept: ms, of the processor |\n|---|---|---|---|")
    for name in LISTS:
        print(f"| {name} | {kept[name][0]:,} | {anew[name][1]:.0f}, {anew[name][2]:.0f} | "
              f"{kept[name][1]:.1f}, {kept[name][2]:.1f} |")
    print(f"\nStart {started:.2f} s, stop {stopped:.2f} s with status {status}\n", flush=True)


def measure_memory(start, reads):
    host = start()
    try:
        def tell(moment):
            resident, most = (mebibytes(host.process.pid, word) for word in ("VmRSS", "VmHWM"))
            print(f"| {moment} | {resident:.0f} | {most:.0f} |", flush=True)
            return resident

        print("| When | Resident (MiB) | The most so far (MiB) |\n|---|---|---|")
        tell("the host serves")
        size, seconds = read(host, "mirn/enddevices")
        tell(f"one read of {size} bytes, {seconds:.1f} s")
        for _ in range(reads - 1):
            read(host, "mirn/enddevices")
        resident = tell(f"{reads} reads")
        return 0 if resident < BOUND else 1
    finally:
        host.kill()


def measure(program, module, scenario_tool, devices, reads):
    with tempfile.TemporaryDirectory(prefix="mirn-") as name:
        scenario = pathlib.Path(name) / "scenario.json"
        subprocess.run([scenario_tool, "--devices", str(devices), "--output", scenario], check=True)

        def start(*options):
            folder = pathlib.Path(tempfile.mkdtemp(dir=name))
            return LocalHost(program, module, folder, options, VEXL2_SCENARIO=str(scenario)).await_serving()

        measure_lists(start)
        return measure_memory(start, reads)


if __name__ == "__main__":
    if len(sys.argv) not in (4, 5, 6):
        sys.exit(__doc__.strip())
    sys.exit(measure(*map(os.path.abspath, sys.argv[1:4]), *map(int, (sys.argv[4:] + ["10000", "32"][len(sys.argv) - 4:]))))
