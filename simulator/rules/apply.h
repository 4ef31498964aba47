#ifndef MIRN_SIMULATOR_RULES_APPLY_H
#define MIRN_SIMULATOR_RULES_APPLY_H

#include <functional>

#include "model/machine.h"

namespace simulator {

/// Applies one change, draws its consequences and counts it. Returns the status of its refusal, if it is
/// refused: then the machine is as it was, but for what a rule remembers of a refusal.
Status apply(Machine& machine, const std::function<void(Machine&)>& change);

}  // namespace simulator

#endif
