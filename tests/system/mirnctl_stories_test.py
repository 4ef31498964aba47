#!/usr/bin/env python3
"""Twelve things that befall a machine, told and mended by the command line alone, in simulated time. What it tells is compared
whole, but for what is another thing in each run: moments stand as TIME, ids of jobs as JOB.

usage: mirnctl_stories_test.py HOST MODULE MIRNCTL [unittest arguments]
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time
import unittest

from local_host import LocalHost

FIRST_MIRROR, SECOND_MIRROR, SPARE, FREE_SATA = "QV48021000A1", "QV48021000A7", "QV48021001C3", "TB2T7790315"
MEMBER_OF_DATA, JOURNAL_DRIVE, FREE_LYX = "OD1T9930B11A", "OP375C0071", "OD1T9930B1F0"
LONG = 200_000  # seconds in which all work ends
WITHOUT_END = 4294967295
PATIENCE = 20  # seconds until what has happened shows
DONE, USAGE = 0, 2


# What is wrong with the machine from the start.
ARCHIVE = """critical  Volume Archive lacks redundancy until it has been rebuilt. (since TIME)
  next: mirnctl volumes rebuild Archive --disk-id <diskId>
"""
OLD_DISKS = """warning  Disk SATA TB4T6610092 reports that it may fail soon. (since TIME)
  next: mirnctl disks reset-smart TB4T6610092
warning  Disk NVME OD3T2210A409 has failed. (since TIME)
  next: mirnctl disks mark-normal OD3T2210A409
"""
LOCKED = """info  Disk SATA QV96021044E0 is locked. (since TIME)
  next: mirnctl rescan
"""
NO_SYSTEM_SPARE = """info  No spare can take over from a disk of array System_Array. (since TIME)
  next: mirnctl disks set-spare <diskId> --action MARK
"""
NO_SPARES = NO_SYSTEM_SPARE.replace("System", "Archive") + NO_SYSTEM_SPARE.replace("System", "Data")
FROM_THE_START = ARCHIVE + OLD_DISKS + LOCKED + NO_SPARES

SYSTEM = """critical  Volume System lacks redundancy until it has been rebuilt. (since TIME)
"""
SYSTEM_FAILED = """critical  Volume System has failed: it has lost more disks than it can do without. (since TIME)
  next: mirnctl rescan
  next: mirnctl volumes mark-normal System
"""
FAILED_DISK = """warning  Disk SATA {0} has failed. (since TIME)
  next: mirnctl disks mark-normal {0}
