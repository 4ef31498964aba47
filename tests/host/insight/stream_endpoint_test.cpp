#include "insight/stream_endpoint.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>
#include <vector>

#include "host/insight/resuming_ear.h"
#include "host/insight/stream_cuts.h"
#include "host/insight/told_host.h"
#include "host/net/listening_client.h"
#include "host/service/local_exchange.h"
#include "host/service/tls_client.h"
#include "support/process_resources.h"
#include "support/temporary_folder.h"
#include "support/test_certificate.h"

namespace host {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kPath[] = "/api/v1/events/stream";
constexpr char kAdministers[] = "Authorization: Bearer administer\r\n";
constexpr char kObserves[] = "Authorization: Bearer observe\r\n";

class StreamEndpointTest : public testing::Test {
 protected:
  ToldHost::Settings settings() const {
    ToldHost::Settings settings;
    settings.historyPath = (m_folder / "history.db").string();
    return settings;
  }
  void serve(const ToldHost::Settings& given) { m_host = std::make_unique<ToldHost>(given); }
  ToldHost& host() { return *m_host; }

  /// Has begun to listen.
  std::unique_ptr<ListeningClient> listener(const std::string& fields = kAdministers,
                                            const std::string& query = "") {
    auto client = std::make_unique<ListeningClient>(host().port());
    client->get(kPath + query, fields);
    EXPECT_TRUE(client->await("\r\n\r\n"));
    return client;
  }
  std::string idOf(std::uint64_t row) { return host().epoch() + '.' + std::to_string(row); }
  std::string number(std::uint64_t number) { return "\"number\":" + std::to_string(number) + ','; }

