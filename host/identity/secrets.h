#ifndef MIRN_HOST_IDENTITY_SECRETS_H
#define MIRN_HOST_IDENTITY_SECRETS_H

#include <cstddef>

namespace host {

/// What a secret needs of the system; one source a system.

/// Fills `bytes` with what nobody can guess. Raises `std::runtime_error` when the system has no randomness
/// to give.
void fillWithRandomBytes(unsigned char* bytes, std::size_t count);

/// Whether the first `count` bytes are the same, in a time that `count` alone decides.
bool sameBytes(const char* one, const char* other, std::size_t count);

}  // namespace host

#endif
