#!/usr/bin/env python3
"""Judges what the tests asked running hosts, and were answered, by the OpenAPI document.

usage: judge_exchanges.py FOLDER [--host FILE --other MODULE] [--all]

FOLDER has the files of tests/support/exchange_record.h. An exchange with an operation, status, type of body or body
that the document does not know is a fault. Hosts that served the test plug-in are judged by what a host tells of MODULE.

With --all, after all tests: which operations answered with which statuses is held to never_seen.txt beside this, the
list of those that no test brings about. It may only shrink: what it lacks is a fault, and so is a line that was seen.
What random clients come across is judged, too, but not counted, since another run may not.
An answer that operations share without a word of their own counts once for all of them.
"""

import argparse
import collections
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import urllib.parse
import urllib.request

import jsonschema

HERE = pathlib.Path(__file__).resolve().parent
DOCUMENT = HERE.parent.parent / "docs" / "openapi.json"
NEVER_SEEN = HERE / "never_seen.txt"

# What a path that is none, or a method that it does not take, is answered with; 501 where a method is none.
ELSEWHERE = {400, 401, 403, 404, 405, 413, 414, 415, 417, 421, 431, 501, 503, 505}
REST = "rest"  # the parameter of a path that stands for any number of segments
MOST_FAULTS = 30
DEEPEST = 20000  # levels of nesting, which tests send on purpose


class Document:
    """An OpenAPI document, asked by exchanges."""

    def __init__(self, document):
        self.components = document["components"]
        self.operations = {}
        self.paths = []
        for path, item in document["paths"].items():
            self.paths.append((self.pattern(path), path.count("{"), item))
            for method, operation in item.items():
                self.operations[operation["operationId"]] = operation
        self.paths.sort(key=lambda row: row[1])
        self.validators = {}

    @staticmethod
    def pattern(path):
        text = re.escape(path).replace(rf"/\{{{REST}\}}", "(?:/.*)?")
        return re.compile(re.sub(r"\\\{\w+\\\}", "[^/]+", text) + "$")

    def item(self, path):
        for pattern, _, item in self.paths:
            if pattern.match(path):
                return item
        return None

    def resolved(self, value):
        if "$ref" not in value:
            return value
        place = {"components": self.components}
        for name in value["$ref"].removeprefix("#/").split("/"):
            place = place[name]
        return place

    def response(self, operation, status):
        found = operation["responses"].get(str(status))
        return None if found is None else self.resolved(found)

    @staticmethod
    def name_of(operation, status):
        """What is seen when an operation answers so."""
        shared = operation["responses"][str(status)].get("$ref")
        return f"any operation {status} {shared.rpartition('/')[2]}" if shared else f"{operation['operationId']} {status}"

    def complaints(self, schema, value):
        """What speaks against a value; a schema is compiled once."""
        key = json.dumps(schema, sort_keys=True)
        if key not in self.validators:
            self.validators[key] = jsonschema.Draft202012Validator({**schema, "components": self.components})
        for error in self.validators[key].iter_errors(value):
            yield "/".join(str(part) for part in error.absolute_path) + ": " + error.message[:200]


