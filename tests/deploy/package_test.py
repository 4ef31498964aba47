#!/usr/bin/env python3
"""Shows what is in the Debian package of a build, and that the host starts from it by the unit's own line, in a view of
the file system in which the package is unpacked. tests/long/package installs it for real.

usage: package_test.py BUILD [unittest arguments]
"""

import gzip
import json
import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv[1]).resolve()
SHOW_SERVING = pathlib.Path(__file__).with_name("show_serving.py")
FILES = """
etc/mirn/host.conf
usr/bin/mirn-host
usr/bin/mirnctl
usr/lib/systemd/system/mirn-host.service
usr/lib/systemd/system/mirn-host.socket
usr/lib/TRIPLET/mirn/mirn-whatif
usr/lib/TRIPLET/mirn/mirn_plugin.so
usr/lib/TRIPLET/mirn/vexl2/simulator/libVEXL2.so
usr/share/bash-completion/completions/mirnctl
usr/share/doc/mirn-host/alerts.md
usr/share/doc/mirn-host/changelog.gz
usr/share/doc/mirn-host/copyright
usr/share/doc/mirn-host/examples/mirn.json
usr/share/doc/mirn-host/examples/mirn.rules.yml
usr/share/doc/mirn-host/examples/sample.conf
usr/share/doc/mirn-host/examples/scrape.yml
usr/share/doc/mirn-host/metrics.md
usr/share/fish/vendor_completions.d/mirnctl.fish
usr/share/lintian/overrides/mirn-host
usr/share/man/man1/mirnctl.1.gz
usr/share/man/man5/mirn-host.conf.5.gz
usr/share/man/man8/mirn-host.8.gz
usr/share/zsh/vendor-completions/_mirnctl
""".split()


def run(*command):
    result = subprocess.run(command, capture_output=True, text=True, timeout=300)
    if result.returncode:
        raise AssertionError(f"{command} ends with {result.returncode}: {result.stdout}{result.stderr}")
    return result.stdout


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-G", "DEB", "-B", cls.folder / "packages")
        (cls.package,) = (cls.folder / "packages").glob("*.deb")
        cls.root = cls.folder / "root"
        run("dpkg-deb", "-x", cls.package, cls.root)

    def field(self, name):
        return run("dpkg-deb", "-f", self.package, name).strip()

    def triplet(self):
        return run("dpkg-architecture", "-qDEB_HOST_MULTIARCH").strip()

    def test_it_is_named_by_its_version_and_machine(self):
        self.assertEqual("mirn-host", self.field("Package"))
        self.assertRegex(self.field("Version"), r"^\d+(\.\d+){3}$")
        self.assertEqual(run("dpkg", "--print-architecture").strip(), self.field("Architecture"))
        self.assertEqual(f"mirn-host_{self.field('Version')}_{self.field('Architecture')}.deb", self.package.name)

    def test_it_needs_what_its_programs_are_linked_to(self):
        needed = re.split(r"[ ,]+", self.field("Depends"))
        for package in ("adduser", "libc6", "libssl3", "libstdc++6", "libsystemd0"):
            self.assertIn(package, needed)

    def test_it_has_these_files_and_no_others(self):
        found = sorted(path.relative_to(self.root).as_posix() for path in self.root.rglob("*") if not path.is_dir())
        self.assertEqual(sorted(name.replace("TRIPLET", self.triplet()) for name in FILES), found)

    def test_it_keeps_the_rules_of_debian(self):
        self.assertEqual("", run("lintian", "--allow-root", "--profile", "debian", "--fail-on", "error,warning", self.package))

    def test_the_last_change_is_the_packages(self):
        changes = gzip.decompress((self.root / "usr/share/doc/mirn-host/changelog.gz").read_bytes()).decode()
        self.assertTrue(changes.startswith(f"mirn-host ({self.field('Version')}) "), changes[:80])

    def test_everything_is_roots_and_for_nobody_else_to_write(self):
        for line in run("dpkg-deb", "-c", self.package).splitlines():
            self.assertRegex(line, r"^[d-]rw[x-]r-[x-]r-[x-] root/root ", line)

    def test_the_configuration_stays_the_administrators(self):
        control = self.folder / "control"
        run("dpkg-deb", "-e", self.package, control)
        self.assertEqual("/etc/mirn/host.conf\n", (control / "conffiles").read_text())
        for script in ("postinst", "prerm", "postrm"):
            self.assertTrue((control / script).stat().st_mode & stat.S_IXUSR, script)
            run("sh", "-n", control / script)

    def test_the_host_starts_by_the_units_line(self):
        own_user = [] if os.geteuid() == 0 else ["--map-root-user"]
        said = run("unshare", "--mount", "--net", *own_user, sys.executable, "-B", SHOW_SERVING, self.root)
        told = json.loads(said.splitlines()[-1])
        self.assertEqual({"name": "simulator", "simulated": True},
                         {key: told["library"][key] for key in ("name", "simulated")})
        self.assertEqual(f"/usr/lib/{self.triplet()}/mirn/vexl2/simulator/libVEXL2.so", told["library"]["path"])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
