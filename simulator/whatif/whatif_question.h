#ifndef MIRN_SIMULATOR_WHATIF_WHATIF_QUESTION_H
#define MIRN_SIMULATOR_WHATIF_WHATIF_QUESTION_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

enum class EventKind { FAIL, PULL, WAIT };

/// One thing that is to happen.
struct AskedEvent {
  EventKind kind = EventKind::WAIT;
  std::string disk;           ///< The id of what fails or is pulled out.
  std::uint64_t seconds = 0;  ///< That pass.
};

/// What is asked of a machine.
struct WhatIfQuestion {
  boost::json::object answers;  ///< As `twinOf` takes them.
  std::vector<AskedEvent> events;
  boost::json::array statistics;  ///< Of jobs, as they are published; perhaps none.
};

/// From an object with `answers`, `events` and `statistics`. Raises a `TwinError` for another form.
WhatIfQuestion whatIfQuestionOf(const boost::json::value& json);

}  // namespace simulator

#endif
