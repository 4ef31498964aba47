#ifndef MIRN_SIMULATOR_CORE_ENVIRONMENT_H
#define MIRN_SIMULATOR_CORE_ENVIRONMENT_H

#include <cstdint>
#include <string>

#include "model/machine.h"

namespace simulator {

/// What the environment variables VEXL2_SCENARIO, VEXL2_STATE, VEXL2_CLOCK_SPEED and
/// VEXL2_EVENT_WAIT_CAP say.
struct Environment {
  std::string scenarioPath;  ///< empty: the embedded scenario
  std::string statePath;     ///< empty: nothing is kept
  std::uint32_t clockSpeed = 1;
  std::uint32_t eventWaitCapMs = 0xFFFFFFFF;  ///< no wait lasts longer
};

/// Raises `ScenarioError` when a variable has a value that cannot be taken.
Environment readEnvironment();

/// The machine of the scenario. Raises `ScenarioError`.
Machine scenarioMachine(const Environment& environment);

}  // namespace simulator

#endif
