#!/usr/bin/env python3
"""Looks at what the history tells after a host was killed, and where its file is not as it should be.

usage: history_test.py HOST MODULE [unittest arguments]

MIRN_HISTORY_KILLS says how often it is killed in each phase of a job (2), MIRN_SEED from which numbers the moments
come; the seed is printed.
"""

import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import time

from history_folder import REBUILD_SECONDS, HistoryFolder, main
from local_host import PATIENCE

KILLS = int(os.environ.get("MIRN_HISTORY_KILLS", "2"))
SEED = int(os.environ.get("MIRN_SEED", random.SystemRandom().randrange(1 << 32)))
MOMENTS = random.Random(SEED)


class KilledHistoryTest(HistoryFolder):
    """In each phase of a job; whatever was lost, what is told is true."""

    def phase_asked(self):
        self.begin_rebuild()

    def phase_begun(self):
        self.begin_rebuild()
        self.await_job("running")

    def phase_running(self):
        self.begin_rebuild()
        self.let_pass(MOMENTS.randrange(200, 1500))
        self.await_that("there is progress", lambda: any(job["percent"] for job in self.jobs("running")))

    def phase_ending(self):
        self.begin_rebuild()
        self.await_job("running")
        self.let_pass(REBUILD_SECONDS)

    def phase_ended(self):
        self.begin_rebuild()
        self.await_job("running")
        self.let_pass(REBUILD_SECONDS)
        self.await_job("ended")

    def phase_stopping(self):
        self.begin_rebuild()
        self.await_job("running")
        self.host.process.terminate()

    def test_the_next_start_tells_what_is_true(self):
        print("seed", SEED)
        phases = [self.phase_asked, self.phase_begun, self.phase_running, self.phase_ending, self.phase_ended,
                  self.phase_stopping]
        for phase in phases:
            for kill in range(KILLS):
                with self.subTest(phase=phase.__name__, kill=kill), tempfile.TemporaryDirectory(prefix="mirn-") as folder:
                    self.folder = pathlib.Path(folder)
                    self.launch()
                    self.degrade()
                    phase()
                    time.sleep(MOMENTS.uniform(0, 0.03))
                    self.host.kill()
                    self.launch()
                    self.hold_jobs()
                    self.let_pass(REBUILD_SECONDS)
                    self.await_that("nothing runs", lambda: not self.jobs("running"))
                    self.hold_jobs()
                    self.hold_history()
                    self.assertEqual(0, self.host.stop(), self.host.errors())

    def hold_jobs(self):
        """What runs is in progress and the reverse. One rebuild is one job, or two where the machine began it anew: nobody
        saw the end of the first then."""
        def agree():
            in_progress = [work["objectName"] for work in self.ask("GET", "mirn/state")["inProgress"]]
            running = [job["object"]["name"] for job in self.jobs("running")]
            return running == in_progress and (running or self.jobs("ended"))

        self.await_that("jobs are what is in progress", agree)
        jobs = [*self.jobs("running"), *self.jobs("ended")]
        self.assertIn(len(jobs), (1, 2), jobs)
        if len(jobs) == 2:
            self.assertEqual("unknown", jobs[1]["end"], jobs)
            self.assertGreater(jobs[1]["percent"], 0, jobs)
        for job in self.jobs("ended"):
            self.assertIn(job["outcome"], ("completed", "ended"))
            self.assertIsNotNone(job["end"])
            self.assertEqual(job, self.ask("GET", "jobs/" + job["id"]))

    def hold_history(self):
        """Alarms and jobs come and go in pairs, and what was asked for has an end."""
        entries = self.items("history?limit=1000")
        rows = [entry["row"] for entry in entries]
        self.assertEqual(sorted(set(rows), reverse=True), rows)
        for job in self.jobs("ended"):
            told = [entry["outcome"] for entry in entries
                    if entry["kind"] == "job" and entry["details"]["id"] == job["id"]]
            self.assertEqual([job["outcome"], "begun"], told)
        steps = {}
        for entry in reversed(entries):
            if entry["kind"] == "alarm":
                steps.setdefault(entry["details"]["id"], []).append(entry["outcome"])
        for alarm, outcomes in steps.items():
            pairs = [outcome for outcome in outcomes if outcome in ("raised", "cleared")]
            self.assertEqual([("raised", "cleared")[place % 2] for place in range(len(pairs))], pairs, alarm)
        is_open = {alarm["id"] for alarm in self.items("alarms")}
        self.assertEqual({alarm for alarm, outcomes in steps.items() if outcomes[-1] != "cleared"}, is_open)
        calls = [entry for entry in entries if entry["kind"] == "audit" and entry["operation"] == "rebuildVolume"]
        self.assertEqual("begun", calls[-1]["outcome"])
        self.assertIn(calls[0]["outcome"], ("done", "unknown"))


