#include "requests.h"

#include <gmock/gmock.h>

#include "support/body.h"
#include "support/by_name.h"
#include "text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Parse>
std::string outcomeOf(Parse parse) {
  try {
    return parse();
  } catch (const ListenerException& error) {
    return std::string(error.getErrorId()) + ": " + error.what();
  }
}

constexpr char kRefused[] = "INVALID_PARAMETER: Not this";

struct NumberRow {
  std::string name;
  std::wstring text;
  std::string result;
};

class Sizes : public testing::TestWithParam<NumberRow> {};

TEST_P(Sizes, AreDecimalNumbersUpToTheSignedMaximum) {
  EXPECT_EQ(outcomeOf([] { return std::to_string(parseSize(GetParam().text, L"Not this")); }),
            GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Sizes,
    testing::Values(NumberRow{"Zero", L"0", "0"}, NumberRow{"Plain", L"1024", "1024"},
                    NumberRow{"PlusSign", L"+5", "5"}, NumberRow{"LeadingZeros", L"007", "7"},
                    NumberRow{"MinusZero", L"-0", "0"},
                    NumberRow{"SignedMaximum", L"9223372036854775807", "9223372036854775807"},
                    NumberRow{"AboveTheSignedMaximum", L"9223372036854775808", kRefused},
                    NumberRow{"UnsignedMaximum", L"18446744073709551615", kRefused},
                    NumberRow{"Negative", L"-1", kRefused}, NumberRow{"Word", L"abc", kRefused},
                    NumberRow{"Empty", L"", kRefused}, NumberRow{"BlankInFront", L" 1", kRefused},
                    NumberRow{"BlankBehind", L"1 ", kRefused}, NumberRow{"Fraction", L"1.5", kRefused},
                    NumberRow{"Hexadecimal", L"0x10", kRefused}, NumberRow{"Sign", L"+", kRefused}),
    ByName());

class SmallNumbers : public testing::TestWithParam<NumberRow> {};

TEST_P(SmallNumbers, StayInTheirRange) {
  EXPECT_EQ(
      outcomeOf([] { return std::to_string(parseNumber<std::uint32_t>(GetParam().text, L"Not this")); }),
      GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Table, SmallNumbers,
                         testing::Values(NumberRow{"Zero", L"0", "0"},
                                         NumberRow{"Maximum", L"4294967295", "4294967295"},
                                         NumberRow{"AboveTheMaximum", L"4294967296", kRefused},
                                         NumberRow{"Negative", L"-1", kRefused},
                                         NumberRow{"FarBelow", L"-4294967295", kRefused}),
                         ByName());

struct IdentifierRow {
  std::string name;
  std::wstring text;
  bool accepted;
};

class Identifiers : public testing::TestWithParam<IdentifierRow> {};

TEST_P(Identifiers, AreLettersAndDigitsThroughout) {
  EXPECT_EQ(outcomeOf([] { return wideToUtf8(parseIdentifier(GetParam().text, L"Not this")); }),
            GetParam().accepted ? wideToUtf8(GetParam().text) : kRefused);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Identifiers,
    testing::Values(IdentifierRow{"Digits", L"14695981039346656037", true},
                    IdentifierRow{"LettersAndDigits", L"a1B2", true}, IdentifierRow{"Empty", L"", false},
                    IdentifierRow{"Blank", L"1 2", false}, IdentifierRow{"Slash", L"1/2", false},
                    IdentifierRow{"Dash", L"1-2", false}, IdentifierRow{"NewlineBehind", L"12\n", false}),
    ByName());

TEST(TextsOfAField, AreTheTextFormsOfItsElements) {
  ServiceObject elements = list({"41"});
  elements.at(1) = std::uint64_t{42};
  elements.at(2) = ServiceObject::null();
  EXPECT_THAT(textsOf(body({{"disks", elements}}), L"disks"), ElementsAre(L"41", L"42", L""));
}

TEST(TextsOfAField, AreNoneWithoutElementsOrWithoutTheField) {
  EXPECT_THAT(textsOf(body({{"disks", list({})}}), L"disks"), IsEmpty());
  EXPECT_THAT(textsOf(body({}), L"disks"), IsEmpty());
}

}  // namespace
