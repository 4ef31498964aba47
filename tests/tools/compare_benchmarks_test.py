#!/usr/bin/env python3
"""Shows that tools/compare-benchmarks measures two builds in turn and tells their ratio, and says so when it cannot."""

import contextlib
import io
import json
import pathlib
import tempfile
import unittest

import tool

compare = tool.load("compare-benchmarks")


def report(*rows):
    """What a benchmark program prints: (name, processor time, time by the clock, unit) each."""
    return {"benchmarks": [{"name": name, "run_type": "iteration", "cpu_time": cpu, "real_time": real, "time_unit": unit}
                           for name, cpu, real, unit in rows]}


class TimesTest(unittest.TestCase):
    def test_are_of_the_processor_unless_a_benchmark_measures_by_itself(self):
        told = report(("get", 2, 9, "us"), ("look/24/manual_time", 2, 9, "ms"), ("rename/real_time", 1, 3, "ns"))
        times = compare.times_of(told)
        self.assertEqual({"get", "look/24/manual_time", "rename/real_time"}, set(times))
        for name, seconds in (("get", 2e-6), ("look/24/manual_time", 9e-3), ("rename/real_time", 3e-9)):
            self.assertAlmostEqual(seconds, times[name])

    def test_leave_out_sums_and_failures(self):
        told = report(("get", 2, 9, "us"), ("get_median", 2, 9, "us"), ("put", 2, 9, "us"))
        told["benchmarks"][1]["run_type"] = "aggregate"
        told["benchmarks"][2]["error_occurred"] = True
        self.assertEqual(["get"], list(compare.times_of(told)))


class MeasureTest(unittest.TestCase):
    def test_runs_both_in_turn_and_pairs_what_both_have(self):
        before, after, asked = pathlib.Path("before"), pathlib.Path("after"), []

        def run(program, options):
            asked.append((program.parent.name, options))
            return {"same": float(len(asked)), program.parent.name: 1.0}

        pairs = compare.measure([before, after], "p", 2, ["-o"], run)
        self.assertEqual([(each, ["-o"]) for each in ("before", "after", "after", "before")], asked)
        self.assertEqual({"same": [(1.0, 2.0), (4.0, 3.0)]}, pairs)

    def test_a_row_tells_medians_and_how_far_rounds_differ(self):
        self.assertEqual(["get", "2 us", "1 us", "0.50", "0.25 to 1.00"],
                         compare.row("get", [(2e-6, 1e-6), (1e-6, 1e-6), (4e-6, 1e-6)]))

    def test_times_are_shown_in_their_unit(self):
        self.assertEqual(["1.5 s", "12.3 ms", "2 us", "0.4 ns"], [compare.shown(each) for each in (1.5, 12.3e-3, 2e-6, 4e-10)])


class ProgramTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def place(self, build, name, text, status=0):
        path = self.folder / build / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\ncat <<'END'\n{text}\nEND\nexit {status}\n", encoding="utf-8")
        path.chmod(0o755)

    def run_on(self, *arguments):
        """Status, output and complaints."""
        out, err = io.StringIO(), io.StringIO()
        status = 0
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
            try:
                compare.main([str(self.folder / "before"), str(self.folder / "after"), *arguments])
            except SystemExit as end:
                status = end.code
        return status, out.getvalue(), err.getvalue()

    def test_shows_a_table_and_names_what_is_left_out(self):
        self.place("before", "old", json.dumps(report(("get", 4, 4, "us"))))
        self.place("after", "old", json.dumps(report(("get", 2, 2, "us"))))
        self.place("after", "new", json.dumps(report(("put", 2, 2, "us"))))
        self.assertEqual((0, "     before  after  ratio        rounds\nget    4 us   2 us   0.50  0.50 to 0.50\n",
                          "left out: new, which BEFORE lacks\n"), self.run_on("--rounds", "1", "old", "new", "--", "--filter=x"))

    def test_a_program_that_fails_ends_it(self):
        self.place("before", "old", "", status=3)
        self.place("after", "old", "")
        self.assertIn("old: it failed", self.run_on("old")[0])

    def test_nothing_measured_fails(self):
        self.place("before", "old", "")
        self.place("after", "old", "")
        self.assertEqual("nothing was measured", self.run_on("--rounds", "1", "old")[0])

    def test_no_rounds_and_one_build_are_refused(self):
        self.assertEqual(2, self.run_on("--rounds", "0", "old")[0])
        self.folder = self.folder / "same"
        (self.folder / "before").mkdir(parents=True)
        (self.folder / "after").symlink_to("before")
        self.assertEqual(2, self.run_on("old")[0])


if __name__ == "__main__":
    unittest.main()
