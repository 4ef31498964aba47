// Answers in parts, over real connections.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "api/allowed_source.h"
#include "host/net/listening_client.h"
#include "host/net/scripted_source.h"
#include "host/net/served_table.h"
#include "host/service/local_exchange.h"
#include "host/service/tls_client.h"
#include "support/process_resources.h"
#include "support/temporary_folder.h"
#include "support/test_certificate.h"

namespace host {

namespace {

using Clock = std::chrono::steady_clock;
using Next = AnswerPart::Next;

/// Everybody, until they are put out.
class Doorkeeper final : public IAuthenticator {
 public:
  Identity identify(const Credentials&) const override { return {"somebody", Role::kObserve, "proof"}; }
  bool stillHolds(const Identity&) const override { return isOpen; }

  std::atomic<bool> isOpen{true};
};

class AnswerInPartsTest : public testing::Test {
 protected:
  ApiEndpoint endpoint() {
    ApiEndpoint endpoint;
    endpoint.operation = "parts";
    endpoint.method = "GET";
    endpoint.path = L"parts";
    endpoint.role = Role::kObserve;
    endpoint.begin = [script = m_script](const std::shared_ptr<const Call>& call,
                                         const std::shared_ptr<Exchange>& exchange, const std::string&) {
      exchange->answerInParts([script, call](const WakeSource& wake) {
        if (call->target.parameters.count(L"refuse") != 0) throw Refusal(409, "There are no parts");
        OpenAnswer opened = script->open(wake);
        opened.source = whileAllowed(call, std::move(opened.source));
        return opened;
      });
    };
    return endpoint;
  }
  ApiEndpoint plainEndpoint() {
    ApiEndpoint endpoint;
    endpoint.operation = "plain";
    endpoint.method = "GET";
    endpoint.path = L"plain";
    endpoint.lane = Lane::kAtOnce;
    endpoint.handle = [](const Call&, const std::string&) { return jsonAnswer("\"plain\""); };
    return endpoint;
  }

  void serve(const Options& options = ServedTable::usual()) {
    EndpointTable table;
    table.add(endpoint());
    table.add(plainEndpoint());
    m_served = std::make_unique<ServedTable>(std::move(table), m_doorkeeper, options);
  }
  std::uint16_t port() const { return m_served->port(); }

  /// "one", "two", "three", of which the second has to be waited for.
  void addThree() {
    m_script->add("one", Next::kAtOnce);
    m_script->add("", Next::kAtOnce);
    m_script->add("two", Next::kLater);
    m_script->add("three", Next::kNone);
  }

