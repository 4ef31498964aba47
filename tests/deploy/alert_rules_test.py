#!/usr/bin/env python3
"""Holds the rules of deploy/prometheus to their tests, to what a host tells to measure, and to docs/alerts.md.

usage: alert_rules_test.py SOURCES PROMTOOL [unittest arguments]
"""

import collections
import pathlib
import re
import subprocess
import sys
import unittest

import yaml

from told_families import ADDED, faults_of, labels_of_families

PATIENCE = 240


def promtool(*words):
    done = subprocess.run([PROMTOOL, *words], capture_output=True, text=True, timeout=PATIENCE)
    return done.returncode, done.stdout + done.stderr


def rules():
    groups = yaml.safe_load((FOLDER / "mirn.rules.yml").read_text())["groups"]
    return [rule for group in groups for rule in group["rules"]]


def anchors(page):
    return {re.sub(r"[^\w -]", "", line.lstrip("# ")).strip().lower().replace(" ", "-")
            for line in page.splitlines() if line.startswith("#")}


class AlertRulesTest(unittest.TestCase):
    def test_promtool_takes_them(self):
        for words in (("check", "rules", "--lint=all", "--lint-fatal", FOLDER / "mirn.rules.yml"),
                      ("check", "config", "--syntax-only", FOLDER / "scrape.yml")):
            status, told = promtool(*words)
            self.assertEqual(0, status, told)

    def test_they_are_silent_fire_and_clear(self):
        status, told = promtool("test", "rules", *TESTS)
        self.assertEqual(0, status, told)

    def test_each_has_its_three_cases(self):
        cases = collections.defaultdict(list)
        for test in [test for file in TESTS for test in yaml.safe_load(file.read_text())["tests"]]:
            for case in test["alert_rule_test"]:
                cases[case["alertname"]].append((int(case["eval_time"].rstrip("m")), bool(case["exp_alerts"])))
        self.assertEqual({rule["alert"] for rule in rules()}, set(cases))
        for alert, told in cases.items():
            self.assertEqual([False, True, False], [fires for _, fires in sorted(told)], alert)

    def test_what_they_ask_for_is_told(self):
        families = labels_of_families(SOURCES)
        for rule in rules():
            self.assertEqual([], list(faults_of(rule["expr"], families)), rule["alert"])
            for label in re.findall(r"\$labels\.(\w+)", rule["annotations"]["summary"]):
                self.assertIn(label, set().union(*families.values()) | ADDED, rule["alert"])

    def test_each_says_where_it_stands_what_to_do(self):
        for rule in rules():
            page, _, anchor = rule["annotations"]["runbook"].partition("#")
            self.assertEqual(rule["alert"].lower(), anchor)
            self.assertIn(anchor, anchors((SOURCES / page).read_text(encoding="utf-8")))
            self.assertIn(rule["labels"]["severity"], {"critical", "warning", "info"})

    def test_the_page_has_no_other_headings(self):
        page = (SOURCES / "docs" / "alerts.md").read_text(encoding="utf-8")
        told = set(re.findall(r"^### (\w+)$", page, re.MULTILINE))
        self.assertEqual({rule["alert"] for rule in rules()}, told)

    def test_the_configuration_keeps_the_token_in_a_file(self):
        config = yaml.safe_load((FOLDER / "scrape.yml").read_text())
        job = config["scrape_configs"][0]
        self.assertEqual("mirn", job["job_name"], "as rules ask for")
        self.assertEqual({"type", "credentials_file"}, set(job["authorization"]))
        self.assertEqual(["mirn.rules.yml"], config["rule_files"])


class ReadingTest(unittest.TestCase):
    """That names which there are not are found."""

    FAMILIES = {"a_b": {"c"}, "up": set()}

    def test_names_that_there_are_not_are_found(self):
        for expression, fault in (("a_x > 0", "family a_x"), ('a_b{d="1"} > 0', "label d of a_b"),
                                  ("sum by (d) (a_b)", "label d"), ('rate(a_c{c=~"x"}[5m])', "family a_c"),
                                  ('a_b{c="x"} and up{e!="x"}', "label e of up")):
            self.assertEqual([fault], list(faults_of(expression, self.FAMILIES)), expression)

    def test_names_that_there_are_pass(self):
        expression = 'changes(a_b{c=~"x|y",instance="z"}[6h]) == 0 and a_b offset 6h * on (c) group_left (c) up > time()'
        self.assertEqual([], list(faults_of(expression, self.FAMILIES)))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__.strip())
    SOURCES = pathlib.Path(sys.argv[1])
    PROMTOOL = sys.argv[2]
    FOLDER = SOURCES / "deploy" / "prometheus"
    TESTS = [SOURCES / "tests" / "deploy" / name for name in ("alert_rules.yml", "slow_alert_rules.yml")]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
