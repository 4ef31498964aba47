#include "event_time.h"

#include <gtest/gtest.h>

#include "support/by_name.h"
#include "support/time_zone.h"
#include "tick_clock.h"

namespace {

struct Row {
  const char* name;
  const char* zone;
  std::int64_t ticks;
  std::wstring text;
};

class EventTime : public testing::TestWithParam<Row> {};

TEST_P(EventTime, IsLocalAndOfTwelveHours) {
  const TimeZone zone(GetParam().zone);
  EXPECT_EQ(eventTimeText(GetParam().ticks), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Events, EventTime,
    testing::Values(Row{"Epoch", "UTC", 0, L"01/01/70 12:00:00 AM"},
                    Row{"EpochElsewhere", "XXX+3", 0, L"12/31/69 09:00:00 PM"},
                    Row{"Afternoon", "UTC", 1'000'047'845 * kTicksPerSecond, L"09/09/01 03:04:05 PM"},
                    Row{"PartOfASecond", "UTC", kTicksPerSecond * 2 - 1, L"01/01/70 12:00:01 AM"},
                    Row{"TowardZero", "UTC", 1 - kTicksPerSecond, L"01/01/70 12:00:00 AM"}),
    ByName());

}  // namespace
