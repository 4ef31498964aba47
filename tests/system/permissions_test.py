#!/usr/bin/env python3
"""Asks the running host for every operation as every client that there may be, and compares who is let in with
docs/permissions.txt.

usage: permissions_test.py HOST MODULE DESCRIBE_PLUGIN DOCUMENT [--rewrite]

DESCRIBE_PLUGIN prints what the plug-in tells of itself; DOCUMENT is written anew with --rewrite. Every request is one
that the operation takes, so that who asks is all that decides. Ids are of objects that are not there: what is let in
changes nothing for the next one. What the operation answers then is looked at for 400, which would be a wrong request.
"""

import concurrent.futures
import difflib
import http.client
import itertools
import json
import os
import pathlib
import re
import signal
import socket
import ssl
import subprocess
import sys
import tempfile
import time

from local_host import PATIENCE, LocalHost, record_exchange

ROLES = ("observe", "operate", "administer")
AT_ONCE = 200  # of wrong tokens over the Unix socket, which has one address, the answers wait for 5 s
UNKNOWN = ("none", "stranger", "wrong", "revoked", "signed out")
ABSENT = "1"  # an id of nothing
NO_DISK = {"disk": "none"}
NO_CALLS = {"operation": "VexRescan", "count": 0}
SCENARIO = pathlib.Path(__file__).resolve().parents[2] / "simulator" / "scenarios" / "default.json"

# What each operation with a body is asked with.
BODIES = {
    "whatIf": {"events": [{"fail": ABSENT}]},
    "setConfig": {"locate_timeout": 12},
    "createVolume": {"source": "DISK", "name": "Mirror", "raidLevel": "RAID_1", "size": "100000", "disks": ["1", "2"]},
    "addArrayDisks": {"disks": [ABSENT]},
    "setArrayWriteCache": {"state": "DISABLED"},
    "setControllerReadPatrol": {"state": "DISABLED"},
    "setControllerRohi": {"state": "DISABLED"},
    "locatePort": {"state": "ENABLED"},
    "verifyVolume": {"action": "START", "repair": True},
    "resizeVolume": {"size": "200000"},
    "setVolumeCachePolicy": {"cachePolicy": "WRITE_BACK"},
    "renameVolume": {"name": "Pair"},
    "changeVolumeLevel": {"raidLevel": "RAID_0"},
    "setVolumeWriteHolePolicy": {"rwhPolicy": "RWH_DISTRIBUTED"},
    "rebuildVolume": {"diskId": ABSENT},
    "setDiskSpare": {"action": "MARK"},
    "makeSignInCode": {"role": "observe"},
    "simulatorAdvanceClock": {"milliseconds": 0},
    "simulatorCapEventWait": {"milliseconds": 50},
    "simulatorCountCalls": {"operation": "VexRescan"},
    "simulatorDelayCalls": {**NO_CALLS, "milliseconds": 1},
    "simulatorFailCalls": {**NO_CALLS, "status": 15},
    "simulatorFailDisk": NO_DISK,
    "simulatorInsertBlankDisk": NO_DISK,
    "simulatorInsertDisk": NO_DISK,
    "simulatorLoadScenario": {"scenario": json.loads(SCENARIO.read_text())},
    "simulatorLockDisk": NO_DISK,
    "simulatorPullDisk": NO_DISK,
    "simulatorRaiseSmartEvent": NO_DISK,
    "simulatorSetClockSpeed": {"speed": 1},
}
QUERIES = {"listEvents": "?time=3600", "getRaid": "?range=level&type=RAID_5"}

