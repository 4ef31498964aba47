#!/usr/bin/env python3
"""Fails unless a library shows exactly the names that are given, or declared with VEX_API in the headers given."""
import argparse
import pathlib
import re
import subprocess
import sys

DECLARATION = re.compile(r"^VEX_API VEX_STATUS (\w+)\(", re.MULTILINE)
EXPORT_COUNT = re.compile(r"^\s*Export Address Table\s+([0-9a-f]+)$", re.MULTILINE)
NAME_TABLE = re.compile(r"^\[Ordinal/Name Pointer\] Table.*\n((?:\s+\[.*\n)*)", re.MULTILINE)


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def shown_by_elf(library, options):
    """Of a Linux library: its dynamic symbols."""
    return [line.split()[-1] for line in output_of(options.nm, "-D", "--defined-only", library).splitlines()]


def shown_by_pe(library, options):
    """Of a Windows library: its table of names, and a word for what it shows by number alone."""
    listing = output_of(options.objdump, "-p", library)
    table = NAME_TABLE.search(listing)
    names = [line.split()[-1] for line in table.group(1).splitlines()] if table else []
    count = EXPORT_COUNT.search(listing)
    nameless = (int(count.group(1), 16) if count else 0) - len(names)
    return names + ["(without a name)"] * nameless


def shown_by(library, options):
    with open(library, "rb") as file:
        start = file.read(4)
    if start == b"\x7fELF":
        return shown_by_elf(library, options)
    if start[:2] == b"MZ":
        return shown_by_pe(library, options)
    sys.exit(f"{library}: neither a Linux nor a Windows library")


def expected_by(options):
    names = list(options.names)
    for header in options.headers:
        declared = DECLARATION.findall(pathlib.Path(header).read_text(encoding="utf-8"))
        if not declared:
            sys.exit(f"{header}: declares nothing")
        names += declared
    if not names:
        sys.exit("no names to expect")
    return names


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("library")
    parser.add_argument("--names", nargs="+", default=[])
    parser.add_argument("--headers", nargs="+", default=[])
    parser.add_argument("--nm", default="nm", help="lists a Linux library")
    parser.add_argument("--objdump", default="objdump", help="lists a Windows library")
    options = parser.parse_args()
    expected = sorted(expected_by(options))
    shown = sorted(shown_by(options.library, options))
    for name in sorted(set(expected) - set(shown)):
        print("does not show", name)
    for name in sorted(set(shown) - set(expected)):
        print("shows", name)
    if shown != expected:
        sys.exit(f"{options.library}: shows {len(shown)} names, and should show {len(expected)}")
    print("shows", len(shown), "names, as it should")


if __name__ == "__main__":
    main()