"""


def stable(text):
    """Without what is another thing in each run."""
    text = re.sub(r"\d{4}-\d\d-\d\d[T ]\d\d:\d\d:\d\d(\.\d+)?Z", "TIME", text)
    return re.sub(r"\b[0-9a-f]{16}-\d+\b", "JOB", text)


class Story(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.start()
        self.addCleanup(lambda: self.host.kill())

    def start(self):
        self.host = LocalHost(HOST, MODULE, self.home, ("--simulator-controls",), VEXL2_CLOCK_SPEED="0",
                              VEXL2_EVENT_WAIT_CAP="20").await_serving()
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], "MIRN_TOKEN_FILE": str(self.home / "token"),
                            "MIRN_HOST": f"http://127.0.0.1:{self.host.port}"}

    def tell(self, *arguments, status=DONE):
        """What it writes."""
        done = subprocess.run([MIRNCTL, *arguments], env=self.environment, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, timeout=60, check=False)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done.stdout if status == DONE else done.stderr

    def await_that(self, holds, *arguments):
        """What it writes once that holds of it."""
        deadline = time.monotonic() + PATIENCE
        while True:
            told = stable(self.tell(*arguments))
            if holds(told) or time.monotonic() > deadline:
                return told
            time.sleep(0.02)

    def assertTold(self, expected, *arguments):
        self.assertEqual(expected, self.await_that(lambda told: told == expected, *arguments))

    def assertWrong(self, expected, work=""):
        """All that is wrong, and all that is under way."""
        def parts(told):
            first = told.partition("\nWhat is wrong\n")[2].partition("\nLatest\n")[0]
            wrong, _, under_way = first.partition("\nWork under way\n")
            return re.sub("^  ", "", wrong, flags=re.M), under_way.strip()
        told = self.await_that(lambda told: parts(told) == (expected, work), "status")
        self.assertEqual((expected, work), parts(told))

    def befall(self, incident, disk):
        self.tell("simulator", incident, "--disk", disk)
        self.tell("rescan")

    def pass_time(self, seconds):
        self.tell("simulator", "advance-clock", "--milliseconds", str(seconds * 1000))
        self.tell("rescan")

    def assertEnded(self, *jobs):
        """"KIND OBJECT OUTCOME ACTOR" of each, the last one first."""
        lines = "".join(job.replace(" ", ",") + "\n" for job in ("kind object.name outcome actor", *jobs))
        self.assertTold(lines, "jobs", "list", "--state", "ended", "--output", "csv", "--columns", "kind,object.name,outcome,actor")

    def test_a_disk_fails_and_a_spare_takes_over(self):
        self.assertWrong(FROM_THE_START)
        self.befall("fail-disk", SECOND_MIRROR)
        self.assertWrong(SYSTEM + ARCHIVE + FAILED_DISK.format(SECOND_MIRROR) + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES,
                         "rebuild of System, 0 %")
        self.pass_time(1000)
        self.assertTold("""ID                  KIND     OBJECT  PERCENT  ACTOR    START
JOB  rebuild  System       43  machine  TIME
""", "jobs", "list")
        self.pass_time(LONG)
        self.assertWrong(ARCHIVE + FAILED_DISK.format(SECOND_MIRROR) + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)
        self.assertTold("""ID                  KIND     OBJECT  OUTCOME    PERCENT  ACTOR    START                 END
JOB  rebuild  System  completed       43  machine  TIME  TIME
""", "jobs", "list", "--state", "ended")
        self.assertTold("""AT                    KIND  SEVERITY  ACTOR    OUTCOME    DETAILS
TIME  job   info      machine  completed  rebuild System
TIME  job   info      machine  begun      rebuild System
""", "history", "list", "--kind", "job")

    def test_no_spare(self):
        self.tell("disks", "set-spare", SPARE, "UNMARK")
        self.assertWrong(ARCHIVE + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(LONG)
        step = "  next: mirnctl volumes rebuild System --disk-id <diskId>\n"
        self.assertWrong(SYSTEM + step + ARCHIVE + FAILED_DISK.format(SECOND_MIRROR) + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE +
                         NO_SPARES)
        self.assertTold("""VALUE                 OBJECT             ALLOWED
11095009318776498620  SATA QV48021001C3  yes
11094052743661081685  SATA TB2T7790315   yes
11093096168544526090  SATA TB2T7790318   yes
""", "actions", "candidates", "volume", "System", "rebuildVolume", "diskId")
        self.assertTold("""The volume System is rebuilt onto the disk SATA TB2T7790315.
