"""A host over the simulator, whose history stays when the host goes. Time stands still but for `let_pass`."""

import pathlib
import tempfile
import time
import unittest

from local_host import PATIENCE, LocalHost

SECOND_MIRROR, SPARE, FREE_DISK = "QV48021000A7", "QV48021001C3", "TB2T7790315"
REBUILD_SECONDS = 10000  # more than it takes


class HistoryFolder(unittest.TestCase):
    """Whoever runs the tests tells which `program` and `module`."""

    program = module = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def launch(self, *arguments, **options):
        self.host = LocalHost(self.program, self.module, self.folder, ["--simulator-controls", *arguments],
                              VEXL2_CLOCK_SPEED="0", **options)
        self.addCleanup(self.host.kill)
        self.host.await_serving()
        return self.host

    def ask(self, method, path, body=None, token=None):
        status, value = self.host.request(method, path, body, token)
        self.assertLess(status, 300, f"{method} {path}: {value}")
        return value

    def refused(self, path, status):
        found, value = self.host.request("GET", path)
        self.assertEqual(status, found, value)
        return value["detail"]

    def items(self, path):
        return self.ask("GET", path)["items"]

    def all_items(self, path):
        """Of all pages."""
        page = self.ask("GET", path)
        items = list(page["items"])
        while page["next"] is not None:
            page = self.ask("GET", f"{path}&cursor={page['next']}")
            items += page["items"]
        return items

    def jobs(self, state):
        return self.items("jobs?limit=1000&state=" + state)

    def causes(self):
        return [cause["id"] for cause in self.ask("GET", "health")["causes"]]

    def control(self, name, **arguments):
        self.ask("POST", "simulator/" + name, arguments)

    def let_pass(self, seconds):
        self.control("advance-clock", milliseconds=seconds * 1000)
        self.ask("POST", "mirn/rescan")

    def id_of(self, serial_number):
        return next(disk["id"] for disk in self.ask("GET", "mirn/enddevices") if disk["serialNumber"] == serial_number)

    def volume(self, name):
        return next(volume for volume in self.ask("GET", "mirn/volumes") if volume["name"] == name)

    def begin_rebuild(self):
        self.ask("PUT", f"mirn/volumes/{self.volume('System')['id']}/rebuild", {"diskId": self.id_of(FREE_DISK)})

    def degrade(self):
        self.ask("PUT", f"mirn/disks/{self.id_of(SPARE)}/spare", {"action": "UNMARK"})
        self.control("fail-disk", disk=SECOND_MIRROR)
        self.ask("POST", "mirn/rescan")

    def await_that(self, what, is_so):
        deadline = time.monotonic() + PATIENCE
        while not is_so():
            self.assertLess(time.monotonic(), deadline, "it never came that " + what)
            time.sleep(0.01)

    def await_job(self, state):
        self.await_that("a job is " + state, lambda: self.jobs(state))
        return self.jobs(state)[0]


def main(arguments, usage):
    """Runs the tests of the program: HOST MODULE [unittest arguments]."""
    if len(arguments) < 3:
        raise SystemExit(usage.strip())
    HistoryFolder.program, HistoryFolder.module = arguments[1], pathlib.Path(arguments[2])
    unittest.main(module="__main__", argv=[arguments[0], *arguments[3:]])
