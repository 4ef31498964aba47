#include "readiness/exposure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/readiness/made_past.h"
#include "support/by_name.h"

namespace insight {
namespace {

using testing::ElementsAre;

struct UnionCase {
  const char* name;
  std::vector<TimeSpan> spans;
  std::vector<TimeSpan> all;
};

void PrintTo(const UnionCase& row, std::ostream* stream) { *stream << row.name; }

class UnitedSpans : public testing::TestWithParam<UnionCase> {};

TEST_P(UnitedSpans, CountEachMomentOnce) { EXPECT_EQ(united(GetParam().spans), GetParam().all); }

INSTANTIATE_TEST_SUITE_P(All, UnitedSpans,
                         testing::Values(UnionCase{"None", {}, {}}, UnionCase{"Empty", {{5, 5}, {7, 6}}, {}},
                                         UnionCase{"Apart", {{5, 6}, {1, 2}}, {{1, 2}, {5, 6}}},
                                         UnionCase{"Touching", {{1, 2}, {2, 3}}, {{1, 3}}},
                                         UnionCase{"Overlapping", {{1, 4}, {2, 6}}, {{1, 6}}},
                                         UnionCase{"Inside", {{1, 9}, {2, 3}, {4, 5}}, {{1, 9}}}),
                         ByName());

TEST(TimeWithin, IsThatOfThePartsInside) {
  const std::vector<TimeSpan> spans{{0, 10}, {20, 30}, {40, 50}};
  EXPECT_EQ(timeWithin(spans, {5, 45}), 5 + 10 + 5);
  EXPECT_EQ(timeWithin(spans, {10, 20}), 0);
  EXPECT_EQ(timeWithin(spans, {0, 100}), 30);
}

/// By the calendar, since this is what months are told by.
std::int64_t at(const char* moment) { return momentOf(moment).value(); }

class ExposureByMonth : public testing::Test {
 protected:
  void expose(const char* from, const char* to, const wchar_t* volume = L"V") {
    m_past.alarms.push_back(alarmOfVolume("volume-degraded", at(from), at(to)));
    m_past.alarms.back().cause.object.id = volume;
  }

  std::vector<ExposedMonth> months() const {
    return exposedMonths(exposureOf(smallMachine(), m_past, kAskedMs), m_past, kAskedMs);
  }

  std::optional<std::int64_t> exposedIn(const std::string& name) const {
    for (const ExposedMonth& month : months()) {
      if (month.month == name) return month.exposedMs;
    }
    ADD_FAILURE() << name;
    return {};
  }

  MachinePast m_past = quietPast();
};

TEST_F(ExposureByMonth, IsSplitWhereAMonthEnds) {
  expose("2023-02-28T22:00:00Z", "2023-03-01T01:00:00Z");
  EXPECT_EQ(exposedIn("2023-02"), 2 * kHourMs);
  EXPECT_EQ(exposedIn("2023-03"), kHourMs);
  EXPECT_EQ(exposedIn("2023-04"), 0);
}

TEST_F(ExposureByMonth, CountsTheTimeOfTwoVolumesOnce) {
  expose("2023-05-01T00:00:00Z", "2023-05-01T03:00:00Z");
  expose("2023-05-01T02:00:00Z", "2023-05-01T04:00:00Z", L"W");
  EXPECT_EQ(exposedIn("2023-05"), 4 * kHourMs);
  const ExposureOfVolumes exposure = exposureOf(smallMachine(), m_past, kAskedMs);
  EXPECT_THAT(exposure.at(L"V"),
              ElementsAre(TimeSpan{at("2023-05-01T00:00:00Z"), at("2023-05-01T03:00:00Z")}));
}

TEST_F(ExposureByMonth, OfAnOpenAlarmLastsUntilNow) {
  m_past.alarms.push_back(alarmOfVolume("volume-degraded", kAskedMs - kHourMs, {}));
  EXPECT_EQ(exposedIn("2023-11"), kHourMs);
}

TEST_F(ExposureByMonth, IsUnknownBeforeThePastBegins) {
  m_past.alarmsFromMs = at("2023-03-31T23:00:00Z");
  expose("2023-03-31T12:00:00Z", "2023-04-01T01:00:00Z");
  EXPECT_EQ(exposedIn("2023-02"), std::nullopt);
  EXPECT_EQ(exposedIn("2023-03"), kHourMs) << "as far as it is known";
  EXPECT_EQ(exposedIn("2023-04"), kHourMs);
}

TEST_F(ExposureByMonth, OfAVolumeThatHasGoneCountsWhereItWasDegraded) {
  expose("2023-05-01T00:00:00Z", "2023-05-01T01:00:00Z", L"GONE");
  m_past.alarms.push_back(
      alarmOfVolume("volume-failed", at("2023-06-01T00:00:00Z"), at("2023-06-02T00:00:00Z")));
  m_past.alarms.back().cause.object.id = L"GONE";
  EXPECT_EQ(exposedIn("2023-05"), kHourMs);
  EXPECT_EQ(exposedIn("2023-06"), 0) << "it may have had no redundancy to lose";
}

TEST_F(ExposureByMonth, BeginsElevenMonthsBeforeThisOne) {
  EXPECT_EQ(beginOfToldMonths(kAskedMs), at("2022-12-01T00:00:00Z"));
  EXPECT_EQ(beginOfToldMonths(at("2023-12-31T23:59:59Z")), at("2023-01-01T00:00:00Z"));
  EXPECT_EQ(beginOfToldMonths(at("2024-01-01T00:00:00Z")), at("2023-02-01T00:00:00Z"));
}

}  // namespace
}  // namespace insight
