#include "rehearsal_forms.h"

#include <boost/algorithm/hex.hpp>

#include "list_form.h"
#include "published_form.h"
#include "text.h"

using ovra::common::HttpClientErrorException;
using ovra::common::IErrorIdException;
using ovra::data_transfer::ServiceObject;

namespace {

template <class Number>
ServiceObject numbers(const std::vector<Number>& values) {
  return listOf(values, [](Number value) { return std::uint64_t{value}; });
}

std::wstring hexadecimal(const std::string& bytes) {
  const std::string digits = boost::algorithm::hex_lower(bytes);
  return {digits.begin(), digits.end()};
}

ServiceObject settingsForm(const std::map<std::wstring, std::int64_t>& settings) {
  ServiceObject form = ServiceObject::object();
  for (const auto& [key, value] : settings) form.member(key) = value;
  return form;
}

ServiceObject objectsForm(const std::vector<RehearsedDeed::NamedObject>& objects) {
  return listOf(objects, [](const RehearsedDeed::NamedObject& object) {
    return PublishedForm().text(L"type", object.type).text(L"id", object.id).take();
  });
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
