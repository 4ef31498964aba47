#include "shared_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

TEST(SharedText, ReadsAsTheTextThatItIsMadeOf) {
  EXPECT_EQ(SharedText(L"text").text(), L"text");
  const std::wstring withNul(L"a\0b", 3);
  EXPECT_EQ(SharedText(withNul).text(), withNul);
  const SharedText text = L"\x20AC";
  const std::wstring& read = text;
  EXPECT_EQ(read, L"\x20AC");
}

TEST(SharedText, IsEmptyWithoutAText) {
  EXPECT_EQ(SharedText().text(), L"");
  EXPECT_EQ(SharedText(L"").text(), L"");
  EXPECT_TRUE(SharedText().isSharedWith(SharedText(L""))) << "an empty text takes memory";
}

TEST(SharedText, IsOneInMemoryWithItsCopies) {
  const SharedText first = L"text";
  const SharedText copy = first;
  EXPECT_TRUE(copy.isSharedWith(first));
  EXPECT_EQ(&copy.text(), &first.text());
}

TEST(SharedText, StaysForTheLastOfItsCopies) {
  auto first = std::make_unique<SharedText>(L"a text that is too long to stand inside of a string");
  const SharedText copy = *first;
  const std::wstring& read = copy;
  first.reset();
  EXPECT_EQ(read, L"a text that is too long to stand inside of a string");
}

TEST(SharedText, LeavesItsCopiesAloneWhenItIsAssignedOver) {
  SharedText first = L"before";
  const SharedText copy = first;
  first = L"after";
  EXPECT_EQ(first.text(), L"after");
  EXPECT_EQ(copy.text(), L"before");
}

TEST(SharedText, MovesWithoutRaisingAndLeavesNothing) {
  static_assert(
      std::is_nothrow_move_constructible_v<SharedText> && std::is_nothrow_move_assignable_v<SharedText>,
      "lists of the model would copy as they grow");
  SharedText first = L"text";
  const SharedText second = std::move(first);
  EXPECT_EQ(second.text(), L"text");
}

TEST(SharedText, ComparesByWhatItReads) {
  EXPECT_EQ(SharedText(L"text"), SharedText(L"text"));
  EXPECT_NE(SharedText(L"text"), SharedText(L"Text"));
  EXPECT_NE(SharedText(L"text"), SharedText());
  EXPECT_EQ(SharedText(), SharedText(L""));
}

TEST(SharedText, StandsInTheOrderOfWhatItReads) {
  EXPECT_LT(SharedText(L"10"), SharedText(L"9"));
  EXPECT_LT(SharedText(), SharedText(L"a"));
  EXPECT_FALSE(SharedText(L"a") < SharedText(L"a"));
}

TEST(SharedText, TellsWhetherAnotherHasIt) {
  EXPECT_FALSE(SharedText().isShared());
  const SharedText text = L"text";
  EXPECT_FALSE(text.isShared());
  {
    const SharedText copy = text;
    EXPECT_TRUE(text.isShared());
  }
  EXPECT_FALSE(text.isShared());
}

TEST(SharedText, TellsWhetherThereIsAText) {
  EXPECT_TRUE(SharedText().empty());
  EXPECT_TRUE(SharedText(L"").empty());
  EXPECT_FALSE(SharedText(L"a").empty());
}

TEST(SharedText, IsCopiedAndDroppedByManyThreadsAtOnce) {
  constexpr int kCopies = 20000;
  const SharedText text = L"a text that many read";
  std::vector<std::thread> readers;
  std::vector<int> equal(4, 0);
  for (int& count : equal) {
    readers.emplace_back([&count, &text] {
      for (int i = 0; i < kCopies; ++i) {
        const SharedText copy = text;
        if (copy.text() == L"a text that many read") ++count;
      }
    });
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(equal, std::vector<int>(4, kCopies));
  EXPECT_EQ(text.text(), L"a text that many read");
}

}  // namespace
