#!/usr/bin/env python3
"""Starts the Windows host under Wine and talks to it from here, as a client on another machine would.

usage: windows_host_test.py RUNNER HOST MODULE TEST_PLUGIN SCENARIO [unittest arguments]

RUNNER runs a Windows program; MODULE is the product's module, SCENARIO describes the machine that it finds, and
TEST_PLUGIN is a module that leaves a trace of its life and blocks on demand.
"""

import concurrent.futures
import ctypes
import http.client
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest

START_TIME = 60  # seconds; the first program under Wine sets its files up
STOP_TIME = 30
ENDED_BY_CTRL_C = 0xC000013A & 0xFF  # as much of the status as passes through


def end_with_parent():
    """In the child: whatever ends this test ends its hosts."""
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


class Host:
    """A host process, and requests to it."""

    def __init__(self, folder, arguments, environment):
        self.folder = folder
        self.output = open(folder / "output", "w+b")
        self.errors = open(folder / "errors", "w+b")
        # Without a terminal, so that nothing but the signals below stops it.
        self.process = subprocess.Popen(
            [RUNNER, HOST, *arguments], stdin=subprocess.DEVNULL, stdout=self.output, stderr=self.errors,
            env={**os.environ, "VEXL2_EVENT_WAIT_CAP": "50", "TEST_PLUGIN_TRACE": str(folder / "trace"),
                 **environment}, preexec_fn=end_with_parent)
        self.port = None
        self.token = None

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait(STOP_TIME)
        self.output.close()
        self.errors.close()

    def written(self, name):
        return (self.folder / name).read_bytes().decode("utf-8", "replace").replace("\r\n", "\n")

    def await_serving(self):
        deadline = time.monotonic() + START_TIME
        while time.monotonic() < deadline and self.process.poll() is None:
            found = re.search(r"^Serving .* on http://127\.0\.0\.1:(\d+)\nToken file: (.+)\n", self.written("output"), re.M)
            if found:
                self.port = int(found.group(1))
                file = pathlib.Path(found.group(2))
                self.token = file.read_text().strip() if file.is_file() else None
                return
            time.sleep(0.05)
        raise AssertionError("the host does not serve; it says: " + self.written("errors")[-2000:])

    def request(self, method, target, body=None, token=None):
        """The status and the text of the answer."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=STOP_TIME)
        try:
            connection.request(method, target, body and json.dumps(body),
                               {"Authorization": "Bearer " + (token or self.token)})
            answer = connection.getresponse()
            return answer.status, answer.read().decode("utf-8")
        finally:
            connection.close()

    def press_ctrl_c(self):
        """Wine makes the console's event of the signal."""
        self.process.send_signal(signal.SIGINT)

    def exit_status(self):
        return self.process.wait(STOP_TIME)

    def await_closed_port(self):
        """The host has begun to stop when nobody listens any more."""
        deadline = time.monotonic() + STOP_TIME
        while time.monotonic() < deadline:
            try:
                self.request("GET", "/healthz")
            except OSError:
                return
            time.sleep(0.05)
        raise AssertionError("the host still serves")


class WindowsHostTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.count = 0

    def launch(self, *arguments, **environment):
        """A host in a folder of its own."""
        self.count += 1
        folder = self.folder / str(self.count)
        folder.mkdir()
        host = Host(folder, arguments, environment)
        self.addCleanup(host.close)
        return host

    def serve(self, module, *arguments, **environment):
        host = self.launch("--module", module, "--port", "0", "--token-file", self.token_file(), *arguments,
                           **environment)
        host.await_serving()
        return host

    def token_file(self):
        return str(self.folder / "Schlüssel €" / "token")

    def assert_stops(self, host):
        host.press_ctrl_c()
        self.assertEqual(0, host.exit_status(), host.written("errors")[-2000:])

    def volumes(self, host):
        status, text = host.request("GET", "/api/v1/mirn/volumes")
        self.assertEqual(200, status, text)
        return {volume["name"]: volume["id"] for volume in json.loads(text)}


