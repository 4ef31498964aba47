#ifndef MIRN_INSIGHT_JOBS_JOB_STATISTICS_H
#define MIRN_INSIGHT_JOBS_JOB_STATISTICS_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jobs/job.h"

namespace insight {

/// How jobs of one kind went, on one volume or on all.
struct JobStatistics {
  std::string kind;
  std::wstring volumeId;  ///< Empty for all.
  std::uint64_t count = 0;
  std::uint64_t completed = 0;
  std::optional<std::int64_t> medianSeconds;  ///< Of those completed that were seen from start to end.
};

/// By kind, and by kind and volume, in the order of these.
std::vector<JobStatistics> statisticsOf(const std::vector<Job>& ended);

boost::json::object formOf(const JobStatistics& statistics);

}  // namespace insight

#endif
