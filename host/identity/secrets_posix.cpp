#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <array>
#include <boost/algorithm/hex.hpp>
#include <iterator>
#include <stdexcept>

#include "identity/secrets.h"

namespace host {

bool sameBytes(const char* one, const char* other, std::size_t count) {
  return CRYPTO_memcmp(one, other, count) == 0;
}

std::string sha256Hex(std::string_view text) {
  std::array<unsigned char, kHashDigits / 2> hash{};
  if (EVP_Digest(text.data(), text.size(), hash.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("the system cannot make a SHA-256");
  }
  std::string digits;
  boost::algorithm::hex_lower(hash.begin(), hash.end(), std::back_inserter(digits));
  return digits;
}

}  // namespace host
