#ifndef MIRN_SIMULATOR_SCENARIO_SCENARIO_H
#define MIRN_SIMULATOR_SCENARIO_SCENARIO_H

#include <stdexcept>
#include <string>
#include <string_view>

#include "model/machine.h"

namespace simulator {

/// A scenario that cannot be taken. `what()` is one line: the place in the file, as in "controllers[1].type",
/// and what is wrong there.
class ScenarioError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads the text of a scenario file into a consistent machine. Raises `ScenarioError` at the first fault.
Machine readScenario(std::string_view json);

/// The same machine as the text of a scenario file: all handles and all running work in it.
std::string writeScenario(const Machine& machine);

/// Reads the file; a file that cannot be read is a `ScenarioError` too. Every message starts with the path.
Machine loadScenario(const std::string& path);

/// The machine that stands in the library itself.
std::string_view embeddedScenario();

}  // namespace simulator

#endif
