#include "text_order.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// In their order, among them those that begin alike, and those whose units do not fit a byte.
const std::vector<std::wstring> kInOrder = {
    L"",
    L"0",
    L"1",
    L"10",
    L"1000000",
    L"10000000",
    L"100000000",
    L"1000000000",
    L"1000000001",
    L"10000001",
    L"2",
    L"\x00FE\x0001",
    L"\x00FE\x0002",
    L"\x00FF\x0009",
    L"\x0100\x0008",
    L"\x0100\x0009",
    L"\xFFFD",
};

TEST(TextOrder, ABeginningThatIsLessStandsForATextThatIsLess) {
  ASSERT_TRUE(std::is_sorted(kInOrder.begin(), kInOrder.end()));
  for (std::size_t i = 1; i < kInOrder.size(); ++i) {
    EXPECT_LE(beginningOf(kInOrder[i - 1]), beginningOf(kInOrder[i])) << i;
  }
}

TEST(TextOrder, ABeginningHasEightUnits) {
  EXPECT_EQ(beginningOf(L""), 0U);
  EXPECT_EQ(beginningOf(L"1"), 0x3100000000000000U);
  EXPECT_EQ(beginningOf(L"12345678"), 0x3132333435363738U);
  EXPECT_EQ(beginningOf(L"123456789"), 0x3132333435363738U);
  EXPECT_EQ(beginningOf(L"\x0100\x0031"), 0xFF00000000000000U);
}

TEST(TextOrder, SortsFromAnyOrder) {
  std::mt19937 random(1);
  for (int round = 0; round < 100; ++round) {
    std::vector<SharedText> texts(kInOrder.begin(), kInOrder.end());
    std::shuffle(texts.begin(), texts.end(), random);
    sortTexts(texts);
    EXPECT_EQ(std::vector<std::wstring>(texts.begin(), texts.end()), kInOrder);
  }
}

TEST(TextOrder, KeepsEveryOneOfThoseThatAreAlike) {
  std::vector<SharedText> texts = {L"b", L"a", L"b", L"a"};
  sortTexts(texts);
  EXPECT_EQ(texts, (std::vector<SharedText>{L"a", L"a", L"b", L"b"}));
  texts.clear();
  sortTexts(texts);
  EXPECT_TRUE(texts.empty());
}

}  // namespace
