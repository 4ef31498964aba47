#!/usr/bin/env python3
"""Shows that tests/mutation/run plants what it says, where it says, tells killed from surviving, and goes on."""

import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import sys
import tempfile
import unittest
import unittest.mock

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
import faults  # noqa: E402

loader = importlib.machinery.SourceFileLoader("run", str(HERE / "run"))
run = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
loader.exec_module(run)

SOURCE = """#include "one.h"  // a == b
/* x && y */
int one(int a, int b) {
  if (a == b) return 1;
  total = a + b;
  note("no ( in here == there");
  return std::vector<int>{true, 0x10}.size();
}
"""

PROJECT = {
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
project(toy LANGUAGES CXX)
enable_testing()
add_subdirectory(src/near)
add_executable(near_test tests/near/near_test.cpp)
target_link_libraries(near_test PRIVATE near)
add_test(NAME near_test.Holds COMMAND near_test)
""",
    "src/near/CMakeLists.txt": "add_library(near STATIC near.cpp)\n",
    "src/near/near.cpp": "int seen(int a) { return a + 1; }\nint unseen(int a) { return a + 2; }\n",
    "tests/near/near_test.cpp": "int seen(int);\nint main() { return seen(1) == 2 ? 0 : 1; }\n",
}

HANGING = """#include <cstdio>
int seen(int);
int main() {
  std::printf("[ RUN      ] Near.Ends\\n");
  std::fflush(stdout);
  while (seen(1) != 2) {}
}
"""

# Fails from the second time on, as a test that goes by chance might, and not when it is asked once more as a whole.
STUMBLING = """#include <cstdio>
int main() {
  std::FILE* marks = std::fopen("MARKS", "a");
  std::fputs("+", marks);
  std::printf("[  FAILED  ] Near.Stumbles\\n");
  return std::ftell(marks) == 2;
}
"""


class FaultsTest(unittest.TestCase):
    def setUp(self):
        self.found = [(fault.line, fault.kind, fault.old, fault.new) for fault in faults.faults_of("a.cpp", SOURCE)]

    def test_has_each_kind_where_it_stands_and_nothing_in_comments_and_includes(self):
        self.assertEqual(self.found, [
            (4, "branch", "a == b", "!(a == b)"), (4, "operator", " == ", " != "), (4, "constant", "1", "2"),
            (5, "statement", "total = a + b", ""), (5, "operator", " + ", " - "),
            (6, "call", 'note("no ( in here == there")', ""), (6, "constant", '"', '~"'),
            (7, "constant", "true", "false"), (7, "constant", "0x10", "17")])

    def test_is_planted_alone_and_at_its_place(self):
        for fault in faults.faults_of("a.cpp", SOURCE):
            before, after = SOURCE.splitlines(), faults.planted(SOURCE, fault).splitlines()
            changed = [number for number, pair in enumerate(zip(before, after), 1) if pair[0] != pair[1]]
            self.assertEqual(changed, [fault.line])

    def test_is_not_planted_where_the_source_is_another(self):
        fault = faults.faults_of("a.cpp", SOURCE)[0]
        with self.assertRaises(ValueError):
            faults.planted("\n" + SOURCE, fault)

    def test_is_drawn_evenly_and_by_the_seed_alone(self):
        piles = {"b": list("123456"), "a": list("xyz")}
        order = faults.drawn(piles, 7)
        without = [each for each in faults.drawn({**piles, "a": list("xy")}, 7) if each != "z"]
        self.assertEqual(order, faults.drawn(piles, 7))
        self.assertNotEqual(order, faults.drawn(piles, 8))
        self.assertEqual(sorted(order), sorted("123456xyz"))
        self.assertTrue(all(each in "xyz" for each in order[0:6:2]), order)
        self.assertEqual([each for each in without if each in "123456"], [each for each in order if each in "123456"])


class RunTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "toy"
        self.results = self.root.parent / "results.tsv"
        for name, text in PROJECT.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def call(self, *arguments):
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            status = run.main(["--results", str(self.results), "--place", str(self.root.parent / "place"), *arguments],
                              self.root)
        self.assertEqual(status, 0)
        return out.getvalue()

    def own_tests_of_near(self, *names):
        """Has its tests called as GoogleTest's are."""
        path = self.root / "CMakeLists.txt"
        kept = [line for line in path.read_text(encoding="utf-8").splitlines() if not line.startswith("add_test")]
        added = [f"add_test(NAME near_test.{name} COMMAND near_test --gtest_filter={name})" for name in names]
        path.write_text("\n".join(kept + added) + "\n", encoding="utf-8")

    def outcomes(self):
        return {(row[1], row[4]): row[6:8] for row in run.Results(self.results).rows}

    def test_tells_what_is_killed_and_by_whom_stops_and_goes_on(self):
        first = self.call("--count", "1")
        self.assertIn("seed 1\n", first)
        self.assertEqual(len(self.outcomes()), 1)
        again = self.call("--count", "1")
        self.assertNotIn("killed:", again + "survived:")
        self.assertEqual(len(self.outcomes()), 1, "there is one already")

        self.call("--count", "4")
        self.assertEqual(self.outcomes(), {("1", " + "): ["killed", "near_test.Holds"],
                                           ("1", "1"): ["killed", "near_test.Holds"],
                                           ("2", " + "): ["survived", ""], ("2", "2"): ["survived", ""]})
        for name, text in PROJECT.items():
            self.assertEqual((self.root / name).read_text(encoding="utf-8"), text, "the tree itself is left alone")

    def test_takes_back_what_a_run_that_was_stopped_left_behind(self):
        left = self.root.parent / "place" / "tree" / "src" / "near" / "near.cpp"
        left.parent.mkdir(parents=True)
        left.write_text("int seen(int) { return 0; }\n", encoding="utf-8")
        self.assertNotIn("left out", self.call("--count", "1"))

    def test_leaves_out_a_program_that_fails_by_itself(self):
        test = self.root / "tests/near/near_test.cpp"
        test.write_text("int main() { return 1; }\n", encoding="utf-8")
        self.assertIn("left out, fails without a fault: near_test", self.call("--count", "1"))
        self.assertEqual([outcome[0] for outcome in self.outcomes().values()], ["survived"])

    def test_plants_those_again_that_survived_and_sets_their_rows_anew(self):
        self.call("--count", "4")
        self.assertEqual(len(run.Results(self.results).survivors("src")), 2)
        test = self.root / "tests/near/near_test.cpp"
        test.write_text("int seen(int);\nint unseen(int);\n"
                        "int main() { return seen(1) == 2 && unseen(1) == 3 ? 0 : 1; }\n", encoding="utf-8")
        self.assertIn("src: 4 of 4 killed (100.0 %), 0 survived", self.call("--again"))
        self.assertEqual(len(self.outcomes()), 4)

    def test_counts_each_folder_by_itself(self):
        (self.root / "src").rename(self.root / "host")
        for name in ["CMakeLists.txt"]:
            path = self.root / name
            path.write_text(path.read_text(encoding="utf-8").replace("src/near", "host/near"), encoding="utf-8")
        self.results.write_text("\t".join(run.HEADING) + "\nsrc/far.cpp\t1\t1\tcall\tfar()\t\tsurvived\t\t1.0\n",
                                encoding="utf-8")
        self.assertIn("host: 2 of 4 killed (50.0 %), 2 survived", self.call("--folder", "host", "--count", "4"))

    def test_ends_a_program_that_does_not_end_and_names_the_test_that_hung(self):
        (self.root / "tests/near/near_test.cpp").write_text(HANGING, encoding="utf-8")
        self.own_tests_of_near("Near.Ends")
        with unittest.mock.patch.object(run.Program, "GRACE", 0.5):
            self.call("--count", "4")
        self.assertEqual(self.outcomes()["1", " + "], ["killed", "near_test.Near.Ends"])

    def test_a_failure_that_does_not_come_again_kills_nothing(self):
        marks = self.root.parent / "marks"
        (self.root / "tests/near/near_test.cpp").write_text(STUMBLING.replace("MARKS", str(marks)), encoding="utf-8")
        self.own_tests_of_near("Near.Stumbles")
        self.call("--count", "1")
        self.assertEqual([outcome[0] for outcome in self.outcomes().values()], ["survived"])
        self.assertEqual(marks.read_text(encoding="utf-8"), "+" * 4, "without a fault, with it, alone, once more")

    def test_asks_the_scripts_that_look_at_what_is_built(self):
        path = self.root / "CMakeLists.txt"
        path.write_text(path.read_text(encoding="utf-8") + """
add_executable(teller tests/near/teller.cpp)
target_link_libraries(teller PRIVATE near)
add_test(NAME near.is_told COMMAND sh -c "test $(\\"$1\\") = 5" sh $<TARGET_FILE:teller>)
""", encoding="utf-8")
        (self.root / "tests/near/teller.cpp").write_text(
            '#include <cstdio>\nint unseen(int);\nint main() { std::printf("%d", unseen(3)); }\n', encoding="utf-8")
        self.call("--count", "4", "--tests", "near_test$")
        self.assertEqual(self.outcomes()["2", " + "], ["survived", ""])
        self.call("--again")
        self.assertEqual(self.outcomes()["2", " + "], ["killed", "near.is_told"])

    def test_asks_the_tests_of_the_own_folder_for_texts_ahead_of_scripts(self):
        path = self.root / "CMakeLists.txt"
        path.write_text(path.read_text(encoding="utf-8") + """
add_executable(teller tests/teller.cpp)
target_link_libraries(teller PRIVATE near)
add_test(NAME near.is_told COMMAND sh -c "test $(\\"$1\\") = a" sh $<TARGET_FILE:teller>)
""", encoding="utf-8")
        (self.root / "src/near/near.cpp").write_text('const char* word() { return "a"; }\n', encoding="utf-8")
        (self.root / "tests/teller.cpp").write_text(
            "#include <cstdio>\nconst char* word();\nint main() { std::puts(word()); }\n", encoding="utf-8")
        (self.root / "tests/near/near_test.cpp").write_text(
            "const char* word();\nint main() { return word()[1] == 0 ? 0 : 1; }\n", encoding="utf-8")
        self.call("--count", "1")
        self.assertEqual(self.outcomes()["1", '\\"'], ["killed", "near_test.Holds"])

    def test_lists_without_planting(self):
        self.assertIn("src/near/near.cpp:1:", self.call("--list"))
        self.assertFalse(self.results.exists())


if __name__ == "__main__":
    unittest.main()
