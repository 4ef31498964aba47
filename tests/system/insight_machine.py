"""A simulated machine behind a host, and a checker of what insight tells of it: health, alarms, jobs, history, stream and the
machine itself must tell the same at one position."""

import http.client
import json
import threading
import time

from local_host import PATIENCE, LocalHost

STILL = {"VEXL2_CLOCK_SPEED": "0", "VEXL2_EVENT_WAIT_CAP": "20"}
WORKS = {"REBUILDING": "rebuild", "INITIALIZING": "initialize", "VERIFYING": "verify", "VERIFYING_AND_FIXING": "verify",
         "GENERAL_MIGRATION": "migrate"}


class Disagreement(AssertionError):
    """Two who should tell the same do not."""


class NotYet(Disagreement):
    """What is found is written a moment later: until then the history is behind."""


class Stream:
    """What a client of the event stream hears, over as many connections as it takes."""

    def __init__(self, host):
        self.host = host
        self.entries, self.problems = [], []
        self.last_id = None
        self.lock = threading.Condition()
        self.connect()

    def connect(self):
        """Goes on where the connection before ended."""
        connection = http.client.HTTPConnection("127.0.0.1", self.host.port, timeout=PATIENCE)
        headers = {"Authorization": "Bearer " + self.host.token()}
        if self.last_id:
            headers["Last-Event-ID"] = self.last_id
        connection.request("GET", "/api/v1/events/stream", headers=headers)
        answer = connection.getresponse()
        if answer.status != 200:
            raise AssertionError(f"the stream: {answer.status} {answer.read()}")
        self.reader = threading.Thread(target=self.read, args=(connection, answer), daemon=True)
        self.reader.start()

    def read(self, connection, answer):
        frame = {}
        try:
            for line in answer:
                text = line.decode().rstrip("\n")
                if text:
                    name, _, value = text.partition(": ")
                    frame[name] = value
                elif frame:
                    self.hear(frame)
                    frame = {}
        except (OSError, http.client.HTTPException):
            pass  # the host went
        finally:
            connection.close()

    def hear(self, frame):
        with self.lock:
            if "id" in frame:
                self.take(frame["event"], frame["id"], json.loads(frame["data"]))
            self.lock.notify_all()

    def take(self, event, name, data):
        """Each entry once, in order, and none left out."""
        epoch, _, row = name.partition(".")
        before = self.last_id.partition(".") if self.last_id else None
        if before and before[0] == epoch and event != "gap" and int(row) != int(before[2]) + 1:
            self.problems.append(f"{name} behind {self.last_id}")
        self.last_id = name
        if event == "gap":
            self.problems.append(f"a gap: {data}")
        else:
            self.entries.append(data)

    def await_row(self, row):
        """The entries up to there."""
        with self.lock:
            if not self.lock.wait_for(lambda: self.last_id and int(self.last_id.partition(".")[2]) >= row, PATIENCE):
                raise Disagreement(f"the stream is at {self.last_id}, the history at {row}")
            if self.problems:
                raise Disagreement(f"the stream: {self.problems}")
            return list(self.entries)


