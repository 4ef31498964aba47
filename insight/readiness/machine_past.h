#ifndef MIRN_INSIGHT_READINESS_MACHINE_PAST_H
#define MIRN_INSIGHT_READINESS_MACHINE_PAST_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "alarms/alarm.h"
#include "jobs/job.h"

namespace insight {

class History;

/// What a history tells that readiness asks for. Plain value; moments are milliseconds since 1970, UTC.
struct MachinePast {
  std::int64_t fromMs = 0;        ///< When the history begins.
  std::int64_t jobsFromMs = 0;    ///< Of the jobs that ended then or later none is missing.
  std::int64_t alarmsFromMs = 0;  ///< Likewise of the alarms.
  std::vector<Job> jobs;          ///< Verifications and rebuilds that ended, the last one first.
  std::vector<Alarm> alarms;      ///< Of volumes that lacked redundancy or failed, the open ones among them.
};

/// So many of the jobs and of the alarms that ended last are looked at, of whatever kind.
constexpr std::size_t kLookedAt = 10'000;

/// `open` are the alarms that are open at `nowMs`. Raises `sql::Failure` where the history cannot be read.
MachinePast pastOf(History& history, const std::vector<Alarm>& open, std::int64_t nowMs);

}  // namespace insight

#endif
