#include "field_kinds.h"

#include "list_form.h"

namespace field {
namespace kinds {

namespace {

constexpr wchar_t kDigits[] = L"0123456789abcdef";
constexpr unsigned kDigitBits = 4;

/// At least one digit, and no more than it takes.
std::wstring hexText(std::uint64_t number) {
  std::wstring digits;
  do {
    digits.insert(digits.begin(), kDigits[number & 0xF]);
    number >>= kDigitBits;
  } while (number != 0);
  return L"0x" + digits;
}

void describePattern(ServiceObject& schema, const wchar_t* pattern) {
  describeAs(schema, L"string");
  schema.member(L"pattern") = std::wstring(pattern);
}

}  // namespace

void describeAs(ServiceObject& schema, const wchar_t* type) { schema.member(L"type") = std::wstring(type); }

void describeAsOrNull(ServiceObject& schema, const wchar_t* type) {
  ServiceObject& types = schema.member(L"type");
  types.at(0) = std::wstring(type);
  types.at(1) = std::wstring(L"null");
}

void describeWords(ServiceObject& schema, const std::vector<std::wstring>& words) {
  describeAs(schema, L"string");
  schema.member(L"enum") = textsOf(words);
}

void Number::describe(ServiceObject& schema) {
  describeAs(schema, L"integer");
  schema.member(L"minimum") = std::uint64_t{0};
}

void Size::describe(ServiceObject& schema) { describePattern(schema, L"^[0-9]+$"); }

void Hexadecimal::put(PublishedForm& form, const wchar_t* key, std::uint64_t value) {
  form.text(key, hexText(value));
}

void Hexadecimal::describe(ServiceObject& schema) { describePattern(schema, L"^0x[0-9a-f]+$"); }

}  // namespace kinds
}  // namespace field
