#!/usr/bin/env python3
"""Counts where the instructions and allocations of the plug-in's daily work go, in figures that other load does not change.

usage: profile.py [--before PROFILED_WORK] [--devices N,N,...] [--work NAME]... [--top N] PROFILED_WORK

For each work and number of devices: own instructions and allocations a device, those of the library's operations left out;
then the functions that most of the instructions are of, on a machine of 1,000 devices. With --before, the same of another
build's program beside it. Needs valgrind.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
from callgrind_profile import Profile  # noqa: E402

READING = ["snapshot", "refresh", "rename"]
WORK = [*READING, "get-devices", "get-volumes"]
LIBRARY = ["VexGet*", "VexList*", "VexSession*", "VexVolume*"]
LOOKED_INTO = 1000


def profile(program, work, devices):
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        file = pathlib.Path(folder, "profile")
        # What the library does is left out: collecting stops where an operation is entered and goes on behind it.
        done = subprocess.run(["valgrind", "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={file}",
                               *(f"--toggle-collect={name}" for name in LIBRARY), "--collect-atstart=yes",
                               program, work, str(devices)], capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{program} {work} {devices}: {done.stderr.strip()}")
        return Profile(file)


def allocations(program, work, devices, seen):
    """Own ones. Calls are counted where nothing is collected, too: what the library does for a snapshot is taken off."""
    return seen.allocations - (profile(program, "library", devices).allocations if work in READING else 0)


def plain(name):
    """A function's name without its arguments and what its templates are made of."""
    name = re.sub(r"\[abi:\w+\]|'\d+$", "", name).replace("(anonymous namespace)::", "").replace("operator<", "operator less")
    while re.search(r"<[^<>]*>", name):
        name = re.sub(r"<[^<>]*>", "", name)
    return re.sub(r"^.*? (?=[\w:~]+(\(|$))", "", re.sub(r"\(.*", "", name)) or name


def shares(seen):
    """The instructions of each function by its plain name."""
    sums = {}
    for name, instructions in seen.functions.items():
        sums[plain(name)] = sums.get(plain(name), 0) + instructions
    return sums


def columns(values):
    return " | ".join(values)


def tell_totals(programs, work, sizes):
    for devices in sizes:
        counts = []
        for program in programs:
            seen = profile(program, work, devices)
            counts += [f"{seen.instructions / devices:,.0f}",
                       f"{allocations(program, work, devices, seen) / devices:,.1f}"]
        print(f"| {work} | {devices:,} | {columns(counts)} |", flush=True)


def tell_functions(programs, work, top):
    seen = [shares(profile(program, work, LOOKED_INTO)) for program in programs]
    print(f"\n| {work}, instructions a device | {columns(['now'] if len(seen) == 1 else ['before', 'now'])} |")
    print("|---" * (1 + len(seen)) + "|")
    for name in sorted(seen[0], key=seen[0].get, reverse=True)[:top]:
        print(f"| `{name}` | {columns(f'{each.get(name, 0) / LOOKED_INTO:,.0f}' for each in seen)} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--before")
    parser.add_argument("--devices", default="10,1000,10000")
    parser.add_argument("--work", action="append", choices=WORK)
    parser.add_argument("--top", type=int, default=10)
    parser.add_argument("program")
    arguments = parser.parse_args()
    programs = [each for each in (arguments.before, arguments.program) if each]
    heads = ["instructions a device", "allocations a device"]
    if arguments.before:
        heads = [f"{head}, before" for head in heads] + [f"{head}, now" for head in heads]
    print(f"| Work | Devices | {columns(heads)} |")
    print("|---" * (2 + len(heads)) + "|")
    for work in arguments.work or WORK:
        tell_totals(programs, work, [int(size) for size in arguments.devices.split(",")])
    for work in arguments.work or WORK:
        tell_functions(programs, work, arguments.top)


if __name__ == "__main__":
    main()
