#!/usr/bin/env python3
"""The command line against a running host: what it says, to whom, and what it ends with.

usage: mirnctl_test.py HOST MODULE MIRNCTL [unittest arguments]
"""

import json
import os
import pathlib
import pty
import re
import subprocess
import sys
import tempfile
import termios
import threading
import time
import unittest

from local_host import PATIENCE, LocalHost

SPARE = "OD3T2210A40C"
DONE, REFUSED, USAGE, NOT_FOUND, CONFLICT, UNREACHABLE, UNAUTHORISED = range(7)


class CommandLineTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-", dir=self.folder)
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.host = LocalHost(HOST, MODULE, self.home, ["--simulator-controls"], VEXL2_CLOCK_SPEED="0")
        self.addCleanup(lambda: self.host.kill())
        self.host.await_serving()
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], "MIRN_TOKEN_FILE": str(self.home / "token"),
                            "MIRN_HOST": f"http://127.0.0.1:{self.host.port}"}

    def run_it(self, *arguments, status=DONE, **environment):
        """What it writes for a command line that ends with this status."""
        done = subprocess.run([MIRNCTL, *arguments], env={**self.environment, **environment}, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done.stdout if status == DONE else done.stderr

    def test_the_first_screen_tells_what_is_wrong_and_what_may_help(self):
        told = re.sub(r"\d{4}-\d\d-\d\d [\d:]+Z", "TIME", self.run_it("status"))
        what, _, latest = told.partition("\nLatest\n")
        self.assertEqual(f"""http://127.0.0.1:{self.host.port}: critical

What is wrong
  critical  Volume Archive lacks redundancy until it has been rebuilt. (since TIME)
    next: mirnctl volumes rebuild Archive --disk-id <diskId>
  warning  Disk SATA TB4T6610092 reports that it may fail soon. (since TIME)
    next: mirnctl disks reset-smart TB4T6610092
  warning  Disk NVME OD3T2210A409 has failed. (since TIME)
    next: mirnctl disks mark-normal OD3T2210A409
  info  Disk SATA QV96021044E0 is locked. (since TIME)
    next: mirnctl rescan
  info  No spare can take over from a disk of array Archive_Array. (since TIME)
    next: mirnctl disks set-spare <diskId> --action MARK
  info  No spare can take over from a disk of array Data_Array. (since TIME)
    next: mirnctl disks set-spare <diskId> --action MARK
""", what)
        self.assertEqual(5, latest.count("TIME  alarm  "), latest)

    def test_a_list_has_its_columns_and_all_fields_for_scripts(self):
        self.assertEqual("""ID                    NAME      STATE     RAID LEVEL  TOTAL SIZE  MIGR PROGRESS
84211777706003351     System    NORMAL    RAID_1       447.1 GiB            0 %
5815940470145189505   Archive   DEGRADED  RAID_5         4.0 TiB            0 %
5171957323460249429   Database  NORMAL    RAID_5         2.0 TiB            0 %
11266543602722464666  Scratch   NORMAL    RAID_0         1.4 TiB            0 %
""", self.run_it("volumes", "list"))
        answered = self.host.request("GET", "mirn/volumes")[1]
        self.assertEqual(answered, json.loads(self.run_it("volumes", "list", "--output", "json")))
        lines = self.run_it("volumes", "list", "--output", "jsonl").splitlines()
        self.assertEqual(answered, [json.loads(line) for line in lines])

    def test_a_rebuild_is_waited_for(self):
        waiting = subprocess.Popen([MIRNCTL, "volumes", "rebuild", "Archive", SPARE, "--yes", "--wait"],
                                   env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, text=True)
        self.addCleanup(waiting.kill)
        while not json.loads(self.run_it("jobs", "list", "--output", "json")):
            self.assertIsNone(waiting.poll(), waiting.stderr)
        self.assertIn("rebuild of Archive, 0 %", self.run_it("status"))
        self.host.request("POST", "simulator/advance-clock", {"milliseconds": 200_000_000})
        self.host.request("POST", "mirn/rescan")
        told, errors = waiting.communicate(timeout=PATIENCE)
        self.assertEqual((DONE, "rebuild of Archive: completed\n"), (waiting.returncode, errors))
        self.assertIn("state     REBUILDING\n", told)
        self.assertIn("NORMAL", self.run_it("volumes", "show", "Archive"))

    def test_what_destroys_wants_the_name_typed_at_a_terminal(self):
        plan = "The volume Scratch goes, with all its data.\n"
        told = self.run_it("volumes", "delete", "Scratch", status=REFUSED)
        self.assertTrue(told.startswith(plan), told)
        self.assertTrue(told.endswith("mirnctl: something would be lost, and nobody is here to agree\n  --yes agrees\n"), told)
        self.assertEqual(REFUSED, self.type_at_a_terminal("Scretch", "volumes", "delete", "Scratch"))
        self.assertEqual(4, len(self.host.request("GET", "mirn/volumes")[1]))
        self.assertEqual(DONE, self.type_at_a_terminal("Scratch", "volumes", "delete", "Scratch"))
        self.assertEqual(["System", "Archive", "Database"],
                         [volume["name"] for volume in self.host.request("GET", "mirn/volumes")[1]])

    def type_at_a_terminal(self, typed, *arguments):
        master, slave = pty.openpty()
        try:
            process = subprocess.Popen([MIRNCTL, *arguments], env={**self.environment, "TERM": "xterm"}, stdin=slave,
                                       stdout=slave, stderr=slave)
            shown = b""
            while b"to go on: " not in shown:
                shown += os.read(master, 1000)
            self.assertIn(b"Type Scratch to go on: ", shown)
            os.write(master, typed.encode() + b"\n")
            return process.wait(PATIENCE)
        finally:
            os.close(slave)
            os.close(master)

    def test_sizes_and_words_are_taken_as_people_write_them(self):
        self.run_it("volumes", "create", "--name", "Mirror", "--raid-level", "raid1", "--source", "disk", "--size", "100G",
                    "--disks", "TB2T7790315,TB2T7790318", "--yes")
        made = [volume for volume in self.host.request("GET", "mirn/volumes")[1] if volume["name"] == "Mirror"]
        self.assertEqual([("RAID_1", str(100 * 2 ** 30))], [(volume["raidLevel"], volume["totalSize"]) for volume in made])

    def test_each_end_has_its_status(self):
        self.assertIn("there is no volume 'Nix'", self.run_it("volumes", "show", "Nix", status=NOT_FOUND))
        self.assertIn("Run with --help", self.run_it("volumes", "lst", status=USAGE))
        self.assertEqual("mirnctl: NOT_SUPPORTED: Rebuild operation can be performed only on degraded volume\n",
                         self.run_it("volumes", "rebuild", "System", SPARE, "--yes", status=CONFLICT))
        wrong = self.home / "wrong"
        wrong.write_text("mirn_wrong\n")
        wrong.chmod(0o600)
        self.run_it("volumes", "list", "--token-file", wrong, status=UNAUTHORISED)
        wrong.chmod(0o644)
        self.assertIn("chmod 600", self.run_it("volumes", "list", "--token-file", wrong, status=USAGE))
        self.host.stop()
        self.assertIn("is the service running?", self.run_it("volumes", "list", status=UNREACHABLE))

    def test_the_request_as_curl_does_the_same(self):
        line = self.run_it("volumes", "rename", "Scratch", "Heap", "--curl")
        self.assertNotIn(self.host.token(), line)
        subprocess.run(["sh", "-ec", line], env={**self.environment, "TOKEN": self.host.token()}, check=True,
                       capture_output=True, timeout=PATIENCE)
        self.assertIn("Heap", self.run_it("volumes", "list"))

    def test_who_signs_in_has_a_profile_with_a_token_of_his_own(self):
        without = {**self.environment, "MIRN_TOKEN_FILE": ""}
        code = subprocess.run([HOST, "sign-in", "--unix-socket", self.home / "host.sock", "--role", "observe"],
                              env=without, capture_output=True, text=True, timeout=PATIENCE, check=True).stdout
        for name, secret in (("far", self.host.token()), ("near", code.split()[-1])):
            told = subprocess.run([MIRNCTL, "login", "--profile", name], env=without, input=secret + "\n",
                                  capture_output=True, text=True, timeout=PATIENCE, check=False)
            self.assertEqual((DONE, ""), (told.returncode, told.stderr))
            file = self.home / ".config/mirn" / (name + ".token")
            self.assertEqual(0o600, file.stat().st_mode & 0o777)
            self.assertIn("Scratch", self.run_it("volumes", "list", "--profile", name, MIRN_HOST="http://nowhere:1"))
        self.assertEqual(0o700, file.parent.stat().st_mode & 0o777)
        self.run_it("volumes", "rename", "Scratch", "Heap", "--profile", "near", status=UNAUTHORISED)
        self.run_it("volumes", "rename", "Scratch", "Heap", "--profile", "far")
        wrong = subprocess.run([MIRNCTL, "login", "--profile", "far"], env=without, input="mirn_wrong\n",
                               capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(UNAUTHORISED, wrong.returncode, wrong.stderr)
        self.run_it("volumes", "list", "--profile", "far")

    def test_a_token_that_is_typed_is_not_shown(self):
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        process = subprocess.Popen([MIRNCTL, "login"], env={**self.environment, "TERM": "xterm"}, stdin=slave, stdout=slave,
                                   stderr=slave)
        shown = b""
        while b"code: " not in shown:
            shown += os.read(master, 1000)
        os.write(master, self.host.token().encode() + b"\n")
        while b"Signed in at " not in shown:
            shown += os.read(master, 1000)
        self.assertEqual(DONE, process.wait(PATIENCE))
        self.assertNotIn(self.host.token().encode(), shown)
        self.assertTrue(termios.tcgetattr(slave)[3] & termios.ECHO)
        os.close(slave)

    def test_a_unix_socket_needs_no_token(self):
        told = self.run_it("version", "show", "--host", f"unix:{self.home / 'host.sock'}", MIRN_TOKEN_FILE="")
        self.assertIn("pluginVersion", told)

    def test_what_happens_is_followed(self):
        following = subprocess.Popen([MIRNCTL, "events", "follow"], env=self.environment, stdin=subprocess.DEVNULL,
                                     stdout=subprocess.PIPE, text=True)
        heard = threading.Event()
        reader = threading.Thread(target=lambda: [heard.set() for line in following.stdout if "renameVolume" in line])
        reader.start()
        for cleanup in (following.stdout.close, reader.join, following.wait, following.kill):
            self.addCleanup(cleanup)
        names = ["Scratch", "Heap"]
        deadline = time.monotonic() + PATIENCE
        while not heard.is_set():  # what happens before it listens is told to nobody
            self.assertLess(time.monotonic(), deadline)
            self.run_it("volumes", "rename", *names)
            names.reverse()
        self.host.stop()
        self.assertEqual(DONE, following.wait(PATIENCE))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, MIRNCTL = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
