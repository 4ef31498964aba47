#ifndef MIRN_HOST_IDENTITY_STEADY_CLOCK_H
#define MIRN_HOST_IDENTITY_STEADY_CLOCK_H

#include <chrono>
#include <functional>

namespace host {

/// What tells how time passes. Whoever needs it takes one of these, so that a test can move it.
using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

}  // namespace host

#endif
