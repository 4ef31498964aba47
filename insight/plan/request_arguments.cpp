#include "plan/request_arguments.h"

#include <algorithm>

#include "view/object_path.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr wchar_t kAllThatIsFree[] = L"0";  // as a size

std::vector<std::wstring> textsOf(const ServiceObject& value) {
  if (!value.isArray()) return {value.toString()};
  std::vector<std::wstring> texts;
  for (const auto each : value) texts.push_back(each.value->toString());
  return texts;
}

/// A size in its unit; everything else as it is.
std::wstring toldValue(const OperationField* field, const std::wstring& value) {
  const bool isSize = field != nullptr && field->candidates && field->candidates->from == L"size";
  if (!isSize) return value;
  return value == kAllThatIsFree ? L"the largest size" : value + L' ' + field->unit;
}

}  // namespace

RequestArguments::RequestArguments(const Operation& operation, const std::vector<std::wstring>& segments,
                                   const ServiceObject& body)
    : m_operation(operation), m_body(body) {
  const auto place =
      std::find(operation.segments.begin(), operation.segments.end(), L'{' + operation.argument + L'}');
  const auto index = static_cast<std::size_t>(place - operation.segments.begin());
  if (place != operation.segments.end() && index < segments.size()) m_objectId = segments[index];
}

std::vector<std::wstring> RequestArguments::valuesOf(const std::wstring& argument) const {
  if (argument.empty()) return {};
  if (argument == m_operation.argument) return {m_objectId};
  if (!m_body.isObject() || !m_body.hasKey(argument)) return {};
  return textsOf(m_body.member(argument));
}

std::wstring RequestArguments::valueOf(const std::wstring& argument) const {
  const std::vector<std::wstring> values = valuesOf(argument);
  return values.empty() ? std::wstring() : values.front();
}

std::vector<std::wstring> RequestArguments::given() const {
  std::vector<std::wstring> names;
  for (const OperationField& field : m_operation.fields) {
    if (m_body.isObject() && m_body.hasKey(field.name)) names.push_back(field.name);
  }
  return names;
}

bool RequestArguments::fulfil(const TellsWhen& when) const {
  if (when.field.empty()) return true;
  if (!m_body.isObject() || !m_body.hasKey(when.field)) return false;
  return when.word.empty() || m_body.member(when.field).toString() == when.word;
}

std::wstring RequestArguments::typeOf(const std::wstring& argument) const {
  if (argument == m_operation.argument) return m_operation.objectType;
  const OperationField* const field = m_operation.field(argument);
  return field == nullptr ? std::wstring() : field->refersTo;
}

std::wstring RequestArguments::toldAs(const std::wstring& argument, const MachineView& machine) const {
  const std::wstring type = typeOf(argument);
  std::wstring told;
  for (const std::wstring& value : valuesOf(argument)) {
    const auto object = objectNamed(machine, type, value);
    if (!told.empty()) told += L", ";
    told += object ? object->name : toldValue(m_operation.field(argument), value);
  }
  return told;
}

std::wstring RequestArguments::filledIn(const std::wstring& text, const MachineView& machine) const {
  std::wstring filled;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t open = std::min(text.find(L'{', begin), text.size());
    const std::size_t close = std::min(text.find(L'}', open), text.size());
    filled += text.substr(begin, open - begin);
    if (close < text.size()) filled += toldAs(text.substr(open + 1, close - open - 1), machine);
    begin = close + 1;
  }
  return filled;
}

}  // namespace insight
