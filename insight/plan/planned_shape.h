#ifndef MIRN_INSIGHT_PLAN_PLANNED_SHAPE_H
#define MIRN_INSIGHT_PLAN_PLANNED_SHAPE_H

#include <string>

#include "plan/plan.h"

namespace insight {

/// What an effect makes of the object `id`, or of a new one where that is empty.
PlannedObject shapeOf(const OperationEffect& effect, const std::wstring& id, const RequestArguments& request,
                      const MachineView& machine);

}  // namespace insight

#endif
