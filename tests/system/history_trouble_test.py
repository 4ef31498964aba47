#!/usr/bin/env python3
"""Looks at what becomes of the history where its file is locked by somebody else or its disk is full, and after that.

usage: history_trouble_test.py HOST MODULE [unittest arguments]
"""

import contextlib
import http.client
import resource
import socket
import sqlite3
import sys

from history_folder import SPARE, HistoryFolder, main
from local_host import PATIENCE

MOST_WAITING = 10_000  # entries
OF_A_CHANGE = 2  # begun, and done or refused
AT_ONCE = 8


class TroubledHistory(HistoryFolder):
    def rename(self, name):
        """A change that goes well."""
        self.ask("PUT", f"mirn/volumes/{self.volume_id}/name", {"name": name})

    def launch(self, *arguments, **options):
        super().launch(*arguments, **options)
        self.volume_id = self.ask("GET", "mirn/volumes")[0]["id"]

    def calls(self, operation):
        """Outcomes of changes that were asked for, the oldest first."""
        return [entry["outcome"] for entry in reversed(self.items("history?kind=audit&limit=1000"))
                if entry["operation"] == operation]

    def await_trouble(self):
        self.await_that("health tells of it", lambda: "history" in self.causes())
        cause = next(cause for cause in self.ask("GET", "health")["causes"] if cause["id"] == "history")
        self.assertEqual(("history", "warning", "service"), (cause["kind"], cause["severity"], cause["object"]["type"]))
        self.assertRegex(cause["text"], r"^The history cannot be written: .+\.$")
        self.await_that("there is an alarm of it", lambda: "history" in [alarm["id"] for alarm in self.items("alarms")])

    def await_recovery(self):
        self.await_that("health is content", lambda: "history" not in self.causes())
        self.await_that("the alarm has cleared", lambda: self.ask("GET", "alarms/history")["state"] == "cleared")

    def hold_numbers(self):
        """Each entry once, and none that is not written."""
        entries = self.all_items("history?limit=1000")
        rows = [entry["row"] for entry in entries]
        self.assertEqual(list(range(rows[0], rows[0] - len(rows), -1)), rows)
        return entries

    def be_refused(self, times):
        """So many changes are asked for that cannot be, some at a time."""
        body = b'{"action": "UNMARK"}'
        request = (f"PUT /api/v1/mirn/disks/1/spare HTTP/1.1\r\nHost: 127.0.0.1:{self.host.port}\r\n"
                   f"Authorization: Bearer {self.host.token()}\r\nContent-Type: application/json\r\n"
                   f"Content-Length: {len(body)}\r\n\r\n").encode() + body
        with socket.create_connection(("127.0.0.1", self.host.port), PATIENCE) as connection, connection.makefile("rb") as answers:
            for first in range(0, times, AT_ONCE):
                count = min(AT_ONCE, times - first)
                connection.sendall(request * count)
                for _ in range(count):
                    self.assertEqual(b"HTTP/1.1 404 Not Found\r\n", answers.readline())
                    answers.read(int(http.client.parse_headers(answers)["Content-Length"]))


