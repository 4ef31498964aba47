#ifndef MIRN_HOST_IDENTITY_TOKEN_H
#define MIRN_HOST_IDENTITY_TOKEN_H

#include <string>
#include <string_view>

namespace host {

/// What every token starts with that the host makes, so that whoever finds one knows what it opens.
extern const char* const kTokenPrefix;

/// A new secret of 256 random bits, behind the prefix. Raises `std::runtime_error` when the system has no
/// randomness to give.
std::string makeToken();

/// Whether `text` may serve as a token: 32 to 256 characters that need no encoding in a header or a URL.
bool isToken(std::string_view text);

}  // namespace host

#endif
