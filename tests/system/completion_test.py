#!/usr/bin/env python3
"""What shells complete of the command line, with the scripts that it prints for them and the names of a running host.

usage: completion_test.py HOST MODULE MIRNCTL [unittest arguments]
"""

import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

from local_host import PATIENCE, LocalHost

VOLUMES = ["Archive", "Database", "Scratch", "System"]

# Prints what _mirnctl leaves, a candidate a line.
BASH = r"""
source <(mirnctl completion bash)
COMP_CWORD=$(($# - 1)) COMP_WORDS=("$@")
_mirnctl
printf '%s\n' "${COMPREPLY[@]}"
"""

# The functions of zsh's own system that _mirnctl calls, as they would be called there.
TRIES = 5
ZSH = r"""
compdef() { :; }
_files() { print FILES; }
_describe() { print -l -- "${(@P)2}"; }
source <(mirnctl completion zsh)
words=("$@") CURRENT=$#
_mirnctl
"""


class CompletionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirn-")
        cls.addClassCleanup(folder.cleanup)
        cls.home = pathlib.Path(folder.name)
        cls.host = LocalHost(HOST, MODULE, cls.home, VEXL2_CLOCK_SPEED="0")
        cls.addClassCleanup(cls.host.kill)
        cls.host.await_serving()
        programs = cls.home / "programs"
        programs.mkdir()
        (programs / "mirnctl").symlink_to(pathlib.Path(MIRNCTL).resolve())
        cls.environment = {"HOME": str(cls.home), "PATH": f"{programs}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8",
                           "MIRN_TOKEN_FILE": str(cls.home / "token"), "MIRN_HOST": f"http://127.0.0.1:{cls.host.port}"}

    def said(self, *command, **environment):
        """What a service does not tell within a second is left out: on a busy machine it is asked again."""
        for _ in range(TRIES):
            lines = self.said_once(*command, **environment)
            if lines:
                break
        return lines

    def said_once(self, *command, **environment):
        done = subprocess.run(command, env={**self.environment, **environment}, stdin=subprocess.DEVNULL, cwd=self.home,
                              capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        return [line for line in done.stdout.splitlines() if line]

    def in_bash(self, *words):
        return self.said("bash", "--norc", "-c", BASH, "bash", "mirnctl", *words)

    def in_zsh(self, *words):
        return self.said("zsh", "-f", "-c", ZSH, "zsh", "mirnctl", *words)

    def in_fish(self, line):
        asked = 'mirnctl completion fish | source; complete -C "$argv[1]"'
        return self.said("fish", "--no-config", "-c", asked, "mirnctl " + line)

    def test_a_shell_is_told_names_of_the_running_machine(self):
        self.assertEqual(VOLUMES, sorted(self.in_bash("volumes", "show", "")))
        self.assertEqual(["Archive"], self.in_bash("volumes", "show", "Ar"))
        self.assertEqual(VOLUMES, sorted(each.split(":")[0] for each in self.in_zsh("volumes", "show", "")))
        self.assertEqual(["Archive:DEGRADED, RAID_5, 4.0 TiB, 0 %"], self.in_zsh("volumes", "show", "Ar"))
        self.assertEqual(["Archive\tDEGRADED, RAID_5, 4.0 TiB, 0 %"], self.in_fish("volumes show Ar"))

    def test_a_shell_is_told_commands_words_and_options(self):
        self.assertEqual(["rename"], self.in_bash("volumes", "ren"))
        self.assertEqual(["rename:Renames a volume."], self.in_zsh("volumes", "ren"))
        self.assertEqual(["rename\tRenames a volume."], self.in_fish("volumes ren"))
        self.assertEqual(["--raid-level"], self.in_bash("volumes", "create", "--raid-l"))
        self.assertEqual(["RAID_10"], self.in_bash("volumes", "create", "--raid-level", "RAID_10"))

    def test_bash_is_told_the_rest_of_a_word_that_it_takes_for_several(self):
        self.assertEqual(["json", "jsonl"], self.in_bash("volumes", "list", "--output", "=", "js"))
        self.assertEqual(["table", "json", "jsonl", "csv"], self.in_bash("volumes", "list", "--output", "="))

    def test_names_stand_as_the_shell_would_have_them_typed(self):
        self.host.request("PUT", f"mirn/volumes/{self.volume('Scratch')}/name", {"name": "Old $HOME"})
        self.addCleanup(lambda: self.host.request("PUT", f"mirn/volumes/{self.volume('Old $HOME')}/name", {"name": "Scratch"}))
        self.assertEqual([r"Old\ \$HOME"], self.in_bash("volumes", "show", "Old"))
        self.assertEqual([r"Old\ \$HOME"], self.in_bash("volumes", "show", r"Old\ "))
        self.assertEqual(["Old $HOME"], self.in_bash("volumes", "show", '"Old'))
        self.assertEqual(["Old $HOME"], [each.split(":")[0] for each in self.in_zsh("volumes", "show", "Old")])

    def volume(self, name):
        return next(each["id"] for each in self.host.request("GET", "mirn/volumes")[1] if each["name"] == name)

    def test_files_are_the_shells_to_tell(self):
        self.assertEqual([str(self.home / "registry.ini")], self.in_bash("--token-file", str(self.home / "reg")))
        self.assertEqual(["FILES"], self.in_zsh("--token-file", ""))
        self.assertIn("registry.ini", [each.split("\t")[0] for each in self.in_fish("--token-file reg")])

    def test_nothing_is_told_of_a_service_that_is_not_there_or_says_nothing(self):
        self.assertEqual([], self.said("mirnctl", "complete", "--", "volumes", "show", "", MIRN_HOST="http://127.0.0.1:9"))
        self.assertEqual([], self.said("mirnctl", "complete", "--", "volumes", "show", "", MIRN_TOKEN_FILE="/nowhere"))
        with socket.create_server(("127.0.0.1", 0)) as silent:
            start, host = time.monotonic(), f"http://127.0.0.1:{silent.getsockname()[1]}"
            self.assertEqual([], self.said("mirnctl", "complete", "--", "volumes", "show", "", MIRN_HOST=host))
            self.assertLess(time.monotonic() - start, 10)  # a command waits six times as long

    def test_the_scripts_are_none_that_the_shells_find_fault_with(self):
        for shell in ("bash", "zsh", "fish"):
            self.assertIsNotNone(shutil.which(shell), "tools/install-dependencies brings it")
            script = self.home / f"script.{shell}"
            script.write_text("\n".join(self.said("mirnctl", "completion", shell)) + "\n")
            self.assertEqual([], self.said(shell, "-n", str(script)))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    HOST, MODULE, MIRNCTL = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
