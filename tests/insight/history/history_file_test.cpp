#include "history/history_file.h"

#include <gmock/gmock.h>

#include "history/history_tables.h"
#include "insight/history/sample_entries.h"
#include "support/temporary_folder.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::int64_t> rowsOf(const std::vector<Entry>& entries) {
  std::vector<std::int64_t> rows;
  for (const Entry& entry : entries) rows.push_back(entry.row);
  return rows;
}

class HistoryFileTest : public testing::Test {
 protected:
  std::filesystem::path path() const { return (m_folder / "history.db").native(); }

  TemporaryFolder m_folder;
};

TEST_F(HistoryFileTest, ReadsBackWhatWasWritten) {
  HistoryFile file(path());
  HistoryBatch batch;
  batch.entries.push_back(sampleEvent(10, L"D\u00e9"));
  batch.entries.back().actor = "first";
  batch.entries.back().outcome = "done";
  file.write(batch);
  EXPECT_EQ(batch.entries.at(0).row, 1);

  HistoryReader reader(path());
  const std::vector<Entry> entries = reader.entriesAfter(0, 10);
  ASSERT_THAT(entries, SizeIs(1));
  const Entry& entry = entries.at(0);
  const Entry& written = batch.entries.at(0);
  EXPECT_EQ(entry.row, 1);
  EXPECT_EQ(entry.epoch, written.epoch);
  EXPECT_EQ(entry.sequence, written.sequence);
  EXPECT_EQ(entry.atMs, written.atMs);
  EXPECT_EQ(entry.kind, written.kind);
  EXPECT_EQ(entry.severity, Severity::kWarning);
  EXPECT_EQ(entry.actor, "first");
  EXPECT_EQ(entry.object, written.object);
  EXPECT_EQ(entry.operation, written.operation);
  EXPECT_EQ(entry.outcome, "done");
  EXPECT_EQ(entry.body, written.body);
}

TEST_F(HistoryFileTest, RowsGoOnOverARestart) {
  std::string epoch;
  {
    HistoryFile file(path());
    HistoryBatch batch = sampleEvents(1, 3);
    file.write(batch);
    epoch = file.epoch();
  }
  HistoryFile again(path());
  EXPECT_EQ(again.epoch(), epoch);
  EXPECT_EQ(again.newestRow(), 3);
  HistoryBatch more = sampleEvents(4, 5);
  again.write(more);
  EXPECT_THAT(rowsOf(more.entries), ElementsAre(4, 5));
}

TEST_F(HistoryFileTest, TheSameEventIsKeptOnce) {
  HistoryFile file(path());
  HistoryBatch batch = sampleEvents(1, 2);
  file.write(batch);
  HistoryBatch overlapping = sampleEvents(2, 3);
  file.write(overlapping);
  EXPECT_EQ(overlapping.entries.at(0).row, 0);
  EXPECT_GT(overlapping.entries.at(1).row, 2);
  EXPECT_THAT(HistoryReader(path()).entriesAfter(0, 10), SizeIs(3));
}

TEST_F(HistoryFileTest, WhatLastsIsFoundUntilItsEnd) {
  HistoryFile file(path());
  HistoryBatch batch;
  batch.jobs = {sampleRecord("a-1", 1), sampleRecord("a-2", 2)};
  batch.alarms = {sampleRecord("disk-failed-D1", 1), ended(sampleRecord("disk-failed-D1", 0), 1)};
  file.write(batch);
  EXPECT_THAT(file.lastingJobs(), SizeIs(2));
  ASSERT_THAT(file.lastingAlarms(), SizeIs(1));
  EXPECT_EQ(file.lastingAlarms().at(0).fromMs, 1);

  HistoryBatch end;
  end.jobs = {ended(sampleRecord("a-1", 1), 9)};
  file.write(end);
  ASSERT_THAT(file.lastingJobs(), SizeIs(1));
  EXPECT_EQ(file.lastingJobs().at(0).id, "a-2");

  HistoryReader reader(path());
  ASSERT_THAT(reader.endedJobs("", 10), SizeIs(1));
  EXPECT_EQ(reader.endedJobs("rebuild", 10).at(0).body.at("state"), "ended");
  EXPECT_THAT(reader.endedJobs("verify", 10), IsEmpty());
  EXPECT_THAT(reader.endedAlarms(10), SizeIs(1));
}

