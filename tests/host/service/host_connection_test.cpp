#include <boost/json/parse.hpp>

#include "host/service/test_host.h"

namespace host {

namespace {

namespace http = boost::beast::http;

class HostConnectionTest : public TestHost {
 protected:
  void SetUp() override { serve(); }

  std::string requestBytes(const std::string& target, const std::string& rest = "\r\n") {
    return "GET " + target + " HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + host().token() +
           "\r\n" + rest;
  }
};

TEST_F(HostConnectionTest, AConnectionServesManyRequests) {
  HttpConnection client = connect();
  for (int i = 0; i < 20; ++i) {
    const auto answer = client.get("/api/v7/test/" + std::to_string(i), host().token());
    EXPECT_EQ(bodyOf(answer).at("segments").at(0).as_string(), std::to_string(i));
  }
}

TEST_F(HostConnectionTest, RequestsSentAheadAreAnsweredInOrder) {
  HttpConnection client = connect();
  client.sendBytes(requestBytes("/api/v7/test/a") + requestBytes("/nothing") +
                   requestBytes("/api/v7/test/b", "Content-Length: 2\r\n\r\n17") +
                   requestBytes("/api/v7/test/c"));
  EXPECT_EQ(bodyOf(client.receive()).at("segments").at(0).as_string(), "a");
  EXPECT_EQ(client.receive().result_int(), 404U);
  EXPECT_EQ(bodyOf(client.receive()).at("body").as_int64(), 17);
  EXPECT_EQ(bodyOf(client.receive()).at("segments").at(0).as_string(), "c");
}

TEST_F(HostConnectionTest, ToAskForTheHeadIsToGetWithoutTheBody) {
  HttpConnection client = connect();
  for (const std::string target : {"/healthz", "/api/v7", "/api/v7/test", "/nothing", "/api/v7/test/null"}) {
    const auto get = client.get(target, host().token());
    const auto head = client.exchange(HttpConnection::make("HEAD", target, host().token()));
    EXPECT_EQ(head.result_int(), get.result_int()) << target;
    EXPECT_EQ(head[http::field::content_type], get[http::field::content_type]) << target;
    EXPECT_EQ(head[http::field::content_length], get[http::field::content_length]) << target;
    EXPECT_EQ(head.body(), "") << target;
  }
}

TEST_F(HostConnectionTest, EveryAnswerTellsTheTime) {
  for (const std::string target : {"/healthz", "/api/v7/test/null", "/nothing"}) {
    EXPECT_NE(get(target)[http::field::date].find(" GMT"), std::string::npos) << target;
  }
}

TEST_F(HostConnectionTest, AClientThatWantsToCloseIsClosed) {
  HttpConnection client = connect();
  client.sendBytes(requestBytes("/api/v7/test/null", "Connection: close\r\n\r\n"));
  const std::string all = client.receiveToEnd();
  EXPECT_EQ(all.compare(0, 23, "HTTP/1.1 204 No Content"), 0) << all;
  EXPECT_NE(all.find("Connection: close"), std::string::npos) << all;
}

TEST_F(HostConnectionTest, AnOldClientIsAnsweredInItsVersionAndClosed) {
  HttpConnection client = connect();
  client.sendBytes("GET /healthz HTTP/1.0\r\n\r\n");
  const std::string all = client.receiveToEnd();
  EXPECT_EQ(all.compare(0, 15, "HTTP/1.0 200 OK"), 0) << all;
}

TEST_F(HostConnectionTest, AChunkedBodyIsRead) {
  HttpConnection client = connect();
  client.sendBytes(
      requestBytes("/api/v7/test", "Transfer-Encoding: chunked\r\n\r\n1\r\n[\r\n2\r\n5]\r\n0\r\n\r\n"));
  EXPECT_EQ(bodyOf(client.receive()).at("body"), boost::json::parse("[5]"));
}

TEST_F(HostConnectionTest, AClientThatWaitsIsToldToContinue) {
  HttpConnection client = connect();
  client.sendBytes(requestBytes("/api/v7/test", "Content-Length: 1\r\nExpect: 100-continue\r\n\r\n"));
  EXPECT_EQ(client.receive().result_int(), 100U);
  client.sendBytes("5");
  EXPECT_EQ(bodyOf(client.receive()).at("body").as_int64(), 5);
}

TEST_F(HostConnectionTest, AClientThatWaitsIsRefusedBeforeItSendsItsBody) {
  HttpConnection client = connect();
  client.sendBytes(
      "PUT /api/v7/test HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1\r\nExpect: 100-continue\r\n\r\n");
  const auto answer = client.receive();
  EXPECT_EQ(answer.result_int(), 401U);
  EXPECT_FALSE(answer.keep_alive());
}

TEST_F(HostConnectionTest, BytesThatAreNoHttpAreRefusedAndClosed) {
  HttpConnection client = connect();
  client.sendBytes("this is no HTTP\r\n\r\n");
  EXPECT_EQ(client.receive().result_int(), 400U);
  EXPECT_EQ(client.receiveToEnd(), "");
}

TEST_F(HostConnectionTest, TwoLengthsAreRefused) {
  HttpConnection client = connect();
  client.sendBytes(requestBytes("/api/v7/test", "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n"));
  EXPECT_EQ(client.receive().result_int(), 400U);
}

TEST_F(HostConnectionTest, AClientThatLeavesInTheMiddleCostsNothing) {
  HttpConnection halfHeader = connect();
  halfHeader.sendBytes("GET /api/v7");
  halfHeader.close();
  HttpConnection halfBody = connect();
  halfBody.sendBytes(requestBytes("/api/v7/test", "Content-Length: 100\r\n\r\n[1,"));
  halfBody.close();
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  EXPECT_EQ(host().stop(), 0) << host().errors();
}

}  // namespace

}  // namespace host
