#!/usr/bin/env python3
"""Has many listen to what happens on a host, pulls a disk and puts it back again and again, and tells what that cost:
threads and memory, the processor's time, the time from the fault to the first and the last listener, and whether the stop
said farewell to all. Fails when a thread was among it, or somebody was told nothing.

usage: listened_host.py HOST MODULE [--listeners N] [--faults N]
"""

import argparse
import os
import pathlib
import re
import resource
import selectors
import signal
import socket
import statistics
import sys
import tempfile
import time

from local_host import PATIENCE, LocalHost

DISK = "TB2T7790315"
QUIET = 0.2  # seconds without a byte: all has come


class Listeners:
    """Clients of the stream, each a socket."""

    def __init__(self, host, count):
        self.selector, self.heard = selectors.DefaultSelector(), {}
        request = ("GET /api/v1/events/stream HTTP/1.1\r\nHost: localhost\r\n"
                   f"Authorization: Bearer {host.token()}\r\n\r\n").encode()
        for _ in range(count):
            client = socket.create_connection(("127.0.0.1", host.port), timeout=PATIENCE)
            client.sendall(request)
            self.heard[client] = b""
            self.selector.register(client, selectors.EVENT_READ)
        self.await_all(b"\r\n\r\n")
        assert all(text.startswith(b"HTTP/1.1 200 ") for text in self.heard.values()), "not all may listen"

    def read(self, seconds):
        """False when nothing came."""
        ready = self.selector.select(seconds)
        for key, _ in ready:
            part = key.fileobj.recv(1 << 16)
            self.heard[key.fileobj] += part
            if not part:
                self.selector.unregister(key.fileobj)
        return bool(ready)

    def await_all(self, mark):
        """The moments at which the first and the last of them had it."""
        left, first, deadline = set(self.heard), None, time.monotonic() + PATIENCE
        while left:
            assert time.monotonic() < deadline, f"{len(left)} listeners never heard {mark}"
            self.read(PATIENCE)
            there = {client for client in left if mark in self.heard[client]}
            first = first or (time.monotonic() if there else None)
            left -= there
        return first, time.monotonic()

    def forget(self):
        while self.read(QUIET):
            pass
        self.heard = dict.fromkeys(self.heard, b"")

    def farewells(self):
        """Of the streams that ended, how many ended whole and with the word."""
        deadline = time.monotonic() + PATIENCE
        while self.selector.get_map() and time.monotonic() < deadline:
            self.read(PATIENCE)
        return sum(b"event: bye\n" in text and text.endswith(b"\r\n0\r\n\r\n") for text in self.heard.values())


def cost(host):
    """Threads, kilobytes, seconds of the processor."""
    status = pathlib.Path(f"/proc/{host.process.pid}/status").read_text()
    times = pathlib.Path(f"/proc/{host.process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(re.search(r"Threads:\s+(\d+)", status).group(1)), int(re.search(r"VmRSS:\s+(\d+)", status).group(1)),
            (int(times[11]) + int(times[12])) / os.sysconf("SC_CLK_TCK"))


def told(name, times):
    times = sorted(times)
    return (f"{name}: {1000 * statistics.median(times):.1f} ms in the middle, "
            f"{1000 * times[int(0.99 * (len(times) - 1))]:.1f} ms for 99 of 100, {1000 * times[-1]:.1f} ms at most")


def ask(host, path, body=None):
    status, answer = host.request("POST", path, body)
    assert status < 300, answer


def listen(host, arguments):
    before = cost(host)
    listeners = Listeners(host, arguments.listeners)
    listeners.forget()
    after = cost(host)
    print(f"{arguments.listeners} listeners: {after[0] - before[0]} threads and {after[1] - before[1]} kB more than without")
    begin = time.monotonic()
    while time.monotonic() < begin + 10:
        listeners.read(1)
    print(f"nothing happens: {100 * (cost(host)[2] - after[2]) / (time.monotonic() - begin):.1f} % of a processor")
    firsts, lasts, busy = [], [], cost(host)[2]
    for _ in range(arguments.faults):
        listeners.forget()
        begin = time.monotonic()
        ask(host, "simulator/pull-disk", {"disk": DISK})
        first, last = listeners.await_all(b'"operation":"DISK_REMOVED"')
        firsts.append(first - begin)
        lasts.append(last - begin)
        ask(host, "simulator/insert-disk", {"disk": DISK})
        ask(host, "mirn/rescan")
    print(told("from a fault to the first listener", firsts))
    print(told("from a fault to the last listener", lasts))
    print(f"{cost(host)[2] - busy:.1f} s of the processor for {arguments.faults} faults")
    host.process.send_signal(signal.SIGTERM)
    farewells = listeners.farewells()
    print(f"the stop said farewell to {farewells}")
    return after[0] == before[0] and farewells == arguments.listeners and host.process.wait(PATIENCE) == 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("host")
    parser.add_argument("module")
    parser.add_argument("--listeners", type=int, default=1000)
    parser.add_argument("--faults", type=int, default=100)
    arguments = parser.parse_args()
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(most, 2 * arguments.listeners + 100), most))
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        host = LocalHost(os.path.abspath(arguments.host), os.path.abspath(arguments.module), pathlib.Path(folder),
                         ["--simulator-controls", f"--max-listeners={arguments.listeners}", "--unix-socket=off"],
                         VEXL2_CLOCK_SPEED="0", VEXL2_EVENT_WAIT_CAP="1000")
        try:
            host.await_serving()
            return 0 if listen(host, arguments) else 1
        finally:
            host.kill()


if __name__ == "__main__":
    sys.exit(main())
