#!/usr/bin/env python3
"""Asks a running host for the files of its console, as browsers do, and as nobody should.

usage: files_test.py HOST MODULE
"""

import gzip
import http.client
import pathlib
import re
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "system"))
from local_host import PATIENCE, LocalHost, record_exchange  # noqa: E402

PROGRAM, MODULE = sys.argv[1:3]
FILES = {"/": "text/html", "/console/app.js": "text/javascript", "/console/app.css": "text/css",
         "/console/icon.svg": "image/svg+xml"}
POLICY = ("default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; "
          "base-uri 'none'; form-action 'none'; frame-ancestors 'none'")
ELSEWHERE = [
    "/index.html", "/console", "/console/index.html", "/console/app.js.map", "/console/nothing", "/console/APP.JS",
    "/console/../token", "/console/../console/app.js", "/console/%2e%2e/token", "/console/.", "/console/..", "/..",
    "/console/app.js/more", "/console/app.js%00", "/console/..%5ctoken",
]
MALFORMED = ["/console/", "//", "/console//app.js", "/console/..%2ftoken", "/console/%2fetc%2fpasswd", "/console/%ff"]


class Files(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.host = LocalHost(PROGRAM, MODULE, pathlib.Path(cls.scratch.name)).await_serving()

    @classmethod
    def tearDownClass(cls):
        cls.host.stop()
        cls.scratch.cleanup()

    def get(self, target, fields=None, method="GET"):
        connection = http.client.HTTPConnection("127.0.0.1", self.host.port, timeout=PATIENCE)
        try:
            connection.putrequest(method, target, skip_accept_encoding=True)
            for name, value in (fields or {}).items():
                connection.putheader(name, value)
            connection.endheaders()
            answer = connection.getresponse()
            body = answer.read()
            if not (fields or {}).get("Accept-Encoding") and target.isascii():
                record_exchange(self.host.port, MODULE, method, target, None, answer, body.decode())
            return answer, body
        finally:
            connection.close()

    def test_they_are_there_for_everybody_with_strict_headers(self):
        for target, media in FILES.items():
            with self.subTest(target):
                answer, body = self.get(target)
                self.assertEqual(answer.status, 200)
                self.assertEqual(answer.headers["Content-Type"], media + "; charset=utf-8")
                self.assertEqual(answer.headers["Content-Security-Policy"], POLICY)
                self.assertEqual(answer.headers["X-Content-Type-Options"], "nosniff")
                self.assertEqual(answer.headers["Cache-Control"], "no-cache")
                self.assertEqual(answer.headers["Referrer-Policy"], "no-referrer")
                self.assertIsNone(answer.headers["Set-Cookie"])
                self.assertEqual(int(answer.headers["Content-Length"]), len(body))
                self.assertGreater(len(body), 0)

    def test_the_page_names_each_other_file_relative_to_itself(self):
        page = self.get("/")[1].decode()
        named = set(re.findall(r'(?:src|href)="([^"]+)"', page))
        self.assertLessEqual({target[1:] for target in FILES if target != "/"}, named)
        self.assertEqual([each for each in named if each.startswith("/") or ":" in each], [])

    def test_a_head_is_the_same_without_the_bytes(self):
        for target in FILES:
            with self.subTest(target):
                whole, head = self.get(target)[0], self.get(target, method="HEAD")
                self.assertEqual(head[0].status, 200)
                self.assertEqual(head[1], b"")
                drop = {"Date"}
                self.assertEqual([each for each in head[0].getheaders() if each[0] not in drop],
                                 [each for each in whole.getheaders() if each[0] not in drop])

    def test_who_has_it_is_told_that_it_is_still_good(self):
        for target in FILES:
            with self.subTest(target):
                tag = self.get(target)[0].headers["ETag"]
                for known in (tag, "W/" + tag, '"other", ' + tag, "*"):
                    answer, body = self.get(target, {"If-None-Match": known})
                    self.assertEqual((answer.status, body), (304, b""), known)
                    self.assertEqual(answer.headers["ETag"], tag)
                    self.assertEqual(answer.headers["Content-Security-Policy"], POLICY)
                self.assertEqual(self.get(target, {"If-None-Match": '"other"'})[0].status, 200)

    def test_large_files_are_packed_for_who_takes_that(self):
        plain, bytes_of_it = self.get("/console/app.js")
        packed, small = self.get("/console/app.js", {"Accept-Encoding": "gzip, deflate"})
        self.assertEqual(packed.headers["Content-Encoding"], "gzip")
        self.assertEqual(gzip.decompress(small), bytes_of_it)
        self.assertLess(len(small), len(bytes_of_it))
        self.assertNotEqual(packed.headers["ETag"], plain.headers["ETag"])
        self.assertEqual(packed.headers["Vary"], "Accept-Encoding")
        tag = packed.headers["ETag"]
        self.assertEqual(self.get("/console/app.js", {"Accept-Encoding": "gzip", "If-None-Match": tag})[0].status, 304)
        self.assertEqual(self.get("/console/app.js", {"If-None-Match": tag})[0].status, 200)
        for refused in ("identity;q=0", "br, identity;q=0"):
            self.assertEqual(self.get("/", {"Accept-Encoding": refused})[0].status, 200)

    def test_no_path_leads_anywhere_else(self):
        for target in ELSEWHERE:
            with self.subTest(target):
                self.assertEqual(self.get(target)[0].status, 404)
        for target in MALFORMED:
            with self.subTest(target):
                self.assertEqual(self.get(target)[0].status, 400)

    def test_they_are_only_read(self):
        for target in FILES:
            for method in ("POST", "PUT", "DELETE"):
                answer, _ = self.get(target, {"Content-Length": "0"}, method)
                self.assertEqual(answer.status, 405)
                self.assertEqual(answer.headers["Allow"], "GET, HEAD, OPTIONS")

    def test_the_interface_stands_beside_them(self):
        self.assertEqual(self.get("/api/v7")[0].status, 401)
        self.assertEqual(self.get("/api/v7", {"Authorization": "Bearer " + self.host.token()})[0].status, 200)
        self.assertEqual(self.get("/api")[0].status, 401)
        self.assertEqual(self.get("/healthz")[0].status, 200)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
