#include "tick_clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(TickClock, CountsFromTheUnixEpoch) {
  // time() may read a coarser clock, which still shows the second before.
  const std::int64_t before = std::time(nullptr) - 1;
  const std::int64_t ticks = currentTicks();
  const std::int64_t after = std::time(nullptr) + 2;
  EXPECT_GE(ticks, before * kTicksPerSecond);
  EXPECT_LE(ticks, after * kTicksPerSecond);
}

}  // namespace
