#include "identifiers.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/by_name.h"
#include "support/id_vectors.h"

namespace {

class ObjectId : public testing::TestWithParam<IdVector> {};

TEST_P(ObjectId, IsTheFoldedHashOfTheWideText) {
  EXPECT_EQ(idFromUniqueId(GetParam().uniqueId), GetParam().id);
}

TEST_P(ObjectId, FitsTheSegmentOfAPath) {
  const std::wstring id = idFromUniqueId(GetParam().uniqueId);
  EXPECT_EQ(id.find_first_not_of(L"0123456789"), std::wstring::npos);
  EXPECT_GE(id.size(), 1U);
  EXPECT_LE(id.size(), 20U);
}

INSTANTIATE_TEST_SUITE_P(Identifiers, ObjectId, testing::ValuesIn(kIdVectors), ByName());

TEST(ObjectIdOfAField, EndsAtTheFirstNul) {
  char field[24] = "controller-0";
  field[13] = 'x';
  EXPECT_EQ(idFromUniqueId(field), idFromUniqueId("controller-0"));
}

TEST(ObjectIdOfAField, IsTheSameForAllEmptyTexts) {
  const char few[4] = {};
  const char many[24] = {};
  EXPECT_EQ(idFromUniqueId(few), idFromUniqueId(many));
}

TEST(ObjectIdOfAField, EndsAtTheFirstNulOfANonAsciiText) {
  const char field[24] =
      "L\xC3\xBC"
      "fter\0\xFF";
  EXPECT_EQ(idFromUniqueId(field), L"15619078155520633956");
}

TEST(ObjectIdOfAField, TellsTextsApartThatDifferInTheirLastCharacter) {
  EXPECT_NE(idFromUniqueId("0123456789ABCDEFGHIJKLM"), idFromUniqueId("0123456789ABCDEFGHIJKLN"));
  EXPECT_NE(idFromUniqueId("0123456789ABCDEFGHIJKLM"), idFromUniqueId("0123456789ABCDEFGHIJKL\xC3\xBC"));
}

TEST(WideFromNarrow, EndsAtTheFirstNul) {
  const char field[8] = {'a', 'b', '\0', 'c', '\0', 'd', '\0', '\0'};
  EXPECT_EQ(wideFromNarrow(field), L"ab");
}

TEST(WideFromNarrow, TakesAFullFieldWhole) {
  const char field[3] = {'a', 'b', 'c'};
  EXPECT_EQ(wideFromNarrow(field), L"abc");
}

TEST(WideFromNarrow, KeepsBlanksAndGivesAnEmptyTextForAnEmptyField) {
  EXPECT_EQ(wideFromNarrow("  a b "), L"  a b ");
  const char empty[17] = {};
  EXPECT_EQ(wideFromNarrow(empty), L"");
}

TEST(WideFromNarrow, DecodesUtf8IntoCodeUnits) {
  EXPECT_EQ(wideFromNarrow("\xC3\xBC"), L"\x00FC");
  EXPECT_EQ(wideFromNarrow("\xF0\x9F\x92\xBE"), (std::wstring{wchar_t(0xD83D), wchar_t(0xDCBE)}));
}

TEST(WideFromNarrow, LooksAtNothingBehindTheFirstNul) {
  const char field[8] = {'a', 'b', '\0', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF'};
  EXPECT_EQ(wideFromNarrow(field), L"ab");
}

TEST(WideFromNarrow, DecodesALongTextWhoseLastCharacterAloneIsNoAscii) {
  const std::string start(70, 'x');
  EXPECT_EQ(wideFromNarrow(start + "\xE2\x82\xAC"), std::wstring(70, L'x') + L"\x20AC");
  EXPECT_THROW(wideFromNarrow(start + "\xE2\x82"), std::range_error);
}

TEST(WideFromNarrow, RefusesWhatIsNotUtf8) {
  EXPECT_THROW(wideFromNarrow("\xFF"), std::range_error);
  EXPECT_THROW(idFromUniqueId("\xC3"), std::range_error);
  EXPECT_THROW(wideFromNarrow("\xED\xA0\x80"), std::range_error);
  EXPECT_THROW(idFromUniqueId("\xED\xBF\xBF"), std::range_error);
}

TEST(Address, WritesItsBytesLowestFirst) {
  EXPECT_EQ(addressToString(0x04030201), L"1-2-3-4");
  EXPECT_EQ(addressToString(0), L"0-0-0-0");
  EXPECT_EQ(addressToString(0xFFFFFFFF), L"255-255-255-255");
  EXPECT_EQ(addressToString(0x0A00C801), L"1-200-0-10");
}

}  // namespace
