#!/usr/bin/env python3
"""Shows that judge_exchanges.py finds what it is there for."""

import json
import pathlib
import tempfile
import unittest

from judge_exchanges import Document, Judge, exchanges_in

PROBLEM = {"schema": {"type": "object", "required": ["status"]}}
NOT_FOUND = {"description": "", "content": {"application/problem+json": PROBLEM}}
DOCUMENT = {
    "components": {"responses": {"NotFound": NOT_FOUND}, "schemas": {"A": {"type": "object", "required": ["id"]}}},
    "paths": {
        "/a/{aId}": {"put": {
            "operationId": "setA",
            "parameters": [{"name": "dry", "in": "query", "schema": {"type": "string"}}],
            "requestBody": {"content": {"application/json": {"schema": {"required": ["to"]}}}},
            "responses": {
                "200": {"description": "", "content": {"application/json": {
                    "schema": {"$ref": "#/components/schemas/A"}}}},
                "204": {"description": ""},
                "404": {"$ref": "#/components/responses/NotFound"},
                "503": {"description": "", "headers": {"Retry-After": {"required": True}},
                        "content": {"application/problem+json": PROBLEM}}}}},
        "/a": {"get": {"operationId": "listA", "responses": {"200": {"description": "", "content": {
            "application/json": {"schema": {"type": "array", "items": {"$ref": "#/components/schemas/A"}}}}}}}},
    },
}
JSON = {"Content-Type": "application/json"}
PROBLEM_TYPE = {"Content-Type": "application/problem+json"}


def exchange(method, target, status, answer=None, headers=JSON, body=""):
    return {"method": method, "target": target, "status": status, "headers": headers, "body": body,
            "answer": "" if answer is None else json.dumps(answer)}


class JudgeExchangesTest(unittest.TestCase):
    def setUp(self):
        self.judge = Judge(Document(DOCUMENT), None)

    def faults(self, *arguments, **named):
        return self.judge.faults(exchange(*arguments, **named), "mirn_plugin.so")

    def test_what_the_document_tells_of_passes(self):
        for told in (exchange("PUT", "/a/7?dry=true&access_token=t", 200, {"id": 1}, body='{"to": 1}'),
                     exchange("PUT", "/a/7", 204, headers={}),
                     exchange("PUT", "/a/7", 404, {"status": 404}, PROBLEM_TYPE, body="no JSON at all"),
                     exchange("PUT", "/a/7", 503, {"status": 503}, {**PROBLEM_TYPE, "retry-after": "2"}),
                     exchange("GET", "/a", 200, [{"id": 1}]),
                     exchange("HEAD", "/a", 200, headers=JSON),
                     exchange("GET", "/a", 200, "packed", {**JSON, "Content-Encoding": "gzip"}),
                     exchange("OPTIONS", "/a", 204, headers={"Allow": "GET"}),
                     exchange("GET", "/b", 404, {"status": 404}, PROBLEM_TYPE),
                     exchange("get", "/a", 405, {"status": 405}, PROBLEM_TYPE),
                     exchange("DELETE", "/a", 405, {"status": 405}, PROBLEM_TYPE)):
            with self.subTest(told):
                self.assertEqual([], self.judge.faults(told, "mirn_plugin.so"))

    def test_an_operation_that_is_not_told_fails(self):
        self.assertEqual(1, len(self.faults("GET", "/b", 200, {})))
        self.assertEqual(1, len(self.faults("POST", "/a", 204)))

    def test_a_status_that_is_not_told_fails(self):
        self.assertEqual(["setA is not said to answer 409"], self.faults("PUT", "/a/7", 409, {"status": 409}))

    def test_a_body_that_does_not_fit_fails(self):
        for told in (exchange("PUT", "/a/7", 200, {}), exchange("GET", "/a", 200, [{}]),
                     exchange("PUT", "/a/7", 200, {"id": 1}, {"Content-Type": "text/plain"}),
                     exchange("PUT", "/a/7", 204, {}), exchange("GET", "/b", 404, {}, PROBLEM_TYPE),
                     exchange("GET", "/b", 404, {"status": 404}, JSON)):
            with self.subTest(told):
                self.assertEqual(1, len(self.judge.faults(told, "mirn_plugin.so")))

    def test_a_field_of_the_header_that_is_missing_fails(self):
        self.assertEqual(["there is no Retry-After"], self.faults("PUT", "/a/7", 503, {"status": 503}, PROBLEM_TYPE))
        self.assertEqual(["OPTIONS without Allow"], self.faults("OPTIONS", "/a", 204, headers={}))

    def test_what_was_taken_though_the_document_does_not_tell_of_it_fails(self):
        self.assertEqual(["the parameter wet was taken"], self.faults("PUT", "/a/7?wet=1", 204, headers={}))
        self.assertEqual(1, len(self.faults("PUT", "/a/7", 204, headers={}, body="{}")))

    def test_statuses_are_counted_by_operation(self):
        self.faults("GET", "/a", 200, [])
        self.faults("PUT", "/a/7", 404, {"status": 404}, PROBLEM_TYPE)
        self.assertEqual({"listA 200": 1, "any operation 404 NotFound": 1}, dict(self.judge.seen))

    def test_what_random_clients_come_across_is_judged_and_not_counted(self):
        lines = [{"port": 1, "module": "mirn_plugin.so"}, {"port": 1, "atRandom": True},
                 {"port": 1, **exchange("GET", "/a", 200, [{}])}, {"port": 2, **exchange("PUT", "/a/7", 204, headers={})},
                 {"port": 1, "module": "mirn_plugin.so"}, {"port": 1, **exchange("PUT", "/a/7", 204, headers={})}]
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "1.jsonl").write_text("".join(json.dumps(line) + "\n" for line in lines))
            faults = [self.judge.faults(*told) for told in exchanges_in(pathlib.Path(folder))]
        self.assertEqual([1, 0, 0], [len(each) for each in faults])
        self.assertEqual({"setA 204": 2}, dict(self.judge.seen))

    def test_hosts_of_another_plugin_are_judged_by_their_own_document(self):
        other = Document({"components": DOCUMENT["components"], "paths": {"/c/{rest}": {"get": {
            "operationId": "GET_c", "parameters": [{"name": "rest", "in": "path"}],
            "responses": {"200": {"content": {"application/json": {"schema": {}}}}}}}}})
        judge = Judge(Document(DOCUMENT), other)
        module = "lib/host_test_plugin.so"
        for target in ("/c", "/c/d", "/c/d/e?any=1"):
            self.assertEqual([], judge.faults(exchange("GET", target, 200, {}), module), target)
        self.assertEqual(1, len(judge.faults(exchange("GET", "/a", 200, []), module)))
        self.assertEqual([], judge.faults(exchange("GET", "/c", 200, {}), ""), "a host that nobody told of")
        self.assertNotIn("listA 200", judge.seen)


if __name__ == "__main__":
    unittest.main()
