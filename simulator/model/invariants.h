#ifndef MIRN_SIMULATOR_MODEL_INVARIANTS_H
#define MIRN_SIMULATOR_MODEL_INVARIANTS_H

#include <string>

#include "model/machine.h"

namespace simulator {

/// What holds of every machine between two operations. Returns the first rule broken, in words, or nothing.
std::string findViolation(const Machine& machine);

/// The first volume that does without the protection of its write-hole policy, in words, or nothing. That is
/// no fault of the machine.
std::string findUnprotected(const Machine& machine);

}  // namespace simulator

#endif
