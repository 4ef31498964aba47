#include "whatif/known_rates.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "engine/work.h"
#include "model/capacity.h"
#include "twin/conversions.h"

namespace simulator {
namespace {

struct RateRow {
  std::string_view job;  ///< The kind of a job.
  std::uint32_t Rates::*rate;
  const char* name;
};

constexpr RateRow kRateRows[] = {
    {"rebuild", &Rates::rebuild, "A rebuild"},
    {"initialize", &Rates::initialize, "An initialisation"},
    {"verify", &Rates::verify, "A verification"},
    {"migrate", &Rates::migrate, "A migration"},
};

const Volume* volumeNamed(const Machine& machine, std::string_view id) {
  for (const auto& entry : machine.volumes) {
    if (entry.second.id == id) return &entry.second;
  }
  return nullptr;
}

/// In mebibytes of each disk a second; nothing where the job tells none of a volume that is there.
std::optional<std::uint64_t> rateOf(const Machine& machine, const boost::json::object& job) {
  const boost::json::value* const seconds = job.if_contains("medianSeconds");
  const boost::json::value* const id = job.if_contains("volumeId");
  if (seconds == nullptr || seconds->is_null() || id == nullptr || !id->is_string()) return {};
  const Volume* const volume = volumeNamed(machine, id->get_string());
  if (volume == nullptr) return {};
  const std::uint64_t took = std::max<std::uint64_t>(numberAt(*seconds, "statistics.medianSeconds"), 1);
  return std::max<std::uint64_t>(footprintOf(machine, *volume) / kMiB / took, 1);
}

/// The mean of all volumes.
std::optional<std::uint32_t> knownRate(const Machine& machine, const boost::json::array& statistics,
                                       std::string_view kind) {
  std::uint64_t sum = 0;
  std::uint64_t count = 0;
  for (const auto& each : statistics) {
    const boost::json::object& job = objectAt(each, "statistics");
    if (neededMemberOf(job, "kind", "statistics") != boost::json::value(kind)) continue;
    if (const auto rate = rateOf(machine, job)) {
      sum += *rate;
      ++count;
    }
  }
  if (count == 0) return {};
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>(sum / count, std::numeric_limits<std::uint32_t>::max()));
}

/// As far as before, and at the rates that are now.
void renewDuration(const Machine& machine, Volume& volume) {
  Work& work = *volume.work;
  if (work.elapsedMs >= work.totalMs) return;  // it waits
  const double done = static_cast<double>(work.elapsedMs) / static_cast<double>(work.totalMs);
  work.totalMs = durationOf(machine, volume, work.kind);
  const auto elapsed = static_cast<std::uint64_t>(done * static_cast<double>(work.totalMs));
  work.elapsedMs = std::min(elapsed, work.totalMs - 1);
}

}  // namespace

std::vector<std::string> useKnownRates(Machine& machine, const boost::json::array& statistics) {
  std::vector<std::string> sentences;
  for (const RateRow& row : kRateRows) {
    const auto known = knownRate(machine, statistics, row.job);
    if (known) machine.rates.*row.rate = *known;
    sentences.push_back(std::string(row.name) + " takes " + std::to_string(machine.rates.*row.rate) +
                        " MiB of each disk a second, as " +
                        (known ? "jobs did that have ended." : "is usual: no job that has ended tells."));
  }
  for (auto& entry : machine.volumes) {
    if (entry.second.work) renewDuration(machine, machine.volumes.at(entry.first));
  }
  return sentences;
}

}  // namespace simulator
