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
    const auto unit = static_cast<unsigned char>(text[i]);
    difference |= (static_cast<std::uint32_t>(known[i]) ^ unit) | (unit & 0x80U);
  }
  return difference == 0;
}

}  // namespace

SharedText KnownTexts::id(std::string_view uniqueId) {
  const std::uint64_t number = idNumber(uniqueId);
  SharedText known = m_ids.find(number, kIsAnyOfThisHash);
  return known.empty() ? m_ids.add(number, decimalText(number)) : known;
}

SharedText KnownTexts::address(std::uint32_t address) {
  SharedText known = m_addresses.find(address, kIsAnyOfThisHash);
  return known.empty() ? m_addresses.add(address, addressToString(address)) : known;
}

SharedText KnownTexts::text(std::string_view field) {
  const std::string_view text = untilNul(field);
  const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
  SharedText known =
      m_texts.find(hash, [text](const std::wstring& other) { return isSameAscii(other, text); });
  if (!known.empty()) return known;
  return isAscii(text) ? m_texts.add(hash, std::wstring(text.begin(), text.end()))
                       : same(utf8ToWide(std::string(text)));
}

SharedText KnownTexts::formed(std::string_view field, std::wstring (*form)(const std::wstring&)) {
  const std::string_view from = untilNul(field);
  if (m_lastFormed.form != form || m_lastFormed.from != from) {
    m_lastFormed = {std::string(from), form, same(form(wideFromNarrow(from)))};
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
  const auto hash = static_cast<std::uint32_t>(std::hash<std::wstring>()(text));
  SharedText known = m_texts.find(hash, [&text](const std::wstring& other) { return other == text; });
  return known.empty() ? m_texts.add(hash, std::move(text)) : known;
}
