#include "actions/operation.h"

#include <algorithm>
#include <map>

#include "http_method.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr wchar_t kService[] = L"service";

std::wstring textIn(const ServiceObject& form, const wchar_t* key) {
  return form.hasKey(key) ? form.member(key).toString() : std::wstring();
}

std::vector<std::wstring> textsIn(const ServiceObject& form, const wchar_t* key) {
  std::vector<std::wstring> texts;
  if (!form.hasKey(key)) return texts;
  for (const auto each : form.member(key)) texts.push_back(each.value->toString());
  return texts;
}

OperationField fieldOf(const ServiceObject& form) {
  OperationField field;
  field.name = textIn(form, L"name");
  field.type = textIn(form, L"type");
  field.isRequired = form.hasKey(L"required") && form.member(L"required").toBool();
  field.help = textIn(form, L"help");
  field.unit = textIn(form, L"unit");
  field.refersTo = textIn(form, L"refersTo");
  field.words = textsIn(form, L"words");
  if (form.hasKey(L"candidates")) {
    const ServiceObject& told = form.member(L"candidates");
    field.candidates = CandidateSource{textIn(told, L"from"), textIn(told, L"of"), textsIn(told, L"usages")};
  }
  if (form.hasKey(L"when")) {
    field.whenField = textIn(form.member(L"when"), L"field");
    field.whenWord = textIn(form.member(L"when"), L"word");
  }
  return field;
}

std::int32_t methodOf(const std::wstring& word) {
  static const std::map<std::wstring, std::int32_t> kMethods{{L"GET", HttpMethod::kGet},
                                                             {L"POST", HttpMethod::kPost},
                                                             {L"PUT", HttpMethod::kPut},
                                                             {L"DELETE", HttpMethod::kDelete}};
  const auto found = kMethods.find(word);
  return found == kMethods.end() ? 0 : found->second;
}

/// What stands behind the key of a path.
std::vector<std::wstring> segmentsBehind(const std::wstring& key, const std::wstring& path) {
  std::vector<std::wstring> segments;
  std::size_t begin = key.size() + 1;
  while (begin < path.size()) {
    const std::size_t end = std::min(path.find(L'/', begin), path.size());
    segments.push_back(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return segments;
}

void readRefusals(const ServiceObject& route, Operation& operation) {
  if (!route.hasKey(L"refusals")) return;
  for (const auto each : route.member(L"refusals")) {
    if (textIn(*each.value, L"kind") != L"request") continue;
    operation.requestRefusals.emplace_back(textIn(*each.value, L"errorId"), textIn(*each.value, L"words"));
  }
}

Operation operationOf(const ServiceObject& route) {
  Operation operation;
  operation.id = textIn(route, L"id");
  operation.effect = textIn(route, L"effect");
  operation.role = textIn(route, L"role");
  operation.method = methodOf(textIn(route, L"method"));
  operation.key = textIn(route, L"key");
  operation.segments = segmentsBehind(operation.key, textIn(route, L"path"));
  operation.objectType = kService;
  for (const auto each : route.member(L"arguments")) {
    operation.argument = textIn(*each.value, L"name");
    operation.objectType = textIn(*each.value, L"refersTo");
  }
  for (const auto each : route.member(L"body")) operation.fields.push_back(fieldOf(*each.value));
  readRefusals(route, operation);
  return operation;
}

bool hasOneObjectAtMost(const ServiceObject& route) {
  std::size_t count = 0;
  for (const auto each : route.member(L"arguments")) count += each.value->isObject() ? 1U : 0U;
  return count <= 1;
}

}  // namespace

const OperationField* Operation::field(const std::wstring& name) const {
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [&](const OperationField& each) { return each.name == name; });
  return found == fields.end() ? nullptr : &*found;
}

std::vector<Operation> operationsOf(const ServiceObject& description) {
  std::vector<Operation> operations;
  for (const auto each : description.member(L"routes")) {
    if (textIn(*each.value, L"effect") == L"read" || !hasOneObjectAtMost(*each.value)) continue;
    operations.push_back(operationOf(*each.value));
  }
  return operations;
}

}  // namespace insight
