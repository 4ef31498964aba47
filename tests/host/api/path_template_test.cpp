#include "api/path_template.h"

#include <gmock/gmock.h>

#include "support/by_name.h"

namespace host {

namespace {

using namespace std::string_literals;
using Segments = PathTemplate::Segments;

struct MatchRow {
  std::string name;
  std::wstring path;
  Segments segments;
  bool matches;
};

class PathTemplateTest : public testing::TestWithParam<MatchRow> {};

TEST_P(PathTemplateTest, MatchesWholeSegments) {
  EXPECT_EQ(PathTemplate(GetParam().path).matches(GetParam().segments), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PathTemplateTest,
    testing::Values(MatchRow{"Same", L"api/v1", {L"api", L"v1"}, true},
                    MatchRow{"CaseCounts", L"api/v1", {L"api", L"V1"}, false},
                    MatchRow{"StartOnly", L"api/v1", {L"api"}, false},
                    MatchRow{"More", L"api/v1", {L"api", L"v1", L"x"}, false},
                    MatchRow{"StartOfASegment", L"volumes", {L"volumes2"}, false},
                    MatchRow{"Name", L"volumes/{volumeId}/name", {L"volumes", L"7", L"name"}, true},
                    MatchRow{"NameIsOneSegment", L"volumes/{volumeId}", {L"volumes", L"7", L"8"}, false},
                    MatchRow{"NameIsNotNone", L"volumes/{volumeId}", {L"volumes"}, false},
                    MatchRow{"NameIsAnyText", L"volumes/{volumeId}", {L"volumes", L"{*}"}, true},
                    MatchRow{"RestOfNone", L"test/{*}", {L"test"}, true},
                    MatchRow{"RestOfMany", L"test/{*}", {L"test", L"a", L"b", L"c"}, true},
                    MatchRow{"RestOfAnother", L"test/{*}", {L"tests", L"a"}, false},
                    MatchRow{"RestOfTooFew", L"test/deep/{*}", {L"test"}, false},
                    MatchRow{"Root", L"", {}, true}, MatchRow{"NotTheRoot", L"", {L"a"}, false}),
    ByName());

TEST(PathTemplate, TellsItsArguments) {
  const PathTemplate path(L"volumes/{volumeId}/disks/{diskId}");
  EXPECT_THAT(path.argumentsIn({L"volumes", L"7", L"disks", L"9"}),
              testing::ElementsAre(testing::Pair(L"diskId"s, L"9"s), testing::Pair(L"volumeId"s, L"7"s)));
}

TEST(PathTemplate, TheMoreExactGoesAhead) {
  EXPECT_LT(PathTemplate(L"a/b"), PathTemplate(L"a/{x}"));
  EXPECT_LT(PathTemplate(L"a/{x}"), PathTemplate(L"a/{*}"));
  EXPECT_LT(PathTemplate(L"a/b/{*}"), PathTemplate(L"a/{*}"));
  EXPECT_LT(PathTemplate(L"a"), PathTemplate(L"a/{*}"));
  EXPECT_EQ(PathTemplate(L"a/{x}"), PathTemplate(L"a/{y}"));
}

}  // namespace

}  // namespace host
