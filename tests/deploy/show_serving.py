#!/usr/bin/env python3
"""Starts the host of an unpacked package as its unit says, and prints what it tells of itself.

usage: show_serving.py ROOT, in name spaces of its own for mounts and the network
"""

import fcntl
import pathlib
import shlex
import socket
import struct
import subprocess
import sys
import urllib.request

ROOT = pathlib.Path(sys.argv[1])
UNIT = ROOT / "usr/lib/systemd/system/mirn-host.service"
STATE, RUNTIME = pathlib.Path("/var/lib/mirn"), pathlib.Path("/run/mirn")
ADDRESS = "http://127.0.0.1:8080/api/v1"


def mount(*words):
    subprocess.run(["mount", *words], check=True, timeout=10)


def bring_up_loopback():
    get_flags, set_flags, is_up = 0x8913, 0x8914, 1
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        request = struct.pack("16sh14x", b"lo", 0)
        flags = struct.unpack("16sh14x", fcntl.ioctl(any_socket, get_flags, request))[1]
        fcntl.ioctl(any_socket, set_flags, struct.pack("16sh14x", b"lo", flags | is_up))


def unpack():
    """Puts the package over the machine's own files, for this process and its children."""
    for folder in ("usr", "etc"):
        mount("-t", "overlay", "overlay", "-o", f"lowerdir={ROOT / folder}:/{folder}", f"/{folder}")
    for folder in (STATE, RUNTIME):
        mount("-t", "tmpfs", "tmpfs", str(folder.parent))
        folder.mkdir(mode=0o755)


def settings_of_unit(name):
    return [line.split("=", 1)[1] for line in UNIT.read_text().splitlines() if line.startswith(name + "=")]


def main():
    unpack()
    bring_up_loopback()
    command = shlex.split(settings_of_unit("ExecStart")[0])
    environment = dict(setting.split("=", 1) for setting in settings_of_unit("Environment"))
    subprocess.run([*command, "--check-config"], check=True, timeout=60)
    host = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, text=True)
    try:
        while "Unix socket: " + str(RUNTIME / "host.sock") not in (line := host.stdout.readline()):
            if not line:
                raise SystemExit("the host did not start")
        token = (STATE / "token").read_text().strip()
        request = urllib.request.Request(ADDRESS, headers={"Authorization": "Bearer " + token})
        answer = urllib.request.urlopen(request, timeout=10).read().decode()
    finally:
        host.terminate()
    if host.wait(timeout=60) != 0:
        raise SystemExit("the host did not stop in good order")
    print(answer)


if __name__ == "__main__":
    main()
