#ifndef MIRN_INSIGHT_HEALTH_TOLERANCE_H
#define MIRN_INSIGHT_HEALTH_TOLERANCE_H

#include <cstdint>
#include <string>

#include "view/machine_view.h"

namespace insight {

/// What a volume may still lose and go on serving. Never too much; too little where nothing can be said.
struct Tolerance {
  std::uint64_t mayFail = 0;  ///< Whichever disks of it these are.
  bool isExact = false;       ///< Some set of one more would end it.
  std::string reason;         ///< Why it is not exact; empty when it is.
};

Tolerance toleranceOf(const MachineView& machine, const VolumeView& volume);

}  // namespace insight

#endif
