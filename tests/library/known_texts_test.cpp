#include "known_texts.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "identifiers.h"
#include "support/by_name.h"
#include "support/id_vectors.h"

namespace {

class KnownId : public testing::TestWithParam<IdVector> {};

TEST_P(KnownId, IsTheIdOfTheIdentityTextAndMadeOnce) {
  KnownTexts texts;
  const SharedText id = texts.id(GetParam().uniqueId);
  EXPECT_EQ(id.text(), GetParam().id);
  EXPECT_TRUE(texts.id(GetParam().uniqueId).isSharedWith(id));
}

INSTANTIATE_TEST_SUITE_P(KnownTexts, KnownId, testing::ValuesIn(kIdVectors), ByName());

TEST(KnownTexts, WriteAnAddressOnce) {
  KnownTexts texts;
  const SharedText address = texts.address(0x04030201);
  EXPECT_EQ(address.text(), L"1-2-3-4");
  EXPECT_TRUE(texts.address(0x04030201).isSharedWith(address));
  EXPECT_EQ(texts.address(0).text(), L"0-0-0-0");
}

TEST(KnownTexts, ReadAFieldUpToItsFirstNulAndMakeItOnce) {
  KnownTexts texts;
  const char field[8] = {'a', 'b', '\0', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF'};
  const char full[2] = {'a', 'b'};
  const SharedText text = texts.text(field);
  EXPECT_EQ(text.text(), L"ab");
  EXPECT_TRUE(texts.text(full).isSharedWith(text));
}

TEST(KnownTexts, HoldNothingForAnEmptyField) {
  KnownTexts texts;
  const char field[4] = {};
  EXPECT_TRUE(texts.text(field).empty());
  EXPECT_EQ(texts.size(), 0U);
}

TEST(KnownTexts, MakeATextBeyondAsciiOnceToo) {
  KnownTexts texts;
  const SharedText text =
      texts.text(std::string_view("l\xC3\xBC"
                                  "fter"));
  EXPECT_EQ(text.text(),
            L"l\x00FC"
            L"fter");
  EXPECT_TRUE(texts
                  .text(std::string_view("l\xC3\xBC"
                                         "fter"))
                  .isSharedWith(text));
}

TEST(KnownTexts, RefuseWhatIsNotUtf8AndGoOn) {
  KnownTexts texts;
  EXPECT_THROW(texts.text(std::string_view("\xFF")), std::range_error);
  EXPECT_THROW(texts.id(std::string_view("\xC3")), std::range_error);
  EXPECT_EQ(texts.size(), 0U);
  EXPECT_EQ(texts.text(std::string_view("a")).text(), L"a");
}

std::wstring twice(const std::wstring& text) { return text + text; }
std::wstring nothing(const std::wstring&) { return {}; }

TEST(KnownTexts, FormATextOnceForSeveralInARow) {
  KnownTexts texts;
  const SharedText first = texts.formed(std::string_view("ab"), twice);
  EXPECT_EQ(first.text(), L"abab");
  EXPECT_TRUE(texts.formed(std::string_view("ab"), twice).isSharedWith(first));
  EXPECT_EQ(texts.formed(std::string_view("c"), twice).text(), L"cc");
  EXPECT_TRUE(texts.formed(std::string_view("ab"), twice).isSharedWith(first)) << "another stood between";
}

TEST(KnownTexts, FormByTheFormThatIsAskedFor) {
  KnownTexts texts;
  EXPECT_EQ(texts.formed(std::string_view("a"), twice).text(), L"aa");
  EXPECT_TRUE(texts.formed(std::string_view("a"), nothing).empty());
  EXPECT_TRUE(texts.formed(std::string_view(), nothing).empty());
  EXPECT_EQ(texts.formed(std::string_view("a"), twice).text(), L"aa");
}

/// Many of each kind, told apart by a number.
std::vector<SharedText> many(KnownTexts& texts, unsigned first, unsigned end) {
  std::vector<SharedText> made;
  for (unsigned number = first; number < end; ++number) {
    made.push_back(texts.id(std::string_view("disk-" + std::to_string(number))));
    made.push_back(texts.address(number));
    made.push_back(texts.text(std::string_view("SN" + std::to_string(number))));
  }
  return made;
}

TEST(KnownTexts, KeepThousandsApart) {
  constexpr unsigned kCount = 5000;
  KnownTexts texts;
  const std::vector<SharedText> made = many(texts, 0, kCount);
  for (unsigned number = 0; number < kCount; ++number) {
    ASSERT_EQ(made[3 * number].text(), idFromUniqueId("disk-" + std::to_string(number)));
    ASSERT_EQ(made[3 * number + 1].text(), addressToString(number));
    ASSERT_EQ(made[3 * number + 2].text(), L"SN" + std::to_wstring(number));
  }
  EXPECT_EQ(texts.size(), 3 * kCount);
  const std::vector<SharedText> again = many(texts, 0, kCount);
  for (std::size_t i = 0; i < made.size(); ++i) ASSERT_TRUE(again[i].isSharedWith(made[i])) << i;
}

TEST(KnownTexts, ForgetWhatNobodyHasAndNothingElse) {
  constexpr unsigned kCount = 1000;
  KnownTexts texts;
  const std::vector<SharedText> kept = many(texts, 0, kCount);
  many(texts, kCount, 5 * kCount);
  ASSERT_EQ(texts.size(), 15 * kCount);
  texts.forgetUnused();
  EXPECT_EQ(texts.size(), 3 * kCount);
  const std::vector<SharedText> again = many(texts, 0, kCount);
  for (std::size_t i = 0; i < kept.size(); ++i) ASSERT_TRUE(again[i].isSharedWith(kept[i])) << i;
}

TEST(KnownTexts, ForgetAllWhenNobodyHasAny) {
  KnownTexts texts;
  many(texts, 0, 100);
  texts.formed(std::string_view("ab"), twice);
  texts.forgetUnused();
  EXPECT_EQ(texts.size(), 0U);
  EXPECT_EQ(texts.address(7).text(), L"7-0-0-0");
}

}  // namespace
