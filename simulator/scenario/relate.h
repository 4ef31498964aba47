#ifndef MIRN_SIMULATOR_SCENARIO_RELATE_H
#define MIRN_SIMULATOR_SCENARIO_RELATE_H

#include "model/machine.h"
#include "scenario/loading.h"

namespace simulator {

/// Computes the derived members of a machine that was read and checks that its objects agree with one
/// another: memberships, roles, capacity, capabilities. Raises `ScenarioError` at the first that do not.
void relate(Machine& machine, const Loading& loading);

}  // namespace simulator

#endif
