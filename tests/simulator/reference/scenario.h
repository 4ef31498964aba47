#ifndef MIRN_TESTS_SIMULATOR_REFERENCE_SCENARIO_H
#define MIRN_TESTS_SIMULATOR_REFERENCE_SCENARIO_H

#include <string>

#include "simulator/reference/machine.h"

namespace reference {

/// The machine that walks begin with, without handles: three engines, five controllers, disks of many sizes
/// and sectors, X8 disks, disks over 2 TiB, locked and odd ones, and two arrays. The key of a disk or array
/// is its place in the file.
Machine firstMachine();

/// The same as the text of a scenario. Each disk has a phy and a port "port ID" that is connected to
/// "far ID".
std::string scenarioOf(const Machine& machine);

}  // namespace reference

#endif
