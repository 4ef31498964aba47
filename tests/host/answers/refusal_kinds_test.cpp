#include "answers/refusal_kinds.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace host {

namespace {

using Value = RefusalKinds::Value;

Value refusal(const wchar_t* errorId, const wchar_t* words, const wchar_t* kind) {
  Value form;
  form.member(L"errorId") = std::wstring(errorId);
  form.member(L"words") = std::wstring(words);
  form.member(L"kind") = std::wstring(kind);
  return form;
}

Value description() {
  Value told;
  told.member(L"refusals").at(0) = refusal(L"OFFLINE", L"Does not work", L"offline");
  told.member(L"statuses").at(0) = refusal(L"INTERNAL_ERROR", L"Wrong state", L"failure");
  told.member(L"statuses").at(1) = refusal(L"INVALID_PARAMETER", L"Wrong scope", L"failure");
  told.member(L"unknownStatus") = refusal(L"INVALID_PARAMETER", L"Unknown", L"failure");
  return told;
}

Value route() {
  Value told;
  told.member(L"refusals").at(0) = refusal(L"INTERNAL_ERROR", L"Wrong state", L"state");
  told.member(L"refusals").at(1) = refusal(L"NOT_SUPPORTED", L"Not ever", L"no such kind");
  return told;
}

struct KindRow {
  std::string name;
  std::string errorId;
  std::string words;
  RefusalKind kind;
};

class RefusalKindsTest : public testing::TestWithParam<KindRow> {
 protected:
  const RefusalKinds m_kinds{description(), route()};
};

TEST_P(RefusalKindsTest, AreWhatThePluginTells) {
  EXPECT_EQ(m_kinds.of(GetParam().errorId, GetParam().words), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, RefusalKindsTest,
    testing::Values(
        KindRow{"OfTheRouteAheadOfAllOthers", "INTERNAL_ERROR", "Wrong state", RefusalKind::kState},
        KindRow{"OfAllRoutes", "OFFLINE", "Does not work", RefusalKind::kOffline},
        KindRow{"OfAStatus", "INVALID_PARAMETER", "Wrong scope", RefusalKind::kFailure},
        KindRow{"OfAnUnknownStatus", "INVALID_PARAMETER", "Unknown", RefusalKind::kFailure},
        KindRow{"OfTheIdAlone", "INVALID_PARAMETER", "root.name: not present", RefusalKind::kRequest},
        KindRow{"OfTheIdWhereTheKindIsNone", "NOT_SUPPORTED", "Not ever", RefusalKind::kUnsupported},
        KindRow{"OfNobody", "NEW", "Words", RefusalKind::kFailure}),
    ByName());

TEST(RefusalKinds, WithoutADescriptionTheIdCounts) {
  EXPECT_EQ(RefusalKinds().of("OBJECT_NOT_FOUND", "any"), RefusalKind::kAbsent);
}

}  // namespace

}  // namespace host