class Judge:
    def __init__(self, product, other):
        self.product, self.other = product, other
        self.seen = collections.Counter()
        self.judged = 0

    def faults(self, exchange, module, counts=True):
        """The faults of one exchange, and that its answer was seen if it `counts`."""
        path = urllib.parse.unquote(exchange["target"].split("?")[0])
        is_other = module.endswith("host_test_plugin.so") or (not module and self.product.item(path) is None)
        document = self.other if is_other else self.product
        if document is None:
            return []
        self.judged += 1
        method, status = exchange["method"], exchange["status"]
        item = document.item(path)
        if method == "OPTIONS" and status == 204:
            return [] if "Allow" in exchange["headers"] else ["OPTIONS without Allow"]
        methods = {name.upper(): operation for name, operation in (item or {}).items()}
        operation = methods.get("GET" if method == "HEAD" else method)
        if operation is None:
            return list(self.elsewhere(document, exchange))
        if counts and document.response(operation, status) is not None:
            self.seen[document.name_of(operation, status)] += 1
        return list(self.of_operation(document, operation, exchange))

    def elsewhere(self, document, exchange):
        if exchange["status"] not in ELSEWHERE:
            yield f"an operation that the document does not know is answered with {exchange['status']}"
        elif exchange["method"] != "HEAD":
            yield from self.body_faults(document, document.components["responses"]["NotFound"], exchange)

    def of_operation(self, document, operation, exchange):
        response = document.response(operation, exchange["status"])
        if response is None:
            yield f"{operation['operationId']} is not said to answer {exchange['status']}"
            return
        for name, header in response.get("headers", {}).items():
            present = {told.lower() for told in exchange["headers"]}
            if document.resolved(header).get("required") and name.lower() not in present:
                yield f"there is no {name}"
        if exchange["method"] != "HEAD":
            yield from self.body_faults(document, response, exchange)
        if exchange["status"] < 300:
            yield from self.request_faults(document, operation, exchange)

    def body_faults(self, document, response, exchange):
        content = response.get("content", {})
        if any(name.lower() == "content-encoding" for name in exchange["headers"]):
            return  # the same as without, which its own tests hold it to; a record of texts cannot hold it
        text = exchange["answer"]
        if not content:
            if text:
                yield "there is a body"
            return
        kind = {name.lower(): value for name, value in exchange["headers"].items()}.get("content-type", "")
        media = content.get(kind.split(";")[0])
        if media is None:
            yield f"the body is {kind or 'missing'}"
        elif "ndjson" in kind:
            if not all(line.startswith("{") and json.loads(line) for line in text.splitlines()):
                yield "a line is not an object"
        elif "json" in kind:
            yield from document.complaints(media["schema"], json.loads(text))

    def request_faults(self, document, operation, exchange):
        """What was taken must be what the document says may be asked."""
        parameters = [document.resolved(parameter) for parameter in operation.get("parameters", [])]
        known = {parameter["name"] for parameter in parameters if parameter["in"] == "query"} | {"access_token"}
        ignores = operation.get("x-mirn", {}).get("anyQuery", False)
        takes_any = ignores or any(parameter["name"] == REST for parameter in parameters)
        query = urllib.parse.parse_qsl(urllib.parse.urlsplit(exchange["target"]).query, keep_blank_values=True)
        for name, _ in query:
            if name not in known and not takes_any:
                yield f"the parameter {name} was taken"
        body = operation.get("requestBody")
        if body is None or not exchange["body"]:
            return
        yield from document.complaints(body["content"]["application/json"]["schema"], json.loads(exchange["body"]))


def exchanges_in(folder):
    """Each with the module that its host served, and whether it counts."""
    for path in sorted(folder.glob("*.jsonl")):
        modules, at_random = {}, set()
        for line in path.read_text(encoding="utf-8", errors="replace").splitlines():
            told = json.loads(line)
            if "module" in told:
                modules[told["port"]] = told["module"]
                at_random.discard(told["port"])
            elif "atRandom" in told:
                at_random.add(told["port"])
            else:
                yield told, modules.get(told["port"], ""), told["port"] not in at_random


def document_served(host, module):
    """What a host tells of another module."""
    with tempfile.TemporaryDirectory() as folder:
        process = subprocess.Popen([host, "--module", module, "--port", "0", "--token-file", folder + "/token"],
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        try:
            url = next(found.group(1) for found in (re.search(r"on (http://\S+)", line) for line in process.stdout)
                       if found)
            with urllib.request.urlopen(url + "/openapi.json", timeout=60) as answer:
                return json.load(answer)
        finally:
            process.terminate()
            process.wait(60)


def compare_never_seen(judge):
    """The faults of the list of what no test brings about."""
    told = {judge.product.name_of(operation, status) for operation in judge.product.operations.values()
            for status in operation["responses"]}
    unseen = told - set(judge.seen)
    listed = set(NEVER_SEEN.read_text().split("\n")) - {""} if NEVER_SEEN.exists() else set()
    print(f"{len(told) - len(unseen)} of {len(told)} answers of {len(judge.product.operations)} operations were seen; "
          f"never seen, as never_seen.txt lists:")
    for line in sorted(unseen & listed):
        print("  " + line)
    for line in sorted(unseen - listed):
        yield f"no test brings about: {line}"
    for line in sorted(listed - unseen):
        yield f"never_seen.txt still lists what was seen, or is no more: {line}"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--host")
    parser.add_argument("--other")
    parser.add_argument("--all", action="store_true")
    options = parser.parse_args()
    sys.setrecursionlimit(DEEPEST)
    other = Document(document_served(options.host, options.other)) if options.other else None
    judge = Judge(Document(json.loads(DOCUMENT.read_text(encoding="utf-8"))), other)
    faults = collections.Counter()
    for exchange, module, counts in exchanges_in(options.folder):
        for fault in judge.faults(exchange, module, counts):
            faults[f"{exchange['method']} {exchange['target'][:120]}: {fault}"] += 1
    print(f"{judge.judged} exchanges judged")
    if not judge.judged:
        sys.exit("there was nothing to judge")
    if options.all:
        faults.update(compare_never_seen(judge))
    for fault, count in faults.most_common(MOST_FAULTS):
        print(f"{count} times: {fault}")
    if faults:
        sys.exit(f"{len(faults)} faults")


if __name__ == "__main__":
    main()
