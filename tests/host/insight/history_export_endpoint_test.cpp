#include "insight/history_export_endpoint.h"

#include <gmock/gmock.h>

#include <boost/json/parse.hpp>
#include <sstream>
#include <vector>

#include "host/insight/told_host.h"
#include "host/net/listening_client.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kAdministers[] = "Authorization: Bearer administer\r\n";

class HistoryExportTest : public testing::Test {
 protected:
  ToldHost::Settings settings() const {
    ToldHost::Settings settings;
    settings.historyPath = (m_folder / "history.db").string();
    return settings;
  }
  void serve(const ToldHost::Settings& given) { m_host = std::make_unique<ToldHost>(given); }
  ToldHost& host() { return *m_host; }

  /// The answer as it came, whole.
  std::unique_ptr<ListeningClient> answer(const std::string& query = "",
                                          const std::string& fields = kAdministers) {
    auto client = std::make_unique<ListeningClient>(host().port());
    client->get("/api/v1/history/export" + query, fields + "Connection: close\r\n");
    EXPECT_TRUE(client->awaitEnd());
    return client;
  }

  /// The rows of the lines of a whole export.
  std::vector<std::int64_t> rows(const std::string& query = "") {
    const auto client = answer(query);
    EXPECT_TRUE(client->isWhole()) << client->text().substr(0, 500);
    std::vector<std::int64_t> rows;
    std::istringstream lines(client->body());
    for (std::string line; std::getline(lines, line);) {
      const auto entry = boost::json::parse(line);
      rows.push_back(entry.at("row").to_number<std::int64_t>());
      EXPECT_EQ(entry.at("details").at("number").to_number<std::int64_t>(), rows.back());
    }
    return rows;
  }

  TemporaryFolder m_folder;
  std::unique_ptr<ToldHost> m_host;
};

TEST_F(HistoryExportTest, IsALineForEachEntryOldestFirst) {
  serve(settings());
  host().keep(2500);
  const std::vector<std::int64_t> all = rows();
  ASSERT_EQ(all.size(), 2500U);
  for (std::size_t i = 0; i < all.size(); ++i) ASSERT_EQ(all[i], static_cast<std::int64_t>(i + 1));
  EXPECT_THAT(answer()->text(), HasSubstr("\r\nContent-Type: application/x-ndjson\r\n"));
}

TEST_F(HistoryExportTest, HasWhatClientsDid) {
  serve(settings());
  host().tell(1);
  host().tell(1, 0, "audit");
  host().awaitKept();
  EXPECT_THAT(rows(), ElementsAre(1, 2));
}

TEST_F(HistoryExportTest, ASpanHasItsFirstMomentAndNotItsLast) {
  serve(settings());
  host().keep(5);  // a second each, the first one at 22:13:21
  EXPECT_THAT(rows("?from=2023-11-14T22:13:22Z"), ElementsAre(2, 3, 4, 5));
  EXPECT_THAT(rows("?to=2023-11-14T22:13:23.000Z"), ElementsAre(1, 2));
  EXPECT_THAT(rows("?from=2023-11-14T22:13:22Z&to=2023-11-14T22:13:24Z"), ElementsAre(2, 3));
  EXPECT_THAT(rows("?from=2024-11-14T22:13:22Z"), IsEmpty());
  for (const char* const query : {"?from=yesterday", "?to=", "?to=2023-11-14", "?since=2023-11-14T22:13:22Z",
                                  "?from=2023-11-14T22:13:24Z&to=2023-11-14T22:13:22Z"}) {
    EXPECT_THAT(answer(query)->text(), HasSubstr("HTTP/1.1 400 ")) << query;
  }
}

TEST_F(HistoryExportTest, AnEmptyHistoryHasNoLines) {
  serve(settings());
  EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(HistoryExportTest, IsForWhoAdministers) {
  serve(settings());
  EXPECT_THAT(answer("", "Authorization: Bearer observe\r\n")->text(), HasSubstr("HTTP/1.1 403 "));
}

TEST_F(HistoryExportTest, WhereNoneIsKeptThereIsNone) {
  ToldHost::Settings given = settings();
  given.historyPath.clear();
  serve(given);
  EXPECT_THAT(answer()->text(), HasSubstr("HTTP/1.1 422 "));
}

/// What comes while it is read is not waited for, and it ends.
TEST_F(HistoryExportTest, IsWhatThereWasAtItsStart) {
  serve(settings());
  host().keep(20'000, 100);
  ListeningClient client(host().port(), 65536);
  client.get("/api/v1/history/export", kAdministers);
  ASSERT_TRUE(client.await("\"number\":1,"));
  host().keep(1);
  EXPECT_TRUE(client.await("0\r\n\r\n"));
  EXPECT_THAT(client.body(), HasSubstr("\"number\":20000,"));
  EXPECT_EQ(client.body().find("\"number\":20001,"), std::string::npos);
}

TEST_F(HistoryExportTest, OnlySixteenAreReadAtOnce) {
  serve(settings());
  host().keep(15'000, 1000);
  std::vector<std::unique_ptr<ListeningClient>> clients;
  for (int i = 0; i < 16; ++i) {
    clients.push_back(std::make_unique<ListeningClient>(host().port(), 65536));
    clients.back()->get("/api/v1/history/export", kAdministers);
    ASSERT_TRUE(clients.back()->await("\"number\":1,"));
  }
  EXPECT_THAT(answer()->text(), HasSubstr("HTTP/1.1 503 "));
  clients.clear();
}

TEST_F(HistoryExportTest, ARevokedTokenCutsItOff) {
  serve(settings());
  host().keep(15'000, 1000);
  ListeningClient client(host().port(), 65536);
  client.get("/api/v1/history/export", kAdministers);
  ASSERT_TRUE(client.await("\"number\":1,"));
  host().tokens.isOpen = false;
  client.awaitEnd();
  EXPECT_FALSE(client.isWhole()) << "nobody takes it for all";
}

}  // namespace

}  // namespace host
