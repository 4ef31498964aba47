#ifndef MIRN_INSIGHT_HEALTH_MACHINE_CAUSES_H
#define MIRN_INSIGHT_HEALTH_MACHINE_CAUSES_H

#include <cstdint>
#include <vector>

#include "health/cause.h"
#include "view/machine_view.h"

namespace insight {

/// An older picture is no longer believed.
constexpr std::uint64_t kOldestPictureMilliseconds = 20'000;

/// Whether a picture is too old to be believed, or could not be renewed.
bool isOld(const MachineView& machine, std::uint64_t now);

/// Everything that is wrong with the machine, `now` being milliseconds since 1970, UTC: volumes, disks and
/// arrays in the order of their lists, then the picture itself.
std::vector<Cause> causesOf(const MachineView& machine, std::uint64_t now);

}  // namespace insight

#endif
