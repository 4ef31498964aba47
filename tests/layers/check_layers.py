#!/usr/bin/env python3
"""Holds who may know whom. Fails when

- a source includes a header of a layer that its own layer may not know, or by a name that means two files;
- two include roots have a header of one name;
- a layer may know another one and does not;
- docs/architecture.md draws other layers, files or arrows than there are (--redraw mends files and arrows);
- CMake gives a target an include root that its layers may not know (--commands).
"""

import argparse
import fnmatch
import json
import pathlib
import re
import sys

# One row a layer: its name, its files (the first row that matches a file is its layer), and the layers that it may
# include directly besides itself. A layer knows only rows above it.
CONTRACT = ["contract"]
MODEL = CONTRACT + ["common"]
LAYERS = [
    ("base", ["base/*"], []),
    ("closed library", ["vexl2/VEXL2.h"], []),
    ("kit", ["vexl2/kit/*"], ["closed library"]),
    ("simulator controls", ["simulator/vexl2_simulator.h"], ["closed library"]),

    # The module.
    ("precompiled", ["src/pch.*"], []),
    ("contract", ["src/contract/*"], []),
    ("framework", ["src/framework/*"], CONTRACT),
    ("platform", ["src/platform/*"], CONTRACT + ["base"]),
    ("logging", ["src/logging/*"], CONTRACT + ["base", "platform"]),
    ("validator", ["src/validator/*"], CONTRACT),
    ("common", ["src/common/*"], CONTRACT),
    ("library", ["src/library/*"], MODEL + ["closed library"]),
    ("events", ["src/events/*"], MODEL + ["base"]),
    ("session interfaces", ["src/session/mirn_exception.*", "src/session/plugin_setting.*", "src/session/session_messages.h",
      "src/session/*_interface.h", "src/session/*_interfaces.h"],
     MODEL),
    ("session", ["src/session/*"],
     MODEL + ["base", "platform", "logging", "closed library", "library", "events", "session interfaces"]),
    ("catalogue", ["src/catalogue/*"], MODEL + ["framework", "validator", "events", "session interfaces"]),
    ("listeners", ["src/listeners/*"],
     MODEL + ["framework", "validator", "events", "session interfaces", "catalogue"]),
    ("plug-in object", ["src/plugin/mirn_plugin.*", "src/plugin/listener_table.*", "src/plugin/plugin_description.*",
      "src/plugin/rehears*", "src/plugin/whole_picture.*"],
     MODEL + ["base", "framework", "validator", "logging", "closed library", "library", "events", "session interfaces",
              "session", "catalogue", "listeners"]),
    ("exports", ["src/plugin/module.*"], CONTRACT + ["framework", "plug-in object"]),

    # The simulated library.
    ("machine model", ["simulator/model/*"], ["kit"]),
    ("engine", ["simulator/engine/*"], ["machine model"]),
    ("records", ["simulator/records/*"], ["closed library", "kit", "machine model", "engine"]),
    ("rules", ["simulator/rules/*"], ["machine model", "engine"]),
    ("scenario", ["simulator/scenario/*"], ["kit", "machine model", "engine"]),
    ("state", ["simulator/state/*"], ["base", "kit", "machine model", "scenario"]),
    ("library core", ["simulator/core/*"], ["kit", "machine model", "engine", "rules", "scenario", "state"]),
    ("operations", ["simulator/exports/*"],
     ["closed library", "kit", "simulator controls", "machine model", "engine", "records", "rules", "scenario",
      "library core"]),
    ("bundle files", ["simulator/bundle/*"], ["base", "scenario"]),
    ("twin", ["simulator/twin/*"], ["machine model", "engine", "scenario"]),
    ("what if", ["simulator/whatif/*", "simulator/mirn_whatif.*"], ["machine model", "engine", "scenario", "twin"]),
    ("scenario writer", ["simulator/mirn_scenario.*"], ["scenario", "bundle files", "twin"]),

    # Insight.
    ("insight view", ["insight/view/*"], CONTRACT + ["base"]),
    ("insight health", ["insight/health/*"], CONTRACT + ["insight view"]),
    ("insight history", ["insight/history/*"], CONTRACT + ["base", "insight view", "insight health"]),
    ("insight alarms", ["insight/alarms/*"], CONTRACT + ["insight health", "insight history"]),
    ("insight jobs", ["insight/jobs/*"], CONTRACT + ["insight view", "insight history"]),
    ("insight stream", ["insight/stream/*"], ["insight history"]),
    ("insight service", ["insight/service/*"],
     CONTRACT + ["insight view", "insight health", "insight history", "insight alarms", "insight jobs", "insight stream"]),
    ("insight metrics", ["insight/metrics/*"],
     CONTRACT + ["base", "insight view", "insight health", "insight history", "insight jobs", "insight service"]),
    ("insight actions", ["insight/actions/*"], CONTRACT + ["insight view"]),
    ("insight plan", ["insight/plan/*"], CONTRACT + ["insight view", "insight health", "insight actions", "insight jobs"]),
    ("insight readiness", ["insight/readiness/*"],
     CONTRACT + ["insight view", "insight health", "insight history", "insight alarms", "insight jobs", "insight plan"]),

    # The command line.
    ("command line basics", ["cli/exit_status.*"], []),
    ("command line document", ["cli/document/*"], ["command line basics"]),
    ("command line destination", ["cli/destination/*"], ["base", "command line basics"]),
    ("command line answers", ["cli/answers/*"], ["command line basics", "command line document"]),
    ("command line terminal", ["cli/terminal/*"], ["base", "command line answers"]),
    ("command line wire", ["cli/wire/*"],
     ["command line basics", "command line document", "command line destination", "command line answers"]),
    ("command line arguments", ["cli/arguments/*"],
     ["command line basics", "command line document", "command line answers", "command line wire"]),
    ("command line bundle", ["cli/bundle/*"],
     ["base", "command line basics", "command line document", "command line answers", "command line wire"]),
    ("command line commands", ["cli/commands/*"],
     ["base", "command line basics", "command line document", "command line destination", "command line answers",
      "command line terminal", "command line wire", "command line arguments", "command line bundle"]),
    ("command line manual", ["cli/manual/*"],
     ["base", "command line basics", "command line document", "command line arguments", "command line commands"]),
    ("command line main", ["cli/main.cpp"],
     ["base", "command line document", "command line destination", "command line terminal", "command line wire",
      "command line commands"]),

    # The host.
    ("host precompiled", ["host/pch.*"], []),
    ("host system", ["host/system/*"], CONTRACT + ["base"]),
    ("host answers", ["host/answers/*"], CONTRACT),
    ("host identity", ["host/identity/*"], CONTRACT + ["base", "host answers"]),
    ("host plugin", ["host/plugin/*"], CONTRACT + ["base", "host system"]),
    ("host controls", ["host/controls/*"], CONTRACT + ["simulator controls", "host answers"]),
    ("host revisions", ["host/revisions/*"], CONTRACT + ["host answers"]),
    ("host api", ["host/api/*"], CONTRACT + ["host revisions", "host system", "host answers", "host identity", "host controls"]),
    ("host console", ["host/console/*"], ["host answers", "host identity", "host api"]),
    ("host insight", ["host/insight/*"], CONTRACT + ["insight view", "insight health", "insight history", "insight alarms", "insight jobs", "insight stream",
                 "insight metrics", "insight actions", "insight plan", "insight readiness", "insight service", "host answers", "host identity", "host api"]),
    ("host whatif", ["host/whatif/*"],
     CONTRACT + ["insight view", "insight jobs", "insight service", "host system", "host answers", "host api",
                 "host insight"]),
    ("host metrics", ["host/metrics/*"],
     CONTRACT + ["base", "insight metrics", "host system", "host revisions", "host api"]),
    ("host openapi", ["host/openapi/*"], CONTRACT + ["host answers", "host api"]),
    ("host notification targets", ["host/notifications/notification_targets.*", "host/notifications/webhook_url*"], []),
    ("host options", ["host/options.*", "host/configuration/*", "host/service_limits.h"], CONTRACT + ["host system", "host identity", "host notification targets"]),
    ("host notifications", ["host/notifications/*"],
     ["base", "insight view", "insight health", "insight history", "insight alarms", "insight service", "host system",
      "host identity", "host notification targets"]),
    ("host bundle", ["host/bundle/*"],
     CONTRACT + ["base", "insight view", "host system", "host answers", "host identity", "host api", "host insight", "host options"]),
    ("host http", ["host/http/*"], ["host answers", "host options"]),
    ("host net", ["host/net/*"], ["host system", "host identity", "host api", "host options", "host http"]),
    ("host commands", ["host/commands/*"], ["host system", "host identity", "host plugin", "host options", "host notifications", "host net"]),
    ("host manual", ["host/manual/*"], ["base", "host system", "host options"]),
    ("host main", ["host/main.*"],
     CONTRACT + ["base", "host system", "host identity", "host plugin", "host revisions", "host api", "host insight", "host whatif", "host metrics", "host openapi", "host options", "host bundle",
     "host notifications", "host commands", "host net", "host console"]),
]