The lost disk leaves the array.
Everything on the disk SATA TB2T7790315 is overwritten.
Lost: everything on SATA TB2T7790315
Until it is over System may lose 0 disks
Then: rebuild of System, for an unknown time
""", "volumes", "rebuild", "System", FREE_SATA, "--dry-run")
        self.tell("volumes", "rebuild", "System", FREE_SATA, "--yes")
        self.pass_time(LONG)
        self.assertWrong(ARCHIVE + FAILED_DISK.format(SECOND_MIRROR) + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)
        self.assertEnded("rebuild System completed first")

    def test_a_second_failure_during_a_rebuild(self):
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(1000)
        self.befall("fail-disk", FIRST_MIRROR)
        both = FAILED_DISK.format(FIRST_MIRROR) + FAILED_DISK.format(SECOND_MIRROR)
        self.assertWrong(SYSTEM_FAILED + ARCHIVE + both + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)
        self.assertEnded("rebuild System failed machine")

    def test_a_disk_is_pulled_and_put_back(self):
        self.befall("pull-disk", MEMBER_OF_DATA)
        database = SYSTEM.replace("System", "Database")
        self.assertWrong(ARCHIVE + database + "  next: mirnctl volumes rebuild Database --disk-id <diskId>\n" +
                         SYSTEM_FAILED.replace("System", "Scratch") + OLD_DISKS +
                         "warning  Disk Lyx OD1T9930B11A is missing. (since TIME)\n  next: mirnctl rescan\n" + LOCKED + NO_SPARES)
        self.befall("insert-disk", MEMBER_OF_DATA)
        self.assertWrong(ARCHIVE + database + OLD_DISKS + LOCKED + NO_SPARES, "rebuild of Database, 0 %")
        self.pass_time(LONG)
        self.assertWrong(FROM_THE_START)
        self.assertEnded("rebuild Database completed machine")

    def test_a_smart_warning(self):
        self.befall("raise-smart-event", FREE_SATA)
        new = OLD_DISKS[:OLD_DISKS.index("warning  Disk NVME")].replace("TB4T6610092", FREE_SATA)
        self.assertWrong(ARCHIVE + new + OLD_DISKS + LOCKED + NO_SPARES)
        self.assertIn("it may be disk-smart-", self.tell("alarms", "acknowledge", "disk-smart", status=USAGE))
        self.tell("alarms", "acknowledge", "SATA " + FREE_SATA)
        columns = ("--output", "csv", "--columns", "severity,object.name,state,acknowledged.by")
        self.assertIn(f"warning,SATA {FREE_SATA},open,first", self.tell("alarms", "list", *columns).splitlines())
        self.tell("disks", "reset-smart", FREE_SATA)
        self.assertWrong(FROM_THE_START)
        self.assertTold(f"""severity,object.name,state,acknowledged.by
warning,SATA {FREE_SATA},cleared,first
""", "alarms", "list", "--state", "cleared", *columns)

    def test_a_verification_finds_errors(self):
        self.assertTold("""The volume Database is verified.
Until it is over Database may lose 1 disks
Then: verify of Database, for an unknown time
""", "volumes", "verify", "Database", "--action", "start", "--repair", "no", "--dry-run")
        self.tell("volumes", "verify", "Database", "--action", "start", "--repair", "no")
        self.pass_time(1000)
        self.assertTold("""ID                  KIND    OBJECT    PERCENT  ACTOR  START
JOB  verify  Database       38  first  TIME
""", "jobs", "list")
        while json.loads(self.tell("state", "show", "--output", "json"))["inProgress"]:
            self.pass_time(30)
        self.assertWrong(ARCHIVE + "warning  Verification found errors on volume Database. (since TIME)\n"
                         "  next: mirnctl volumes verify Database --action START --repair true\n" + OLD_DISKS + LOCKED + NO_SPARES)
        self.assertEnded("verify Database completed first")

    def test_a_migration_over_a_restart(self):
        told = self.tell("volumes", "change-level", "System", "raid5", "--disks", SPARE, "--dry-run")
        self.assertIn("Lost: everything on SATA QV48021001C3\n", told)
        self.tell("volumes", "change-level", "System", "raid5", "--disks", SPARE, "--yes")
        self.pass_time(1000)
        running = self.await_that(lambda told: " 21 " in told, "jobs", "list")
        before = self.tell("jobs", "list", "--output", "jsonl", "--columns", "id")
        self.assertEqual(0, self.host.stop())
        self.start()
        self.assertTold(running, "jobs", "list")
        self.assertEqual(before, self.tell("jobs", "list", "--output", "jsonl", "--columns", "id"))
        self.pass_time(LONG)
        self.assertEnded("migrate System completed first")
        self.assertTold("""name,raidLevel,state