# Whom a host that has just started knows; beside the plug-in's routes and the controls that the host itself lists.
OWN = [
    ("getProcessHealth", "GET", "/healthz"),
    ("getReadiness", "GET", "/readyz"),
    ("getMetrics", "GET", "/metrics"),
    ("getOpenApi", "GET", "/openapi.json"),
    ("getDocumentation", "GET", "/docs"),
    ("getConsole", "GET", "/"),
    ("getConsoleScript", "GET", "/console/app.js"),
    ("getConsoleStyle", "GET", "/console/app.css"),
    ("getConsoleIcon", "GET", "/console/icon.svg"),
    ("getService", "GET", "/api/v1"),
    ("getHealth", "GET", "/api/v1/health"),
    ("listActions", "GET", "/api/v1/actions/disk/1"),
    ("listCandidates", "GET", "/api/v1/actions/volume/1/rebuildVolume/diskId"),
    ("listJobs", "GET", "/api/v1/jobs"),
    ("getJobStatistics", "GET", "/api/v1/jobs/statistics"),
    ("getJob", "GET", "/api/v1/jobs/1"),
    ("listAlarms", "GET", "/api/v1/alarms"),
    ("getAlarm", "GET", "/api/v1/alarms/1"),
    ("acknowledgeAlarm", "POST", "/api/v1/alarms/1/acknowledge"),
    ("getMachineReadiness", "GET", "/api/v1/readiness"),
    ("whatIf", "POST", "/api/v1/whatif"),
    ("listHistory", "GET", "/api/v1/history"),
    ("streamEvents", "GET", "/api/v1/events/stream"),
    ("exportHistory", "GET", "/api/v1/history/export"),
    ("getBundle", "GET", "/api/v1/bundle"),
    ("beginSession", "POST", "/api/v1/session"),
    ("getSession", "GET", "/api/v1/session"),
    ("endSession", "DELETE", "/api/v1/session"),
    ("makeSignInCode", "POST", "/api/v1/session/codes"),
    ("listSimulatorControls", "GET", "/api/v1/simulator"),
]

INTRODUCTION = """Who is let in where: each operation, asked for by each client that there may be, over each way that a client may come.
Made by tests/system/permissions_test.py, which tries them all on the running host with the plug-in on the simulated
machine, and holds this text to what it sees. "yes": the operation was reached. 401: the client is not known. 403: it is
known and may not. 400: the credential may not come this way.

Not in the tables, since it is the same everywhere, and tried by the same test:
  HEAD           as GET of the same path
  OPTIONS        of a path that is there, and of *: anybody, without a token
  another method of a path that is there: 401 for who is not known, otherwise 405
  no such path   under /api: 401 for who is not known, otherwise 404; elsewhere 404
"""


class LocalSocketConnection(http.client.HTTPConnection):
    def __init__(self, path):
        super().__init__("localhost", timeout=PATIENCE)
        self.path = str(path)

    def connect(self):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(PATIENCE)
        self.sock.connect(self.path)


class Addresses:
    """Addresses of this machine, a new one each: so no wrong token waits for another one."""

    def __init__(self):
        self.numbers = itertools.count(256)

    def next(self):
        number = next(self.numbers)
        return f"127.1.{number // 250}.{1 + number % 250}"


class Way:
    """How a client comes, and what it shows for itself; each has a column."""

    def __init__(self, client, connect, token=None, in_parameter=False):
        self.client, self.connect, self.token, self.in_parameter = client, connect, token, in_parameter

    def ask(self, method, target, body=None):
        """Status, fields and text of the answer. Of bundles there are only so many at once."""
        answer = self.ask_once(method, target, body)
        while answer[0] == 503 and target.startswith("/api/v1/bundle"):
            time.sleep(0.1)
            answer = self.ask_once(method, target, body)
        return answer

    def ask_once(self, method, target, body):
        token = self.token() if callable(self.token) else self.token
        headers = {} if body is None else {"Content-Type": "application/json"}
        if token and self.in_parameter:
            target += ("&" if "?" in target else "?") + "access_token=" + token
        elif token:
            headers["Authorization"] = "Bearer " + token
        connection = self.connect()
        try:
            connection.request(method, target, None if body is None else json.dumps(body), headers)
            answer = connection.getresponse()
            # A stream of events has no end: that it begins is all there is to see.
            text = "" if answer.headers.get_content_type() == "text/event-stream" else answer.read().decode(errors="replace")
            record_exchange(0, "mirn_plugin.so", method, target, body, answer, text)
            return answer.status, answer.headers, text
        finally:
            connection.close()


