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

bool isMet(const Condition& condition, const ServiceObject& body) {
  if (!condition.key) return true;
  return body.hasKey(condition.key) && (!condition.word || textOf(body, condition.key) == condition.word);
}

/// Of all forms of a request: what only one of them requires is optional.
Rules rulesOf(const FieldRows& fields) {
  Rules rules;
  for (const FieldRow& field : fields) {
    rules.push_back({field.name, field.type, field.when.key ? FieldPresence::kOptional : field.presence});
  }
  return rules;
}

void judgeParameters(const RouteRow& row, const RequestParameters& parameters) {
  validatorOf(rulesOf(row.query)).validateParameters(parameters);
}

void judgeNoBody(const ServiceObject& body) {
  RequestValidator validator;
  validator.setExpectNullBody(true);
  validator.validateBody(body);
}

}  // namespace

Rule optionalUnsigned(const wchar_t* key) {
  return {key, FieldType::kUnsignedInteger, FieldPresence::kOptional};
}

void judge(const RouteRow& row, const RequestParameters& parameters, const ServiceObject& body) {
  switch (row.judgement) {
    case Judgement::kQuery:
      return judgeParameters(row, parameters);
    case Judgement::kNoBodyThenQuery:
      judgeNoBody(body);
      return judgeParameters(row, parameters);
    case Judgement::kQueryThenNoBody:
      judgeParameters(row, parameters);
      return judgeNoBody(body);
    case Judgement::kBodyThenQuery:
      judgeBody(body, rulesOf(row.body));
      return judgeParameters(row, parameters);
    case Judgement::kBodyWithinHandler:
      return;
  }
}

void judgeChosenForm(const RouteRow& row, const ServiceObject& body) {
  Rules rules;
  for (const FieldRow& field : row.body) {
    if (isMet(field.when, body)) rules.push_back({field.name, field.type, field.presence});
  }
  judgeBody(body, rules);
}

void judgeBody(const ServiceObject& body, const Rules& rules) { validatorOf(rules).validateBody(body); }

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
