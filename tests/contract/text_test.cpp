#include "text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/by_name.h"

namespace {

struct Pair {
  const char* name;
  std::string utf8;
  std::wstring wide;
};

class TextPairs : public testing::TestWithParam<Pair> {};

TEST_P(TextPairs, ConvertBothWays) {
  EXPECT_EQ(utf8ToWide(GetParam().utf8), GetParam().wide);
  EXPECT_EQ(wideToUtf8(GetParam().wide), GetParam().utf8);
}

INSTANTIATE_TEST_SUITE_P(
    Text, TextPairs,
    testing::Values(Pair{"Empty", "", L""}, Pair{"Ascii", "mirn/volumes", L"mirn/volumes"},
                    Pair{"TwoBytes", "\xC3\xBC", L"\x00FC"}, Pair{"ThreeBytes", "\xE2\x82\xAC", L"\x20AC"},
                    Pair{"AboveThePlane", "\xF0\x9F\x92\xBE", std::wstring{wchar_t(0xD83D), wchar_t(0xDCBE)}},
                    Pair{"FirstAboveThePlane", "\xF0\x90\x80\x80",
                         std::wstring{wchar_t(0xD800), wchar_t(0xDC00)}},
                    Pair{"LastBelowTheSurrogates", "\xED\x9F\xBF", L"\xD7FF"},
                    Pair{"FirstBehindTheSurrogates", "\xEE\x80\x80", L"\xE000"},
                    Pair{"LastCode", "\xF4\x8F\xBF\xBF", std::wstring{wchar_t(0xDBFF), wchar_t(0xDFFF)}},
                    Pair{"EmbeddedNul", std::string("a\0b", 3), std::wstring(L"a\0b", 3)}),
    ByName());

void expectBadConversion(const std::function<void()>& conversion) {
  try {
    conversion();
    FAIL() << "converted";
  } catch (const std::range_error& error) {
    EXPECT_STREQ(error.what(), "bad conversion");
  }
}

class BadUtf8 : public testing::TestWithParam<std::string> {};

TEST_P(BadUtf8, IsRefused) {
  expectBadConversion([] { utf8ToWide(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Text, BadUtf8,
                         testing::Values("\xFF", "\xC3", "a\xE2\x82", "\xC0\x80", "\xF4\x90\x80\x80", "\x80",
                                         "\xED"));

/// Each half of a surrogate pair, as it would be encoded by itself.
class EncodedSurrogates : public testing::TestWithParam<std::string> {};

TEST_P(EncodedSurrogates, AreRefusedWhereverTheyStand) {
  expectBadConversion([] { utf8ToWide(GetParam()); });
  expectBadConversion([] { utf8ToWide("a" + GetParam()); });
  expectBadConversion([] { utf8ToWide(GetParam() + "a"); });
  expectBadConversion([] { utf8ToWide("\xED\x9F\xBF" + GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Text, EncodedSurrogates,
                         testing::Values("\xED\xA0\x80", "\xED\xAF\xBF", "\xED\xB0\x80", "\xED\xBF\xBF",
                                         "\xED\xA0\xBD\xED\xB2\xBE"));

class BadWide : public testing::TestWithParam<std::wstring> {};

TEST_P(BadWide, IsRefused) {
  expectBadConversion([] { wideToUtf8(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Text, BadWide,
                         testing::Values(std::wstring{wchar_t(0xDC00)}, std::wstring{wchar_t(0xD800)},
                                         std::wstring{L'a', wchar_t(0xD800)},
                                         std::wstring{wchar_t(0xD800), L'a'},
                                         std::wstring{wchar_t(0xDBFF), wchar_t(0xDBFF)},
                                         std::wstring{wchar_t(0xDCBE), wchar_t(0xD83D)}));

TEST(Text, AWideCodeBeyondUtf16IsNotCutShort) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "no such code fits";
  const std::wstring code(1, static_cast<wchar_t>(0x1F4BE));
  EXPECT_EQ(wideToUtf8(code), "\xF0\x9F\x92\xBE");
  EXPECT_EQ(wideToUtf8(L"a" + code), "a\xF0\x9F\x92\xBE");
}

TEST(Text, PartsAreJoinedInTheirOrder) {
  EXPECT_EQ(joined({}, L"/"), L"");
  EXPECT_EQ(joined({L"a"}, L"/"), L"a");
  EXPECT_EQ(joined({L"b", L"a", L"c"}, L", "), L"b, a, c");
  EXPECT_EQ(joined({L"", L"a", L""}, L"/"), L"/a/");
}

}  // namespace
