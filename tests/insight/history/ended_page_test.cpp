#include <gmock/gmock.h>

#include "history/history_file.h"
#include "insight/history/sample_entries.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EndedPageTest : public testing::Test {
 protected:
  std::filesystem::path path() const { return (m_folder / "history.db").native(); }

  void keepJobs(std::vector<LastingRecord> jobs) {
    HistoryBatch batch;
    batch.jobs = std::move(jobs);
    m_file.write(batch);
  }

  /// Of a page, whose cursor the next one has.
  std::vector<std::string> idsOf(std::size_t limit) {
    const EndedPage page = m_reader.jobPage({m_kind, limit, m_next});
    m_next = page.next;
    std::vector<std::string> ids;
    for (const LastingRecord& record : page.items) ids.push_back(record.id);
    return ids;
  }

  TemporaryFolder m_folder;
  HistoryFile m_file{path()};
  HistoryReader m_reader{path()};
  std::string m_kind;
  std::string m_next;
};

TEST_F(EndedPageTest, TellsTheLastEndFirstAndNothingOfWhatLasts) {
  keepJobs({ended(sampleRecord("a-1", 1), 9), sampleRecord("a-2", 2), ended(sampleRecord("a-3", 3), 12)});
  EXPECT_THAT(idsOf(10), ElementsAre("a-3", "a-1"));
  EXPECT_EQ(m_next, "");
}

TEST_F(EndedPageTest, GoesOnBehindThePageBeforeWhateverEndsMeanwhile) {
  keepJobs({ended(sampleRecord("a-1", 1), 10), ended(sampleRecord("a-2", 1), 20),
            ended(sampleRecord("a-3", 1), 20), ended(sampleRecord("a-4", 1), 20)});
  EXPECT_THAT(idsOf(2), ElementsAre("a-4", "a-3"));
  keepJobs({ended(sampleRecord("a-5", 1), 30), ended(sampleRecord("a-6", 1), 30)});
  EXPECT_THAT(idsOf(1), ElementsAre("a-2"));
  EXPECT_THAT(idsOf(1), ElementsAre("a-1"));
  EXPECT_EQ(m_next, "");
}

TEST_F(EndedPageTest, TellsBothTimesOfWhatCameBack) {
  HistoryBatch batch;
  batch.alarms = {ended(sampleRecord("disk.failed", 1), 5), ended(sampleRecord("disk.failed", 3), 5)};
  m_file.write(batch);
  const EndedPage first = m_reader.alarmPage({{}, 1, {}});
  EXPECT_EQ(first.items.at(0).fromMs, 3);
  const EndedPage second = m_reader.alarmPage({{}, 1, first.next});
  EXPECT_EQ(second.items.at(0).fromMs, 1);
  EXPECT_EQ(second.next, "");
}

TEST_F(EndedPageTest, MayBeOfOneKind) {
  LastingRecord verification = ended(sampleRecord("a-2", 1), 7);
  verification.kind = "verify";
  keepJobs({ended(sampleRecord("a-1", 1), 9), verification});
  m_kind = "verify";
  EXPECT_THAT(idsOf(10), ElementsAre("a-2"));
  m_kind = "migrate";
  EXPECT_THAT(idsOf(10), IsEmpty());
}

TEST_F(EndedPageTest, OneIsFoundByItsIdTheLastOfThatName) {
  HistoryBatch batch;
  batch.jobs = {sampleRecord("a-1", 1)};
  batch.alarms = {ended(sampleRecord("disk-failed-D1", 1), 5), ended(sampleRecord("disk-failed-D1", 8), 9)};
  m_file.write(batch);
  ASSERT_TRUE(m_reader.job("a-1"));
  EXPECT_FALSE(m_reader.job("a-1")->toMs);
  EXPECT_EQ(m_reader.alarm("disk-failed-D1")->fromMs, 8);
  EXPECT_FALSE(m_reader.job("a-2"));
  EXPECT_FALSE(m_reader.alarm("a-1"));
}

struct ForeignCursor {
  const char* name;
  const char* cursor;
};

void PrintTo(const ForeignCursor& row, std::ostream* stream) { *stream << row.name; }

class EndedCursorTest : public EndedPageTest, public testing::WithParamInterface<ForeignCursor> {};

TEST_P(EndedCursorTest, IsNoneOfOurs) {
  EXPECT_THROW(m_reader.jobPage({{}, 1, GetParam().cursor}), BadCursor);
}

INSTANTIATE_TEST_SUITE_P(
    Cursors, EndedCursorTest,
    testing::Values(ForeignCursor{"OfEntries", "e12"}, ForeignCursor{"WithoutAMark", "1.2.a-1"},
                    ForeignCursor{"WithoutAnId", "t1.2"}, ForeignCursor{"WithoutNumbers", "t"},
                    ForeignCursor{"WithoutABeginning", "t1..a-1"}, ForeignCursor{"WithASign", "t-1.2.a-1"},
                    ForeignCursor{"OfHugeNumbers", "t1234567890123456789.2.a-1"}),
    ByName());

}  // namespace
}  // namespace insight
