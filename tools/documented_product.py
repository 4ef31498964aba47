"""The product as its documents show it: the running host on the embedded machine, and a request to each route."""

import http.client
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
REGISTRY = ROOT / "tests" / "support" / "registry.ini"

# One row a route: its id, the request that is shown with its body, and what happens unseen ahead of it.
# "<volume Archive>" stands for the id of the volume with that name, "<disk ...>" for that of the disk with that serial
# number.
LYX = "mirn/controllers/<controller Lyx>"
DATA = "mirn/arrays/<array Data_Array>"


def later(hours):
    return [("advance-clock", {"milliseconds": hours * 3600 * 1000})]


CHAPTERS = [
    ("The service", [
        ("getState", "mirn/state", None, []),
        ("getVersion", "mirn/version", None, []),
        ("rescan", "mirn/rescan", None, []),
        ("getConfig", "mirn/config", None, []),
        ("setConfig", "mirn/config", {"locate_timeout": 30}, []),
    ]),
    ("RAID capabilities", [
        ("listRaids", "mirn/raids", None, []),
        ("getRaid", "mirn/raids/<raid Lyx>?range=level&type=RAID_5", None, []),
        ("listRaidControllers", "mirn/raids/<raid Lyx>/controllers", None, []),
    ]),
    ("Controllers", [
        ("listControllers", "mirn/controllers", None, []),
        ("listControllerDevices", LYX + "/enddevices", None, []),
        ("listControllerArrays", LYX + "/arrays", None, []),
        ("listControllerPorts", LYX + "/ports", None, []),
        ("listControllerVolumes", LYX + "/volumes", None, []),
        ("setControllerReadPatrol", LYX + "/readpatrol", {"state": "DISABLED"}, []),
        ("setControllerRohi", LYX + "/rohi", {"state": "DISABLED"}, []),
    ]),
    ("End devices and ports", [
        ("listDevices", "mirn/enddevices", None, []),
        ("listPorts", "mirn/ports", None, []),
        ("locatePort", "mirn/ports/<port 93-0-0-0>/locate", {"state": "ENABLED"}, []),
    ]),
    ("Arrays", [
        ("listArrays", "mirn/arrays", None, []),
        ("listArrayDevices", DATA + "/enddevices", None, []),
        ("listArrayVolumes", DATA + "/volumes", None, []),
        ("addArrayDisks", DATA, {"disks": ["<disk OD1T9930B1F0>"]}, []),
        ("setArrayWriteCache", "mirn/arrays/<array System_Array>/writecache", {"state": "DISABLED"}, []),
    ]),
    ("Volumes", [
        ("listVolumes", "mirn/volumes", None, later(100)),
        ("createVolume", "mirn/volumes",
         {"source": "DISK", "name": "Mirror", "raidLevel": "RAID_1", "size": "100000",
          "disks": ["<disk TB2T7790315>", "<disk TB2T7790318>"]}, []),
        ("initializeVolume", "mirn/volumes/<volume Mirror>/init", None, []),
        ("verifyVolume", "mirn/volumes/<volume Mirror>/verify",
         {"action": "START", "repair": True}, later(100)),
        ("resizeVolume", "mirn/volumes/<volume Mirror>/size", {"size": "200000"}, later(100)),
        ("setVolumeCachePolicy", "mirn/volumes/<volume Mirror>/cachepolicy", {"cachePolicy": "WRITE_BACK"}, later(100)),
        ("renameVolume", "mirn/volumes/<volume Mirror>/name", {"name": "Pair"}, []),
        ("changeVolumeLevel", "mirn/volumes/<volume Pair>/level", {"raidLevel": "RAID_0"}, []),
        ("markVolumeNormal", "mirn/volumes/<volume Pair>/marknormal", None,
         later(100) + [("fail-disk", {"disk": "TB2T7790318"})]),
        ("setVolumeWriteHolePolicy", "mirn/volumes/<volume Database>/rwh", {"rwhPolicy": "RWH_DISTRIBUTED"}, []),
        ("rebuildVolume", "mirn/volumes/<volume Archive>/rebuild", {"diskId": "<disk OD3T2210A40C>"}, []),
        ("deleteVolume", "mirn/volumes/<volume Pair>", None, later(100)),
    ]),
    ("Disks", [
        ("markDiskNormal", "mirn/disks/<disk OD3T2210A409>/marknormal", None, []),
        ("clearDisk", "mirn/disks/<disk OD3T2210A409>/clear", None, []),
        ("setDiskSpare", "mirn/disks/<disk OD3T2210A409>/spare", {"action": "MARK"}, []),
        ("resetDiskSmart", "mirn/disks/<disk TB4T6610092>/resetsmart", None, []),
        ("removeDisk", "mirn/disks/<disk OD3T2210A40F>", None, []),
    ]),
    ("Events", [
        ("listEvents", "mirn/events?time=3600", None, []),
    ]),
]

