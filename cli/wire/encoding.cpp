#include "wire/encoding.h"

#include <charconv>

namespace mirnctl {

std::string percentEncoded(std::string_view text) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr std::string_view kUnreserved =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  std::string encoded;
  for (const char c : text) {
    if (kUnreserved.find(c) != std::string_view::npos) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded += '%';
    encoded += kDigits[byte >> 4u];
    encoded += kDigits[byte & 0xFu];
  }
  return encoded;
}

std::string percentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t place = 0; place < text.size(); ++place) {
    unsigned byte = 0;
    const char* const begin = text.data() + place + 1;
    const bool isCode = text[place] == '%' && place + 2 < text.size() &&
                        std::from_chars(begin, begin + 2, byte, 16).ptr == begin + 2;
    decoded += isCode ? static_cast<char>(byte) : text[place];
    if (isCode) place += 2;
  }
  return decoded;
}

}  // namespace mirnctl
