#ifndef MIRN_INSIGHT_READINESS_READINESS_CHECKS_H
#define MIRN_INSIGHT_READINESS_READINESS_CHECKS_H

#include <string>
#include <vector>

#include "readiness/cause_index.h"
#include "readiness/readiness_report.h"

namespace insight {

/// What every check sees.
struct ReadinessLook {
  const ReadinessFacts& facts;
  const CauseIndex& causes;           ///< What is wrong with the machine already.
  const ExposureOfVolumes& exposure;  ///< Empty without a past.

  const MachineView& machine() const { return facts.machine; }
};

/// What a check has found.
struct CheckFindings {
  std::vector<ReadinessLine> lines;  ///< Without their kind.
  std::string doubt = {};            ///< Why not all of it is known, one sentence; empty where it is.
};

struct ReadinessCheck {
  const char* kind;
  bool needsPast;
  CheckFindings (*look)(const ReadinessLook& look);
};

/// One row a check, in the order in which they are told.
const std::vector<ReadinessCheck>& readinessChecks();

/// Disks whose failure no spare covers: a line for each array.
CheckFindings lookForSpares(const ReadinessLook& look);
/// Volumes that were not verified for a while.
CheckFindings lookForVerifications(const ReadinessLook& look);
/// Disks of one model that do not all have one firmware.
CheckFindings lookForFirmware(const ReadinessLook& look);
/// Volumes that lacked redundancy within the last months.
CheckFindings lookForExposure(const ReadinessLook& look);
/// Volumes, and disks of like size, whose last rebuilds took longer than those before.
CheckFindings lookForRebuildTimes(const ReadinessLook& look);

// Steps.
NextStep stepOfVerifying(const VolumeView& volume);
NextStep stepOfMarkingASpare();

}  // namespace insight

#endif
