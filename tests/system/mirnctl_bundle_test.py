#!/usr/bin/env python3
"""The command line on a bundle: it tells what the service told, and refuses what a file cannot do and what is none.

usage: mirnctl_bundle_test.py HOST MODULE MIRNCTL [unittest arguments]
"""

import gzip
import io
import json
import os
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile
import unittest

from local_host import PATIENCE, LocalHost

DONE, USAGE, NOT_FOUND = 0, 2, 3
AGE = r"mirnctl: bundle of \d{4}-\d\d-\d\d \d\d:\d\d:\d\dZ, \d+ s old\n"
READS = [
    ("volumes", "list"), ("volumes", "show", "Archive"), ("disks", "list"), ("disks", "show", "TB2T7790315"), ("arrays", "list"),
    ("arrays", "disks", "Archive_Array"), ("controllers", "list"), ("ports", "list"), ("raids", "list"), ("state", "show"),
    ("version", "show"), ("config", "get"), ("alarms", "list"), ("alarms", "list", "--state", "open"),
    ("alarms", "list", "--state", "cleared"), ("alarms", "show", "disk-failed"), ("jobs", "list"),
    ("jobs", "list", "--state", "ended"), ("jobs", "statistics"), ("history", "list", "--kind", "alarm"),
    ("history", "list", "--severity", "critical"), ("history", "list", "--kind", "job"), ("actions", "list", "volume", "Archive"),
    ("actions", "list", "service", "service"), ("readiness", "show"), ("volumes", "list", "--sort", "-totalSize"),
    ("volumes", "list", "--output", "csv"), ("alarms", "list", "--output", "json"),
]


