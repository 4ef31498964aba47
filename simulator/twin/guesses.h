#ifndef MIRN_SIMULATOR_TWIN_GUESSES_H
#define MIRN_SIMULATOR_TWIN_GUESSES_H

#include <string>
#include <vector>

#include "twin/draft.h"

namespace simulator {

/// Completes a draft with what no answer tells outright and what the states of volumes follow from:
/// which members are out of date, in which order they stand, what work there is. Of all ways to come
/// to the states that are published the first one is taken. A sentence for each thing that was chosen
/// and could be otherwise.
std::vector<std::string> completeByGuesses(Draft& draft, const Answers& answers);

}  // namespace simulator

#endif
