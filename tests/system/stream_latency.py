#!/usr/bin/env python3
"""Measures how long it takes from something that befalls the machine to the first byte of it in the event stream.

usage: stream_latency.py HOST MODULE [FAULTS]

1,000 faults unless told otherwise, one after the other, each behind a short rest. Prints the median and the 99th percentile,
of which beyond 100 ms is a failure, and what the control itself took.
"""

import http.client
import pathlib
import statistics
import sys
import tempfile
import threading
import time

from local_host import PATIENCE, LocalHost

BOUND = 100  # ms, at the 99th percentile
REST = 0.02  # seconds; a picture that is just being taken shows some faults and not others
DISK = "OD1T9930B1F0"  # one that nothing stands on


class Listener:
    """Notes when the first byte of an entry comes."""

    def __init__(self, host):
        connection = http.client.HTTPConnection("127.0.0.1", host.port, timeout=PATIENCE)
        connection.request("GET", "/api/v1/events/stream", headers={"Authorization": "Bearer " + host.token()})
        self.answer = connection.getresponse()
        self.connection = connection
        self.heard = threading.Event()
        self.moment = 0.0
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.answer:
            if line.startswith(b"event: event"):
                self.moment = time.monotonic()
                self.heard.set()


def control(host, listener, name):
    """Has it befall the disk, and tells when that began."""
    time.sleep(REST)
    listener.heard.clear()
    begun = time.monotonic()
    status, answer = host.request("POST", "simulator/" + name, {"disk": DISK})
    assert status == 204, answer
    return begun


def main(program, module, faults=1000):
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        host = LocalHost(program, module, pathlib.Path(folder), ("--simulator-controls",),
                         VEXL2_EVENT_WAIT_CAP="999999").await_serving()
        listener = Listener(host)
        taken, controls = [], []
        for _ in range(int(faults)):
            begun = control(host, listener, "pull-disk")
            controls.append(1000 * (time.monotonic() - begun))
            assert listener.heard.wait(PATIENCE), "nothing was heard"
            taken.append(1000 * (listener.moment - begun))
            control(host, listener, "insert-disk")
            host.request("POST", "mirn/rescan")
            assert listener.heard.wait(PATIENCE), "the disk is not back"
        assert host.stop() == 0, host.errors()
    percentile = statistics.quantiles(taken, n=100)[98]
    print(f"{len(taken)} faults: median {statistics.median(taken):.1f} ms, 99 % within {percentile:.1f} ms, worst "
          f"{max(taken):.1f} ms; the control itself: median {statistics.median(controls):.1f} ms")
    return 0 if percentile <= BOUND else 1


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    sys.exit(main(*sys.argv[1:]))