class FoundWorkTest(HistoryFolder):
    def test_work_that_was_there_before_has_no_start(self):
        self.launch("--history", "off")
        self.degrade()
        self.begin_rebuild()
        self.assertEqual(0, self.host.stop())
        self.launch()
        job = self.await_job("running")
        self.assertIsNone(job["start"])
        self.assertRegex(job["seenFrom"], r"^\d{4}-.*Z$")
        self.assertEqual("machine", job["actor"], "nobody knows")
        self.let_pass(REBUILD_SECONDS)
        ended = self.await_job("ended")
        self.assertEqual((job["id"], None, job["seenFrom"], "completed"),
                         (ended["id"], ended["start"], ended["seenFrom"], ended["outcome"]))
        self.assertIsNone(self.items("jobs/statistics")[0]["medianSeconds"], "nobody saw its start")
        self.assertEqual(0, self.host.stop())

    def test_a_job_goes_on_over_a_restart(self):
        self.launch()
        self.degrade()
        self.begin_rebuild()
        job = self.await_job("running")
        self.assertEqual(0, self.host.stop())
        self.launch()
        again = self.await_job("running")
        self.assertEqual((job["id"], job["start"], job["actor"]), (again["id"], again["start"], again["actor"]))
        self.let_pass(REBUILD_SECONDS)
        self.assertEqual("completed", self.await_job("ended")["outcome"])
        self.assertEqual(0, self.host.stop())

    def test_a_job_that_ended_meanwhile_has_an_end_that_nobody_saw(self):
        self.launch()
        self.degrade()
        self.begin_rebuild()
        job = self.await_job("running")
        self.assertEqual(0, self.host.stop())
        self.launch("--history", "off")
        self.let_pass(REBUILD_SECONDS)
        self.assertEqual(0, self.host.stop())
        self.launch()
        ended = self.await_job("ended")
        self.assertEqual((job["id"], "unknown"), (ended["id"], ended["end"]))
        self.assertEqual([], self.jobs("running"))
        self.assertEqual(0, self.host.stop())


class HistoryFileTest(HistoryFolder):
    def test_a_folder_that_is_not_there_is_told_of_until_it_is(self):
        missing = self.folder / "missing"
        self.launch("--history", missing / "history.db")
        for path in ("history", "jobs?state=ended", "jobs/statistics", "alarms?state=cleared", "jobs/0-1", "alarms/x"):
            self.assertIn("The history cannot be read now", self.refused(path, 503))
        self.await_that("health tells of it", lambda: "history" in self.causes())
        self.await_that("there is an alarm of it", lambda: "history" in [alarm["id"] for alarm in self.items("alarms")])
        self.degrade()
        self.begin_rebuild()
        self.await_job("running")
        missing.mkdir()
        self.await_that("it is kept", lambda: self.host.request("GET", "history")[0] == 200)
        self.await_that("health is content", lambda: "history" not in self.causes())
        self.await_that("all is there", lambda: [entry["outcome"] for entry in self.items("history?kind=job")] == ["begun"])
        self.await_that("the alarm has cleared", lambda: self.ask("GET", "alarms/history")["state"] == "cleared")
        self.assertEqual(0, self.host.stop())

    def test_a_damaged_file_is_set_aside_and_a_new_one_begun(self):
        self.launch()
        self.degrade()
        self.await_that("an alarm is kept", lambda: self.items("history?kind=alarm&text=volume-degraded"))
        self.assertEqual(0, self.host.stop())
        file = self.folder / "history.db"
        pages = bytearray(file.read_bytes())
        for place in range(4096, len(pages)):
            pages[place] = MOMENTS.randrange(256)
        file.write_bytes(bytes(pages))
        self.launch()
        self.await_that("it is read again", lambda: self.host.request("GET", "history")[0] == 200)
        self.await_that("it is told", lambda: [entry["outcome"] for entry in self.items("history?kind=service")] == ["set-aside"])
        self.assertEqual(1, len([path for path in self.folder.glob("history.db.bad-*")
                                 if not re.search("-(wal|shm)$", path.name)]))
        self.await_that("health is content", lambda: "history" not in self.causes())
        self.assertEqual(0, self.host.stop())


class RolesTest(HistoryFolder):
    """What clients did is told to those who administer."""

    def token(self, role):
        told = subprocess.run([self.program, "token", "add", role, role, "--token-file", self.folder / "token"], check=True,
                              capture_output=True, text=True, timeout=PATIENCE).stdout
        return re.search(r"mirn_\S+", told).group()

    def kinds(self, token, query=""):
        return {entry["kind"] for entry in self.ask("GET", "history?limit=1000" + query, token=token)["items"]}

    def test_the_audit_is_for_who_administers(self):
        self.launch()
        tokens = {role: self.token(role) for role in ("observe", "operate", "administer")}
        self.await_that("the tokens are known", lambda: self.host.request("GET", "health", token=tokens["administer"])[0] == 200)
        self.degrade()
        self.await_that("there is something", lambda: {"alarm", "audit"} <= self.kinds(tokens["administer"]))
        for query in ("&kind=audit", "&actor=first"):
            self.assertEqual({"audit"}, self.kinds(tokens["administer"], query))
        for role in ("observe", "operate"):
            self.assertIn("alarm", self.kinds(tokens[role]))
            self.assertNotIn("audit", self.kinds(tokens[role]))
            self.assertEqual(set(), self.kinds(tokens[role], "&actor=first"))
            status, problem = self.host.request("GET", "history?kind=audit", token=tokens[role])
            self.assertEqual(403, status)
            self.assertEqual(f'Entries of the audit take the role "administer"; yours is "{role}"', problem["detail"])
        alarm = self.items("alarms")[0]["id"]
        self.assertEqual(403, self.host.request("POST", f"alarms/{alarm}/acknowledge", token=tokens["observe"])[0])
        noticed = self.ask("POST", f"alarms/{alarm}/acknowledge", token=tokens["operate"])
        self.assertEqual("operate", noticed["acknowledged"]["by"])
        calls = self.ask("GET", "history?kind=audit&actor=operate", token=tokens["administer"])["items"]
        self.assertEqual([("acknowledgeAlarm", "done"), ("acknowledgeAlarm", "begun")],
                         [(call["operation"], call["outcome"]) for call in calls])
        self.assertEqual(0, self.host.stop())


if __name__ == "__main__":
    main(sys.argv, __doc__)
