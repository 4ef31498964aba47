#ifndef MIRN_TESTS_INSIGHT_READINESS_MADE_PAST_H
#define MIRN_TESTS_INSIGHT_READINESS_MADE_PAST_H

#include <string>

#include "history/moment.h"
#include "insight/machine/small_machine.h"
#include "readiness/readiness_report.h"

namespace insight {

constexpr std::int64_t kHourMs = std::int64_t{60} * 60 * 1000;
constexpr std::int64_t kDayMs = 24 * kHourMs;

/// When the small machine is asked how ready it is: 2023-11-14T22:13:21Z.
constexpr std::int64_t kAskedMs = static_cast<std::int64_t>(kSmallMachineTakenAt) + 1000;

/// A job on the volume V that ended so long ago.
inline Job endedJob(const std::string& kind, std::int64_t agoMs, std::int64_t tookMs = kHourMs) {
  Job job;
  job.kind = kind;
  job.object = {"volume", L"V", L"Data"};
  job.endMs = kAskedMs - agoMs;
  job.startMs = *job.endMs - tookMs;
  job.outcome = "completed";
  return job;
}

/// An alarm of the volume V.
inline Alarm alarmOfVolume(const std::string& kind, std::int64_t sinceMs,
                           std::optional<std::int64_t> clearedMs) {
  Alarm alarm;
  alarm.cause.kind = kind;
  alarm.cause.object = {"volume", L"V", L"Data"};
  alarm.sinceMs = sinceMs;
  alarm.clearedMs = clearedMs;
  return alarm;
}

/// A history of two years in which nothing happened but that the volume V was verified yesterday.
inline MachinePast quietPast() {
  MachinePast past;
  past.fromMs = past.jobsFromMs = past.alarmsFromMs = kAskedMs - 730 * kDayMs;
  past.jobs = {endedJob("verify", kDayMs)};
  return past;
}

}  // namespace insight

#endif
