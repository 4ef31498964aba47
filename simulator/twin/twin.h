#ifndef MIRN_SIMULATOR_TWIN_TWIN_H
#define MIRN_SIMULATOR_TWIN_TWIN_H

#include <boost/json/object.hpp>
#include <string>
#include <vector>

#include "model/machine.h"

namespace simulator {

/// A machine that answers as another one did.
struct Twin {
  Machine machine;                       ///< Its objects have the published ids.
  std::vector<std::string> assumptions;  ///< A sentence for each thing that was chosen.
  std::vector<std::string> differences;  ///< A line for each field that came out otherwise.
};

/// `answers` has the lists as the plug-in publishes them: "raids" with their levels, "controllers",
/// "enddevices", "ports", "arrays", "volumes", and the object "version"; perhaps "raidControllers", the lists
/// of controllers by the id of their engine. Raises a `TwinError` for what is no
/// such list, and for what no machine of the simulator can be.
Twin twinOf(const boost::json::object& answers);

}  // namespace simulator

#endif
