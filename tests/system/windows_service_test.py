#!/usr/bin/env python3
"""Has Wine's service control manager run the Windows host: installs, starts, asks, stops and removes it.

usage: windows_service_test.py RUNNER HOST MODULE TEST_PLUGIN [unittest arguments]

RUNNER runs a Windows program; MODULE is the product's module, and TEST_PLUGIN one that leaves a trace of its life.
"""

import http.client
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

NAME = "mirn-host"
ENDED_WITH_A_STATUS_OF_ITS_OWN = 1066
TIME = 60  # seconds, for one step of the manager
KEY = rf"HKLM\SYSTEM\CurrentControlSet\Services\{NAME}"
SOURCE = rf"HKLM\SYSTEM\CurrentControlSet\Services\EventLog\Application\{NAME}"


def run(*command):
    """Status and output of a Windows program."""
    # Wine's own programs find no output but a file.
    with tempfile.TemporaryFile() as output:
        done = subprocess.run([RUNNER, *map(str, command)], stdin=subprocess.DEVNULL, stdout=output,
                              stderr=subprocess.STDOUT, timeout=TIME)
        output.seek(0)
        return done.returncode, output.read().decode("utf-8", "replace").replace("\r\n", "\n")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def free_port():
    with socket.socket() as bound:
        bound.bind(("127.0.0.1", 0))
        return bound.getsockname()[1]


class WindowsServiceTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        status, data = run("cmd", "/c", "echo %ProgramData%")
        drive = pathlib.Path(os.environ.get("WINEPREFIX") or pathlib.Path(RUNNER).parent.parent / "build/wine") / "drive_c"
        cls.state_name = data.strip() + "\\Mirn"
        cls.state = drive.joinpath(*cls.state_name.split("\\")[1:])

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.forget()
        self.addCleanup(self.forget)
        self.port = free_port()

    def forget(self):
        run(HOST, "service", "remove")
        shutil.rmtree(self.state, ignore_errors=True)

    def install(self, *options):
        status, told = run(HOST, "service", "install", *options)
        self.assertEqual((0, f"Installed; its state is in {self.state_name}\n"), (status, told))

    def value(self, key, name):
        status, told = run("reg", "query", key, "/v", name)
        found = re.search(rf"(?m)^ +{name} +REG_\w+ +(.*)$", told)
        return found.group(1).strip() if status == 0 and found else None

    def start(self):
        status, told = run("net", "start", NAME)
        self.assertEqual(0, status, told)

    def stop(self):
        status, told = run("net", "stop", NAME)
        self.assertEqual(0, status, told)
        return self.await_stop()

    def asked(self, what):
        """What the manager tells of the service."""
        return re.search(rf"(?m)^\s*{what} +: (.*\S)", run("sc", "query", NAME)[1]).group(1)

    def await_stop(self):
        """The status and the host's own, with which it ended. Wine's `net` does not wait for it."""
        deadline = time.monotonic() + TIME
        while "STOPPED" not in self.asked("STATE"):
            self.assertLess(time.monotonic(), deadline, "the service does not stop")
            time.sleep(0.1)
        return int(self.asked("WIN32_EXIT_CODE").split()[0]), int(self.asked("SERVICE_EXIT_CODE").split()[0])

    def ask(self, target, token=None):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=TIME)
        try:
            connection.request("GET", target, headers={"Authorization": "Bearer " + token} if token else {})
            answer = connection.getresponse()
            return answer.status, answer.read().decode("utf-8")
        finally:
            connection.close()

    def await_answer(self):
        deadline = time.monotonic() + TIME
        while time.monotonic() < deadline:
            try:
                return self.ask("/healthz")
            except OSError:
                time.sleep(0.1)
        raise AssertionError("the service does not answer")


