#include <boost/json/parse.hpp>
#include <sstream>

#include "host/service/test_host.h"
#include "support/by_name.h"

namespace host {

namespace {

namespace http = boost::beast::http;

class HostRequestsTest : public TestHost {
 protected:
  void SetUp() override { serve(); }
};

TEST_F(HostRequestsTest, ThePluginIsHandedTheWholeRequest) {
  const auto answer = send("PUT", "/api/v7/test/things/%41b/rest?time=12&name=a%20b&flag",
                           R"({"size":"7","list":[1,-2,0.5,true,null],"text":"ü"})");
  EXPECT_EQ(answer.result_int(), 200U);
  EXPECT_EQ(answer[http::field::content_type], "application/json");
  EXPECT_EQ(answer[http::field::cache_control], "no-store");
  EXPECT_EQ(answer["X-Content-Type-Options"], "nosniff");
  EXPECT_EQ(answer["Content-Security-Policy"], "default-src 'none'; frame-ancestors 'none'");
  EXPECT_EQ(answer["Access-Control-Allow-Origin"], "") << "no page of another origin may read it";
  EXPECT_EQ(bodyOf(answer), boost::json::parse(R"({
    "path": "test/things", "method": 3, "segments": ["Ab", "rest"],
    "parameters": {"flag": "", "name": "a b", "time": "12"},
    "body": {"list": [1, -2, 0.5, true, null], "size": "7", "text": "ü"}, "bodyAlternative": 6})"));
}

TEST_F(HostRequestsTest, APluginThatCannotRehearseIsNotAskedWhatItWouldDo) {
  const std::string before = trace();
  const auto answer = send("PUT", "/api/v7/test?dryRun=true", "{}");
  EXPECT_EQ(answer.result_int(), 422U) << answer.body();
  EXPECT_EQ(trace(), before);
  EXPECT_EQ(send("PUT", "/api/v7/test?dryRun=false", "{}").result_int(), 200U);
}

TEST_F(HostRequestsTest, APluginThatKnowsNoStructureIsNotAskedUnderACondition) {
  HttpConnection client = connect();
  auto request = HttpConnection::make("PUT", "/api/v7/test", host().token(), "{}");
  request.set(http::field::if_match, "\"0123456789abcdef.1\"");
  EXPECT_EQ(client.exchange(request).result_int(), 422U);
}

struct MethodRow {
  std::string name;
  int code;
};

class HostMethodsTest : public HostRequestsTest, public testing::WithParamInterface<MethodRow> {};

TEST_P(HostMethodsTest, EachMethodHasItsCode) {
  const auto answer = send(GetParam().name, "/api/v7/test");
  EXPECT_EQ(bodyOf(answer).at("method").as_int64(), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Methods, HostMethodsTest,
                         testing::Values(MethodRow{"GET", 1}, MethodRow{"POST", 2}, MethodRow{"PUT", 3},
                                         MethodRow{"DELETE", 4}),
                         ByName());

class HostOtherMethodsTest : public HostRequestsTest, public testing::WithParamInterface<std::string> {};

TEST_P(HostOtherMethodsTest, OtherMethodsAreNotAllowed) {
  HttpConnection client = connect();
  const auto answer = client.exchange(HttpConnection::make(GetParam(), "/api/v7/test", host().token()));
  EXPECT_EQ(answer.result_int(), 405U);
  EXPECT_EQ(answer[http::field::allow], "GET, HEAD, POST, PUT, DELETE, OPTIONS");
  EXPECT_EQ(client.get("/api/v7/test", host().token()).result_int(), 200U)
      << "the connection is still in order";
}

INSTANTIATE_TEST_SUITE_P(Methods, HostOtherMethodsTest, testing::Values("PATCH", "BREW", "get"),
                         [](const auto& row) { return row.param; });

TEST_F(HostRequestsTest, HeadIsAGetWithoutItsBody) {
  HttpConnection client = connect();
  const auto whole = client.get("/api/v7", host().token());
  client.send(HttpConnection::make("HEAD", "/api/v7", host().token()));
  const auto head = client.receive("HEAD");
  EXPECT_EQ(head.result_int(), 200U);
  EXPECT_EQ(head.body(), "");
  EXPECT_EQ(head[http::field::content_length], std::to_string(whole.body().size()));
  EXPECT_EQ(client.get("/api/v7", host().token()).body(), whole.body()) << "the connection is still in order";
}

TEST_F(HostRequestsTest, AnybodyMayAskForTheMethodsOfAResource) {
  HttpConnection client = connect();
  const auto answer = client.exchange(HttpConnection::make("OPTIONS", "/api/v7/test", ""));
  EXPECT_EQ(answer.result_int(), 204U);
  EXPECT_EQ(answer[http::field::allow], "GET, HEAD, POST, PUT, DELETE, OPTIONS");
  EXPECT_EQ(client.exchange(HttpConnection::make("OPTIONS", "*", "")).result_int(), 204U);
}

TEST_F(HostRequestsTest, ARepeatedTextIsBounded) {
  const auto answer = get("/api/v7/test/throw?kind=listener&message=" + std::string(6000, 'x'));
  EXPECT_EQ(detailOf(answer), std::string(4093, 'x') + "...");
}

TEST_F(HostRequestsTest, NoBodyIsTheNullValue) {
  EXPECT_EQ(bodyOf(send("POST", "/api/v7/test")).at("bodyAlternative").as_int64(), 0);
}

TEST_F(HostRequestsTest, TheNullValueIsAnAnswerWithoutContent) {
  const auto answer = get("/api/v7/test/null");
  EXPECT_EQ(answer.result_int(), 204U);
  EXPECT_EQ(answer.body(), "");
  EXPECT_EQ(answer.find(http::field::content_length), answer.end());
  EXPECT_EQ(answer.find(http::field::content_type), answer.end());
}

TEST_F(HostRequestsTest, NumbersThatJsonHasNotAreNull) {
  EXPECT_EQ(get("/api/v7/test/not-finite").body(), "[null,null]");
}

TEST_F(HostRequestsTest, ADeepAnswerGoesOutWhole) {
  constexpr std::size_t kDepth = 1000;
  const auto answer = get("/api/v7/test/deep?depth=" + std::to_string(kDepth));
  EXPECT_EQ(answer.body(), std::string(kDepth, '[') + std::string(kDepth, ']'));
}

TEST_F(HostRequestsTest, ALargeAnswerGoesOutWhole) {
  constexpr std::size_t kSize = 5000000;
  EXPECT_EQ(get("/api/v7/test/large?size=" + std::to_string(kSize)).body(),
            '"' + std::string(kSize, 'x') + '"');
}

TEST_F(HostRequestsTest, TheInterfaceRootTellsWhoIsServed) {
  EXPECT_EQ(bodyOf(get("/api/v7")), boost::json::parse(R"({
    "name": "Test plug-in", "shortName": "Test", "code": "test", "apiVersion": "v7",
    "version": {"major": 1, "minor": 2, "patch": 3, "build": 4},
    "paths": ["test", "test/things", "test/things/deep"]})"));
}

struct FailureRow {
  std::string name;
  std::string query;
  unsigned status;
  std::string document;
};

class HostFailuresTest : public HostRequestsTest, public testing::WithParamInterface<FailureRow> {};

TEST_P(HostFailuresTest, AnExceptionOfTheModuleBecomesAProblemDocument) {
  const auto answer = get("/api/v7/test/throw?kind=" + GetParam().query);
  EXPECT_EQ(answer.result_int(), GetParam().status);
  EXPECT_EQ(answer[http::field::content_type], "application/problem+json");
  EXPECT_EQ(bodyOf(answer), boost::json::parse(GetParam().document));
}

INSTANTIATE_TEST_SUITE_P(
    Failures, HostFailuresTest,
    testing::Values(
        FailureRow{"Listener", "listener&id=Mirn_VOLUME_INVALID_STATE&message=Not%20%C3%BC", 409,
                   R"({"type":"about:blank","title":"Conflict","status":409,"detail":"Not ü",
                       "errorId":"Mirn_VOLUME_INVALID_STATE"})"},
        FailureRow{"RuntimeErrorWithId", "with-id&message=bad", 400,
                   R"({"type":"about:blank","title":"Bad Request","status":400,"detail":"bad",
                       "errorId":"INVALID_PARAMETER"})"},
        FailureRow{"Client", "client&status=404&message=Request%20is%20not%20supported", 404,
                   R"({"type":"about:blank","title":"Not Found","status":404,
                       "detail":"Request is not supported"})"},
        FailureRow{"OutOfRange", "out-of-range&message=key", 500,
                   R"({"type":"about:blank","title":"Internal Server Error","status":500,"detail":"key"})"},
        FailureRow{"ServiceObject", "service-object", 500,
                   R"({"type":"about:blank","title":"Internal Server Error","status":500,
                       "detail":"ServiceObject cannot be parsed to Object"})"},
        FailureRow{"NotUtf8", "latin1", 500,
                   R"({"type":"about:blank","title":"Internal Server Error","status":500,"detail":"na?ve"})"},
        FailureRow{"NoException", "number", 500,
                   R"({"type":"about:blank","title":"Internal Server Error","status":500,
                       "detail":"The plug-in failed without a reason"})"}),
    ByName());

