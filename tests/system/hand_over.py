#!/usr/bin/env python3
"""Becomes a program that finds sockets where a service manager leaves them.

usage: hand_over.py NAMES DESCRIPTORS PROGRAM [arguments]

NAMES are separated by colons, DESCRIPTORS by commas.
"""

import fcntl
import os
import sys

FIRST = 3
BEYOND = 64  # where nothing is in the way of the places that the sockets go to

descriptors = [int(descriptor) for descriptor in sys.argv[2].split(",")]
for place, copy in enumerate([fcntl.fcntl(descriptor, fcntl.F_DUPFD, BEYOND) for descriptor in descriptors], FIRST):
    os.dup2(copy, place)
    os.close(copy)
os.environ.update(LISTEN_PID=str(os.getpid()), LISTEN_FDS=str(len(descriptors)), LISTEN_FDNAMES=sys.argv[1])
os.execv(sys.argv[3], sys.argv[3:])
