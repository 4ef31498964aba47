#ifndef MIRN_INSIGHT_READINESS_EXPOSURE_H
#define MIRN_INSIGHT_READINESS_EXPOSURE_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "readiness/machine_past.h"
#include "view/machine_view.h"

/// The time in which redundant volumes lacked their redundancy. Moments are milliseconds since 1970, UTC.

namespace insight {

/// From a moment up to another one.
struct TimeSpan {
  std::int64_t fromMs = 0;
  std::int64_t toMs = 0;

  friend bool operator==(const TimeSpan& a, const TimeSpan& b) {
    return a.fromMs == b.fromMs && a.toMs == b.toMs;
  }
};

/// In order, without overlaps and without what is empty.
std::vector<TimeSpan> united(std::vector<TimeSpan> spans);
/// How much of united spans lies within another one.
std::int64_t timeWithin(const std::vector<TimeSpan>& spans, const TimeSpan& bounds);

/// By the id of the volume, united, as far back as no alarm is missing.
using ExposureOfVolumes = std::map<std::wstring, std::vector<TimeSpan>>;

/// A volume that has gone counts where it was degraded: only one with redundancy can be that.
ExposureOfVolumes exposureOf(const MachineView& machine, const MachinePast& past, std::int64_t nowMs);

/// A month of the calendar in UTC.
struct ExposedMonth {
  std::string month;                      ///< "2026-11".
  std::optional<std::int64_t> exposedMs;  ///< In which some volume was exposed; nothing where nobody knows.
};

constexpr std::size_t kToldMonths = 12;

/// This month and those before it; without a past none of them is known.
std::vector<ExposedMonth> exposedMonths(const ExposureOfVolumes& exposure,
                                        const std::optional<MachinePast>& past, std::int64_t nowMs);
/// The first moment of the first of these months.
std::int64_t beginOfToldMonths(std::int64_t nowMs);

}  // namespace insight

#endif
