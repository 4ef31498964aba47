#include "identity/token.h"

#include <array>
#include <boost/algorithm/hex.hpp>
#include <iterator>

#include "identity/secrets.h"
#include "random_bytes.h"

namespace host {

namespace {

constexpr std::size_t kRandomBytes = 32;
constexpr std::size_t kMinSize = 32;
constexpr std::size_t kMaxSize = 256;
constexpr char kTokenCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";

}  // namespace

std::string makeToken() {
  std::array<unsigned char, kRandomBytes> bytes{};
  fillWithRandomBytes(bytes.data(), bytes.size());
  std::string token;
  boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(token));
  return token;
}

bool isToken(std::string_view text) {
  return text.size() >= kMinSize && text.size() <= kMaxSize &&
         text.find_first_not_of(kTokenCharacters) == std::string_view::npos;
}

bool sameToken(std::string_view given, std::string_view expected) {
  return given.size() == expected.size() && sameBytes(given.data(), expected.data(), expected.size());
}

}  // namespace host
