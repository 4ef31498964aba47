#!/usr/bin/env python3
"""Looks at what a host tells to measure while things happen to its machine, and holds docs/metrics.md to it.

usage: metrics_test.py HOST MODULE OTHER_MODULE PROMTOOL DOCUMENT [unittest arguments]

OTHER_MODULE is a plug-in that insight cannot read.
"""

import collections
import json
import pathlib
import sys
import tempfile
import time
import unittest

from insight_machine import Machine
from local_host import PATIENCE, LocalHost
from scraped_metrics import ask, complaints, families_in, rows_in, scrape

SECOND_MIRROR, FREE_SATA = "QV48021000A7", "TB2T7790315"
ALWAYS = 0xFFFFFFFF
STATES = {"mirn_state": ("State", "state"), "mirn_array_state": ("Array", "state"),
          "mirn_volume_state": ("Volume", "state"), "mirn_disk_state": ("EndDevice", "state"),
          "mirn_disk_usage": ("EndDevice", "usage"), "mirn_health": None}


class MetricsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.machine = Machine(HOST, MODULE, pathlib.Path(folder.name))
        self.addCleanup(lambda: self.machine.host.kill())

    def families(self):
        return families_in(scrape(self.machine.host))

    def await_value(self, expected, name, **labels):
        """Insight looks a moment later than a request is answered."""
        deadline = time.monotonic() + PATIENCE
        while True:
            value = self.families()[name].value(**labels)
            if value == expected:
                return
            self.assertLess(time.monotonic(), deadline, f"{name}{labels} stays {value}")
            time.sleep(0.02)

    def lose_the_picture(self):
        self.machine.control("fail-calls", operation="VexGetVolumeInfo", count=ALWAYS, status=15)
        self.machine.ask("POST", "mirn/rescan")
        deadline = time.monotonic() + PATIENCE
        while not self.families()["mirn_picture_failed_timestamp_seconds"].samples:
            self.assertLess(time.monotonic(), deadline, "no failure is told")
            time.sleep(0.1)

    def story(self):
        """A text for each step of it: all families have samples in one of them."""
        yield scrape(self.machine.host)
        self.machine.befall("fail-disk", SECOND_MIRROR)
        self.machine.pass_time(1000)
        self.await_value(1, "mirn_jobs_running", kind="rebuild")
        yield scrape(self.machine.host)
        self.machine.pass_time(100_000)
        self.await_value(1, "mirn_jobs_ended_total", kind="rebuild", outcome="completed")
        ask(self.machine.host, None, "/no/such/path")
        self.lose_the_picture()
        yield scrape(self.machine.host)

    def sizes(self, families):
        objects = families["mirn_objects"]
        return {"operations": 2 + len(self.operations()),
                **{kind + "s": int(objects.value(kind=kind)) for kind in ("controller", "array", "volume", "disk")}}

    def openapi(self):
        return json.loads(ask(self.machine.host, None, "/openapi.json")[2])

    def operations(self):
        return {operation["operationId"] for item in self.openapi()["paths"].values() for operation in item.values()}

    def test_the_document_tells_what_is_told(self):
        rows = rows_in(DOCUMENT.read_text(encoding="utf-8"))
        told, labels = {}, collections.defaultdict(set)
        for text in self.story():
            self.assertEqual("", complaints(PROMTOOL, text))
            families = families_in(text)
            sizes = self.sizes(families)
            for name, family in families.items():
                told[name] = (family.kind, family.told)
                labels[name] |= {label for sample in family.samples for label in sample.labels}
                self.assertTrue(name in rows and rows[name].allows(len(family.samples), sizes),
                                f"{name} has {len(family.samples)} samples, with {sizes}")
        self.assertEqual({name: (row.kind, row.told) for name, row in rows.items()}, told)
        self.assertEqual({name: row.labels for name, row in rows.items()}, {name: labels[name] for name in told})

    def test_each_object_has_one_state(self):
        schemas = self.openapi()["components"]["schemas"]
        for text in self.story():
            for name, place in STATES.items():
                sums, words = collections.Counter(), collections.defaultdict(set)
                for sample in families_in(text)[name].samples:
                    state = next(label for label in ("state", "usage", "severity") if label in sample.labels)
                    rest = tuple(value for label, value in sample.labels.items() if label != state)
                    sums[rest] += sample.value
                    words[rest].add(sample.labels[state])
                self.assertEqual(set(sums.values()), {1.0}, name)
                if place:
                    schema, member = place
                    known = set(schemas[schema]["properties"][member]["enum"]) - {"UNKNOWN"} | {"unknown"}
                    self.assertEqual({frozenset(known)}, {frozenset(each) for each in words.values()}, name)

    def test_the_machine_is_as_the_interface_tells(self):
        self.machine.befall("fail-disk", SECOND_MIRROR)
        self.machine.pass_time(1000)
        self.machine.check()  # insight has seen it by then
        families = self.families()
        volumes = self.machine.get("mirn/volumes")
        disks = [each for each in self.machine.get("mirn/enddevices") if each["deviceType"] == "DISK"]
        self.assertEqual(families["mirn_objects"].value(kind="volume"), len(volumes))
        self.assertEqual(families["mirn_objects"].value(kind="disk"), len(disks))
        for volume in volumes:
            self.assertEqual(families["mirn_volume_size_bytes"].value(volume=volume["id"]), int(volume["totalSize"]))
            self.assertEqual(families["mirn_volume_state"].value(volume=volume["id"], state=volume["state"]), 1)
            self.assertEqual(families["mirn_volume_info"].value(volume=volume["id"], name=volume["name"],
                                                                level=volume["raidLevel"]), 1)
        for disk in disks:
            self.assertEqual(families["mirn_disk_state"].value(disk=disk["id"], state=disk["state"]), 1)
            self.assertEqual(families["mirn_disk_usage"].value(disk=disk["id"], usage=disk["usage"]), 1)
        for array in self.machine.get("mirn/arrays"):
            self.assertEqual(families["mirn_array_state"].value(array=array["id"], state=array["state"]), 1)
        system = self.machine.volume("System")["id"]
        self.assertEqual(families["mirn_volume_tolerated_failures"].value(volume=system), 0)
        job = self.machine.get("jobs?state=running")["items"][0]
        self.assertEqual(families["mirn_volume_work_steps_done"].value(volume=system, work="rebuild"), job["percent"])
        self.assertEqual(families["mirn_volume_work_steps"].value(volume=system, work="rebuild"), 100)
        self.assertEqual(families["mirn_state"].value(state=self.machine.get("mirn/state")["state"]), 1)

    def test_alarms_and_health_are_those_of_insight(self):
        self.machine.befall("raise-smart-event", FREE_SATA)
        self.machine.check()
        families = self.families()
        alarms = collections.Counter((alarm["kind"], alarm["severity"]) for alarm in self.machine.all_of("alarms")[0])
        told = {(sample.labels["kind"], sample.labels["severity"]): sample.value
                for sample in families["mirn_alarms"].samples}
        self.assertEqual({key: count for key, count in told.items() if count}, dict(alarms))
        self.assertIn(("disk-smart", "warning"), alarms)
        self.assertEqual(families["mirn_health"].value(severity=self.machine.health()["severity"]), 1)
        self.assertEqual(families["mirn_journal_events_total"].value(), self.machine.health()["position"]["sequence"])

    def test_a_lost_picture_is_told(self):
        self.lose_the_picture()
        self.await_value(1, "mirn_alarms", kind="picture-old", severity="unknown")
        self.assertGreater(self.families()["mirn_picture_failures_total"].value(), 0)
        self.machine.control("clear-faults")
        self.machine.rescan()
        self.await_value(0, "mirn_alarms", kind="picture-old", severity="unknown")
        self.assertEqual([], self.families()["mirn_picture_failed_timestamp_seconds"].samples)

    def test_requests_are_told_by_operation_and_status(self):
        host = self.machine.host
        before = self.families()["mirn_http_requests_total"]
        for number in range(5):
            ask(host, None, f"/no/such/path/{number}")
            ask(host, host.token(), f"/api/v1/mirn/volumes/{number}/nothing")
        self.machine.get("mirn/volumes")
        after = self.families()
        requests = after["mirn_http_requests_total"]
        self.assertEqual(requests.value(operation="listVolumes", status="200"), 1)
        self.assertEqual(requests.value(operation="getMetrics", status="200"), 1)
        self.openapi()
        self.assertGreater(self.families()["mirn_http_requests_total"].value(operation="getOpenApi", status="200"), 0)
        self.assertGreater(requests.value(operation="unknown", status="404"), 4)
        self.assertLess(len(requests.samples), len(before.samples) + 5)
        times = after["mirn_http_request_duration_seconds"]
        for sample in requests.samples:
            counts = [each.value for each in times.samples if each.name.endswith("_bucket")
                      and sample.labels.items() <= each.labels.items()]
            self.assertEqual(counts, sorted(counts))
            self.assertEqual(counts[-1], sample.value)
        self.assertLessEqual({sample.labels["operation"] for sample in requests.samples},
                             self.operations() | {"listMethods", "unknown"})

    def test_kept_answers_are_counted(self):
        for _ in range(3):
            self.machine.get("mirn/arrays")
        families = self.families()
        self.assertGreater(families["mirn_kept_answers_hits_total"].value(), 1)
        self.assertGreater(families["mirn_kept_answers_misses_total"].value(), 0)
        self.assertGreater(families["mirn_kept_answers_bytes"].value(), 0)

    def test_it_takes_a_token_in_the_field(self):
        host = self.machine.host
        self.assertEqual(ask(host)[0], 401)
        self.assertEqual(ask(host, None, "/metrics?access_token=" + host.token())[0], 400)
        self.assertEqual(ask(host, host.token())[:2], (200, "text/plain; version=0.0.4; charset=utf-8"))
        self.assertEqual(ask(host, host.token(), method="HEAD")[::2], (200, ""))


