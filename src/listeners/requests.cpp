#include "requests.h"

#include "messages.h"

using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;
using ovra::request_validator::RequestValidator;

namespace {

RequestValidator validatorOf(const Rules& rules) {
  RequestValidator validator;
  for (const Rule& rule : rules) validator.addRule(rule);
  return validator;
}

RequestValidator nullBodyValidator() {
  RequestValidator validator;
  validator.setExpectNullBody(true);
  return validator;
}

}  // namespace

Rule requiredText(const wchar_t* key) { return {key, FieldType::kString, FieldPresence::kRequired}; }
Rule optionalText(const wchar_t* key) { return {key, FieldType::kString, FieldPresence::kOptional}; }
Rule requiredList(const wchar_t* key) { return {key, FieldType::kArray, FieldPresence::kRequired}; }
Rule optionalList(const wchar_t* key) { return {key, FieldType::kArray, FieldPresence::kOptional}; }
Rule optionalFlag(const wchar_t* key) { return {key, FieldType::kBoolean, FieldPresence::kOptional}; }
Rule optionalUnsigned(const wchar_t* key) {
  return {key, FieldType::kUnsignedInteger, FieldPresence::kOptional};
}

void judgeParameters(const RequestParameters& parameters, const Rules& rules) {
  validatorOf(rules).validateParameters(parameters);
}

void judgeBody(const ServiceObject& body, const Rules& rules) { validatorOf(rules).validateBody(body); }

void judgeNullBody(const ServiceObject& body) { nullBodyValidator().validateBody(body); }

void judgeRequest(const ServiceObject& body, const Rules& rules, const RequestParameters& parameters) {
  validatorOf(rules).validateBody(body).reset().validateParameters(parameters);
}

void judgeNullRequest(const ServiceObject& body, const RequestParameters& parameters) {
  nullBodyValidator().validateBody(body).reset().validateParameters(parameters);
}

std::wstring textOf(const ServiceObject& body, const wchar_t* key) { return body.member(key).toString(); }

std::vector<std::wstring> textsOf(const ServiceObject& body, const wchar_t* key) {
  std::vector<std::wstring> texts;
  if (!body.hasKey(key)) return texts;
  const ServiceObject& elements = body.member(key);
  for (auto position = elements.begin(); position != elements.end(); ++position) {
    texts.push_back((*position).value->toString());
  }
  return texts;
}

EnableState requestedState(const ServiceObject& body) {
  const EnableState state = enableStateFromText(textOf(body, keys::kState));
  requireThat(state != EnableState::UNKNOWN, kErrorInvalidParameter, kMsgInvalidState);
  return state;
}

std::uint64_t parseSize(const std::wstring& text, const std::wstring& message) {
  return parseNumber<std::uint64_t>(text, message);
}
