#ifndef MIRN_SIMULATOR_WHATIF_KNOWN_RATES_H
#define MIRN_SIMULATOR_WHATIF_KNOWN_RATES_H

#include <boost/json/array.hpp>
#include <string>
#include <vector>

#include "model/machine.h"

namespace simulator {

/// Lets long work go as fast as jobs on volumes of the machine went that ended, work that runs already
/// likewise. A sentence for each rate, taken over or the simulator's own.
std::vector<std::string> useKnownRates(Machine& machine, const boost::json::array& statistics);

}  // namespace simulator

#endif
