#include <openssl/crypto.h>
#include <openssl/rand.h>

#include <stdexcept>

#include "identity/secrets.h"

namespace host {

void fillWithRandomBytes(unsigned char* bytes, std::size_t count) {
  if (RAND_bytes(bytes, static_cast<int>(count)) != 1) {
    throw std::runtime_error("the system gives no random bytes");
  }
}

bool sameBytes(const char* one, const char* other, std::size_t count) {
  return CRYPTO_memcmp(one, other, count) == 0;
}

}  // namespace host
