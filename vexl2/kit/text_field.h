#ifndef MIRN_VEXL2_KIT_TEXT_FIELD_H
#define MIRN_VEXL2_KIT_TEXT_FIELD_H

#include <cstddef>
#include <string>
#include <string_view>

namespace vexl2 {

/// As much of UTF-8 text as fits `maxBytes` without cutting a character.
std::string_view cutText(std::string_view text, std::size_t maxBytes);

/// Writes the text, a NUL at the latest in the last byte, and zeroes behind it.
template <std::size_t N>
void putText(char (&field)[N], std::string_view text) {
  const std::string_view kept = cutText(text, N - 1);
  kept.copy(field, kept.size());
  std::char_traits<char>::assign(field + kept.size(), N - kept.size(), '\0');
}

/// The text of a field up to its NUL, or all of it when there is none.
template <std::size_t N>
std::string_view textOf(const char (&field)[N]) {
  const std::string_view whole(field, N);
  return whole.substr(0, whole.find('\0'));
}

}  // namespace vexl2

#endif
