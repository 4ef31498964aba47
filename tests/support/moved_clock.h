#ifndef MIRN_TESTS_SUPPORT_MOVED_CLOCK_H
#define MIRN_TESTS_SUPPORT_MOVED_CLOCK_H

#include <cstdint>

#include "tick_clock.h"

/// The wall clock of a test program that links this in place of the system's: it stands still until a test
/// moves it. For one thread.
void passSeconds(std::int64_t seconds);

#endif
