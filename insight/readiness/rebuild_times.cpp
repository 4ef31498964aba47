#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "plan/room.h"
#include "readiness/readiness_checks.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

/// The last two are held against those before, of which there are two at least.
constexpr std::size_t kLast = 2;
constexpr std::size_t kFewestEarlier = 2;
/// So much longer they took where they grow.
constexpr double kGrown = 1.5;
/// Of like size: the largest is no more than a tenth larger than the least.
constexpr std::uint64_t kLikeness = 10;

constexpr std::int64_t kSecondMs = 1000;
constexpr double kHundredths = 100;
constexpr std::size_t kMostSteps = 10;

using Times = std::vector<std::int64_t>;  ///< Milliseconds, the last one first.

/// One that was completed, and seen from start to end.
struct Rebuild {
  const VolumeView* volume;
  std::int64_t milliseconds;
};

/// Of volumes that are there still, the last one first.
std::vector<Rebuild> rebuildsIn(const MachinePast& past, const MachineView& machine) {
  std::vector<Rebuild> rebuilds;
  for (const Job& job : past.jobs) {
    const bool isSeen = job.startMs && job.endMs && !job.isEndUnseen;
    if (job.kind != "rebuild" || job.outcome != "completed" || !isSeen) continue;
    const VolumeView* const volume = machine.volume(job.object.id);
    if (volume != nullptr) rebuilds.push_back({volume, *job.endMs - *job.startMs});
  }
  return rebuilds;
}

using Volumes = std::set<const VolumeView*>;

/// Of each group; a volume is of one group at most.
std::vector<Times> timesOf(const std::vector<Volumes>& groups, const std::vector<Rebuild>& rebuilds) {
  std::map<const VolumeView*, std::size_t> groupOf;
  for (std::size_t group = 0; group < groups.size(); ++group) {
    for (const VolumeView* const volume : groups[group]) groupOf.emplace(volume, group);
  }
  std::vector<Times> times(groups.size());
  for (const Rebuild& rebuild : rebuilds) {
    const auto group = groupOf.find(rebuild.volume);
    if (group != groupOf.end()) times[group->second].push_back(rebuild.milliseconds);
  }
  return times;
}

/// Volumes that take about as much of each of their disks: that is what a rebuild writes.
std::vector<Volumes> alikeOf(const Volumes& volumes) {
  std::multimap<std::uint64_t, const VolumeView*> byShare;
  for (const VolumeView* const volume : volumes) {
    if (const auto share = shareOf(*volume)) byShare.emplace(*share, volume);
  }
  std::vector<Volumes> groups;
  std::uint64_t least = 0;
  for (const auto& [share, volume] : byShare) {
    if (groups.empty() || share - least > least / kLikeness) {
      groups.emplace_back();
      least = share;
    }
    groups.back().insert(volume);
  }
  return groups;
}

std::int64_t medianOf(Times::const_iterator begin, Times::const_iterator end) {
  Times sorted(begin, end);
  std::sort(sorted.begin(), sorted.end());
  return sorted.at((sorted.size() - 1) / 2);
}

struct Growth {
  std::int64_t earlierMs = 0;
  std::int64_t lastMs = 0;
  std::size_t rebuilds = 0;

  double ratio() const { return static_cast<double>(lastMs) / static_cast<double>(earlierMs); }
};

/// Both are medians, of two values the lesser: one slow rebuild is no growth.
std::optional<Growth> growthIn(const Times& times) {
  if (times.size() < kLast + kFewestEarlier) return {};
  const auto earlier = times.begin() + static_cast<std::ptrdiff_t>(kLast);
  const Growth growth{medianOf(earlier, times.end()), medianOf(times.begin(), earlier), times.size()};
  if (growth.earlierMs <= 0 || growth.ratio() < kGrown) return {};
  return growth;
}

std::string hundredths(double number) {
  const auto whole = static_cast<std::int64_t>(std::round(number * kHundredths));
  const std::string rest = std::to_string(whole % 100);
  return std::to_string(whole / 100) + (rest.size() == 1 ? ".0" : ".") + rest;
}

std::string secondsText(std::int64_t milliseconds) {
  return hundredths(static_cast<double>(milliseconds) / static_cast<double>(kSecondMs)) + " s";
}

ReadinessLine lineOf(const Growth& growth, const Volumes& volumes) {
  ReadinessLine line;
  std::string names;
  for (const VolumeView* const volume : volumes) {
    names += (names.empty() ? "" : ", ") + wideToUtf8(volume->name);
    line.objects.push_back(refOf(*volume));
    if (line.steps.size() < kMostSteps) line.steps.push_back(stepOfVerifying(*volume));
  }
  line.severity = Severity::kWarning;
  line.text = "Rebuilds of " + names + " take longer: the last " + std::to_string(kLast) + " took " +
              secondsText(growth.lastMs) + ", the " + std::to_string(growth.rebuilds - kLast) +
              " before them " + secondsText(growth.earlierMs) + '.';
  line.details = {{"rebuilds", growth.rebuilds},
                  {"earlierSeconds", growth.earlierMs / kSecondMs},
                  {"lastSeconds", growth.lastMs / kSecondMs},
                  {"ratio", std::round(growth.ratio() * kHundredths) / kHundredths}};
  return line;
}

}  // namespace

CheckFindings lookForRebuildTimes(const ReadinessLook& look) {
  const std::vector<Rebuild> rebuilds = rebuildsIn(*look.facts.past, look.machine());
  CheckFindings findings;
  /// Gives the volumes of the groups in which nothing grows.
  const auto hold = [&](const std::vector<Volumes>& groups) {
    const std::vector<Times> times = timesOf(groups, rebuilds);
    Volumes steady;
    for (std::size_t group = 0; group < groups.size(); ++group) {
      const auto growth = growthIn(times[group]);
      if (growth) findings.lines.push_back(lineOf(*growth, groups[group]));
      if (!growth) steady.insert(groups[group].begin(), groups[group].end());
    }
    return steady;
  };
  Volumes all;
  for (const Rebuild& rebuild : rebuilds) all.insert(rebuild.volume);
  std::vector<Volumes> single;
  for (const VolumeView* const volume : all) single.push_back({volume});
  hold(alikeOf(hold(single)));
  return findings;
}

}  // namespace insight
