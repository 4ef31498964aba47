#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <boost/algorithm/hex.hpp>
#include <iterator>
#include <stdexcept>

#include "identity/secrets.h"

namespace host {

bool sameBytes(const char* one, const char* other, std::size_t count) {
  return CRYPTO_memcmp(one, other, count) == 0;
}

namespace {

using Hash = std::array<unsigned char, kHashDigits / 2>;

std::string digitsOf(const Hash& hash) {
  std::string digits;
  boost::algorithm::hex_lower(hash.begin(), hash.end(), std::back_inserter(digits));
  return digits;
}

void require(bool isMade) {
  if (!isMade) throw std::runtime_error("the system cannot make a SHA-256");
}

}  // namespace

std::string sha256Hex(std::string_view text) {
  Hash hash{};
  require(EVP_Digest(text.data(), text.size(), hash.data(), nullptr, EVP_sha256(), nullptr) == 1);
  return digitsOf(hash);
}

std::string hmacSha256Hex(std::string_view key, std::string_view text) {
  Hash hash{};
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
  require(HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), bytes, text.size(), hash.data(),
               nullptr) != nullptr);
  return digitsOf(hash);
}

}  // namespace host
