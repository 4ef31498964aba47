#ifndef MIRN_SIMULATOR_SCENARIO_CHANGES_H
#define MIRN_SIMULATOR_SCENARIO_CHANGES_H

#include <string>
#include <string_view>
#include <vector>

#include "model/edit.h"

/// Changes of a machine as text: one JSON object on one line, with the lists of a scenario file that hold
/// changed or new objects ("devices": [...]), whole, the handles of those that are gone ("removed": [...]),
/// and "nextHandle" where it moved.
namespace simulator {

/// What the edit has changed so far, with the end of the line; empty when nothing differs that a scenario
/// file holds.
std::string writeChanges(const Edit& edit);

/// The volumes at work as a change, so that work is found where it stands; empty when none is.
std::string writeProgress(const Machine& machine);

/// The machine of a scenario file whose objects all have handles, and of the changes made to it since, in
/// their order. Raises `ScenarioError`; `lineNames` tells of each change where it stands.
Machine readScenarioWithChanges(std::string_view scenario, const std::vector<std::string_view>& changes,
                                const std::vector<std::string>& lineNames);

}  // namespace simulator

#endif