class ServingTest(WindowsHostTest):
    def test_the_simulated_machine_is_served(self):
        host = self.serve(MODULE)
        names = [volume["name"] for volume in json.loads(pathlib.Path(SCENARIO).read_text())["volumes"]]
        self.assertNotEqual([], names)
        self.assertEqual(sorted(names), sorted(self.volumes(host)))
        self.assertEqual((200, '{"status":"working"}'), host.request("GET", "/healthz"))
        self.assert_stops(host)

    def test_curl_is_answered(self):
        host = self.serve(MODULE)
        curl = ["curl", "--silent", "--show-error", "--max-time", str(STOP_TIME), "--write-out", " %{http_code}",
                "--header", "Authorization: Bearer " + host.token]
        answer = subprocess.run(curl + [f"http://127.0.0.1:{host.port}/api/v1/mirn/version"], check=True,
                                capture_output=True, text=True).stdout
        self.assertRegex(answer, r'"pluginVersion":"5\.4\.0\.1465".* 200$')
        self.assert_stops(host)

    def test_a_change_is_seen_afterwards(self):
        host = self.serve(MODULE)
        name, identifier = sorted(self.volumes(host).items())[0]
        status, text = host.request("PUT", f"/api/v1/mirn/volumes/{identifier}/name", {"name": "Plain name"})
        self.assertEqual((200, {"name": "Plain name", "volumeId": identifier}), (status, json.loads(text)))
        self.assertEqual(identifier, self.volumes(host)["Plain name"])
        self.assertNotIn(name, self.volumes(host))
        self.assert_stops(host)

    def test_what_would_be_is_worked_through_by_another_program(self):
        host = self.serve(MODULE)
        status, text = host.request("GET", "/api/v1/mirn/enddevices")
        self.assertEqual(200, status, text)
        member = next(disk["id"] for disk in json.loads(text) if disk.get("usage") == "ARRAY_MEMBER")
        status, text = host.request("POST", "/api/v1/whatif", {"events": [{"fail": member}]})
        self.assertEqual(200, status, text)
        told = json.loads(text)
        self.assertEqual([(member, True)], [(event["object"]["id"], event["happened"]) for event in told["events"]])
        self.assertTrue(told["changes"])
        self.assert_stops(host)

    def test_who_has_no_token_and_what_is_not_there_is_refused(self):
        host = self.serve(MODULE)
        self.assertEqual(401, host.request("GET", "/api/v1/mirn/volumes", token="x" * 64)[0])
        self.assertEqual(404, host.request("GET", "/api/v1/mirn/nothing")[0])
        self.assertEqual(404, host.request("GET", "/api/v2/mirn/volumes")[0])
        self.assertEqual(405, host.request("GET", "/api/v1/mirn/volumes/1/rebuild")[0])
        self.assert_stops(host)

    def test_a_module_in_a_folder_of_any_name_is_served_with_its_library(self):
        folder = self.folder / "ordnüng €"
        folder.mkdir()
        for library in pathlib.Path(MODULE), pathlib.Path(MODULE).with_name("VEXL2.dll"):
            (folder / library.name).symlink_to(library)
        host = self.serve(str(folder / pathlib.Path(MODULE).name), "--simulator-controls")
        self.assertEqual(200, host.request("GET", "/api/v1/simulator")[0])
        self.assertEqual(204, host.request("POST", "/api/v1/simulator/check")[0])
        self.assert_stops(host)


class TokenTest(WindowsHostTest):
    def test_the_token_is_kept_from_start_to_start(self):
        host = self.serve(TEST_PLUGIN)
        token = host.token
        self.assertRegex(token, r"\Amirn_[\w-]{43}\Z")
        self.assertNotIn(token, host.written("output"))
        self.assert_stops(host)
        host = self.serve(TEST_PLUGIN)
        self.assertEqual(200, host.request("GET", "/api/v7", token=token)[0])
        self.assert_stops(host)

    def test_a_token_that_others_may_read_is_refused(self):
        file = self.folder / "token"
        file.write_text("a" * 64 + "\n")
        file.chmod(0o644)
        host = self.launch("--module", TEST_PLUGIN, "--port", "0", "--token-file", str(file))
        self.assertEqual(1, host.exit_status())
        self.assertRegex(host.written("errors"), r"\Amirn-host: token file .*: others may read or write it \(.*\)\n\Z")

    def test_unless_told_otherwise_it_stands_below_the_users_data(self):
        host = self.launch("--module", TEST_PLUGIN, "--port", "0")
        host.await_serving()
        self.assertRegex(host.written("output"), r"(?m)^Token file: C:\\.*\\AppData\\Local\\mirn\\token$")
        self.assert_stops(host)


