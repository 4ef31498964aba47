#!/usr/bin/env python3
"""Ends a busy host, in good order and without, and looks at what is left.

usage: ended_host_test.py HOST MODULE TEST_PLUGIN [unittest arguments]

TEST_PLUGIN is a module whose answers are as large as is asked for.

MIRN_HOST_KILLS says how often it is killed (20), MIRN_SEED from which numbers the moments come; the seed is printed.
"""

import http.client
import json
import os
import pathlib
import random
import re
import socket
import sys
import tempfile
import threading
import time
import unittest

from local_host import PATIENCE, LocalHost

KILLS = int(os.environ.get("MIRN_HOST_KILLS", "20"))
SEED = int(os.environ.get("MIRN_SEED", random.SystemRandom().randrange(1 << 32)))


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.random = random.Random(SEED)
        self.hosts = []

    def launch(self, *arguments, module=None, **environment):
        host = LocalHost(HOST, module or MODULE, self.folder, arguments, **environment)
        self.addCleanup(host.kill)
        self.hosts.append(host)
        return host

    def end_all(self):
        """Nothing that one round left running stands in the way of the next."""
        for host in self.hosts:
            host.kill()
        self.hosts.clear()


class Changes:
    """One thing that is changed again and again: what was answered last, and what was asked for last."""

    def __init__(self, path, body_of, known):
        self.path, self.body_of = path, body_of
        self.asked = self.answered = known
        self.count = 0

    def make(self, host, value):
        """False when the host went meanwhile."""
        self.asked = value
        try:
            status, answer = host.request("PUT", self.path, self.body_of(value))
        except (OSError, http.client.HTTPException):
            return False
        if status >= 300:
            raise AssertionError(f"{self.path}: {status} {answer}")
        self.answered = value
        self.count += 1
        return True

    def possible(self):
        return {self.answered, self.asked}


