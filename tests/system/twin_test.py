#!/usr/bin/env python3
"""Holds twins to their machines: what a host tells of a simulated one is written as a bundle, of that a scenario is made, and
the machine of that scenario must tell the same.

usage: twin_test.py HOST MODULE SCENARIO_PROGRAM SCENARIOS [unittest arguments]

MIRN_TWIN_STEPS says how many random things happen to the machines of the walk (24), MIRN_SEED from which numbers they
come; the seed is printed.
"""

import http.client
import json
import os
import pathlib
import random
import subprocess
import sys
import tarfile
import tempfile
import unittest

import twin_machine
from local_host import PATIENCE, LocalHost

STEPS = int(os.environ.get("MIRN_TWIN_STEPS", "24"))
SEED = int(os.environ.get("MIRN_SEED", random.SystemRandom().randrange(1 << 32)))
MINUTE, HOUR = 60, 3600


class Case(unittest.TestCase):
    """A machine whose time stands still but for `let_pass`."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.hosts = 0

    def launch(self, **environment):
        self.hosts += 1
        folder = self.folder / f"host-{self.hosts}"
        folder.mkdir()
        host = LocalHost(HOST, MODULE, folder, ["--simulator-controls"], **{**twin_machine.STILL, **environment})
        self.addCleanup(host.kill)
        return host.await_serving()

    def start(self, **environment):
        self.host = self.launch(**environment)

    def ask(self, method, path, body=None):
        status, value = self.host.request(method, path, body)
        self.assertLess(status, 300, f"{method} {path}: {value}")
        return value

    def control(self, name, **arguments):
        return self.ask("POST", "simulator/" + name, arguments)

    def look(self):
        self.ask("POST", "mirn/rescan")

    def let_pass(self, seconds):
        self.control("advance-clock", milliseconds=seconds * 1000)
        self.look()

    def volume(self, name):
        return next(volume for volume in self.ask("GET", "mirn/volumes") if volume["name"] == name)

    def members(self, name):
        return self.ask("GET", f"mirn/arrays/{self.volume(name)['arrayId']}/enddevices")

    def disk(self, **facts):
        """The first with these."""
        return next(disk for disk in self.ask("GET", "mirn/enddevices") if facts.items() <= disk.items())

    def load(self, machine):
        self.control("load-scenario", scenario=machine)
        self.look()

    def hold(self, is_packed=False):
        """The twin of the machine now tells the same; gives what its making told."""
        original = twin_machine.told_by(self.host)
        bundle = self.folder / f"bundle-{self.hosts}"
        twin_machine.write_folder(original, bundle)
        if is_packed:
            file = self.folder / "bundle.tar.gz"
            file.write_bytes(twin_machine.packed(bundle))
            bundle = file
        return self.hold_bundle(bundle, original)

    def hold_bundle(self, bundle, original):
        """The machine that is made of the bundle tells what `original` has; gives what its making told."""
        scenario = self.folder / f"twin-{self.hosts}.json"
        told = twin_machine.write_twin(PROGRAM, bundle, scenario)
        twin = self.launch(VEXL2_SCENARIO=str(scenario))
        self.assertEqual(twin_machine.differences(original, twin_machine.told_by(twin)), [], told)
        self.assertNotIn("different", told)
        self.assertLess(twin.request("POST", "simulator/check")[0], 300)
        twin.kill()
        return told


class ScenarioTest(Case):
    def test_the_machine_in_the_library(self):
        self.start()
        self.assertEqual(self.hold(), "")

    def test_the_packed_bundle_of_it(self):
        self.start()
        self.assertEqual(self.hold(is_packed=True), "")

    def test_every_scenario(self):
        for folder in SCENARIOS:
            for file in sorted(pathlib.Path(folder).glob("*.json")):
                with self.subTest(file.name):
                    self.start(VEXL2_SCENARIO=str(file))
                    self.hold()


class StoryTest(Case):
    """Of the machine in the library, to which something happens."""

    def setUp(self):
        super().setUp()
        self.start()

    def break_disk(self, disk):
        self.control("fail-disk", disk=disk["id"])

    def test_a_rebuild_onto_a_spare(self):
        self.break_disk(self.members("System")[1])
        self.let_pass(10 * MINUTE)
        self.assertEqual(self.volume("System")["state"], "REBUILDING")
        self.assertIn("is rebuilt onto", self.hold())

    def test_a_degraded_volume_and_no_spare(self):
        self.break_disk(self.members("Database")[1])
        self.look()
        self.hold()

    def test_a_volume_that_lost_too_many(self):
        for member in self.members("Database")[:2]:
            self.break_disk(member)
        self.look()
        self.assertEqual(self.volume("Database")["state"], "FAILED")
        self.hold()

    def test_disks_that_are_out(self):
        self.control("pull-disk", disk=self.members("Database")[0]["id"])
        self.control("pull-disk", disk=self.disk(usage="JOURNALING_DRIVE")["id"])
        self.control("pull-disk", disk=self.disk(usage="PASS_THROUGH")["id"])
        self.look()
        self.assertTrue(self.disk(state="MISSING"))
        self.hold()

    def test_locked_disks(self):
        for member in self.members("Database")[:2]:
            self.control("lock-disk", disk=member["id"])
        self.look()
        self.assertEqual(self.volume("Database")["state"], "LOCKED")
        self.hold()

    def test_a_smart_event(self):
        self.control("raise-smart-event", disk=self.members("Database")[2]["id"])
        self.look()
        self.hold()

    def test_an_initialisation(self):
        self.ask("PUT", f"mirn/volumes/{self.volume('Database')['id']}/init")
        self.let_pass(20 * MINUTE)
        self.assertEqual(self.volume("Database")["state"], "INITIALIZING")
        self.hold()

    def test_a_verification_that_has_found_something(self):
        machine = json.loads((pathlib.Path(SCENARIOS[0]) / "default.json").read_text())
        for volume in machine["volumes"]:
            volume.update(latentErrors=40, latentBadBlocks=3)
        self.load(machine)
        self.ask("PUT", f"mirn/volumes/{self.volume('Database')['id']}/verify", {"action": "START", "repair": False})
        self.let_pass(40 * MINUTE)
        self.assertGreater(self.volume("Database")["verify"]["errors"], 0)
        self.hold()

    def test_a_growing_array(self):
        controller = self.members("Database")[0]["controllerId"]
        free = next(disk for disk in self.ask("GET", f"mirn/controllers/{controller}/enddevices")
                    if disk.get("usage") == "PASS_THROUGH" and "x8Disk" not in disk)
        self.ask("PUT", f"mirn/arrays/{self.volume('Database')['arrayId']}", {"disks": [free["id"]]})
        self.let_pass(10 * MINUTE)
        self.assertEqual(self.volume("Database")["state"], "GENERAL_MIGRATION")
        self.assertIn("migrates", self.hold())


class EndpointTest(Case):
    """Of bundles as the host makes them, of a machine that has a past."""

    def setUp(self):
        super().setUp()
        self.start()
        self.control("fail-disk", disk=self.members("System")[1]["id"])
        self.control("raise-smart-event", disk=self.members("Database")[2]["id"])
        self.let_pass(10 * MINUTE)
        self.assertEqual(self.volume("System")["state"], "REBUILDING")
        self.control("pull-disk", disk=self.disk(usage="PASS_THROUGH")["id"])
        self.ask("PUT", f"mirn/volumes/{self.volume('Database')['id']}/name", {"name": "Renamed"})
        self.look()

    def bundle(self, query=""):
        """Its file, and the plug-in's reads in it."""
        connection = http.client.HTTPConnection("127.0.0.1", self.host.port, timeout=PATIENCE)
        try:
            connection.request("GET", "/api/v1/bundle" + query, headers={"Authorization": "Bearer " + self.host.token()})
            answer = connection.getresponse()
            content = answer.read()
            self.assertEqual(answer.status, 200, content)
        finally:
            connection.close()
        file = self.folder / "bundle.tar.gz"
        file.write_bytes(content)
        with tarfile.open(file) as archive:
            values = {name: json.load(archive.extractfile(name)) for name in archive.getnames() if "api/v1/mirn/" in name}
        return file, {name.removeprefix("api/v1/mirn/").removesuffix(".json"): value for name, value in values.items()}

    def test_a_bundle(self):
        file, reads = self.bundle()
        original = twin_machine.told_by(self.host)
        self.assertEqual({target: original.get(target) for target in reads if target not in ("config", "events")},
                         {target: value for target, value in reads.items() if target not in ("config", "events")})
        self.hold_bundle(file, original)

    def test_a_masked_bundle(self):
        file, reads = self.bundle("?mask=true")
        original = twin_machine.told_by(self.host)
        masks = {}
        for disk, masked in zip(original["enddevices"], reads["enddevices"], strict=True):
            self.assertRegex(masked["serialNumber"], r"^M[0-9A-F]{15}$")
            masks[disk["serialNumber"]] = masked["serialNumber"]
        self.assertEqual(len(set(masks.values())), len(original["enddevices"]))
        masked = twin_machine.with_texts(original, masks)
        self.assertNotEqual(masked, original)
        self.hold_bundle(file, masked)


