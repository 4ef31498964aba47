#!/usr/bin/env python3
"""Looks at what is told of how ready a machine is for its next fault: by its spares and firmware, and by a history, which is
made older between two runs of the host.

usage: readiness_test.py HOST MODULE [unittest arguments]
"""

import contextlib
import json
import pathlib
import sqlite3
import sys
import time

from history_folder import FREE_DISK, REBUILD_SECONDS, SECOND_MIRROR, SPARE, HistoryFolder, main

SCENARIO = pathlib.Path(__file__).resolve().parents[2] / "simulator" / "scenarios" / "default.json"
DAY = 24 * 60 * 60
FROM_HISTORY = {"not-verified", "exposed", "rebuilds-slower"}
CHECKS = ["no-spare-fits", "not-verified", "mixed-firmware", "exposed", "rebuilds-slower"]


class Readiness(HistoryFolder):
    def readiness(self, query=""):
        return self.ask("GET", "readiness" + query)

    def lines(self, kind, query=""):
        return [item for item in self.readiness(query)["items"] if item["kind"] == kind]

    def line_of(self, kind, name, query=""):
        """The one of an object; nothing where there is none."""
        found = [item for item in self.lines(kind, query) if any(each["name"] == name for each in item["objects"])]
        self.assertLessEqual(len(found), 1, found)
        return found[0] if found else None

    def state_of(self, kind, query=""):
        return next(check for check in self.readiness(query)["checks"] if check["kind"] == kind)

    def do(self, step, **more):
        """What an item tells to do next, with what else it asks for."""
        paths = {"setDiskSpare": "mirn/disks/{diskId}/spare", "verifyVolume": "mirn/volumes/{volumeId}/verify",
                 "locatePort": "mirn/ports/{portId}/locate"}
        arguments = {**step["arguments"], **more}
        path = paths[step["operation"]].format(**arguments)
        body = {name: {"true": True, "false": False}.get(value, value) for name, value in arguments.items()
                if f"{{{name}}}" not in paths[step["operation"]]}
        return self.ask("PUT", path, body)


class MachineReadinessTest(Readiness):
    def test_disks_without_a_spare_are_told_until_there_is_one(self):
        self.launch()
        system = {"SATA QV48021000A1", "SATA " + SECOND_MIRROR}
        self.assertIsNone(self.line_of("no-spare-fits", "SATA " + SECOND_MIRROR))
        self.ask("PUT", f"mirn/disks/{self.id_of(SPARE)}/spare", {"action": "UNMARK"})
        line = self.line_of("no-spare-fits", "SATA " + SECOND_MIRROR)
        self.assertEqual(("warning", "System_Array"), (line["severity"], line["details"]["array"]["name"]))
        self.assertEqual(system, {each["name"] for each in line["objects"]})
        self.assertEqual("found", self.state_of("no-spare-fits")["state"])
        self.do(line["steps"][0], diskId=self.id_of(FREE_DISK))
        self.assertIsNone(self.line_of("no-spare-fits", "SATA " + SECOND_MIRROR))
        self.assertEqual(0, self.host.stop())

    def test_it_says_no_more_than_health_of_spares(self):
        self.launch()
        self.ask("PUT", f"mirn/disks/{self.id_of(SPARE)}/spare", {"action": "UNMARK"})
        arrays = {cause["object"]["name"] for cause in self.ask("GET", "health")["causes"]
                  if cause["kind"] == "no-spare-fits"}
        self.assertEqual(arrays, {line["details"]["array"]["name"] for line in self.lines("no-spare-fits")})
        self.assertIn("System_Array", arrays)
        self.assertEqual(0, self.host.stop())

    def test_disks_of_one_model_with_other_firmware_are_told(self):
        self.launch()
        self.assertEqual({"kind": "mixed-firmware", "state": "ok", "reason": None}, self.state_of("mixed-firmware"))
        scenario = json.loads(SCENARIO.read_text())
        disk = next(each for each in scenario["devices"] if each.get("serialNumber") == SECOND_MIRROR)
        usual, disk["firmware"] = disk["firmware"], "QV02R099"
        self.control("load-scenario", scenario=scenario)
        self.ask("POST", "mirn/rescan")
        line = self.line_of("mixed-firmware", "SATA " + SECOND_MIRROR)
        self.assertEqual("info", line["severity"])
        self.assertEqual(["SATA " + SECOND_MIRROR], [each["name"] for each in line["objects"]])
        self.assertEqual({usual, "QV02R099"}, {each["version"] for each in line["details"]["firmware"]})
        self.do(line["steps"][0])
        self.assertEqual(0, self.host.stop())

    def test_without_a_history_what_it_would_tell_is_unknown(self):
        self.launch("--history", "off")
        self.hold_unknown("No history is kept.")
        self.assertEqual(0, self.host.stop())

    def test_with_one_that_cannot_be_read_too(self):
        self.launch("--history", self.folder / "missing" / "history.db")
        self.hold_unknown("The history cannot be read now: ")
        self.assertEqual(0, self.host.stop())

    def hold_unknown(self, reason):
        told = self.readiness()
        self.assertIsNone(told["historyFrom"])
        self.assertEqual({"unknown"}, {month["exposedSeconds"] for month in told["exposure"]})
        self.assertEqual(CHECKS, [check["kind"] for check in told["checks"]])
        for check in told["checks"]:
            with self.subTest(check=check["kind"]):
                self.assertEqual(check["kind"] in FROM_HISTORY, check["state"] == "unknown")
                self.assertEqual(check["kind"] in FROM_HISTORY, (check["reason"] or "").startswith(reason))

    def test_what_makes_no_sense_is_a_400(self):
        self.launch()
        for query in ("?verifiedWithinDays=0", "?verifiedWithinDays=3651", "?verifiedWithinDays=x", "?verifiedWithinDays=",
                      "?verifiedWithinDays=1.5", "?verifiedWithinDays=-1", "?colour=red"):
            with self.subTest(query=query):
                self.refused("readiness" + query, 400)
        self.assertEqual(1, self.readiness("?verifiedWithinDays=1")["verifiedWithinDays"])
        self.assertEqual(3650, self.readiness("?verifiedWithinDays=3650")["verifiedWithinDays"])
        self.assertEqual(30, self.readiness()["verifiedWithinDays"])
        self.assertEqual(0, self.host.stop())


