#include "readiness/machine_past.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/history/history_in_a_folder.h"
#include "insight/readiness/made_past.h"

namespace insight {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MachinePastTest : public HistoryInAFolder {
 protected:
  static Job job(const std::string& id, const std::string& kind, std::int64_t agoMs) {
    Job job = endedJob(kind, agoMs);
    job.id = id;
    job.seenFromMs = *job.startMs;
    return job;
  }

  void keep(History& history, const std::vector<Job>& jobs, const std::vector<Alarm>& alarms) {
    ++m_entries;
    HistoryBatch batch = sampleEvents(m_entries, m_entries);
    for (const Job& each : jobs) batch.jobs.push_back(recordOf(each));
    for (const Alarm& each : alarms) batch.alarms.push_back(recordOf(each));
    ASSERT_TRUE(history.addAndWait(std::move(batch), 10s));
  }

  static std::vector<std::string> idsOf(const std::vector<Job>& jobs) {
    std::vector<std::string> ids;
    for (const Job& each : jobs) ids.push_back(each.id);
    return ids;
  }

  std::uint64_t m_entries = 0;
};

TEST_F(MachinePastTest, OfAnEmptyHistoryBeginsNow) {
  History history(settings());
  const MachinePast past = pastOf(history, {}, kAskedMs);
  EXPECT_EQ(past.fromMs, kAskedMs);
  EXPECT_EQ(past.jobsFromMs, kAskedMs);
  EXPECT_THAT(past.jobs, IsEmpty());
  EXPECT_THAT(past.alarms, IsEmpty());
}

TEST_F(MachinePastTest, HasWhatReadinessAsksForAndTheOpenAlarms) {
  History history(settings());
  keep(history, {job("1", "verify", 3000), job("2", "migrate", 2000), job("3", "rebuild", 1000)},
       {alarmOfVolume("volume-degraded", kAskedMs - 5000, kAskedMs - 4000),
        alarmOfVolume("disk-failed", kAskedMs - 5000, kAskedMs - 3000)});
  const MachinePast past = pastOf(
      history,
      {alarmOfVolume("volume-failed", kAskedMs - 100, {}), alarmOfVolume("picture-old", kAskedMs - 100, {})},
      kAskedMs);
  EXPECT_THAT(idsOf(past.jobs), ElementsAre("3", "1"));
  EXPECT_EQ(past.jobs.at(0).startMs, kAskedMs - 1000 - kHourMs);
  ASSERT_THAT(past.alarms, SizeIs(2));
  EXPECT_EQ(past.alarms.at(0).cause.kind, "volume-degraded");
  EXPECT_EQ(past.alarms.at(0).clearedMs, kAskedMs - 4000);
  EXPECT_EQ(past.alarms.at(1).cause.kind, "volume-failed");
  EXPECT_EQ(past.fromMs, sampleEvent(1).atMs);
  EXPECT_EQ(past.alarmsFromMs, sampleEvent(1).atMs);
}

TEST_F(MachinePastTest, IsLookedAtSoFarAndTellsHowFar) {
  History history(settings());
  std::vector<Job> jobs;
  for (int i = 1; i <= 5; ++i)
    jobs.push_back(job(std::to_string(i), i % 2 == 0 ? "migrate" : "verify", i * 1000));
  keep(history, jobs, {});
  const EndedLook some = history.lastJobs({"verify"}, 3);
  ASSERT_THAT(some.items, SizeIs(2));
  EXPECT_EQ(some.items[0].id, "1");
  EXPECT_EQ(some.items[1].id, "3");
  EXPECT_EQ(some.fromMs, kAskedMs - 4000 + 1) << "one ended then that is not among them";
  EXPECT_EQ(history.lastJobs({"verify"}, 5).fromMs, 0);
  EXPECT_THAT(history.lastJobs({"verify", "migrate"}, 5).items, SizeIs(5));
}

}  // namespace
}  // namespace insight
