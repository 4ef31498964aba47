#!/usr/bin/env python3
"""Makes the installer for Windows, and installs and removes with it under Wine.

usage: windows_installer_test.py RUNNER BUILD [unittest arguments]

RUNNER runs a Windows program.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
TIME = 120  # seconds, for one program
REMOVAL = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Mirn"
SERVICE = r"HKLM\SYSTEM\CurrentControlSet\Services\mirn-host"
FOLDER = r"C:\Program Files\Mirn"
FILES = """
LICENSE.txt
docs/api.md
docs/host.md
docs/mirnctl.md
docs/security.md
docs/simulator.md
docs/windows.md
libgcc_s_seh-1.dll
libstdc++-6.dll
libwinpthread-1.dll
mirn-host.exe
mirn-whatif.exe
mirn_plugin.dll
mirnctl.exe
uninstall.exe
vexl2/simulator/VEXL2.dll
""".split()


def run(*command):
    """Status and output of a Windows program."""
    # Wine's own programs find no output but a file.
    with tempfile.TemporaryFile() as output:
        done = subprocess.run([RUNNER, *map(str, command)], stdin=subprocess.DEVNULL, stdout=output,
                              stderr=subprocess.STDOUT, timeout=TIME)
        output.seek(0)
        return done.returncode, output.read().decode("utf-8", "replace").replace("\r\n", "\n")


def value(key, name):
    status, told = run("reg", "query", key, "/v", name)
    found = re.search(rf"(?m)^ +{name} +REG_\w+ +(.*)$", told)
    return found.group(1).strip() if status == 0 and found else None


class InstallerTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        cls.addClassCleanup(folder.cleanup)
        cls.installer = pathlib.Path(folder.name) / "mirn.exe"
        subprocess.run([SOURCE / "tools" / "make-windows-installer", BUILD, cls.installer], check=True, timeout=TIME)
        prefix = pathlib.Path(os.environ.get("WINEPREFIX") or SOURCE / "build" / "wine")
        cls.folder = prefix / "drive_c" / "Program Files" / "Mirn"
        cls.state = prefix / "drive_c" / "ProgramData" / "Mirn"

    def setUp(self):
        self.forget()
        self.addCleanup(self.forget)

    def forget(self):
        if (self.folder / "mirn-host.exe").exists():
            run(FOLDER + r"\mirn-host.exe", "service", "remove")
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.rmtree(self.state, ignore_errors=True)
        run("reg", "delete", REMOVAL, "/f")

    def install(self, *options):
        self.assertEqual(0, run(self.installer, "/S", *options)[0])

    def remove(self):
        """The program copies itself elsewhere, to be able to go, and ends ahead of its copy."""
        self.assertEqual(0, run(FOLDER + r"\uninstall.exe", "/S")[0])
        deadline = time.monotonic() + TIME
        while value(REMOVAL, "DisplayName"):  # goes last
            self.assertLess(time.monotonic(), deadline, "the removal does not end")
            time.sleep(0.1)

    def files(self):
        return sorted(path.relative_to(self.folder).as_posix() for path in self.folder.rglob("*") if not path.is_dir())

    def test_it_installs_a_host_that_knows_its_library(self):
        self.install()
        self.assertEqual(sorted(FILES), self.files())
        host = FOLDER + r"\mirn-host.exe"
        version = (BUILD / "version.txt").read_text()
        self.assertEqual((0, f"mirn-host {version}\n"), run(host, "--version"))
        self.assertEqual((0, "The configuration is good\n"),
                         run(host, "--module", FOLDER + r"\mirn_plugin.dll", "--library", "simulator", "--check-config"))
        self.assertEqual(version, value(REMOVAL, "DisplayVersion"))
        self.assertEqual(FOLDER, value(REMOVAL, "InstallLocation"))
        self.assertIsNone(value(SERVICE, "ImagePath"))

    def test_the_removal_leaves_what_others_put_there(self):
        self.install()
        (self.folder / "docs" / "ours.txt").write_text("x")
        self.remove()
        self.assertEqual(["docs/ours.txt"], self.files())

    def test_with_a_service_it_has_a_configuration_that_outlives_the_removal(self):
        self.install("/SERVICE")
        self.assertIn(rf'"{FOLDER}\mirn-host.exe" "service" "run"', value(SERVICE, "ImagePath"))
        configuration = self.state / "host.conf"
        lines = configuration.read_text().splitlines()
        self.assertEqual([rf"module = {FOLDER}\mirn_plugin.dll", "library = simulator"], lines[:2])
        configuration.write_text(configuration.read_text() + "port = 0\n")

        self.install("/SERVICE")  # an upgrade
        self.assertEqual(sorted(FILES), self.files())
        self.assertTrue(configuration.read_text().endswith("port = 0\n"))
        self.remove()
        self.assertIsNone(value(SERVICE, "ImagePath"))
        self.assertFalse(self.folder.exists())
        self.assertTrue(configuration.read_text().endswith("port = 0\n"))

    def test_an_upgrade_serves_on(self):
        self.install("/SERVICE")
        configuration = self.state / "host.conf"
        configuration.write_text("port = 0\n" + configuration.read_text())
        self.assertEqual(0, run("net", "start", "mirn-host")[0])
        self.install("/SERVICE")
        deadline = time.monotonic() + TIME
        while "RUNNING" not in run("sc", "query", "mirn-host")[1]:
            self.assertLess(time.monotonic(), deadline, "the service does not run")
            time.sleep(0.1)
        self.remove()
        self.assertFalse(self.folder.exists())


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__.strip())
    RUNNER, BUILD = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
