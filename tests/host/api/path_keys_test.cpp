#include "api/path_keys.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace host {

namespace {

struct KeyRow {
  std::string name;
  std::vector<std::wstring> segments;
  std::wstring key;  // empty: none
  std::size_t segmentCount;
};

class PathKeysTest : public testing::TestWithParam<KeyRow> {
 protected:
  const PathKeys m_keys{{L"mirn/volumes", L"mirn", L"mirn/volumes/deep/er", L"other/only"}};
};

TEST_P(PathKeysTest, TheLongestKeyOfWholeSegmentsWins) {
  const auto match = m_keys.longest(GetParam().segments);
  EXPECT_EQ(match ? match->key : L"", GetParam().key);
  EXPECT_EQ(match ? match->segmentCount : 0, GetParam().segmentCount);
}

INSTANTIATE_TEST_SUITE_P(
    Segments, PathKeysTest,
    testing::Values(
        KeyRow{"None", {}, L"", 0}, KeyRow{"Exact", {L"mirn"}, L"mirn", 1},
        KeyRow{"WithRest", {L"mirn", L"state"}, L"mirn", 1},
        KeyRow{"Longer", {L"mirn", L"volumes", L"12"}, L"mirn/volumes", 2},
        KeyRow{"NoBoundary", {L"mirn", L"volumes2"}, L"mirn", 1},
        KeyRow{"NoBoundaryAtAll", {L"mirnx"}, L"", 0},
        KeyRow{"GapBetweenKeys", {L"mirn", L"volumes", L"deep"}, L"mirn/volumes", 2},
        KeyRow{"OverTheGap", {L"mirn", L"volumes", L"deep", L"er", L"x"}, L"mirn/volumes/deep/er", 4},
        KeyRow{"StartOfAKeyOnly", {L"other"}, L"", 0}, KeyRow{"CaseCounts", {L"Mirn"}, L"", 0}),
    ByName());

TEST(PathKeys, WithoutKeysNothingMatches) { EXPECT_FALSE(PathKeys({}).longest({L"a"})); }

}  // namespace

}  // namespace host
