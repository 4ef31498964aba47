#!/usr/bin/env python3
"""Twelve things that befall a machine, over HTTP and in simulated time. After every step health, alarms, jobs, history, stream
and machine tell the same.

usage: insight_stories_test.py HOST MODULE [unittest arguments]
"""

import pathlib
import sys
import tempfile
import unittest

from insight_machine import Machine

FIRST_MIRROR, SECOND_MIRROR, SPARE, FREE_SATA = "QV48021000A1", "QV48021000A7", "QV48021001C3", "TB2T7790315"
MEMBER_OF_DATA, JOURNAL_DRIVE, FREE_LYX = "OD1T9930B11A", "OP375C0071", "OD1T9930B1F0"
MEMBER_OF_ARCHIVE, ARCHIVE_SPARE = "OD3T2210A401", "OD3T2210A40C"
LONG = 200_000  # seconds in which all work ends
WITHOUT_END = 4294967295


class Story(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.machine = Machine(HOST, MODULE, pathlib.Path(folder.name))
        self.addCleanup(lambda: self.machine.host.kill())
        self.before = set(self.machine.causes())
        self.machine.check()

    def tearDown(self):
        self.machine.check()
        self.machine.control("check")
        self.assertEqual(self.machine.host.stop(), 0, self.machine.host.errors())

    def befall(self, incident, disk):
        self.machine.befall(incident, disk)
        self.machine.check()

    def pass_time(self, seconds):
        self.machine.pass_time(seconds)
        self.machine.check()

    def put(self, path, body):
        answer = self.machine.do("PUT", path, body)
        self.machine.check()
        return answer

    def of_volume(self, name, action):
        return f"mirn/volumes/{self.machine.volume(name)['id']}/{action}"

    def of_disk(self, serial, action):
        return f"mirn/disks/{self.machine.disk(serial)['id']}/{action}"

    def new_causes(self):
        return set(self.machine.causes()) - self.before

    def assertCause(self, *names):
        for name in names:
            self.assertIn(name, self.machine.causes())

    def ended(self):
        """"KIND of NAME: OUTCOME by ACTOR" of each job, oldest first."""
        return [f"{entry['operation']} of {entry['object']['name']}: {entry['outcome']} by {entry['actor']}"
                for entry in self.machine.replayed.finished]

    def test_a_disk_fails_and_a_spare_takes_over(self):
        self.befall("fail-disk", SECOND_MIRROR)
        self.assertCause("volume-degraded of System", "disk-failed of SATA " + SECOND_MIRROR)
        self.pass_time(1000)
        job = self.machine.get("jobs?state=running")["items"][0]
        self.assertGreater(job["percent"], 0)
        self.assertEqual(job["actor"], "machine")
        self.pass_time(LONG)
        self.assertNotIn("volume-degraded of System", self.machine.causes())
        self.assertEqual(self.ended(), ["rebuild of System: completed by machine"])

    def test_no_spare(self):
        self.put(self.of_disk(SPARE, "spare"), {"action": "UNMARK"})
        self.assertCause("no-spare-fits of System_Array")
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(LONG)
        self.assertCause("volume-degraded of System")
        self.put(self.of_volume("System", "rebuild"), {"diskId": self.machine.disk(FREE_SATA)["id"]})
        self.pass_time(LONG)
        self.assertNotIn("volume-degraded of System", self.machine.causes())
        self.assertEqual(self.ended(), ["rebuild of System: completed by first"])

    def test_a_second_failure_during_a_rebuild(self):
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(1000)
        self.befall("fail-disk", FIRST_MIRROR)
        self.assertCause("volume-failed of System")
        self.pass_time(LONG)
        self.assertCause("volume-failed of System")
        self.assertEqual(self.ended(), ["rebuild of System: failed by machine"])

    def test_a_disk_is_pulled_and_put_back(self):
        self.befall("pull-disk", MEMBER_OF_DATA)
        self.assertCause("volume-degraded of Database", "volume-failed of Scratch")
        self.befall("insert-disk", MEMBER_OF_DATA)
        self.assertNotIn("volume-failed of Scratch", self.machine.causes())
        self.pass_time(LONG)
        self.assertEqual(self.new_causes(), set())

    def test_a_smart_warning(self):
        self.befall("raise-smart-event", FREE_SATA)
        self.assertCause("disk-smart of SATA " + FREE_SATA)
        self.put(self.of_disk(FREE_SATA, "resetsmart"), {})
        self.assertEqual(self.new_causes(), set())

    def test_a_verification_finds_errors(self):
        self.put(self.of_volume("Database", "verify"), {"action": "START", "repair": False})
        self.pass_time(1000)
        self.assertEqual(self.machine.get("jobs?state=running")["items"][0]["kind"], "verify")
        while self.machine.get("mirn/state")["inProgress"]:
            self.pass_time(30)
        self.assertCause("verify-errors of Database")
        self.assertEqual(self.ended(), ["verify of Database: completed by first"])

    def test_a_migration_over_a_restart(self):
        self.put(self.of_volume("System", "level"), {"raidLevel": "RAID_5", "disks": [self.machine.disk(SPARE)["id"]]})
        self.pass_time(1000)
        before = self.machine.get("jobs?state=running")["items"][0]
        self.machine.restart()
        self.machine.check()
        self.assertEqual(self.machine.get("jobs?state=running")["items"][0]["id"], before["id"])
        self.pass_time(LONG)
        self.assertEqual(self.ended()[0], "migrate of System: completed by first")

    def test_a_kill_amid_a_rebuild(self):
        """The machine may lose what it had not saved: where less of the work is done than before, it is not the same."""
        self.befall("fail-disk", SECOND_MIRROR)
        self.pass_time(1000)
        before = self.machine.get("jobs?state=running")["items"][0]
        self.machine.restart(kill=True)
        self.machine.check()
        after = self.machine.get("jobs?state=running")["items"][0]
        ended = [entry["details"]["id"] for entry in self.machine.replayed.finished]
        self.assertEqual(ended, [before["id"]] if after["percent"] < before["percent"] else [])
        self.assertEqual(after["id"] == before["id"], after["percent"] >= before["percent"])
        self.pass_time(LONG)
        self.assertNotIn("volume-degraded of System", self.machine.causes())

    def test_a_disk_is_locked(self):
        self.befall("lock-disk", FREE_SATA)
        self.assertCause("disk-locked of SATA " + FREE_SATA)

    def test_the_journaling_drive_is_lost(self):
        self.befall("pull-disk", JOURNAL_DRIVE)
        self.assertCause("journaling-drive-lost of Database")
        self.befall("insert-disk", JOURNAL_DRIVE)
        self.assertNotIn("journaling-drive-lost of Database", self.machine.causes())

    def test_a_system_disk_is_replaced(self):
        self.put(self.of_disk(SPARE, "spare"), {"action": "UNMARK"})
        self.befall("pull-disk", FIRST_MIRROR)
        self.assertCause("volume-degraded of System")
        new = self.machine.control("insert-blank-disk", disk=FIRST_MIRROR)["disk"]
        self.machine.rescan()
        self.machine.check()
        if self.machine.volume("System")["state"] == "DEGRADED":
            self.put(self.of_volume("System", "rebuild"), {"diskId": self.machine.disk(new)["id"]})
        self.pass_time(LONG)
        self.assertNotIn("volume-degraded of System", self.machine.causes())

    def test_the_library_refuses_and_comes_back(self):
        self.machine.control("fail-calls", operation="VexGetVolumeInfo", status=15, count=WITHOUT_END)
        self.machine.ask("POST", "mirn/rescan")
        self.await_cause("picture-old of service", True)
        self.assertEqual(self.machine.health()["severity"], "critical")
        self.machine.control("clear-faults")
        self.machine.rescan()
        self.await_cause("picture-old of service", False)
        self.assertEqual(self.new_causes(), set())

    def await_cause(self, name, is_there):
        for _ in range(10_000):
            if (name in self.machine.causes()) == is_there:
                break
        self.assertEqual(name in self.machine.causes(), is_there)
        self.machine.check()

    def test_the_journal_is_overrun(self):
        for _ in range(510):
            self.machine.befall("pull-disk", FREE_LYX)
            self.machine.befall("insert-disk", FREE_LYX)
        self.machine.check()
        self.assertEqual(len(self.machine.get("mirn/events?time=100000000")), 1000)
        self.assertGreater(self.machine.health()["position"]["sequence"], 1000)


if __name__ == "__main__":
    HOST, MODULE = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
