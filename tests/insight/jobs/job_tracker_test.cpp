#include "jobs/job_tracker.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "jobs/job_statistics.h"
#include "support/by_name.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t kStart = 1'700'000'000'000;

const OperationWorks kWorks{
    {"rebuildVolume", "rebuild"}, {"createVolume", "migrate"}, {"verifyVolume", "verify"}};

/// One volume; `action` is what is being done to it.
MachineView machineWith(const std::wstring& action, std::uint64_t percent,
                        const std::wstring& state = L"NORMAL", bool isInitialized = true) {
  MachineView machine;
  machine.takenAt = 1;
  VolumeView volume;
  volume.id = L"V1";
  volume.name = L"Data";
  volume.state = state;
  volume.percent = percent;
  volume.isInitialized = isInitialized;
  machine.volumes.push_back(volume);
  if (!action.empty()) machine.work.push_back({L"V1", action});
  machine.index();
  return machine;
}

std::vector<JobStep> stepsOf(const std::vector<JobChange>& changes) {
  std::vector<JobStep> steps;
  for (const JobChange& change : changes) steps.push_back(change.step);
  return steps;
}

class JobTrackerTest : public testing::Test {
 protected:
  std::vector<JobChange> look(const MachineView& machine, std::int64_t seconds, bool isKnown = true) {
    return m_tracker.look(machine, isKnown, kStart + seconds * 1000);
  }

  JobTracker m_tracker{"0123456789abcdef", kWorks};
};

TEST_F(JobTrackerTest, FollowsWorkFromStartToEnd) {
  EXPECT_THAT(look(machineWith(L"", 0), 0), IsEmpty());
  const auto begun = look(machineWith(L"REBUILDING", 0, L"REBUILDING"), 5);
  ASSERT_THAT(stepsOf(begun), ElementsAre(JobStep::kBegun));
  const Job& job = begun.at(0).job;
  EXPECT_EQ(job.id, "0123456789abcdef-1");
  EXPECT_EQ(job.kind, "rebuild");
  EXPECT_EQ(job.object, (ObjectRef{"volume", L"V1", L"Data"}));
  EXPECT_EQ(job.actor, "machine");
  EXPECT_EQ(job.startMs, kStart + 5000);
  EXPECT_THAT(look(machineWith(L"REBUILDING", 0, L"REBUILDING"), 6), IsEmpty());
  EXPECT_THAT(stepsOf(look(machineWith(L"REBUILDING", 50, L"REBUILDING"), 7)),
              ElementsAre(JobStep::kProgressed));
  EXPECT_THAT(m_tracker.running(), SizeIs(1));
  const auto ended = look(machineWith(L"", 0), 9);
  ASSERT_THAT(stepsOf(ended), ElementsAre(JobStep::kEnded));
  EXPECT_EQ(ended.at(0).job.outcome, "completed");
  EXPECT_EQ(ended.at(0).job.endMs, kStart + 9000);
  EXPECT_EQ(ended.at(0).job.progress.percent(), 50U);
  EXPECT_THAT(m_tracker.running(), IsEmpty());
}

TEST_F(JobTrackerTest, WorkThatWasFoundRunningHasNoStart) {
  const auto begun = look(machineWith(L"VERIFYING", 30), 0);
  ASSERT_THAT(begun, SizeIs(1));
  EXPECT_EQ(begun.at(0).job.startMs, std::nullopt);
  EXPECT_EQ(begun.at(0).job.seenFromMs, kStart);
}

TEST_F(JobTrackerTest, NothingIsSaidWhileThePictureIsBehind) {
  look(machineWith(L"REBUILDING", 10), 0);
  EXPECT_THAT(look(machineWith(L"", 0), 1, false), IsEmpty());
  EXPECT_THAT(look(MachineView(), 2), IsEmpty()) << "no picture yet";
  EXPECT_THAT(m_tracker.running(), SizeIs(1));
  const auto changes = look(machineWith(L"INITIALIZING", 3), 3);
  ASSERT_THAT(stepsOf(changes), ElementsAre(JobStep::kEnded, JobStep::kBegun));
  EXPECT_EQ(changes.at(1).job.startMs, std::nullopt) << "may have begun meanwhile";
}

