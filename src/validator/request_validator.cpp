#include "request_validator.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "rule_messages.h"
#include "text.h"

namespace ovra {
namespace request_validator {

using data_transfer::ServiceObject;

namespace {

struct TypeRow {
  FieldType type;
  int alternative;  // of ServiceObject::which
  const wchar_t* message;
};

constexpr TypeRow kTypes[] = {
    {FieldType::kNull, 0, kRuleNotNull},
    {FieldType::kInteger, 2, kRuleNotInteger},
    {FieldType::kUnsignedInteger, 3, kRuleNotUnsignedInteger},
    {FieldType::kReal, 4, kRuleNotReal},
    {FieldType::kString, 5, kRuleNotString},
    {FieldType::kBoolean, 1, kRuleNotBoolean},
    {FieldType::kArray, 7, kRuleNotArray},
    {FieldType::kObject, 6, kRuleNotObject},
};

bool isContainer(const ServiceObject& value) { return value.isArray() || value.isObject(); }

bool isKept(FieldPresence presence, bool present) {
  switch (presence) {
    case FieldPresence::kOptional:
      return true;
    case FieldPresence::kRequired:
      return present;
  }
  return false;  // an undefined presence is kept by no field
}

}  // namespace

void RequestValidator::addRule(ValidatorRule rule) { m_rules.push_back(std::move(rule)); }

void RequestValidator::setExpectNullBody(bool expectNullBody) { m_expectNullBody = expectNullBody; }

void RequestValidator::setAllowUnknownFields(bool allowUnknownFields) {
  m_allowUnknownFields = allowUnknownFields;
}

RequestValidator& RequestValidator::validateBody(const ServiceObject& body) {
  if (m_expectNullBody) {
    if (!body.isNull()) addError(kRuleNotNull, kBodyName);
    raiseIfFailed();
    return *this;
  }
  if (!body.isObject()) addError(kRuleNotObject, kBodyName);
  if (m_hasErrors) {
    raiseIfFailed();
    return *this;
  }
  for (const ValidatorRule& rule : m_rules) checkField(body, rule);
  if (!m_allowUnknownFields) refuseUnknownFields(body);
  raiseIfFailed();
  return *this;
}

RequestValidator& RequestValidator::validateParameters(
    const std::map<std::wstring, std::wstring>& parameters) {
  for (const ValidatorRule& rule : m_rules) {
    if (rule.presence != FieldPresence::kRequired) continue;
    if (parameters.count(rule.name) == 0) addError(kRuleNotPresent, rule.name);
    m_requiredNames.push_back(rule.name);
  }
  if (!m_allowUnknownFields) {
    for (const auto& [name, value] : parameters) {
      if (!isIgnored(name) && !isDeclared(name)) addError(kRuleNotAllowed, name);
    }
  }
  raiseIfFailed();
  return *this;
}

RequestValidator& RequestValidator::reset() {
  m_hasErrors = false;
  m_errors.clear();
  m_rules.clear();
  m_requiredNames.clear();
  return *this;
}

void RequestValidator::addError(const std::wstring& message, const std::wstring& name) {
  m_hasErrors = true;
  m_errors[message].push_back(name);
}

void RequestValidator::checkType(const ServiceObject& value, FieldType type, const std::wstring& name) {
  const auto* const row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                       [&](const TypeRow& each) { return each.type == type; });
  if (row == std::end(kTypes)) {
    addError(kRuleUndefinedType, name);
  } else if (value.which() != row->alternative) {
    addError(row->message, name);
  }
}

void RequestValidator::checkField(const ServiceObject& body, const ValidatorRule& rule) {
  const bool present = body.hasKey(rule.name);
  if (!isKept(rule.presence, present)) addError(kRuleNotPresent, rule.name);
  if (!present) {
    if (rule.presence == FieldPresence::kRequired) m_requiredNames.push_back(rule.name);
    return;
  }
  const ServiceObject& value = body.member(rule.name);
  checkType(value, rule.type, rule.name);
  if (!isContainer(value) && value.toString().empty()) addError(kRuleEmpty, rule.name);
}

/// Ignored parameters are not asked for: the host's parameter has no place in a body.
void RequestValidator::refuseUnknownFields(const ServiceObject& body) {
  for (const auto& member : body.asObject()) {
    if (!isDeclared(member.first)) addError(kRuleNotAllowed, member.first);
  }
}

bool RequestValidator::isDeclared(const std::wstring& name) const {
  return std::any_of(m_rules.begin(), m_rules.end(),
                     [&](const ValidatorRule& rule) { return rule.name == name; });
}

bool RequestValidator::isIgnored(const std::wstring& name) const {
  return std::find(m_ignoredParameters.begin(), m_ignoredParameters.end(), name) != m_ignoredParameters.end();
}

void RequestValidator::raiseIfFailed() {
  if (!m_hasErrors || m_errorLevel == 0) return;
  if (m_errorLevel != 1) throw std::runtime_error("Invalid value of error level");
  const std::wstring report = buildReport();
  reset();
  throw RequestError(wideToUtf8(report));
}

/// "Argument: a not present. Arguments: b, c not a string type": no full stop behind the last sentence.
std::wstring RequestValidator::buildReport() const {
  std::wstring report;
  for (const auto& [message, names] : m_errors) {
    if (!report.empty()) report += L". ";
    report += names.size() > 1 ? L"Arguments: " : L"Argument: ";
    report += joined(names, L", ") + L" " + message;
  }
  return report;
}

}  // namespace request_validator
}  // namespace ovra
