#include "answers/json_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "answers/answer.h"
#include "host/answers/refusal_of.h"
#include "support/by_name.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr std::size_t kDepth = 4;
constexpr JsonBounds kBounds{kDepth, 20000};

/// The value with the kind of each number visible: u unsigned, s signed, d double.
std::string describe(const ServiceObject& value) {
  const auto children = [&value](bool named) {
    std::string text;
    for (const auto& child : value) {
      if (!text.empty()) text += ' ';
      text += named ? wideToUtf8(child.key) + ':' + describe(*child.value) : describe(*child.value);
    }
    return text;
  };
  switch (value.which()) {
    case 0:
      return "null";
    case 1:
      return value.toBool() ? "true" : "false";
    case 2:
      return "s" + std::to_string(value.toInt64());
    case 3:
      return "u" + std::to_string(static_cast<std::uint64_t>(value.toInt64()));
    case 4:
      return "d" + std::to_string(value.asReal());
    case 5:
      return "'" + wideToUtf8(value.toString()) + "'";
    case 6:
      return "{" + children(true) + "}";
    default:
      return "[" + children(false) + "]";
  }
}

struct ValueRow {
  std::string name;
  std::string text;
  std::string value;
};

class JsonReaderTest : public testing::TestWithParam<ValueRow> {};

