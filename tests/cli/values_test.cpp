#include "arguments/values.h"

#include <gtest/gtest.h>

#include <boost/json/serialize.hpp>

#include "exit_status.h"
#include "support/by_name.h"

namespace {

using mirnctl::Field;
using mirnctl::ValueKind;

Field fieldOf(ValueKind kind, const std::string& unit = {}, std::vector<std::string> words = {}) {
  Field field;
  field.name = "it";
  field.kind = kind;
  field.unit = unit;
  field.words = std::move(words);
  return field;
}

const Field kText = fieldOf(ValueKind::kText);
const Field kWord = fieldOf(ValueKind::kText, {}, {"RAID_1", "RAID_5", "RWH_OFF"});
const Field kMebibytes = fieldOf(ValueKind::kText, "MiB");
const Field kBytes = fieldOf(ValueKind::kText, "bytes");
const Field kNumber = fieldOf(ValueKind::kNumber);
const Field kBoolean = fieldOf(ValueKind::kBoolean);
const Field kList = fieldOf(ValueKind::kList);
const Field kJson = fieldOf(ValueKind::kJson);

struct Case {
  std::string name;
  Field field;
  std::string text;
  std::string json;  ///< Empty: refused.
};

class Value : public testing::TestWithParam<Case> {};

TEST_P(Value, IsAsTheServiceTakesIt) {
  const Case& row = GetParam();
  if (!row.json.empty()) {
    EXPECT_EQ(row.json, boost::json::serialize(mirnctl::valueOf(row.field, row.text)));
    return;
  }
  try {
    const boost::json::value taken = mirnctl::valueOf(row.field, row.text);
    FAIL() << "taken as " << taken;
  } catch (const mirnctl::Failure& failure) {
    EXPECT_EQ(mirnctl::ExitStatus::kUsage, failure.status());
    EXPECT_NE(std::string::npos, std::string(failure.what()).find("'" + row.text + "'"));
    EXPECT_FALSE(failure.advice().empty());
  }
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, Value,
    testing::Values(
        Case{"Text", kText, "a b", R"("a b")"}, Case{"TextThatLooksLikeANumber", kText, "12", R"("12")"},
        Case{"Word", kWord, "RAID_5", R"("RAID_5")"}, Case{"WordInLowerCase", kWord, "raid_5", R"("RAID_5")"},
        Case{"WordWithoutItsLine", kWord, "raid5", R"("RAID_5")"},
        Case{"WordWithAnotherLine", kWord, "rwh-off", R"("RWH_OFF")"}, Case{"NoWord", kWord, "raid", ""},
        Case{"SizeInItsUnit", kMebibytes, "100", R"("100")"}, Case{"NoSize", kMebibytes, "0", R"("0")"},
        Case{"Gibibytes", kMebibytes, "100G", R"("102400")"},
        Case{"WithABlank", kMebibytes, "1 TiB", R"("1048576")"},
        Case{"Fraction", kMebibytes, "1.5g", R"("1536")"}, Case{"RoundedDown", kMebibytes, "1700K", R"("1")"},
        Case{"LessThanOne", kMebibytes, "1K", ""}, Case{"FractionOfTheUnit", kMebibytes, "1.5", ""},
        Case{"Negative", kMebibytes, "-1G", ""}, Case{"OtherSuffix", kMebibytes, "1X", ""},
        Case{"Infinite", kMebibytes, "inf", ""}, Case{"TooLarge", kMebibytes, "99999999999P", ""},
        Case{"NoNumber", kMebibytes, "G", ""}, Case{"Bytes", kBytes, "4KiB", R"("4096")"},
        Case{"Number", kNumber, "12", "12"}, Case{"NegativeNumber", kNumber, "-1", "-1"},
        Case{"NumberOfWords", kNumber, "twelve", ""}, Case{"Yes", kBoolean, "yes", "true"},
        Case{"Off", kBoolean, "off", "false"}, Case{"Maybe", kBoolean, "maybe", ""},
        Case{"List", kList, "a,b", R"(["a","b"])"}, Case{"EmptyList", kList, "", "[]"},
        Case{"Json", kJson, R"({"a":1})", R"({"a":1})"}, Case{"NoJson", kJson, "plain", R"("plain")"}),
    ByName());

TEST(NullValue, IsTakenWhereItMayBe) {
  Field field = kText;
  EXPECT_EQ(R"("null")", boost::json::serialize(mirnctl::valueOf(field, "null")));
  field.takesNull = true;
  EXPECT_EQ("null", boost::json::serialize(mirnctl::valueOf(field, "null")));
}

TEST(Option, IsWrittenInLowerCaseWithLines) {
  EXPECT_EQ("--raid-level", mirnctl::optionOf("raidLevel"));
  EXPECT_EQ("--locate-timeout", mirnctl::optionOf("locate_timeout"));
  EXPECT_EQ("--size", mirnctl::optionOf("size"));
}

}  // namespace
