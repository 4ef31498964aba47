#!/usr/bin/env python3
"""Shows that check_layers.py finds what it is there for."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import check_layers


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
                "simulator__engine__work_cpp": '#include "VEXL2.h"\n'}
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
        self.assertEqual([], self.faults(**tree, host__net__a_cpp='#include "plugin_interface.h"\n'))
        self.assertEqual(1, len(self.faults(**tree, host__net__a_cpp='#include "mirn_plugin.h"\n')))

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


if __name__ == "__main__":
    unittest.main()