TEST_P(JsonReaderTest, ReadsTheValue) {
  EXPECT_EQ(describe(readJson(GetParam().text, kBounds)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Values, JsonReaderTest,
    testing::Values(
        ValueRow{"NoBody", "", "null"}, ValueRow{"Null", "null", "null"}, ValueRow{"True", "true", "true"},
        ValueRow{"False", "false", "false"}, ValueRow{"Zero", "0", "u0"},
        ValueRow{"NegativeZero", "-0", "s0"}, ValueRow{"Positive", "7", "u7"},
        ValueRow{"Negative", "-7", "s-7"},
        ValueRow{"LargestSigned", "9223372036854775807", "u9223372036854775807"},
        ValueRow{"BeyondSigned", "9223372036854775808", "u9223372036854775808"},
        ValueRow{"LargestUnsigned", "18446744073709551615", "u18446744073709551615"},
        ValueRow{"BeyondUnsigned", "18446744073709551616", "d18446744073709551616.000000"},
        ValueRow{"SmallestSigned", "-9223372036854775808", "s-9223372036854775808"},
        ValueRow{"BelowSigned", "-9223372036854775809", "d-9223372036854775808.000000"},
        ValueRow{"Fraction", "1.5", "d1.500000"}, ValueRow{"WholeFraction", "1.0", "d1.000000"},
        ValueRow{"Exponent", "1e2", "d100.000000"}, ValueRow{"NegativeExponent", "-25E-1", "d-2.500000"},
        ValueRow{"Text", R"("a\"b")", "'a\"b'"}, ValueRow{"EmptyText", R"("")", "''"},
        ValueRow{"Utf8", "\"\xC3\xBC\"", "'\xC3\xBC'"}, ValueRow{"Escaped", R"("\u00fc")", "'\xC3\xBC'"},
        ValueRow{"SurrogatePair", R"("\ud83d\ude00")", "'\xF0\x9F\x98\x80'"},
        ValueRow{"EmptyObject", "{}", "{}"}, ValueRow{"EmptyArray", "[]", "[]"},
        ValueRow{"Object", R"({"b":1,"a":[]})", "{a:[] b:u1}"}, ValueRow{"EmptyKey", R"({"":1})", "{:u1}"},
        ValueRow{"Array", "[1,-2,[3,{}]]", "[u1 s-2 [u3 {}]]"},
        ValueRow{"SameKeyInOther", R"([{"a":1},{"a":2}])", "[{a:u1} {a:u2}]"},
        ValueRow{"Space", " [ 1 ,\n\t2 ] ", "[u1 u2]"},
        ValueRow{"AsDeepAsAllowed", R"([[{"a":[1]}]])", "[[{a:[u1]}]]"}),
    ByName());

TEST(JsonReader, KeepsAnEscapedNul) {
  EXPECT_EQ(readJson(R"("a\u0000b")", kBounds).toString(), std::wstring(L"a\0b", 3));
}

TEST(JsonReader, GivesTheNearestDouble) {
  EXPECT_EQ(readJson("0.1", kBounds).asReal(), 0.1);
  EXPECT_EQ(readJson("1.7976931348623157e308", kBounds).asReal(), std::numeric_limits<double>::max());
  EXPECT_EQ(readJson("123456789.123456789", kBounds).asReal(), 123456789.123456789);
}

TEST(JsonReader, ReadsALongArray) {
  constexpr std::size_t kCount = 100000;
  std::string text = "[0";
  for (std::size_t i = 1; i < kCount; ++i) text += ',' + std::to_string(i);
  ServiceObject array = readJson(text + ']', {kDepth, kCount + 1});
  EXPECT_EQ(array.at(kCount - 1).toInt64(), static_cast<std::int64_t>(kCount - 1));
}

struct RefusalRow {
  std::string name;
  std::string text;
  std::string message;
};

class JsonReaderRefusalTest : public testing::TestWithParam<RefusalRow> {};

TEST_P(JsonReaderRefusalTest, IsABadRequest) {
  const auto refusal = refusalOf([] { readJson(GetParam().text, kBounds); });
  ASSERT_TRUE(refusal) << "was taken";
  EXPECT_EQ(refusal->status, 400);
  EXPECT_EQ(std::string(refusal->what()), "The body " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, JsonReaderRefusalTest,
    testing::Values(
        RefusalRow{"SpaceOnly", " ", "is not valid JSON: incomplete JSON at offset 1"},
        RefusalRow{"Word", "yes", "is not valid JSON: syntax error at offset 0"},
        RefusalRow{"CutWord", "nul", "is not valid JSON: incomplete JSON at offset 3"},
        RefusalRow{"CutArray", "[1", "is not valid JSON: incomplete JSON at offset 2"},
        RefusalRow{"Trailing", "1 2", "is not valid JSON: extra data at offset 2"},
        RefusalRow{"TrailingComma", "[1,]", "is not valid JSON: syntax error at offset 3"},
        RefusalRow{"Comment", "[1/**/]", "is not valid JSON: syntax error at offset 2"},
        RefusalRow{"LeadingZero", "01", "is not valid JSON: extra data at offset 1"},
        RefusalRow{"Plus", "+1", "is not valid JSON: syntax error at offset 0"},
        RefusalRow{"NotANumber", "NaN", "is not valid JSON: syntax error at offset 0"},
        RefusalRow{"HalfAPair", R"("\ud800")", "is not valid JSON: syntax error at offset 7"},
        RefusalRow{"SecondHalfAlone", R"("\udc00")",
                   "is not valid JSON: illegal trailing surrogate at offset 7"},
        RefusalRow{"TwoFirstHalves", R"("\ud800\ud800")",
                   "is not valid JSON: illegal trailing surrogate at offset 9"},
        RefusalRow{"HalfAPairAheadOfText", R"("\ud800a")", "is not valid JSON: syntax error at offset 7"},
        RefusalRow{"HalfAPairInAKey", R"({"\ud800":1})", "is not valid JSON: syntax error at offset 8"},
        RefusalRow{"EncodedHalf", "\"\xED\xA0\x80\"", "is not valid JSON: syntax error at offset 1"},
        RefusalRow{"LastEncodedHalf", "\"\xED\xBF\xBF\"", "is not valid JSON: syntax error at offset 1"},
        RefusalRow{"PairOfEncodedHalves", "\"\xED\xA0\xBD\xED\xB2\xBE\"",
                   "is not valid JSON: syntax error at offset 1"},
        RefusalRow{"EncodedHalfInAKey", "{\"\xED\xA0\x80\":1}",
                   "is not valid JSON: syntax error at offset 2"},
        RefusalRow{"NotUtf8", "\"\xFF\"", "is not valid JSON: syntax error at offset 1"},
        RefusalRow{"TooDeep", "[[[[[]]]]]", "is not valid JSON: too deep at offset 4"},
        RefusalRow{"TooDeepInObjects", R"([[[[{}]]]])", "is not valid JSON: too deep at offset 4"},
        RefusalRow{"TooLarge", "1e400", "holds a number that is out of range"},
        RefusalRow{"TooSmall", "1e-400", "holds a number that is out of range"},
        RefusalRow{"RepeatedKey", R"({"a":1,"a":1})", "holds an object that repeats a key"},
        RefusalRow{"NulInAKey", R"({"a\u0000b":1})", "holds a key with a NUL character"},
        RefusalRow{"RepeatedKeyEscaped", R"({"a":1,"\u0061":1})", "holds an object that repeats a key"}),
    ByName());

TEST(JsonReader, TakesAsManyValuesAsItIsTold) {
  EXPECT_NO_THROW(readJson("[1,{\"a\":2}]", {kDepth, 4}));
  EXPECT_THROW(readJson("[1,{\"a\":2}]", {kDepth, 3}), Refusal);
}

TEST(JsonReader, CountsEmptyContainersToo) {
  std::string text = "[0";
  for (int i = 0; i < 19998; ++i) text += ",[]";
  EXPECT_NO_THROW(readJson(text + "]", kBounds));
  EXPECT_THROW(readJson(text + ",[]]", kBounds), Refusal);
}

}  // namespace

}  // namespace host
