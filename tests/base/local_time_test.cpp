#include "local_time.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/time_zone.h"

namespace {

TEST(LocalTime, IsTheCalendarOfTheMachinesZone) {
  const TimeZone zone("XXX-5:30");
  const auto time = localTime(1'000'000'000);
  ASSERT_TRUE(time);
  EXPECT_EQ(time->tm_year, 101);
  EXPECT_EQ(time->tm_mon, 8);
  EXPECT_EQ(time->tm_mday, 9);
  EXPECT_EQ(time->tm_hour, 7);
  EXPECT_EQ(time->tm_min, 16);
  EXPECT_EQ(time->tm_sec, 40);
}

TEST(LocalTime, CannotBeHadForAYearPastAllNumbers) {
  EXPECT_FALSE(localTime(std::numeric_limits<std::time_t>::max()));
}

}  // namespace
