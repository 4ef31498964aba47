#include "utc_time.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/by_name.h"
#include "tick_clock.h"

namespace {

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

TEST_P(UtcTimeTest, IsReadAgain) {
  EXPECT_EQ(utcTicks(GetParam().text), GetParam().milliseconds * kTicksPerMillisecond);
}

struct ReadRow {
  const char* name;
  const char* text;
  std::optional<std::int64_t> milliseconds;
};

class UtcTimeReadTest : public testing::TestWithParam<ReadRow> {};

TEST_P(UtcTimeReadTest, IsReadToTheMillisecond) {
  const auto ticks = utcTicks(GetParam().text);
  ASSERT_EQ(ticks.has_value(), GetParam().milliseconds.has_value());
  if (ticks) {
    EXPECT_EQ(*ticks, *GetParam().milliseconds * kTicksPerMillisecond);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UtcTimeReadTest,
    testing::Values(ReadRow{"First", "1970-01-01T00:00:00Z", 0},
                    ReadRow{"Milliseconds", "2026-11-22T01:05:00.250Z", 1'795'309'500'250},
                    ReadRow{"OneDigit", "1970-01-01T00:00:00.5Z", 500},
                    ReadRow{"Finer", "1970-01-01T00:00:00.123456789Z", 123},
                    ReadRow{"East", "1970-01-01T02:30:00+02:30", 0},
                    ReadRow{"West", "1969-12-31T23:00:00-01:00", std::nullopt},
                    ReadRow{"WestOfLater", "1970-01-01T23:00:00-01:00", 86'400'000},
                    ReadRow{"LeapDay", "2024-02-29T00:00:00Z", 1'709'164'800'000},
                    ReadRow{"AfterACentury", "2100-03-01T00:00:00Z", 4'107'542'400'000},
                    ReadRow{"NoLeapDay", "2100-02-29T00:00:00Z", std::nullopt},
                    ReadRow{"NoMonth", "2026-13-01T00:00:00Z", std::nullopt},
                    ReadRow{"NoDay", "2026-04-31T00:00:00Z", std::nullopt},
                    ReadRow{"NoHour", "2026-04-30T24:00:00Z", std::nullopt},
                    ReadRow{"NoZone", "2026-04-30T23:00:00", std::nullopt},
                    ReadRow{"NoTime", "2026-04-30", std::nullopt},
                    ReadRow{"BeforeTheEpoch", "1970-01-01T00:00:00+01:00", std::nullopt},
                    ReadRow{"NoOffsetHour", "2026-04-30T12:00:00+24:00", std::nullopt},
                    ReadRow{"Words", "yesterday", std::nullopt}, ReadRow{"Empty", "", std::nullopt}),
    ByName());

TEST(UtcTime, DropsWhatIsBelowAMillisecond) {
  EXPECT_EQ(utcText(kTicksPerMillisecond - 1), "1970-01-01T00:00:00.000Z");
}

}  // namespace
