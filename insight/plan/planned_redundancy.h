#ifndef MIRN_INSIGHT_PLAN_PLANNED_REDUNDANCY_H
#define MIRN_INSIGHT_PLAN_PLANNED_REDUNDANCY_H

#include <vector>

#include "plan/plan.h"

namespace insight {

/// What volumes may still lose while the plan's work goes on in them, after another object has been touched
/// that they stand on, or until a new one is initialised. Never too much.
std::vector<PlannedRedundancy> redundancyDuring(const Plan& plan, const MachineView& machine);

}  // namespace insight

#endif
