#include "published_fields.h"

namespace field {

std::wstring Describer::both(const std::wstring& one, const wchar_t* other) {
  return one.empty() ? other : one + L" and " + other;
}

Describer::ServiceObject& Describer::add(const Facts& facts, bool isOptional) {
  const std::wstring condition =
      facts.condition == nullptr ? m_condition : both(m_condition, facts.condition);
  if (condition.empty() && !isOptional) m_required.at(m_requiredCount++) = std::wstring(facts.name);

  ServiceObject& schema = m_properties.member(facts.name);
  schema.member(L"description") = std::wstring(facts.help);
  if (!condition.empty()) schema.member(L"condition") = condition;
  if (facts.unit != nullptr) schema.member(L"unit") = std::wstring(facts.unit);
  if (facts.refersTo != nullptr) schema.member(L"refersTo") = std::wstring(facts.refersTo);
  if (facts.isProgress) schema.member(L"progress") = true;
  return schema;
}

Describer::ServiceObject Describer::take() {
  ServiceObject schema = ServiceObject::object();
  schema.member(L"type") = std::wstring(L"object");
  schema.member(L"properties").swap(m_properties);
  schema.member(L"required").swap(m_required);
  return schema;
}

namespace kinds {

void describeObject(ServiceObject& schema, ServiceObject whole) {
  for (const wchar_t* key : {L"type", L"properties", L"required"}) schema.member(key).swap(whole.member(key));
}

}  // namespace kinds
}  // namespace field
