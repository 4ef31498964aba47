#!/usr/bin/env python3
"""Runs a fuzzer from its corpus, and leaves the corpus as it is: what the fuzzer finds goes to a folder that is gone
afterwards.

usage: run_fuzzer.py PROGRAM CORPUS [--seconds N | --runs N] [--seed N] [--longest BYTES]
                     [--keep FOLDER]

The seed is printed; the same one takes the same way. An input that breaks a property is kept in FOLDER (by default the
present one) and named.
"""

import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("corpus", type=pathlib.Path)
    parser.add_argument("--seconds", type=int)
    parser.add_argument("--runs", type=int)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--longest", type=int, default=4096)
    parser.add_argument("--keep", default=".")
    arguments = parser.parse_args()

    if not any(arguments.corpus.iterdir()):
        sys.exit(f"{arguments.corpus}: nothing to start from")
    bounds = []
    if arguments.seconds is not None:
        bounds.append(f"-max_total_time={arguments.seconds}")
    if arguments.runs is not None:
        bounds.append(f"-runs={arguments.runs}")
    if not bounds:
        parser.error("one of --seconds and --runs is needed")

    in_memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="mirn-fuzz-", dir=in_memory) as folder:
        found = os.path.join(folder, "found")
        os.mkdir(found)
        process = subprocess.Popen(
            [arguments.program, *bounds, f"-seed={arguments.seed}", f"-max_len={arguments.longest}",
             "-timeout=10", "-print_final_stats=1", f"-artifact_prefix={arguments.keep}/", found, str(arguments.corpus)],
            env={**os.environ, "TMPDIR": folder}, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, errors="replace")
        told = process.communicate()[0]
    if process.returncode != 0:
        print(told[-20000:])
        sys.exit(f"seed {arguments.seed}: ended with status {process.returncode}")
    executed = re.search(r"stat::number_of_executed_units:\s*(\d+)", told)
    seeds = len(list(arguments.corpus.iterdir()))
    if not executed or int(executed.group(1)) <= seeds:
        print(told[-20000:])
        sys.exit("nothing was tried beside the corpus")
    covered = re.findall(r"cov: (\d+)", told)
    print(f"seed {arguments.seed}: {executed.group(1)} executions, {covered[-1] if covered else 'unknown'} edges")


if __name__ == "__main__":
    main()
