#ifndef MIRN_HOST_IDENTITY_SECRETS_H
#define MIRN_HOST_IDENTITY_SECRETS_H

#include <cstddef>

namespace host {

/// Whether the first `count` bytes are the same, in a time that `count` alone decides. One source a system.
bool sameBytes(const char* one, const char* other, std::size_t count);

}  // namespace host

#endif
