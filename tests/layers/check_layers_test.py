#!/usr/bin/env python3
"""Shows that check_layers.py finds what it is there for."""

import contextlib
import io
import pathlib
import tempfile
import unittest
from unittest import mock

import check_layers

PAGE = """# Layers

| Other | Files |
|---|---|
| low | none |

| Layer | Files | Includes | What it holds |
|---|---|---|---|
| low | `src/low/` | nothing | the ground |
| middle | `src/middle/`, `src/odd.*` | low | between |

| Layer | Files | Includes | What it holds |
|---|---|---|---|
| high | `host/` | low, middle | the roof |

The end.
"""
TOY_LAYERS = [("low", ["src/low/*"], []), ("middle", ["src/middle/*", "src/odd.*"], ["low"]),
              ("high", ["host/*"], ["low", "middle"])]


@contextlib.contextmanager
def tree_of(files):
    """A tree with these texts by path."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        yield check_layers.Tree(folder)


class CheckLayersTest(unittest.TestCase):
    def faults(self, **files):
        """The faults of a tree; each file is named by its path with "__" for a slash and "_h" or "_cpp" at its end."""
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                stem, _, suffix = name.rpartition("_")
                path = pathlib.Path(folder, stem.replace("__", "/") + "." + suffix)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            return check_layers.check(folder)[0]

    def test_an_arrow_in_the_right_direction_passes(self):
        self.assertEqual([], self.faults(src__contract__text_h="", src__common__volume_h='#include "text.h"\n'))

    def test_an_arrow_in_the_wrong_direction_fails(self):
        self.assertEqual(
            ["src/common/volume.h: includes src/listeners/steps.h, and common may not know listeners"],
            self.faults(src__listeners__steps_h="", src__common__volume_h='#include "steps.h"\n'))

    def test_the_closed_library_is_known_by_its_users_only(self):
        tree = {"vexl2__VEXL2_h": "", "src__library__reader_cpp": '#include "VEXL2.h"\n',
                "src__session__mirn_session_cpp": '#include "VEXL2.h"\n',
                "simulator__records__volume_cpp": '#include "VEXL2.h"\n'}
        self.assertEqual([], self.faults(**tree))
        for stranger in ("src__listeners__disks_cpp", "src__events__journal_cpp", "src__common__port_h", "host__net__a_cpp"):
            with self.subTest(stranger):
                self.assertEqual(1, len(self.faults(**tree, **{stranger: '#include "VEXL2.h"\n'})))

    def test_listeners_see_the_session_through_its_interfaces(self):
        tree = {"src__session__mirn_session_h": "", "src__session__read_interface_h": ""}
        self.assertEqual([], self.faults(**tree, src__listeners__a_cpp='#include "read_interface.h"\n'))
        self.assertEqual(1, len(self.faults(**tree, src__listeners__a_cpp='#include "mirn_session.h"\n')))

    def test_hosts_know_the_contract_only(self):
        tree = {"src__contract__plugin_interface_h": "", "src__plugin__mirn_plugin_h": ""}
        self.assertEqual([], self.faults(**tree, host__plugin__a_cpp='#include "plugin_interface.h"\n'))
        self.assertEqual(1, len(self.faults(**tree, host__plugin__a_cpp='#include "mirn_plugin.h"\n')))

    def test_a_way_around_by_a_relative_path_or_angle_brackets_is_seen(self):
        for line in ('#include "../listeners/a.h"\n', "#include <listeners/a.h>\n", '  #  include "listeners/a.h"\n'):
            with self.subTest(line):
                self.assertEqual(1, len(self.faults(src__listeners__a_h="", src__common__b_h=line)))

    def test_a_file_without_a_layer_fails(self):
        self.assertEqual(["src/stray.h: belongs to no layer; give it a row in check_layers.py"],
                         self.faults(src__stray_h=""))

    def test_foreign_headers_are_nobodys_business(self):
        self.assertEqual([], self.faults(src__contract__text_h="#include <string>\n#include <boost/regex.hpp>\n"))

    def test_a_tree_without_sources_fails(self):
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()):
            self.assertEqual(1, check_layers.main([folder]))

    def test_every_layer_knows_only_layers_above_it(self):
        above = set()
        for name, _, allowed in check_layers.LAYERS:
            self.assertLessEqual(set(allowed), above, name)
            above.add(name)

    def test_a_name_that_means_two_files_fails(self):
        self.assertEqual(['"clock.h" may mean base/clock.h or src/platform/clock.h'],
                         self.faults(base__clock_h="", src__platform__clock_h="", simulator__engine__clock_h=""))
        self.assertEqual(['host/net/a.cpp: "clock.h" may mean host/net/clock.h or base/clock.h'],
                         [fault for fault in self.faults(base__clock_h="", host__net__clock_h="",
                                                         host__net__a_cpp='#include "clock.h"\n') if ".cpp" in fault])


@mock.patch.object(check_layers, "LAYERS", TOY_LAYERS)
class ToyTest(unittest.TestCase):
    """Three layers with an arrow from each to all below it."""

    FILES = {"src/low/a.h": "", "src/middle/b.h": '#include "a.h"\n', "src/middle/b.cpp": '#include "b.h"\n',
             "host/c.cpp": '#include "a.h"\n#include "b.h"\n', "docs/architecture.md": PAGE}

    def drawing(self, page=PAGE, **changed):
        files = {**self.FILES, "docs/architecture.md": page, **{k.replace("__", "/") + ".cpp": v for k, v in changed.items()}}
        with tree_of(files) as tree:
            return list(check_layers.faults_of_drawing(tree))

    def test_a_true_drawing_passes(self):
        self.assertEqual([], self.drawing())

    def test_an_arrow_that_is_not_drawn_fails(self):
        page = PAGE.replace("| low, middle |", "| middle |")
        self.assertEqual(['docs/architecture.md: the includes of high are "middle" there and low, middle in the tree'],
                         self.drawing(page))

    def test_a_drawn_arrow_that_is_not_there_fails(self):
        self.assertEqual(['docs/architecture.md: the includes of high are "low, middle" there and low in the tree'],
                         self.drawing(host__c='#include "a.h"\n'))

    def test_a_layer_that_is_missing_drawn_twice_or_unknown_fails(self):
        row = "| high | `host/` | low, middle | the roof |\n"
        self.assertEqual(["docs/architecture.md: draws the layer high 0 times"], self.drawing(PAGE.replace(row, "")))
        self.assertEqual(["docs/architecture.md: draws the layer high 2 times"], self.drawing(PAGE.replace(row, row * 2)))
        self.assertEqual(["docs/architecture.md: draws attic, which is no layer"],
                         self.drawing(PAGE.replace(row, row + "| attic | `attic/` | high | old things |\n")))

    def test_files_that_belong_elsewhere_fail(self):
        self.assertEqual(['docs/architecture.md: the files of high are "`src/high/`" there and `host/` in the tree'],
                         self.drawing(PAGE.replace("`host/`", "`src/high/`")))

    def test_redrawing_mends_arrows_and_files_and_nothing_else(self):
        with tree_of(self.FILES) as tree:
            wrong = PAGE.replace("| low, middle |", "| high |").replace("`host/`", "")
            self.assertEqual(PAGE, check_layers.Drawing(wrong).redrawn(tree.arrows()))

    def test_a_permission_that_nobody_uses_fails(self):
        with tree_of({**self.FILES, "host/c.cpp": '#include "b.h"\n'}) as tree:
            self.assertEqual(["high may know low and does not; take it from its row in check_layers.py"],
                             list(check_layers.faults_of_permissions(tree)))
        with tree_of(self.FILES) as tree:
            self.assertEqual([], list(check_layers.faults_of_permissions(tree)))

    def test_the_whole_check_answers_by_its_status(self):
        for page, status in ((PAGE, 0), (PAGE.replace("| low |", "| nothing |"), 1)):
            with tree_of({**self.FILES, "docs/architecture.md": page}) as tree, contextlib.redirect_stdout(io.StringIO()):
                self.assertEqual(status, check_layers.main([str(tree.root)]))

    def roots(self, source, folders, target="src/x/CMakeFiles/x.dir/", **changed):
        """The faults of one compile command with these include roots."""
        files = {**self.FILES, **{k.replace("__", "/") + ".h": v for k, v in changed.items()}}
        with tree_of(files) as tree:
            command = {"directory": str(tree.root), "file": str(tree.root / source), "command": " ".join(
                ["g++", *(f"-I{tree.root / folder}" for folder in folders), "-o", target + "y.cpp.o", "-c", source])}
            return list(check_layers.faults_of_roots(tree, [command]))

    def test_the_roots_of_a_layer_and_of_those_it_may_know_pass(self):
        self.assertEqual([], self.roots("src/middle/b.cpp", ["src/low", "src/middle"]))

    def test_a_root_beyond_that_fails(self):
        self.assertEqual(["x: CMake gives it src/middle with middle, and low may not know that"],
                         self.roots("src/low/a.h", ["src/low", "src/middle"]))

    def test_a_copy_of_headers_is_a_root_like_the_one_that_they_come_from(self):
        self.assertEqual(["x: CMake gives it build/copy with middle, and low may not know that"],
                         self.roots("src/low/a.h", ["build/copy"], build__copy__b=""))

    def test_a_root_that_the_headers_of_a_layer_below_need_passes(self):
        rows = [*TOY_LAYERS[:2], ("high", ["host/*"], ["middle"])]
        with mock.patch.object(check_layers, "LAYERS", rows):
            self.assertEqual([], self.roots("host/c.cpp", ["src/low", "src/middle"]))
            self.assertEqual(1, len(self.roots("host/c.cpp", ["src/low", "src/middle"], src__middle__b="")))

    def test_tests_may_be_given_any_root(self):
        self.assertEqual(["no compile command of a layer's source found"],
                         self.roots("src/low/a.h", ["src/middle"], target="tests/x/CMakeFiles/x.dir/"))


if __name__ == "__main__":
    unittest.main()
