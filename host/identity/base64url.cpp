#include "identity/base64url.h"

#include <cstdint>
#include <vector>

#include "random_bytes.h"

namespace host {

namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr unsigned kDigitBits = 6;
constexpr std::uint32_t kDigitMask = 0x3F;

}  // namespace

std::string base64url(const unsigned char* bytes, std::size_t count) {
  std::string text;
  std::uint32_t pending = 0;
  unsigned bits = 0;
  for (std::size_t i = 0; i < count; ++i) {
    pending = pending << 8 | bytes[i];
    for (bits += 8; bits >= kDigitBits; bits -= kDigitBits) {
      text += kDigits[pending >> (bits - kDigitBits) & kDigitMask];
    }
  }
  if (bits > 0) text += kDigits[pending << (kDigitBits - bits) & kDigitMask];
  return text;
}

std::string randomText(std::size_t byteCount) {
  std::vector<unsigned char> bytes(byteCount);
  fillWithRandomBytes(bytes.data(), bytes.size());
  return base64url(bytes.data(), bytes.size());
}

}  // namespace host
