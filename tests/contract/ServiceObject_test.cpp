#include "ServiceObject.h"

#include <gmock/gmock.h>

#include <boost/ptr_container/exception.hpp>
#include <limits>
#include <locale>
#include <type_traits>
#include <utility>

#include "support/assertion_output.h"
#include "support/by_name.h"

namespace ovra {
namespace data_transfer {
namespace {

using testing::ElementsAre;

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

/// What `which` tells.
enum Alternative { kNull, kBoolean, kSigned, kUnsigned, kDouble, kText, kObject, kArray };

// Nothing enters by accident: neither a signed number nor a double by construction, nor a
// pointer as a boolean.
static_assert(!std::is_constructible_v<ServiceObject, int>);
static_assert(!std::is_constructible_v<ServiceObject, std::int64_t>);
static_assert(!std::is_constructible_v<ServiceObject, double>);
static_assert(!std::is_constructible_v<ServiceObject, const char*>);
static_assert(!std::is_assignable_v<ServiceObject&, const wchar_t*>);
static_assert(!std::is_assignable_v<ServiceObject&, const char*>);
static_assert(std::is_nothrow_move_constructible_v<ServiceObject>);
static_assert(std::is_same_v<ServiceObject::Object, boost::ptr_map<std::wstring, ServiceObject>>);
static_assert(std::is_same_v<ServiceObject::Array, boost::ptr_deque<ServiceObject>>);

ServiceObject ofSigned(std::int64_t number) {
  ServiceObject value;
  value = number;
  return value;
}

ServiceObject ofUnsigned(std::uint64_t number) {
  ServiceObject value;
  value = number;
  return value;
}

/// {"list": ["one", "two"], "name": "tree"}
ServiceObject tree() {
  ServiceObject value;
  value.member(L"name") = std::wstring(L"tree");
  value.member(L"list").at(0) = std::wstring(L"one");
  value.member(L"list").at(1) = std::wstring(L"two");
  return value;
}

std::vector<std::wstring> keysOf(const ServiceObject& value) {
  std::vector<std::wstring> keys;
  for (const auto& child : value) keys.push_back(child.key);
  return keys;
}

std::vector<std::wstring> textsOf(const ServiceObject& value) {
  std::vector<std::wstring> texts;
  for (const auto& child : value) texts.push_back(child.value->toString());
  return texts;
}

// Making.

TEST(Making, ADefaultMadeValueIsNull) {
  const ServiceObject value;
  EXPECT_EQ(value.which(), kNull);
  EXPECT_TRUE(value.isNull());
  EXPECT_EQ(value.toString(), L"");
  EXPECT_EQ(value.toInt64(), 0);
  EXPECT_FALSE(value.toBool());
  EXPECT_TRUE(ServiceObject::null().isNull());
}

TEST(Making, AnUnsignedIntIsExtendedWithZeros) {
  const ServiceObject value(0xFFFFFFFFu);
  EXPECT_EQ(value.which(), kUnsigned);
  EXPECT_EQ(value.toInt64(), 4294967295);
}

TEST(Making, TextIsTakenWhole) {
  const std::wstring withNul(L"a\0b", 3);
  const ServiceObject value(withNul);
  EXPECT_EQ(value.which(), kText);
  EXPECT_EQ(value.toString(), withNul);
}

TEST(Making, APointerToTextIsTakenUpToItsZero) {
  const ServiceObject value(L"a\0b");
  EXPECT_EQ(value.which(), kText);
  EXPECT_EQ(value.toString(), L"a");
}

TEST(Making, ABooleanIsABoolean) {
  EXPECT_EQ(ServiceObject(true).which(), kBoolean);
  EXPECT_TRUE(ServiceObject(true).toBool());
  EXPECT_FALSE(ServiceObject(false).toBool());
}

TEST(Making, ContainersAreEmpty) {
  EXPECT_EQ(ServiceObject::array().which(), kArray);
  const ServiceObject array = ServiceObject::array();
  EXPECT_TRUE(array.begin() == array.end());
  EXPECT_EQ(ServiceObject::object().which(), kObject);
  EXPECT_TRUE(ServiceObject::object().asObject().empty());
}

TEST(Making, HostsMakeDoubles) {
  const ServiceObject value = ServiceObject::real(1.5);
  EXPECT_EQ(value.which(), kDouble);
  EXPECT_EQ(value.asReal(), 1.5);
  EXPECT_EQ(ServiceObject(2u).asReal(), 0.0);
  EXPECT_EQ(ServiceObject(L"2").asReal(), 0.0);
}

TEST(Making, ACopyIsDeep) {
  const ServiceObject original = tree();
  ServiceObject copy = original;
  copy.member(L"list").at(0) = std::wstring(L"changed");
  copy.member(L"name") = std::wstring(L"copy");
  EXPECT_THAT(textsOf(original.member(L"list")), ElementsAre(L"one", L"two"));
  EXPECT_EQ(original.member(L"name").toString(), L"tree");
  EXPECT_NE(&std::as_const(copy).member(L"list"), &original.member(L"list"));
}

// Assigning.

struct Start {
  const char* name;
  Alternative alternative;
  ServiceObject value;
};

std::vector<Start> startOfEveryKind() {
  return {{"Null", kNull, ServiceObject::null()},
          {"Boolean", kBoolean, ServiceObject(true)},
          {"Signed", kSigned, ofSigned(-5)},
          {"Unsigned", kUnsigned, ServiceObject(5u)},
          {"Double", kDouble, ServiceObject::real(2.5)},
          {"Text", kText, ServiceObject(L"text")},
          {"Object", kObject, tree()},
          {"Array", kArray, tree().member(L"list")}};
}

class EveryKind : public testing::TestWithParam<Start> {
 protected:
  ServiceObject m_value = GetParam().value;
};

TEST_P(EveryKind, IsReplacedWholeByAnyAssignment) {
  m_value = std::uint64_t{18446744073709551615u};
  EXPECT_EQ(m_value.which(), kUnsigned);
  EXPECT_EQ(m_value.toString(), L"18446744073709551615");
  m_value = GetParam().value;
  m_value = kLowest;
  EXPECT_EQ(m_value.which(), kSigned);
  EXPECT_EQ(m_value.toInt64(), kLowest);
  m_value = GetParam().value;
  m_value = true;
  EXPECT_EQ(m_value.which(), kBoolean);
  EXPECT_TRUE(m_value.toBool());
  m_value = GetParam().value;
  const std::wstring text = L"new";
  m_value = text;
  EXPECT_EQ(m_value.which(), kText);
  EXPECT_EQ(m_value.toString(), L"new");
  m_value = GetParam().value;
  m_value = tree();
  EXPECT_THAT(keysOf(m_value), ElementsAre(L"list", L"name"));
}

TEST_P(EveryKind, SwapsWithEveryKind) {
  for (const Start& start : startOfEveryKind()) {
    SCOPED_TRACE(start.name);
    ServiceObject left = GetParam().value;
    ServiceObject right = start.value;
    left.swap(right);
    EXPECT_EQ(left.which(), start.value.which());
    EXPECT_EQ(left.toString(), start.value.toString());
    EXPECT_EQ(right.which(), GetParam().value.which());
    EXPECT_EQ(right.toString(), GetParam().value.toString());
  }
}

TEST_P(EveryKind, MovesAndLeavesNull) {
  const ServiceObject moved = std::move(m_value);
  EXPECT_EQ(moved.which(), GetParam().value.which());
  EXPECT_TRUE(m_value.isNull());  // NOLINT(bugprone-use-after-move): a moved-from value is null
}

TEST_P(EveryKind, MayBeAssignedToItself) {
  const ServiceObject& same = m_value;
  m_value = same;
  EXPECT_EQ(m_value.which(), GetParam().value.which());
  EXPECT_EQ(m_value.toString(), GetParam().value.toString());
}

TEST_P(EveryKind, TellsItsIndexAndWhatItIs) {
  EXPECT_EQ(m_value.which(), GetParam().alternative);
  EXPECT_EQ(m_value.isNull(), GetParam().alternative == kNull);
  EXPECT_EQ(m_value.isArray(), GetParam().alternative == kArray);
  EXPECT_EQ(m_value.isObject(), GetParam().alternative == kObject);
}

INSTANTIATE_TEST_SUITE_P(ServiceObject, EveryKind, testing::ValuesIn(startOfEveryKind()), ByName());

TEST(Assigning, ATextMayMoveIn) {
  std::wstring text(100, L'x');
  ServiceObject value;
  value = std::move(text);
  EXPECT_TRUE(text.empty());  // NOLINT(bugprone-use-after-move): moved, not copied
  EXPECT_EQ(value.toString(), std::wstring(100, L'x'));
}

TEST(Assigning, AChildMayTakeItsParentsPlace) {
  ServiceObject value = tree();
  value = std::move(value.member(L"list"));
  EXPECT_THAT(textsOf(value), ElementsAre(L"one", L"two"));
}

TEST(Assigning, AFinishedSubtreeMovesWithoutACopy) {
  ServiceObject finished = tree();
  const ServiceObject* const name = &finished.member(L"name");
  const ServiceObject* const two = &finished.member(L"list").at(1);

  ServiceObject moved = std::move(finished);
  ServiceObject swapped(L"other");
  swapped.swap(moved);
  ServiceObject parent;
  parent.member(L"child") = std::move(swapped);
  ServiceObject array;
  array.at(3).swap(parent.member(L"child"));

  EXPECT_EQ(&array.at(3).member(L"name"), name);
  EXPECT_EQ(&array.at(3).member(L"list").at(1), two);
}

TEST(Assigning, TwoTreesOfOneKindSwapWithoutACopy) {
  ServiceObject left = tree();
  ServiceObject right = tree();
  const ServiceObject* const leftName = &left.member(L"name");
  const ServiceObject* const rightName = &right.member(L"name");
  left.swap(right);
  EXPECT_EQ(&left.member(L"name"), rightName);
  EXPECT_EQ(&right.member(L"name"), leftName);
}

// Reaching children.

TEST(Reaching, AnElementBehindTheEndGrowsTheArrayWithNulls) {
  ServiceObject value;
  EXPECT_TRUE(value.at(2).isNull());
  EXPECT_TRUE(value.isArray());
  EXPECT_THAT(textsOf(value), ElementsAre(L"", L"", L""));
  for (const auto& child : value) EXPECT_TRUE(child.value->isNull());
}

TEST(Reaching, AnExistingElementIsReachedWithoutGrowing) {
  ServiceObject value;
  value.at(1) = std::wstring(L"one");
  EXPECT_EQ(value.at(1).toString(), L"one");
  EXPECT_EQ(textsOf(value).size(), 2u);
}

TEST(Reaching, ANewMemberOfNullMakesAnObjectWithOneNullChild) {
  ServiceObject value;
  EXPECT_TRUE(value.member(L"key").isNull());
  EXPECT_TRUE(value.isObject());
  EXPECT_THAT(keysOf(value), ElementsAre(L"key"));
}

TEST(Reaching, AnExistingMemberIsTheSameChild) {
  ServiceObject value = tree();
  EXPECT_EQ(&value.member(L"name"), &value.member(L"name"));
  EXPECT_EQ(&value.member(L"name"), &std::as_const(value).member(L"name"));
  EXPECT_EQ(keysOf(value).size(), 2u);
}

TEST(Reaching, ReferencesOutliveTheGrowthOfTheirParent) {
  ServiceObject object;
  ServiceObject& member = object.member(L"m");
  ServiceObject array;
  ServiceObject& element = array.at(0);
  for (unsigned i = 0; i < 1000; ++i) {
    object.member(std::to_wstring(i));
    array.at(i);
  }
  EXPECT_EQ(&object.member(L"m"), &member);
  EXPECT_EQ(&array.at(0), &element);
}

TEST(Reaching, ReadingAMemberOfNullGivesTheConstantNull) {
  const ServiceObject value;
  EXPECT_EQ(&value.member(L"key"), &kNullObject);
  EXPECT_TRUE(kNullObject.isNull());
  EXPECT_TRUE(value.isNull());
}

TEST(Reaching, ReadingAMissingMemberFailsWithTheContainersOwnError) {
  const ServiceObject value = tree();
  try {
    value.member(L"missing");
    FAIL() << "found";
  } catch (const boost::bad_ptr_container_operation& error) {
    EXPECT_EQ(typeid(error), typeid(boost::bad_ptr_container_operation));
    EXPECT_STREQ(error.what(), "'ptr_map/multimap::at()' could not find key");
  }
}

TEST(Reaching, HasKeyTellsWhatAnObjectHolds) {
  EXPECT_TRUE(tree().hasKey(L"name"));
  EXPECT_FALSE(tree().hasKey(L"Name"));
  EXPECT_FALSE(ServiceObject::object().hasKey(L""));
}

TEST(Reaching, HasKeyFailsOnNullWhereMemberSucceeds) {
  const ServiceObject value;
  EXPECT_NO_THROW(value.member(L"key"));
  EXPECT_THROW(value.hasKey(L"key"), ServiceObjectException);
}

TEST(Reaching, AsObjectIsTheMapItself) {
  const ServiceObject value = tree();
  const ServiceObject::Object& object = value.asObject();
  EXPECT_EQ(object.size(), 2u);
  EXPECT_EQ(&object.at(L"name"), &value.member(L"name"));
}

struct Refusal {
  const char* name;
  std::function<void(ServiceObject&)> access;
  std::string message;
  std::vector<int> accepted;  // alternatives that the access takes; it refuses all others
};

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, OnEveryOtherKind) {
  for (const Start& start : startOfEveryKind()) {
    SCOPED_TRACE(start.name);
    ServiceObject value = start.value;
    if (testing::Value(value.which(), testing::AnyOfArray(GetParam().accepted))) {
      EXPECT_NO_THROW(GetParam().access(value));
      continue;
    }
    try {
      GetParam().access(value);
      ADD_FAILURE() << "accepted";
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(typeid(error), typeid(ServiceObjectException));
      EXPECT_EQ(error.what(), GetParam().message);
    }
    EXPECT_EQ(value.which(), start.value.which());
  }
}

INSTANTIATE_TEST_SUITE_P(ServiceObject, Refused,
                         testing::Values(Refusal{"At",
                                                 [](ServiceObject& value) { value.at(0); },
                                                 "ServiceObject is not a valid array",
                                                 {kNull, kArray}},
                                         Refusal{"WritingMember",
                                                 [](ServiceObject& value) { value.member(L"name"); },
                                                 "ServiceObject is not a valid object",
                                                 {kNull, kObject}},
                                         Refusal{"ReadingMember",
                                                 [](ServiceObject& value) {
                                                   std::as_const(value).member(L"name");
                                                 },
                                                 "ServiceObject is not a valid object",
                                                 {kNull, kObject}},
                                         Refusal{"HasKey",
                                                 [](ServiceObject& value) { value.hasKey(L"name"); },
                                                 "ServiceObject is not a valid object",
                                                 {kObject}},
                                         Refusal{"AsObject",
                                                 [](ServiceObject& value) { value.asObject(); },
                                                 "ServiceObject cannot be parsed to Object",
                                                 {kObject}},
                                         Refusal{"Begin",
                                                 [](ServiceObject& value) { value.begin(); },
                                                 "ServiceObject is not an array or an object",
                                                 {kObject, kArray}}),
                         ByName());

#ifdef NDEBUG
TEST(EndOfALeaf, IsRefused) {
  for (const Start& start : startOfEveryKind()) {
    if (start.value.isArray() || start.value.isObject()) continue;
    try {
      start.value.end();
      ADD_FAILURE() << start.name;
    } catch (const ServiceObjectException& error) {
      EXPECT_STREQ(error.what(), "ServiceObject is not an array or an object");
    }
  }
}
#else
TEST(EndOfALeafDeathTest, TripsTheAssertionFirst) {
  const ServiceObject number(5u);
  EXPECT_THROW(number.begin(), ServiceObjectException);
  const auto failed = failedAssertion("isArray() || isObject()", "src\\ServiceObject", 628);
  EXPECT_DEATH(number.end(), failed);
  EXPECT_DEATH(ServiceObject::null().end(), failed);
}
#endif

// Walking.

TEST(Walking, AnObjectGivesItsKeysInAscendingOrder) {
  ServiceObject value;
  for (const wchar_t* key : {L"b", L"\u00E4", L"B", L"", L"ab", L"a"}) value.member(key) = std::wstring(key);
  EXPECT_THAT(keysOf(value), ElementsAre(L"", L"B", L"a", L"ab", L"b", L"\u00E4"));
  EXPECT_EQ(textsOf(value), keysOf(value));
}

TEST(Walking, KeysAreOrderedByTheirCodeUnitsSoThatSurrogatesStandBelowTheLastOnes) {
  const std::wstring pair{wchar_t(0xD83D), wchar_t(0xDCBE)};
  const std::wstring alone{wchar_t(0xD83D)};
  ServiceObject value;
  for (const std::wstring& key :
       {std::wstring(L"\uFF5E"), std::wstring(L"\uE000"), pair, alone, std::wstring(L"z")}) {
    value.member(key) = key;
  }
  EXPECT_THAT(keysOf(value), ElementsAre(L"z", alone, pair, L"\uE000", L"\uFF5E"));
}

TEST(Walking, AnArrayGivesItsElementsInOrderUnderEmptyKeys) {
  ServiceObject value;
  value.at(1) = std::wstring(L"second");
  value.at(0) = std::wstring(L"first");
  EXPECT_THAT(keysOf(value), ElementsAre(L"", L""));
  EXPECT_THAT(textsOf(value), ElementsAre(L"first", L"second"));
}

TEST(Walking, ADereferenceGivesTheChildItself) {
  ServiceObject value = tree();
  const ServiceObject::iterator::value_type child = *value.begin();
  EXPECT_EQ(child.key, L"list");
  EXPECT_EQ(child.value, &value.member(L"list"));
}

TEST(Walking, IteratorsAreEqualAtTheSamePositionOfTheSameKind) {
  const ServiceObject object = tree();
  const ServiceObject& array = object.member(L"list");
  EXPECT_TRUE(object.begin() == object.begin());
  EXPECT_TRUE(array.begin() == array.begin());
  EXPECT_TRUE(object.begin() != object.end());
  EXPECT_FALSE(object.begin() == array.begin());
  ServiceObject::iterator position = array.begin();
  EXPECT_TRUE(++position != array.begin());
  EXPECT_TRUE(++position == array.end());
}

// Converting.

struct Conversion {
  const char* name;
  ServiceObject value;
  std::wstring text;
  std::int64_t number;
  bool truth;
};

class Conversions : public testing::TestWithParam<Conversion> {};

TEST_P(Conversions, NeverFailAndLeaveTheValue) {
  const ServiceObject& value = GetParam().value;
  const int before = value.which();
  EXPECT_EQ(value.toString(), GetParam().text);
  EXPECT_EQ(value.toInt64(), GetParam().number);
  EXPECT_EQ(value.toBool(), GetParam().truth);
  EXPECT_EQ(value.which(), before);
}

INSTANTIATE_TEST_SUITE_P(Plain, Conversions,
                         testing::Values(Conversion{"Null", ServiceObject::null(), L"", 0, false},
                                         Conversion{"True", ServiceObject(true), L"1", 1, true},
                                         Conversion{"False", ServiceObject(false), L"0", 0, false},
                                         Conversion{"Object", tree(), L"", 0, false},
                                         Conversion{"Array", tree().member(L"list"), L"", 0, false},
                                         Conversion{"EmptyObject", ServiceObject::object(), L"", 0, false},
                                         Conversion{"EmptyArray", ServiceObject::array(), L"", 0, false}),
                         ByName());

INSTANTIATE_TEST_SUITE_P(
    NumbersAreTrueWhenZero, Conversions,
    testing::Values(Conversion{"SignedZero", ofSigned(0), L"0", 0, true},
                    Conversion{"SignedOne", ofSigned(1), L"1", 1, false},
                    Conversion{"SignedMinusOne", ofSigned(-1), L"-1", -1, false},
                    Conversion{"SignedLowest", ofSigned(kLowest), L"-9223372036854775808", kLowest, false},
                    Conversion{"SignedHighest", ofSigned(kHighest), L"9223372036854775807", kHighest, false},
                    Conversion{"UnsignedZero", ServiceObject(0u), L"0", 0, true},
                    Conversion{"UnsignedFive", ServiceObject(5u), L"5", 5, false},
                    Conversion{"UnsignedFirstTurnedNegative", ofUnsigned(9223372036854775808u),
                               L"9223372036854775808", kLowest, false},
                    Conversion{"UnsignedHighest", ofUnsigned(18446744073709551615u), L"18446744073709551615",
                               -1, false}),
    ByName());

INSTANTIATE_TEST_SUITE_P(
    Doubles, Conversions,
    testing::Values(Conversion{"OneAndAHalf", ServiceObject::real(1.5), L"1.500000", 1, false},
                    Conversion{"Truncated", ServiceObject::real(3601.9), L"3601.900000", 3601, false},
                    Conversion{"TruncatedTowardZero", ServiceObject::real(-1.9), L"-1.900000", -1, false},
                    Conversion{"Zero", ServiceObject::real(0.0), L"0.000000", 0, true},
                    Conversion{"MinusZero", ServiceObject::real(-0.0), L"-0.000000", 0, true},
                    Conversion{"BelowSixDigits", ServiceObject::real(1e-7), L"0.000000", 0, false},
                    Conversion{"Large", ServiceObject::real(1e18), L"1000000000000000000.000000",
                               1000000000000000000, false},
                    Conversion{"Lowest", ServiceObject::real(-9223372036854775808.0),
                               L"-9223372036854775808.000000", kLowest, false},
                    Conversion{"JustTooLarge", ServiceObject::real(9223372036854775808.0),
                               L"9223372036854775808.000000", kLowest, false},
                    Conversion{"TooSmall", ServiceObject::real(-1e300 / 1e280),
                               L"-100000000000000000000.000000", kLowest, false},
                    Conversion{"Infinite", ServiceObject::real(std::numeric_limits<double>::infinity()),
                               L"inf", kLowest, false},
                    Conversion{"NotANumber", ServiceObject::real(std::numeric_limits<double>::quiet_NaN()),
                               L"nan", kLowest, false}),
    ByName());

Conversion ofText(const char* name, const wchar_t* text, std::int64_t number, bool truth) {
  return {name, ServiceObject(text), text, number, truth};
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Conversions,
    testing::Values(ofText("Empty", L"", 0, false), ofText("One", L"1", 1, true),
                    ofText("Zero", L"0", 0, false), ofText("ZeroOne", L"01", 1, true),
                    ofText("PlusOne", L"+1", 1, true), ofText("PlusZeroOne", L"+01", 1, true),
                    ofText("PlusZero", L"+0", 0, false), ofText("MinusZero", L"-0", 0, false),
                    ofText("MinusOne", L"-1", -1, false), ofText("TwoZeros", L"00", 0, false),
                    ofText("Two", L"2", 2, false), ofText("Ten", L"10", 10, false),
                    ofText("Eleven", L"11", 11, false), ofText("Number", L"3601", 3601, false),
                    ofText("Trailing", L"12x", 0, false), ofText("LeadingBlank", L" 1", 0, false),
                    ofText("TrailingBlank", L"1 ", 0, false), ofText("Word", L"true", 0, false),
                    ofText("SignAlone", L"+", 0, false), ofText("TwoSigns", L"+-1", 0, false),
                    ofText("Fraction", L"1.0", 0, false), ofText("Hexadecimal", L"0x1", 0, false),
                    ofText("Lowest", L"-9223372036854775808", kLowest, false),
                    ofText("Highest", L"9223372036854775807", kHighest, false),
                    ofText("TooLarge", L"9223372036854775808", 0, false),
                    ofText("TooSmall", L"-9223372036854775809", 0, false)),
    ByName());

TEST(Converting, ADoubleFollowsTheGlobalLocale) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
  const std::wstring text = ServiceObject::real(1.5).toString();
  std::locale::global(before);
  EXPECT_EQ(text, L"1,500000");
}

}  // namespace
}  // namespace data_transfer
}  // namespace ovra