class KilledHostTest(Folder):
    def test_the_next_start_serves_with_all_that_was_answered(self):
        print("seed", SEED)
        self.start_machine()
        for kill in range(KILLS):
            self.end_all()
            with self.subTest(kill=kill):
                if kill % 4 == 0:
                    self.kill_in_the_start()
                else:
                    self.kill_under_load()
                self.look()
        print(self.name.count, "names and", self.setting.count, "settings were answered")
        self.assertGreater(self.name.count, KILLS // 2)
        self.assertGreater(self.setting.count, KILLS // 2)

    def start_machine(self):
        host = self.launch().await_serving()
        volume = host.request("GET", "mirn/volumes")[1][0]
        self.volume, self.known_token = volume["id"], host.token()
        self.name = Changes(f"mirn/volumes/{self.volume}/name", lambda name: {"name": name}, volume["name"])
        self.setting = Changes("mirn/config", lambda seconds: {"locate_timeout": seconds}, 12)
        self.assertEqual(0, host.stop(), host.errors())

    def kill_in_the_start(self):
        host = self.launch()
        time.sleep(self.random.uniform(0, 0.3))
        host.kill()

    def kill_under_load(self):
        host = self.launch().await_serving()
        clients = [threading.Thread(target=self.keep_changing, args=(host, changes, values)) for changes, values in (
            (self.name, (f"Volume {number}" for number in iter(self.any_number, None))),
            (self.setting, iter(self.any_number, None)))]
        clients.append(threading.Thread(target=self.keep_reading, args=(host,)))
        for client in clients:
            client.start()
        time.sleep(self.random.uniform(0.02, 0.4))
        host.kill()
        for client in clients:
            client.join(PATIENCE)

    def any_number(self):
        return self.random.randrange(1, 3600)

    @staticmethod
    def keep_changing(host, changes, values):
        while changes.make(host, next(values)):
            pass

    def keep_reading(self, host):
        try:
            while host.request("GET", "mirn/volumes")[0] == 200:
                pass
        except (OSError, http.client.HTTPException):
            pass

    def look(self):
        host = self.launch().await_serving()
        self.assertEqual(self.known_token, host.token())
        status, volumes = host.request("GET", "mirn/volumes")
        self.assertEqual(200, status, volumes)
        names = {volume["id"]: volume["name"] for volume in volumes}
        self.assertIn(names[self.volume], self.name.possible())
        status, config = host.request("GET", "mirn/config")
        self.assertEqual(200, status, config)
        setting = config["locate_timeout"]["value"]
        self.assertIn(setting, self.setting.possible())
        self.assertEqual(0, host.stop(), host.errors())
        self.assertEqual([], [line for line in host.errors().splitlines() if "mirn-host" in line])
        self.name.asked = self.name.answered = names[self.volume]
        self.setting.asked = self.setting.answered = setting


class FirstStartTest(Folder):
    def test_one_that_is_killed_leaves_a_token_file_or_none(self):
        for kill in range(KILLS):
            with self.subTest(kill=kill):
                folder = self.folder / str(kill)
                folder.mkdir()
                host = LocalHost(HOST, MODULE, folder)
                self.addCleanup(host.kill)
                deadline = time.monotonic() + self.random.uniform(0, 0.1)
                while time.monotonic() < deadline and not (folder / "token").exists():
                    pass
                host.kill()
                token = None
                if (folder / "token").exists():
                    self.assertRegex((folder / "token").read_text(), r"\A[-\w.~]{32,256}\n\Z")
                    token = host.token()
                if kill % 4 == 0:
                    again = LocalHost(HOST, MODULE, folder)
                    self.addCleanup(again.kill)
                    self.assertEqual(200, again.await_serving().request("GET", "mirn/state")[0])
                    self.assertIn(token, (None, again.token()))
                    self.assertEqual(0, again.stop(), again.errors())


class Reader(threading.Thread):
    """Asks on one connection until the host closes it; whatever it began to answer has to come whole."""

    def __init__(self, host, target, at_first_bytes=lambda: None):
        super().__init__()
        self.request = (f"GET {target} HTTP/1.1\r\nHost: 127.0.0.1:{host.port}\r\n"
                        f"Authorization: Bearer {host.token()}\r\n\r\n").encode()
        self.port, self.at_first_bytes, self.whole, self.torn = host.port, at_first_bytes, 0, None

    def run(self):
        with socket.socket() as connection:
            connection.settimeout(PATIENCE)
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 1 << 16)
            connection.connect(("127.0.0.1", self.port))
            while self.torn is None and self.exchange(connection):
                pass

    def exchange(self, connection):
        """False when the connection is at its end."""
        received = bytearray(self.first_bytes(connection))
        if not received:
            return False
        self.at_first_bytes()
        head = bytes(received).partition(b"\r\n\r\n")[0]
        length = int(re.search(rb"(?i)\r\ncontent-length: (\d+)", head).group(1)) + len(head) + 4
        while len(received) < length:
            try:
                part = connection.recv(1 << 18)
            except OSError:
                part = b""
            if not part:
                self.torn = f"{len(received)} bytes of {length}"
                return False
            received += part
        json.loads(received[len(head) + 4:])
        self.whole += 1
        return b"connection: close" not in head.lower()

    def first_bytes(self, connection):
        """At least a header; nothing when the host closed instead."""
        received = b""
        try:
            connection.sendall(self.request)
            while b"\r\n\r\n" not in received:
                part = connection.recv(1 << 12)
                if not part:
                    break
                received += part
        except ConnectionError:
            pass
        if received and b"\r\n\r\n" not in received:
            self.torn = received
            return b""
        return received


class StoppedHostTest(Folder):
    LARGE = 8 << 20  # bytes: more than the system takes off the host's hands before a client has read them

    def join(self, readers):
        for reader in readers:
            reader.join(PATIENCE)
            self.assertFalse(reader.is_alive())
        self.assertEqual([None] * len(readers), [reader.torn for reader in readers])

    def test_under_load_every_answer_that_was_begun_is_whole(self):
        print("seed", SEED)
        for stop in range(5):
            with self.subTest(stop=stop):
                host = self.launch().await_serving()
                readers = [Reader(host, "/api/v1/mirn/volumes") for _ in range(16)]
                for reader in readers:
                    reader.start()
                time.sleep(self.random.uniform(0.2, 0.6))
                self.assertEqual(0, host.stop(), host.errors())
                self.join(readers)
                self.assertGreater(sum(reader.whole for reader in readers), 0)

    def test_answers_on_their_way_to_slow_clients_come_whole(self):
        host = self.launch(module=TEST_PLUGIN).await_serving()
        begun, stopping = threading.Barrier(4), threading.Event()

        def hold():
            begun.wait(PATIENCE)
            stopping.wait(PATIENCE)

        readers = [Reader(host, f"/api/v7/test/large?size={self.LARGE}", hold) for _ in range(3)]
        for reader in readers:
            reader.start()
        begun.wait(PATIENCE)
        host.process.terminate()
        time.sleep(0.1)  # so that the stop has begun
        stopping.set()
        self.assertEqual(0, host.process.wait(PATIENCE), host.errors())
        self.join(readers)
        self.assertEqual([1] * 3, [reader.whole for reader in readers])

    def test_a_change_under_way_is_answered(self):
        host = self.launch("--simulator-controls").await_serving()
        order = {"operation": "VexRescan", "milliseconds": 1500}
        self.assertEqual(204, host.request("POST", "simulator/delay-calls", order)[0])
        answers = []
        client = threading.Thread(target=lambda: answers.append(host.request("POST", "mirn/rescan")[0]))
        client.start()
        deadline = time.monotonic() + PATIENCE
        while host.request("POST", "simulator/count-calls", {"operation": "VexRescan"})[1]["calls"] == 0:
            self.assertLess(time.monotonic(), deadline)
        self.assertEqual(0, host.stop(), host.errors())
        client.join(PATIENCE)
        self.assertEqual(1, len(answers))
        self.assertIn(answers[0], (200, 204))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, TEST_PLUGIN = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
