#include "api/known_structure.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "support/by_name.h"
#include "text.h"

namespace host {

namespace {

const std::string kEpoch = "0123456789abcdef";

/// The status that refuses it, or 0.
int statusOf(const std::string& field) {
  try {
    knownStructureIn(field);
    return 0;
  } catch (const Refusal& refusal) {
    return static_cast<int>(refusal.status);
  }
}

TEST(KnownStructure, IsReadAsItWasTold) {
  const std::string field = structureField({utf8ToWide(kEpoch), 7, 18446744073709551615U, 3});
  EXPECT_EQ(field, "\"0123456789abcdef.18446744073709551615\"");
  const KnownStructure known = knownStructureIn(" " + field + "\t");
  EXPECT_EQ(known.epoch, utf8ToWide(kEpoch));
  EXPECT_EQ(known.structure, 18446744073709551615U);
  EXPECT_EQ(knownStructureIn('"' + kEpoch + ".0\"").structure, 0U);
}

TEST(KnownStructure, HasAnEpochOfSmallHexadecimalDigits) {
  for (int code = 0; code < 256; ++code) {
    const char character = static_cast<char>(code);
    const bool isDigit = kEpoch.find(character) != std::string::npos;
    EXPECT_EQ(statusOf('"' + kEpoch.substr(1) + character + ".7\""), isDigit ? 0 : 400) << code;
    EXPECT_EQ(statusOf('"' + (character + kEpoch.substr(1)) + ".7\""), isDigit ? 0 : 400) << code;
  }
}

struct FieldRow {
  std::string name;
  std::string field;
};

class KnownStructureRefusalTest : public testing::TestWithParam<FieldRow> {};

TEST_P(KnownStructureRefusalTest, IsToldAsAFaultOfTheRequest) { EXPECT_EQ(statusOf(GetParam().field), 400); }

INSTANTIATE_TEST_SUITE_P(
    Fields, KnownStructureRefusalTest,
    testing::Values(FieldRow{"Nothing", ""}, FieldRow{"Any", "*"}, FieldRow{"NoMarks", kEpoch + ".7"},
                    FieldRow{"NoMarkAhead", kEpoch + ".77\""}, FieldRow{"NoMarkBehind", '"' + kEpoch + ".77"},
                    FieldRow{"NoNumber", '"' + kEpoch + ".\""}, FieldRow{"NoDot", '"' + kEpoch + "77\""},
                    FieldRow{"Sign", '"' + kEpoch + ".-7\""}, FieldRow{"MoreBehind", '"' + kEpoch + ".7 \""},
                    FieldRow{"TooLarge", '"' + kEpoch + ".18446744073709551616\""},
                    FieldRow{"LongEpoch", "\"0" + kEpoch + ".7\""},
                    FieldRow{"ShortEpoch", '"' + kEpoch.substr(1) + ".77\""}),
    ByName());

}  // namespace

}  // namespace host