class WalkTest(Case):
    """A machine to which random things happen."""

    CONTROLS = ["fail-disk", "pull-disk", "insert-disk", "lock-disk", "raise-smart-event"]

    def attempt(self, method, path, body=None):
        """What is refused does nothing."""
        status, value = self.host.request(method, path, body)
        self.assertLess(status, 600, f"{method} {path}: {value}")
        return value

    def happen(self, numbers):
        disks = self.attempt("GET", "mirn/enddevices")
        volumes = self.attempt("GET", "mirn/volumes")
        self.seen.update(disk["id"] for disk in disks)
        choice = numbers.randrange(10)
        if choice < 3:
            self.attempt("POST", "simulator/" + numbers.choice(self.CONTROLS),
                         {"disk": numbers.choice(sorted(self.seen))})
        elif choice < 5:
            self.attempt("POST", "simulator/advance-clock", {"milliseconds": numbers.randrange(4 * HOUR) * 1000})
        elif choice < 6 and disks:
            disk = numbers.choice(disks)["id"]
            path, body = numbers.choice([("spare", {"action": "MARK"}), ("spare", {"action": "UNMARK"}), ("marknormal", None),
                                         ("clear", None), ("resetsmart", None)])
            self.attempt("PUT", f"mirn/disks/{disk}/{path}", body)
        elif choice < 9 and volumes:
            self.change(numbers, numbers.choice(volumes)["id"], [disk["id"] for disk in disks])
        else:
            self.create(numbers, disks)
        self.attempt("POST", "mirn/rescan")

    def change(self, numbers, volume, disks):
        path, body = numbers.choice([
            ("init", None), ("verify", {"action": "START", "repair": numbers.random() < 0.5}),
            ("rebuild", {"diskId": numbers.choice(disks)}), ("marknormal", None),
            ("level", {"raidLevel": numbers.choice(["RAID_0", "RAID_5", "RAID_10"]), "disks": numbers.sample(disks, 1)}),
            ("level", {"raidLevel": numbers.choice(["RAID_0", "RAID_5", "RAID_10"]), "size": "0"})])
        if path == "marknormal" and numbers.random() < 0.2:
            self.attempt("DELETE", f"mirn/volumes/{volume}")
        self.attempt("PUT", f"mirn/volumes/{volume}/{path}", body)

    def create(self, numbers, disks):
        free = [disk["id"] for disk in disks if disk.get("usage") in ("PASS_THROUGH", "SPARE")]
        level, count = numbers.choice([("RAID_0", 2), ("RAID_1", 2), ("RAID_5", 3), ("RAID_10", 4)])
        if len(free) >= count:
            self.attempt("POST", "mirn/volumes", {"source": "DISK", "name": f"V{numbers.randrange(1000)}", "size": "4096",
                                                  "raidLevel": level, "disks": numbers.sample(free, count)})

    def walk(self, numbers, **environment):
        self.seen = set()
        self.start(**environment)
        self.host.is_asked_at_random = True
        for step in range(STEPS):
            self.happen(numbers)
            if step % 4 == 3:
                with self.subTest(seed=SEED, step=step):
                    self.hold()
        self.host.kill()

    def test_at_any_moment(self):
        print("seed", SEED)
        numbers = random.Random(SEED)
        self.walk(numbers)
        self.walk(numbers, VEXL2_SCENARIO=str(pathlib.Path(SCENARIOS[1]) / "six_free_disks.json"))


