#include "history/history.h"

#include <gmock/gmock.h>

#include "insight/history/history_in_a_folder.h"
#include "insight/history/recovers.h"
#include "insight/history/sample_entries.h"

namespace insight {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::SizeIs;

class HistoryTest : public HistoryInAFolder {};

TEST_F(HistoryTest, TellsWhatItKeepsByItsRow) {
  History history(settings());
  history.add(sampleEvents(1, 3));
  ASSERT_TRUE(m_told.wait(3));
  EXPECT_THAT(m_told.ids(),
              ElementsAre(history.epoch() + ".1", history.epoch() + ".2", history.epoch() + ".3"));
  EXPECT_EQ(history.page({}).items.size(), 3U) << "kept when it is told";
  EXPECT_FALSE(history.cause());
}

TEST_F(HistoryTest, WritesWhatWaitsAtItsEnd) {
  { History(settings()).add(sampleEvents(1, 2500)); }
  EXPECT_EQ(HistoryFile(path()).newestRow(), 2500);
}

TEST_F(HistoryTest, WaitsForWhatMustNotBeLost) {
  History history(settings());
  HistoryBatch batch;
  batch.entries = {sampleCall(2, "begun")};
  ASSERT_TRUE(history.addAndWait(std::move(batch), 10s));
  HistoryReader reader(path());
  EXPECT_THAT(reader.entriesAfter(0, 10), SizeIs(1));
}

TEST_F(HistoryTest, StartsWithWhatHasNoEnd) {
  {
    History history(settings());
    HistoryBatch batch;
    batch.entries = {sampleCall(2, "begun")};
    batch.jobs = {sampleRecord("a-1", 1)};
    batch.alarms = {sampleRecord("x", 3)};
    history.add(std::move(batch));
  }
  const History again(settings());
  EXPECT_THAT(again.start().jobs, SizeIs(1));
  EXPECT_THAT(again.start().alarms, SizeIs(1));
  EXPECT_THAT(again.start().calls, SizeIs(1));
}

TEST_F(HistoryTest, HoldsItsBounds) {
  History::Settings bounded = settings();
  bounded.bounds.entries = 100;
  History history(std::move(bounded));
  for (std::uint64_t first = 1; first <= 3000; first += 500) {
    HistoryBatch batch = sampleEvents(first, first + 499);
    ASSERT_TRUE(history.addAndWait(std::move(batch), 10s));
  }
  HistoryBatch last = sampleEvents(3001, 3500);
  ASSERT_TRUE(history.addAndWait(std::move(last), 10s));
  EXPECT_GT(history.oldestRow(), 1000);
}

TEST_F(HistoryTest, KeptOffItTellsAllTheSame) {
  History::Settings off = settings();
  off.path.clear();
  History history(std::move(off));
  history.add(sampleEvents(1, 2));
  ASSERT_TRUE(m_told.wait(2));
  EXPECT_EQ(m_told.entries().at(1).row, 2);
  EXPECT_EQ(history.epoch(), "");
  EXPECT_FALSE(history.cause()) << "nothing is wrong";
  EXPECT_FALSE(history.addAndWait(sampleEvents(3, 3), 10s)) << "nothing is kept";
  EXPECT_THROW(history.page({}), sql::Failure);
  EXPECT_EQ(m_folder.entries(), 0U);
}

TEST_F(HistoryTest, ALockedFileLosesNothing) {
  { const HistoryFile made(path()); }
  auto other = std::make_unique<sql::Database>(path().u8string(), sql::Database::Access::kReadAndMake, 0);
  auto lock = std::make_unique<sql::Transaction>(*other);
  History history(settings());
  history.add(sampleEvents(1, 2));
  ASSERT_TRUE(m_told.wait(2));
  EXPECT_EQ(m_told.epochs().size(), 1U);
  EXPECT_EQ(m_told.epochs().count(history.epoch()), 0U) << "under numbers of their own meanwhile";
  const auto cause = history.cause();
  ASSERT_TRUE(cause);
  EXPECT_EQ(cause->id(), "history");
  EXPECT_EQ(cause->severity, Severity::kWarning);
  EXPECT_THAT(cause->text, testing::HasSubstr("locked"));
  EXPECT_FALSE(history.addAndWait(sampleEvents(3, 3), 10s)) << "at once";

  lock.reset();
  ASSERT_TRUE(recovers(history, 4));
  EXPECT_FALSE(history.cause());
  EXPECT_EQ(history.entriesAfter(0, 3).back().sequence, 3U);
  EXPECT_EQ(m_told.epochs().count(history.epoch()), 1U);
}

TEST_F(HistoryTest, TheLossIsToldOnceItCanBe) {
  { const HistoryFile made(path()); }
  auto other = std::make_unique<sql::Database>(path().u8string(), sql::Database::Access::kReadAndMake, 0);
  auto lock = std::make_unique<sql::Transaction>(*other);
  History::Settings small = settings();
  small.longestQueue = 3;
  History history(std::move(small));
  EXPECT_FALSE(history.addAndWait(sampleEvents(1, 3), 10s));
  for (std::uint64_t sequence = 4; sequence <= 8; ++sequence) {
    history.add(sampleEvents(sequence, sequence));
  }
  lock.reset();
  ASSERT_TRUE(m_told.wait(4)) << "three entries, and the loss";
  const Entry loss = m_told.entries().back();
  EXPECT_EQ(loss.kind, "service");
  EXPECT_EQ(loss.operation, "history");
  EXPECT_EQ(loss.outcome, "lost");
  EXPECT_EQ(loss.severity, Severity::kWarning);
  EXPECT_EQ(loss.body,
            (boost::json::object{
                {"from", "2023-11-14T22:13:24.000Z"}, {"to", "2023-11-14T22:13:28.000Z"}, {"count", 5}}));
  EXPECT_EQ(history.page({}).items.front().outcome, "lost");
}

TEST_F(HistoryTest, AFileThatIsNoneIsSetAside) {
  writeText(m_folder / "history.db", std::string(8192, 'x'));
  History history(settings());
  ASSERT_TRUE(m_told.wait(1));
  EXPECT_EQ(m_told.entries().at(0).outcome, "set-aside");
  EXPECT_EQ(m_told.entries().at(0).body.at("file"), "history.db.bad-20231114T221320.000Z");
  EXPECT_EQ(readText(m_folder / "history.db.bad-20231114T221320.000Z"), std::string(8192, 'x'));
  EXPECT_EQ(history.page({}).items.size(), 1U);
  EXPECT_FALSE(history.cause());
}

TEST_F(HistoryTest, AFileThatOpensLateHasNoUnseenEnds) {
  {
    HistoryFile file(path());
    HistoryBatch batch;
    batch.jobs = {sampleRecord("old-1", 1)};
    batch.alarms = {sampleRecord("y", 3)};
    file.write(batch);
  }
  auto other = std::make_unique<sql::Database>(path().u8string(), sql::Database::Access::kReadAndMake, 0);
  auto lock = std::make_unique<sql::Transaction>(*other);
  {
    History history(settings());
    EXPECT_THAT(history.start().jobs, SizeIs(0));
    ASSERT_TRUE(history.cause());
    HistoryBatch batch = sampleEvents(1, 1);
    batch.jobs = {sampleRecord("new-1", 5)};
    history.add(std::move(batch));
    ASSERT_TRUE(m_told.wait(1));
    lock.reset();
    ASSERT_TRUE(recovers(history, 2));
  }
  HistoryFile file(path());
  ASSERT_THAT(file.lastingJobs(), SizeIs(1));
  EXPECT_EQ(file.lastingJobs().at(0).id, "new-1");
  EXPECT_THAT(file.lastingAlarms(), SizeIs(0));
  HistoryReader reader(path());
  EXPECT_EQ(reader.endedJobs("", 10).at(0).body.at("state"), "unknown");
}

}  // namespace
}  // namespace insight