# Where the objects of each kind are listed, and what they are known by.
KINDS = {
    "volume": ("mirn/volumes", "name", "id"),
    "disk": ("mirn/enddevices", "serialNumber", "id"),
    "controller": ("mirn/controllers", "type", "id"),
    "raid": ("mirn/controllers", "type", "raidId"),
    "array": ("mirn/arrays", "name", "id"),
    "port": ("mirn/ports", "address", "id"),
}


class Product:
    """The running host."""

    def __init__(self, host, module, folder):
        registry = folder / "registry.ini"
        registry.write_bytes(REGISTRY.read_bytes())
        token_file = folder / "token"
        environment = {**os.environ, "MIRN_REGISTRY": str(registry), "VEXL2_STATE": str(folder / "machine.json"),
                       "VEXL2_CLOCK_SPEED": "0", "VEXL2_EVENT_WAIT_CAP": "50"}
        environment.pop("VEXL2_SCENARIO", None)
        self.process = subprocess.Popen(
            [host, "--module", module, "--port", "0", "--token-file", str(token_file), "--simulator-controls"],
            env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        served = None
        while served is None:
            line = self.process.stdout.readline()
            if not line:
                sys.exit("the host ended before it served")
            served = re.search(r"on http://([\d.]+):(\d+)", line)
        self.address = served.group(1), int(served.group(2))
        self.token = token_file.read_text().strip()
        self.silence_monitor()

    def request(self, method, target, body=None):
        """The status and the value of the answer; None when there is no body."""
        connection = http.client.HTTPConnection(*self.address, timeout=60)
        text = None if body is None else json.dumps(body)
        connection.request(method, "/api/v1/" + target, text, {"Authorization": "Bearer " + self.token})
        response = connection.getresponse()
        answer = response.read()
        connection.close()
        return response.status, json.loads(answer) if answer else None

    def control(self, name, arguments):
        status, answer = self.request("POST", "simulator/" + name, arguments)
        if status >= 400:
            sys.exit(f"{name} {arguments}: {answer['detail']}")
        return answer

    def silence_monitor(self):
        """From now on requests alone renew the picture, so that events come in one order."""
        every = {"operation": "VexEventWait", "count": 0xFFFFFFFF}
        self.control("delay-calls", {**every, "milliseconds": 10})
        self.control("fail-calls", {**every, "status": 15})
        calls = self.control("count-calls", {"operation": "VexEventWait"})["calls"]
        while self.control("count-calls", {"operation": "VexEventWait"})["calls"] < calls + 2:
            pass

    def resolve(self, text):
        """`text` with ids in place of names."""
        def id_of(match):
            target, key, wanted = KINDS[match.group(1)]
            found = [item[wanted] for item in self.request("GET", target)[1] if item[key] == match.group(2)]
            if not found:
                sys.exit(f"there is no {match.group(1)} {match.group(2)}")
            return found[0]
        return re.sub(r"<(\w+) ([^>]+)>", id_of, text)

    def stop(self):
        self.process.terminate()
        if self.process.wait(60) != 0:
            sys.exit("the host did not stop in good order")


def masked(value):
    """An answer without what differs from run to run."""
    if isinstance(value, dict):
        return {key: "03/02/24 11:04:05 PM" if key == "creation_time" else masked(item)
                for key, item in value.items()}
    return [masked(item) for item in value] if isinstance(value, list) else value
