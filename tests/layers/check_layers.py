#!/usr/bin/env python3
"""Fails when a source file includes a header of a layer that its own layer may not know.

usage: check_layers.py ROOT
"""

import fnmatch
import pathlib
import re
import sys

# One row a layer: its name, its files (the first row that matches a file is its layer), and the layers it may include
# besides itself. A layer knows only rows above it.
CONTRACT = ["contract"]
MODEL = CONTRACT + ["common"]
MACHINE = ["closed library", "kit", "machine model"]
LAYERS = [
    ("base", ["base/*"], []),
    ("closed library", ["vexl2/VEXL2.h"], []),
    ("kit", ["vexl2/kit/*"], ["closed library"]),
    ("simulator controls", ["simulator/vexl2_simulator.h"], ["closed library"]),

    # The module.
    ("precompiled", ["src/pch.*"], []),
    ("contract", ["src/contract/*"], ["base"]),
    ("framework", ["src/framework/*"], CONTRACT),
    ("platform", ["src/platform/*"], CONTRACT + ["base"]),
    ("logging", ["src/logging/*"], CONTRACT + ["base", "platform"]),
    ("validator", ["src/validator/*"], CONTRACT),
    ("common", ["src/common/*"], CONTRACT),
    ("library", ["src/library/*"], MODEL + ["closed library"]),
    ("events", ["src/events/*"], MODEL + ["base"]),
    ("session interfaces", ["src/session/mirn_exception.*", "src/session/*_interface.h", "src/session/*_interfaces.h"],
     MODEL),
    ("session", ["src/session/*"],
     MODEL + ["platform", "logging", "closed library", "library", "events", "session interfaces"]),
    ("listeners", ["src/listeners/*"], MODEL + ["framework", "validator", "events", "session interfaces"]),
    ("plug-in object", ["src/plugin/mirn_plugin.*"],
     MODEL + ["framework", "logging", "closed library", "library", "session interfaces", "session", "listeners"]),
    ("exports", ["src/plugin/module.*"], CONTRACT + ["framework", "plug-in object"]),

    # The simulated library.
    ("machine model", ["simulator/model/*"], ["closed library", "kit"]),
    ("engine", ["simulator/engine/*"], MACHINE),
    ("records", ["simulator/records/*"], MACHINE + ["engine"]),
    ("rules", ["simulator/rules/*"], MACHINE + ["engine"]),
    ("scenario", ["simulator/scenario/*"], MACHINE + ["engine"]),
    ("state", ["simulator/state/*"], MACHINE + ["base", "engine", "scenario"]),
    ("library core", ["simulator/core/*"], MACHINE + ["engine", "rules", "scenario", "state"]),
    ("operations", ["simulator/exports/*"],
     MACHINE + ["simulator controls", "engine", "records", "rules", "scenario", "state", "library core"]),
    ("scenario writer", ["simulator/mirn_scenario.cpp"], ["scenario"]),

    # The host.
    ("host precompiled", ["host/pch.*"], []),
    ("host system", ["host/system/*"], CONTRACT + ["base"]),
    ("host identity", ["host/identity/*"], CONTRACT + ["base", "host system"]),
    ("host plugin", ["host/plugin/*"], CONTRACT + ["base", "host system"]),
    ("host answers", ["host/api/answer.*", "host/api/problem.*", "host/api/json_*"], CONTRACT),
    ("host controls", ["host/controls/*"], CONTRACT + ["simulator controls", "host answers"]),
    ("host api", ["host/api/*"], CONTRACT + ["host identity", "host controls", "host answers"]),
    ("host options", ["host/options.*", "host/net/limits.h"], CONTRACT + ["host system", "host identity"]),
    ("host net", ["host/net/*"], CONTRACT + ["host system", "host options", "host answers", "host api"]),
    ("host main", ["host/main.cpp"],
     CONTRACT + ["host system", "host identity", "host plugin", "host controls", "host api", "host options", "host net"]),

    ("command line", ["cli/*"], CONTRACT),
]

FOLDERS = ["base", "vexl2", "src", "simulator", "host", "cli"]
INCLUDE_ROOTS = [*FOLDERS, "vexl2/kit"]
SOURCES = {".h", ".hpp", ".c", ".cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def layer_of(path):
    """The row of a file, given by its path below the root; None for a file of no layer."""
    for row in LAYERS:
        if any(fnmatch.fnmatchcase(path, pattern) for pattern in row[1]):
            return row
    return None


def resolve(root, source, name):
    """The file of ours that `source` means by `name`, as a path below the root; None for any other header."""
    for folder in [source.parent, root, *(root / folder for folder in INCLUDE_ROOTS), *(root / "src").glob("*/")]:
        target = (folder / name).resolve()
        if target.is_file() and root in target.parents:
            return target.relative_to(root).as_posix()
    return None


def faults_of(root, source):
    path = source.relative_to(root).as_posix()
    layer = layer_of(path)
    if layer is None:
        yield f"{path}: belongs to no layer; give it a row in check_layers.py"
        return
    name, _, allowed = layer
    for include in INCLUDE.findall(source.read_text(encoding="utf-8")):
        target = resolve(root, source, include)
        known = layer_of(target) if target else None
        if known and known[0] != name and known[0] not in allowed:
            yield f"{path}: includes {target}, and {name} may not know {known[0]}"


def check(root):
    """All faults below `root`, and the number of files read."""
    root = pathlib.Path(root).resolve()
    sources = [path for folder in FOLDERS for path in sorted((root / folder).rglob("*")) if path.suffix in SOURCES]
    return [fault for source in sources for fault in faults_of(root, source)], len(sources)


def main(arguments):
    if len(arguments) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    faults, count = check(arguments[0])
    for fault in faults:
        print(fault)
    if count == 0:
        print("no source files found")
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
