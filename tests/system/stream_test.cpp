#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <vector>

#include "host/net/listening_client.h"
#include "system/story.h"

namespace host {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

constexpr char kSecondMirror[] = "QV48021000A7";
constexpr char kFreeSata[] = "TB2T7790315";

class StreamStory : public Story {
 protected:
  std::string fields() const { return "Authorization: Bearer " + m_host->token() + "\r\n"; }

  std::unique_ptr<ListeningClient> listener(const std::string& lastId = "") {
    auto client = std::make_unique<ListeningClient>(m_host->port());
    client->get("/api/v1/events/stream",
                fields() + (lastId.empty() ? "" : "Last-Event-ID: " + lastId + "\r\n"));
    EXPECT_TRUE(client->await("\r\n\r\n"));
    EXPECT_THAT(client->text(), HasSubstr("HTTP/1.1 200 OK\r\n"));
    return client;
  }

  /// Of all that was heard, in order.
  static std::vector<std::string> idsIn(const std::string& body) {
    std::vector<std::string> ids;
    std::istringstream lines(body);
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("id: ", 0) == 0) ids.push_back(line.substr(4));
    }
    return ids;
  }
  static long rowOf(const std::string& id) { return std::stol(id.substr(id.find('.') + 1)); }
  static void expectWithoutHole(const std::vector<std::string>& ids) {
    for (std::size_t i = 1; i < ids.size(); ++i) EXPECT_EQ(rowOf(ids[i]), rowOf(ids[i - 1]) + 1) << ids[i];
  }

  std::string exported() {
    ListeningClient client(m_host->port());
    client.get("/api/v1/history/export", fields() + "Connection: close\r\n");
    EXPECT_TRUE(client.awaitEnd());
    EXPECT_TRUE(client.isWhole());
    return client.body();
  }
};

TEST_F(StreamStory, AFaultIsHeardAsItHappensAndStandsInTheExport) {
  begin();
  const auto client = listener();
  befall("fail-disk", kSecondMirror);
  ASSERT_TRUE(client->await("\"operation\":\"volume-degraded\""));
  EXPECT_THAT(client->body(), HasSubstr("event: event\n"));
  EXPECT_THAT(client->body(), HasSubstr("event: audit\n"));
  const std::vector<std::string> ids = idsIn(client->body());
  ASSERT_GT(ids.size(), 2U);
  expectWithoutHole(ids);
  EXPECT_THAT(exported(), HasSubstr("{\"row\":" + std::to_string(rowOf(ids.back())) + ','));
}

TEST_F(StreamStory, TheStopSaysFarewell) {
  begin();
  const auto client = listener();
  const auto begin = std::chrono::steady_clock::now();
  stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  EXPECT_TRUE(client->awaitEnd());
  EXPECT_TRUE(client->isWhole());
  EXPECT_THAT(client->body(), EndsWith("retry: 1000\nevent: bye\ndata: {}\n\n"));
}

TEST_F(StreamStory, WhoComesBackToAHostThatWasKilledMissesNothing) {
  begin();
  const auto before = listener();
  befall("fail-disk", kSecondMirror);
  ASSERT_TRUE(before->await("\"operation\":\"volume-degraded\""));
  const std::vector<std::string> ids = idsIn(before->body());
  m_host->signal(SIGKILL);
  m_host->awaitExit();
  before->awaitEnd();
  EXPECT_FALSE(before->isWhole());
  serve({{"VEXL2_CLOCK_SPEED", "0"}}, {"--simulator-controls"});
  const auto after = listener(ids.back());
  befall("raise-smart-event", kFreeSata);
  ASSERT_TRUE(after->await("\"operation\":\"disk-smart\""));
  const std::vector<std::string> more = idsIn(after->body());
  ASSERT_FALSE(more.empty());
  EXPECT_EQ(rowOf(more.front()), rowOf(ids.back()) + 1);
  expectWithoutHole(more);
}

TEST_F(StreamStory, ARevokedTokenIsTheEndOfItsStreamsWithinTwoSeconds) {
  begin();
  const auto client = listener();
  const std::string table = (m_folder / "tokens").string();
  const std::string tokens = readText(table);
  std::ofstream(table, std::ios::trunc).close();
  const auto revoked = std::chrono::steady_clock::now();
  client->awaitEnd();
  EXPECT_LT(std::chrono::steady_clock::now() - revoked, std::chrono::seconds(3));
  EXPECT_FALSE(client->isWhole());
  std::ofstream(table) << tokens;
  m_host->signal(SIGHUP);
  EXPECT_TRUE(m_host->awaitError("mirn-host: the tokens were read again"));
}

}  // namespace

}  // namespace host
