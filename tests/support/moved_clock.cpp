#include "support/moved_clock.h"

namespace {

std::int64_t ticks = 1'700'000'000 * kTicksPerSecond;

}  // namespace

std::int64_t currentTicks() { return ticks; }

void passSeconds(std::int64_t seconds) { ticks += seconds * kTicksPerSecond; }