class LockedHistoryTest(TroubledHistory):
    @contextlib.contextmanager
    def locked(self):
        """As long as somebody else writes."""
        with contextlib.closing(sqlite3.connect(self.folder / "history.db", isolation_level=None)) as other:
            other.execute("BEGIN EXCLUSIVE")
            yield
            other.execute("ROLLBACK")

    def test_what_happens_while_somebody_writes_is_kept_afterwards(self):
        self.launch()
        self.rename("First")
        with self.locked():
            self.rename("Second")
            self.await_trouble()
            self.rename("Third")
            self.ask("PUT", f"mirn/disks/{self.id_of(SPARE)}/spare", {"action": "UNMARK"})
            self.assertEqual("Third", self.volume_name(), "changes go on")
            self.assertEqual(404, self.host.request("PUT", "mirn/volumes/1/name", {"name": "Fourth"})[0])
            self.assertEqual(["begun", "done"], self.calls("renameVolume"), "what was written before")
        self.await_recovery()
        self.assertEqual(["begun", "done"] * 3 + ["begun", "refused"], self.calls("renameVolume"))
        self.assertEqual(["begun", "done"], self.calls("setDiskSpare"))
        alarms = [(entry["operation"], entry["outcome"]) for entry in reversed(self.hold_numbers())
                  if entry["kind"] == "alarm" and entry["operation"] in ("history", "no-spare-fits")]
        self.assertIn(("no-spare-fits", "raised"), alarms)
        self.assertEqual(["raised", "cleared"], [outcome for kind, outcome in alarms if kind == "history"])
        self.assertEqual(0, self.host.stop())

    def volume_name(self):
        return next(volume["name"] for volume in self.ask("GET", "mirn/volumes") if volume["id"] == self.volume_id)

    def test_beyond_ten_thousand_entries_are_counted(self):
        self.launch()
        with self.locked():
            self.rename("Second")
            self.await_trouble()
            self.be_refused(MOST_WAITING // OF_A_CHANGE + 50)
            lost_from = len(self.calls("renameVolume"))
        self.await_recovery()
        self.await_that("the loss is told", lambda: self.items("history?kind=service"))
        lost = self.items("history?kind=service")
        self.assertEqual([("history", "lost", "warning")],
                         [(entry["operation"], entry["outcome"], entry["severity"]) for entry in lost])
        entries = self.hold_numbers()
        told = [entry for entry in entries if entry["kind"] == "audit" and entry["operation"] == "setDiskSpare"]
        self.assertGreater(lost[0]["details"]["count"], 0)
        self.assertEqual((MOST_WAITING // OF_A_CHANGE + 50) * OF_A_CHANGE, len(told) + lost[0]["details"]["count"])
        self.assertLessEqual(lost[0]["details"]["from"], lost[0]["details"]["to"])
        self.assertEqual(0, lost_from)
        self.assertEqual(0, self.host.stop())

    @contextlib.contextmanager
    def held(self):
        """As long as somebody else has it all to himself, who came first."""
        with contextlib.closing(sqlite3.connect(self.folder / "history.db", isolation_level=None)) as other:
            other.execute("PRAGMA locking_mode = EXCLUSIVE")
            other.execute("BEGIN EXCLUSIVE")
            other.execute("COMMIT")
            yield

    def test_one_that_cannot_be_read_is_a_503_until_it_can(self):
        self.launch()
        self.rename("First")
        self.assertEqual(0, self.host.stop())
        with self.held():
            self.launch()
            self.await_trouble()
            for path in ("history", "jobs?state=ended", "jobs/statistics", "alarms?state=cleared", "jobs/0-1", "alarms/x",
                         "history/export"):
                with self.subTest(path=path):
                    self.assertRegex(self.refused(path, 503), "^The history cannot be read now: .*locked")
            self.rename("Second")
            self.ask("PUT", f"mirn/disks/{self.id_of(SPARE)}/spare", {"action": "UNMARK"})
            self.await_that("there is an alarm", lambda: "no-spare-fits" in [alarm["kind"] for alarm in self.items("alarms")])
        self.await_that("it is read again", lambda: self.host.request("GET", "history")[0] == 200)
        self.await_recovery()
        self.assertEqual(["begun", "done"] * 2, self.calls("renameVolume"))
        self.assertTrue(any(entry["operation"] == "no-spare-fits" and entry["outcome"] == "raised"
                            for entry in self.hold_numbers()))
        self.assertEqual(0, self.host.stop())


class FullDiskTest(TroubledHistory):
    """A file that may not grow is as one on a full disk; whoever owns the host may say so, too."""

    LAUNCHER = ("sh", "-c", "trap '' XFSZ; exec \"$@\"", "sh")  # a limit is a failure, and no end

    def limit_files(self, size):
        hard = resource.prlimit(self.host.process.pid, resource.RLIMIT_FSIZE)[1]
        resource.prlimit(self.host.process.pid, resource.RLIMIT_FSIZE, (size, hard))

    def test_what_happens_while_the_disk_is_full_is_kept_afterwards(self):
        self.launch(launcher=self.LAUNCHER)
        log = self.folder / "history.db-wal"
        names = (f"Name{number}" for number in range(1000))
        others = max(file.stat().st_size for file in self.folder.iterdir() if not file.name.startswith("history.db"))
        limit = max(256 * 1024, 2 * others)
        while log.stat().st_size <= limit:
            self.rename(next(names))
        written = len(self.calls("renameVolume"))
        self.limit_files(limit)
        for _ in range(5):
            self.rename(next(names))
        self.await_trouble()
        self.rename(next(names))
        self.assertEqual(404, self.host.request("PUT", "mirn/volumes/1/name", {"name": "Fourth"})[0])
        self.assertEqual(written, len(self.calls("renameVolume")), "what there is can be read")
        self.limit_files(resource.RLIM_INFINITY)
        self.await_recovery()
        calls = self.calls("renameVolume")
        self.assertEqual(written + 7 * OF_A_CHANGE, len(calls))
        self.assertEqual(["begun", "done"] * (len(calls) // 2 - 1) + ["begun", "refused"], calls)
        self.hold_numbers()
        self.assertEqual(0, self.host.stop())


if __name__ == "__main__":
    main(sys.argv, __doc__)