class BadBundleTest(Case):
    """Is told, and nothing is written."""

    def setUp(self):
        super().setUp()
        self.start()
        self.bundle = self.folder / "bundle"
        twin_machine.write_folder(twin_machine.told_by(self.host), self.bundle)
        self.file = self.bundle / "api" / "v1" / "mirn" / "volumes.json"

    def refuse(self, bundle, words):
        output = self.folder / "scenario.json"
        done = subprocess.run([PROGRAM, "--from-bundle", bundle, "--output", output], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout, output.exists()), (1, "", False), done.stderr)
        self.assertIn(words, done.stderr)

    def refuse_packed(self, content, words):
        file = self.folder / "bad.tar.gz"
        file.write_bytes(content)
        self.refuse(file, words)

    def test_a_file_that_is_missing(self):
        self.file.unlink()
        self.refuse(self.bundle, "volumes.json: is not in the bundle")

    def test_a_file_that_is_no_json(self):
        self.file.write_text("[{")
        self.refuse(self.bundle, "volumes.json: not JSON")

    def test_a_problem_in_place_of_a_list(self):
        self.file.write_text('{"status": 500}')
        self.refuse(self.bundle, "volumes: not a list")

    def test_an_object_of_another_form(self):
        self.file.write_text('[{"id": 5}]')
        self.refuse(self.bundle, "volumes[0].id: not a text")

    def test_a_machine_that_cannot_be(self):
        self.file.write_text(self.file.read_text().replace('"RAID_1"', '"RAID_7"'))
        self.refuse(self.bundle, 'unknown word "RAID_7"')

    def test_nothing_there(self):
        self.refuse(self.folder / "nothing", "cannot be read")

    def test_another_kind_of_file(self):
        self.refuse_packed(b"no bundle at all", "is no gzip file")

    def test_every_cut(self):
        content = twin_machine.packed(self.bundle)
        for length in random.Random(1).sample(range(20, len(content)), 20):
            with self.subTest(length=length):
                self.refuse_packed(content[:length], "the bundle ")

    def test_damage(self):
        content = bytearray(twin_machine.packed(self.bundle))
        content[len(content) // 2] ^= 1
        self.refuse_packed(bytes(content), "the bundle ")

    def test_bytes_behind_the_end(self):
        self.refuse_packed(twin_machine.packed(self.bundle) + b"x", "goes on behind its end")


if __name__ == "__main__":
    HOST, MODULE, PROGRAM = (os.path.abspath(each) for each in sys.argv[1:4])
    SCENARIOS = [os.path.abspath(each) for each in sys.argv[4:6]]
    unittest.main(argv=[sys.argv[0], *sys.argv[6:]])
