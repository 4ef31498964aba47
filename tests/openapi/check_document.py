#!/usr/bin/env python3
"""Judges docs/openapi.json by the tools that others use: redocly's linter, and types made of it that must compile.

usage: check_document.py WORK_FOLDER

The tools are installed into the folder, by npm, in the versions of the lock file beside this.
"""

import os
import pathlib
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
DOCUMENT = HERE.parent.parent / "docs" / "openapi.json"
LOCK = "package-lock.json"
FILES = ["package.json", LOCK, ".npmrc", "redocly.yaml", "tsconfig.json", "types_test.ts"]
# The linter talks to nobody.
QUIET = {"REDOCLY_TELEMETRY": "off", "REDOCLY_SUPPRESS_UPDATE_NOTICE": "true", "NO_COLOR": "1"}


def run(folder, *command):
    print("+", *(os.path.relpath(part, folder) if os.path.isabs(str(part)) else part for part in command), flush=True)
    subprocess.run([str(part) for part in command], cwd=folder, env={**os.environ, **QUIET}, check=True)


def install(folder):
    """Only what the lock file names, and only when it names something else than last time."""
    installed = folder / "installed.json"
    if installed.exists() and installed.read_bytes() == (HERE / LOCK).read_bytes():
        return
    installed.unlink(missing_ok=True)
    run(folder, "npm", "ci", "--ignore-scripts", "--no-progress", "--prefer-offline")
    shutil.copy(HERE / LOCK, installed)


def main():
    if shutil.which("npm") is None or shutil.which("node") is None:
        sys.exit("npm and node are not there: tools/install-dependencies installs them")
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name in FILES:
        shutil.copy(HERE / name, folder)
    install(folder)
    tools = folder / "node_modules" / ".bin"
    try:
        run(folder, tools / "redocly", "lint", "--config", "redocly.yaml", "--max-problems", "1000", DOCUMENT)
        run(folder, tools / "openapi-typescript", DOCUMENT, "--output", "openapi.d.ts")
        run(folder, tools / "tsc", "--project", ".")
        run(folder, "node", "compiled/types_test.js", DOCUMENT)
    except subprocess.CalledProcessError as failure:
        sys.exit(f"{pathlib.Path(str(failure.cmd[0])).name} is not content with docs/openapi.json")


if __name__ == "__main__":
    main()
