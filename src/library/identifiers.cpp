#include "identifiers.h"

#include "text.h"

namespace {

constexpr std::uint64_t kFnvStart = 0xcbf29ce484222325U;
constexpr std::uint64_t kFnvPrime = 0x100000001b3U;

/// 64-bit FNV-1a over two bytes a code unit, low byte first, whatever the width of `wchar_t`.
std::uint64_t hashOf(const std::wstring& text) {
  std::uint64_t hash = kFnvStart;
  for (const wchar_t character : text) {
    const unsigned unit = static_cast<std::uint16_t>(character);
    for (const unsigned byte : {unit & 0xFFU, unit >> 8}) hash = (hash ^ byte) * kFnvPrime;
  }
  return hash;
}

/// `std::to_wstring` goes through the formatted print, which is felt when thousands of devices are read.
std::wstring decimalText(std::uint64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

}  // namespace

std::wstring wideFromNarrow(std::string_view text) {
  return utf8ToWide(std::string(text.substr(0, text.find('\0'))));
}

std::wstring idFromUniqueId(std::string_view text) {
  const std::uint64_t hash = hashOf(wideFromNarrow(text));
  return decimalText(hash ^ (hash >> 32));
}

std::wstring addressToString(std::uint32_t address) {
  const auto byteText = [address](unsigned index) { return decimalText((address >> (8 * index)) & 0xFFU); };
  return joined({byteText(0), byteText(1), byteText(2), byteText(3)}, L"-");
}