class InstallTest(WindowsServiceTest):
    def test_it_starts_with_the_machine_with_the_options_kept(self):
        configuration = self.folder / "of this machine.conf"
        configuration.write_text(f"module = {windows_path(TEST_PLUGIN)}\nport = 0\n")
        self.install("--config", windows_path(configuration), "--log-requests")
        self.assertEqual("0x2", self.value(KEY, "Start"))
        self.assertEqual(f'"{windows_path(HOST)}" "service" "run" "--config={windows_path(configuration)}" '
                         '"--log-requests=yes"', self.value(KEY, "ImagePath"))
        self.assertEqual("LocalSystem", self.value(KEY, "ObjectName"))
        self.assertEqual(windows_path(HOST).lower(), self.value(SOURCE, "EventMessageFile").lower())

    def test_a_second_one_is_refused(self):
        self.install("--module", windows_path(TEST_PLUGIN))
        self.assertEqual((1, f'mirn-host: there is a service "{NAME}" already; remove it first\n'),
                         run(HOST, "service", "install", "--module", windows_path(TEST_PLUGIN)))

    def test_what_could_not_serve_is_refused_and_not_installed(self):
        for options, words in (
                (["--module", "Z:\\none\\module.dll"], "the option '--module' names no file"),
                (["--module", windows_path(TEST_PLUGIN), "--unix-socket", "x"], "there is no Unix socket on Windows"),
                (["--config", "Z:\\none\\host.conf"], "cannot be read"),
                (["--module", windows_path(TEST_PLUGIN), "--check-config"], "it serves")):
            status, told = run(HOST, "service", "install", *options)
            self.assertEqual(2, status, told)
            self.assertIn(words, told)
            self.assertIsNone(self.value(KEY, "ImagePath"))

    def test_without_options_a_first_configuration_is_made(self):
        self.install()
        text = (self.state / "host.conf").read_text()
        module = windows_path(pathlib.Path(HOST).with_name("mirn_plugin.dll"))
        self.assertTrue(text.startswith(f"module = {module}\n"), text[:200])
        self.assertIn(f'"--config={self.state_name}\\host.conf"', self.value(KEY, "ImagePath"))

    def test_the_removal_leaves_the_state_and_nothing_else(self):
        self.install()
        self.assertEqual((0, f"Removed; its state stays in {self.state_name}\n"), run(HOST, "service", "remove"))
        self.assertIsNone(self.value(KEY, "ImagePath"))
        self.assertIsNone(self.value(SOURCE, "EventMessageFile"))
        self.assertTrue((self.state / "host.conf").is_file())
        self.assertEqual((1, f'mirn-host: there is no service "{NAME}"\n'), run(HOST, "service", "remove"))


class RunTest(WindowsServiceTest):
    def test_it_serves_until_it_is_stopped(self):
        configuration = self.folder / "größe €.conf"
        configuration.write_text(f"module = {windows_path(MODULE)}\nport = {self.port}\n")
        self.install("--config", windows_path(configuration))
        self.start()
        self.assertEqual((200, '{"status":"working"}'), self.await_answer())
        self.assertIn("RUNNING", self.asked("STATE"))
        token = (self.state / "token").read_text().strip()
        self.assertEqual(200, self.ask("/api/v1/mirn/volumes", token)[0])
        self.assertEqual((0, 0), self.stop())
        self.assertRaises(OSError, self.ask, "/healthz")

    def test_it_starts_again_with_its_token(self):
        self.install("--module", windows_path(MODULE), "--port", str(self.port))
        self.start()
        self.await_answer()
        token = (self.state / "token").read_text().strip()
        self.stop()
        self.start()
        self.await_answer()
        self.assertEqual(200, self.ask("/api/v1/mirn/volumes", token)[0])

    def test_the_stop_finishes_the_plugin(self):
        self.install("--module", windows_path(TEST_PLUGIN), "--port", str(self.port))
        trace = self.state / "test_plugin_trace"
        trace.touch()
        self.start()
        self.await_answer()
        self.stop()
        self.assertEqual(["finish", "destroy", "unload"], trace.read_text().split()[-3:])

    def test_the_removal_stops_it(self):
        self.install("--module", windows_path(MODULE), "--port", str(self.port))
        self.start()
        self.await_answer()
        self.assertEqual(0, run(HOST, "service", "remove")[0])
        self.assertRaises(OSError, self.ask, "/healthz")

    def test_a_start_that_fails_is_told(self):
        configuration = self.folder / "host.conf"
        configuration.write_text(f"module = {windows_path(MODULE)}\n")
        self.install("--config", windows_path(configuration))
        configuration.write_text("colour = red\n")
        run("net", "start", NAME)  # Wine's is content with a process
        self.assertEqual((ENDED_WITH_A_STATUS_OF_ITS_OWN, 2), self.await_stop())

    def test_it_runs_for_the_manager_alone(self):
        status, told = run(HOST, "service", "run", "--module", windows_path(MODULE))
        self.assertEqual(1, status)
        self.assertIn("mirn-host: the service control manager did not start this process", told)

    def test_another_verb_is_refused(self):
        self.assertEqual((2, 'mirn-host: it is "service install OPTIONS" or "service remove" (--help tells more)\n'),
                         run(HOST, "service", "launch"))
        status, told = run(HOST, "service", "--help")
        self.assertEqual(0, status)
        self.assertIn("mirn-host service install", told)


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit(__doc__.strip())
    RUNNER, HOST, MODULE, TEST_PLUGIN = sys.argv[1:5]
    unittest.main(argv=[sys.argv[0], *sys.argv[5:]])
