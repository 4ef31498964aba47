#ifndef MIRN_INSIGHT_PLAN_AFFECTED_OBJECTS_H
#define MIRN_INSIGHT_PLAN_AFFECTED_OBJECTS_H

#include <string>
#include <vector>

#include "plan/operation_effects.h"
#include "plan/request_arguments.h"
#include "view/machine_view.h"

namespace insight {

/// The ids of the objects that an effect of a request meets, of those that are there. The words of an effect
/// that are not known meet nothing.
std::vector<std::wstring> objectsMetBy(const OperationEffect& effect, const RequestArguments& arguments,
                                       const MachineView& machine);

/// The arrays that an object is, is a member of, or lies on.
std::vector<std::wstring> arraysOf(const MachineView& machine, const std::wstring& id);

/// The disk is a member that does not serve any more, so that another may take its place.
bool isLostMember(const DiskView& disk);

}  // namespace insight

#endif
