"""A host on the simulated machine, started as a user starts it, with its files in a folder that outlives it."""

import ctypes
import http.client
import json
import os
import re
import signal
import subprocess
import time

PATIENCE = 60  # seconds for whatever the host does


def end_with_parent():
    """In the child: whatever ends the test ends its hosts."""
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


def record_exchange(port, module, method, target, body, answer, text, at_random=False):
    """As tests/support/exchange_record.h does; `at_random`: the client is a random one."""
    folder = os.environ.get("MIRN_EXCHANGES")
    if folder is None:
        return
    lines = [{"port": port, "module": str(module)}, *([{"port": port, "atRandom": True}] if at_random else []),
             {"port": port, "method": method, "target": target, "type": "" if body is None else "application/json",
              "body": "" if body is None else json.dumps(body), "status": answer.status,
              "headers": dict(answer.getheaders()), "answer": text}]
    with open(os.path.join(folder, f"{os.getpid()}.jsonl"), "a", encoding="utf-8") as file:
        file.write("".join(json.dumps(line) + "\n" for line in lines))


class LocalHost:
    """One process. Its state, settings and token are files of `folder`, which the next one finds."""

    is_asked_at_random = False
    SETTINGS = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\nLedLocateTimeout=12\n"

    def __init__(self, program, module, folder, arguments=(), terminal=None, launcher=(), descriptors=(), **environment):
        """`terminal` is a descriptor that the host writes to; otherwise a file takes in what it tells. `launcher` is a
        command that becomes the host and finds `descriptors` open."""
        self.folder, self.port, self.module = folder, None, module
        if not (folder / "registry.ini").exists():
            (folder / "registry.ini").write_text(self.SETTINGS)
        with open(folder / "output", "wb") as output, open(folder / "errors", "wb") as errors:
            self.process = subprocess.Popen(
                [*launcher, program, "--module", module, "--port", "0", "--token-file", folder / "token", *arguments],
                env={**os.environ, "MIRN_REGISTRY": str(folder / "registry.ini"),
                     "VEXL2_STATE": str(folder / "machine.json"), "VEXL2_EVENT_WAIT_CAP": "50", **environment},
                stdin=subprocess.DEVNULL, stdout=output if terminal is None else terminal, stderr=errors,
                preexec_fn=end_with_parent, pass_fds=descriptors)

    def serves(self):
        """Whether it has told that it does."""
        told = re.search(rb"^Serving .* on https?://127\.0\.0\.1:(\d+)", (self.folder / "output").read_bytes(), re.M)
        self.port = int(told.group(1)) if told else None
        return told is not None

    def await_serving(self):
        deadline = time.monotonic() + PATIENCE
        while not self.serves():
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise AssertionError("the host does not serve: " + self.errors())
            time.sleep(0.01)
        return self

    def errors(self):
        return (self.folder / "errors").read_text(errors="replace")[-2000:]

    def token(self):
        return (self.folder / "token").read_text().strip()

    def request(self, method, path, body=None, token=None):
        """Status and value of an answer below the version of the interface."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=PATIENCE)
        try:
            headers = {"Authorization": "Bearer " + (token or self.token())}
            if body is not None:
                headers["Content-Type"] = "application/json"
            connection.request(method, "/api/v1/" + path, body and json.dumps(body), headers)
            answer = connection.getresponse()
            text = answer.read()
            record_exchange(self.port, self.module, method, "/api/v1/" + path, body, answer, text.decode(),
                            self.is_asked_at_random)
            return answer.status, json.loads(text) if text else None
        finally:
            connection.close()

    def kill(self):
        """At once; it may have ended already."""
        self.process.kill()
        self.process.wait()

    def stop(self):
        """The exit status of an orderly end."""
        self.process.terminate()
        return self.process.wait(PATIENCE)
