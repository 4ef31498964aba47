#ifndef MIRN_TESTS_SIMULATOR_REFERENCE_TALLY_H
#define MIRN_TESTS_SIMULATOR_REFERENCE_TALLY_H

#include <map>
#include <string>
#include <utility>

#include "simulator/reference/machine.h"

namespace reference {

/// What walks have seen, so that one can ask whether they were worth it.
struct Tally {
  std::map<std::pair<std::string, Status>, int>
      answers;                          ///< how often each action was answered with each status
  std::map<std::uint32_t, int> states;  ///< how often volumes were met in each state
  int migrationsThatWaited = 0;         ///< at their end, for a member
  int migrationsThatCaughtUp = 0;
  int worksThatShared = 0;
};

}  // namespace reference

#endif
