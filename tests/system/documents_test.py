#!/usr/bin/env python3
"""Runs the commands that README.md and the pages of docs/ show, as they stand there, and compares what they answer with
what is shown.

usage: documents_test.py SOURCE BUILD HOST MODULE [unittest arguments]

A block of a page is a session in a shell when one of its lines begins as a command does. What asks a host is run against
one on a port of its own, that the page's own lines started or else the plain one; what builds or checks is looked at
without doing it again. A line of which nobody knows how to try it fails.
"""

import contextlib
import ctypes
import json
import os
import pathlib
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PATIENCE = 60  # seconds for whatever a command does
SHELLS = {"", "sh", "bash", "console"}
DATE = re.compile(r"\d\d/\d\d/\d\d \d\d:\d\d:\d\d [AP]M")
STATUS = re.compile(r'^\{"type":.*"status":(\d+)')


def end_with_parent():
    """In the child: whatever ends this test ends its hosts."""
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


class Command:
    """One command of a page, with the lines that are shown as its answer."""

    def __init__(self, page, number, text):
        self.page, self.number, self.text, self.shown = page, number, text, []

    def __str__(self):
        return f"{self.page}:{self.number}: {self.text}"

    def words(self):
        return shlex.split(self.text, comments=True)


BEGINNINGS = re.compile(r"(\$ |[A-Za-z_]+=\S|(curl|wget|cmake|ctest|ninja|git|sudo|apt|apt-get|python3|export|systemctl|"
                        r"mirn-host|mirn-scenario|openssl|docker|kill)( |$)|\./|(build|tools|tests|fuzz)/\S+( |$))")


def blocks(lines):
    """(first line's number, lines) of each block of code that may be a session."""
    inside, fence, found = False, "", []
    for number, line in enumerate(lines, 1):
        mark = re.match(r"( *)```(\w*)$", line)
        if mark and not inside:
            inside, fence, start, block = True, mark.group(2), number + 1, []
            indent = len(mark.group(1))
        elif mark:
            inside = False
            if fence in SHELLS:
                found.append((start, block))
        elif inside:
            block.append(line[indent:])
        elif line.startswith("    ") and (not lines[number - 2].strip() or (found and found[-1][2:] == (number - 1,))):
            if found and found[-1][2:] == (number - 1,):
                found[-1] = (found[-1][0], found[-1][1] + [line[4:]], number)
            else:
                found.append((number, [line[4:]], number))
    return [(entry[0], entry[1]) for entry in found]


def commands_of(page, text):
    """The commands of a page in their order."""
    found = []
    for start, block in blocks(text.splitlines()):
        if not any(BEGINNINGS.match(line) for line in block):
            continue
        prompts = any(line.startswith("$ ") for line in block)
        more = False
        for number, line in enumerate(block, start):
            if more:
                found[-1].text += "\n" + line
            elif line.startswith("$ ") or (not prompts and line.strip()):
                found.append(Command(page, number, line.removeprefix("$ ")))
            elif prompts:
                found[-1].shown.append(line)
                continue
            else:
                continue
            more = line.endswith("\\")
    return found


class Session:
    """A shell with a home of its own, and the host that it talks to."""

    def __init__(self, test, folder):
        self.test, self.folder = test, folder
        self.host, self.port = None, None
        self.home = folder / "home"
        self.home.mkdir()
        self.runtime = folder / "runtime"
        self.runtime.mkdir(mode=0o700)
        (folder / "run-tree").mkdir()
        self.lay_out(folder / "run-tree")
        self.assignments = []

    def lay_out(self, tree):
        """What `./run` finds in the folder of the sources, with everything built already."""
        binaries = tree / "build" / "run" / "bin"
        binaries.mkdir(parents=True)
        for file in (HOST, MODULE, *MODULE.parent.glob("libVEXL2.so*")):
            (binaries / file.name).symlink_to(file)
            (tree / file.name).symlink_to(file)
        (tree / "run").symlink_to(SOURCE / "run")
        for folder in ("tools", "simulator"):
            (tree / folder).symlink_to(SOURCE / folder)
        programs = tree / "programs"
        programs.mkdir()
        (programs / "cmake").write_text('#!/bin/sh\necho "cmake $*" >> "$HOME/cmake.log"\n')
        (programs / "cmake").chmod(0o755)

    def environment(self):
        inherited = {name: value for name, value in os.environ.items()
                     if not re.match(r"VEXL2_|MIRN_|XDG_|ASAN_|UBSAN_", name)}
        tree = self.folder / "run-tree"
        return {**inherited, "HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.runtime),
                "VEXL2_EVENT_WAIT_CAP": "50",
                "PATH": f"{tree}:{tree / 'programs'}:{os.environ['PATH']}"}

    def start(self, words):
        self.stop()
        output = self.folder / "output"
        with open(output, "wb") as out, open(self.folder / "errors", "wb") as errors:
            self.host = subprocess.Popen(
                [*words, "--port", "0"], cwd=self.folder / "run-tree", env=self.environment(), stdin=subprocess.DEVNULL,
                stdout=out, stderr=errors, preexec_fn=end_with_parent)
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline and self.host.poll() is None:
            served = re.search(r"^Serving .* on http://127\.0\.0\.1:(\d+)", output.read_text(), re.M)
            if served:
                self.port = int(served.group(1))
                return output.read_text()
            time.sleep(0.05)
        raise AssertionError(f"{' '.join(words)}: does not serve: {self.errors()}")

    def errors(self):
        return (self.folder / "errors").read_text(errors="replace")[-2000:]

    def stop(self):
        if self.host is None:
            return
        self.host.terminate()
        self.test.assertEqual(0, self.host.wait(PATIENCE), self.errors())
        self.host = None

    def shell(self, text):
        """Status and output of a line, with what the lines before it have set."""
        script = "\n".join([
            "set -o pipefail",
            f'curl() {{ command curl --silent --show-error --fail-with-body --max-time {PATIENCE} "$@"; }}',
            *self.assignments, text]).replace("127.0.0.1:8080", f"127.0.0.1:{self.port}")
        done = subprocess.run(["bash", "-c", script], env=self.environment(), cwd=self.folder / "run-tree",
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=2 * PATIENCE)
        return done.returncode, done.stdout.decode(), done.stderr.decode()


