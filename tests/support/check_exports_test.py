#!/usr/bin/env python3
"""Shows that check_exports.py finds what it is there for."""

import contextlib
import io
import pathlib
import tempfile
import unittest
from unittest import mock

import check_exports

NM = "0000000000001a20 T discover_plugin\n0000000000001b40 T register_plugin\n"
OBJDUMP = """
The Export Tables (interpreted .edata section contents)

	Export Address Table 		0000000{count}
	[Name Pointer/Ordinal] Table	00000002

Export Address Table -- Ordinal Base 1
	[   0] +base[   1] 141c Export RVA

[Ordinal/Name Pointer] Table
	[   0] discover_plugin
	[   1] register_plugin

The Function Table (interpreted .pdata section contents)
"""
BOTH = ["--names", "discover_plugin", "register_plugin"]


class CheckExportsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def verdict(self, start, listing, *arguments):
        """What the check says of a library that begins so and is listed so: "" when it passes, and its lines."""
        library = self.folder / "library"
        library.write_bytes(start)
        lines = io.StringIO()
        with mock.patch("sys.argv", ["check_exports.py", str(library), *arguments]), \
                mock.patch.object(check_exports, "output_of", return_value=listing), \
                contextlib.redirect_stdout(lines):
            try:
                check_exports.main()
            except SystemExit as end:
                return str(end.code).replace(f"{library}: ", ""), lines.getvalue()
        return "", lines.getvalue()

    def header(self, text):
        path = self.folder / "header.h"
        path.write_text(text, encoding="utf-8")
        return str(path)

    def both(self, *arguments):
        """The verdicts on the library of either system."""
        yield self.verdict(b"\x7fELF\x02", NM, *arguments)
        yield self.verdict(b"MZ\x90\x00", OBJDUMP.format(count=2), *arguments)

    def test_exactly_the_names_pass(self):
        for verdict in self.both(*BOTH):
            self.assertEqual(("", "shows 2 names, as it should\n"), verdict)

    def test_a_name_too_many_fails(self):
        for verdict in self.both("--names", "discover_plugin"):
            self.assertEqual(("shows 2 names, and should show 1", "shows register_plugin\n"), verdict)

    def test_a_missing_name_fails(self):
        for verdict in self.both(*BOTH, "other"):
            self.assertEqual(("shows 2 names, and should show 3", "does not show other\n"), verdict)

    def test_a_library_that_shows_nothing_fails(self):
        for start in (b"\x7fELF", b"MZ"):
            self.assertEqual("shows 0 names, and should show 2", self.verdict(start, "", *BOTH)[0])

    def test_an_export_by_number_alone_fails(self):
        verdict = self.verdict(b"MZ", OBJDUMP.format(count=3), *BOTH)
        self.assertEqual(("shows 3 names, and should show 2", "shows (without a name)\n"), verdict)

    def test_nothing_to_expect_fails(self):
        for verdict in self.both():
            self.assertEqual(("no names to expect", ""), verdict)

    def test_a_header_that_declares_nothing_fails(self):
        for verdict in self.both("--headers", self.header("int VexRescan(void);\n")):
            self.assertTrue(verdict[0].endswith("header.h: declares nothing"), verdict)

    def test_headers_declare_names(self):
        header = self.header("VEX_API VEX_STATUS discover_plugin(void);\n"
                             "VEX_API VEX_STATUS register_plugin(int a,\n  int b);\n")
        for verdict in self.both("--headers", header):
            self.assertEqual("", verdict[0])

    def test_another_kind_of_file_fails(self):
        self.assertEqual("neither a Linux nor a Windows library", self.verdict(b"#!/bin", "", *BOTH)[0])


if __name__ == "__main__":
    unittest.main()
