#!/usr/bin/env python3
"""Shows that tools/slowest-files reads ninja's log as it is, and says so when there is none."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import tool

slowest_files = tool.load("slowest-files")
LOG = """# ninja log v5
0\t2500\t1\tsrc/common/CMakeFiles/mirn_common.dir/volume.cpp.o\taa
10\t30010\t1\tbin/mirn_plugin.so\tbb
100\t4100\t1\tsrc/CMakeFiles/mirn_pch.dir/cmake_pch.hxx.gch\tcc
100\t1100\t1\ttests/logging/CMakeFiles/logging_test.dir/__/__/src/logging/a.cpp.obj\tdd
0\t3000\t2\tsrc/common/CMakeFiles/mirn_common.dir/volume.cpp.o\tee
"""


class SlowestFilesTest(unittest.TestCase):
    def run_on(self, log, *arguments):
        """Status, output and complaints of a run on a folder with such a log, or without one."""
        with tempfile.TemporaryDirectory() as folder:
            if log is not None:
                pathlib.Path(folder, ".ninja_log").write_text(log, encoding="utf-8")
            out, err = io.StringIO(), io.StringIO()
            with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
                status = slowest_files.main([folder, *arguments])
            return status, out.getvalue(), err.getvalue()

    def test_the_slowest_file_comes_first_with_its_last_time(self):
        self.assertEqual((0, "    4.0 s  src/cmake_pch.hxx\n    3.0 s  src/common/volume.cpp\n"
                             "    1.0 s  tests/logging/../../src/logging/a.cpp\n", ""), self.run_on(LOG))

    def test_no_more_files_than_asked_for(self):
        self.assertEqual("    4.0 s  src/cmake_pch.hxx\n", self.run_on(LOG, "-n", "1")[1])

    def test_a_file_beyond_the_limit_fails(self):
        self.assertEqual(0, self.run_on(LOG, "--limit", "4")[0])
        self.assertEqual(1, self.run_on(LOG, "--limit", "3.9")[0])

    def test_a_folder_without_a_usable_log_fails_and_says_why(self):
        for log, reason in ((None, "No such file or directory"), ("", "is no log of ninja"),
                            ("# ninja log v5\n", "nothing was compiled yet")):
            with self.subTest(reason):
                status, out, err = self.run_on(log)
                self.assertEqual((1, ""), (status, out))
                self.assertIn(reason, err)

    def test_measuring_compiles_again_without_the_cache(self):
        with tempfile.TemporaryDirectory() as folder:
            told = pathlib.Path(folder, "told")
            script = f"test \"$CCACHE_DISABLE\" = 1 && echo object > \"$2\" && echo \"$2\" > {told}"
            seconds = slowest_files.processor_seconds(["sh", "-c", script, "sh", "-o", "a.o"], folder)
            self.assertGreater(seconds, 0)
            self.assertEqual("result.o", pathlib.PurePath(told.read_text(encoding="utf-8").strip()).name)
            self.assertFalse(pathlib.Path(folder, "a.o").exists())
            with self.assertRaises(slowest_files.NoTimes):
                slowest_files.processor_seconds(["false", "-o", "a.o"], folder)


if __name__ == "__main__":
    unittest.main()