CURL_REFUSED = 22  # curl's own status for an answer of 400 and above, as it was told to fail then


class DocumentsTest(unittest.TestCase):
    @contextlib.contextmanager
    def session(self):
        with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
            session = Session(self, pathlib.Path(folder))
            try:
                yield session
                session.stop()
            finally:
                if session.host is not None and session.host.poll() is None:
                    session.host.kill()
                    session.host.wait()

    def run_page(self, page):
        with self.session() as session:
            for command in commands_of(page, (SOURCE / page).read_text(encoding="utf-8")):
                with self.subTest(str(command)):
                    self.run_command(session, command)

    def run_command(self, session, command):
        way = next((way for beginning, way in WAYS if re.match(beginning, command.text)), None)
        self.assertIsNotNone(way, "nobody knows how to try this command; give it a row in WAYS")
        way(self, session, command)

    # What asks a host.

    def assign(self, session, command):
        if session.host is None:
            session.start(["mirn-host", "--module", MODULE.name])
        self.ask(session, command)
        session.assignments.append(command.text)

    def ask(self, session, command):
        if session.host is None:
            session.start(["mirn-host", "--module", MODULE.name])
        status, output, errors = session.shell(command.text)
        refusal = STATUS.match("\n".join(command.shown))
        self.assertEqual(CURL_REFUSED if refusal else 0, status, output + errors)
        if command.shown:
            self.compare(command.shown, output)

    def compare(self, shown, output):
        output = DATE.sub("DATE", output).strip().splitlines()
        shown = [DATE.sub("DATE", line) for line in shown if line.strip()]
        if "..." not in shown:
            self.assertEqual(shown, output)
            return
        rest = iter(output)
        for line in shown:
            self.assertTrue(line == "..." or line in rest, f"\"{line}\" is not answered, or not in this place: {output}")

    # What starts one.

    def serve(self, session, command):
        session.start(command.words())

    def serve_by_script(self, session, command):
        told = session.start(command.words())
        self.assertIn("cmake --build --preset run", (session.home / "cmake.log").read_text())
        printed = [line.strip() for line in told.splitlines() if re.match(r"  (curl|\w+=)", line)]
        self.assertGreater(len(printed), 5, told)
        for line in printed:
            (self.assign if "=" in line.split()[0] else self.ask)(session, Command("./run", 0, line))
        session.assignments.clear()

    # What builds or checks.

    def look_at_script(self, session, command):
        words = command.words()
        script = SOURCE / words[0]
        self.assertTrue(os.access(script, os.X_OK), f"{script} cannot be run")
        text = script.read_text(encoding="utf-8")
        for option in words[1:]:
            if option.startswith("--"):
                self.assertIn(option.partition("=")[0] if words[0] != "tools/bench" else "$@", text)

    def look_at_cmake(self, session, command):
        words = command.words()
        presets = json.loads((SOURCE / "CMakePresets.json").read_text())
        kind = {"ctest": "testPresets"}.get(words[0], "buildPresets" if "--build" in words else "configurePresets")
        preset = words[words.index("--preset") + 1]
        self.assertIn(preset, [entry["name"] for entry in presets[kind]])
        if "--target" in words:
            target = words[words.index("--target") + 1]
            known = subprocess.run(["cmake", "--build", str(BUILD), "--target", "help"], check=True, capture_output=True,
                                   text=True, timeout=PATIENCE).stdout
            self.assertTrue(re.search(rf"(?m)^{re.escape(target)}: ", known), f"there is no target {target}")
        if words[0] == "ctest" and preset != "windows":
            chosen = words[words.index("--preset") + 2:]
            listed = subprocess.run(["ctest", "--test-dir", str(BUILD), "-N", *chosen], check=True, capture_output=True,
                                    text=True, timeout=PATIENCE).stdout
            if "fuzz" not in chosen:  # which the compiler may not have
                self.assertNotRegex(listed, r"Total Tests: 0\b")

    def install(self, session, command):
        words = command.words()
        prefix = session.folder / "prefix"
        component = words[words.index("--component") + 1]
        subprocess.run(["cmake", "--install", str(BUILD), "--component", component, "--prefix", str(prefix)], check=True,
                       capture_output=True, timeout=PATIENCE)
        self.assertTrue(any(prefix.rglob("*")), "nothing was installed")

    def build_example(self, session, command):
        """The tests of package/ do just that; here its folders are looked for."""
        self.assertTrue((SOURCE / "examples/host/CMakeLists.txt").is_file())

    def take_own_program(self, session, command):
        """A program of ours by its path in a build."""
        self.assertTrue((BUILD / "bin" / pathlib.Path(command.words()[0]).name).is_file())