def certificates_in(folder):
    """An authority, the host's certificate, and one for each client, by the client's name."""
    def make(name, *more):
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                        "-days", "1", "-subj", f"/CN={name}", "-keyout", folder / f"{name}.key",
                        "-out", folder / f"{name}.pem", *more], check=True, capture_output=True)
    make("authority")
    for name in ("host", "stranger", *ROLES):
        make(name, "-CA", folder / "authority.pem", "-CAkey", folder / "authority.key",
             "-addext", "basicConstraints=CA:FALSE")


class Machine:
    """A host in clear and one with TLS, and everybody who may ask them."""

    def __init__(self, program, module, folder):
        self.program, self.module, self.folder, self.addresses = program, module, folder, Addresses()
        certificates_in(folder)
        self.clear = self.launch("clear")
        self.tls = self.launch("tls", "--tls-certificate", folder / "host.pem", "--tls-key", folder / "host.key",
                               "--tls-client-ca", folder / "authority.pem",
                               *[f"--tls-client={role}:CN={role}" for role in ROLES])
        for host in self.hosts():
            host.await_serving()
        self.tokens = {role: self.add_token(role, role) for role in ROLES}
        self.tokens["revoked"] = self.add_token("leaver", "administer")
        self.tokens["wrong"] = "mirn_" + "x" * 43
        self.read_tokens()
        assert Way("", self.tcp, self.tokens["revoked"]).ask("GET", "/api/v1")[0] == 200
        self.token_command("revoke", "leaver")
        self.read_tokens()
        self.sessions = {role: self.new_session(role) for role in ROLES}
        self.sessions["signed out"] = self.new_session("administer")
        assert Way("", self.tcp, self.sessions["signed out"]).ask("DELETE", "/api/v1/session")[0] == 204

    def launch(self, name, *options):
        """Its Unix socket is in its folder. All may ask at once."""
        (self.folder / name).mkdir()
        return LocalHost(self.program, self.module, self.folder / name,
                         ["--simulator-controls", "--unix-socket", self.folder / name / "host.sock",
                          f"--max-waiting={AT_ONCE}", f"--max-waiting-of-one={AT_ONCE}", *options])

    def hosts(self):
        return self.clear, self.tls

    # Who is known.

    def token_command(self, *words):
        return subprocess.run([self.program, "token", *words, "--token-file", self.clear.folder / "token"], check=True,
                              capture_output=True, text=True, timeout=PATIENCE).stdout

    def add_token(self, name, role):
        return re.search(r"mirn_\S+", self.token_command("add", name, role)).group()

    def read_tokens(self):
        errors = self.clear.folder / "errors"
        known = errors.read_bytes().count(b"the tokens were read again")
        self.clear.process.send_signal(signal.SIGHUP)
        deadline = time.monotonic() + PATIENCE
        while errors.read_bytes().count(b"the tokens were read again") == known:
            assert time.monotonic() < deadline, "the host reads no tokens"
            time.sleep(0.01)

    def new_code(self, connect, role="administer"):
        status, _, text = Way("", connect).ask("POST", "/api/v1/session/codes", {"role": role})
        assert status == 201, text
        return json.loads(text)["code"]

    def new_session(self, role):
        code = self.new_code(self.local, role)
        status, _, text = Way("", self.tcp).ask("POST", "/api/v1/session", {"code": code})
        assert status == 201, text
        return json.loads(text)["token"]

    # How they come.

    def tcp(self):
        return http.client.HTTPConnection("127.0.0.1", self.clear.port, timeout=PATIENCE,
                                          source_address=(self.addresses.next(), 0))

    def local(self):
        return LocalSocketConnection(self.clear.folder / "host.sock")

    def local_of_tls(self):
        return LocalSocketConnection(self.tls.folder / "host.sock")

    def by_tls(self, client):
        context = ssl.create_default_context(cafile=self.folder / "authority.pem")
        context.check_hostname = False
        if client:
            context.load_cert_chain(self.folder / f"{client}.pem", self.folder / f"{client}.key")
        return lambda: http.client.HTTPSConnection("127.0.0.1", self.tls.port, timeout=PATIENCE, context=context,
                                                   source_address=(self.addresses.next(), 0))

    def transports(self):
        """(what is told of it, the ways of its columns, how its host makes codes)."""
        shown = ("wrong", "revoked", *ROLES)
        tokens = [(name, self.tokens[name]) for name in shown]
        return [
            ("TCP, the token in the Authorization field",
             [Way("none", self.tcp), *[Way(name, self.tcp, token) for name, token in tokens]], self.local),
            ("TCP, the token as access_token in the URL",
             [Way(name, self.tcp, token, True) for name, token in tokens], self.local),
            ("TCP, a session in the Authorization field",
             [Way(name, self.tcp, session) for name, session in self.sessions.items()], self.local),
            ("Unix socket: \"user\" is the host's own and shows nothing, others show a token",
             [Way("user", self.local), *[Way(name, self.local, token) for name, token in tokens]], self.local),
            ("TLS, the client's certificate: \"none\" has none, \"stranger\" a trusted one without a role",
             [Way("none", self.by_tls(None)), *[Way(name, self.by_tls(name)) for name in ("stranger", *ROLES)]],
             self.local_of_tls),
        ]


