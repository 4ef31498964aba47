#!/usr/bin/env python3
"""Asks a host what would come of failing disks, and holds what it tells to what then comes of them.

usage: what_if_test.py HOST MODULE [unittest arguments]
"""

import json
import os
import pathlib
import shutil
import sys
import tempfile
import threading
import time
import unittest

from local_host import PATIENCE, LocalHost

STILL = {"VEXL2_CLOCK_SPEED": "0", "VEXL2_EVENT_WAIT_CAP": "20"}
FREE_DISKS = pathlib.Path(__file__).resolve().parent / "scenarios" / "six_free_disks.json"
LONG = 10 ** 9  # milliseconds, more than any work here takes


class WhatIfTest(unittest.TestCase):
    """Of six disks: three of a RAID 5, and as many that are of nothing."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        scenario = pathlib.Path(folder.name) / "scenario.json"
        machine = json.loads(FREE_DISKS.read_text())
        machine.pop("rates", None)  # no list tells them: the usual ones are assumed
        scenario.write_text(json.dumps(machine))
        self.host = LocalHost(HOST, MODULE, pathlib.Path(folder.name), ["--simulator-controls"],
                              **{**STILL, "VEXL2_SCENARIO": str(scenario)}).await_serving()
        self.addCleanup(self.host.kill)
        self.disks = [disk["id"] for disk in self.get("mirn/enddevices")]
        self.ask(200, "POST", "mirn/volumes", {"source": "DISK", "name": "Data", "raidLevel": "RAID_5", "size": "4096",
                                               "disks": self.disks[:3]})
        self.ask(200, "PUT", f"mirn/volumes/{self.volume()['id']}/init")
        self.await_job("running")
        self.pass_time()
        self.assertEqual((self.volume()["state"], self.volume()["initialized"]), ("NORMAL", True))

    def ask(self, status, method, path, body=None):
        given, value = self.host.request(method, path, body)
        if status == 200 and given == 204:
            return None
        self.assertEqual(given, status, f"{method} {path}: {value}")
        return value

    def get(self, path):
        return self.ask(200, "GET", path)

    def volume(self):
        return self.get("mirn/volumes")[0]

    def pass_time(self, milliseconds=LONG):
        self.ask(200, "POST", "simulator/advance-clock", {"milliseconds": milliseconds})
        self.ask(200, "POST", "mirn/rescan")

    def await_job(self, state):
        deadline = time.monotonic() + PATIENCE
        while not self.get("jobs?state=" + state)["items"]:
            self.assertLess(time.monotonic(), deadline, f"no job is {state}")
            time.sleep(0.01)

    def add_spare(self):
        self.ask(200, "PUT", f"mirn/disks/{self.disks[3]}/spare", {"action": "MARK"})

    def what_if(self, *events, status=200):
        return self.ask(status, "POST", "whatif", {"events": list(events)})

    def states(self, answer):
        return [(change["from"], change["to"]) for change in answer["changes"]]

    def test_a_spare_takes_over(self):
        self.add_spare()
        answer = self.what_if({"fail": self.disks[0]})
        self.assertEqual(self.states(answer), [("NORMAL", "REBUILDING"), ("REBUILDING", "NORMAL")])
        [takeover] = answer["takesOver"]
        self.assertEqual((takeover["object"]["id"], takeover["instead"]["id"]), (self.disks[3], self.disks[0]))
        self.assertEqual(answer["lost"], [])
        [exposure] = answer["exposure"]
        self.assertEqual((exposure["object"]["name"], exposure["already"]), ("Data", False))
        self.assertEqual(answer["position"]["epoch"], self.get("health")["position"]["epoch"])
        self.assertTrue(answer["libraryDecides"])
        # And so it comes, to the second.
        self.ask(200, "POST", "simulator/fail-disk", {"disk": self.disks[0]})
        self.pass_time((exposure["seconds"] - 1) * 1000)
        self.assertEqual(self.volume()["state"], "REBUILDING")
        self.pass_time(1000)
        self.assertEqual(self.volume()["state"], "NORMAL")
        self.assertIn(self.disks[3], [disk["id"] for disk in self.get(f"mirn/arrays/{self.volume()['arrayId']}/enddevices")])

    def test_a_volume_is_lost_with_the_second_disk(self):
        answer = self.what_if({"fail": self.disks[0]}, {"wait": 60}, {"pull": self.disks[1]})
        self.assertEqual([(change["atSeconds"], change["to"]) for change in answer["changes"]],
                         [(0, "DEGRADED"), (60, "FAILED")])
        self.assertEqual([volume["name"] for volume in answer["lost"]], ["Data"])
        self.assertEqual([exposure["seconds"] for exposure in answer["exposure"]], [None])

    def test_the_second_disk_after_the_rebuild_is_borne(self):
        self.add_spare()
        answer = self.what_if({"fail": self.disks[0]}, {"wait": 3600}, {"fail": self.disks[1]})
        self.assertEqual(answer["lost"], [])
        self.assertEqual(len(answer["exposure"]), 2)

    def test_nothing_comes_of_a_disk_of_nothing(self):
        answer = self.what_if({"pull": self.disks[5]}, {"pull": self.disks[5]})
        self.assertEqual([event["happened"] for event in answer["events"]], [True, False])
        for name in ["changes", "takesOver", "lost", "exposure"]:
            self.assertEqual(answer[name], [], name)

    def test_the_real_machine_is_not_touched(self):
        before = [self.get("mirn/" + path) for path in ["enddevices", "volumes", "arrays"]]
        revision = self.get("health")["position"]
        self.what_if(*({"fail": disk} for disk in self.disks))
        self.assertEqual([self.get("mirn/" + path) for path in ["enddevices", "volumes", "arrays"]], before)
        self.assertEqual(self.get("health")["position"], revision)

    def test_jobs_that_ended_tell_how_long_it_takes(self):
        """Here the initialisation, whose two gibibytes of each disk took a moment of the host's time, and no rebuild."""
        self.await_job("ended")
        assumed = self.what_if({"wait": 1})["assumed"]
        self.assertIn("as jobs did", next(each for each in assumed if each.startswith("An initialisation")))
        self.assertIn("as is usual", next(each for each in assumed if each.startswith("A rebuild")))

    def test_what_is_refused(self):
        self.assertIn("no disk 5", self.what_if({"fail": "5"}, status=404)["detail"])
        self.assertIn("one member", self.what_if({}, status=400)["detail"])
        self.ask(400, "POST", "whatif?now=1", {"events": [{"wait": 1}]})

    def test_who_may_ask(self):
        self.assertEqual(self.host.request("POST", "whatif", {"events": [{"wait": 1}]}, token="mirn_wrong")[0], 401)


