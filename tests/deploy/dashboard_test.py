#!/usr/bin/env python3
"""Holds the dashboard of deploy/grafana to what a host tells to measure, and its questions to what Prometheus can read.

usage: dashboard_test.py SOURCES PROMTOOL [unittest arguments]
"""

import itertools
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import yaml

from told_families import ADDED, SELECTOR, faults_of, labels_of_families

PATIENCE = 60
WIDTH = 24  # columns of a dashboard
UNITS = {"none", "bytes", "percentunit", "reqps", "s"}
VARIABLES = {"$__rate_interval": "5m", "$instance": ".+"}
PARTS = re.compile(r"_(?:bucket|sum|count)\b")


def readable(expression):
    """As Prometheus gets it."""
    for variable, value in VARIABLES.items():
        expression = expression.replace(variable, value)
    return expression


def told_by(expression, families):
    """The labels of all families that it asks for."""
    names = {name for name, _ in SELECTOR.findall(PARTS.sub("", expression))}
    return ADDED.union(*(families[name] for name in names if name in families))


class DashboardTest(unittest.TestCase):
    def setUp(self):
        self.dashboard = json.loads((SOURCES / "deploy" / "grafana" / "mirn.json").read_text(encoding="utf-8"))
        self.panels = self.dashboard["panels"]
        self.targets = [(panel["title"], target) for panel in self.panels for target in panel.get("targets", ())]

    def test_what_it_asks_for_is_told(self):
        families = labels_of_families(SOURCES)
        self.assertGreater(len(self.targets), 15)
        for title, target in self.targets:
            self.assertEqual([], list(faults_of(PARTS.sub("", target["expr"]), families)), title)
            for label in re.findall(r"\{\{(\w+)\}\}", target["legendFormat"]):
                self.assertIn(label, told_by(target["expr"], families), title)

    def test_prometheus_reads_each_question(self):
        rules = [{"record": f"panel:{number}", "expr": readable(target["expr"])}
                 for number, (_, target) in enumerate(self.targets)]
        with tempfile.NamedTemporaryFile("w", suffix=".yml") as file:
            yaml.safe_dump({"groups": [{"name": "dashboard", "rules": rules}]}, file)
            file.flush()
            done = subprocess.run([PROMTOOL, "check", "rules", file.name], capture_output=True, text=True, timeout=PATIENCE)
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)
        self.assertIn(f"{len(rules)} rules found", done.stdout)

    def test_it_asks_of_the_hosts_that_are_chosen(self):
        names = {variable["name"] for variable in self.dashboard["templating"]["list"]}
        self.assertEqual({"datasource", "instance"}, names)
        for title, target in self.targets:
            asked = [matchers for name, matchers in SELECTOR.findall(target["expr"]) if matchers]
            self.assertTrue(asked, title)
            for matchers in asked:
                self.assertIn('job="mirn",instance=~"$instance"', matchers, title)
            self.assertEqual("${datasource}", target["datasource"]["uid"], title)
            self.assertEqual([], re.findall(r"\$(?!instance\b|__rate_interval\b)\w+", target["expr"]), title)

    def test_panels_stand_beside_each_other(self):
        self.assertEqual(len(self.panels), len({panel["id"] for panel in self.panels}))
        self.assertEqual(len(self.panels), len({panel["title"] for panel in self.panels}))
        for panel in self.panels:
            place = panel["gridPos"]
            self.assertLessEqual(place["x"] + place["w"], WIDTH, panel["title"])
            if panel["type"] != "row":
                self.assertIn(panel["fieldConfig"]["defaults"]["unit"], UNITS, panel["title"])
                self.assertTrue(panel["description"], panel["title"])
        for one, other in itertools.combinations(self.panels, 2):
            a, b = one["gridPos"], other["gridPos"]
            self.assertFalse(a["x"] < b["x"] + b["w"] and b["x"] < a["x"] + a["w"] and
                             a["y"] < b["y"] + b["h"] and b["y"] < a["y"] + a["h"], (one["title"], other["title"]))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__.strip())
    SOURCES = pathlib.Path(sys.argv[1])
    PROMTOOL = sys.argv[2]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
