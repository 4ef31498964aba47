#ifndef MIRN_SIMULATOR_WHATIF_WHATIF_H
#define MIRN_SIMULATOR_WHATIF_WHATIF_H

#include <boost/json/object.hpp>

#include "whatif/whatif_question.h"

namespace simulator {

/// What would come of the events on the twin of a machine. An object with `events`, `changes`, `takesOver`,
/// `lost`, `exposure` and `assumed`; moments are whole seconds from the first event. Raises a `TwinError` for
/// a machine that has no twin.
boost::json::object whatIf(const WhatIfQuestion& question);

}  // namespace simulator

#endif
