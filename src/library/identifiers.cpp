#include "identifiers.h"

#include <array>

#include "ascii.h"
#include "decimal_text.h"
#include "text.h"

namespace {

/// 64-bit FNV-1a over two bytes a code unit, low byte first, whatever the width of a unit.
std::uint64_t hashOf(const std::wstring& text) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const wchar_t character : text) {
    const unsigned unit = static_cast<std::uint16_t>(character);
    for (const unsigned byte : {unit & 0xFFU, unit >> 8}) hash = (hash ^ byte) * 0x100000001b3U;
  }
  return hash;
}

}  // namespace

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

std::wstring wideFromNarrow(std::string_view text) {
  text = untilNul(text);
  if (isAscii(text)) return {text.begin(), text.end()};
  return utf8ToWide(std::string(text));
}

std::wstring idFromUniqueId(std::string_view text) {
  const std::uint64_t hash = hashOf(wideFromNarrow(text));
  return decimalText(hash ^ (hash >> 32));
}

std::wstring addressToString(std::uint32_t address) {
  std::array<wchar_t, sizeof "255-255-255-255"> text;
  wchar_t* const end = text.data() + text.size();
  wchar_t* start = writeDigitsBefore(end, address >> 24);
  for (const unsigned shift : {16U, 8U, 0U}) {
    *--start = L'-';
    start = writeDigitsBefore(start, (address >> shift) & 0xFFU);
  }
  return {start, end};
}
