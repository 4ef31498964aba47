#ifndef MIRN_INSIGHT_HEALTH_HEALTH_REPORT_H
#define MIRN_INSIGHT_HEALTH_HEALTH_REPORT_H

#include <cstdint>
#include <optional>
#include <vector>

#include "health/cause.h"
#include "health/tolerance.h"
#include "view/machine_view.h"

namespace insight {

/// What a volume may still lose.
struct VolumeHealth {
  ObjectRef volume;
  Tolerance tolerance;
};

/// The truth about the machine at one position. Plain value.
struct HealthReport {
  ovra::PluginPosition position;
  std::optional<std::uint64_t> takenAt;  ///< Milliseconds since 1970, UTC; nothing before the first picture.
  Severity severity = Severity::kOk;     ///< The worst of all causes.
  std::vector<Cause> causes;             ///< The worst first.
  std::vector<VolumeHealth> volumes;     ///< In the order of their list.
};

/// `now` is milliseconds since 1970, UTC. `others` are causes that the machine itself does not show: they
/// stand behind its own ones that are as bad.
HealthReport healthOf(const MachineView& machine, std::uint64_t now, const std::vector<Cause>& others = {});

}  // namespace insight

#endif