FOLDERS = ["base", "vexl2", "src", "simulator", "insight", "host", "cli"]
INCLUDE_ROOTS = ["base", "vexl2", "vexl2/kit", "src/*", "simulator", "insight", "host", "cli", "tests", "bench"]
DRAWING = "docs/architecture.md"
HEADERS = {".h", ".hpp"}
SOURCES = HEADERS | {".c", ".cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def layer_of(path):
    """The row of a file, given by its path below the root; None for a file of no layer."""
    for row in LAYERS:
        if any(fnmatch.fnmatchcase(path, pattern) for pattern in row[1]):
            return row
    return None


def allowed_of(name):
    return next(allowed for layer, _, allowed in LAYERS if layer == name)


class Tree:
    """The sources of the products below a folder, and what they include."""

    def __init__(self, root):
        self.root = pathlib.Path(root).resolve()
        self.roots = [path for pattern in INCLUDE_ROOTS for path in sorted(self.root.glob(pattern)) if path.is_dir()]
        self.sources = [path for folder in FOLDERS for path in sorted((self.root / folder).rglob("*"))
                        if path.suffix in SOURCES]
        self.includes = [(self.path_of(source), name, self.meanings(source, name)) for source in self.sources
                         for name in INCLUDE.findall(source.read_text(encoding="utf-8"))]

    def path_of(self, file):
        return file.relative_to(self.root).as_posix()

    def meanings(self, source, name):
        """Every file of ours that `source` can mean by `name`, as paths below the root."""
        ways_around = [self.root, *(self.root / folder for folder in FOLDERS)]
        found = [(folder / name).resolve() for folder in [source.parent, *self.roots, *ways_around]]
        return list(dict.fromkeys(self.path_of(file) for file in found if file.is_file() and self.root in file.parents))

    def arrows(self, of=SOURCES):
        """For each layer the others that its files include directly; of those files alone that end as told."""
        arrows = {name: set() for name, _, _ in LAYERS}
        for path, _, meanings in self.includes:
            layer = layer_of(path)
            target = layer_of(meanings[0]) if meanings else None
            if layer and target and layer != target and pathlib.PurePath(path).suffix in of:
                arrows[layer[0]].add(target[0])
        return arrows


def in_order(names):
    """The layers in the order of their rows."""
    return [name for name, _, _ in LAYERS if name in names]


def faults_of_includes(tree):
    for source in tree.sources:
        if layer_of(tree.path_of(source)) is None:
            yield f"{tree.path_of(source)}: belongs to no layer; give it a row in check_layers.py"
    for path, name, meanings in tree.includes:
        layer = layer_of(path)
        target = layer_of(meanings[0]) if meanings else None
        if layer and target and target != layer and target[0] not in layer[2]:
            yield f"{path}: includes {meanings[0]}, and {layer[0]} may not know {target[0]}"
        if len(meanings) > 1:
            yield f"{path}: \"{name}\" may mean {' or '.join(meanings)}"


def faults_of_names(tree):
    """Headers that have one name in two include roots."""
    files = {}
    for folder in tree.roots:
        for header in sorted(folder.rglob("*")):
            if header.suffix in HEADERS:
                files.setdefault(header.relative_to(folder).as_posix(), []).append(tree.path_of(header))
    for name, paths in files.items():
        if len(paths) > 1:
            yield f"\"{name}\" may mean {' or '.join(paths)}"


def faults_of_permissions(tree):
    """Permissions that nobody uses."""
    arrows = tree.arrows()
    for name, _, allowed in LAYERS:
        for unused in in_order(set(allowed) - arrows[name]):
            yield f"{name} may know {unused} and does not; take it from its row in check_layers.py"


class Drawing:
    """The rows of the tables of layers in the page that draws them: name, files, what it includes, what it holds."""

    HEADER = ["Layer", "Files", "Includes", "What it holds"]

    def __init__(self, text):
        self.lines = text.splitlines()
        self.rows = {}  # line number to cells
        inside = False
        for number, line in enumerate(self.lines):
            cells = [cell.strip() for cell in line.strip("|").split("|")] if line.startswith("|") else []
            inside = cells == self.HEADER or (inside and len(cells) == len(self.HEADER))
            if inside and cells != self.HEADER and set(cells[0]) != {"-"}:
                self.rows[number] = cells

    @staticmethod
    def cells(name, arrows):
        """Files and includes of a layer as the page has them."""
        patterns = next(patterns for layer, patterns, _ in LAYERS if layer == name)
        files = ", ".join(f"`{re.sub(r'/[*]$', '/', pattern)}`" for pattern in patterns)
        return files, ", ".join(in_order(arrows[name])) or "nothing"

    def faults(self, arrows):
        drawn = [row[0] for row in self.rows.values()]
        for name, _, _ in LAYERS:
            if drawn.count(name) != 1:
                yield f"{DRAWING}: draws the layer {name} {drawn.count(name)} times"
        for name, files, includes, _ in self.rows.values():
            if name not in arrows:
                yield f"{DRAWING}: draws {name}, which is no layer"
                continue
            for what, told, true in zip(("files", "includes"), (files, includes), self.cells(name, arrows)):
                if told != true:
                    yield f"{DRAWING}: the {what} of {name} are \"{told}\" there and {true} in the tree"

    def redrawn(self, arrows):
        lines = list(self.lines)
        for number, (name, _, _, holds) in self.rows.items():
            if name in arrows:
                lines[number] = "| " + " | ".join([name, *self.cells(name, arrows), holds]) + " |"
        return "\n".join(lines) + "\n"


def faults_of_drawing(tree):
    path = tree.root / DRAWING
    return Drawing(path.read_text(encoding="utf-8")).faults(tree.arrows())


def visible_to(name, header_arrows):
    """The layers whose include roots a layer needs: those it may know, and what the headers of those lead to."""
    reached, waiting = {name}, list(allowed_of(name))
    while waiting:
        layer = waiting.pop()
        if layer not in reached:
            reached.add(layer)
            waiting.extend(header_arrows[layer])
    return reached


def faults_of_roots(tree, commands):
    """Include roots that a target is given and that none of its layers may use. `commands` as CMake writes them."""
    header_arrows = tree.arrows(HEADERS)
    layers_of_name = {}  # of a header, for a folder that holds copies
    for source in tree.sources:
        if source.suffix in HEADERS:
            layers_of_name.setdefault(source.name, set()).add((layer_of(tree.path_of(source)) or [None])[0])
    targets = {}
    for command in commands:
        source = (pathlib.Path(command["directory"]) / command["file"]).resolve()
        target = re.search(rf" -o (?:{'|'.join(FOLDERS)})/(?:\S*/)?CMakeFiles/([^/ ]+)\.dir/", command["command"])
        layer = layer_of(tree.path_of(source)) if tree.root in source.parents else None
        if not target or layer is None:
            continue  # a test may build what it likes of a layer's sources
        layers, folders = targets.setdefault(target.group(1), (set(), set()))
        layers.add(layer[0])
        folders.update(pathlib.Path(folder).resolve()
                       for folder in re.findall(r"-(?:I|isystem|iquote) ?(\S+)", command["command"]))
    for target, (layers, folders) in sorted(targets.items()):
        visible = set().union(*(visible_to(layer, header_arrows) for layer in layers))
        for folder in sorted(folders):
            if tree.root not in folder.parents:
                continue
            shown = set().union(*(layers_of_name.get(header.name, set()) for header in folder.rglob("*.h")))
            if shown and not shown & visible:
                yield (f"{target}: CMake gives it {tree.path_of(folder)} with {', '.join(in_order(shown))}, "
                       f"and {', '.join(in_order(layers))} may not know that")
    if not targets:
        yield "no compile command of a layer's source found"


def check(root):
    """All faults of the sources below `root`, and the number of files read."""
    tree = Tree(root)
    return [*faults_of_includes(tree), *faults_of_names(tree)], len(tree.sources)


def main(arguments):
    parser = argparse.ArgumentParser(prog="check_layers.py", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", help="of the tree")
    parser.add_argument("--redraw", action="store_true", help=f"write files and arrows into {DRAWING} as they are")
    parser.add_argument("--commands", type=pathlib.Path, help="compile_commands.json of a build, for the include roots")
    options = parser.parse_args(arguments)
    faults, count = check(options.root)
    if count == 0:
        faults.append("no source files found")
    else:
        tree = Tree(options.root)
        if options.redraw:
            page = tree.root / DRAWING
            page.write_text(Drawing(page.read_text(encoding="utf-8")).redrawn(tree.arrows()), encoding="utf-8")
        faults += [*faults_of_permissions(tree), *faults_of_drawing(tree)]
        if options.commands:
            faults += faults_of_roots(tree, json.loads(options.commands.read_text(encoding="utf-8")))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