def control_id(name):
    """simulatorFailDisk of fail-disk."""
    return "simulator" + "".join(word.capitalize() for word in name.split("-"))


def operations_of(description, controls):
    """(id, method, path) of everything that the host can be asked."""
    routes = [(route["id"], route["method"], "/api/v1/" + route["path"]) for route in description["routes"]]
    wanted = {route["id"] for route in description["routes"] if any(field["required"] for field in route["body"])}
    assert not wanted - set(BODIES), f"no body is known for {wanted - set(BODIES)}"
    return [*OWN, *[(control_id(name), "POST", "/api/v1/simulator/" + name) for name in controls], *sorted(routes)]


def target_of(operation, path):
    return re.sub(r"\{\w+\}", ABSENT, path) + QUERIES.get(operation, "")


class Trial:
    """Asks, and remembers what nobody should see."""

    def __init__(self, machine):
        self.machine, self.faults = machine, []

    def body_for(self, operation, connect_for_code):
        if operation == "beginSession":
            return {"code": self.machine.new_code(connect_for_code)}
        return BODIES.get(operation)

    def cell(self, way, operation, method, path, connect_for_code):
        if operation == "endSession" and way.token in self.machine.sessions.values() and way.client in ROLES:
            way = Way(way.client, way.connect, self.machine.new_session(way.client))  # the others still need theirs
        target = target_of(operation, path)
        status, _, text = way.ask(method, target, self.body_for(operation, connect_for_code))
        if status in (401, 403):
            return str(status)
        if status == 400 and "The token belongs" in text:
            return "400"
        if status not in (200, 201, 204, 404, 409):
            self.faults.append(f"{operation} as {way.client} answers {status} {text}, which tells nothing of who is let in")
        return "yes"

    def expect(self, way, method, target, expected):
        status = way.ask(method, target)[0]
        if status != expected:
            self.faults.append(f"{method} {target} as {way.client} is a {status}, not a {expected}")

    def hold_paths(self, way, known):
        """What holds for who asks for none of the operations."""
        self.expect(way, "GET", "/nothing", 404)
        self.expect(way, "GET", "/api/v1/nothing", 404 if known else 401)
        self.expect(way, "DELETE", "/api/v1", 405 if known else 401)

    def hold_head(self, way, operations):
        for operation, method, path in operations:
            if method == "GET":
                target = target_of(operation, path)
                self.expect(way, "HEAD", target, way.ask("GET", target)[0])

    def hold_options(self, operations):
        """Without a token."""
        way = Way("none", self.machine.tcp)
        methods = {}
        for _, method, path in operations:
            methods.setdefault(path, set()).update({method, "OPTIONS"} | ({"HEAD"} if method == "GET" else set()))
        for path, expected in methods.items():
            status, fields, _ = way.ask("OPTIONS", target_of("", path))
            allowed = set(fields.get("Allow", "").split(", "))
            if (status, allowed) != (204, expected):
                self.faults.append(f"OPTIONS {path} is a {status} that allows {allowed}, not {expected}")
        if way.ask("OPTIONS", "*")[0] != 204:
            self.faults.append("OPTIONS * is not answered")