System,RAID_5,NORMAL
Archive,RAID_5,DEGRADED
Database,RAID_5,NORMAL
Scratch,RAID_0,NORMAL
""", "volumes", "list", "--output", "csv", "--columns", "name,raidLevel,state")

    def test_a_kill_amid_a_rebuild(self):
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(1000)
        self.await_that(lambda told: " 43 " in told, "jobs", "list")
        self.host.kill()
        self.start()
        self.await_that(lambda told: "rebuild" in told, "jobs", "list")
        self.pass_time(LONG)
        self.assertWrong(ARCHIVE + FAILED_DISK.format(SECOND_MIRROR) + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)

    def test_a_disk_is_locked(self):
        self.befall("lock-disk", FREE_SATA)
        self.assertWrong(ARCHIVE + OLD_DISKS + LOCKED.replace("QV96021044E0", FREE_SATA) + LOCKED + NO_SPARES)

    def test_the_journaling_drive_is_lost(self):
        self.befall("pull-disk", JOURNAL_DRIVE)
        journal = """warning  Volume Database goes on without its journal, whose drive is lost. (since TIME)
  next: mirnctl volumes set-write-hole-policy Database --rwh-policy <rwhPolicy>
"""
        missing = f"warning  Disk Lyx {JOURNAL_DRIVE} is missing. (since TIME)\n  next: mirnctl rescan\n"
        self.assertWrong(ARCHIVE + journal + OLD_DISKS + missing + LOCKED + NO_SPARES)
        self.befall("insert-disk", JOURNAL_DRIVE)
        self.assertWrong(FROM_THE_START)

    def test_a_system_disk_is_replaced(self):
        self.tell("disks", "set-spare", SPARE, "UNMARK")
        self.befall("pull-disk", FIRST_MIRROR)
        step = "  next: mirnctl volumes rebuild System --disk-id <diskId>\n"
        missing = f"warning  Disk SATA {FIRST_MIRROR} is missing. (since TIME)\n  next: mirnctl rescan\n"
        self.assertWrong(SYSTEM + step + ARCHIVE + missing + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)
        told = self.tell("simulator", "insert-blank-disk", "--disk", FIRST_MIRROR, "--output", "json")
        self.tell("rescan")
        self.tell("volumes", "rebuild", "System", json.loads(told)["disk"], "--yes")
        self.pass_time(LONG)
        self.assertWrong(ARCHIVE + OLD_DISKS + LOCKED + NO_SYSTEM_SPARE + NO_SPARES)

    def test_the_library_refuses_and_comes_back(self):
        self.tell("simulator", "fail-calls", "--operation", "VexGetVolumeInfo", "--status", "15", "--count", str(WITHOUT_END))
        self.tell("rescan")
        self.assertIn("\n  unknown  ", self.await_that(lambda told: "\n  unknown  " in told, "status"))
        self.tell("simulator", "clear-faults")
        self.tell("rescan")
        self.assertWrong(FROM_THE_START)

    def test_more_happens_than_a_page_holds(self):
        for _ in range(20):
            self.befall("pull-disk", FREE_LYX)
            self.befall("insert-disk", FREE_LYX)
        page = ("history", "list", "--kind", "event", "--limit", "30", "--output", "jsonl")
        done = subprocess.run([MIRNCTL, *page], env=self.environment, capture_output=True, text=True, timeout=60, check=True)
        cursor = re.search(r"^mirnctl: there is more: --limit, or --cursor (\S+)$", done.stderr, re.M)
        told = done.stdout.splitlines() + self.tell(*page, "--cursor", cursor.group(1)).splitlines()
        rows = [json.loads(line)["row"] for line in told]
        self.assertEqual((40, sorted(rows, reverse=True)), (len(set(rows)), rows))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, MIRNCTL = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
