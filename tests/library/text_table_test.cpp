#include "text_table.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

/// The text with this hash, made where the table has none.
SharedText textOf(TextTable& table, std::uint64_t hash, const std::wstring& text) {
  return table.findOrMake(
      hash, [&](const std::wstring& known) { return known == text; }, [&] { return text; });
}

TEST(TextTable, MakesATextThatItDoesNotHaveAlone) {
  TextTable table;
  const SharedText first = textOf(table, 1, L"one");
  const SharedText again = table.findOrMake(
      1, [](const std::wstring&) { return true; },
      []() -> std::wstring {
        ADD_FAILURE() << "made again";
        return {};
      });
  EXPECT_TRUE(again.isSharedWith(first));
  EXPECT_EQ(table.size(), 1U);
}

TEST(TextTable, KeepsTextsOfOneHashApart) {
  TextTable table;
  const SharedText one = textOf(table, 7, L"one");
  const SharedText other = textOf(table, 7, L"other");
  EXPECT_EQ(other.text(), L"other");
  EXPECT_TRUE(textOf(table, 7, L"one").isSharedWith(one));
  EXPECT_TRUE(textOf(table, 7, L"other").isSharedWith(other));
  EXPECT_EQ(table.size(), 2U);
}

TEST(TextTable, HoldsNoEmptyText) {
  TextTable table;
  EXPECT_TRUE(textOf(table, 1, L"").empty());
  EXPECT_EQ(table.size(), 0U);
}

TEST(TextTable, StaysAsItIsWhenATextCannotBeMade) {
  TextTable table;
  const SharedText one = textOf(table, 1, L"one");
  const auto fails = []() -> std::wstring { throw std::range_error("bad conversion"); };
  EXPECT_THROW(table.findOrMake(2, [](const std::wstring&) { return true; }, fails), std::range_error);
  EXPECT_EQ(table.size(), 1U);
  EXPECT_TRUE(textOf(table, 1, L"one").isSharedWith(one));
}

TEST(TextTable, FindsTheRemainingOfOneHashWhenOneOfThemIsForgotten) {
  TextTable table;
  const SharedText first = textOf(table, 7, L"first");
  textOf(table, 7, L"unused");
  const SharedText last = textOf(table, 7, L"last");
  table.forgetUnused();
  EXPECT_EQ(table.size(), 2U);
  EXPECT_TRUE(textOf(table, 7, L"first").isSharedWith(first));
  EXPECT_TRUE(textOf(table, 7, L"last").isSharedWith(last));
  EXPECT_EQ(table.size(), 2U);
}

}  // namespace