def row(name, cells, widths):
    return (f"{name:<30}" + "".join(f"{cell:<{width}}" for cell, width in zip(cells, widths))).rstrip()


def document_of(machine, operations, trial, pool):
    """The tables. Whatever waits for its refusal waits while others are asked, so it is asked first."""
    def submit(deed, *arguments):
        rest.append(pool.submit(deed, *arguments))
        return rest[-1]

    rest, cells = [], {}
    transports = machine.transports()
    everybody = [(title, way, connect) for title, ways, connect in transports for way in ways]
    for title, way, connect in sorted(everybody, key=lambda entry: entry[1].client not in UNKNOWN):
        for operation in operations:
            cells[title, operation[0], way.client] = submit(trial.cell, way, *operation, connect)
        submit(trial.hold_paths, way, way.client not in UNKNOWN)
    for way in transports[0][1]:
        if way.client == "none" or way.client in ROLES:
            submit(trial.hold_head, way, operations)
    submit(trial.hold_options, operations)
    for deed in rest:
        deed.result()
    lines = [INTRODUCTION, "The operations", "", *[f"{name:<30}{method:<8}{path}" for name, method, path in operations]]
    for title, ways, _ in transports:
        clients = [way.client for way in ways]
        widths = [max(6, len(client) + 2) for client in clients]
        lines += ["", title, "", row("", clients, widths)]
        lines += [row(name, [cells[title, name, client].result() for client in clients], widths)
                  for name, _, _ in operations]
    return "\n".join(lines) + "\n"


def try_all(program, module, description, folder):
    """The document, and what was wrong."""
    machine = None
    try:
        machine = Machine(program, module, folder)
        trial = Trial(machine)
        controls = json.loads(Way("", machine.local).ask("GET", "/api/v1/simulator")[2])
        operations = operations_of(description, [control["name"] for control in controls])
        with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as pool:
            document = document_of(machine, operations, trial, pool)
        return document, trial.faults + [host.errors() for host in machine.hosts() if host.stop() != 0]
    finally:
        for host in machine.hosts() if machine else ():
            host.kill()


def main(arguments):
    program, module, describe, document = arguments[:4]
    description = json.loads(subprocess.run([describe, module], check=True, capture_output=True, text=True).stdout)
    with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
        text, faults = try_all(os.path.abspath(program), os.path.abspath(module), description, pathlib.Path(folder))
    for fault in faults:
        print(fault)
    if arguments[4:] == ["--rewrite"]:
        pathlib.Path(document).write_text(text)
        return 1 if faults else 0
    known = pathlib.Path(document).read_text()
    sys.stdout.writelines(difflib.unified_diff(known.splitlines(True), text.splitlines(True), "docs/permissions.txt",
                                               "the running host", n=0))
    return 1 if faults or known != text else 0


if __name__ == "__main__":
    if len(sys.argv) not in (5, 6) or sys.argv[5:] not in ([], ["--rewrite"]):
        sys.exit(__doc__.strip())
    sys.exit(main(sys.argv[1:]))
