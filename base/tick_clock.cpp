#include "tick_clock.h"

#include <chrono>

std::int64_t currentTicks() {
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, kTicksPerSecond>>;
  return std::chrono::duration_cast<Ticks>(std::chrono::system_clock::now().time_since_epoch()).count();
}
