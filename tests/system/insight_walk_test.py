#!/usr/bin/env python3
"""A machine to which anything happens, in any order: after every step health, alarms, jobs, history, stream and machine tell the
same.

usage: insight_walk_test.py HOST MODULE SCENARIO [STEPS [SEED]]

2,000 steps and a seed of its own, which is printed, unless told otherwise. The machine becomes that of SCENARIO again and
again, since it wears out.
"""

import collections
import json
import pathlib
import random
import sys
import tempfile

from insight_machine import Machine
from local_host import LocalHost

STEPS, RENEWAL, RESTART = 2000, 150, 400
INCIDENTS = ["fail-disk", "pull-disk", "insert-disk", "insert-blank-disk", "lock-disk", "raise-smart-event"]
WITHOUT_END = 4294967295


class Walk:
    def __init__(self, machine, scenario, seed):
        self.machine, self.scenario = machine, scenario
        self.random = random.Random(seed)
        self.bays = [device["id"] for device in scenario["devices"]]
        self.outcomes = collections.Counter()

    def ask(self, method, path, body=None):
        """A refusal is an answer, too, also the library's; what failed is none."""
        status, answer = self.machine.ask(method, path, body)
        if status == 500 and "errorId" not in answer and not self.is_refusing:
            raise AssertionError(f"{method} {path} {body}: {answer}")
        self.outcomes["done" if status < 300 else "refused"] += 1

    is_refusing = False

    def incident(self):
        self.ask("POST", "simulator/" + self.random.choice(INCIDENTS), {"disk": self.random.choice(self.bays)})
        self.ask("POST", "mirn/rescan")

    def time(self):
        self.machine.pass_time(self.random.choice([1, 100, 1000, 10_000, 200_000]))

    def volume_change(self):
        volumes = self.machine.get("mirn/volumes")
        if not volumes:
            return
        path = f"mirn/volumes/{self.random.choice(volumes)['id']}"
        disk = self.random.choice(self.machine.get("mirn/enddevices"))["id"]
        action, body = self.random.choice([
            ("verify", {"action": "START", "repair": self.random.random() < 0.5}), ("verify", {"action": "CANCEL"}),
            ("init", {"action": "START"}), ("init", {"action": "CANCEL"}), ("rebuild", {"diskId": disk}),
            ("name", {"name": f"Volume {self.random.randrange(1000)}"}), ("marknormal", None)])
        self.ask("PUT", f"{path}/{action}", body)

    def removal(self):
        volumes = self.machine.get("mirn/volumes")
        if volumes:
            self.ask("DELETE", f"mirn/volumes/{self.random.choice(volumes)['id']}")

    def disk_change(self):
        disk = self.random.choice(self.machine.get("mirn/enddevices"))["id"]
        action, body = self.random.choice([("spare", {"action": "MARK"}), ("spare", {"action": "UNMARK"}),
                                           ("resetsmart", None), ("clear", None), ("marknormal", None)])
        self.ask("PUT", f"mirn/disks/{disk}/{action}", body)

    def acknowledgement(self):
        alarms = self.machine.get("alarms")["items"]
        if alarms:
            self.ask("POST", f"alarms/{self.random.choice(alarms)['id']}/acknowledge")

    def refusing_library(self):
        self.is_refusing = True
        self.machine.control("fail-calls", operation="VexGetVolumeInfo", status=15, count=WITHOUT_END)
        self.ask("POST", "mirn/rescan")
        self.machine.control("clear-faults")
        self.is_refusing = False
        self.machine.rescan()

    def step(self, number):
        if number % RESTART == 0:
            return self.machine.restart(kill=self.random.random() < 0.5)
        if number % RENEWAL == 0:
            self.machine.control("load-scenario", scenario=self.scenario)
            return self.machine.rescan()
        steps = {self.incident: 8, self.time: 6, self.volume_change: 6, self.disk_change: 4, self.acknowledgement: 3,
                 self.removal: 1, self.refusing_library: 1}
        self.random.choices(list(steps), list(steps.values()))[0]()


def main(program, module, scenario, steps=STEPS, seed=None):
    seed = random.SystemRandom().randrange(1 << 32) if seed is None else int(seed)
    print("seed", seed, flush=True)
    LocalHost.is_asked_at_random = True
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        machine = Machine(program, module, pathlib.Path(folder))
        walk = Walk(machine, json.loads(pathlib.Path(scenario).read_text()), seed)
        for number in range(1, int(steps) + 1):
            try:
                walk.step(number)
                machine.check()
            except BaseException:
                print("at step", number, flush=True)
                raise
        history = machine.replayed
        print(f"{steps} steps: {walk.outcomes['done']} done, {walk.outcomes['refused']} refused, {history.events} events, "
              f"{len(history.finished)} jobs")
        assert history.finished and history.events, "nothing has happened"
        assert machine.host.stop() == 0, machine.host.errors()


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    main(*sys.argv[1:])