class Machine:
    """A host over the simulator, whose time stands still but for `pass_time`."""

    def __init__(self, program, module, folder, *arguments, **environment):
        self.start = lambda: LocalHost(program, module, folder, ("--simulator-controls", *arguments),
                                       **{**STILL, **environment}).await_serving()
        self.host = self.start()
        self.earlier_events = 0  # of the hosts before this one
        self.looks = {}
        self.stream = Stream(self.host)
        self.replayed = Replay(self.all_history())

    def restart(self, kill=False):
        """By an orderly stop, or without."""
        self.check()
        self.earlier_events = self.replayed.events
        if kill:
            self.host.kill()
        else:
            assert self.host.stop() == 0, self.host.errors()
        self.stream.reader.join()
        self.host = self.stream.host = self.start()
        self.stream.connect()

    def ask(self, method, path, body=None):
        return self.host.request(method, path, body)

    def get(self, path):
        status, value = self.ask("GET", path)
        if status != 200:
            raise AssertionError(f"GET {path}: {status} {value}")
        return value

    def do(self, method, path, body=None):
        status, value = self.ask(method, path, body)
        if status >= 300:
            raise AssertionError(f"{method} {path} {body}: {status} {value}")
        return value

    def control(self, name, **arguments):
        return self.do("POST", "simulator/" + name, arguments)

    def rescan(self):
        self.do("POST", "mirn/rescan")

    def befall(self, incident, disk):
        """Something befalls the disk, and a rescan shows it."""
        self.control(incident, disk=disk)
        self.rescan()

    def pass_time(self, seconds):
        self.control("advance-clock", milliseconds=int(seconds * 1000))
        self.rescan()

    def found(self, path, key, value):
        return next(each for each in self.get(path) if each.get(key) == value)

    def volume(self, name):
        return self.found("mirn/volumes", "name", name)

    def disk(self, serial):
        return self.found("mirn/enddevices", "serialNumber", serial)

    def health(self):
        return self.get("health")

    def causes(self):
        """"KIND of NAME" of each."""
        return [f"{cause['kind']} of {cause['object']['name']}" for cause in self.health()["causes"]]

    def all_of(self, path):
        """All pages of a list, and what the first tells beside."""
        joint = "&" if "?" in path else "?"
        first = page = self.get(f"{path}{joint}limit=1000")
        items = list(page["items"])
        while page["next"] is not None:
            page = self.get(f"{path}{joint}limit=1000&cursor={page['next']}")
            items += page["items"]
        return items, first

    def all_history(self):
        """Oldest first."""
        return list(reversed(self.all_of("history")[0]))

    def check(self):
        """Raises a `Disagreement`."""
        deadline = time.monotonic() + PATIENCE
        while True:
            told = self.told_at_one_position()
            if told:
                break
            if time.monotonic() > deadline:
                raise Disagreement("health, alarms and jobs come to no one position")
            time.sleep(0.005)
        health, alarms, jobs, work = told
        self.compare_alarms(health, alarms)
        self.compare_jobs(jobs, work)
        while True:
            try:
                return self.compare_history(health["position"], alarms, jobs)
            except NotYet:
                if time.monotonic() > deadline:
                    raise
                time.sleep(0.005)

    def told_at_one_position(self):
        """Nothing while somebody has not caught up."""
        health = self.health()
        alarms, of_alarms = self.all_of("alarms")
        jobs, of_jobs = self.all_of("jobs?state=running")
        work = self.get("mirn/state").get("inProgress") or []
        again = self.health()
        places = [health["position"], of_alarms["position"], of_jobs["position"], again["position"]]
        if any(place != places[0] for place in places) or health["causes"] != again["causes"]:
            return None
        if {cause["id"] for cause in health["causes"]} != {alarm["id"] for alarm in alarms} and self.is_looking(health):
            return None
        return health, alarms, jobs, work

    def is_looking(self, health):
        """A picture grows old, and a history fails, at a position that stays: the next look is a few seconds away."""
        since = self.looks.setdefault(json.dumps(health["position"]), time.monotonic())
        return time.monotonic() - since < 10

    @staticmethod
    def compare_alarms(health, alarms):
        """Each cause has exactly one open alarm, and the reverse."""
        told = {cause["id"]: (cause["severity"], cause["since"], cause["object"]) for cause in health["causes"]}
        if len(told) != len(health["causes"]):
            raise Disagreement(f"a cause twice: {health['causes']}")
        raised = {alarm["id"]: (alarm["severity"], alarm["since"], alarm["object"]) for alarm in alarms}
        if told != raised or len(raised) != len(alarms):
            raise Disagreement(f"causes {told}\nalarms {raised}")

    @staticmethod
    def compare_jobs(jobs, work):
        """Each running job is in progress, and the reverse."""
        running = sorted((job["object"]["id"], job["kind"]) for job in jobs)
        under_way = sorted((each["objectID"], WORKS.get(each["action"], each["action"])) for each in work)
        if running != under_way:
            raise Disagreement(f"jobs {running}\nin progress {under_way}")

    def compare_history(self, position, alarms, jobs):
        """The stream's last entry is the history's, and what both tell, step by step, comes to what there is now."""
        newest = self.get("history?limit=1")["items"]
        row = newest[0]["row"] if newest else 0
        if row > self.replayed.row:
            heard = self.stream.await_row(row)
            if heard[-1]["row"] == row and heard[-1] != newest[0]:
                raise Disagreement(f"the stream's last entry {heard[-1]}\nthe history's {newest[0]}")
            self.replayed.go_on(heard)
        self.replayed.compare({alarm["id"] for alarm in alarms}, {job["id"] for job in jobs})
        told = self.replayed.events - self.earlier_events
        if told != position["sequence"]:
            raise NotYet(f"the history has {told} events of {position['sequence']}")


class Replay:
    """What a history comes to: open alarms, running jobs, changes under way."""

    def __init__(self, past):
        self.place = self.row = 0
        self.alarms, self.jobs, self.changes, self.events = set(), set(), 0, 0
        self.finished = []
        for entry in past:
            self.step(entry)

    def go_on(self, heard):
        for entry in heard[self.place:]:
            self.step(entry)
        self.place = len(heard)

    def step(self, entry):
        """The past may reach into what is heard."""
        if entry["row"] <= self.row:
            return
        self.row = entry["row"]
        getattr(self, "step_" + entry["kind"])(entry, entry["outcome"])

    def step_event(self, *_):
        self.events += 1

    def step_alarm(self, entry, outcome):
        """Raised and cleared in pairs."""
        name = entry["details"]["id"]
        if (outcome == "raised") == (name in self.alarms):
            raise Disagreement(f"{name} is {outcome} while it is {'open' if name in self.alarms else 'not open'}")
        if outcome == "raised":
            self.alarms.add(name)
        elif outcome == "cleared":
            self.alarms.remove(name)

    def step_job(self, entry, outcome):
        name = entry["details"]["id"]
        if (outcome == "begun") == (name in self.jobs):
            raise Disagreement(f"{name} is {outcome} while it is {'running' if name in self.jobs else 'not running'}")
        if outcome == "begun":
            self.jobs.add(name)
        else:
            self.jobs.remove(name)
            self.finished.append(entry)

    def step_audit(self, _, outcome):
        self.changes += 1 if outcome == "begun" else -1

    def step_service(self, entry, _):
        raise Disagreement(f"something is lost: {entry}")

    def compare(self, alarms, jobs):
        if self.alarms != alarms:
            raise NotYet(f"the history comes to the alarms {self.alarms}, open are {alarms}")
        if self.jobs != jobs:
            raise NotYet(f"the history comes to the jobs {self.jobs}, running are {jobs}")
        if self.changes != 0:
            raise NotYet(f"{self.changes} changes of the history have no end")