def packed(files):
    """A bundle of these files."""
    whole = io.BytesIO()
    with tarfile.open(fileobj=whole, mode="w:gz", format=tarfile.PAX_FORMAT) as archive:
        for name, content in files:
            entry = tarfile.TarInfo(name)
            entry.size = len(content)
            archive.addfile(entry, io.BytesIO(content))
    return whole.getvalue()


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        cls.addClassCleanup(folder.cleanup)
        cls.home = pathlib.Path(folder.name)
        host = LocalHost(HOST, MODULE, cls.home, ["--simulator-controls"], VEXL2_CLOCK_SPEED="0").await_serving()
        cls.addClassCleanup(host.kill)
        cls.environment = {"HOME": str(cls.home), "PATH": os.environ["PATH"], "MIRN_TOKEN_FILE": str(cls.home / "token"),
                           "MIRN_HOST": f"http://127.0.0.1:{host.port}"}
        cls.bundle = cls.home / "bundle.tar.gz"
        for command in (["volumes", "rebuild", "Archive", "OD3T2210A40C", "--yes", "--wait"], ["bundle"]):
            began = subprocess.Popen([MIRNCTL, *command], env=cls.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE)
            while command[0] == "volumes" and began.poll() is None:
                host.request("POST", "simulator/advance-clock", {"milliseconds": 200_000_000})
                host.request("POST", "mirn/rescan")
            written = began.communicate(timeout=PATIENCE)[0]
        cls.bundle.write_bytes(written)
        cls.told = {command: cls.run_it(*command).stdout for command in READS + [("status",), ("ready",)]}
        host.stop()

    @classmethod
    def run_it(cls, *arguments):
        return subprocess.run([MIRNCTL, *arguments], env=cls.environment, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, timeout=PATIENCE, check=False)

    def of_bundle(self, *arguments, status=DONE, bundle=None):
        done = self.run_it("--bundle", bundle or self.bundle, *arguments)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done

    def test_it_tells_what_the_service_told(self):
        for command, told in self.told.items():
            if command in (("status",), ("ready",)):
                continue
            with self.subTest(command):
                done = self.of_bundle(*command)
                self.assertEqual(re.sub(r"\d+", "N", told), re.sub(r"\d+", "N", done.stdout))
                self.assertRegex(done.stderr, "^" + AGE + "$")

    def test_the_first_screens_are_the_service_s_under_the_name_of_the_file(self):
        for command in ("status", "ready"):
            # Who did what is not in a bundle.
            lines = self.of_bundle(command).stdout.partition("\nLatest\n")[0].splitlines()
            told = self.told[(command,)].partition("\nLatest\n")[0].splitlines()
            self.assertEqual(str(self.bundle), lines[0].rpartition(": ")[0])
            self.assertEqual(told[0].rpartition(": ")[2], lines[0].rpartition(": ")[2])
            self.assertEqual([re.sub(r"\d+", "N", line) for line in told[1:]], [re.sub(r"\d+", "N", line) for line in lines[1:]])

    def test_a_list_has_pages(self):
        every = [json.loads(line) for line in self.of_bundle("history", "list", "--output", "jsonl").stdout.splitlines()]
        found, cursor = [], "0"
        while cursor:
            done = self.of_bundle("history", "list", "--output", "jsonl", "--limit", "4", "--cursor", cursor)
            found += [json.loads(line) for line in done.stdout.splitlines()]
            more = re.search(r"--cursor (\d+)", done.stderr)
            cursor = more and more.group(1)
        self.assertGreater(len(every), 4)
        self.assertEqual(every, found)

    def test_what_a_file_cannot_do_is_a_matter_of_usage(self):
        for command in (["rescan"], ["volumes", "delete", "Scratch", "--yes"], ["volumes", "rename", "Scratch", "Heap", "--dry-run"],
                        ["events", "follow"], ["bundle"], ["history", "export"], ["jobs", "wait", "x"], ["top"],
                        ["whatif", "fail", "TB2T7790315"], ["volumes", "list", "--curl"], ["host", "metrics"],
                        ["events", "list", "--time", "1"], ["history", "list", "--text", "disk"], ["jobs", "show", "nothing"],
                        ["actions", "candidates", "volume", "Archive", "rebuildVolume", "diskId"],
                        ["readiness", "show", "--verified-within-days", "90"], ["volumes", "list", "--host", "http://127.0.0.1:1"]):
            with self.subTest(command):
                self.assertEqual("", self.of_bundle(*command, status=USAGE).stdout)

    def test_what_is_not_there_is_not_found(self):
        self.assertIn("there is no volume 'Nix'", self.of_bundle("volumes", "show", "Nix", status=NOT_FOUND).stderr)

    def test_what_is_no_bundle_is_told_as_such(self):
        whole = self.bundle.read_bytes()
        manifest = {"format": 1, "madeAt": "2026-01-01T00:00:00.000Z",
                    "files": [{"name": "../../etc/passwd", "target": "/api/v1/mirn/volumes", "status": 200}]}
        listed = json.dumps(manifest).encode()
        head = bytearray(gzip.decompress(packed([("a", b"")])))
        head[0] ^= 1
        hostile = {
            "empty": (b"", "is no gzip file"),
            "no gzip": (b"volumes", "is no gzip file"),
            "cut off": (whole[:-20], "is cut off"),
            "cut in the middle": (whole[:len(whole) // 2], "is cut off"),
            "damaged": (whole[:2000] + bytes(200) + whole[2200:], None),
            "too much behind": (whole + b"x", "goes on behind its end"),
            "no tar": (gzip.compress(b"x" * 2000), "holds no tar archive"),
            "wrong checksum": (gzip.compress(bytes(head)), "holds no tar archive"),
            "no manifest": (packed([("a", b"1")]), "has no manifest"),
            "a manifest that is none": (packed([("manifest.json", b"{")]), "is no JSON"),
            "another format": (packed([("manifest.json", b'{"format":2,"files":[]}')]), "another format"),
            "no files": (packed([("manifest.json", b'{"format":1}')]), "without files"),
            "twice": (packed([("manifest.json", listed), ("manifest.json", listed)]), "has a file twice"),
            "a bomb": (gzip.compress(bytes(300 << 20)), "holds too much"),
        }
        file = self.home / "hostile"
        for name, (content, words) in hostile.items():
            with self.subTest(name):
                file.write_bytes(content)
                done = self.of_bundle("volumes", "list", status=USAGE, bundle=file)
                self.assertEqual("", done.stdout)
                self.assertIn(words or "bundle", done.stderr)
        self.assertIn("cannot be read", self.of_bundle("volumes", "list", status=USAGE, bundle=self.home / "none").stderr)

    def test_names_lead_nowhere(self):
        manifest = {"format": 1, "madeAt": "2026-01-01T00:00:00.000Z\\u001b[31m",
                    "files": [{"name": "../../../../etc/passwd", "target": "/api/v1/mirn/volumes", "status": 200}]}
        file = self.home / "paths"
        file.write_bytes(packed([("manifest.json", json.dumps(manifest).encode())]))
        done = self.of_bundle("volumes", "list", status=USAGE, bundle=file)
        self.assertNotIn("root:", done.stdout + done.stderr)
        self.assertNotIn("\x1b", done.stderr)

    @unittest.skipIf(os.environ.get("MIRN_SANITIZE"), "a sanitizer has more memory of its own than the bound")
    def test_memory_is_bounded(self):
        file = self.home / "bomb"
        file.write_bytes(gzip.compress(bytes(600 << 20), 9))
        done = subprocess.run(["sh", "-c", f"ulimit -v 1500000; exec '{MIRNCTL}' --bundle '{file}' volumes list"],
                              env=self.environment, capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(USAGE, done.returncode, done.stderr)
        self.assertIn("holds too much", done.stderr)


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, MIRNCTL = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
