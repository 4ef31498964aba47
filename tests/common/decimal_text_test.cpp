#include "decimal_text.h"

#include <gtest/gtest.h>

#include <locale>

namespace {

TEST(DecimalText, HasTheDigitsOfTheNumberAndNoMore) {
  EXPECT_EQ(decimalText(0), L"0");
  EXPECT_EQ(decimalText(7), L"7");
  EXPECT_EQ(decimalText(10), L"10");
  EXPECT_EQ(decimalText(1000000007), L"1000000007");
  EXPECT_EQ(decimalText(18446744073709551615U), L"18446744073709551615");
}

/// Groups digits by threes.
struct Grouping : std::numpunct<wchar_t> {
  wchar_t do_thousands_sep() const override { return L'.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(DecimalText, IsTheSameInEveryLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
  const std::wstring text = decimalText(1234567);
  std::locale::global(before);
  EXPECT_EQ(text, L"1234567");
}

TEST(WriteDigitsBefore, WritesNothingBehindTheEndNorBeforeTheFirstDigit) {
  std::wstring text = L"ab........z";
  wchar_t* const end = &text[10];
  EXPECT_EQ(writeDigitsBefore(end, 42), &text[8]);
  EXPECT_EQ(text, L"ab......42z");
}

}  // namespace
