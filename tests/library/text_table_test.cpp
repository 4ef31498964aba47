#include "text_table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using Table = TextTable<std::uint32_t>;

SharedText found(const Table& table, std::uint32_t hash, const std::wstring& text) {
  return table.find(hash, [&](const std::wstring& known) { return known == text; });
}

/// The text with this hash, made where the table has none.
SharedText textOf(Table& table, std::uint32_t hash, const std::wstring& text) {
  const SharedText known = found(table, hash, text);
  return known.empty() ? table.add(hash, text) : known;
}

TEST(TextTable, FindsWhatWasAddedAndNothingElse) {
  Table table;
  EXPECT_TRUE(found(table, 1, L"one").empty());
  const SharedText one = table.add(1, L"one");
  EXPECT_EQ(one.text(), L"one");
  EXPECT_TRUE(found(table, 1, L"one").isSharedWith(one));
  EXPECT_TRUE(found(table, 1, L"other").empty());
  EXPECT_TRUE(found(table, 2, L"one").empty());
  EXPECT_EQ(table.size(), 1U);
}

TEST(TextTable, KeepsTextsOfOneHashApart) {
  Table table;
  const SharedText one = textOf(table, 7, L"one");
  const SharedText other = textOf(table, 7, L"other");
  EXPECT_EQ(other.text(), L"other");
  EXPECT_TRUE(textOf(table, 7, L"one").isSharedWith(one));
  EXPECT_TRUE(textOf(table, 7, L"other").isSharedWith(other));
  EXPECT_EQ(table.size(), 2U);
}

TEST(TextTable, HoldsNoEmptyText) {
  Table table;
  EXPECT_TRUE(textOf(table, 1, L"").empty());
  EXPECT_EQ(table.size(), 0U);
}

TEST(TextTable, FindsTheRemainingOfOneHashWhenOneOfThemIsForgotten) {
  Table table;
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