struct TokenRow {
  std::string name;
  std::string target;
  std::string authorization;  // "TOKEN" stands for the token, also in the target
  unsigned status;
};

class HostTokenTest : public HostRequestsTest, public testing::WithParamInterface<TokenRow> {
 protected:
  std::string filled(std::string text) {
    const auto at = text.find("TOKEN");
    return at == std::string::npos ? text : text.replace(at, 5, host().token());
  }
};

TEST_P(HostTokenTest, OnlyTheTokenOpensTheInterface) {
  auto request = HttpConnection::make("GET", filled(GetParam().target), "");
  if (!GetParam().authorization.empty())
    request.set(http::field::authorization, filled(GetParam().authorization));
  const auto answer = connect().exchange(request);
  EXPECT_EQ(answer.result_int(), GetParam().status);
  const bool refused = GetParam().status == 401;
  EXPECT_EQ(answer[http::field::www_authenticate], refused ? "Bearer" : "");
}

INSTANTIATE_TEST_SUITE_P(Tokens, HostTokenTest,
                         testing::Values(TokenRow{"None", "/api/v7/test", "", 401},
                                         TokenRow{"Bearer", "/api/v7/test", "Bearer TOKEN", 200},
                                         TokenRow{"SchemeInAnyCase", "/api/v7/test", "bEARER TOKEN", 200},
                                         TokenRow{"Wrong", "/api/v7/test", "Bearer 1234", 401},
                                         TokenRow{"TooLong", "/api/v7/test", "Bearer TOKEN0", 401},
                                         TokenRow{"OtherScheme", "/api/v7/test", "Basic TOKEN", 401},
                                         TokenRow{"Parameter", "/api/v7/test?access_token=TOKEN", "", 200},
                                         TokenRow{"WrongParameter", "/api/v7/test?access_token=1", "", 401},
                                         TokenRow{"Both", "/api/v7/test?access_token=TOKEN", "Bearer TOKEN",
                                                  400},
                                         TokenRow{"UnknownPathNeedsItToo", "/api/v9/nothing", "", 401},
                                         TokenRow{"ApiItselfNeedsItToo", "/api", "", 401}),
                         ByName());