struct OutcomeCase {
  const char* name;
  const wchar_t* action;
  std::uint64_t percent;
  const wchar_t* stateAfter;
  bool isInitializedAfter;
  const char* outcome;
};

class OutcomeTest : public JobTrackerTest, public testing::WithParamInterface<OutcomeCase> {};

TEST_P(OutcomeTest, ComesFromFacts) {
  look(machineWith(L"", 0), 0);
  look(machineWith(GetParam().action, GetParam().percent), 1);
  const auto ended = look(machineWith(L"", 0, GetParam().stateAfter, GetParam().isInitializedAfter), 2);
  ASSERT_THAT(ended, SizeIs(1));
  EXPECT_EQ(ended.at(0).job.outcome, GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    Outcomes, OutcomeTest,
    testing::Values(OutcomeCase{"Rebuilt", L"REBUILDING", 10, L"NORMAL", true, "completed"},
                    OutcomeCase{"NearlyWhole", L"REBUILDING", 99, L"DEGRADED", true, "completed"},
                    OutcomeCase{"LostAgain", L"REBUILDING", 40, L"DEGRADED", true, "failed"},
                    OutcomeCase{"Failed", L"REBUILDING", 99, L"FAILED", true, "failed"},
                    OutcomeCase{"Initialized", L"INITIALIZING", 20, L"NORMAL", true, "completed"},
                    OutcomeCase{"NotInitialized", L"INITIALIZING", 20, L"NORMAL", false, "ended"},
                    OutcomeCase{"Verified", L"VERIFYING", 99, L"NORMAL", true, "completed"},
                    OutcomeCase{"VerifiedAndFixed", L"VERIFYING_AND_FIXING", 100, L"NORMAL", true,
                                "completed"},
                    OutcomeCase{"VerificationStopped", L"VERIFYING", 40, L"NORMAL", true, "ended"},
                    OutcomeCase{"Migrated", L"GENERAL_MIGRATION", 50, L"NORMAL", true, "completed"},
                    OutcomeCase{"Unknown", L"REBUILDING", 50, L"UNKNOWN", true, "ended"}),
    ByName());

TEST_F(JobTrackerTest, TheVolumeMayBeGone) {
  look(machineWith(L"INITIALIZING", 10), 0);
  MachineView empty;
  empty.takenAt = 2;
  const auto ended = look(empty, 1);
  ASSERT_THAT(ended, SizeIs(1));
  EXPECT_EQ(ended.at(0).job.outcome, "ended");
}

CallNote callOf(const std::string& operation, const std::string& volumeId, std::int64_t seconds) {
  return {1, "first", operation, volumeId, false, kStart + seconds * 1000};
}

TEST_F(JobTrackerTest, NamesWhoHadItDone) {
  look(machineWith(L"", 0), 0);
  m_tracker.calls().begin(callOf("rebuildVolume", "V1", 1));
  EXPECT_EQ(look(machineWith(L"REBUILDING", 0), 2).at(0).job.actor, "first");
}

TEST_F(JobTrackerTest, NamesNobodyForOtherWork) {
  look(machineWith(L"", 0), 0);
  m_tracker.calls().begin(callOf("rebuildVolume", "V2", 1));
  m_tracker.calls().begin(callOf("verifyVolume", "V1", 1));
  EXPECT_EQ(look(machineWith(L"REBUILDING", 0), 2).at(0).job.actor, "machine");
}

TEST_F(JobTrackerTest, NamesNobodyForWhatWasRefusedOrIsLongAgo) {
  look(machineWith(L"", 0), 0);
  m_tracker.calls().begin(callOf("rebuildVolume", "V1", 1));
  m_tracker.calls().end(1, false);
  EXPECT_EQ(look(machineWith(L"REBUILDING", 0), 2).at(0).job.actor, "machine");
  look(machineWith(L"", 0), 3);
  m_tracker.calls().begin(callOf("rebuildVolume", "V1", 4));
  m_tracker.calls().end(1, true);
  EXPECT_EQ(look(machineWith(L"REBUILDING", 0), 65).at(0).job.actor, "machine");
}

TEST_F(JobTrackerTest, AVolumeThatIsNewWasMadeByTheCaller) {
  look(machineWith(L"", 0), 0);
  m_tracker.calls().begin(callOf("createVolume", "", 1));
  EXPECT_EQ(look(machineWith(L"GENERAL_MIGRATION", 0), 2).at(0).job.actor, "first");
}

TEST_F(JobTrackerTest, KnowsWhatOurClientsCancelled) {
  look(machineWith(L"VERIFYING", 40), 0);
  CallNote cancel = callOf("verifyVolume", "V1", 1);
  cancel.cancels = true;
  m_tracker.calls().begin(cancel);
  EXPECT_EQ(look(machineWith(L"", 0), 2).at(0).job.outcome, "cancelled");
}

Job earlierJob(std::uint64_t percent) {
  Job job;
  job.id = "eeee-7";
  job.kind = "rebuild";
  job.object = {"volume", L"V1", L"Data"};
  job.actor = "first";
  job.startMs = kStart - 5000;
  job.seenFromMs = kStart - 5000;
  job.progress = Progress(percent);
  return job;
}

TEST(JobTrackerOverRestarts, GoesOnWithWorkThatGoesOn) {
  JobTracker tracker("ffff", kWorks, {earlierJob(30)});
  EXPECT_THAT(stepsOf(tracker.look(machineWith(L"REBUILDING", 45), true, kStart)),
              ElementsAre(JobStep::kProgressed));
  ASSERT_THAT(tracker.running(), SizeIs(1));
  EXPECT_EQ(tracker.running().at(0).id, "eeee-7");
  EXPECT_EQ(tracker.running().at(0).startMs, kStart - 5000);
}

TEST(JobTrackerOverRestarts, EndsWhatIsNotTheSameWork) {
  JobTracker tracker("ffff", kWorks, {earlierJob(30)});
  const auto changes = tracker.look(machineWith(L"REBUILDING", 10), true, kStart);
  ASSERT_THAT(stepsOf(changes), ElementsAre(JobStep::kEnded, JobStep::kBegun));
  EXPECT_EQ(changes.at(0).job.id, "eeee-7");
  EXPECT_TRUE(changes.at(0).job.isEndUnseen);
  EXPECT_EQ(changes.at(1).job.startMs, std::nullopt);
}

TEST(JobTrackerOverRestarts, WaitsForAPictureToJudgeBy) {
  JobTracker tracker("ffff", kWorks, {earlierJob(30)});
  EXPECT_THAT(tracker.look(MachineView(), true, kStart), IsEmpty());
  const auto changes = tracker.look(machineWith(L"", 0), true, kStart);
  ASSERT_THAT(changes, SizeIs(1));
  EXPECT_EQ(changes.at(0).job.outcome, "completed");
  EXPECT_EQ(formOf(changes.at(0).job, kStart).at("end"), "unknown");
}

TEST(Progress, KnowsNoRateBeforeTwoChangesAndNoTimeBeforeFiveSteps) {
  Progress progress;
  progress.see(0, kStart);
  for (std::uint64_t percent = 1; percent <= 5; ++percent) {
    EXPECT_FALSE(progress.secondsLeft(kStart));
    EXPECT_EQ(progress.percentPerHour().has_value(), percent > 2);
    progress.see(percent, kStart + static_cast<std::int64_t>(percent) * 36'000);
  }
  EXPECT_DOUBLE_EQ(progress.percentPerHour().value(), 100.0);
  EXPECT_EQ(progress.secondsLeft(kStart + 180'000), 3420);
  EXPECT_EQ(progress.secondsLeft(kStart + 190'000), 3410) << "time passes between the changes, too";
  EXPECT_EQ(progress.secondsLeft(kStart + 100'000'000), 0);
}

TEST(Progress, TakesTheRateOfLateWhenWorkSlowsDown) {
  Progress progress;
  std::int64_t now = kStart;
  for (std::uint64_t percent = 0; percent <= 30; ++percent) progress.see(percent, now += 1000);
  for (std::uint64_t percent = 31; percent <= 50; ++percent) progress.see(percent, now += 10'000);
  EXPECT_EQ(progress.secondsLeft(now), 500);
}

/// A look comes up to a tenth of a second behind the change that it shows.
TEST(Progress, TellsTheTimeLeftWithinATenthFromAFifthOn) {
  std::minstd_rand random(1);
  for (const std::int64_t stepMs : {2'000, 15'000, 600'000}) {
    Progress progress;
    progress.see(0, kStart);
    for (std::int64_t percent = 1; percent < 100; ++percent) {
      const std::int64_t now = kStart + percent * stepMs + static_cast<std::int64_t>(random() % 100);
      progress.see(static_cast<std::uint64_t>(percent), now);
      if (percent < 20) continue;
      const double left = static_cast<double>(kStart + 100 * stepMs - now) / 1000;
      const double told = static_cast<double>(progress.secondsLeft(now).value_or(-1));
      EXPECT_NEAR(told, left, std::max(left / 10, 0.5)) << stepMs << " ms a percent, at " << percent;
    }
  }
}

TEST(Progress, BeginsAnewWhenThePercentFalls) {
  Progress progress;
  for (std::uint64_t percent = 0; percent <= 30; ++percent) progress.see(percent, kStart + 1000);
  EXPECT_TRUE(progress.see(0, kStart + 2000));
  EXPECT_FALSE(progress.percentPerHour());
}

TEST(JobForm, TellsAllThatIsKnown) {
  Job job = earlierJob(30);
  job.seenToMs = kStart;
  EXPECT_EQ(formOf(job, kStart),
            (boost::json::object{{"id", "eeee-7"},
                                 {"kind", "rebuild"},
                                 {"state", "running"},
                                 {"object", {{"type", "volume"}, {"id", "V1"}, {"name", "Data"}}},
                                 {"actor", "first"},
                                 {"start", "2023-11-14T22:13:15.000Z"},
                                 {"seenFrom", "2023-11-14T22:13:15.000Z"},
                                 {"seenTo", "2023-11-14T22:13:20.000Z"},
                                 {"end", nullptr},
                                 {"outcome", nullptr},
                                 {"percent", 30},
                                 {"percentPerHour", nullptr},
                                 {"timeLeftSeconds", nullptr}}));
}

TEST(JobForm, IsReadBackFromTheHistory) {
  Job job = earlierJob(30);
  job.seenToMs = kStart;
  const LastingRecord running = recordOf(job);
  EXPECT_EQ(running.toMs, std::nullopt);
  EXPECT_EQ(formOf(jobOf(running), kStart), formOf(job, kStart));
  job.endMs = kStart;
  job.outcome = "completed";
  job.startMs.reset();
  const LastingRecord ended = recordOf(job);
  EXPECT_EQ(ended.toMs, kStart);
  EXPECT_EQ(formOf(jobOf(ended), kStart), formOf(job, kStart));
}

TEST(JobForm, OneThatTheHistoryEndedHasAnEndThatNobodyKnows) {
  LastingRecord record = recordOf(earlierJob(30));
  record.toMs = kStart;
  record.body["state"] = "unknown";
  const boost::json::object form = formOf(jobOf(record), kStart);
  EXPECT_EQ(form.at("state"), "ended");
  EXPECT_EQ(form.at("end"), "unknown");
  EXPECT_EQ(form.at("outcome"), "ended");
}

TEST(JobKinds, ComeFromTheWorksWord) {
  EXPECT_EQ(jobKindOf(L"VERIFYING_AND_FIXING"), "verify");
  EXPECT_EQ(jobKindOf(L"SOMETHING_NEW"), "something-new");
}

TEST(JobStatistics, AreByKindAndByVolume) {
  std::vector<Job> ended;
  for (const std::int64_t seconds : {10, 30, 20}) {
    Job job = earlierJob(99);
    job.outcome = "completed";
    job.endMs = *job.startMs + seconds * 1000;
    ended.push_back(job);
  }
  ended.back().object.id = L"V2";
  Job failed = earlierJob(10);
  failed.outcome = "failed";
  failed.endMs = kStart;
  ended.push_back(failed);
  const auto all = statisticsOf(ended);
  ASSERT_THAT(all, SizeIs(3));
  EXPECT_EQ(formOf(all.at(0)), (boost::json::object{{"kind", "rebuild"},
                                                    {"volumeId", nullptr},
                                                    {"count", 4},
                                                    {"completed", 3},
                                                    {"medianSeconds", 20}}));
  EXPECT_EQ(all.at(1).volumeId, L"V1");
  EXPECT_EQ(all.at(1).count, 3U);
  EXPECT_EQ(all.at(1).medianSeconds, 10);
  EXPECT_EQ(all.at(2).volumeId, L"V2");
}

}  // namespace
}  // namespace insight
