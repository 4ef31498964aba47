#include <boost/system/system_error.hpp>
#include <memory>
#include <vector>

#include "host/service/test_host.h"

namespace host {

namespace {

namespace http = boost::beast::http;

using namespace std::string_literals;

class HostLimitsTest : public TestHost {
 protected:
  std::string start(const std::string& rest) {
    return "PUT /api/v7/test HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + host().token() +
           "\r\n" + rest;
  }
};

TEST_F(HostLimitsTest, AHeaderBeyondTheBoundIsRefused) {
  serve({"--max-header", "1000"});
  auto request = HttpConnection::make("GET", "/api/v7/test", host().token());
  request.set("X-Filler", std::string(500, 'x'));
  EXPECT_EQ(connect().exchange(request).result_int(), 200U);
  request.set("X-Filler", std::string(1000, 'x'));
  const auto answer = connect().exchange(request);
  EXPECT_EQ(answer.result_int(), 431U);
  EXPECT_FALSE(answer.keep_alive());
}

TEST_F(HostLimitsTest, AHeaderWithoutEndIsRefused) {
  serve();
  HttpConnection client = connect();
  client.sendBytes("GET / HTTP/1.1\r\nX: " + std::string(100000, 'x'));
  EXPECT_EQ(client.receive().result_int(), 431U);
}

TEST_F(HostLimitsTest, ABodyBeyondTheBoundIsRefused) {
  serve({"--max-body", "10"});
  EXPECT_EQ(send("PUT", "/api/v7/test", "\"12345678\"").result_int(), 200U);
  const auto answer = send("PUT", "/api/v7/test", "\"123456789\"");
  EXPECT_EQ(answer.result_int(), 413U);
  EXPECT_FALSE(answer.keep_alive());
}

TEST_F(HostLimitsTest, AClientThatKeepsSendingStillGetsTheRefusal) {
  serve({"--max-body", "10"});
  EXPECT_EQ(send("PUT", "/api/v7/test", '"' + std::string(1000000, 'x') + '"').result_int(), 413U);
}

TEST_F(HostLimitsTest, AChunkedBodyBeyondTheBoundIsRefused) {
  serve({"--max-body", "10"});
  HttpConnection client = connect();
  client.sendBytes(start("Transfer-Encoding: chunked\r\n\r\n8\r\n[1111111\r\n8\r\n1111111]\r\n0\r\n\r\n"));
  EXPECT_EQ(client.receive().result_int(), 413U);
}

TEST_F(HostLimitsTest, ABodyNestedBeyondTheBoundIsRefused) {
  serve({"--max-depth", "3"});
  EXPECT_EQ(send("PUT", "/api/v7/test", R"([{"a":[1]}])").result_int(), 200U);
  EXPECT_EQ(send("PUT", "/api/v7/test", R"([{"a":[[1]]}])").result_int(), 400U);
}

TEST_F(HostLimitsTest, ABodyOfMoreValuesThanTheBoundIsRefused) {
  serve({"--max-values", "3"});
  EXPECT_EQ(send("PUT", "/api/v7/test", "[1,2]").result_int(), 200U);
  EXPECT_EQ(send("PUT", "/api/v7/test", "[1,2,3]").result_int(), 400U);
}

TEST_F(HostLimitsTest, ATargetOfMoreSegmentsThanTheBoundIsRefused) {
  serve({"--max-segments", "5"});
  EXPECT_EQ(get("/api/v7/test/a/b").result_int(), 200U);
  EXPECT_EQ(get("/api/v7/test/a/b/c").result_int(), 400U);
}

TEST_F(HostLimitsTest, ATargetOfMoreParametersThanTheBoundIsRefused) {
  serve({"--max-parameters", "2"});
  EXPECT_EQ(get("/api/v7/test?a=1&b=2").result_int(), 200U);
  EXPECT_EQ(get("/api/v7/test?a=1&b=2&c=3").result_int(), 400U);
}

TEST_F(HostLimitsTest, AChunkedBodyMayBeAsLargeAsTheBound) {
  serve({"--max-body", "10"});
  HttpConnection client = connect();
  client.sendBytes(start("Transfer-Encoding: chunked\r\n\r\n5\r\n[1111\r\n5\r\n1111]\r\n0\r\n\r\n"));
  EXPECT_EQ(client.receive().result_int(), 200U);
}

TEST_F(HostLimitsTest, WhoTakesItsTimeIsServed) {
  // Each part is sent once the host has seen what was ahead of it: it stands between two answered requests.
  serve({"--header-timeout", "600", "--body-timeout", "600", "--idle-timeout", "600", "--write-timeout",
         "600"});
  HttpConnection client = connect();
  for (const std::string& part :
       {"PUT /api/v7/test HTTP/1.1\r\nHost: loc"s, "alhost\r\n"s,
        "Authorization: Bearer " + host().token() + "\r\nContent-Length: 4\r\n\r\n["s, "17"s, "]"s}) {
    EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
    client.sendBytes(part);
  }
  EXPECT_EQ(client.receive().result_int(), 200U);
}

// The clients below wait for the host to lose its patience: without its deadlines they would wait for ever.

TEST_F(HostLimitsTest, ASilentClientIsClosed) {
  serve({"--idle-timeout", "0.1"});
  EXPECT_EQ(connect().receiveToEnd(), "");
}

TEST_F(HostLimitsTest, AnIdleClientIsClosedAfterItsAnswer) {
  serve({"--idle-timeout", "0.1"});
  HttpConnection client = connect();
  EXPECT_EQ(client.get("/api/v7/test", host().token()).result_int(), 200U);
  EXPECT_EQ(client.receiveToEnd(), "");
}

TEST_F(HostLimitsTest, AClientThatStopsInTheHeaderIsClosed) {
  serve({"--header-timeout", "0.1"});
  HttpConnection client = connect();
  client.sendBytes(start(""));
  EXPECT_EQ(client.receiveToEnd(), "");
}

TEST_F(HostLimitsTest, AClientThatDribblesItsHeaderIsClosed) {
  serve({"--header-timeout", "0.1", "--max-header", "1000000000", "--max-target", "1000000000"});
  HttpConnection client = connect();
  client.sendBytes("GET /");
  EXPECT_THROW(
      for (;;) { client.sendBytes("x"); }, boost::system::system_error);
}

TEST_F(HostLimitsTest, AClientThatStopsInTheBodyIsClosed) {
  serve({"--body-timeout", "0.1"});
  HttpConnection client = connect();
  client.sendBytes(start("Content-Length: 100\r\n\r\n[1"));
  EXPECT_EQ(client.receiveToEnd(), "");
}

TEST_F(HostLimitsTest, AClientThatTakesNoAnswerIsClosed) {
  serve({"--write-timeout", "0.1"});
  HttpConnection client = connect();
  client.send(HttpConnection::make("GET", "/api/v7/test/large?size=30000000", host().token()));
  client.awaitBytes();
  // The host stops with the answer half out; the client takes nothing until then.
  EXPECT_EQ(host().stop(), 0) << host().errors();
  EXPECT_THROW(client.receive(), boost::system::system_error);
}

// One thread comes to what connections do in its order; of two, one may be late to see that an answer is out.
TEST_F(HostLimitsTest, WhereConnectionsAreFullTheLongestIdleOneMakesPlace) {
  serve({"--max-connections", "2", "--threads", "1"});
  HttpConnection first = connect();
  HttpConnection second = connect();
  EXPECT_EQ(first.get("/api/v7/test", host().token()).result_int(), 200U);
  EXPECT_EQ(second.get("/api/v7/test", host().token()).result_int(), 200U);
  EXPECT_EQ(first.get("/api/v7/test", host().token()).result_int(), 200U);

  HttpConnection third = connect();
  EXPECT_EQ(third.get("/api/v7/test", host().token()).result_int(), 200U);
  EXPECT_EQ(second.receiveToEnd(), "");
  EXPECT_EQ(first.get("/api/v7/test", host().token()).result_int(), 200U);
}

TEST_F(HostLimitsTest, WhoeverSitsOnHalfAHeaderMakesPlace) {
  serve({"--max-connections", "2"});
  std::vector<std::unique_ptr<HttpConnection>> slow;
  for (int i = 0; i < 20; ++i) {
    slow.push_back(std::make_unique<HttpConnection>(host().port()));
    slow.back()->sendBytes("GET /api/v7/test HTTP/1.1\r\nAuth");
  }
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
}

TEST_F(HostLimitsTest, WhereAllConnectionsAreAtWorkTheNextIsTurnedAway) {
  serve({"--max-connections", "1"});
  HttpConnection blocked = connect();
  auto blocking = block(blocked);

  HttpConnection next = connect();
  EXPECT_EQ(next.receive().result_int(), 503U);
  EXPECT_EQ(next.receiveToEnd(), "");

  blocking.reset();
  EXPECT_EQ(blocked.receive().result_int(), 204U);
  while (connect().get("/healthz", "").result_int() == 503U) {
  }
}

TEST_F(HostLimitsTest, RequestsAreSentAheadUpToTheBound) {
  serve({"--max-pipelined", "3"});
  const std::string request = "GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n";
  HttpConnection three = connect();
  three.sendBytes(request + request + request);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(three.receive().keep_alive()) << i;
  three.sendBytes(request + request + request);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(three.receive().keep_alive()) << i;

  HttpConnection four = connect();
  four.sendBytes(request + request + request + request);
  EXPECT_TRUE(four.receive().keep_alive());
  EXPECT_TRUE(four.receive().keep_alive());
  EXPECT_FALSE(four.receive().keep_alive());
  EXPECT_EQ(four.receiveToEnd(), "");
}

TEST_F(HostLimitsTest, RequestsBeyondTheWaitingOnesAreTurnedAway) {
  serve({"--read-workers", "1", "--max-waiting", "0"});
  HttpConnection blocked = connect();
  auto blocking = block(blocked);

  HttpConnection client = connect();
  const auto answer = client.get("/api/v7/test", host().token());
  EXPECT_EQ(answer.result_int(), 503U);
  EXPECT_EQ(answer[http::field::retry_after], "1");

  blocking.reset();
  EXPECT_EQ(blocked.receive().result_int(), 204U);
  auto later = client.get("/api/v7/test", host().token());
  while (later.result_int() == 503U) later = client.get("/api/v7/test", host().token());
  EXPECT_EQ(later.result_int(), 200U);
}

}  // namespace

}  // namespace host
