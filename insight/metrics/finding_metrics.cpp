#include "metrics/finding_metrics.h"

#include <algorithm>
#include <exception>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "health/cause_kinds.h"

namespace insight {

namespace {

constexpr MetricFamily::Type kGauge = MetricFamily::Type::kGauge;
constexpr MetricFamily::Type kCounter = MetricFamily::Type::kCounter;

constexpr MetricFamily kHealth{"mirn_health", kGauge,
                               "How bad the worst is that is wrong: 1 for its severity."};
constexpr MetricFamily kAlarms{"mirn_alarms", kGauge, "Open alarms, by kind and severity."};
constexpr MetricFamily kJobsRunning{"mirn_jobs_running", kGauge, "Work under way on volumes, by kind."};
constexpr MetricFamily kJobsEnded{"mirn_jobs_ended_total", kCounter,
                                  "Work on volumes that was seen to end, by kind and outcome."};
constexpr MetricFamily kEvents{"mirn_journal_events_total", kCounter,
                               "Events of the plug-in's journal: the number of the last one."};
constexpr MetricFamily kTaken{"mirn_picture_taken_timestamp_seconds", kGauge,
                              "When the picture of the machine was taken that all of this is told of."};
constexpr MetricFamily kFailed{"mirn_picture_failed_timestamp_seconds", kGauge,
                               "When the last try to renew the picture failed; left out where it did not."};
constexpr MetricFamily kFailures{
    "mirn_picture_failures_total", kCounter,
    "Looks at which a further try to renew the picture was found to have failed."};
constexpr MetricFamily kOldestRow{"mirn_history_oldest_row", kGauge,
                                  "The number of the oldest entry of the history that is kept."};
constexpr MetricFamily kNewestRow{"mirn_history_newest_row", kGauge,
                                  "The number of the newest entry of the history."};
constexpr MetricFamily kQueued{"mirn_history_queued_entries", kGauge,
                               "Entries that wait to be written into the history."};
constexpr MetricFamily kLost{"mirn_history_lost_entries_total", kCounter,
                             "Entries that were too many to wait for the history, and are lost."};

constexpr Severity kSeverities[] = {Severity::kOk, Severity::kInfo, Severity::kWarning, Severity::kUnknown,
                                    Severity::kCritical};
constexpr std::string_view kWorks[] = {"rebuild", "initialize", "verify", "migrate"};
constexpr std::string_view kOutcomes[] = {"completed", "cancelled", "failed", "ended"};

/// Causes that no machine has.
constexpr std::string_view kOwnKinds[] = {"history", "notification"};

/// What was found so long ago says nothing of now: looks are seconds apart.
constexpr std::int64_t kLongestSilenceMs = 60'000;

using Pair = std::pair<std::string, std::string>;
/// By two labels, in their order.
using Counts = std::map<Pair, std::uint64_t>;

void addCounts(MetricText& text, const MetricFamily& family, const char* first, const char* second,
               const Counts& counts) {
  text.begin(family);
  for (const auto& [labels, count] : counts) {
    text.add({{first, labels.first}, {second, labels.second}}, count);
  }
}

double secondsOf(std::uint64_t milliseconds) { return static_cast<double>(milliseconds) / 1000; }

bool isOutdated(const Findings& findings, std::int64_t nowMs) {
  if (!findings.machine || !findings.machine->takenAt) return true;
  return static_cast<std::int64_t>(*findings.machine->takenAt) + kLongestSilenceMs < nowMs;
}

void writeHealth(MetricText& text, const Findings& findings, std::int64_t nowMs) {
  Severity worst = isOutdated(findings, nowMs) ? Severity::kUnknown : Severity::kOk;
  for (const Alarm& alarm : findings.alarms) worst = std::max(worst, alarm.cause.severity);
  text.begin(kHealth);
  for (const Severity each : kSeverities) {
    text.add({{"severity", severityWord(each)}}, each == worst ? 1 : 0);
  }
}

void addKind(Counts& counts, const std::string& kind) {
  for (const Severity severity : kSeverities) {
    if (severity != Severity::kOk) counts.try_emplace({kind, std::string(severityWord(severity))});
  }
}

void writeAlarms(MetricText& text, const Findings& findings) {
  Counts counts;
  for (const CauseRow& row : causeRows()) addKind(counts, row.id);
  for (const std::string_view kind : kOwnKinds) addKind(counts, std::string(kind));
  for (const Alarm& alarm : findings.alarms) {
    addKind(counts, alarm.cause.kind);
    ++counts[{alarm.cause.kind, std::string(severityWord(alarm.cause.severity))}];
  }
  addCounts(text, kAlarms, "kind", "severity", counts);
}

void writeJobs(MetricText& text, const Findings& findings) {
  std::map<std::string, std::uint64_t> running;
  Counts ended;
  for (const std::string_view work : kWorks) {
    running.try_emplace(std::string(work));
    for (const std::string_view outcome : kOutcomes)
      ended.try_emplace({std::string(work), std::string(outcome)});
  }
  for (const Job& job : findings.jobs) ++running[job.kind];
  for (const auto& [labels, count] : findings.endedJobs) ended[labels] += count;
  text.begin(kJobsRunning);
  for (const auto& [kind, count] : running) text.add({{"kind", kind}}, count);
  addCounts(text, kJobsEnded, "kind", "outcome", ended);
}

void writePicture(MetricText& text, const Findings& findings) {
  text.begin(kEvents);
  text.add({}, findings.position.sequence);
  text.begin(kTaken);
  if (findings.machine && findings.machine->takenAt) text.addReal({}, secondsOf(*findings.machine->takenAt));
  text.begin(kFailed);
  if (findings.machine && findings.machine->failedAt)
    text.addReal({}, secondsOf(*findings.machine->failedAt));
  text.begin(kFailures);
  text.add({}, findings.failedPictures);
}

}  // namespace

void writeFindings(MetricText& text, const Findings& findings, std::int64_t nowMs) {
  writeHealth(text, findings, nowMs);
  writeAlarms(text, findings);
  writeJobs(text, findings);
  writePicture(text, findings);
}

void writeHistory(MetricText& text, History& history) {
  const History::Load load = history.load();
  text.begin(kQueued);
  text.add({}, load.queued);
  text.begin(kLost);
  text.add({}, load.lost);
  if (!history.isKept()) return;
  try {
    const std::int64_t oldest = history.oldestRow();
    const std::int64_t newest = history.newestRow();
    text.begin(kOldestRow);
    text.add({}, static_cast<std::uint64_t>(oldest));
    text.begin(kNewestRow);
    text.add({}, static_cast<std::uint64_t>(newest));
  } catch (const std::exception&) {  // that its file cannot be read is an alarm
  }
}

}  // namespace insight