class StopTest(WindowsHostTest):
    def blocked(self, *arguments):
        """A host with a request inside its plug-in that nobody will answer."""
        host = self.serve(TEST_PLUGIN, *arguments)
        pool = concurrent.futures.ThreadPoolExecutor(1)
        self.addCleanup(pool.shutdown)
        request = pool.submit(host.request, "GET", "/api/v7/test/block")
        self.assertEqual(204, host.request("GET", "/api/v7/test/await-blocked?count=1")[0])
        return host, request

    def test_an_orderly_one_finishes_the_plugin_and_unloads_it(self):
        host = self.serve(TEST_PLUGIN)
        self.assert_stops(host)
        self.assertEqual(
            ["discover_plugin", "register_plugin", "construct", "initialize", "getHandledPaths", "finish", "destroy",
             "unload"], host.written("trace").split())

    def test_a_failure_to_finish_is_told_and_the_plugin_still_unloaded(self):
        host = self.serve(TEST_PLUGIN, TEST_PLUGIN_FINISH="throw")
        host.press_ctrl_c()
        self.assertEqual(1, host.exit_status())
        self.assertEqual("mirn-host: no end today\n", host.written("errors"))
        self.assertEqual(["finish", "destroy", "unload"], host.written("trace").split()[-3:])

    def test_what_is_under_way_is_answered_first(self):
        host = self.serve(MODULE, "--simulator-controls")
        order = {"operation": "VexRescan", "milliseconds": 3000}
        self.assertEqual(204, host.request("POST", "/api/v1/simulator/delay-calls", order)[0])
        before = self.rescans(host)
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            rescan = pool.submit(host.request, "POST", "/api/v1/mirn/rescan")
            while self.rescans(host) == before:
                self.assertFalse(rescan.done(), "the request did not wait")
            host.press_ctrl_c()
            self.assertIn(rescan.result(STOP_TIME)[0], (200, 204))
        self.assertEqual(0, host.exit_status(), host.written("errors")[-2000:])

    def rescans(self, host):
        return json.loads(host.request("POST", "/api/v1/simulator/count-calls", {"operation": "VexRescan"})[1])["calls"]

    def test_one_that_takes_too_long_leaves_the_plugin_unfinished_and_says_so(self):
        host, request = self.blocked("--drain-timeout", "0.5")
        host.press_ctrl_c()
        self.assertEqual(1, host.exit_status())
        self.assertIn("mirn-host: requests were still under way after the drain time", host.written("errors"))
        self.assertEqual("getHandledPaths", host.written("trace").split()[-1])
        self.assertIsInstance(request.exception(STOP_TIME), (OSError, http.client.HTTPException))

    def test_a_second_ctrl_c_ends_the_host_at_once(self):
        host, request = self.blocked("--drain-timeout", "600")
        host.press_ctrl_c()
        host.await_closed_port()
        self.assertIsNone(host.process.poll())
        host.press_ctrl_c()
        self.assertEqual(ENDED_BY_CTRL_C, host.exit_status())
        self.assertIsInstance(request.exception(STOP_TIME), (OSError, http.client.HTTPException))


class StartTest(WindowsHostTest):
    def assert_refused(self, status, words, *arguments):
        host = self.launch("--token-file", self.token_file(), *arguments)
        self.assertEqual(status, host.exit_status())
        self.assertRegex(host.written("errors"), r"\Amirn-host: [^\n]*" + words + r"[^\n]*\n\Z")

    def test_a_used_port_is_told(self):
        host = self.serve(TEST_PLUGIN)
        self.assert_refused(1, f"cannot listen on 127.0.0.1:{host.port}: ", "--module", TEST_PLUGIN, "--port",
                            str(host.port))
        self.assert_stops(host)

    def test_a_library_that_is_no_module_is_told(self):
        library = str(pathlib.Path(MODULE).with_name("VEXL2.dll"))
        self.assert_refused(1, "exports no discover_plugin", "--module", library)

    def test_a_wrong_command_line_has_a_status_of_its_own(self):
        self.assert_refused(2, "größe", "--größe", "1")

    def test_help_names_what_windows_has(self):
        host = self.launch("--help")
        self.assertEqual(0, host.exit_status())
        self.assertIn("Ctrl+C", host.written("output"))
        self.assertIn("%LOCALAPPDATA%", host.written("output"))


if __name__ == "__main__":
    if len(sys.argv) < 6:
        sys.exit(__doc__.strip())
    RUNNER, HOST, MODULE, TEST_PLUGIN, SCENARIO = sys.argv[1:6]
    unittest.main(argv=[sys.argv[0], *sys.argv[6:]])
