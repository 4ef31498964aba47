#include "api/request_target.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "host/answers/refusal_of.h"
#include "support/by_name.h"

namespace host {

namespace {

constexpr TargetBounds kBounds{16, 16};

using Segments = std::vector<std::wstring>;
using Parameters = std::map<std::wstring, std::wstring>;

struct TargetRow {
  std::string name;
  std::string target;
  Segments segments;
  Parameters parameters;
};

class RequestTargetTest : public testing::TestWithParam<TargetRow> {};

TEST_P(RequestTargetTest, IsSplitAndThenDecoded) {
  const RequestTarget target = parseTarget(GetParam().target, kBounds);
  EXPECT_EQ(target.segments, GetParam().segments);
  EXPECT_EQ(target.parameters, GetParam().parameters);
}

INSTANTIATE_TEST_SUITE_P(
    Targets, RequestTargetTest,
    testing::Values(TargetRow{"Root", "/", {}, {}}, TargetRow{"OneSegment", "/api", {L"api"}, {}},
                    TargetRow{"Segments", "/api/v1/mirn", {L"api", L"v1", L"mirn"}, {}},
                    TargetRow{"Decoded", "/%61%2e%2E/b%20c", {L"a..", L"b c"}, {}},
                    TargetRow{"DecodedOnce", "/%2541", {L"%41"}, {}},
                    TargetRow{"Utf8", "/%C3%BC/\xC3\xBC", {L"\u00FC", L"\u00FC"}, {}},
                    TargetRow{"BeyondTheBasicPlane", "/%F0%9F%98%80", {std::wstring{0xD83D, 0xDE00}}, {}},
                    TargetRow{"DotsAreOrdinary", "/a/../b", {L"a", L"..", L"b"}, {}},
                    TargetRow{"PlusIsItself", "/a+b?c=d+e", {L"a+b"}, {{L"c", L"d+e"}}},
                    TargetRow{"EncodedQuestionMark", "/a%3Fb", {L"a?b"}, {}},
                    TargetRow{"EmptyQuery", "/a?", {L"a"}, {}},
                    TargetRow{"RootWithQuery", "/?a=1", {}, {{L"a", L"1"}}},
                    TargetRow{"Parameters", "/a?b=1&c=2", {L"a"}, {{L"b", L"1"}, {L"c", L"2"}}},
                    TargetRow{"NoValue", "/a?b&c=", {L"a"}, {{L"b", L""}, {L"c", L""}}},
                    TargetRow{"ValueWithEquals", "/a?b=c=d", {L"a"}, {{L"b", L"c=d"}}},
                    TargetRow{"ValueWithSlashes", "/a?b=c/d%2Fe?", {L"a"}, {{L"b", L"c/d/e?"}}},
                    TargetRow{"EncodedAmpersand", "/a?b=c%26d%3De", {L"a"}, {{L"b", L"c&d=e"}}},
                    TargetRow{"EncodedName", "/a?%62=1", {L"a"}, {{L"b", L"1"}}}),
    ByName());

struct RefusalRow {
  std::string name;
  std::string target;
  std::string message;
};

class RequestTargetRefusalTest : public testing::TestWithParam<RefusalRow> {};

TEST_P(RequestTargetRefusalTest, IsABadRequest) {
  const auto refusal = refusalOf([] { parseTarget(GetParam().target, kBounds); });
  ASSERT_TRUE(refusal) << "was taken";
  EXPECT_EQ(refusal->status, 400);
  EXPECT_EQ(refusal->what(), "The request target " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Targets, RequestTargetRefusalTest,
    testing::Values(RefusalRow{"Empty", "", "is not a path"}, RefusalRow{"Asterisk", "*", "is not a path"},
                    RefusalRow{"Absolute", "http://localhost/a", "is not a path"},
                    RefusalRow{"TrailingSlash", "/a/", "holds an empty segment"},
                    RefusalRow{"TrailingSlashAheadOfQuery", "/a/?b=1", "holds an empty segment"},
                    RefusalRow{"TwoSlashes", "//a", "holds an empty segment"},
                    RefusalRow{"SlashesInside", "/a//b", "holds an empty segment"},
                    RefusalRow{"EncodedSlash", "/a%2Fb", "holds an encoded slash"},
                    RefusalRow{"EncodedSlashInLowerCase", "/a%2fb", "holds an encoded slash"},
                    RefusalRow{"CutEncoding", "/a%4", "holds an invalid percent-encoding"},
                    RefusalRow{"BarePercent", "/a%", "holds an invalid percent-encoding"},
                    RefusalRow{"NoHexadecimal", "/%4g", "holds an invalid percent-encoding"},
                    RefusalRow{"SignedHexadecimal", "/%+4", "holds an invalid percent-encoding"},
                    RefusalRow{"EncodingInTheQuery", "/a?b=%zz", "holds an invalid percent-encoding"},
                    RefusalRow{"LoneByte", "/%FF", "is not UTF-8"},
                    RefusalRow{"CutUtf8", "/%C3", "is not UTF-8"},
                    RefusalRow{"LongForm", "/%C0%AF", "is not UTF-8"},
                    RefusalRow{"HalfAPair", "/%ED%A0%80", "is not UTF-8"},
                    RefusalRow{"HalfAPairAsItIs", "/a\xED\xBF\xBF", "is not UTF-8"},
                    RefusalRow{"PairOfEncodedHalves", "/%ED%A0%BD%ED%B2%BE", "is not UTF-8"},
                    RefusalRow{"HalfAPairInTheQuery", "/a?b=%ED%A0%80", "is not UTF-8"},
                    RefusalRow{"HalfAPairInAName", "/a?%ED%B0%80=b", "is not UTF-8"},
                    RefusalRow{"Utf8InTheQuery", "/a?b=%FF", "is not UTF-8"},
                    RefusalRow{"RepeatedParameter", "/a?b=1&b=1", "repeats a parameter"},
                    RefusalRow{"NulInAName", "/a?b%00c=1",
                               "holds a parameter with a NUL character in its name"},
                    RefusalRow{"RepeatedWhenDecoded", "/a?b=1&%62=2", "repeats a parameter"},
                    RefusalRow{"NoName", "/a?=1", "holds a parameter without a name"},
                    RefusalRow{"TwoAmpersands", "/a?b=1&&c=2", "holds a parameter without a name"},
                    RefusalRow{"AmpersandAtTheEnd", "/a?b=1&", "holds a parameter without a name"}),
    ByName());

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text + std::to_string(i);
  return all;
}

TEST(RequestTarget, HasNoMoreSegmentsThanItIsTold) {
  EXPECT_EQ(parseTarget(repeated("/a", 3), {3, 0}).segments.size(), 3U);
  EXPECT_THROW(parseTarget(repeated("/a", 4), {3, 0}), Refusal);
}

TEST(RequestTarget, HasNoMoreParametersThanItIsTold) {
  EXPECT_EQ(parseTarget("/?x" + repeated("&a", 2), {0, 3}).parameters.size(), 3U);
  EXPECT_THROW(parseTarget("/?x" + repeated("&a", 3), {0, 3}), Refusal);
}

}  // namespace

}  // namespace host
