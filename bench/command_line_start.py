#!/usr/bin/env python3
"""How long the command line takes from its start to the first byte of what it says, and the processor time of a run.

usage: command_line_start.py HOST MODULE MIRNCTL [--runs N]

Told are the least, the median and the most of the runs in milliseconds. On a machine that is busy otherwise the time to
the first byte is mostly the wait for a core; the processor time is not.
"""

import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "system"))
from local_host import LocalHost  # noqa: E402

LINES = (["--version"], ["--help"], ["volumes", "list", "--help"], ["volumes", "list"], ["status"],
         ["complete", "--", "volumes", "show", ""])


def run(program, line, environment):
    """Time to the first byte and processor time of one run, in milliseconds."""
    start = time.perf_counter()
    process = subprocess.Popen([program, *line], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    process.stdout.read(1)
    first = time.perf_counter() - start
    process.stdout.read()
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = status
    if status:
        raise SystemExit(f"{' '.join(line)} ends with {os.waitstatus_to_exitcode(status)}")
    return first * 1000, (used.ru_utime + used.ru_stime) * 1000


def told(times):
    return f"{min(times):6.1f} {statistics.median(times):6.1f} {max(times):6.1f}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("host")
    parser.add_argument("module")
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=50)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="mirn-") as name:
        folder = pathlib.Path(name)
        host = LocalHost(arguments.host, arguments.module, folder)
        try:
            host.await_serving()
            environment = {"HOME": name, "MIRN_HOST": f"http://127.0.0.1:{host.port}",
                           "MIRN_TOKEN_FILE": str(folder / "token")}
            print(f"{'':32}  first byte (ms)      processor (ms)")
            for line in LINES:
                first, processor = zip(*(run(arguments.program, line, environment) for _ in range(arguments.runs)))
                print(f"{' '.join(line):32} {told(first)} {told(processor)}")
        finally:
            host.kill()


if __name__ == "__main__":
    main()
