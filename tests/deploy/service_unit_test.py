#!/usr/bin/env python3
"""Shows that the host's units are such as systemd takes and fit together, and how far the host is shut in.

usage: service_unit_test.py SOURCE HOST [unittest arguments]
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE, HOST = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
UNIT = SOURCE / "deploy" / "systemd" / "mirn-host.service"
SOCKET_UNIT = UNIT.with_suffix(".socket")
PROGRAM = "/usr/bin/mirn-host"
MOST_EXPOSED = 25  # in tenths, of 100; lower is better


def analyze(*arguments):
    return subprocess.run(["systemd-analyze", *arguments], capture_output=True, text=True, timeout=60)


def settings(unit):
    """What each setting of a unit says, in order."""
    found = {}
    for line in unit.read_text().splitlines():
        if "=" in line and not line.startswith("#"):
            name, value = line.split("=", 1)
            found.setdefault(name, []).append(value)
    return found


class UnitTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def judged(self, text, socket_text=None):
        """What systemd says of the units, with the program where it was built; without a socket of the service alone."""
        copies = [self.folder / UNIT.name]
        copies[0].write_text(text.replace(PROGRAM, str(HOST)))
        if socket_text is not None:
            copies.append(self.folder / SOCKET_UNIT.name)
            copies[1].write_text(socket_text)
        result = analyze("verify", "--man=no", *copies)
        return result.returncode, result.stdout + result.stderr


class ServiceUnitTest(UnitTest):
    def test_systemd_takes_the_unit(self):
        self.assertEqual((0, ""), self.judged(UNIT.read_text()))

    def test_systemd_would_tell_a_wrong_one(self):
        self.assertIn("Unknown key 'Colour'", self.judged(UNIT.read_text().replace("Type=", "Colour="))[1])
        self.assertNotEqual(0, self.judged(UNIT.read_text().replace(PROGRAM, "/nowhere/mirn-host"))[0])

    def test_the_host_is_shut_in(self):
        self.assertEqual(0, analyze("security", "--offline=yes", f"--threshold={MOST_EXPOSED}", UNIT).returncode)
        self.assertNotEqual(0, analyze("security", "--offline=yes", "--threshold=1", UNIT).returncode)

    def test_what_is_left_open_has_its_reason(self):
        rows = json.loads(analyze("security", "--offline=yes", "--json=short", UNIT).stdout)
        text = UNIT.read_text()
        open_ones = [row["name"] for row in rows if not row["set"]]
        self.assertTrue(open_ones)
        for name in open_ones:
            setting = name.split("=")[0]
            self.assertRegex(text, rf"(?m)^(# (\w+, )*)?{setting}\b", f"{name} is neither set nor told why not")


class SocketUnitTest(UnitTest):
    def test_systemd_takes_it_with_the_service(self):
        self.assertEqual((0, ""), self.judged(UNIT.read_text(), SOCKET_UNIT.read_text()))

    def test_systemd_would_tell_a_wrong_one(self):
        text = SOCKET_UNIT.read_text()
        self.assertIn("Unknown key 'Colour'", self.judged(UNIT.read_text(), text.replace("SocketMode=", "Colour="))[1])
        self.assertNotEqual(0, self.judged(UNIT.read_text(), text.replace("ListenStream=", "Description="))[0])

    def test_the_host_serves_on_all_that_it_hands_over(self):
        network, local = settings(SOCKET_UNIT)["ListenStream"]
        self.assertRegex(network, r"^127\.0\.0\.1:\d+$")  # which needs no encryption
        self.assertRegex(local, "^/")
        self.assertNotIn("Accept", settings(SOCKET_UNIT))  # sockets, not connections

    def test_its_unix_socket_is_the_usual_one(self):
        """Where clients look for it, for those who may use it, and there as long as systemd listens."""
        socket_unit, service = settings(SOCKET_UNIT), settings(UNIT)
        (folder,) = service["RuntimeDirectory"]
        self.assertIn(f"/run/{folder}/host.sock", socket_unit["ListenStream"])
        self.assertEqual(["0660"], socket_unit["SocketMode"])
        self.assertEqual([*service["User"], *service["Group"]], [*socket_unit["SocketUser"], *socket_unit["SocketGroup"]])
        self.assertEqual(service["RuntimeDirectoryMode"], socket_unit["DirectoryMode"])
        self.assertEqual(["yes"], service["RuntimeDirectoryPreserve"])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
