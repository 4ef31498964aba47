#include "readiness/machine_past.h"

#include <algorithm>

#include "health/cause_kinds.h"
#include "history/history.h"

namespace insight {

namespace {

std::vector<std::string> exposingKinds() {
  return {causeRow(CauseKind::kVolumeDegraded).id, causeRow(CauseKind::kVolumeFailed).id};
}

}  // namespace

MachinePast pastOf(History& history, const std::vector<Alarm>& open, std::int64_t nowMs) {
  const std::vector<std::string> kinds = exposingKinds();
  MachinePast past;
  past.fromMs = history.beginMs().value_or(nowMs);
  const EndedLook jobs = history.lastJobs({"verify", "rebuild"}, kLookedAt);
  past.jobsFromMs = std::max(past.fromMs, jobs.fromMs);
  for (const LastingRecord& record : jobs.items) past.jobs.push_back(jobOf(record));
  const EndedLook alarms = history.lastAlarms(kinds, kLookedAt);
  past.alarmsFromMs = std::max(past.fromMs, alarms.fromMs);
  for (const LastingRecord& record : alarms.items) past.alarms.push_back(alarmOf(record));
  std::copy_if(open.begin(), open.end(), std::back_inserter(past.alarms), [&](const Alarm& alarm) {
    return std::find(kinds.begin(), kinds.end(), alarm.cause.kind) != kinds.end();
  });
  return past;
}

}  // namespace insight
