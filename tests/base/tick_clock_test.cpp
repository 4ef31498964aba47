#include "tick_clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(TickClock, CountsFromTheUnixEpoch) {
  const std::int64_t before = std::time(nullptr) - 1;  // time() may read a coarser clock
  const std::int64_t ticks = currentTicks();
  const std::int64_t after = std::time(nullptr) + 1;
  EXPECT_GE(ticks, before * kTicksPerSecond);
  EXPECT_LE(ticks, after * kTicksPerSecond);
}

}  // namespace
