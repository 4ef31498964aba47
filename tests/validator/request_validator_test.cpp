#include "request_validator.h"

#include <gmock/gmock.h>

#include <limits>
#include <type_traits>

#include "rule_messages.h"
#include "support/by_name.h"

namespace ovra {
namespace request_validator {
namespace {

using data_transfer::ServiceObject;
using testing::ElementsAre;
using testing::IsEmpty;
using Parameters = std::map<std::wstring, std::wstring>;

constexpr auto kOptional = FieldPresence::kOptional;
constexpr auto kRequired = FieldPresence::kRequired;

/// Opens what a derived class may reach.
class OpenValidator : public RequestValidator {
 public:
  void setErrorLevel(std::int32_t level) { m_errorLevel = level; }
  const std::vector<std::wstring>& requiredNames() const { return m_requiredNames; }
};

ServiceObject signedNumber(std::int64_t number) {
  ServiceObject value;
  value = number;
  return value;
}

class RequestValidatorTest : public testing::Test {
 protected:
  void declare(const std::wstring& name, FieldType type, FieldPresence presence) {
    m_validator.addRule({name, type, presence});
  }
  void declareText(const std::wstring& name, FieldPresence presence) {
    declare(name, FieldType::kString, presence);
  }
  void set(const std::wstring& name, const ServiceObject& value) { m_body.member(name) = value; }

  /// The report of the complaints; "passed" when there was none.
  std::string judgeBody() {
    return reportOf([this] { m_validator.validateBody(m_body); });
  }
  std::string judgeParameters(const Parameters& parameters) {
    return reportOf([&] { m_validator.validateParameters(parameters); });
  }
  template <class Judgement>
  std::string reportOf(Judgement judgement) {
    try {
      judgement();
      return "passed";
    } catch (const RequestError& error) {
      return error.what();
    }
  }