  TemporaryFolder m_folder;
  std::unique_ptr<ToldHost> m_host;
};

TEST_F(StreamEndpointTest, TellsWhatHappensAsItHappens) {
  serve(settings());
  host().keep(1);
  const auto client = listener();
  EXPECT_THAT(client->text(), HasSubstr("\r\nContent-Type: text/event-stream\r\n"));
  EXPECT_THAT(client->text(), HasSubstr("\r\nCache-Control: no-store\r\n"));
  host().tell(1);
  ASSERT_TRUE(client->await(number(2)));
  EXPECT_THAT(client->body(), testing::StartsWith("id: " + idOf(2) + "\nevent: event\ndata: {\"row\":2,"));
}

TEST_F(StreamEndpointTest, GoesOnBehindTheLastId) {
  serve(settings());
  host().keep(20);
  const std::string field = kAdministers + ("last-event-id: " + idOf(18) + "\r\n");
  const auto byField = listener(field);
  ASSERT_TRUE(byField->await(number(20)));
  EXPECT_THAT(byField->body(), testing::StartsWith("id: " + idOf(19) + '\n'));
  const auto byParameter = listener(kAdministers, "?lastEventId=" + idOf(18));
  ASSERT_TRUE(byParameter->await(number(20)));
  EXPECT_THAT(byParameter->body(), testing::StartsWith("id: " + idOf(19) + '\n'));
  const auto byBoth = listener(field, "?lastEventId=" + idOf(3));
  ASSERT_TRUE(byBoth->await(number(20)));
  EXPECT_THAT(byBoth->body(), testing::StartsWith("id: " + idOf(19) + '\n'))
      << "who comes back keeps the URL it came by first";
}

TEST_F(StreamEndpointTest, WhatClientsDidIsForWhoAdministers) {
  serve(settings());
  host().tell(1, 0, "audit");
  host().keep(1);
  const std::string begin = "?lastEventId=" + idOf(0);
  const auto observer = listener(kObserves, begin);
  const auto administrator = listener(kAdministers, begin);
  ASSERT_TRUE(observer->await(number(2)));
  ASSERT_TRUE(administrator->await(number(2)));
  EXPECT_THAT(observer->body(), Not(HasSubstr("event: audit")));
  EXPECT_THAT(administrator->body(), HasSubstr("event: audit"));
}

TEST_F(StreamEndpointTest, ListenersAreBoundedAndMakePlace) {
  ToldHost::Settings given = settings();
  given.mostListeners = 2;
  serve(given);
  const auto first = listener();
  const auto second = listener();
  EXPECT_THAT(first->text(), HasSubstr("HTTP/1.1 200 "));
  EXPECT_THAT(second->text(), HasSubstr("HTTP/1.1 200 "));
  const auto third = listener();
  EXPECT_THAT(third->text(), HasSubstr("HTTP/1.1 503 "));
  EXPECT_THAT(third->text(), HasSubstr("\r\nRetry-After: "));
  first->close();
  bool isThere = false;
  for (int i = 0; i < 200 && !isThere; ++i) {
    isThere = listener()->text().find("HTTP/1.1 200 ") != std::string::npos;
  }
  EXPECT_TRUE(isThere);
}

TEST_F(StreamEndpointTest, ARevokedTokenEndsItsStreams) {
  serve(settings());
  const auto client = listener();
  host().tokens.isOpen = false;
  client->awaitEnd();
  EXPECT_EQ(host().stream().listeners(), 0U);
}

TEST_F(StreamEndpointTest, TheStopSaysFarewellAndWhenToComeBack) {
  serve(settings());
  const auto client = listener();
  host().tell(1);
  ASSERT_TRUE(client->await(number(1)));
  EXPECT_TRUE(host().stop());
  EXPECT_TRUE(client->awaitEnd());
  EXPECT_TRUE(client->isWhole());
  EXPECT_THAT(client->body(), testing::EndsWith("\n\nretry: 1000\nevent: bye\ndata: {}\n\n"));
}

TEST_F(StreamEndpointTest, WithoutAHistoryThereIsAGapAfterARestart) {
  ToldHost::Settings given = settings();
  given.historyPath.clear();
  serve(given);
  const auto before = listener();
  host().tell(3);
  ASSERT_TRUE(before->await(number(3)));
  const std::string body = before->body();
  const std::string lastId = body.substr(body.rfind("id: ") + 4, 18);
  before->close();
  host().stop();
  host().start();
  const auto early = listener();
  host().tell(1);
  ASSERT_TRUE(early->await(number(4)));
  const auto after = listener(kAdministers, "?lastEventId=" + lastId);
  ASSERT_TRUE(after->await("event: gap"));
}

/// What waits for it is bounded, and so is the time for what is on its way.
TEST_F(StreamEndpointTest, OneThatIsTooSlowIsClosedAndHearsTheRestWhenItComesBack) {
  ToldHost::Settings given = settings();
  given.stream.longestQueue = 256 * 1024;
  given.options.limits.writeTime = std::chrono::milliseconds(300);
  serve(given);
  host().keep(1);
  ListeningClient slow(host().port(), 4096);
  slow.get(kPath, kAdministers + std::string("Connection: close\r\n"));
  ASSERT_TRUE(slow.await("\r\n\r\n"));
  const auto quick = listener();
  constexpr std::size_t kBytes = 16 * 1024;
  while (host().stream().listeners() == 2) {
    host().tell(10, kBytes);
    ASSERT_TRUE(quick->await(number(host().told())));
    ASSERT_LT(host().told() * kBytes, 256U * 1024 * 1024);
  }
  EXPECT_EQ(host().stream().listeners(), 1U);
  slow.awaitEnd();  // cut off by its deadline, or ended because too much waited for it

  ResumingEar ear(host().epoch());
  ear.hear("id: " + idOf(1) + "\ndata: {\"row\":1,\"details\":{\"number\":1}}\n\n");
  ear.hear(slow.body());
  EXPECT_GT(ear.row(), 1U);
  EXPECT_LT(ear.row(), host().told());
  const auto again = listener(kAdministers + ("Last-Event-ID: " + ear.lastId() + "\r\n"));
  host().tell(1);
  ASSERT_TRUE(again->await(number(host().told())));
  ASSERT_TRUE(again->await("\n\n\r\n"));
  ear.hear(again->body());
  EXPECT_GE(ear.row() + 1, host().told());
  EXPECT_EQ(ear.gaps(), 0U);
}

TEST_F(StreamEndpointTest, AHundredListenersCostNoThread) {
  serve(settings());
  const std::size_t threads = processResources().threads;
  std::vector<std::unique_ptr<ListeningClient>> clients;
  for (int i = 0; i < 100; ++i) clients.push_back(listener());
  EXPECT_EQ(host().stream().listeners(), 100U);
  EXPECT_EQ(processResources().threads, threads);
  host().tell(50);
  for (const auto& client : clients) EXPECT_TRUE(client->await(number(50)));
  EXPECT_EQ(processResources().threads, threads);
}

TEST_F(StreamEndpointTest, CutsAnywhereOverRestartsLoseNothingSilently) {
  const StreamCuts cuts = cutStreams(m_folder.path().string(), 30, 11);
  EXPECT_EQ(cuts.cuts, 30);
  EXPECT_GT(cuts.restarts, 0);
  EXPECT_GT(cuts.farewells, 0U);
  EXPECT_GT(cuts.heard, 100U);
  EXPECT_GT(cuts.gaps, 0U);
  EXPECT_EQ(cuts.heard + cuts.missing, cuts.told);
}

TEST_F(StreamEndpointTest, ComesOverTls) {
  const TestCertificate authority("authority");
  const TestCertificate own("server", authority);
  writeText(m_folder / "certificate.pem", own.certificate());
  writeText(m_folder / "key.pem", own.key());
  ToldHost::Settings given = settings();
  given.options.tlsCertificate = (m_folder / "certificate.pem").string();
  given.options.tlsKey = (m_folder / "key.pem").string();
  serve(given);
  TlsClient client(authority);
  ASSERT_TRUE(client.connect(host().port()));
  client.send("GET " + std::string(kPath) + " HTTP/1.1\r\nHost: localhost\r\n" + kObserves + "\r\n");
  EXPECT_THAT(client.receive("\r\n\r\n"), HasSubstr("HTTP/1.1 200 OK\r\n"));
  for (std::uint64_t i = 1; i <= 3; ++i) {
    host().tell(1);
    EXPECT_THAT(client.receive("\n\n\r\n"), HasSubstr(number(i)));
  }
  EXPECT_TRUE(host().stop());
  EXPECT_THAT(client.receive("nothing"), HasSubstr("event: bye"));
  EXPECT_EQ(client.end(), boost::asio::error::eof) << "not cut off";
}

TEST_F(StreamEndpointTest, ComesOverTheUnixSocket) {
  ToldHost::Settings given = settings();
  given.options.unixSocket = (m_folder / "socket").string();
  given.options.needsUnixSocket = true;
  serve(given);
  host().keep(5);
  std::thread stop([this] {
    while (host().stream().listeners() == 0) std::this_thread::yield();
    host().tell(1);
    host().stop();
  });
  const std::string answer =
      localExchange(given.options.unixSocket, "GET " + std::string(kPath) + "?lastEventId=" + idOf(2) +
                                                  " HTTP/1.1\r\nHost: localhost\r\n" + kAdministers + "\r\n");
  stop.join();
  EXPECT_THAT(answer, HasSubstr(number(3)));
  EXPECT_THAT(answer, HasSubstr(number(5)));
  EXPECT_THAT(answer, testing::EndsWith("event: bye\ndata: {}\n\n\r\n0\r\n\r\n"));
}

}  // namespace

}  // namespace host