  Doorkeeper m_doorkeeper;
  std::shared_ptr<Script> m_script = std::make_shared<Script>();
  std::unique_ptr<ServedTable> m_served;
};

const char* const kChunks = "3\r\none\r\n3\r\ntwo\r\n5\r\nthree\r\n0\r\n\r\n";

TEST_F(AnswerInPartsTest, ComesInChunksAndTheConnectionServesOn) {
  serve();
  addThree();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(client.await("0\r\n\r\n"));
  const std::string head = client.text().substr(0, client.text().find("\r\n\r\n") + 2);
  EXPECT_EQ(head.rfind("HTTP/1.1 200 OK\r\n", 0), 0U) << head;
  EXPECT_NE(head.find("\r\nTransfer-Encoding: chunked\r\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\r\nContent-Type: text/plain\r\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\r\nMirn-Test: parts\r\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\r\nCache-Control: no-store\r\n"), std::string::npos) << head;
  EXPECT_EQ(head.find("Content-Length"), std::string::npos) << head;
  EXPECT_EQ(client.text().substr(head.size() + 2), kChunks);
  client.get("/plain");
  EXPECT_TRUE(client.await("\"plain\""));
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, GoesToAnOldClientUntilTheClose) {
  serve();
  addThree();
  ListeningClient client(port());
  client.send("GET /parts HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
  EXPECT_TRUE(client.awaitEnd());
  EXPECT_EQ(client.text().rfind("HTTP/1.0 200 OK\r\n", 0), 0U) << client.text();
  EXPECT_EQ(client.text().find("Transfer-Encoding"), std::string::npos) << client.text();
  EXPECT_EQ(client.text().find("keep-alive"), std::string::npos) << client.text();
  EXPECT_EQ(client.text().substr(client.text().find("\r\n\r\n")), "\r\n\r\nonetwothree");
}

TEST_F(AnswerInPartsTest, HeadHasNoParts) {
  serve();
  addThree();
  ListeningClient client(port());
  client.send(
      "HEAD /parts HTTP/1.1\r\nHost: localhost\r\n\r\nGET /plain HTTP/1.1\r\nHost: localhost\r\n\r\n");
  ASSERT_TRUE(client.await("\"plain\""));
  EXPECT_NE(client.text().find("Content-Type: text/plain\r\n"), std::string::npos) << client.text();
  EXPECT_EQ(client.text().find("\r\none"), std::string::npos) << client.text();
  EXPECT_EQ(client.text().find("\r\n\r\n"), client.text().find("\r\n\r\nHTTP/1.1 200 OK")) << client.text();
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, TheHeadDoesNotWaitForTheFirstPart) {
  serve();
  ListeningClient client(port());
  client.get("/parts");
  EXPECT_TRUE(client.await("\r\n\r\n"));
  m_script->add("late", Next::kNone);
  m_script->wake();
  EXPECT_TRUE(client.await("4\r\nlate\r\n0\r\n\r\n"));
}

TEST_F(AnswerInPartsTest, ASourceIsAskedAgainWithoutAWake) {
  serve();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(client.await("\r\n\r\n"));
  m_script->add("found", Next::kLater);
  const auto begin = Clock::now();
  EXPECT_TRUE(client.await("found"));
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
}

TEST_F(AnswerInPartsTest, ManyWakesAreOne) {
  serve();
  ListeningClient client(port());
  auto gate = m_script->holdUp();
  client.get("/parts");
  ASSERT_TRUE(m_script->awaitTaken(1));
  for (int i = 0; i < 1000; ++i) m_script->wake();
  EXPECT_EQ(m_script->taken(), 1U) << "one part is under way at a time";
  gate.unlock();
  ASSERT_TRUE(m_script->awaitTaken(2));
  m_script->add("end", Next::kNone);
  m_script->wake();
  ASSERT_TRUE(client.await("end"));
  EXPECT_LT(m_script->taken(), 10U);
}

TEST_F(AnswerInPartsTest, ARefusalIsAnAnswerLikeAnyOther) {
  serve();
  ListeningClient client(port());
  client.get("/parts?refuse");
  ASSERT_TRUE(client.await("There are no parts"));
  EXPECT_EQ(client.text().rfind("HTTP/1.1 409 ", 0), 0U) << client.text();
  EXPECT_NE(client.text().find("\r\nContent-Length: "), std::string::npos) << client.text();
  client.get("/plain");
  EXPECT_TRUE(client.await("\"plain\""));
}

TEST_F(AnswerInPartsTest, AFailureAheadOfTheHeadIsTold) {
  serve();
  m_script->fail();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(client.await("come to its end"));
  EXPECT_EQ(client.text().rfind("HTTP/1.1 500 ", 0), 0U) << client.text();
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, AFailureAmidThePartsCutsTheAnswerOff) {
  serve();
  m_script->add("one", Next::kAtOnce);
  m_script->fail();
  ListeningClient client(port());
  client.get("/parts");
  client.awaitEnd();
  EXPECT_EQ(client.body(), "one");
  EXPECT_FALSE(client.isWhole());
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, ASourceGoesWithItsClient) {
  serve();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(m_script->awaitSources(1));
  ASSERT_TRUE(client.await("\r\n\r\n"));
  client.close();
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, OneThatHasSentItsNextRequestIsNoticedToLeave) {
  serve();
  ListeningClient client(port());
  client.send("GET /parts HTTP/1.1\r\nHost: localhost\r\n\r\nGET /plain HTTP/1.1\r\nHost: localhost\r\n\r\n");
  ASSERT_TRUE(client.await("\r\n\r\n"));
  client.close();
  m_script->repeat({std::string(1000, 'x'), Next::kLater});
  for (int i = 0; i < 20; ++i) m_script->wake();
  EXPECT_TRUE(m_script->awaitSources(0));
}

/// What it has not taken is not asked for either.
TEST_F(AnswerInPartsTest, AClientThatTakesNothingIsClosed) {
  Options options = ServedTable::usual();
  options.limits.writeTime = std::chrono::milliseconds(300);
  serve(options);
  constexpr std::size_t kPart = 64 * 1024;
  m_script->repeat({std::string(kPart, 'x'), Next::kAtOnce});
  ListeningClient client(port(), 4096);
  client.get("/parts");
  EXPECT_TRUE(m_script->awaitSources(1));
  EXPECT_TRUE(m_script->awaitSources(0));
  EXPECT_LT(m_script->taken() * kPart, 32U * 1024 * 1024);
  client.awaitEnd();
  EXPECT_FALSE(client.isWhole());
}

TEST_F(AnswerInPartsTest, AnAnswerWithNothingToSayOutlivesTheDeadlines) {
  Options options = ServedTable::usual();
  options.limits.writeTime = options.limits.idleTime = options.limits.headerTime =
      std::chrono::milliseconds(500);
  serve(options);
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(m_script->awaitTaken(3));  // by ticks
  m_script->add("still there", Next::kNone);
  EXPECT_TRUE(client.await("still there"));
}

TEST_F(AnswerInPartsTest, WhoIsPutOutHearsNoMore) {
  serve();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(client.await("\r\n\r\n"));
  m_doorkeeper.isOpen = false;
  const auto begin = Clock::now();
  client.awaitEnd();
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
  EXPECT_FALSE(client.isWhole());
  EXPECT_TRUE(m_script->awaitSources(0));
}

TEST_F(AnswerInPartsTest, TheStopHasTheLastWordSent) {
  serve();
  ListeningClient client(port());
  client.get("/parts");
  ASSERT_TRUE(client.await("\r\n\r\n"));
  m_script->add("bye", Next::kNone);
  const auto begin = Clock::now();
  EXPECT_TRUE(m_served->stop());
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
  EXPECT_TRUE(client.awaitEnd());
  EXPECT_EQ(client.body(), "bye");
  EXPECT_TRUE(client.isWhole());
}

TEST_F(AnswerInPartsTest, TheStopWaitsForNoneThatGoesOn) {
  serve();
  m_script->repeat({"on and on ", Next::kLater});
  std::vector<std::unique_ptr<ListeningClient>> clients;
  for (int i = 0; i < 10; ++i) {
    clients.push_back(std::make_unique<ListeningClient>(port()));
    clients.back()->get("/parts");
    ASSERT_TRUE(clients.back()->await("on and on"));
  }
  const auto begin = Clock::now();
  EXPECT_TRUE(m_served->stop());
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(4));
  EXPECT_TRUE(m_script->awaitSources(0));
  for (const auto& client : clients) {
    client->awaitEnd();
    EXPECT_FALSE(client->isWhole());
  }
}

/// The bounds of what may wait for a thread are not for those who have begun to listen.
TEST_F(AnswerInPartsTest, AHundredThatWakeAtOnceAreAllServedAndCostNoThread) {
  serve();
  const std::size_t threads = processResources().threads;
  std::vector<std::unique_ptr<ListeningClient>> clients;
  for (int i = 0; i < 100; ++i) {
    clients.push_back(std::make_unique<ListeningClient>(port()));
    clients.back()->get("/parts");
    ASSERT_TRUE(clients.back()->await("\r\n\r\n")) << i;
  }
  EXPECT_EQ(processResources().threads, threads);
  auto gate = m_script->holdUp();
  const std::size_t before = m_script->taken();
  ASSERT_TRUE(m_script->awaitTaken(before + 4)) << "all that take parts are held up, the others wait";
  for (int i = 0; i < 100; ++i) m_script->add("part", Next::kNone);
  gate.unlock();
  for (const auto& client : clients) EXPECT_TRUE(client->await("4\r\npart\r\n0\r\n\r\n"));
}

TEST_F(AnswerInPartsTest, ComesOverTls) {
  const TestCertificate authority("authority");
  const TestCertificate own("server", authority);
  const TemporaryFolder folder;
  writeText(folder / "certificate.pem", own.certificate());
  writeText(folder / "key.pem", own.key());
  Options options = ServedTable::usual();
  options.tlsCertificate = (folder / "certificate.pem").string();
  options.tlsKey = (folder / "key.pem").string();
  serve(options);
  addThree();
  TlsClient client(authority);
  ASSERT_TRUE(client.connect(port()));
  client.send("GET /parts HTTP/1.1\r\nHost: localhost\r\n\r\n");
  client.receive("\r\n\r\n");
  EXPECT_EQ(client.receive("0\r\n\r\n"), kChunks);
}

TEST_F(AnswerInPartsTest, ComesOverTheUnixSocket) {
  const TemporaryFolder folder;
  Options options = ServedTable::usual();
  options.unixSocket = (folder / "socket").string();
  options.needsUnixSocket = true;
  serve(options);
  addThree();
  const std::string answer = localExchange(
      options.unixSocket, "GET /parts HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(answer.substr(answer.find("\r\n\r\n") + 4), kChunks);
}

}  // namespace

}  // namespace host
