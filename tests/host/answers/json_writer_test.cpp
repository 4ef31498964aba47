#include "answers/json_writer.h"

#include <gtest/gtest.h>

#include <boost/json/serialize.hpp>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "answers/json_reader.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

template <class Value>
std::string written(Value value) {
  ServiceObject object;
  object = value;
  return writeJson(object);
}

TEST(JsonWriter, WritesEveryAlternative) {
  EXPECT_EQ(writeJson(ServiceObject::null()), "null");
  EXPECT_EQ(written(true), "true");
  EXPECT_EQ(written(false), "false");
  EXPECT_EQ(written(std::int64_t{-7}), "-7");
  EXPECT_EQ(written(std::uint64_t{7}), "7");
  EXPECT_EQ(written(std::wstring(L"seven")), "\"seven\"");
  EXPECT_EQ(writeJson(ServiceObject::object()), "{}");
  EXPECT_EQ(writeJson(ServiceObject::array()), "[]");
}

TEST(JsonWriter, WritesNumbersWhole) {
  EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(written(std::uint64_t{0}), "0");
}

TEST(JsonWriter, WritesDoublesThatReadBackTheSame) {
  for (const double value : {0.1, 1.5, -2.25e-300, std::numeric_limits<double>::max()}) {
    EXPECT_EQ(readJson(writeJson(ServiceObject::real(value)), {1, 100}).asReal(), value);
  }
}

TEST(JsonWriter, WritesNullForWhatJsonHasNot) {
  EXPECT_EQ(writeJson(ServiceObject::real(std::numeric_limits<double>::quiet_NaN())), "null");
  EXPECT_EQ(writeJson(ServiceObject::real(std::numeric_limits<double>::infinity())), "null");
  EXPECT_EQ(writeJson(ServiceObject::real(-std::numeric_limits<double>::infinity())), "null");
}

TEST(JsonWriter, WritesTextAsUtf8) {
  EXPECT_EQ(written(std::wstring(L"\u00FC\"\\\n")), "\"\xC3\xBC\\\"\\\\\\n\"");
  EXPECT_EQ(written(std::wstring{0xD83D, 0xDE00}), "\"\xF0\x9F\x98\x80\"");
  EXPECT_EQ(written(std::wstring(L"a\0b", 3)), "\"a\\u0000b\"");
}

TEST(JsonWriter, EscapesAsTheLibraryThatReadsItDoes) {
  for (int code = 0; code <= 0x7F; ++code) {
    const std::string text{'a', static_cast<char>(code), 'b'};
    EXPECT_EQ(written(std::wstring(text.begin(), text.end())), boost::json::serialize(text)) << code;
  }
}

TEST(JsonWriter, RaisesOnTextThatIsNone) {
  EXPECT_THROW(written(std::wstring(1, static_cast<wchar_t>(0xD800))), std::range_error);
}

TEST(JsonWriter, WritesMembersByAscendingKeyAndElementsInOrder) {
  ServiceObject object;
  object.member(L"b").at(1) = true;
  object.member(L"a").member(L"") = std::uint64_t{1};
  EXPECT_EQ(writeJson(object), R"({"a":{"":1},"b":[null,true]})");
}

}  // namespace

}  // namespace host
