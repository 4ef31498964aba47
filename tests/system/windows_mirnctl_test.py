#!/usr/bin/env python3
"""Drives the Windows command line under Wine, before a Windows host.

usage: windows_mirnctl_test.py RUNNER HOST MODULE MIRNCTL [unittest arguments]

RUNNER runs a Windows program; MODULE is the product's module.
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest

import windows_host_test

TIME = 60  # seconds, for one command
DONE, REFUSED, USAGE, NOT_FOUND, CONFLICT, UNREACHABLE, UNAUTHORISED = range(7)


class WindowsCommandLineTest(windows_host_test.WindowsHostTest):
    def setUp(self):
        super().setUp()
        self.host = self.serve(MODULE)

    def run_it(self, *arguments, status=DONE, token_file=None):
        """What it writes for a command line that ends with this status."""
        environment = {**os.environ, "MIRN_HOST": f"http://127.0.0.1:{self.host.port}",
                       "MIRN_TOKEN_FILE": token_file or self.token_file()}
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run([RUNNER, MIRNCTL, *arguments], env=environment, stdin=subprocess.DEVNULL,
                                  stdout=output, stderr=errors, timeout=TIME, check=False)
            texts = []
            for file in (output, errors):
                file.seek(0)
                texts.append(file.read().decode("utf-8"))
        self.assertEqual(status, done.returncode, "".join(texts))
        return texts[0] if status == DONE else texts[1]

    def test_the_first_screen_tells_what_is_wrong(self):
        told = self.run_it("status")
        self.assertTrue(told.startswith(f"http://127.0.0.1:{self.host.port}: critical\n\nWhat is wrong\n"), told)
        self.assertIn("Volume Archive lacks redundancy until it has been rebuilt.", told)

    def test_lists_are_for_people_and_for_scripts(self):
        volumes = self.volumes(self.host)
        table = self.run_it("volumes", "list").splitlines()
        self.assertEqual(["ID", "NAME"], table[0].split()[:2])
        self.assertEqual({(number, name) for name, number in volumes.items()},
                         {tuple(line.split()[:2]) for line in table[1:]})
        self.assertEqual(volumes, {each["name"]: each["id"] for each in
                                   json.loads(self.run_it("volumes", "list", "--output", "json"))})

    def test_a_change_is_planned_asked_for_and_made(self):
        self.assertIn("--yes agrees", self.run_it("volumes", "delete", "Scratch", status=REFUSED))
        self.assertIn("Lost: the volume Scratch\n", self.run_it("volumes", "delete", "Scratch", "--dry-run"))
        self.assertIn("Scratch", self.volumes(self.host))
        self.run_it("volumes", "delete", "Scratch", "--yes")
        self.assertNotIn("Scratch", self.volumes(self.host))

    def test_each_failure_has_its_exit_status(self):
        self.assertIn("größe", self.run_it("volumes", "list", "--größe", status=USAGE))
        self.run_it("volumes", "show", "Nowhere", status=NOT_FOUND)
        self.run_it("volumes", "rename", "Archive", "größe €", "--yes", status=REFUSED)
        self.run_it("status", "--host", "unix:C:\\mirn.sock", status=USAGE)
        self.assert_stops(self.host)
        self.run_it("status", status=UNREACHABLE)


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit(__doc__.strip())
    RUNNER, HOST, MODULE, MIRNCTL = sys.argv[1:5]
    windows_host_test.RUNNER, windows_host_test.HOST = RUNNER, HOST
    unittest.main(argv=[sys.argv[0], *sys.argv[5:]])
