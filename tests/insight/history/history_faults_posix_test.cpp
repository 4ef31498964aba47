#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>

#include "history/history.h"
#include "insight/history/history_in_a_folder.h"
#include "insight/history/recovers.h"
#include "insight/history/sample_entries.h"
#include "support/file_size_limit.h"
#include "support/ordinary_user.h"

namespace insight {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class HistoryFaultsTest : public HistoryInAFolder {};

TEST_F(HistoryFaultsTest, AFullDiskLosesNothing) {
  History history(settings());
  ASSERT_TRUE(history.addAndWait(sampleEvents(1, 10), 10s));
  {
    const FileSizeLimit full(64 * 1024);
    for (std::uint64_t first = 11; first < 2011; first += 100) history.add(sampleEvents(first, first + 99));
    ASSERT_TRUE(m_told.wait(2010));
    EXPECT_FALSE(history.addAndWait(sampleEvents(2011, 2011), 10s));
    ASSERT_TRUE(history.cause());
    EXPECT_EQ(history.cause()->kind, "history");
  }
  ASSERT_TRUE(recovers(history, 3000));
  EXPECT_FALSE(history.cause());
  std::vector<Entry> kept;
  for (std::vector<Entry> some;
       !(some = history.entriesAfter(kept.empty() ? 0 : kept.back().row, 1000)).empty();) {
    kept.insert(kept.end(), some.begin(), some.end());
  }
  ASSERT_GE(kept.size(), 2012U);
  for (std::uint64_t i = 0; i < 2011; ++i) EXPECT_EQ(kept.at(i).sequence, i + 1);
}

TEST_F(HistoryFaultsTest, AFolderThatTakesNothingIsTriedAgain) {
  ::chmod(m_folder.path().c_str(), 0555);
  std::optional<History> history;
  {
    const OrdinaryUser nobody;
    history.emplace(settings());
    history->add(sampleEvents(1, 2));
    ASSERT_TRUE(m_told.wait(2)) << "told all the same";
    ASSERT_TRUE(history->cause());
    EXPECT_THAT(history->cause()->text, HasSubstr("Permission denied"));
    EXPECT_THROW(history->page({}), sql::Failure);
  }
  ::chmod(m_folder.path().c_str(), 0755);
  ASSERT_TRUE(recovers(*history, 10));
  EXPECT_GE(history->page({}).items.size(), 3U);
}

/// Kinds of pages, found in a file by what they hold.
struct Page {
  const char* name;
  const char* query;  ///< Its number; null for the first that is free.
};

class DamagedPageTest : public HistoryFaultsTest, public testing::WithParamInterface<Page> {
 protected:
  static constexpr std::size_t kPageSize = 4096;

  void makeFile() {
    HistoryFile file(path());
    HistoryBatch batch = sampleEvents(1, 3000);
    batch.entries.back().body["long"] = std::string(20'000, 'x');
    for (std::int64_t i = 0; i < 200; ++i) {
      batch.jobs.push_back(sampleRecord("job-" + std::to_string(i), i));
      batch.alarms.push_back(sampleRecord("alarm-" + std::to_string(i), i));
    }
    file.write(batch);
    HistoryBounds bounds;
    bounds.entries = 2000;
    while (file.prune(bounds, kSampleStart)) {
    }
  }

  /// From the file's head, or where the tables' statistics have it.
  std::int64_t pageOf(const char* query) {
    if (query == nullptr) return firstFreePage();
    sql::Database database(path().u8string(), sql::Database::Access::kReadAndMake, 0);
    return database.number(query);
  }

  std::int64_t firstFreePage() const {
    std::ifstream file(path(), std::ios::binary);
    file.seekg(32);
    std::int64_t page = 0;
    for (int i = 0; i < 4; ++i) page = page * 256 + file.get();
    return page;
  }

  void damage(std::int64_t page) {
    std::fstream file(path(), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp((page - 1) * static_cast<std::int64_t>(kPageSize));
    for (std::size_t i = 0; i < kPageSize; ++i) file.put(static_cast<char>(0xA5));
  }
};

TEST_P(DamagedPageTest, TheServiceGoesOnAndSaysSo) {
  makeFile();
  const std::int64_t page = pageOf(GetParam().query);
  ASSERT_GT(page, 0) << "no such page";
  damage(page);
  History history(settings());
  for (std::uint64_t sequence = 10'000; sequence < 10'100; sequence += 10) {
    ASSERT_TRUE(recovers(history, sequence));
    HistoryQuery query;
    do {
      try {
        const HistoryPage read = history.page(query);
        query.cursor = read.next;
      } catch (const sql::Failure&) {
        break;  // meets the damage
      }
    } while (!query.cursor.empty());
    try {
      history.endedJobs("", 1000);
      history.endedAlarms(1000);
    } catch (const sql::Failure&) {
    }
  }
  ASSERT_TRUE(recovers(history, 20'000));
  std::size_t setAside = 0;
  for (const Entry& entry : m_told.entries()) setAside += entry.outcome == "set-aside";
  EXPECT_EQ(setAside, 1U);
  EXPECT_FALSE(history.cause());
  EXPECT_TRUE(std::filesystem::exists(path().string() + ".bad-20231114T221320.000Z"));
  EXPECT_GE(history.page({}).items.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Pages, DamagedPageTest,
    testing::Values(
        Page{"Head", "SELECT 1"},
        Page{"InnerOfEntries",
             "SELECT min(pageno) FROM dbstat WHERE name = 'entry' AND pagetype = 'internal'"},
        Page{"LeafOfEntries", "SELECT max(pageno) FROM dbstat WHERE name = 'entry' AND pagetype = 'leaf'"},
        Page{"OverflowOfEntries",
             "SELECT min(pageno) FROM dbstat WHERE name = 'entry' AND pagetype = 'overflow'"},
        Page{"InnerOfAnIndex",
             "SELECT min(pageno) FROM dbstat WHERE name = 'sqlite_autoindex_entry_1' AND pagetype = "
             "'internal'"},
        Page{"LeafOfJobs", "SELECT min(pageno) FROM dbstat WHERE name = 'job' AND pagetype = 'leaf'"},
        Page{"LeafOfAlarms", "SELECT min(pageno) FROM dbstat WHERE name = 'alarm' AND pagetype = 'leaf'"},
        Page{"Meta", "SELECT min(pageno) FROM dbstat WHERE name = 'meta'"}, Page{"FreeOnes", nullptr},
        Page{"Numbers", "SELECT min(pageno) FROM dbstat WHERE name = 'sqlite_sequence'"}),
    [](const auto& page) { return page.param.name; });

TEST_F(HistoryFaultsTest, NobodyElseMayReadWhatIsKept) {
  History history(settings());
  ASSERT_TRUE(history.addAndWait(sampleEvents(1, 1), 10s));
  for (const char* const end : {"", "-wal", "-shm"}) {
    const std::string file = path().string() + end;
    struct stat found {};
    ASSERT_EQ(::stat(file.c_str(), &found), 0) << file;
    EXPECT_EQ(found.st_mode & (S_IRWXG | S_IRWXO), 0U) << file;
  }
}

}  // namespace
}  // namespace insight
