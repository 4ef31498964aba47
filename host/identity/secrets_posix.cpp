#include <openssl/crypto.h>

#include "identity/secrets.h"

namespace host {

bool sameBytes(const char* one, const char* other, std::size_t count) {
  return CRYPTO_memcmp(one, other, count) == 0;
}

}  // namespace host
