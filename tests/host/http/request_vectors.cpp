#include "host/http/request_vectors.h"

namespace host {

namespace {

const std::string kHost = "Host: localhost\r\n";
const std::string kToken = "Authorization: Bearer TOKEN\r\n";
const std::string kEnd = "\r\n";
const std::string kPath = "/api/v7/test";

std::string start(const std::string& line) { return line + "\r\n" + kHost + kToken; }

/// A whole request without a body.
std::string request(const std::string& line, const std::string& fields = "") {
  return start(line) + fields + kEnd;
}
std::string get(const std::string& fields = "") { return request("GET " + kPath + " HTTP/1.1", fields); }
std::string target(const std::string& text) { return request("GET " + text + " HTTP/1.1"); }

/// A request for the host that `field` names, if it names one.
std::string asked(const std::string& field, const std::string& line = "GET " + kPath + " HTTP/1.1") {
  return line + "\r\n" + field + kToken + kEnd;
}

std::string post(const std::string& fields, const std::string& body) {
  return request("POST " + kPath + " HTTP/1.1", fields) + body;
}
std::string chunked(const std::string& body) { return post("Transfer-Encoding: chunked\r\n", body); }

/// What must not be run when it stands behind a refused request.
const std::string kNext = get();

/// A request that may stand in a body, whose length is known: without the token.
const std::string kPlain = "GET /healthz HTTP/1.1\r\n" + kHost + kEnd;

using Rows = std::vector<RequestVector>;

/// One request that reaches the plug-in, with whatever follows it on the connection.
RequestVector accepted(const std::string& name, const std::string& bytes) {
  return {name, bytes, {200}, true, 1};
}

/// One that is refused for good, so that `kNext` behind it is not run.
RequestVector refused(const std::string& name, const std::string& bytes, unsigned status = 400) {
  return {name, bytes + kNext, {status}, false, 0};
}

/// One that is refused, and has a clear end.
RequestVector turnedDown(const std::string& name, const std::string& bytes, unsigned status) {
  return {name, bytes + kNext, {status, 200}, true, 1};
}

Rows requestLines() {
  return {
      accepted("plain", get()),
      accepted("post without a body", request("POST " + kPath + " HTTP/1.1")),
      accepted("put", request("PUT " + kPath + " HTTP/1.1")),
      accepted("delete", request("DELETE " + kPath + " HTTP/1.1")),
      accepted("head", request("HEAD " + kPath + " HTTP/1.1")),
      accepted("later minor version", request("GET " + kPath + " HTTP/1.2")),
      accepted("last minor version", request("GET " + kPath + " HTTP/1.9")),
      accepted("an empty line ahead", "\r\n" + get()),
      accepted("empty lines ahead", "\r\n\r\n\r\n" + get()),
      {"pipelined", get() + get() + get(), {200, 200, 200}, true, 3},
      {"an empty line between", get() + "\r\n" + get(), {200, 200}, true, 2},
      {"head and get", request("HEAD " + kPath + " HTTP/1.1"), {200}, true, 1},
      refused("a bare line feed ahead", "\n" + get()),
      refused("a bare return ahead", "\r" + get()),
      refused("blanks ahead", " " + get()),
      refused("lower-case method is another one, name of the version too",
              request("GET " + kPath + " http/1.1")),
      refused("no version", request("GET " + kPath)),
      refused("empty version", request("GET " + kPath + " ")),
      refused("version without a name", request("GET " + kPath + " 1.1")),
      refused("version without a slash", request("GET " + kPath + " HTTP1.1")),
      refused("version of three digits", request("GET " + kPath + " HTTP/1.10")),
      refused("version without a dot", request("GET " + kPath + " HTTP/11")),
      refused("version with a blank", request("GET " + kPath + " HTTP/ 1.1")),
      refused("version with a letter", request("GET " + kPath + " HTTP/1.x")),
      refused("blank behind the version", request("GET " + kPath + " HTTP/1.1 ")),
      refused("tab behind the version", request("GET " + kPath + " HTTP/1.1\t")),
      refused("other protocol", request("GET " + kPath + " ICY/1.1")),
      refused("version 2", request("GET " + kPath + " HTTP/2.0"), 505),
      refused("version 2 as it starts", "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", 505),
      refused("version 3", request("GET " + kPath + " HTTP/3.0"), 505),
      refused("version 0.9", request("GET " + kPath + " HTTP/0.9"), 505),
      refused("version 0.9 without a word", "GET " + kPath + "\r\n\r\n"),
      refused("two blanks behind the method", request("GET  " + kPath + " HTTP/1.1")),
      refused("two blanks behind the target", request("GET " + kPath + "  HTTP/1.1")),
      refused("tab behind the method", request("GET\t" + kPath + " HTTP/1.1")),
      refused("tab behind the target", request("GET " + kPath + "\tHTTP/1.1")),
      refused("no target", request("GET HTTP/1.1")),
      refused("no method", request(" " + kPath + " HTTP/1.1")),
      refused("method with a slash", request("G/ET " + kPath + " HTTP/1.1")),
      refused("method with a colon", request("GET: " + kPath + " HTTP/1.1")),
      refused("method in quotes", request("\"GET\" " + kPath + " HTTP/1.1")),
      refused("method not ASCII", request("G\xC3\x89T " + kPath + " HTTP/1.1")),
      refused("method with a control character", request("GE\x01T " + kPath + " HTTP/1.1")),
      refused("method too long", request(std::string(33, 'A') + " " + kPath + " HTTP/1.1"), 501),
      turnedDown("method of the longest kind", request(std::string(32, 'A') + " " + kPath + " HTTP/1.1"),
                 405),
      turnedDown("method in lower case", request("get " + kPath + " HTTP/1.1"), 405),
      turnedDown("unknown method", request("BREW " + kPath + " HTTP/1.1"), 405),
      refused("no HTTP", "this is no HTTP\r\n\r\n"),
      refused("encryption begun", std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xFC\x03\x03\r\n\r\n", 15)),
  };
}

Rows targets() {
  return {
      accepted("whole URI", target("http://localhost" + kPath)),
      accepted("whole URI with port", target("http://localhost:8080" + kPath)),
      accepted("whole URI by address", target("http://127.0.0.1" + kPath)),
      accepted("whole URI by address of six", target("http://[::1]:80" + kPath)),
      accepted("whole URI in any case", target("HTTP://LOCALHOST" + kPath)),
      accepted("whole URI with a query", target("http://localhost" + kPath + "?a=b")),
      accepted("the URI's host counts",
               asked("Host: elsewhere.example\r\n", "GET http://localhost" + kPath + " HTTP/1.1")),
      accepted("query", target(kPath + "?a=b&c=d")),
      accepted("encoded", target("/api/v7/%74est")),
      accepted("brackets in the query", target(kPath + "?a[0]={1}|2^3`4")),
      accepted("question mark in the query", target(kPath + "?a=b?c=/d")),
      accepted("plus and marks", target(kPath + "/a+b;c=d,e!f$g'(h)*i@j:k~l_m.n-o")),
      refused("fragment", target(kPath + "#part")),
      refused("fragment in the query", target(kPath + "?a=b#part")),
      refused("blank in the target", target(kPath + "/a b")),
      refused("tab in the target", target(kPath + "/a\tb")),
      refused("null in the target", target(kPath + std::string("/a\0b", 4))),
      refused("delete in the target", target(kPath + "/a\x7F")),
      refused("not ASCII in the target", target(kPath + "/\xC3\xBC")),
      refused("quote in the target", target(kPath + "/\"a\"")),
      refused("angles in the target", target(kPath + "/<a>")),
      refused("backslash in the target", target("/api\\v7\\test")),
      refused("bare return in the target", target(kPath + "\r/a")),
      {"asterisk", request("OPTIONS * HTTP/1.1"), {204}, true, 0},
      {"asterisk without the token", "OPTIONS * HTTP/1.1\r\n" + kHost + kEnd, {204}, true, 0},
      {"asterisk and what comes behind", request("OPTIONS * HTTP/1.1") + kNext, {204, 200}, true, 1},
      {"methods of a path", request("OPTIONS " + kPath + " HTTP/1.1"), {204}, true, 0},
      refused("asterisk elsewhere", "OPTIONS * HTTP/1.1\r\nHost: elsewhere.example\r\n\r\n", 421),
      refused("asterisk for a get", target("*")),
      refused("asterisk and a path", request("OPTIONS *" + kPath + " HTTP/1.1")),
      refused("path without a slash", target("api/v7/test")),
      refused("query alone", target("?a=b")),
      refused("tunnel", request("CONNECT localhost:80 HTTP/1.1")),
      refused("authority for a get", target("localhost:80")),
      refused("whole URI elsewhere", target("http://elsewhere.example" + kPath), 421),
      refused("whole URI encrypted", target("https://localhost" + kPath), 421),
      refused("whole URI of another kind", target("ftp://localhost" + kPath), 421),
      refused("whole URI with a user", target("http://user@localhost" + kPath)),
      refused("whole URI with a user and a secret", target("http://user:x@localhost" + kPath)),
      refused("whole URI without a host", target("http://" + kPath)),
      refused("whole URI with a port alone", target("http://:80" + kPath)),
      refused("whole URI with a wrong port", target("http://localhost:x" + kPath)),
      refused("whole URI with one slash", target("http:/localhost" + kPath)),
      refused("whole URI without a scheme", target("://localhost" + kPath)),
      turnedDown("two slashes ahead are no host", target("//localhost" + kPath), 400),
      turnedDown("empty segment", target("/api//v7/test"), 400),
      turnedDown("broken encoding", target(kPath + "/%zz"), 400),
      turnedDown("encoded slash", target("/api/v7%2Ftest"), 400),
      turnedDown("longest target", target("/" + std::string(8191, 'a')), 404),
      turnedDown("longest target of the longest method",
                 request(std::string(32, 'A') + " /" + std::string(8191, 'a') + " HTTP/1.1"), 404),
      refused("target one too long", target("/" + std::string(8192, 'a')), 414),
      refused("target far too long", target("/" + std::string(20000, 'a')), 414),
  };
}

Rows hosts() {
  return {
      accepted("host with a port", asked("Host: localhost:8080\r\n")),
      accepted("host with any port", asked("Host: localhost:1\r\n")),
      accepted("host with an empty port", asked("Host: localhost:\r\n")),
      accepted("host in any case", asked("hOST: LocalHost\r\n")),
      accepted("host by address", asked("Host: 127.0.0.1\r\n")),
      accepted("host by address of six", asked("Host: [::1]:8080\r\n")),
      accepted("host from the root", asked("Host: localhost.\r\n")),
      accepted("host between blanks", asked("Host: \t localhost \t\r\n")),
      accepted("host without blank", asked("Host:localhost\r\n")),
      accepted("host by another name of ours", asked("Host: storage.example\r\n")),
      refused("no host", asked("")),
      refused("empty host", asked("Host:\r\n")),
      refused("blank host", asked("Host:  \r\n")),
      refused("host twice", asked(kHost + kHost)),
      refused("two hosts", asked(kHost + "Host: elsewhere.example\r\n")),
      refused("two hosts, the other order", asked("Host: elsewhere.example\r\n" + kHost)),
      refused("host twice in different case", asked(kHost + "host: localhost\r\n")),
      refused("list of hosts", asked("Host: localhost, localhost\r\n")),
      refused("host with a blank", asked("Host: local host\r\n")),
      refused("host with a path", asked("Host: localhost/\r\n")),
      refused("host with a query", asked("Host: localhost?\r\n")),
      refused("host with a user", asked("Host: user@localhost\r\n")),
      refused("host with a scheme", asked("Host: http://localhost\r\n")),
      refused("host with a wrong port", asked("Host: localhost:port\r\n")),
      refused("host with too large a port", asked("Host: localhost:65536\r\n")),
      refused("host with a signed port", asked("Host: localhost:-1\r\n")),
      refused("host encoded", asked("Host: %6Cocalhost\r\n")),
      refused("host not ASCII", asked("Host: l\xC3\xB6"
                                      "calhost\r\n")),
      refused("host with open bracket", asked("Host: [::1\r\n")),
      refused("host elsewhere", asked("Host: elsewhere.example\r\n"), 421),
      refused("host beneath ours", asked("Host: a.localhost\r\n"), 421),
      refused("host that starts as ours", asked("Host: localhost.elsewhere.example\r\n"), 421),
      refused("host of a foreign address", asked("Host: 192.0.2.1\r\n"), 421),
      refused("host of any address", asked("Host: 0.0.0.0\r\n"), 421),
      refused("no host for the whole URI", asked("", "GET http://localhost" + kPath + " HTTP/1.1")),
      refused("broken host for the whole URI",
              asked("Host: a b\r\n", "GET http://localhost" + kPath + " HTTP/1.1")),
      refused("host elsewhere, known to anyone", "GET /healthz HTTP/1.1\r\nHost: elsewhere.example\r\n\r\n",
              421),
      refused("host elsewhere, without the token",
              "GET " + kPath + " HTTP/1.1\r\nHost: elsewhere.example\r\n\r\n", 421),
      {"old client without a host", "GET " + kPath + " HTTP/1.0\r\n" + kToken + kEnd, {200}, false, 1},
      {"old client elsewhere",
       asked("Host: elsewhere.example\r\n", "GET " + kPath + " HTTP/1.0") + kNext,
       {421},
       false,
       0},
  };
}

Rows fields() {
  return {
      accepted("field without a value", get("X-Nothing:\r\n")),
      accepted("field with a value not ASCII", get("X-Text: \xC3\xBC\r\n")),
      accepted("field with a tab", get("X-Text: a\tb\r\n")),
      accepted("field twice", get("X-Text: a\r\nX-Text: b\r\n")),
      accepted("field with colons", get("X-Text: a:b::c\r\n")),
      accepted("forwarded",
               get("X-Forwarded-Host: elsewhere.example\r\nForwarded: host=elsewhere.example\r\n")),
      accepted("method to override", get("X-HTTP-Method-Override: DELETE\r\n")),
      accepted("upgrade", get("Connection: Upgrade\r\nUpgrade: websocket\r\n")),
      accepted("upgrade to version 2",
               get("Connection: Upgrade, HTTP2-Settings\r\nUpgrade: h2c\r\nHTTP2-Settings: AA\r\n")),
      accepted("most fields", get([] {
                 std::string text;
                 for (int i = 0; i < 98; ++i) text += "X-" + std::to_string(i) + ": 1\r\n";
                 return text;
               }())),
      accepted("longest field", get("X: " + std::string(8192 - 3, 'x') + "\r\n")),
      refused("one field too many", get([] {
                std::string text;
                for (int i = 0; i < 99; ++i) text += "X-" + std::to_string(i) + ": 1\r\n";
                return text;
              }()),
              431),
      refused("field one too long", get("X: " + std::string(8192 - 2, 'x') + "\r\n"), 431),
      refused("name too long", get(std::string(8192, 'x') + ": 1\r\n"), 431),
      refused("header too large", get([] {
                std::string text;
                for (int i = 0; i < 5; ++i) text += "X: " + std::string(8000, 'x') + "\r\n";
                return text;
              }()),
              431),
      refused("blank ahead of the colon", get("X-Text : a\r\n")),
      refused("tab ahead of the colon", get("X-Text\t: a\r\n")),
      refused("blank ahead of the colon of the length", post("Content-Length : 2\r\n", "17")),
      refused("blank in a name", get("X Text: a\r\n")),
      refused("no name", get(": a\r\n")),
      refused("no colon", get("X-Text\r\n")),
      refused("continued line", get("X-Text: a\r\n b\r\n")),
      refused("continued line by a tab", get("X-Text: a\r\n\tb\r\n")),
      refused("continued line of blanks", get("X-Text: a\r\n \r\n")),
      refused("continued coding", post("Transfer-Encoding:\r\n chunked\r\n", "0\r\n\r\n")),
      refused("first field starts with a blank", "GET " + kPath + " HTTP/1.1\r\n " + kHost + kToken + kEnd),
      refused("bare line feed behind the request line",
              "GET " + kPath + " HTTP/1.1\n" + kHost + kToken + kEnd),
      refused("bare line feed behind a field", get("X-Text: a\n")),
      refused("bare line feed in a field", get("X-Text: a\nX-More: b\r\n")),
      refused("bare line feeds at the end", start("GET " + kPath + " HTTP/1.1") + "X-Text: a\n\n"),
      refused("bare line feed for the empty line", start("GET " + kPath + " HTTP/1.1") + "\n"),
      refused("bare return in a field", get("X-Text: a\rb\r\n")),
      refused("two returns", get("X-Text: a\r\r\n")),
      refused("null in a field", get(std::string("X-Text: a\0b\r\n", 13))),
      refused("null in a name", get(std::string("X-\0Text: a\r\n", 12))),
      refused("bell in a field", get("X-Text: a\ab\r\n")),
      refused("escape in a field", get("X-Text: \x1B[31m\r\n")),
      refused("delete in a field", get("X-Text: a\x7F\r\n")),
      refused("name not ASCII", get("X-T\xC3\xA4xt: a\r\n")),
      refused("name with brackets", get("X[Text]: a\r\n")),
      refused("authorization twice", get(kToken)),
      refused("two authorizations", get("Authorization: Bearer other\r\n")),
      refused(
          "type twice",
          post("Content-Type: application/json\r\nContent-Type: application/json\r\nContent-Length: 2\r\n",
               "17")),
      refused(
          "two types",
          post("Content-Type: application/json\r\nContent-Type: text/plain\r\nContent-Length: 2\r\n", "17")),
      refused("broken connection words", get("Connection: a b c\r\n")),
      turnedDown("without the token", "GET " + kPath + " HTTP/1.1\r\n" + kHost + kEnd, 401),
  };
}

Rows bodies() {
  return {
      accepted("body", post("Content-Length: 2\r\n", "17")),
      accepted("body with its type", post("Content-Length: 2\r\nContent-Type: application/json\r\n", "17")),
      accepted("empty body", post("Content-Length: 0\r\n", "")),
      accepted("length with zeros ahead", post("Content-Length: 0002\r\n", "17")),
      accepted("body of a get", request("GET " + kPath + " HTTP/1.1", "Content-Length: 2\r\n") + "17"),
      {"body and the next", post("Content-Length: 2\r\n", "17") + kNext, {200, 200}, true, 2},
      {"body with an empty line behind",
       post("Content-Length: 2\r\n", "17") + "\r\n" + kNext,
       {200, 200},
       true,
       2},
      {"a body that looks like a request",
       post("Content-Length: " + std::to_string(kPlain.size()) + "\r\n", kPlain),
       {400},
       true,
       0},
      {"a longer body than told", post("Content-Length: 2\r\n", "17{}") + kNext, {200, 400}, false, 1},
      refused("length with a plus", post("Content-Length: +2\r\n", "17")),
      refused("length with a minus", post("Content-Length: -2\r\n", "17")),
      refused("length in hexadecimal", post("Content-Length: 0x2\r\n", "17")),
      refused("length with a blank", post("Content-Length: 2 2\r\n", "17")),
      refused("length with a fraction", post("Content-Length: 2.0\r\n", "17")),
      refused("length with letters", post("Content-Length: two\r\n", "17")),
      refused("no length", post("Content-Length:\r\n", "17")),
      refused("list of lengths", post("Content-Length: 2, 2\r\n", "17")),
      refused("list of different lengths", post("Content-Length: 2, 3\r\n", "17")),
      refused("length twice", post("Content-Length: 2\r\nContent-Length: 2\r\n", "17")),
      refused("two lengths", post("Content-Length: 2\r\nContent-Length: 0\r\n", "17")),
      refused("two lengths, the other order", post("Content-Length: 0\r\nContent-Length: 2\r\n", "17")),
      refused("length beyond 64 bits", post("Content-Length: 18446744073709551618\r\n", "17")),
      refused("length beyond the bound", post("Content-Length: 1048577\r\n", ""), 413),
      refused("encoded body", post("Content-Length: 2\r\nContent-Encoding: gzip\r\n", "17"), 415),
      refused("body encoded as itself", post("Content-Length: 2\r\nContent-Encoding: identity\r\n", "17"),
              415),
      refused("encoded without a body", get("Content-Encoding: br\r\n"), 415),
      refused("body of another type", post("Content-Length: 2\r\nContent-Type: text/plain\r\n", "17"), 415),
      refused("body without the token",
              "POST " + kPath + " HTTP/1.1\r\n" + kHost + "Content-Length: 2\r\n\r\n17", 401),
      {"a client that waits", post("Content-Length: 2\r\nExpect: 100-continue\r\n", "17"), {200}, true, 1},
      {"an old client does not wait",
       "POST " + kPath + " HTTP/1.0\r\n" + kHost + kToken +
           "Expect: 100-continue\r\nContent-Length: 2\r\n\r\n17",
       {200},
       false,
       1},
      refused("other expectation", post("Content-Length: 2\r\nExpect: the-best\r\n", "17"), 417),
      refused("expectations", post("Content-Length: 2\r\nExpect: 100-continue, the-best\r\n", "17"), 417),
  };
}

Rows codings() {
  const std::string body = "2\r\n17\r\n0\r\n\r\n";
  return {
      accepted("chunked", chunked(body)),
      accepted("chunked in any case", post("Transfer-Encoding: CHUNKED\r\n", body)),
      accepted("chunks", chunked("1\r\n1\r\n1\r\n7\r\n0\r\n\r\n")),
      accepted("chunked and empty", chunked("0\r\n\r\n")),
      accepted("chunk size with zeros", chunked("0002\r\n17\r\n000\r\n\r\n")),
      accepted("chunk size in hexadecimal", chunked("A\r\n[1,2,3,44]\r\n0\r\n\r\n")),
      accepted("chunk with an extension", chunked("2;name=value\r\n17\r\n0\r\n\r\n")),
      accepted("chunk with a quoted extension", chunked("2;name=\"a;b\"\r\n17\r\n0\r\n\r\n")),
      accepted("chunk with a trailer", chunked("2\r\n17\r\n0\r\nX-Text: a\r\n\r\n")),
      {"chunked and the next", chunked(body) + kNext, {200, 200}, true, 2},
      refused("coding with a length", post("Transfer-Encoding: chunked\r\nContent-Length: 2\r\n", body)),
      refused("length with a coding", post("Content-Length: 2\r\nTransfer-Encoding: chunked\r\n", body)),
      refused("coding with length 0", post("Content-Length: 0\r\nTransfer-Encoding: chunked\r\n", body)),
      refused("coding twice", post("Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n", body)),
      refused("coding in a list twice", post("Transfer-Encoding: chunked, chunked\r\n", body)),
      refused("coding behind another", post("Transfer-Encoding: gzip, chunked\r\n", body)),
      refused("coding ahead of another", post("Transfer-Encoding: chunked, gzip\r\n", body)),
      refused("coding in two fields",
              post("Transfer-Encoding: gzip\r\nTransfer-Encoding: chunked\r\n", body)),
      refused("coding with a parameter", post("Transfer-Encoding: chunked;a=b\r\n", body)),
      refused("coding with a comma", post("Transfer-Encoding: chunked,\r\n", body)),
      refused("coding behind a comma", post("Transfer-Encoding: ,chunked\r\n", body)),
      refused("coding in quotes", post("Transfer-Encoding: \"chunked\"\r\n", body)),
      refused("coding identity", post("Transfer-Encoding: identity\r\n", body)),
      refused("coding identity and chunked", post("Transfer-Encoding: identity, chunked\r\n", body)),
      refused("coding gzip", post("Transfer-Encoding: gzip\r\n", body)),
      refused("coding nearly chunked", post("Transfer-Encoding: xchunked\r\n", body)),
      refused("coding with a control character", post("Transfer-Encoding: \x0B"
                                                      "chunked\r\n",
                                                      body)),
      refused("coding empty", post("Transfer-Encoding:\r\n", body)),
      refused("coding with a blank in its name", post("Transfer Encoding: chunked\r\n", body)),
      refused("coding with a blank ahead of the colon", post("Transfer-Encoding : chunked\r\n", body)),
      refused("coding of an old client", "POST " + kPath + " HTTP/1.0\r\n" + kHost + kToken +
                                             "Transfer-Encoding: chunked\r\n\r\n" + body),
      refused("coding of an old client that stays", "POST " + kPath +
                                                        " HTTP/1.0\r\nConnection: keep-alive\r\n" + kHost +
                                                        kToken + "Transfer-Encoding: chunked\r\n\r\n" + body),
      refused("chunk size missing", chunked("\r\n17\r\n0\r\n\r\n")),
      refused("chunk size no number", chunked("x\r\n17\r\n0\r\n\r\n")),
      refused("chunk size with a sign", chunked("+2\r\n17\r\n0\r\n\r\n")),
      refused("chunk size negative", chunked("-2\r\n17\r\n0\r\n\r\n")),
      refused("chunk size with a prefix", chunked("0x2\r\n17\r\n0\r\n\r\n")),
      refused("chunk size behind a blank", chunked(" 2\r\n17\r\n0\r\n\r\n")),
      refused("chunk size beyond 64 bits", chunked("10000000000000002\r\n17\r\n0\r\n\r\n")),
      refused("chunk size of 64 bits", chunked("FFFFFFFFFFFFFFFF\r\n17\r\n0\r\n\r\n"), 413),
      refused("chunk beyond the bound", chunked("100001\r\n17\r\n0\r\n\r\n"), 413),
      refused("bare line feed behind a chunk size", chunked("2\n17\r\n0\r\n\r\n")),
      refused("bare line feed in an extension", chunked("2;a\n17\r\n0\r\n\r\n")),
      refused("bare line feed behind a chunk", chunked("2\r\n17\n0\r\n\r\n")),
      refused("bare line feed at the end", chunked("2\r\n17\r\n0\n\n")),
      refused("bare return behind a chunk size", chunked("2\r17\r\n0\r\n\r\n")),
      refused("chunk longer than told", chunked("1\r\n17\r\n0\r\n\r\n")),
      refused("chunk shorter than told", chunked("3\r\n17\r\n0\r\n\r\n")),
      refused("chunk with a broken extension", chunked("2;\"a\r\n17\r\n0\r\n\r\n")),
      refused("chunk with a line without end", chunked("2;" + std::string(40000, 'a'))),
      refused("trailer without a colon", chunked("2\r\n17\r\n0\r\nX-Text\r\n\r\n")),
      accepted("trailer continued", chunked("2\r\n17\r\n0\r\nX-Text: a\r\n b\r\n\r\n")),
      refused("trailer with a bare line feed", chunked("2\r\n17\r\n0\r\nX-Text: a\nX: b\r\n\r\n")),
      refused("trailer with a length", chunked("2\r\n17\r\n0\r\nContent-Length: 5\r\n\r\n")),
      refused("trailer with a coding", chunked("2\r\n17\r\n0\r\nTransfer-Encoding: chunked\r\n\r\n")),
      refused("trailer too long", chunked("2\r\n17\r\n0\r\nX: " + std::string(40000, 'a'))),
  };
}

Rows connections() {
  return {
      {"close", get("Connection: close\r\n") + kNext, {200}, false, 1},
      {"close among others", get("Connection: keep-alive, x, Close\r\n") + kNext, {200}, false, 1},
      {"close in a second field", get("Connection: x\r\nConnection: close\r\n") + kNext, {200}, false, 1},
      {"old client", "GET " + kPath + " HTTP/1.0\r\n" + kHost + kToken + kEnd + kNext, {200}, false, 1},
      {"old client that stays",
       "GET " + kPath + " HTTP/1.0\r\n" + kHost + kToken + "Connection: keep-alive\r\n\r\n",
       {200},
       true,
       1},
      {"smuggled behind a coding that is none",
       post("Transfer-Encoding: x\r\nContent-Length: 4\r\n", "0\r\n\r\n" + kNext),
       {400},
       false,
       0},
      {"smuggled behind a length of two readings",
       post("Content-Length: 0\r\nContent-length: " + std::to_string(kPlain.size()) + "\r\n", kPlain),
       {400},
       false,
       0},
      {"smuggled behind a refused body",
       post("Content-Length: 2\r\nContent-Type: text/plain\r\n", "17" + kNext),
       {415},
       false,
       0},
      {"smuggled in an unread body",
       "POST /nothing HTTP/1.1\r\n" + kHost + "Content-Length: " + std::to_string(kPlain.size()) +
           "\r\n\r\n" + kPlain,
       {404},
       false,
       0},
      {"smuggled in a body that is too large", post("Content-Length: 2000000\r\n", kNext), {413}, false, 0},
  };
}

}  // namespace

const std::vector<RequestVector>& requestVectors() {
  static const std::vector<RequestVector> kVectors = [] {
    Rows all;
    for (const Rows& rows :
         {requestLines(), targets(), hosts(), fields(), bodies(), codings(), connections()}) {
      all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
  }();
  return kVectors;
}

}  // namespace host