TEST_F(HistoryFileTest, ACallWithoutAnEndIsFound) {
  HistoryFile file(path());
  HistoryBatch batch;
  batch.entries = {sampleCall(2, "begun"), sampleCall(3, "done"), sampleCall(4, "begun"),
                   sampleCall(6, "begun"), sampleCall(7, "refused")};
  file.write(batch);
  ASSERT_THAT(file.openCalls(), SizeIs(1));
  EXPECT_EQ(file.openCalls().at(0).sequence, 4U);
}

TEST_F(HistoryFileTest, TheOldestGoWhenThereAreTooMany) {
  HistoryFile file(path());
  HistoryBatch batch = sampleEvents(1, 2500);
  file.write(batch);
  HistoryBounds bounds;
  bounds.entries = 100;
  int steps = 1;
  while (file.prune(bounds, kSampleStart)) ++steps;
  EXPECT_EQ(steps, 3) << "a step is short, so that others are not held up";
  EXPECT_EQ(file.oldestRow(), 2401);
  EXPECT_EQ(file.newestRow(), 2500);
}

TEST_F(HistoryFileTest, WhatIsTooOldGoes) {
  HistoryFile file(path());
  HistoryBatch batch = sampleEvents(1, 100);
  batch.jobs = {ended(sampleRecord("a-1", kSampleStart), kSampleStart + 1),
                sampleRecord("a-2", kSampleStart)};
  batch.alarms = {ended(sampleRecord("disk-failed-D1", kSampleStart), kSampleStart + 1),
                  sampleRecord("disk-failed-D2", kSampleStart)};
  file.write(batch);
  HistoryBounds bounds;
  bounds.milliseconds = 1000 * 1000;
  EXPECT_FALSE(file.prune(bounds, kSampleStart + 1050 * 1000));
  EXPECT_EQ(file.oldestRow(), 50);
  EXPECT_THAT(file.lastingJobs(), SizeIs(1)) << "what lasts stays";
  EXPECT_THAT(file.lastingAlarms(), SizeIs(1));
  HistoryReader reader(path());
  EXPECT_THAT(reader.endedJobs("", 10), IsEmpty());
  EXPECT_THAT(reader.endedAlarms(10), IsEmpty());
}

TEST_F(HistoryFileTest, NumbersAreNotUsedAgainWhenAllIsGone) {
  HistoryFile file(path());
  HistoryBatch batch = sampleEvents(1, 3);
  file.write(batch);
  HistoryBounds bounds;
  bounds.milliseconds = 1;
  file.prune(bounds, kSampleStart + 1'000'000);
  EXPECT_EQ(file.oldestRow(), 0);
  HistoryBatch more = sampleEvents(4, 4);
  file.write(more);
  EXPECT_EQ(more.entries.at(0).row, 4);
}

TEST_F(HistoryFileTest, AFileOfALaterVersionIsLeftAlone) {
  { const HistoryFile file(path()); }
  {
    sql::Database database(path().u8string(), sql::Database::Access::kReadAndMake, 0);
    database.run("PRAGMA user_version = 99");
  }
  try {
    const HistoryFile file(path());
    FAIL() << "was opened";
  } catch (const sql::Failure& failure) {
    EXPECT_FALSE(failure.isDamage());
    EXPECT_THAT(failure.what(), testing::HasSubstr("later version"));
  }
}

TEST_F(HistoryFileTest, ABatchThatFailsLeavesNothing) {
  HistoryFile file(path());
  HistoryBatch batch = sampleEvents(1, 2);
  {
    sql::Database other(path().u8string(), sql::Database::Access::kReadAndMake, 0);
    const sql::Transaction lock(other);
    EXPECT_THROW(file.write(batch), sql::Failure);
  }
  EXPECT_EQ(file.newestRow(), 0);
  file.write(batch);
  EXPECT_EQ(file.newestRow(), 2);
}

TEST_F(HistoryFileTest, DetailsThatAreDamagedAreToldAsSuch) {
  {
    HistoryFile file(path());
    HistoryBatch batch = sampleEvents(1, 1);
    file.write(batch);
  }
  {
    sql::Database database(path().u8string(), sql::Database::Access::kReadAndMake, 0);
    database.run("UPDATE entry SET body = '{\"descr', object_name = x'ff'");
  }
  HistoryReader reader(path());
  const std::vector<Entry> entries = reader.entriesAfter(0, 10);
  ASSERT_THAT(entries, SizeIs(1));
  EXPECT_EQ(entries.at(0).body, (boost::json::object{{"damaged", true}}));
  EXPECT_EQ(entries.at(0).object.name, L"?");
}

}  // namespace
}  // namespace insight