class RunTest(unittest.TestCase):
    """`./run` hands on what it is told."""

    def test_a_token_file_of_ones_own_takes_the_place_of_its_own(self):
        for form in (["--token-file", "{}"], ["--token-file={}"]):
            with tempfile.TemporaryDirectory(prefix="mirn-") as folder:
                session = Session(self, pathlib.Path(folder))
                token = session.home / "my token"
                try:
                    session.start(["./run", *(word.format(token) for word in form)])
                    status, output, errors = session.shell(
                        f'curl -H "Authorization: Bearer $(cat "{token}")" http://127.0.0.1:8080/api/v1/mirn/state')
                    self.assertEqual(0, status, output + errors)
                    session.stop()
                finally:
                    if session.host is not None:
                        session.host.kill()
                        session.host.wait()


# The first row whose beginning a command has tells how it is tried.
WAYS = [
    (r"curl ", DocumentsTest.ask),
    (r"[A-Za-z_]+=", DocumentsTest.assign),
    (r"mirn-host --module ", DocumentsTest.serve),
    (r"mirn-host [a-z]", DocumentsTest.ask),
    (r"\./run\b", DocumentsTest.serve_by_script),
    (r"\./test\b|tools/|tests/", DocumentsTest.look_at_script),
    (r"cmake --install ", DocumentsTest.install),
    (r"(cmake|cmake --build|ctest) --preset ", DocumentsTest.look_at_cmake),
    (r"cmake -S examples/host |cmake --build build/example|build/example/", DocumentsTest.build_example),
    (r"build/[a-z]+/bin/", DocumentsTest.take_own_program),
]


def pages():
    return ["README.md", "examples/host/README.md", *(f"docs/{page.name}" for page in sorted((SOURCE / "docs").glob("*.md")))]


def add_tests():
    for page in pages():
        name = "test_" + re.sub(r"\W+", "_", page.lower())
        setattr(DocumentsTest, name, lambda self, page=page: self.run_page(page))


class ReadingTest(unittest.TestCase):
    """What counts as a command."""

    PAGE = """Text

```
$ one=1
$ curl a \\
    b
answer
...
```

```json
curl no
```

    mirn-host --module m   # why
    curl c

```
plain output
```

1. A list

   ```
   cmake --preset debug
   ```
"""

    def test_commands_and_answers_are_told_apart(self):
        found = [(command.number, command.text, command.shown) for command in commands_of("page", self.PAGE)]
        self.assertEqual([(4, "one=1", []), (5, "curl a \\\n    b", ["answer", "..."]), (15, "mirn-host --module m   # why", []),
                          (16, "curl c", []), (25, "cmake --preset debug", [])], found)

    def test_the_pages_have_commands_that_ask(self):
        asked = [command for page in pages() for command in commands_of(page, (SOURCE / page).read_text())
                 if command.text.startswith("curl ")]
        self.assertGreater(len(asked), 7)


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit(__doc__.strip())
    SOURCE, BUILD, HOST, MODULE = (pathlib.Path(argument).resolve() for argument in sys.argv[1:5])
    add_tests()
    unittest.main(argv=[sys.argv[0], *sys.argv[5:]])
