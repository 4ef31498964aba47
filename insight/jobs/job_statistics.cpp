#include "jobs/job_statistics.h"

#include <algorithm>
#include <map>
#include <utility>

#include "text.h"

namespace insight {

namespace {

struct Sum {
  std::uint64_t count = 0;
  std::uint64_t completed = 0;
  std::vector<std::int64_t> seconds;

  void add(const Job& job) {
    ++count;
    if (job.outcome != "completed") return;
    ++completed;
    if (job.startMs && job.endMs && !job.isEndUnseen) seconds.push_back((*job.endMs - *job.startMs) / 1000);
  }
};

std::optional<std::int64_t> medianOf(std::vector<std::int64_t> values) {
  if (values.empty()) return {};
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

std::vector<JobStatistics> statisticsOf(const std::vector<Job>& ended) {
  std::map<std::pair<std::string, std::wstring>, Sum> sums;
  for (const Job& job : ended) {
    sums[{job.kind, {}}].add(job);
    sums[{job.kind, job.object.id}].add(job);
  }
  std::vector<JobStatistics> all;
  for (auto& [key, sum] : sums) {
    all.push_back({key.first, key.second, sum.count, sum.completed, medianOf(std::move(sum.seconds))});
  }
  return all;
}

boost::json::object formOf(const JobStatistics& statistics) {
  boost::json::object form{{"kind", statistics.kind},
                           {"volumeId", nullptr},
                           {"count", statistics.count},
                           {"completed", statistics.completed},
                           {"medianSeconds", nullptr}};
  if (!statistics.volumeId.empty()) form["volumeId"] = wideToUtf8(statistics.volumeId);
  if (statistics.medianSeconds) form["medianSeconds"] = *statistics.medianSeconds;
  return form;
}

}  // namespace insight
