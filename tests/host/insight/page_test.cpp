#include "insight/page.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "support/by_name.h"

namespace host {

namespace {

TEST(Page, IsTheFirstHundredUnlessTold) {
  const Page page = pageIn({});
  EXPECT_EQ(page.begin, 0U);
  EXPECT_EQ(page.limit, 100U);
  EXPECT_EQ(page.next(100), "");
  EXPECT_FALSE(page.next(101).empty());
}

TEST(Page, GoesOnWhereTheOneBeforeEnds) {
  const Page first = pageIn({{L"limit", L"2"}});
  const std::string cursor = first.next(5);
  const Page second = pageIn({{L"limit", L"2"}, {L"cursor", std::wstring(cursor.begin(), cursor.end())}});
  EXPECT_EQ(second.begin, 2U);
  EXPECT_EQ(second.limit, 2U);
  EXPECT_EQ(second.next(4), "");
}

TEST(Page, MayHaveOneToAThousand) {
  EXPECT_EQ(pageIn({{L"limit", L"1"}}).limit, 1U);
  EXPECT_EQ(pageIn({{L"limit", L"1000"}}).limit, 1000U);
}

struct WrongPage {
  const char* name;
  std::map<std::wstring, std::wstring> parameters;
};

void PrintTo(const WrongPage& row, std::ostream* stream) { *stream << row.name; }

class PageRefusal : public testing::TestWithParam<WrongPage> {};

TEST_P(PageRefusal, IsA400) {
  try {
    pageIn(GetParam().parameters);
    FAIL() << "it was taken";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(refusal.status, 400);
  }
}

INSTANTIATE_TEST_SUITE_P(Parameters, PageRefusal,
                         testing::Values(WrongPage{"None", {{L"limit", L"0"}}},
                                         WrongPage{"TooMany", {{L"limit", L"1001"}}},
                                         WrongPage{"NoNumber", {{L"limit", L"x"}}},
                                         WrongPage{"EmptyLimit", {{L"limit", L""}}},
                                         WrongPage{"TooLong", {{L"limit", L"1000000000"}}},
                                         WrongPage{"ForeignCursor", {{L"cursor", L"12"}}},
                                         WrongPage{"EmptyCursor", {{L"cursor", L""}}},
                                         WrongPage{"CursorWithoutNumber", {{L"cursor", L"c"}}}),
                         ByName());

}  // namespace

}  // namespace host
