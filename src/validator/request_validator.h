#ifndef MIRN_VALIDATOR_REQUEST_VALIDATOR_H
#define MIRN_VALIDATOR_REQUEST_VALIDATOR_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "request_error.h"
#include "ServiceObject.h"

namespace ovra {
namespace request_validator {

/// What a field of a body must hold. Nothing is coerced: an unsigned number is no `kInteger`.
enum class FieldType : std::int32_t {
  kNull = 0,
  kInteger = 1,
  kUnsignedInteger = 2,
  kReal = 3,
  kString = 4,
  kBoolean = 5,
  kArray = 6,
  kObject = 7,
};

enum class FieldPresence : std::int32_t { kOptional = 0, kRequired = 1 };

/// One declared field.
struct ValidatorRule {
  std::wstring name;
  FieldType type;  ///< Of a field in a body; query parameters are texts.
  FieldPresence presence;
};

/// Judges the shape of a request against declared rules, and raises all complaints about one
/// judgement together.
///
///     RequestValidator validator;
///     validator.addRule({L"name", FieldType::kString, FieldPresence::kRequired});
///     validator.validateBody(body).reset();  // the body's rules must not allow query parameters
///     validator.validateParameters(parameters);
///
/// A route that takes no body declares none and says `setExpectNullBody(true)`. Lives on the stack of one
/// handler; of no further use once it has thrown. It knows nothing of storage.
class RequestValidator {
 public:
  void addRule(ValidatorRule rule);
  /// For a route that takes no body.
  void setExpectNullBody(bool expectNullBody);
  void setAllowUnknownFields(bool allowUnknownFields);

  /// Raises `RequestError` unless `body` is an object that keeps the rules. A text must not be empty,
  /// required or not; an array and an object may.
  RequestValidator& validateBody(const data_transfer::ServiceObject& body);

  /// Raises `RequestError` unless all required parameters are there and no undeclared ones. "access_token"
  /// belongs to the host and passes always.
  RequestValidator& validateParameters(const std::map<std::wstring, std::wstring>& parameters);

  /// Forgets rules and complaints; keeps the flags.
  RequestValidator& reset();

 private:
  void addError(const std::wstring& message, const std::wstring& name);
  void checkType(const data_transfer::ServiceObject& value, FieldType type, const std::wstring& name);
  void checkField(const data_transfer::ServiceObject& body, const ValidatorRule& rule);
  void refuseUnknownFields(const data_transfer::ServiceObject& body);
  bool isDeclared(const std::wstring& name) const;
  bool isIgnored(const std::wstring& name) const;
  void raiseIfFailed();
  std::wstring buildReport() const;

  /// Rule message to the names that broke it.
  std::map<std::wstring, std::vector<std::wstring>> m_errors;

 protected:
  /// Absent required fields and required parameters, for a derived class; nothing here reads them.
  std::vector<std::wstring> m_requiredNames;
  /// 0 collects complaints and never raises them, 1 raises them.
  std::int32_t m_errorLevel = 1;

 private:
  bool m_hasErrors = false;
  bool m_allowUnknownFields = false;
  bool m_expectNullBody = false;
  std::vector<ValidatorRule> m_rules;
  std::vector<std::wstring> m_ignoredParameters = {L"access_token"};
};

}  // namespace request_validator
}  // namespace ovra

#endif
