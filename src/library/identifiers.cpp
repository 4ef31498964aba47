#include "identifiers.h"

#include <array>
#include <optional>

#include "ascii.h"
#include "decimal_text.h"
#include "text.h"

namespace {

constexpr std::uint64_t kFnvStart = 0xcbf29ce484222325U;
constexpr std::uint64_t kFnvPrime = 0x100000001b3U;

/// 64-bit FNV-1a over two bytes a code unit, low byte first, whatever the width of a unit.
std::uint64_t hashOf(const std::wstring& text) {
  std::uint64_t hash = kFnvStart;
  for (const wchar_t character : text) {
    const unsigned unit = static_cast<std::uint16_t>(character);
    for (const unsigned byte : {unit & 0xFFU, unit >> 8}) hash = (hash ^ byte) * kFnvPrime;
  }
  return hash;
}

/// The same up to the first NUL for a text of ASCII, which has the units of the wide text already: each has a
/// high byte of 0, which does no more than multiply once more. Nothing for another text. One pass does all,
/// since each step waits for the multiplication before it.
std::optional<std::uint64_t> hashOfAscii(std::string_view text) {
  std::uint64_t hash = kFnvStart;
  unsigned bytes = 0;
  for (const char character : text) {
    const unsigned byte = static_cast<unsigned char>(character);
    if (byte == 0) break;
    bytes |= byte;
    hash = (hash ^ byte) * (kFnvPrime * kFnvPrime);
  }
  if (bytes > 0x7F) return {};
  return hash;
}

}  // namespace

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

std::wstring wideFromNarrow(std::string_view text) {
  text = untilNul(text);
  if (isAscii(text)) return {text.begin(), text.end()};
  return utf8ToWide(std::string(text));
}

std::wstring idFromUniqueId(std::string_view text) { return decimalText(idNumber(text)); }

std::uint64_t idNumber(std::string_view text) {
  const std::optional<std::uint64_t> ascii = hashOfAscii(text);
  const std::uint64_t hash = ascii ? *ascii : hashOf(utf8ToWide(std::string(untilNul(text))));
  return hash ^ (hash >> 32);
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
