#!/usr/bin/env python3
"""Shows that tools/check-names finds what it is there for."""

import unittest

import tool

check_names = tool.load("check-names")


class CheckNamesTest(unittest.TestCase):
    def test_names_in_the_style_of_their_folder_pass(self):
        for path in ("src/contract/text.cpp", "src/contract/ServiceObject.cpp", "vexl2/VEXL2.h",
                     "tests/contract/ServiceObject_test.cpp", "tools/check-format", "docs/adding-a-route.md", "run",
                     "cmake/MirnTargets.cmake", "tests/layers/CMakeLists.txt", "examples/host/README.md", ".clang-format",
                     "simulator/scenario/embedded_scenario.cpp.in", "host/net/port_claim_posix.cpp", "tools/documented_product.py",
                     "docs/pictures/overview.png", "tests/openapi/package-lock.json", "tests/openapi/types_test.ts", "tests/openapi/.npmrc"):
            with self.subTest(path):
                self.assertEqual([], list(check_names.faults_of_path(path)))

    def test_names_in_another_style_fail(self):
        for path in ("src/contract/TextTools.cpp", "src/contract/text-tools.h", "src/contract/ServiceObjects.h",
                     "tools/check_format", "tools/check-format.sh", "docs/adding_a_route.md", "cmake/targets.cmake",
                     "tests/layers/check-layers.py", "src/Contract/text.h", "host/net/portClaim.cpp", "src/readme.md",
                     "src/contract/text.hpp", "tools/documented-product.py", "tests/openapi/other-lock.json"):
            with self.subTest(path):
                self.assertEqual(1, len(list(check_names.faults_of_path(path))))

    def test_a_guard_names_the_path_of_its_header(self):
        for path, guard in (("src/contract/text.h", "MIRN_CONTRACT_TEXT_H"), ("host/service_limits.h", "MIRN_HOST_SERVICE_LIMITS_H")):
            with self.subTest(path):
                self.assertEqual([], list(check_names.faults_of(path, f"#ifndef {guard}\n#define {guard}\n#endif\n")))
                for text in (f"#ifndef {guard}\n#define OTHER\n#endif\n", "#ifndef MIRN_A_H\n#define MIRN_A_H\n#endif\n", ""):
                    self.assertEqual([f"its include guard is not {guard}"], list(check_names.faults_of(path, text)))

    def test_a_precompiled_header_needs_no_guard(self):
        self.assertEqual([], list(check_names.faults_of("src/pch.h", "#include <string>\n")))


if __name__ == "__main__":
    unittest.main()
