#!/usr/bin/env python3
"""Hands sockets over to a host, as a service manager does that listens for it.

usage: handed_sockets_test.py HOST MODULE [unittest arguments]
"""

import contextlib
import http.client
import os
import pathlib
import socket
import stat
import sys
import tempfile
import time
import unittest

from local_host import PATIENCE, LocalHost

HAND_OVER = pathlib.Path(__file__).with_name("hand_over.py")
USAGE = 2  # the exit status for what does not mend itself


class LocalConnection(http.client.HTTPConnection):
    """To a Unix socket."""

    def __init__(self, path):
        super().__init__("localhost", timeout=PATIENCE)
        self.path = path

    def connect(self):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(self.timeout)
        self.sock.connect(str(self.path))


def answer(connection, path="/readyz", **headers):
    """Status and body."""
    with contextlib.closing(connection):
        connection.request("GET", path, headers=headers)
        got = connection.getresponse()
        return got.status, got.read().decode()


class HandedSockets(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.path = self.folder / "handed.sock"

    def network_socket(self, address="127.0.0.1", family=socket.AF_INET):
        listening = socket.create_server((address, 0), family=family)
        self.addCleanup(listening.close)
        return listening

    def local_socket(self, name="handed.sock", kind=socket.SOCK_STREAM):
        listening = socket.socket(socket.AF_UNIX, kind)
        self.addCleanup(listening.close)
        listening.bind(str(self.folder / name))
        if kind != socket.SOCK_DGRAM:
            listening.listen()
        return listening

    def launch(self, *sockets, arguments=()):
        """A host that finds `sockets`; their names are as systemd gives them."""
        names = ":".join(f"part-{number}.socket" for number, _ in enumerate(sockets))
        descriptors = [given.fileno() for given in sockets]
        launcher = [sys.executable, "-B", HAND_OVER, names, ",".join(map(str, descriptors))]
        host = LocalHost(HOST, MODULE, self.folder, arguments, launcher=launcher, descriptors=descriptors)
        self.addCleanup(host.kill)
        return host

    def over_network(self, host, path="/readyz", **headers):
        return answer(http.client.HTTPConnection("127.0.0.1", host.port, timeout=PATIENCE), path, **headers)

    def over_local(self, path="/readyz", socket_path=None):
        return answer(LocalConnection(socket_path or self.path), path)


class ServedSocketsTest(HandedSockets):
    READY = (200, '{"status":"ready"}')

    def test_both_are_served(self):
        network = self.network_socket()
        host = self.launch(self.local_socket(), network).await_serving()
        self.assertEqual(network.getsockname()[1], host.port)
        self.assertEqual(self.READY, self.over_network(host))
        self.assertEqual(self.READY, self.over_local())
        self.assertEqual(200, self.over_local("/api/v1/mirn/volumes")[0])  # the host's own user, without a token
        self.assertEqual(401, self.over_network(host, "/api/v1/mirn/volumes")[0])
        self.assertIn(f"\nUnix socket: {self.path}\n", (self.folder / "output").read_text())
        self.assertFalse((self.folder / "host.sock").exists())
        self.assertEqual(0, host.stop(), host.errors())

    def test_a_handed_unix_socket_stays_at_the_end(self):
        listening = self.local_socket()
        self.path.chmod(0o600)
        host = self.launch(listening).await_serving()
        self.assertEqual(self.READY, self.over_local())
        self.assertEqual(0, host.stop(), host.errors())
        status = self.path.stat()
        self.assertTrue(stat.S_ISSOCK(status.st_mode))
        self.assertEqual(0o600, stat.S_IMODE(status.st_mode))  # whose rights are its maker's, too

    def test_clients_wait_from_one_host_to_the_next(self):
        network, local = self.network_socket(), self.local_socket()
        for _ in range(2):
            early = [http.client.HTTPConnection(*network.getsockname(), timeout=PATIENCE), LocalConnection(self.path)]
            for connection in early:
                connection.request("GET", "/readyz")
            host = self.launch(network, local).await_serving()
            for connection in early:
                got = connection.getresponse()
                self.assertEqual(self.READY, (got.status, got.read().decode()))
                connection.close()
            self.assertEqual(0, host.stop(), host.errors())

    def test_the_one_that_is_not_handed_over_is_the_hosts_own(self):
        own = self.folder / "own.sock"
        network = self.network_socket()
        host = self.launch(network, arguments=["--unix-socket", own]).await_serving()
        self.assertEqual(network.getsockname()[1], host.port)
        self.assertEqual(self.READY, self.over_local(socket_path=own))
        self.assertEqual(0, host.stop(), host.errors())
        self.assertFalse(own.exists())

    def test_options_give_way(self):
        own = self.folder / "own.sock"
        arguments = ["--address", "127.0.0.2", "--unix-socket", own]
        host = self.launch(self.network_socket(), self.local_socket(), arguments=arguments).await_serving()
        self.assertEqual(self.READY, self.over_network(host))
        self.assertEqual(self.READY, self.over_local())
        self.assertFalse(own.exists())
        self.assertEqual(421, self.over_network(host, Host="127.0.0.2")[0])

    def test_the_host_goes_by_the_sockets_address(self):
        network = self.network_socket("127.0.0.3")
        host = self.launch(network)
        connection = http.client.HTTPConnection(*network.getsockname(), timeout=PATIENCE)
        self.assertEqual(self.READY, answer(connection))
        self.assertIn(f" on http://127.0.0.3:{network.getsockname()[1]}\n", (self.folder / "output").read_text())
        self.assertEqual(self.READY, answer(LocalConnection(self.socket_told()), Host="127.0.0.3"))
        self.assertEqual(0, host.stop(), host.errors())

    def socket_told(self):
        """The Unix socket that the host tells of."""
        (line,) = [line for line in (self.folder / "output").read_text().splitlines() if line.startswith("Unix socket: ")]
        return line.split(": ", 1)[1]

    def test_others_are_served_where_that_is_asked_for(self):
        network = self.network_socket("0.0.0.0")
        host = self.launch(network, arguments=["--insecure"])
        connection = http.client.HTTPConnection("127.0.0.1", network.getsockname()[1], timeout=PATIENCE)
        self.assertEqual(self.READY, answer(connection))
        self.assertEqual(0, host.stop(), host.errors())

    def test_systemd_hands_over_like_this(self):
        names = ["MIRN_REGISTRY", "VEXL2_STATE", "VEXL2_EVENT_WAIT_CAP", *os.environ]
        launcher = ["systemd-socket-activate", "--listen", self.path, *(f"--setenv={name}" for name in names)]
        host = LocalHost(HOST, MODULE, self.folder, launcher=launcher)
        self.addCleanup(host.kill)
        while not self.path.exists():
            self.assertIsNone(host.process.poll(), host.errors())
            time.sleep(0.01)
        self.assertEqual(self.READY, self.over_local())
        self.assertEqual(0, host.stop(), host.errors())
        self.assertTrue(self.path.exists())


class RefusedSocketsTest(HandedSockets):
    def assert_refused(self, reason, *sockets):
        host = self.launch(*sockets)
        self.assertEqual(USAGE, host.process.wait(PATIENCE), host.errors())
        self.assertEqual("", (self.folder / "output").read_text())
        self.assertEqual(f"mirn-host: {reason} (--help tells more)\n", host.errors())

    def assert_not_served(self, number, why, *sockets):
        descriptor = 3 + number
        self.assert_refused(
            f'the service manager hands over "part-{number}.socket" (descriptor {descriptor}), which is {why}', *sockets)

    def test_one_of_datagrams(self):
        datagrams = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.addCleanup(datagrams.close)
        datagrams.bind(("127.0.0.1", 0))
        self.assert_not_served(1, "no listening stream socket", self.network_socket(), datagrams)

    def test_a_unix_socket_of_packets(self):
        packets = self.local_socket(kind=socket.SOCK_SEQPACKET)
        self.assert_not_served(0, "no listening stream socket", packets)

    def test_a_connection(self):
        listening = self.network_socket()
        client = socket.create_connection(listening.getsockname())
        self.addCleanup(client.close)
        connection = listening.accept()[0]
        self.addCleanup(connection.close)
        self.assert_not_served(0, "no listening stream socket", connection)

    def test_a_file(self):
        with open(HAND_OVER, encoding="utf-8") as file:
            self.assert_not_served(0, "no listening stream socket", file)

    def test_a_second_tcp_socket(self):
        self.assert_not_served(2, "a second TCP socket", self.network_socket(), self.local_socket(),
                               self.network_socket("::1", socket.AF_INET6))

    def test_a_second_unix_socket(self):
        self.assert_not_served(1, "a second Unix socket", self.local_socket(), self.local_socket("other.sock"))

    def test_one_of_another_family(self):
        try:
            listening = socket.socket(socket.AF_VSOCK, socket.SOCK_STREAM)
            self.addCleanup(listening.close)
            listening.bind((socket.VMADDR_CID_ANY, socket.VMADDR_PORT_ANY))
            listening.listen()
        except OSError as error:
            self.skipTest(f"this system has no other family of stream sockets: {error}")
        self.assert_not_served(0, "neither a TCP nor a Unix socket", listening)

    def test_an_address_that_others_reach(self):
        self.assert_refused("the address 0.0.0.0 can be reached from other machines, and there is no encryption: "
                            "say --insecure to do it", self.network_socket("0.0.0.0"))
        self.assert_refused("the address :: can be reached from other machines, and there is no encryption: "
                            "say --insecure to do it", self.network_socket("::", socket.AF_INET6))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__.strip())
    HOST, MODULE = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
