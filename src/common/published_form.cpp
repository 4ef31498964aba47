#include "published_form.h"

#include "decimal_text.h"
#include "list_form.h"

PublishedForm& PublishedForm::text(const wchar_t* key, std::wstring value) {
  member(key) = std::move(value);
  return *this;
}

PublishedForm& PublishedForm::number(const wchar_t* key, std::uint64_t value) {
  member(key) = value;
  return *this;
}

PublishedForm& PublishedForm::size(const wchar_t* key, std::uint64_t value) {
  return text(key, decimalText(value));
}

PublishedForm& PublishedForm::texts(const wchar_t* key, const std::vector<std::wstring>& values) {
  return part(key, textsOf(values));
}

PublishedForm& PublishedForm::part(const wchar_t* key, ServiceObject value) {
  member(key).swap(value);
  return *this;
}
