#ifndef MIRN_INSIGHT_PLAN_PLAN_WARNINGS_H
#define MIRN_INSIGHT_PLAN_PLAN_WARNINGS_H

#include <string>
#include <vector>

#include "plan/plan.h"

namespace insight {

/// What who asks should know before it is done: a sentence each.
std::vector<std::wstring> warningsOf(const Plan& plan, const MachineView& machine);

}  // namespace insight

#endif
