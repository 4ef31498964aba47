#ifndef MIRN_BASE_LOCAL_TIME_H
#define MIRN_BASE_LOCAL_TIME_H

#include <boost/optional.hpp>
#include <ctime>

/// The machine's local calendar time at `seconds` since the Unix epoch; none when it cannot be expressed.
/// Safe from any thread.
boost::optional<std::tm> localTime(std::time_t seconds);

#endif
