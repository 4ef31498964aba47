#ifndef MIRN_HOST_IDENTITY_BASE64URL_H
#define MIRN_HOST_IDENTITY_BASE64URL_H

#include <cstddef>
#include <string>

namespace host {

/// `count` bytes as base64url (RFC 4648, section 5), without padding.
std::string base64url(const unsigned char* bytes, std::size_t count);

/// As many random bytes in that form: nobody can guess them, and they need no encoding in a header or a URL.
/// Raises `std::runtime_error` when the system has no randomness to give.
std::string randomText(std::size_t byteCount);

}  // namespace host

#endif
