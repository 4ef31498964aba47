#!/usr/bin/env python3
"""Has Prometheus scrape many hosts by the rules that are shipped. A disk of one host warns: the alert of this host and disk,
and of no other host, must fire, and clear when the warning is put away. Tells what scraping costs.

usage: scraped_fleet.py HOST MODULE RULES [--hosts N]

RULES is the folder of the rules, beside which the one of the dashboard is; prometheus is looked for as the shell does.
"""

import argparse
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.parse
import urllib.request

from local_host import PATIENCE, LocalHost, end_with_parent

DISK = "TB2T7790315"  # which does not warn by itself
ALERT = "MirnDiskWarns"
LONGEST = 240  # seconds for an alert to come and to go: a minute by its rule, and what a busy machine takes
SECONDS = 2  # between scrapes
MEBIBYTE = 1 << 20
# Panels that have nothing to show of machines at rest.
WELL = {"Progress of work", "Work that ended", "What verifications found", "Reads answered from what is kept"}

CONFIGURATION = """
global: {{scrape_interval: {seconds}s, scrape_timeout: {seconds}s, evaluation_interval: {seconds}s}}
rule_files: [{rules}/mirn.rules.yml]
scrape_configs:
  - job_name: mirn
    authorization: {{type: Bearer, credentials_file: {token}}}
    static_configs: [{{targets: {targets}}}]
"""


def free_port():
    with socket.socket() as claimed:
        claimed.bind(("127.0.0.1", 0))
        return claimed.getsockname()[1]


class Fleet:
    """Hosts that know one token, each with a machine of its own whose time stands still."""

    def __init__(self, program, module, folder, count):
        self.hosts, self.folder = [], folder
        for number in range(count):
            own = folder / str(number)
            own.mkdir()
            if self.hosts:
                for name in ("token", "tokens"):
                    shutil.copy2(self.hosts[0].folder / name, own / name)
            host = LocalHost(program, module, own, ["--simulator-controls", "--unix-socket=off", "--history=off"],
                             VEXL2_CLOCK_SPEED="0", VEXL2_EVENT_WAIT_CAP="1000")
            self.hosts.append(host)
            if number == 0:
                host.await_serving()
        for host in self.hosts:
            host.await_serving()

    def targets(self):
        return [f"127.0.0.1:{host.port}" for host in self.hosts]

    def end(self):
        for host in self.hosts:
            host.kill()


class Prometheus:
    def __init__(self, fleet, rules):
        self.port = free_port()
        configuration = fleet.folder / "prometheus.yml"
        configuration.write_text(CONFIGURATION.format(seconds=SECONDS, rules=rules, targets=json.dumps(fleet.targets()),
                                                      token=fleet.hosts[0].folder / "token"))
        self.process = subprocess.Popen(
            ["prometheus", "--config.file", configuration, "--storage.tsdb.path", fleet.folder / "data", "--log.level=error",
             f"--web.listen-address=127.0.0.1:{self.port}"], preexec_fn=end_with_parent)
        self.await_true(lambda: self.query('count(up{job="mirn"} == 1)') == [len(fleet.hosts)], "not all hosts are scraped")

    def get(self, path):
        with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/api/v1/{path}", timeout=PATIENCE) as answer:
            return json.load(answer)["data"]

    def query(self, expression):
        """The values of an expression; none while nobody answers."""
        try:
            found = self.get("query?" + urllib.parse.urlencode({"query": expression}))
        except OSError:
            return []
        return [float(sample["value"][1]) for sample in found["result"]]

    def firing(self, disk):
        """The instances for which the alert of such a disk fires."""
        return {alert["labels"]["instance"] for alert in self.get("alerts")["alerts"]
                if alert["state"] == "firing" and alert["labels"]["alertname"] == ALERT
                and alert["labels"]["serial_number"] == disk}

    def await_true(self, condition, complaint):
        """How long it took."""
        begin = time.monotonic()
        while not condition():
            assert self.process.poll() is None, "prometheus has ended"
            assert time.monotonic() - begin < LONGEST, complaint
            time.sleep(0.5)
        return time.monotonic() - begin


