#include "identity/token.h"

#include "identity/base64url.h"
#include "identity/secrets.h"

namespace host {

namespace {

constexpr std::size_t kRandomBytes = 32;
constexpr std::size_t kMinSize = 32;
constexpr std::size_t kMaxSize = 256;
constexpr char kTokenCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";

}  // namespace

const char* const kTokenPrefix = "mirn_";

std::string makeToken() { return kTokenPrefix + randomText(kRandomBytes); }

bool isToken(std::string_view text) {
  return text.size() >= kMinSize && text.size() <= kMaxSize &&
         text.find_first_not_of(kTokenCharacters) == std::string_view::npos;
}

}  // namespace host