class OtherProgramTest(unittest.TestCase):
    """A host beside which stands another program than its own, or none."""

    def start(self, script=None):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        host = pathlib.Path(shutil.copy2(HOST, self.folder / "mirn-host"))
        if script:
            program = self.folder / "mirn-whatif"
            program.write_text("#!/bin/sh\n" + script)
            program.chmod(0o700)
        self.host = LocalHost(host, MODULE, self.folder, **STILL).await_serving()
        self.addCleanup(self.host.kill)

    def ask(self):
        return self.host.request("POST", "whatif", {"events": [{"wait": 1}]})

    def test_without_one(self):
        self.start()
        status, problem = self.ask()
        self.assertEqual((status, problem["detail"]),
                         (422, "The program that works through what would be is not there"))

    def test_two_at_a_time(self):
        self.start("PATH=/usr/bin:/bin; cd $(dirname $0); touch begun; while [ ! -e go ]; do sleep 0.01; done\n"
                   "echo 'no twin' >&2; exit 3")
        answers = []
        first = threading.Thread(target=lambda: answers.append(self.ask()))
        first.start()
        deadline = time.monotonic() + PATIENCE
        while not (self.folder / "begun").exists() and time.monotonic() < deadline:
            time.sleep(0.01)
        self.assertEqual(self.ask()[0], 503)
        (self.folder / "go").touch()
        first.join()
        self.assertEqual(answers[0][0], 422)
        self.assertIn("no twin", answers[0][1]["detail"])


if __name__ == "__main__":
    HOST, MODULE = (os.path.abspath(each) for each in sys.argv[1:3])
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
