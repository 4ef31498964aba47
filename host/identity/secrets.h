#ifndef MIRN_HOST_IDENTITY_SECRETS_H
#define MIRN_HOST_IDENTITY_SECRETS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// What is done with secrets; one source a system.

/// Whether the first `count` bytes are the same, in a time that `count` alone decides.
bool sameBytes(const char* one, const char* other, std::size_t count);

/// The SHA-256 of `text` as 64 lower hexadecimal digits: what is kept of a secret that is long and random.
/// Raises `std::runtime_error` when the system cannot do it.
std::string sha256Hex(std::string_view text);

/// The HMAC-SHA256 of `text` under `key`, in the same form. Raises `std::runtime_error` likewise.
std::string hmacSha256Hex(std::string_view key, std::string_view text);

/// How many digits that are.
constexpr std::size_t kHashDigits = 64;

/// Whether two such hashes are the same, in a time that tells nothing of where they differ.
inline bool sameHash(std::string_view one, std::string_view other) {
  return one.size() == other.size() && sameBytes(one.data(), other.data(), one.size());
}

}  // namespace host

#endif