class PastReadinessTest(Readiness):
    @contextlib.contextmanager
    def changed_history(self):
        """Its file, between two runs of the host."""
        self.assertEqual(0, self.host.stop())
        with contextlib.closing(sqlite3.connect(self.folder / "history.db")) as database, database:
            yield database
        self.launch()

    def make_older(self, days):
        """As if all of it had happened so many days earlier."""
        with self.changed_history() as database:
            shift = days * DAY * 1000
            database.execute("UPDATE entry SET at_ms = at_ms - ?", (shift,))
            for table in ("job", "alarm"):
                database.execute(f"UPDATE {table} SET from_ms = from_ms - ?, to_ms = to_ms - ? WHERE to_ms NOT NULL",
                                 (shift, shift))

    def verify(self, name):
        step = self.line_of("not-verified", name)["steps"][0]
        self.do(step)
        self.await_job("running")
        while self.ask("GET", "mirn/state")["inProgress"]:
            self.let_pass(30)
            self.await_that("it is seen how far it is", lambda: self.is_seen(name))
        self.await_that("the verification has ended", lambda: not self.jobs("running"))
        self.assertEqual([("verify", "completed")], [(job["kind"], job["outcome"]) for job in self.jobs("ended")])

    def is_seen(self, name):
        """Whether the job is as far as the machine."""
        running = self.jobs("running")
        return not running or running[0]["percent"] == self.volume(name)["migrProgress"]

    def test_a_volume_is_told_until_it_is_verified_and_again_after_a_while(self):
        self.launch()
        self.assertEqual("unknown", self.line_of("not-verified", "Database")["details"]["verifiedAt"], "nobody knows yet")
        self.assertIsNone(self.line_of("not-verified", "Scratch"), "it has no redundancy")
        self.assertEqual("unknown", self.state_of("not-verified")["state"])
        self.assertRegex(self.state_of("not-verified")["reason"], r"^The history tells of jobs since 20.*Z only\.$")
        self.verify("Database")
        self.assertIsNone(self.line_of("not-verified", "Database"))
        self.make_older(35)
        line = self.line_of("not-verified", "Database")
        self.assertEqual("warning", line["severity"])
        self.assertIn("was verified last 35 days ago", line["text"])
        never = self.line_of("not-verified", "Archive")
        self.assertEqual(("warning", None), (never["severity"], never["details"]["verifiedAt"]))
        self.assertEqual({"kind": "not-verified", "state": "found", "reason": None}, self.state_of("not-verified"))
        self.assertIsNone(self.line_of("not-verified", "Database", "?verifiedWithinDays=36"))
        self.assertEqual("unknown",
                         self.line_of("not-verified", "Archive", "?verifiedWithinDays=36")["details"]["verifiedAt"])
        self.assertEqual(0, self.host.stop())

    def test_the_time_without_redundancy_is_told_by_month(self):
        self.launch()
        self.assertIsNone(self.line_of("exposed", "System"))
        self.degrade()
        self.await_that("there is an alarm", lambda: "System" in self.degraded())
        line = self.line_of("exposed", "System")
        self.assertEqual(("warning", "rebuildVolume"), (line["severity"], line["steps"][0]["operation"]))
        self.begin_rebuild()
        self.assertEqual([], self.line_of("exposed", "System")["steps"], "it is being done")
        self.let_pass(REBUILD_SECONDS)
        self.await_that("the alarm has cleared", lambda: "System" not in self.degraded())
        line = self.line_of("exposed", "System")
        self.assertEqual(("info", ["setDiskSpare"]), (line["severity"], [step["operation"] for step in line["steps"]]))
        self.make_older(5)
        with self.changed_history() as database:
            ended = "kind = 'volume-degraded' AND to_ms NOT NULL"
            database.execute(f"UPDATE alarm SET from_ms = to_ms - 7200000 WHERE {ended}")
            database.execute("UPDATE entry SET at_ms = at_ms - ? WHERE row = (SELECT min(row) FROM entry)", (DAY * 1000,))
            begin, end = (database.execute(f"SELECT {name}(to_ms) FROM alarm WHERE {ended}").fetchone()[0]
                          for name in ("min", "max"))
        self.assertEqual(begin, end, "one alarm")
        self.assertEqual(7200, self.line_of("exposed", "System")["details"]["exposedSeconds"])
        months = self.readiness()["exposure"]
        self.assertEqual(12, len(months))
        self.assertEqual(time.strftime("%Y-%m", time.gmtime()), months[-1]["month"])
        known = [month for month in months if month["exposedSeconds"] != "unknown"]
        self.assertIn(time.strftime("%Y-%m", time.gmtime(end / 1000)), [month["month"] for month in known])
        of_archive = self.line_of("exposed", "Archive")["details"]["exposedSeconds"]  # which was degraded from the start on
        self.assertAlmostEqual(7200 + of_archive, sum(month["exposedSeconds"] for month in known), delta=3)
        self.assertEqual("unknown", months[0]["exposedSeconds"])
        self.assertEqual(0, self.host.stop())

    def degraded(self):
        return [alarm["object"]["name"] for alarm in self.items("alarms") if alarm["kind"] == "volume-degraded"]

    def test_rebuilds_that_take_longer_are_told_with_their_numbers(self):
        self.launch()
        self.degrade()
        self.begin_rebuild()
        self.await_job("running")
        self.let_pass(REBUILD_SECONDS)
        self.await_job("ended")
        self.assertEqual([], self.lines("rebuilds-slower"), "one tells nothing")
        with self.changed_history() as database:
            self.repeat_rebuild(database, [3600, 3700, 5400, 6000])
        line = self.line_of("rebuilds-slower", "System")
        self.assertEqual("warning", line["severity"])
        self.assertEqual({"rebuilds": 4, "earlierSeconds": 3600, "lastSeconds": 5400, "ratio": 1.5}, line["details"])
        self.assertEqual("verifyVolume", line["steps"][0]["operation"])
        with self.changed_history() as database:
            self.repeat_rebuild(database, [3600, 3700, 3700, 9000])
        self.assertEqual([], self.lines("rebuilds-slower"), "only one was slow")
        self.assertEqual(0, self.host.stop())

    @staticmethod
    def repeat_rebuild(database, seconds):
        """As if the one that there was had been done again and again, in so many seconds."""
        body = json.loads(database.execute("SELECT body FROM job ORDER BY from_ms DESC").fetchone()[0])
        volume = body["object"]["id"]
        database.execute("DELETE FROM job")
        moment = int(time.time()) - 5 * DAY
        for number, took in enumerate(seconds):
            begin, end = moment + number * DAY, moment + number * DAY + took
            told = [time.strftime("%Y-%m-%dT%H:%M:%S.000Z", time.gmtime(each)) for each in (begin, end)]
            job = {**body, "id": f"made-{number}", "start": told[0], "seenFrom": told[0], "seenTo": told[1], "end": told[1]}
            database.execute("INSERT INTO job VALUES(?, ?, ?, 'rebuild', ?, ?)",
                             (job["id"], begin * 1000, end * 1000, volume, json.dumps(job)))


if __name__ == "__main__":
    main(sys.argv, __doc__)
