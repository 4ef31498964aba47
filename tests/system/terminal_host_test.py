#!/usr/bin/env python3
"""What a host prints for somebody at a terminal, and keeps from whatever else captures its output.

usage: terminal_host_test.py HOST MODULE [unittest arguments]
"""

import http.client
import json
import os
import pathlib
import pty
import re
import select
import sys
import tempfile
import time
import unittest

from local_host import PATIENCE, LocalHost

ADDRESS = re.compile(r"^Sign in: http://127\.0\.0\.1:(\d+)/#code=([A-Za-z0-9_-]+)\r?$", re.M)


class TerminalHostTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def launch(self, **more):
        host = LocalHost(HOST, MODULE, self.folder, **more)
        self.addCleanup(host.kill)
        return host

    def read_until(self, terminal, pattern):
        """What stands at the terminal, once the pattern does."""
        text, deadline = "", time.monotonic() + PATIENCE
        while not pattern.search(text):
            self.assertLess(time.monotonic(), deadline, text)
            if select.select([terminal], [], [], 1)[0]:
                text += os.read(terminal, 4096).decode()
        return text

    def sign_in(self, port, code):
        connection = http.client.HTTPConnection("127.0.0.1", port, timeout=PATIENCE)
        try:
            connection.request("POST", "/api/v1/session", json.dumps({"code": code}), {"Content-Type": "application/json"})
            answer = connection.getresponse()
            return answer.status, json.loads(answer.read())
        finally:
            connection.close()

    def test_a_terminal_shows_an_address_that_signs_in_once(self):
        terminal, of_host = pty.openpty()
        self.addCleanup(os.close, terminal)
        host = self.launch(terminal=of_host)
        os.close(of_host)
        text = self.read_until(terminal, ADDRESS)
        self.assertNotIn(host.token(), text)
        port, code = ADDRESS.search(text).groups()
        self.assertEqual(22, len(code), "128 bits")
        host.port = int(port)
        status, session = self.sign_in(host.port, code)
        self.assertEqual((201, "administer"), (status, session["role"]))
        self.assertEqual(200, host.request("GET", "mirn/state", token=session["token"])[0])
        self.assertEqual(401, self.sign_in(host.port, code)[0])
        self.assertEqual(0, host.stop(), host.errors())

    def test_no_other_output_has_it(self):
        host = self.launch().await_serving()
        self.assertEqual(200, host.request("GET", "mirn/state")[0])
        self.assertEqual(0, host.stop(), host.errors())
        told = (self.folder / "output").read_text() + (self.folder / "errors").read_text()
        self.assertIn("Token file: ", told)
        for secret in "Sign in", "code=", host.token():
            self.assertNotIn(secret, told)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__.strip())
    HOST, MODULE = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
