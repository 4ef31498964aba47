#ifndef MIRN_SIMULATOR_SCENARIO_PARSE_H
#define MIRN_SIMULATOR_SCENARIO_PARSE_H

#include <boost/json/value.hpp>
#include <string_view>

#include "scenario/scenario.h"

namespace simulator {

/// Text that is no JSON.
class NotJson : public ScenarioError {
 public:
  using ScenarioError::ScenarioError;
};

/// Raises `NotJson` with the place of the first fault.
boost::json::value parseJson(std::string_view text);

/// The machine of a scenario that is parsed already. Raises `ScenarioError` at the first fault.
Machine readParsedScenario(const boost::json::value& file);

}  // namespace simulator

#endif