class OtherPluginTest(unittest.TestCase):
    def test_what_insight_cannot_read_has_the_hosts_own_families(self):
        with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
            host = LocalHost(HOST, OTHER, pathlib.Path(folder)).await_serving()
            try:
                text = scrape(host)
            finally:
                host.kill()
        self.assertEqual("", complaints(PROMTOOL, text))
        rows = rows_in(DOCUMENT.read_text(encoding="utf-8"))
        of_plugins_with_more = {"mirn_library_info", *(name for name in rows if name.startswith("mirn_kept_answers"))}
        own = {name for name, row in rows.items() if row.chapter == "The host"}
        self.assertEqual(own - of_plugins_with_more, set(families_in(text)) - of_plugins_with_more)


class ReadingTest(unittest.TestCase):
    """That the judge finds faults."""

    def test_promtool_complains(self):
        self.assertNotEqual("", complaints(PROMTOOL, "# TYPE mirn_things counter\nmirn_things 1\n"))

    def test_what_is_no_line_of_the_format_is_refused(self):
        for text in ("mirn_things\n", "# HELP a A.\n# TYPE a gauge\n# HELP a A.\n# TYPE a gauge\n"):
            self.assertRaises((AssertionError, KeyError), families_in, text)

    def test_a_row_allows_what_it_says(self):
        row = rows_in("## A\n| `a_b` | gauge | `c`, `d` | at most disks × 2 | B. |\n| `e` | gauge | | 3 | F. |\n")
        self.assertEqual({"c", "d"}, row["a_b"].labels)
        self.assertEqual([True, True, False], [row["a_b"].allows(count, {"disks": 2}) for count in (3, 4, 5)])
        self.assertEqual([False, True, False], [row["e"].allows(count, {}) for count in (2, 3, 4)])


if __name__ == "__main__":
    if len(sys.argv) < 6:
        sys.exit(__doc__.strip())
    HOST, MODULE, OTHER, PROMTOOL = sys.argv[1:5]
    DOCUMENT = pathlib.Path(sys.argv[5])
    unittest.main(argv=[sys.argv[0], *sys.argv[6:]])
