#include <chrono>
#include <csignal>
#include <future>
#include <vector>

#include "host/service/test_host.h"

namespace host {

namespace {

using HostConcurrencyTest = TestHost;

TEST_F(HostConcurrencyTest, OthersAreServedWhileACallIsBlocked) {
  serve();
  HttpConnection blocked = connect();
  blocked.send(HttpConnection::make("GET", "/api/v7/test/block", host().token()));
  EXPECT_EQ(get("/api/v7/test/await-blocked?count=1").result_int(), 204U);

  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  EXPECT_EQ(get("/healthz").result_int(), 200U);

  EXPECT_EQ(get("/api/v7/test/release").result_int(), 204U);
  EXPECT_EQ(blocked.receive().result_int(), 204U);
}

TEST_F(HostConcurrencyTest, ChangesThatHangKeepNeitherReadsNorTheHostsOwnAnswersWaiting) {
  constexpr int kRunning = 4;
  constexpr int kBehindThem = 15;
  serve();
  std::vector<std::unique_ptr<HttpConnection>> changes;
  for (int i = 0; i < kRunning + kBehindThem; ++i) {
    changes.push_back(std::make_unique<HttpConnection>(host().port()));
    changes.back()->send(HttpConnection::make("POST", "/api/v7/test/block", host().token()));
  }
  EXPECT_EQ(get("/api/v7/test/await-blocked?count=" + std::to_string(kRunning)).result_int(), 204U);

  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  EXPECT_EQ(get("/healthz").result_int(), 200U);
  EXPECT_EQ(get("/api/v7").result_int(), 200U);

  EXPECT_EQ(get("/api/v7/test/release").result_int(), 204U);
  for (const auto& change : changes) EXPECT_EQ(change->receive().result_int(), 204U);
}

TEST_F(HostConcurrencyTest, ReadsThatHangKeepNeitherChangesNorTheHostsOwnAnswersWaiting) {
  constexpr int kRunning = 8;
  serve();
  std::vector<std::unique_ptr<HttpConnection>> reads;
  for (int i = 0; i < kRunning + 1; ++i) {
    reads.push_back(std::make_unique<HttpConnection>(host().port()));
    reads.back()->send(HttpConnection::make("GET", "/api/v7/test/block", host().token()));
  }
  EXPECT_EQ(send("POST", "/api/v7/test/await-blocked?count=" + std::to_string(kRunning)).result_int(), 204U);

  EXPECT_EQ(send("POST", "/api/v7/test").result_int(), 200U);
  EXPECT_EQ(get("/healthz").result_int(), 200U);

  EXPECT_EQ(send("POST", "/api/v7/test/release").result_int(), 204U);
  for (const auto& read : reads) EXPECT_EQ(read->receive().result_int(), 204U);
}

TEST_F(HostConcurrencyTest, SlowClientsTakeNoThread) {
  serve({"--threads", "1", "--read-workers", "1"});
  std::vector<std::unique_ptr<HttpConnection>> slow;
  for (int i = 0; i < 50; ++i) {
    slow.push_back(std::make_unique<HttpConnection>(host().port()));
    slow.back()->sendBytes("GET /api/v7/test HTTP/1.1\r\nAuth");
  }
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
}

TEST_F(HostConcurrencyTest, WrongTokensWaitWithoutAThread) {
  constexpr int kWrong = 30;  // all but the first six wait for 5 s
  serve({"--threads", "1", "--read-workers", "1", "--change-workers", "1"});
  const auto begun = std::chrono::steady_clock::now();
  std::vector<std::unique_ptr<HttpConnection>> guesses;
  for (int i = 0; i < kWrong; ++i) {
    guesses.push_back(std::make_unique<HttpConnection>(host().port()));
    guesses.back()->send(HttpConnection::make("GET", "/api/v7", std::string(64, 'x')));
  }
  EXPECT_EQ(get("/api/v7").result_int(), 200U);
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  EXPECT_EQ(send("PUT", "/api/v7/test").result_int(), 200U);
  EXPECT_FALSE(guesses.back()->hasBytes()) << "no answer to a guess goes ahead of those";

  EXPECT_EQ(guesses[0]->receive().result_int(), 401U);
  EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(100));
  EXPECT_EQ(guesses[1]->receive().result_int(), 401U);
  EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(200));

  guesses.erase(guesses.begin(), guesses.begin() + 2);
  host().signal(SIGTERM);  // nobody waits on when the host ends
  for (const auto& guess : guesses) {
    EXPECT_EQ(guess->receive().result_int(), 401U);
    guess->close();
  }
  EXPECT_EQ(host().awaitExit(), 0) << host().errors();
}

TEST_F(HostConcurrencyTest, ManyClientsAtOnceGetEachItsOwnAnswer) {
  serve();
  constexpr int kClients = 8;
  constexpr int kRequests = 50;
  std::vector<std::future<int>> clients;
  for (int client = 0; client < kClients; ++client) {
    clients.push_back(std::async(std::launch::async, [this, client] {
      HttpConnection connection = connect();
      int right = 0;
      for (int i = 0; i < kRequests; ++i) {
        const std::string name = std::to_string(client) + "-" + std::to_string(i);
        const auto answer = connection.get("/api/v7/test/" + name, host().token());
        right += bodyOf(answer).at("segments").at(0).as_string() == name ? 1 : 0;
      }
      return right;
    }));
  }
  for (auto& client : clients) EXPECT_EQ(client.get(), kRequests);
  EXPECT_EQ(host().stop(), 0) << host().errors();
}

}  // namespace

}  // namespace host
