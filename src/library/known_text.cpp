#include "known_text.h"

#include "ascii.h"

namespace {

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

bool PlainText::isMadeOf(Source field) const {
  const std::string_view text = untilNul(field);
  return isSameAscii(m_text, text) || (!isAscii(text) && wideFromNarrow(text) == m_text.text());
}
