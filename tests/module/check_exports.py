#!/usr/bin/env python3
"""Fails unless a module shows exactly the two plain names of a plug-in module."""
import subprocess
import sys

EXPECTED = ["discover_plugin", "register_plugin"]

listing = subprocess.run(["nm", "-D", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True)
symbols = sorted(line.split()[-1] for line in listing.stdout.splitlines())
if symbols != EXPECTED:
    sys.exit(f"the module shows {symbols}, not {EXPECTED}")
print("shows", ", ".join(symbols))
