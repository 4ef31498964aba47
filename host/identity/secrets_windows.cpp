#include "identity/secrets.h"

#include <windows.h>
// After the header that it needs.
#include <bcrypt.h>

#include <array>
#include <boost/algorithm/hex.hpp>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace host {

namespace {

void require(NTSTATUS status) {
  if (status != 0) throw std::runtime_error("the system cannot make a SHA-256");
}

BCRYPT_ALG_HANDLE openedSha256(ULONG flags) {
  BCRYPT_ALG_HANDLE provider = nullptr;
  require(::BCryptOpenAlgorithmProvider(&provider, BCRYPT_SHA256_ALGORITHM, nullptr, flags));
  return provider;
}

/// Stays open: a hash is asked for with each request.
BCRYPT_ALG_HANDLE sha256() {
  static const BCRYPT_ALG_HANDLE kProvider = openedSha256(0);
  return kProvider;
}

BCRYPT_ALG_HANDLE hmacSha256() {
  static const BCRYPT_ALG_HANDLE kProvider = openedSha256(BCRYPT_ALG_HANDLE_HMAC_FLAG);
  return kProvider;
}

std::string hashHex(BCRYPT_ALG_HANDLE provider, std::string_view key, std::string_view text) {
  std::vector<unsigned char> secret(key.begin(), key.end());
  std::vector<unsigned char> bytes(text.begin(), text.end());
  std::array<unsigned char, kHashDigits / 2> hash{};
  require(::BCryptHash(provider, secret.data(), static_cast<ULONG>(secret.size()), bytes.data(),
                       static_cast<ULONG>(bytes.size()), hash.data(), static_cast<ULONG>(hash.size())));
  std::string digits;
  boost::algorithm::hex_lower(hash.begin(), hash.end(), std::back_inserter(digits));
  return digits;
}

}  // namespace

bool sameBytes(const char* one, const char* other, std::size_t count) {
  // Volatile, so that no compiler leaves the loop at the first difference.
  volatile unsigned char difference = 0;
  for (std::size_t i = 0; i < count; ++i) {
    difference = static_cast<unsigned char>(difference | (one[i] ^ other[i]));
  }
  return difference == 0;
}

std::string sha256Hex(std::string_view text) { return hashHex(sha256(), {}, text); }

std::string hmacSha256Hex(std::string_view key, std::string_view text) {
  return hashHex(hmacSha256(), key, text);
}

}  // namespace host
