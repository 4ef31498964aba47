#include "log_text.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace {

struct Row {
  const char* name;
  std::wstring text;
  std::wstring escaped;
};

class EscapedText : public testing::TestWithParam<Row> {};

TEST_P(EscapedText, IsAscii) { EXPECT_EQ(ovra::log::escapeText(GetParam().text), GetParam().escaped); }

INSTANTIATE_TEST_SUITE_P(
    LogText, EscapedText,
    testing::Values(Row{"Empty", L"", L""}, Row{"Plain", L"a \\ z\t~\x7F", L"a \\ z\t~\x7F"},
                    Row{"Latin", L"\x80\xFC!", L"\\u0080\\u00FC!"}, Row{"Euro", L"1 \x20AC", L"1 \\u20AC"},
                    Row{"Pair", std::wstring{wchar_t(0xD83D), wchar_t(0xDCBE)}, L"\\uD83D\\uDCBE"},
                    Row{"Grouped", std::wstring(1, wchar_t(0xFFFF)), L"\\uFFFF"}),
    ByName());

}  // namespace
