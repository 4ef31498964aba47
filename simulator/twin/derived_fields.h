#ifndef MIRN_SIMULATOR_TWIN_DERIVED_FIELDS_H
#define MIRN_SIMULATOR_TWIN_DERIVED_FIELDS_H

#include <string>
#include <vector>

#include "model/machine.h"
#include "twin/draft.h"

namespace simulator {

/// What follows in the machine from other facts and is not as the answers tell it: the place, both values.
std::vector<std::string> differencesOf(const Machine& machine, const Answers& answers);

}  // namespace simulator

#endif
