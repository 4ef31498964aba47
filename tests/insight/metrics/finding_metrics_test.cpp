#include "metrics/finding_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "health/cause_kinds.h"
#include "insight/machine/small_machine.h"
#include "insight/metrics/metric_lines.h"
#include "support/temporary_folder.h"

namespace insight {
namespace {

constexpr std::int64_t kTakenAt = kSmallMachineTakenAt;
constexpr std::int64_t kSoonAfter = kTakenAt + 5000;

Findings found(void (*change)(MachineView&) = [](MachineView&) {}) {
  MachineView machine = smallMachine();
  change(machine);
  Findings findings;
  findings.position = machine.position;
  findings.machine = std::make_shared<const MachineView>(std::move(machine));
  return findings;
}

Alarm alarmOf(const std::string& kind, Severity severity) {
  Alarm alarm;
  alarm.cause.kind = kind;
  alarm.cause.severity = severity;
  return alarm;
}

std::map<std::string, std::string> metricsOf(const Findings& findings, std::int64_t now = kSoonAfter) {
  MetricText text;
  writeFindings(text, findings, now);
  return samplesOf(text);
}

/// The only severity with a 1.
std::string healthIn(const std::map<std::string, std::string>& samples) {
  std::string health;
  for (const char* const severity : {"ok", "info", "warning", "unknown", "critical"}) {
    const std::string& value = samples.at("mirn_health{severity=\"" + std::string(severity) + "\"}");
    if (value == "1") health += severity;
    EXPECT_TRUE(value == "1" || value == "0") << value;
  }
  return health;
}

TEST(FindingMetrics, HealthIsTheWorstOfTheAlarms) {
  Findings findings = found();
  EXPECT_EQ(healthIn(metricsOf(findings)), "ok");
  findings.alarms = {alarmOf("disk-failed", Severity::kWarning)};
  EXPECT_EQ(healthIn(metricsOf(findings)), "warning");
  findings.alarms.push_back(alarmOf("volume-degraded", Severity::kCritical));
  EXPECT_EQ(healthIn(metricsOf(findings)), "critical");
}

TEST(FindingMetrics, HealthIsUnknownWhereNothingWasSeenForAMinute) {
  Findings findings = found();
  EXPECT_EQ(healthIn(metricsOf(findings, kTakenAt + 60'000)), "ok");
  EXPECT_EQ(healthIn(metricsOf(findings, kTakenAt + 60'001)), "unknown");
  findings.alarms = {alarmOf("disk-failed", Severity::kWarning)};
  EXPECT_EQ(healthIn(metricsOf(findings, kTakenAt + 60'001)), "unknown");
  findings.alarms = {alarmOf("volume-failed", Severity::kCritical)};
  EXPECT_EQ(healthIn(metricsOf(findings, kTakenAt + 60'001)), "critical");
}

TEST(FindingMetrics, HealthIsUnknownBeforeTheFirstPicture) {
  EXPECT_EQ(healthIn(metricsOf(Findings())), "unknown");
  EXPECT_EQ(healthIn(metricsOf(found([](MachineView& machine) { machine.takenAt.reset(); }))), "unknown");
}

TEST(FindingMetrics, EveryKindOfAlarmIsThere) {
  const auto samples = metricsOf(found());
  for (const CauseRow& row : causeRows()) {
    for (const char* const severity : {"info", "warning", "unknown", "critical"}) {
      EXPECT_EQ(samples.at("mirn_alarms{kind=\"" + row.id + "\",severity=\"" + severity + "\"}"), "0");
    }
  }
  EXPECT_EQ(samples.at(R"(mirn_alarms{kind="history",severity="warning"})"), "0");
}

TEST(FindingMetrics, AlarmsAreCountedByKindAndSeverity) {
  Findings findings = found();
  findings.alarms = {alarmOf("disk-failed", Severity::kWarning), alarmOf("disk-failed", Severity::kWarning),
                     alarmOf("disk-failed", Severity::kCritical),
                     alarmOf("of-another-kind", Severity::kInfo)};
  const auto samples = metricsOf(findings);
  EXPECT_EQ(samples.at(R"(mirn_alarms{kind="disk-failed",severity="warning"})"), "2");
  EXPECT_EQ(samples.at(R"(mirn_alarms{kind="disk-failed",severity="critical"})"), "1");
  EXPECT_EQ(samples.at(R"(mirn_alarms{kind="of-another-kind",severity="info"})"), "1");
}

TEST(FindingMetrics, JobsAreCountedByKindAndOutcome) {
  Findings findings = found();
  Job job;
  job.kind = "rebuild";
  findings.jobs = {job, job};
  findings.endedJobs = {{{"verify", "completed"}, 7}, {{"polish", "ended"}, 1}};
  const auto samples = metricsOf(findings);
  EXPECT_EQ(samples.at(R"(mirn_jobs_running{kind="rebuild"})"), "2");
  EXPECT_EQ(samples.at(R"(mirn_jobs_running{kind="migrate"})"), "0");
  EXPECT_EQ(samples.at(R"(mirn_jobs_ended_total{kind="verify",outcome="completed"})"), "7");
  EXPECT_EQ(samples.at(R"(mirn_jobs_ended_total{kind="verify",outcome="failed"})"), "0");
  EXPECT_EQ(samples.at(R"(mirn_jobs_ended_total{kind="polish",outcome="ended"})"), "1");
}

TEST(FindingMetrics, ThePictureHasItsMoments) {
  Findings findings = found([](MachineView& machine) { machine.failedAt = kSmallMachineTakenAt + 1500; });
  findings.failedPictures = 3;
  const auto samples = metricsOf(findings);
  EXPECT_EQ(samples.at("mirn_picture_taken_timestamp_seconds"), "1700000000");
  EXPECT_EQ(samples.at("mirn_picture_failed_timestamp_seconds"), "1700000001.5");
  EXPECT_EQ(samples.at("mirn_picture_failures_total"), "3");
  EXPECT_EQ(samples.at("mirn_journal_events_total"), "3");
  EXPECT_EQ(metricsOf(found()).count("mirn_picture_failed_timestamp_seconds"), 0U);
  EXPECT_EQ(metricsOf(Findings()).count("mirn_picture_taken_timestamp_seconds"), 0U);
}

class HistoryMetrics : public testing::Test {
 protected:
  std::map<std::string, std::string> metrics() {
    MetricText text;
    writeHistory(text, *m_history);
    return samplesOf(text);
  }

  void open(History::Settings settings) {
    settings.nowMs = [] { return kTakenAt; };
    m_history = std::make_unique<History>(std::move(settings));
  }

  static HistoryBatch entries(std::uint64_t first, std::uint64_t count) {
    HistoryBatch batch;
    for (std::uint64_t number = first; number < first + count; ++number) {
      Entry entry;
      entry.epoch = "0123456789abcdef";
      entry.sequence = number;
      entry.kind = "service";
      entry.atMs = kTakenAt;
      batch.entries.push_back(entry);
    }
    return batch;
  }

  TemporaryFolder m_folder;
  std::unique_ptr<History> m_history;
};

TEST_F(HistoryMetrics, TellTheRowsThatThereAre) {
  History::Settings settings;
  settings.path = (m_folder / "history.db").native();
  open(std::move(settings));
  const std::int64_t before = m_history->newestRow();
  ASSERT_TRUE(m_history->addAndWait(entries(1, 3), std::chrono::seconds(20)));
  const auto samples = metrics();
  EXPECT_EQ(samples.at("mirn_history_newest_row"), std::to_string(before + 3));
  EXPECT_EQ(samples.at("mirn_history_queued_entries"), "0");
  EXPECT_EQ(samples.at("mirn_history_lost_entries_total"), "0");
  EXPECT_EQ(samples.count("mirn_history_oldest_row"), 1U);
}

TEST_F(HistoryMetrics, TellWhatWaitsAndWhatIsLost) {
  History::Settings settings;
  settings.path = (m_folder / "no-such-folder" / "history.db").native();
  settings.longestQueue = 4;
  open(std::move(settings));
  m_history->addAndWait(entries(1, 4), std::chrono::milliseconds(0));
  m_history->add(entries(5, 2));
  EXPECT_FALSE(m_history->addAndWait(entries(7, 1), std::chrono::milliseconds(0)));
  const auto samples = metrics();
  EXPECT_EQ(samples.at("mirn_history_queued_entries"), "4");
  EXPECT_EQ(samples.at("mirn_history_lost_entries_total"), "3");
  EXPECT_EQ(samples.count("mirn_history_newest_row"), 0U) << "there is no file to be read";
}

TEST_F(HistoryMetrics, WithoutAHistoryThereAreNoRows) {
  open({});
  EXPECT_EQ(metrics().count("mirn_history_newest_row"), 0U);
}

}  // namespace
}  // namespace insight