TEST_F(HostRequestsTest, TheTokenIsNoBusinessOfThePlugin) {
  const auto answer = connect().get("/api/v7/test?access_token=" + host().token() + "&a=1", "");
  EXPECT_EQ(bodyOf(answer).at("parameters"), boost::json::parse(R"({"a":"1"})"));
}

struct RefusalRow {
  std::string name;
  std::string target;
  unsigned status;
};

class HostRefusalsTest : public HostRequestsTest, public testing::WithParamInterface<RefusalRow> {};

TEST_P(HostRefusalsTest, TheHostRefusesWhatIsNoRequestForThePlugin) {
  const auto answer = get(GetParam().target);
  EXPECT_EQ(answer.result_int(), GetParam().status);
  EXPECT_EQ(bodyOf(answer).at("status").as_int64(), GetParam().status);
  EXPECT_EQ(trace().find("handleRequest"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Targets, HostRefusalsTest,
                         testing::Values(RefusalRow{"OtherPath", "/nothing", 404},
                                         RefusalRow{"NoVersion", "/api", 404},
                                         RefusalRow{"OtherVersion", "/api/v8/test", 404},
                                         RefusalRow{"UnknownKey", "/api/v7/tests", 404},
                                         RefusalRow{"TrailingSlash", "/api/v7/test/", 400},
                                         RefusalRow{"EmptySegment", "/api/v7//test", 400},
                                         RefusalRow{"EncodedSlash", "/api/v7/test%2Fthings", 400},
                                         RefusalRow{"BrokenEncoding", "/api/v7/test/%4", 400},
                                         RefusalRow{"NotUtf8", "/api/v7/test/%FF", 400},
                                         RefusalRow{"HalfAPair", "/api/v7/test/%ED%A0%80", 400},
                                         RefusalRow{"HalfAPairInAParameter", "/api/v7/test?a=%ED%BF%BF", 400},
                                         RefusalRow{"RepeatedParameter", "/api/v7/test?a=1&a=2", 400}),
                         ByName());

TEST_F(HostRequestsTest, ABodyOfAnotherTypeIsRefused) {
  auto request = HttpConnection::make("POST", "/api/v7/test", host().token(), "{}");
  request.set(http::field::content_type, "text/plain");
  EXPECT_EQ(connect().exchange(request).result_int(), 415U);
  request.set(http::field::content_type, "application/json; charset=utf-8");
  EXPECT_EQ(connect().exchange(request).result_int(), 200U);
  request.erase(http::field::content_type);
  EXPECT_EQ(connect().exchange(request).result_int(), 200U);
}

TEST_F(HostRequestsTest, ABrokenBodyIsToldWithItsPlace) {
  const auto answer = send("POST", "/api/v7/test", "{\"a\":}");
  EXPECT_EQ(answer.result_int(), 400U);
  EXPECT_EQ(detailOf(answer), "The body is not valid JSON: syntax error at offset 5");
}

TEST_F(HostRequestsTest, ABodyThatIsNotUtf8IsRefused) {
  for (const char* body : {"\"\xFF\"", "{\"a\":\"\xED\xA0\x80\"}", R"({"a":"\ud800"})", R"({"\udc00":1})"}) {
    EXPECT_EQ(send("POST", "/api/v7/test", body).result_int(), 400U) << body;
  }
  EXPECT_EQ(trace().find("handleRequest"), std::string::npos);
}

using HostHealthTest = TestHost;

TEST_F(HostHealthTest, AWorkingPluginIsHealthyAndNeedsNoToken) {
  serve();
  const auto answer = connect().get("/healthz", "");
  EXPECT_EQ(answer.result_int(), 200U);
  EXPECT_EQ(answer.body(), R"({"status":"working"})");
}

TEST_F(HostHealthTest, APluginThatDoesNotWorkIsUnavailable) {
  serve({}, {{"TEST_PLUGIN_STATUS", "1"}});
  EXPECT_EQ(connect().get("/healthz", "").result_int(), 503U);
}

TEST_F(HostHealthTest, HealthIsOnlyRead) {
  serve();
  const auto answer = send("POST", "/healthz");
  EXPECT_EQ(answer.result_int(), 405U);
  EXPECT_EQ(answer[http::field::allow], "GET, HEAD, OPTIONS");
}

using HostLogTest = TestHost;

/// The lines that the host left on standard error, as objects.
std::vector<boost::json::object> linesOf(const std::string& errors) {
  std::vector<boost::json::object> lines;
  std::istringstream text(errors);
  for (std::string line; std::getline(text, line);) lines.push_back(boost::json::parse(line).as_object());
  return lines;
}

TEST_F(HostLogTest, EachRequestIsALineWithoutItsToken) {
  serve({"--log-requests"});
  const std::string token = host().token();
  const auto answer = connect().get("/api/v7/test?access_token=" + token, "");
  get("/nothing");
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(host().errors().find(token), std::string::npos);
  const auto lines = linesOf(host().errors());
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].at("log"), "request");
  EXPECT_EQ(lines[0].at("client"), "127.0.0.1");
  EXPECT_EQ(lines[0].at("identity"), "first");
  EXPECT_EQ(lines[0].at("operation"), "GET test");
  EXPECT_EQ(lines[0].at("method"), "GET");
  EXPECT_EQ(lines[0].at("target"), "/api/v7/test?access_token=***");
  EXPECT_EQ(lines[0].at("status"), 200);
  EXPECT_EQ(lines[0].at("bytes"), answer.body().size());
  EXPECT_EQ(lines[1].at("target"), "/nothing");
  EXPECT_EQ(lines[1].at("status"), 404);
  EXPECT_EQ(lines[1].count("identity"), 0U);
}

