#include "utc_time.h"

#include <gtest/gtest.h>

#include "support/by_name.h"
#include "tick_clock.h"

namespace {

constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;

struct MomentRow {
  std::string name;
  std::int64_t milliseconds;
  std::string text;
};

class UtcTimeTest : public testing::TestWithParam<MomentRow> {};

TEST_P(UtcTimeTest, IsWritten) {
  EXPECT_EQ(utcText(GetParam().milliseconds * kTicksPerMillisecond), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Moments, UtcTimeTest,
    testing::Values(MomentRow{"Epoch", 0, "1970-01-01T00:00:00.000Z"},
                    MomentRow{"Millisecond", 1, "1970-01-01T00:00:00.001Z"},
                    MomentRow{"EndOfFebruary", 951782399999, "2000-02-28T23:59:59.999Z"},
                    MomentRow{"LeapDayOfACentury", 951782400000, "2000-02-29T00:00:00.000Z"},
                    MomentRow{"AfterTheLeapDay", 951868800000, "2000-03-01T00:00:00.000Z"},
                    MomentRow{"LeapDay", 1709164800000, "2024-02-29T00:00:00.000Z"},
                    MomentRow{"NoLeapDay", 1772323200000, "2026-03-01T00:00:00.000Z"},
                    MomentRow{"EndOfAYear", 1798761599000, "2026-12-31T23:59:59.000Z"},
                    MomentRow{"CenturyWithoutLeapDay", 4107542400000, "2100-03-01T00:00:00.000Z"}),
    ByName());

TEST(UtcTime, DropsWhatIsBelowAMillisecond) {
  EXPECT_EQ(utcText(kTicksPerMillisecond - 1), "1970-01-01T00:00:00.000Z");
}

}  // namespace