def ask(host, method, path, body):
    status, answer = host.request(method, path, body)
    assert status < 300, answer


def watch(prometheus, fleet):
    victim = fleet.hosts[len(fleet.hosts) // 3]
    instance = f"127.0.0.1:{victim.port}"
    assert prometheus.firing(DISK) == set(), "the alert fires with nothing wrong"
    ask(victim, "POST", "simulator/raise-smart-event", {"disk": DISK})
    ask(victim, "POST", "mirn/rescan", None)
    seconds = prometheus.await_true(lambda: prometheus.firing(DISK) == {instance}, f"{ALERT} does not fire")
    print(f"{ALERT} of {instance} fires {seconds:.0f} s after the fault, a minute of them by its rule")
    disk = next(each for each in victim.request("GET", "mirn/enddevices")[1] if each.get("serialNumber") == DISK)
    ask(victim, "PUT", f"mirn/disks/{disk['id']}/resetsmart", {})
    seconds = prometheus.await_true(lambda: prometheus.firing(DISK) == set(), f"{ALERT} does not clear")
    print(f"it clears {seconds:.0f} s after the repair")


def put_questions(prometheus, dashboard):
    """Of every panel; which have no answer where all is well is told."""
    empty, asked = set(), 0
    for panel in json.loads(dashboard.read_text())["panels"]:
        for target in panel.get("targets", ()):
            asked += 1
            expression = target["expr"].replace("$instance", ".+").replace("$__rate_interval", "1m")
            if not prometheus.get("query?" + urllib.parse.urlencode({"query": expression}))["result"]:
                empty.add(panel["title"])
    print(f"{asked} questions of the dashboard; without an answer: {', '.join(sorted(empty))}")
    assert empty <= WELL, empty - WELL


def tell_cost(prometheus, count):
    def value(expression):
        found = prometheus.query(expression)
        assert found, f"nothing is told of {expression}"
        return found[0]
    print(f"{count} hosts, scraped every {SECONDS} s; {value('avg(scrape_samples_scraped)'):.0f} samples of each")
    print(f"a scrape takes {1000 * value('avg(avg_over_time(scrape_duration_seconds[1m]))'):.1f} ms on average, "
          f"{1000 * value('max(max_over_time(scrape_duration_seconds[1m]))'):.1f} ms at most")
    print(f"failed scrapes in two minutes: {value('sum(count_over_time(up[2m])) - sum(sum_over_time(up[2m]))'):.0f}")
    handling = 'sum(rate({0}_sum{{operation="getMetrics"}}[1m])) / sum(rate({0}_count{{operation="getMetrics"}}[1m]))'
    print(f"of which the host takes {1000 * value(handling.format('mirn_http_request_duration_seconds')):.1f} ms")
    print(f"a host has {value('avg(process_resident_memory_bytes)') / MEBIBYTE:.1f} MiB of memory on average, "
          f"{value('max(process_resident_memory_bytes)') / MEBIBYTE:.1f} MiB at most, and takes "
          f"{100 * value('avg(rate(process_cpu_seconds_total[1m]))'):.1f} % of a processor")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("host")
    parser.add_argument("module")
    parser.add_argument("rules")
    parser.add_argument("--hosts", type=int, default=50)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        fleet = prometheus = None
        try:
            fleet = Fleet(os.path.abspath(arguments.host), os.path.abspath(arguments.module), pathlib.Path(folder),
                          arguments.hosts)
            prometheus = Prometheus(fleet, os.path.abspath(arguments.rules))
            watch(prometheus, fleet)
            put_questions(prometheus, pathlib.Path(arguments.rules).parent / "grafana" / "mirn.json")
            tell_cost(prometheus, arguments.hosts)
        finally:
            if prometheus:
                prometheus.process.send_signal(signal.SIGTERM)
                prometheus.process.wait(PATIENCE)
            if fleet:
                fleet.end()


if __name__ == "__main__":
    sys.exit(main())