TEST_F(HostLogTest, ALineTellsWhoWasRefusedWhat) {
  HostProcess add({"token", "add", "eve", "observe", "--token-file", file("token")});
  ASSERT_EQ(add.awaitExit(), 0) << add.errors();
  const std::string token = add.output().substr(0, add.output().find('\n'));
  serve({"--log-requests"});
  EXPECT_EQ(connect().exchange(HttpConnection::make("PUT", "/api/v7/test", token, "{}")).result_int(), 403U);
  EXPECT_EQ(connect().exchange(HttpConnection::make("PUT", "/api/v7/test", "", "{}")).result_int(), 401U);
  EXPECT_EQ(connect().get("/api/v7/nothing", token).result_int(), 404U);
  EXPECT_EQ(host().stop(), 0);
  const auto lines = linesOf(host().errors());
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].at("identity"), "eve");
  EXPECT_EQ(lines[0].at("operation"), "PUT test");
  EXPECT_EQ(lines[1].count("identity"), 0U);
  EXPECT_EQ(lines[1].at("operation"), "PUT test");
  EXPECT_EQ(lines[2].at("identity"), "eve");
  EXPECT_EQ(lines[2].count("operation"), 0U);
}

TEST_F(HostLogTest, EachChangeIsALineInTheAudit) {
  serve();
  send("PUT", "/api/v7/test/a/b", "{}");
  send("POST", "/api/v7/test", "{");
  EXPECT_EQ(host().stop(), 0);
  const auto lines = linesOf(host().errors());
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].at("log"), "audit");
  EXPECT_EQ(lines[0].at("identity"), "first");
  EXPECT_EQ(lines[0].at("operation"), "PUT test");
  EXPECT_EQ(lines[0].at("outcome"), "done");
  EXPECT_EQ(lines[1].at("outcome"), "refused");
  EXPECT_EQ(lines[1].at("status"), 400);
}

TEST_F(HostLogTest, NothingIsLoggedUnlessAskedFor) {
  serve();
  get("/api/v7/test");
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(host().errors(), "");
}

}  // namespace

}  // namespace host
