#include "known_texts.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ascii.h"
#include "decimal_text.h"
#include "identifiers.h"
#include "text.h"

namespace {

// An id tells its number and an address its own: where the hash is that number, one is the other.
constexpr auto kIsAnyOfThisHash = [](const std::wstring&) { return true; };

/// Looks at all units, without a branch a unit.
bool isSameAscii(const std::wstring& known, std::string_view text) {
  if (known.size() != text.size()) return false;
  std::uint32_t difference = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    difference |= static_cast<std::uint32_t>(known[i]) ^ static_cast<unsigned char>(text[i]);
  }
  return difference == 0;
}

}  // namespace

SharedText KnownTexts::id(std::string_view uniqueId) {
  const std::uint64_t number = idNumber(uniqueId);
  return m_ids.findOrMake(number, kIsAnyOfThisHash, [number] { return decimalText(number); });
}

SharedText KnownTexts::address(std::uint32_t address) {
  return m_addresses.findOrMake(address, kIsAnyOfThisHash, [address] { return addressToString(address); });
}

SharedText KnownTexts::text(std::string_view field) {
  const std::string_view text = untilNul(field);
  if (text.empty()) return {};
  if (!isAscii(text)) return same(utf8ToWide(std::string(text)));
  return m_texts.findOrMake(
      std::hash<std::string_view>()(text),
      [text](const std::wstring& known) { return isSameAscii(known, text); },
      [text] { return std::wstring(text.begin(), text.end()); });
}

SharedText KnownTexts::formed(std::string_view field, std::wstring (*form)(const std::wstring&)) {
  SharedText from = text(field);
  if (m_lastFormed.form != form || !m_lastFormed.from.isSharedWith(from)) {
    SharedText result = same(form(from));
    m_lastFormed = {std::move(from), form, std::move(result)};
  }
  return m_lastFormed.text;
}

void KnownTexts::forgetUnused() {
  m_lastFormed = {};
  m_ids.forgetUnused();
  m_addresses.forgetUnused();
  m_texts.forgetUnused();
}

SharedText KnownTexts::same(std::wstring text) {
  return m_texts.findOrMake(
      std::hash<std::wstring>()(text), [&text](const std::wstring& known) { return known == text; },
      [&text] { return std::move(text); });
}
