#!/usr/bin/env python3
"""Builds the console, and writes its files as one C++ source for the host.

usage: make_console.py OUTPUT [--npm FILE] [--folder FOLDER] [--tools]

OUTPUT: the source. --folder: also leaves the files there, as a browser gets them. --tools: installs what the tests need,
too. Without npm, or where it cannot have its packages, the source holds a plain page, and a line says so; the next build
tries again.
"""

import argparse
import fcntl
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
INSTALLED = HERE / "node_modules"
# The members of ConsoleFiles, and where their bytes come from.
FILES = [("page", "index.html"), ("script", "app.js"), ("style", "app.css"), ("icon", "icon.svg")]
INSTALL_SECONDS = 300


class NotToBeHad(Exception):
    """What the console is built with cannot be installed."""


def install(npm, with_tools):
    """Only what the lock file names, and only when it names something else than last time."""
    lock = (HERE / "package-lock.json").read_bytes()
    whole, part = INSTALLED / "installed_whole.json", INSTALLED / "installed.json"
    for stamp in [whole] if with_tools else [whole, part]:
        if stamp.exists() and stamp.read_bytes() == lock:
            return
    command = [npm, "ci", "--ignore-scripts", "--no-progress", "--prefer-offline"] + ([] if with_tools else ["--omit=dev"])
    try:
        subprocess.run(command, cwd=HERE, check=True, timeout=INSTALL_SECONDS, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    except subprocess.CalledProcessError as failure:
        raise NotToBeHad("npm cannot install its packages:\n" + failure.stdout.decode(errors="replace")[-1000:]) from failure
    except (OSError, subprocess.TimeoutExpired) as failure:
        raise NotToBeHad(f"npm cannot install its packages: {failure}") from failure
    (whole if with_tools else part).write_bytes(lock)


def ready_to_build(npm, with_tools):
    """Several builds of one tree share what is installed."""
    if not npm or shutil.which(npm) is None or shutil.which("node") is None:
        raise NotToBeHad("npm and nodejs are not there (Debian's packages nodejs and npm)")
    with open(HERE / ".installing", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        install(npm, with_tools)


def build(folder):
    """The files of the console in the folder; a fault in its sources ends the build."""
    command = [
        "node", INSTALLED / "esbuild" / "bin" / "esbuild", HERE / "src" / "app.tsx", HERE / "src" / "app.css",
        f"--outdir={folder}", "--bundle", "--minify", "--target=es2022", "--format=esm", "--charset=utf8",
        "--jsx=automatic", "--jsx-import-source=preact", "--legal-comments=none", "--log-level=warning",
    ]
    if subprocess.run([str(part) for part in command], cwd=HERE, check=False).returncode != 0:
        sys.exit("make_console: the console does not build")
    for path in (HERE / "static").iterdir():
        shutil.copy(path, folder)


def source_of(folder):
    lines = ["// Made by web/make_console.py.", '#include "console/console_files.h"', "", "#include <cstddef>", "", "namespace host {", "", "namespace {", ""]
    for member, name in FILES:
        data = (folder / name).read_bytes()
        lines += [f"const unsigned char k_{member}[] = {{", *rows_of(data), "};", ""]
    lines += ["template <std::size_t kSize>", "std::string_view viewOf(const unsigned char (&bytes)[kSize]) {",
              "  return {reinterpret_cast<const char*>(bytes), kSize};", "}", "", "}  // namespace", "",
              "ConsoleFiles consoleFiles() {",
              "  return {" + ", ".join(f"viewOf(k_{member})" for member, _ in FILES) + "};", "}", "", "}  // namespace host", ""]
    return "\n".join(lines)


def rows_of(data):
    for begin in range(0, len(data), 64):
        yield ",".join(map(str, data[begin:begin + 64])) + ","


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("output", type=pathlib.Path)
    parser.add_argument("--npm", default="npm")
    parser.add_argument("--folder", type=pathlib.Path)
    parser.add_argument("--tools", action="store_true")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        is_plain = False
        try:
            ready_to_build(options.npm, options.tools)
            build(folder)
        except NotToBeHad as reason:
            print(f"The console is a plain page, since {reason}", flush=True)
            shutil.copytree(HERE / "plain", folder, dirs_exist_ok=True)
            shutil.copy(HERE / "static" / "icon.svg", folder)
            is_plain = True
        if options.folder:
            shutil.copytree(folder, options.folder, dirs_exist_ok=True)
        options.output.write_text(source_of(folder), encoding="utf-8")
        if is_plain:
            os.utime(options.output, (0, 0))  # older than all it is made from


if __name__ == "__main__":
    main()