  OpenValidator m_validator;
  ServiceObject m_body = ServiceObject::object();
};

// The body.

TEST_F(RequestValidatorTest, AnEmptyObjectPassesOptionalRules) {
  declareText(L"name", kOptional);
  declare(L"size", FieldType::kUnsignedInteger, kOptional);
  EXPECT_EQ(judgeBody(), "passed");
}

TEST_F(RequestValidatorTest, ANullBodyIsNoObjectAndNoFieldIsJudged) {
  declareText(L"name", kRequired);
  m_body = ServiceObject::null();
  EXPECT_EQ(judgeBody(), "Argument: root not an object type");
}

TEST_F(RequestValidatorTest, AnObjectOnARouteWithoutBodyIsRefused) {
  m_validator.setExpectNullBody(true);
  EXPECT_EQ(judgeBody(), "Argument: root not a null type");
  set(L"name", ServiceObject(L"x"));
  EXPECT_EQ(judgeBody(), "Argument: root not a null type");
}

TEST_F(RequestValidatorTest, ARouteWithoutBodyTakesNullAndJudgesNoField) {
  declareText(L"name", kRequired);
  m_validator.setExpectNullBody(true);
  m_body = ServiceObject::null();
  EXPECT_EQ(judgeBody(), "passed");
}

TEST_F(RequestValidatorTest, AnAbsentRequiredFieldIsReported) {
  declareText(L"diskId", kRequired);
  EXPECT_EQ(judgeBody(), "Argument: diskId not present");
}

TEST_F(RequestValidatorTest, AnUndefinedPresenceIsReportedWhetherTheFieldIsThereOrNot) {
  declareText(L"absent", FieldPresence{2});
  declareText(L"there", FieldPresence{-1});
  set(L"there", ServiceObject(L"x"));
  EXPECT_EQ(judgeBody(), "Arguments: absent, there not present");
}

TEST_F(RequestValidatorTest, AFieldOfUndefinedPresenceIsJudgedFurther) {
  declareText(L"there", FieldPresence{2});
  set(L"there", ServiceObject(true));
  EXPECT_EQ(judgeBody(), "Argument: there not a string type. Argument: there not present");
}

TEST_F(RequestValidatorTest, AnEmptyTextIsRefusedWhetherRequiredOrOptional) {
  declareText(L"needed", kRequired);
  declareText(L"spare", kOptional);
  set(L"needed", ServiceObject(L""));
  set(L"spare", ServiceObject(L""));
  EXPECT_EQ(judgeBody(), "Arguments: needed, spare field cannot be empty");
}

TEST_F(RequestValidatorTest, ANullFieldIsEmptyEvenWhereNullIsDeclared) {
  declare(L"nothing", FieldType::kNull, kOptional);
  set(L"nothing", ServiceObject::null());
  EXPECT_EQ(judgeBody(), "Argument: nothing field cannot be empty");
}

TEST_F(RequestValidatorTest, EmptyArraysAndObjectsPass) {
  declare(L"disks", FieldType::kArray, kRequired);
  declare(L"options", FieldType::kObject, kRequired);
  set(L"disks", ServiceObject::array());
  set(L"options", ServiceObject::object());
  EXPECT_EQ(judgeBody(), "passed");
}

TEST_F(RequestValidatorTest, AFieldBrokenInTwoWaysStandsInTwoSentences) {
  declare(L"count", FieldType::kInteger, kRequired);
  set(L"count", ServiceObject(L""));
  EXPECT_EQ(judgeBody(), "Argument: count field cannot be empty. Argument: count not an integer type");
}

TEST_F(RequestValidatorTest, TwoFieldsWithOneFaultShareASentenceInOrderOfTheRules) {
  declareText(L"stripSize", kRequired);
  declareText(L"raidLevel", kRequired);
  EXPECT_EQ(judgeBody(), "Arguments: stripSize, raidLevel not present");
}

TEST_F(RequestValidatorTest, SentencesComeInOrderOfTheirTextsAndTheLastHasNoFullStop) {
  declareText(L"raidLevel", kRequired);
  declareText(L"stripSize", kRequired);
  declareText(L"name", kRequired);
  set(L"name", ServiceObject(5u));
  EXPECT_EQ(judgeBody(), "Argument: name not a string type. Arguments: raidLevel, stripSize not present");
}

TEST_F(RequestValidatorTest, UndeclaredFieldsAreReportedInOrderOfTheirKeys) {
  declareText(L"name", kRequired);
  set(L"zeta", ServiceObject(true));
  set(L"name", ServiceObject(L"x"));
  set(L"Zulu", ServiceObject(true));
  set(L"alpha", ServiceObject::null());
  EXPECT_EQ(judgeBody(), "Arguments: Zulu, alpha, zeta not allowed");
}

TEST_F(RequestValidatorTest, ANamelessFieldKeepsItsPlaceInTheReport) {
  set(L"", ServiceObject(true));
  set(L"a", ServiceObject(true));
  EXPECT_EQ(judgeBody(), "Arguments: , a not allowed");
}

TEST_F(RequestValidatorTest, TheHostsParameterIsNotAllowedInABody) {
  set(L"access_token", ServiceObject(L"secret"));
  EXPECT_EQ(judgeBody(), "Argument: access_token not allowed");
}

TEST_F(RequestValidatorTest, UndeclaredFieldsPassWhereTheyAreAllowed) {
  m_validator.setAllowUnknownFields(true);
  set(L"extra", ServiceObject(L""));
  EXPECT_EQ(judgeBody(), "passed");
}

TEST_F(RequestValidatorTest, ReportsAreUtf8) {
  set(L"gr\u00F6\u00DFe", ServiceObject(5u));
  EXPECT_EQ(judgeBody(),
            "Argument: gr\xC3\xB6\xC3\x9F"
            "e not allowed");
}

TEST_F(RequestValidatorTest, AFieldNameThatIsNoTextIsAFailureOfTheConversion) {
  set(std::wstring{L'a', wchar_t(0xD83D)}, ServiceObject(true));
  try {
    m_validator.validateBody(m_body);
    FAIL() << "passed";
  } catch (const std::range_error& error) {
    EXPECT_STREQ(error.what(), "bad conversion");
  }
  m_body = ServiceObject::object();
  EXPECT_EQ(judgeBody(), "passed") << "the complaint is forgotten";
}

// The query parameters.

TEST_F(RequestValidatorTest, TheHostsParameterPassesOnEveryRoute) {
  EXPECT_EQ(judgeParameters({{L"access_token", L"secret"}}), "passed");
}

TEST_F(RequestValidatorTest, AnyOtherUndeclaredParameterIsReported) {
  EXPECT_EQ(judgeParameters({{L"force", L"1"}}), "Argument: force not allowed");
  EXPECT_EQ(judgeParameters({{L"b", L""}, {L"access_token", L""}, {L"a", L""}}),
            "Arguments: a, b not allowed");
}

TEST_F(RequestValidatorTest, UndeclaredParametersPassWhereTheyAreAllowed) {
  m_validator.setAllowUnknownFields(true);
  EXPECT_EQ(judgeParameters({{L"force", L"1"}}), "passed");
}

TEST_F(RequestValidatorTest, AnAbsentRequiredParameterIsReported) {
  declareText(L"range", kRequired);
  declareText(L"type", kOptional);
  EXPECT_EQ(judgeParameters({}), "Argument: range not present");
}

TEST_F(RequestValidatorTest, AnUndefinedPresenceRequiresNoParameter) {
  declareText(L"range", FieldPresence{2});
  EXPECT_EQ(judgeParameters({}), "passed");
}

TEST_F(RequestValidatorTest, ParametersAreJudgedOnPresenceAlone) {
  declare(L"count", FieldType::kInteger, kRequired);
  declare(L"odd", FieldType{99}, kRequired);
  EXPECT_EQ(judgeParameters({{L"count", L""}, {L"odd", L"x"}}), "passed");
}

// What is remembered from one judgement to the next.

TEST_F(RequestValidatorTest, WithoutResetTheBodysRulesAllowQueryParameters) {
  declareText(L"name", kOptional);
  EXPECT_EQ(judgeParameters({{L"name", L"x"}}), "passed");
  m_validator.reset();
  EXPECT_EQ(judgeParameters({{L"name", L"x"}}), "Argument: name not allowed");
}

TEST_F(RequestValidatorTest, ResetForgetsTheRules) {
  declareText(L"name", kRequired);
  m_validator.reset();
  EXPECT_EQ(judgeBody(), "passed") << "not required any more";
  EXPECT_EQ(judgeParameters({}), "passed");
  set(L"name", ServiceObject(L"x"));
  EXPECT_EQ(judgeBody(), "Argument: name not allowed") << "nor declared";
}

TEST_F(RequestValidatorTest, JudgementsAndResetGiveTheValidatorItself) {
  EXPECT_EQ(&m_validator.validateBody(m_body), &m_validator);
  EXPECT_EQ(&m_validator.validateParameters({}), &m_validator);
  EXPECT_EQ(&m_validator.reset(), &m_validator);
}

TEST_F(RequestValidatorTest, ResetKeepsTheFlagsAndTheIgnoredParameters) {
  m_validator.setExpectNullBody(true);
  m_validator.setAllowUnknownFields(true);
  m_validator.reset();
  EXPECT_EQ(judgeBody(), "Argument: root not a null type");
  EXPECT_EQ(judgeParameters({{L"force", L"1"}}), "passed");
  m_validator.setAllowUnknownFields(false);
  EXPECT_EQ(judgeParameters({{L"access_token", L"1"}}), "passed");
}

TEST_F(RequestValidatorTest, RequiredNamesAreThoseAbsentFromABody) {
  m_validator.setErrorLevel(0);
  declareText(L"absent", kRequired);
  declareText(L"there", kRequired);
  declareText(L"spare", kOptional);
  declareText(L"undefined", FieldPresence{2});
  set(L"there", ServiceObject(L"x"));
  m_validator.validateBody(m_body);
  EXPECT_THAT(m_validator.requiredNames(), ElementsAre(L"absent"));
  EXPECT_THAT(m_validator.reset().validateParameters({}), testing::Ref(m_validator));
  EXPECT_THAT(m_validator.requiredNames(), IsEmpty());
}

TEST_F(RequestValidatorTest, RequiredNamesAreAllRequiredParameters) {
  m_validator.setErrorLevel(0);
  declareText(L"absent", kRequired);
  declareText(L"there", kRequired);
  declareText(L"spare", kOptional);
  m_validator.validateParameters({{L"there", L"x"}});
  EXPECT_THAT(m_validator.requiredNames(), ElementsAre(L"absent", L"there"));
}

// The error level.

TEST_F(RequestValidatorTest, LevelZeroPassesSilentlyAndKeepsTheErrorsUntilReset) {
  m_validator.setErrorLevel(0);
  m_body = ServiceObject::null();
  EXPECT_EQ(judgeBody(), "passed");
  EXPECT_EQ(judgeParameters({{L"force", L"1"}}), "passed");

  m_validator.setErrorLevel(1);
  m_body = ServiceObject::object();
  EXPECT_EQ(judgeBody(), "Argument: force not allowed. Argument: root not an object type");
  EXPECT_EQ(judgeBody(), "passed");
}

TEST_F(RequestValidatorTest, ErrorsStillHeldEndTheJudgementOfABodyBeforeItsFields) {
  m_validator.setErrorLevel(0);
  judgeParameters({{L"force", L"1"}});
  declareText(L"name", kRequired);
  judgeBody();
  EXPECT_THAT(m_validator.requiredNames(), IsEmpty());
}

TEST_F(RequestValidatorTest, ResetForgetsTheErrorsOfLevelZero) {
  m_validator.setErrorLevel(0);
  judgeParameters({{L"force", L"1"}});
  m_validator.reset();
  m_validator.setErrorLevel(1);
  EXPECT_EQ(judgeBody(), "passed");
}

class CorruptedLevel : public testing::TestWithParam<std::int32_t> {};

TEST_P(CorruptedLevel, IsAFailureOfItsOwnOnceSomethingIsWrong) {
  OpenValidator validator;
  validator.setErrorLevel(GetParam());
  EXPECT_NO_THROW(validator.validateParameters({}));
  try {
    validator.validateParameters({{L"force", L"1"}});
    FAIL() << "passed";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(typeid(error), typeid(std::runtime_error));
    EXPECT_STREQ(error.what(), "Invalid value of error level");
  }
}

INSTANTIATE_TEST_SUITE_P(RequestValidator, CorruptedLevel,
                         testing::Values(-1, 2, std::numeric_limits<std::int32_t>::max()));

// Contents against declared types: each type takes its one content and says its one message to the others.

struct TypeCase {
  const char* name;
  FieldType type;
  std::size_t accepted;  // index into contents()
  std::string message;
};

std::vector<ServiceObject> contents() {
  return {ServiceObject::null(), signedNumber(5),     ServiceObject(5u),      ServiceObject::real(5.0),
          ServiceObject(L"5"),   ServiceObject(true), ServiceObject::array(), ServiceObject::object()};
}
constexpr std::size_t kNone = 99;

class FieldTypes : public testing::TestWithParam<TypeCase> {
 protected:
  /// Null has an empty text, which is a fault of its own.
  static std::string expectedReport(const ServiceObject& value, bool accepted) {
    std::string fault = accepted ? "" : "Argument: field " + GetParam().message;
    if (!value.isNull()) return fault;
    const std::string empty = "Argument: field field cannot be empty";
    return accepted ? empty : empty + ". " + fault;
  }
};

TEST_P(FieldTypes, TakeOneContentWithoutCoercion) {
  const std::vector<ServiceObject> values = contents();
  for (std::size_t i = 0; i < values.size(); ++i) {
    SCOPED_TRACE(i);
    RequestValidator validator;
    validator.addRule({L"field", GetParam().type, kRequired});
    ServiceObject body;
    body.member(L"field") = values[i];
    std::string report;
    try {
      validator.validateBody(body);
    } catch (const RequestError& error) {
      report = error.what();
    }
    EXPECT_EQ(report, expectedReport(values[i], i == GetParam().accepted));
  }
}

INSTANTIATE_TEST_SUITE_P(RequestValidator, FieldTypes,
                         testing::Values(TypeCase{"Null", FieldType::kNull, 0, "not a null type"},
                                         TypeCase{"Integer", FieldType::kInteger, 1, "not an integer type"},
                                         TypeCase{"UnsignedInteger", FieldType::kUnsignedInteger, 2,
                                                  "not an unsigned integer type"},
                                         TypeCase{"Real", FieldType::kReal, 3, "not a real number type"},
                                         TypeCase{"String", FieldType::kString, 4, "not a string type"},
                                         TypeCase{"Boolean", FieldType::kBoolean, 5, "not a boolean type"},
                                         TypeCase{"Array", FieldType::kArray, 6, "not an array type"},
                                         TypeCase{"Object", FieldType::kObject, 7, "not an object type"},
                                         TypeCase{"Undefined", FieldType{8}, kNone, "undefined type"},
                                         TypeCase{"Negative", FieldType{-1}, kNone, "undefined type"}),
                         ByName());

TEST(FieldTypeCodes, AreInTheirOrder) {
  EXPECT_EQ(static_cast<int>(FieldType::kNull), 0);
  EXPECT_EQ(static_cast<int>(FieldType::kInteger), 1);
  EXPECT_EQ(static_cast<int>(FieldType::kUnsignedInteger), 2);
  EXPECT_EQ(static_cast<int>(FieldType::kReal), 3);
  EXPECT_EQ(static_cast<int>(FieldType::kString), 4);
  EXPECT_EQ(static_cast<int>(FieldType::kBoolean), 5);
  EXPECT_EQ(static_cast<int>(FieldType::kArray), 6);
  EXPECT_EQ(static_cast<int>(FieldType::kObject), 7);
  EXPECT_EQ(static_cast<int>(FieldPresence::kOptional), 0);
  EXPECT_EQ(static_cast<int>(FieldPresence::kRequired), 1);
}

TEST(RuleMessages, TheOneThatIsNeverRaisedHasItsWords) { EXPECT_STREQ(kRuleExceptive, L"exceptive"); }

TEST(RequestErrorTest, CarriesItsTextAndTheFixedIdInBothViews) {
  static_assert(std::is_base_of_v<std::runtime_error, RequestError>);
  static_assert(std::is_copy_constructible_v<RequestError>);
  const RequestError error("the report");
  const common::IErrorIdException& view = error;
  EXPECT_STREQ(view.getErrorId(), "INVALID_PARAMETER");
  EXPECT_STREQ(view.getMessage(), "the report");
  EXPECT_STREQ(error.what(), "the report");
}

}  // namespace
}  // namespace request_validator
}  // namespace ovra
