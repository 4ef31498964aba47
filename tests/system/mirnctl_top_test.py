#!/usr/bin/env python3
"""The live screen of the command line, at a terminal of a test: what stands on it, and how it leaves.

usage: mirnctl_top_test.py HOST MODULE MIRNCTL [unittest arguments]
"""

import fcntl
import os
import pathlib
import pty
import re
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

from local_host import PATIENCE, LocalHost

OWN_SCREEN, FORMER_SCREEN = b"\x1b[?1049h\x1b[?25l", b"\x1b[?25h\x1b[?1049l"


class Terminal:
    """Of a size, and a program at it."""

    def __init__(self, command, environment, width, height):
        self.master, self.slave = pty.openpty()
        self.resize(width, height, None)
        self.modes = termios.tcgetattr(self.slave)
        self.process = subprocess.Popen(command, env=environment, stdin=self.slave, stdout=self.slave, stderr=self.slave,
                                        start_new_session=True, preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        self.written = b""

    def resize(self, width, height, process):
        fcntl.ioctl(self.slave, termios.TIOCSWINSZ, struct.pack("HHHH", height, width, 0, 0))
        if process:
            process.send_signal(signal.SIGWINCH)

    def read_until(self, holds):
        deadline = time.monotonic() + PATIENCE
        while not holds(self.written):
            if time.monotonic() > deadline:
                raise AssertionError(f"it shows {self.written[-3000:]!r}")
            if select.select([self.master], [], [], 0.1)[0]:
                self.written += os.read(self.master, 65536)

    def screen(self):
        """The lines of what was drawn last."""
        drawn = self.written.split(b"\x1b[H")[-1].partition(b"\x1b[J")[0].decode()
        return [re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", "", line) for line in drawn.split("\r\n")]

    def await_screen(self, holds):
        self.read_until(lambda written: written.rfind(b"\x1b[J") > written.rfind(b"\x1b[H") and holds(self.screen()))
        return self.screen()

    def end(self):
        status = self.process.wait(PATIENCE)
        while select.select([self.master], [], [], 0.1)[0]:
            self.written += os.read(self.master, 65536)
        return status

    def close(self):
        self.process.kill()
        self.process.wait()
        os.close(self.slave)
        os.close(self.master)


class TopTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.host = LocalHost(HOST, MODULE, self.home, ["--simulator-controls"], VEXL2_CLOCK_SPEED="0").await_serving()
        self.addCleanup(self.host.kill)
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], "MIRN_TOKEN_FILE": str(self.home / "token"),
                            "MIRN_HOST": f"http://127.0.0.1:{self.host.port}", "TERM": "xterm"}

    def at_a_terminal(self, width=100, height=30):
        terminal = Terminal([MIRNCTL, "top"], self.environment, width, height)
        self.addCleanup(terminal.close)
        return terminal

    def test_it_tells_what_is_wrong_and_what_comes(self):
        terminal = self.at_a_terminal()
        lines = terminal.await_screen(lambda lines: "Latest" in lines)
        self.assertRegex(lines[0], rf"^critical  http://127\.0\.0\.1:{self.host.port}  .*Z  \(q ends\)$")
        self.assertEqual(["", "What is wrong", "  critical  Volume Archive lacks redundancy until it has been rebuilt."], lines[1:4])
        self.assertLessEqual(len(lines), 30)
        self.host.request("POST", "simulator/fail-disk", {"disk": "QV48021000A7"})
        self.host.request("POST", "mirn/rescan")
        lines = terminal.await_screen(lambda lines: "  rebuild of System [....................] 0 %" in lines)
        self.assertIn("  critical  Volume System lacks redundancy until it has been rebuilt.", lines)
        self.host.request("POST", "simulator/advance-clock", {"milliseconds": 1_000_000})
        self.host.request("POST", "mirn/rescan")
        terminal.await_screen(lambda lines: any(line.startswith("  rebuild of System [#########...........] 43 %") for line in lines))

    def test_it_leaves_the_terminal_as_it_was(self):
        endings = {"q": lambda terminal: os.write(terminal.master, b"q"), "Ctrl-C": lambda terminal: os.write(terminal.master, b"\x03"),
                   "SIGTERM": lambda terminal: terminal.process.send_signal(signal.SIGTERM)}
        for name, end in endings.items():
            with self.subTest(name):
                terminal = self.at_a_terminal()
                terminal.await_screen(lambda lines: "What is wrong" in lines)
                self.assertTrue(terminal.written.startswith(OWN_SCREEN), terminal.written[:50])
                self.assertNotEqual(terminal.modes, termios.tcgetattr(terminal.slave))
                end(terminal)
                self.assertEqual(0, terminal.end())
                self.assertTrue(terminal.written.endswith(FORMER_SCREEN), terminal.written[-50:])
                self.assertEqual(terminal.modes, termios.tcgetattr(terminal.slave))

    def test_it_has_no_more_than_the_screen_holds_whatever_its_size_becomes(self):
        terminal = self.at_a_terminal(100, 30)
        terminal.await_screen(lambda lines: "Latest" in lines)
        for width, height in ((40, 10), (20, 4), (8, 1), (200, 60)):
            begin = len(terminal.written)
            terminal.resize(width, height, terminal.process)
            terminal.read_until(lambda written: b"\x1b[J" in written[begin:])
            terminal.written = terminal.written[begin:]
            lines = terminal.await_screen(lambda lines: max(map(len, lines)) <= width)
            self.assertLessEqual(len(lines), height)
            self.assertLessEqual(max(map(len, lines)), width)
            self.assertTrue(lines[0].startswith("critical"[:width]), lines)

    def test_it_tells_that_the_service_has_gone(self):
        terminal = self.at_a_terminal()
        terminal.await_screen(lambda lines: "What is wrong" in lines)
        self.host.stop()
        lines = terminal.await_screen(lambda lines: lines[0].startswith("unknown"))
        self.assertIn("127.0.0.1", lines[1])
        self.assertIn("What is wrong", lines)

    def test_without_a_terminal_it_is_refused(self):
        done = subprocess.run([MIRNCTL, "top"], env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=PATIENCE, check=False)
        self.assertEqual((2, "", "mirnctl: top needs a terminal\n  mirnctl status tells the same once\n"),
                         (done.returncode, done.stdout, done.stderr))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, MIRNCTL = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
