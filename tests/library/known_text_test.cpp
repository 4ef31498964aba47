#include "known_text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kFieldSize = 8;

std::wstring twice(std::string_view text) { return wideFromNarrow(text) + wideFromNarrow(text); }

using Twice = FormedText<kFieldSize, twice>;

template <class Known>
class KnownField : public testing::Test {};

struct KindName {
  template <class Kind>
  static std::string GetName(int /*place*/) {
    return std::is_same_v<Kind, PlainText> ? "PlainText" : "FormedText";
  }
};

using KindsOfFields = testing::Types<Twice, PlainText>;
TYPED_TEST_SUITE(KnownField, KindsOfFields, KindName);

/// Another field tells the same, and has the same hash.
template <class Known>
void expectSame(std::string_view field, std::string_view other) {
  const Known known(field);
  EXPECT_TRUE(known.isMadeOf(other));
  EXPECT_EQ(Known::hashOf(other), known.hash());
}

template <class Known>
void expectOther(std::string_view field, std::string_view other) {
  EXPECT_FALSE(Known(field).isMadeOf(other));
}

TYPED_TEST(KnownField, EndsAtItsFirstNul) {
  expectSame<TypeParam>("ab\0\0\0\0\0\0"sv, "ab\0\xFF\xFF\xFF\xFF\xFF"sv);
  expectSame<TypeParam>("ab\0\xFF\xFF\xFF\xFF\xFF"sv, "ab"sv);
  expectSame<TypeParam>("ab"sv, "ab\0\0\0\0\0\0"sv);
  expectSame<TypeParam>(""sv, "\0\0\0\0\0\0\0\0"sv);
}

TYPED_TEST(KnownField, IsWholeWhereItHasNoNul) {
  expectSame<TypeParam>("abcdefgh"sv, "abcdefgh"sv);
  expectOther<TypeParam>("abcdefgh"sv, "abcdefg"sv);
  expectOther<TypeParam>("abcdefg"sv, "abcdefgh"sv);
  expectOther<TypeParam>("abcdefgh"sv, "abcdefgi"sv);
}

TYPED_TEST(KnownField, IsNoOtherThatBeginsAlike) {
  expectOther<TypeParam>("ab"sv, "a"sv);
  expectOther<TypeParam>("a"sv, "ab"sv);
  expectOther<TypeParam>("a\0\0\0\0\0\0\0"sv, "ab\0\0\0\0\0\0"sv);
  expectOther<TypeParam>("a"sv, ""sv);
  expectOther<TypeParam>(""sv, "a"sv);
}

TYPED_TEST(KnownField, MayHaveMoreThanAscii) {
  expectSame<TypeParam>("l\xC3\xBC"sv, "l\xC3\xBC\0\0"sv);
  expectOther<TypeParam>("l\xC3\xBC"sv, "l\xC3\xBD"sv);
  expectOther<TypeParam>("l\xC3\xBC"sv, "lu"sv);
  expectOther<TypeParam>("lu"sv, "l\xC3\xBC"sv);
  expectSame<TypeParam>("\xF0\x9F\x92\xBE"sv, "\xF0\x9F\x92\xBE"sv);
}

TYPED_TEST(KnownField, IsRefusedWhenItIsNotUtf8) { EXPECT_THROW(TypeParam("a\xFF"sv), std::range_error); }

TEST(FormedText, IsWhatTheFormMakesOfTheField) {
  EXPECT_EQ(Twice("ab\0x"sv).text().text(), L"abab");
  EXPECT_EQ(Twice("abcdefgh"sv).text().text(), L"abcdefghabcdefgh");
  EXPECT_TRUE(Twice(""sv).text().empty());
}

TEST(PlainText, IsTheField) {
  EXPECT_EQ(PlainText("ab\0x"sv).text().text(), L"ab");
  EXPECT_EQ(PlainText("l\xC3\xBC"sv).text().text(), L"l\x00FC");
  EXPECT_TRUE(PlainText(""sv).text().empty());
}

TEST(AddressText, IsMadeOfItsNumber) {
  const AddressText address(0x04030201);
  EXPECT_EQ(address.text().text(), L"1-2-3-4");
  EXPECT_TRUE(address.isMadeOf(0x04030201));
  EXPECT_FALSE(address.isMadeOf(0x04030202));
  EXPECT_EQ(AddressText::hashOf(0x04030201), address.hash());
}

}  // namespace
