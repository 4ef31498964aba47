#ifndef MIRN_BASE_TICK_CLOCK_H
#define MIRN_BASE_TICK_CLOCK_H

#include <cstdint>
#include <functional>

/// A tick is 100 nanoseconds; times are ticks since the Unix epoch.
constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;

/// The wall clock, now.
std::int64_t currentTicks();

/// What tells the time. Whoever needs it takes one of these, so that a test can move it.
using TickClock = std::function<std::int64_t()>;

#endif
