#include "rehearsal_forms.h"

#include "text.h"

using ovra::common::HttpClientErrorException;
using ovra::common::IErrorIdException;
using ovra::data_transfer::ServiceObject;

namespace {

template <class Number>
ServiceObject numbers(const std::vector<Number>& values) {
  ServiceObject list = ServiceObject::array();
  std::size_t count = 0;
  for (const Number value : values) list.at(count++) = std::uint64_t{value};
  return list;
}

std::wstring hexadecimal(const std::string& bytes) {
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  std::wstring text;
  text.reserve(bytes.size() * 2);
  for (const char byte : bytes) {
    text += kDigits[static_cast<unsigned char>(byte) >> 4];
    text += kDigits[static_cast<unsigned char>(byte) & 0xf];
  }
  return text;
}

ServiceObject settingsForm(const std::map<std::wstring, std::int64_t>& settings) {
  ServiceObject form = ServiceObject::object();
  for (const auto& [key, value] : settings) form.member(key) = value;
  return form;
}

ServiceObject objectsForm(const std::vector<RehearsedDeed::NamedObject>& objects) {
  ServiceObject list = ServiceObject::array();
  std::size_t count = 0;
  for (const RehearsedDeed::NamedObject& object : objects) {
    ServiceObject& form = list.at(count++);
    form.member(L"type") = object.type;
    form.member(L"id") = object.id;
  }
  return list;
}

}  // namespace

ServiceObject planForm(const RehearsedDeed& deed) {
  const PreparedCall call = deed.call.value_or(PreparedCall());
  ServiceObject form = ServiceObject::object();
  form.member(L"operation") = deed.call ? ServiceObject(utf8ToWide(call.operation)) : ServiceObject::null();
  form.member(L"arguments") = numbers(call.arguments);
  form.member(L"record") = call.record ? ServiceObject(hexadecimal(*call.record)) : ServiceObject::null();
  form.member(L"handles") = numbers(call.handles);
  form.member(L"settings") = settingsForm(deed.settings);
  form.member(L"objects") = objectsForm(deed.objects);
  form.member(L"libraryDecides") = true;
  return form;
}

ServiceObject refusalForm(const wchar_t* className, const std::exception& error) {
  const auto* const withId = dynamic_cast<const IErrorIdException*>(&error);
  ServiceObject form = ServiceObject::object();
  form.member(L"class") = std::wstring(className);
  form.member(L"errorId") = withId ? ServiceObject(utf8ToWide(withId->getErrorId())) : ServiceObject::null();
  form.member(L"status") = ServiceObject::null();
  form.member(L"message") = utf8ToWide(error.what());
  return form;
}

ServiceObject refusalForm(const HttpClientErrorException& error) {
  ServiceObject form = refusalForm(L"http", error);
  form.member(L"status") = static_cast<std::uint64_t>(error.status);
  return form;
}
