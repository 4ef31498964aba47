#include "insight/history_question.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "support/by_name.h"

namespace host {

namespace {

TEST(HistoryQuestion, AsksForTheNewestHundredUnlessTold) {
  const insight::HistoryQuery query = historyQueryIn({}, Role::kObserve);
  EXPECT_EQ(query.limit, 100U);
  EXPECT_EQ(query.fromMs, std::nullopt);
  EXPECT_EQ(query.toMs, std::nullopt);
  EXPECT_EQ(query.severity, std::nullopt);
  EXPECT_EQ(query.kind + query.objectType + query.objectId + query.actor + query.text + query.cursor, "");
}

TEST(HistoryQuestion, TakesAllOfItsParameters) {
  const insight::HistoryQuery query = historyQueryIn({{L"from", L"2026-11-22T01:05:00.250Z"},
                                                      {L"to", L"2026-11-22T03:05:01+02:00"},
                                                      {L"kind", L"alarm"},
                                                      {L"severity", L"critical"},
                                                      {L"objectType", L"disk"},
                                                      {L"objectId", L"7"},
                                                      {L"actor", L"J\u00f6rg"},
                                                      {L"text", L"a b%"},
                                                      {L"limit", L"5"},
                                                      {L"cursor", L"e12"}},
                                                     Role::kObserve);
  EXPECT_EQ(query.toMs.value_or(0) - query.fromMs.value_or(0), 750);
  EXPECT_EQ(query.kind, "alarm");
  EXPECT_EQ(query.severity, insight::Severity::kCritical);
  EXPECT_EQ(query.objectType, "disk");
  EXPECT_EQ(query.objectId, "7");
  EXPECT_EQ(query.actor, "J\xc3\xb6rg");
  EXPECT_EQ(query.text, "a b%");
  EXPECT_EQ(query.limit, 5U);
  EXPECT_EQ(query.cursor, "e12");
}

TEST(HistoryQuestion, ShowsTheAuditToWhoAdministersAlone) {
  EXPECT_FALSE(historyQueryIn({}, Role::kObserve).withAudit);
  EXPECT_FALSE(historyQueryIn({}, Role::kOperate).withAudit);
  EXPECT_TRUE(historyQueryIn({}, Role::kAdminister).withAudit);
  EXPECT_EQ(historyQueryIn({{L"kind", L"audit"}}, Role::kAdminister).kind, "audit");
}

struct RefusedQuestion {
  const char* name;
  Parameters parameters;
  std::int32_t status = 400;
};

void PrintTo(const RefusedQuestion& row, std::ostream* stream) { *stream << row.name; }

class HistoryQuestionRefusal : public testing::TestWithParam<RefusedQuestion> {};

TEST_P(HistoryQuestionRefusal, TellsWhy) {
  try {
    historyQueryIn(GetParam().parameters, Role::kOperate);
    FAIL() << "it was taken";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(refusal.status, GetParam().status);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Questions, HistoryQuestionRefusal,
    testing::Values(RefusedQuestion{"Audit", {{L"kind", L"audit"}}, 403},
                    RefusedQuestion{"AnotherKind", {{L"kind", L"gossip"}}},
                    RefusedQuestion{"AnotherSeverity", {{L"severity", L"worse"}}},
                    RefusedQuestion{"AnotherType", {{L"objectType", L"engine"}}},
                    RefusedQuestion{"NoMoment", {{L"from", L"2026-13-01T00:00:00Z"}}},
                    RefusedQuestion{"MomentWithoutAnOffset", {{L"to", L"2026-11-22T00:00:00"}}},
                    RefusedQuestion{"EndAheadOfTheBeginning",
                                    {{L"from", L"2026-11-22T00:00:01Z"}, {L"to", L"2026-11-22T00:00:00Z"}}},
                    RefusedQuestion{"EmptyText", {{L"text", L""}}},
                    RefusedQuestion{"EmptyCursor", {{L"cursor", L""}}},
                    RefusedQuestion{"TooMany", {{L"limit", L"1001"}}},
                    RefusedQuestion{"AnotherParameter", {{L"colour", L"red"}}}),
    ByName());

}  // namespace

}  // namespace host
