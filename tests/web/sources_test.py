#!/usr/bin/env python3
"""Holds the console's sources to the OpenAPI document and to what a browser is to be spared.

usage: sources_test.py ROOT
"""

import gzip
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1)).resolve()
WEB = ROOT / "web"
MOST_SCRIPT_BYTES = 200_000  # as it is sent, packed
PATIENCE = 280


def run(*command):
    done = subprocess.run([str(part) for part in command], cwd=WEB, capture_output=True, text=True, timeout=PATIENCE, check=False)
    return done.returncode, done.stdout + done.stderr


class Sources(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.scratch.name) / "files"
        status, cls.told = run(sys.executable, "-B", WEB / "make_console.py", cls.folder.parent / "files.cpp",
                               "--folder", cls.folder, "--tools")
        if status != 0:
            raise AssertionError(cls.told)

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    def test_the_console_is_built_and_no_plain_page(self):
        self.assertEqual(self.told, "")
        page = (self.folder / "index.html").read_text()
        self.assertIn("console/app.js", page)

    def test_types_of_the_document_fit_the_sources(self):
        status, told = run(WEB / "node_modules/.bin/openapi-typescript", ROOT / "docs/openapi.json", "--output",
                           WEB / "src/api/openapi.d.ts")
        self.assertEqual(status, 0, told)
        status, told = run(WEB / "node_modules/.bin/tsc", "--project", WEB)
        self.assertEqual(status, 0, told)

    def test_the_script_is_small(self):
        size = len(gzip.compress((self.folder / "app.js").read_bytes()))
        self.assertLess(size, MOST_SCRIPT_BYTES)

    def test_nothing_comes_from_elsewhere(self):
        for path in self.folder.iterdir():
            text = path.read_text()
            for found in re.findall(r"https?:(?://|\\/\\/)[^\s\"'`)]*", text):
                # Names of kinds of elements, which nobody fetches.
                self.assertTrue(found.startswith("http://www.w3.org/"), f"{path.name}: {found}")
        self.assertNotRegex((self.folder / "index.html").read_text(), r'(?:src|href)="(?:/|\w+:)')

    def test_the_page_has_no_script_and_no_style_of_its_own(self):
        page = (self.folder / "index.html").read_text()
        self.assertNotRegex(page, r"<style|style=|\son\w+=|<script(?![^>]*src=)")

    def test_versions_are_exact_and_the_lock_file_names_no_registry(self):
        package = json.loads((WEB / "package.json").read_text())
        for name, version in {**package["dependencies"], **package["devDependencies"]}.items():
            self.assertRegex(version, r"^\d+\.\d+\.\d+$", name)
        lock = json.loads((WEB / "package-lock.json").read_text())
        self.assertEqual([name for name, each in lock["packages"].items() if "resolved" in each], [])

    def test_colours_are_named_and_defined_for_both_schemes(self):
        text = (WEB / "src/app.css").read_text()
        rules, light, dark = "", set(), set()
        for block in re.finditer(r"(@media \(prefers-color-scheme: dark\) \{\s*)?:root \{([^}]*)\}", text):
            (dark if block.group(1) else light).update(re.findall(r"(--[\w-]+):", block.group(2)))
            rules = text[block.end():]
        self.assertEqual(light, dark)
        self.assertEqual(set(re.findall(r"var\((--[\w-]+)\)", rules)) - light, set())
        self.assertEqual(re.findall(r"#[0-9a-fA-F]{3,8}\b|\brgb\(", rules), [])


if __name__ == "__main__":
    unittest.main()
