#!/usr/bin/env python3
"""Shows that tools/check-lint finds what it is there for, whoever is read together."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PRESETS = """{"version": 6, "configurePresets": [{"name": "lint", "generator": "Ninja",
  "binaryDir": "${sourceDir}/build/lint",
  "cacheVariables": {"CMAKE_CXX_COMPILER": "clang++", "CMAKE_EXPORT_COMPILE_COMMANDS": "ON"}}]}"""
CLEAN = "namespace { constexpr int kValue = %d; }\nint value%d() { return kValue; }\n"
FAULTY = "int* faulty() { return 0; }\n"


class CheckLintTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "project"
        for name in ("tools", "base"):
            (self.root / name).mkdir(parents=True)
        for name in (".clang-tidy", "tools/check-lint"):
            shutil.copy(ROOT / name, self.root / name)
        (self.root / ".gitignore").write_text("/build/\n")
        (self.root / "CMakePresets.json").write_text(PRESETS)
        (self.root / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(lint_test CXX)\n"
            "file(GLOB sources base/*.cpp)\nadd_library(base OBJECT ${sources})\n"
            "target_compile_definitions(base PRIVATE TEXT=\"of two words\")\n")
        self.git("init", "--quiet")

    def git(self, *words):
        subprocess.run(["git", *words], cwd=self.root, check=True)

    def write(self, **sources):
        for name, text in sources.items():
            (self.root / "base" / f"{name}.cpp").write_text(text)

    def lint(self, *words):
        self.git("add", "--all")
        tools = os.pathsep.join({os.path.dirname(shutil.which(tool)) for tool in ("clang-tidy", "clang++", "cmake", "git", "ninja")})
        return subprocess.run([self.root / "tools/check-lint", *words], capture_output=True, text=True,
                              env={"PATH": f"{tools}:/usr/bin:/bin", "HOME": str(self.root), "XDG_CACHE_HOME": str(self.root / "build/cache")})

    def test_what_is_clean_is_read_once(self):
        self.write(one=CLEAN % (1, 1), two="const char* text() { return TEXT; }\n")
        first, second = self.lint(), self.lint()
        self.assertEqual((0, 0), (first.returncode, second.returncode), first.stdout + first.stderr)
        self.assertRegex(first.stdout, "lint: 2 files, .*, 2 of them read")
        self.assertRegex(second.stdout, "lint: 2 files, .*, 0 of them read")

    def test_files_that_cannot_be_read_together_are_read_apart(self):
        self.write(**{f"file{i}": CLEAN % (i, i) for i in range(4)})
        done = self.lint()
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)

    def test_a_finding_fails_and_names_its_file_alone(self):
        for words in ([], ["--each"]):
            with self.subTest(words):
                self.write(one=CLEAN % (1, 1), two=CLEAN % (2, 2), wrong=FAULTY)
                found = self.lint(*words)
                self.assertEqual(1, found.returncode)
                self.assertIn("lint: base/wrong.cpp", found.stdout)
                self.assertIn("modernize-use-nullptr", found.stdout)
                self.assertNotIn("lint: base/one.cpp", found.stdout)
                again = self.lint(*words)
                self.assertEqual(1, again.returncode, "a finding is not forgotten")
                self.assertIn("1 of them read", again.stdout)

    def test_a_finding_in_a_header_fails(self):
        (self.root / "base/shared.h").write_text("inline " + FAULTY)
        self.write(one='#include "shared.h"\n' + CLEAN % (1, 1), two='#include "shared.h"\n' + CLEAN % (2, 2))
        found = self.lint()
        self.assertEqual(1, found.returncode)
        self.assertIn("shared.h", found.stdout)

    def test_a_changed_header_has_all_read_again(self):
        header = self.root / "base/shared.h"
        header.write_text("#define VALUE 1\n")
        self.write(one=CLEAN % (1, 1), two=CLEAN % (2, 2))
        self.assertEqual(0, self.lint().returncode)
        header.write_text("#define VALUE 2\n")
        self.assertIn("2 of them read", self.lint().stdout)

    def test_what_does_not_compile_fails(self):
        self.write(one=CLEAN % (1, 1), broken="int broken( { return 1; }\n")
        found = self.lint()
        self.assertEqual(1, found.returncode)
        self.assertIn("lint: base/broken.cpp", found.stdout)

    def test_wrong_use_is_refused(self):
        self.assertEqual(1, self.lint("--some").returncode)
        self.assertEqual(0, self.lint("--help").returncode)


if __name__ == "__main__":
    unittest.main()
