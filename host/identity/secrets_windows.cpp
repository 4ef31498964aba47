#include <windows.h>
// After the header that it needs.
#include <bcrypt.h>

#include <stdexcept>

#include "identity/secrets.h"

namespace host {

void fillWithRandomBytes(unsigned char* bytes, std::size_t count) {
  const NTSTATUS status =
      ::BCryptGenRandom(nullptr, bytes, static_cast<ULONG>(count), BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  if (status < 0) throw std::runtime_error("the system gives no random bytes");
}

bool sameBytes(const char* one, const char* other, std::size_t count) {
  // Volatile, so that no compiler leaves the loop at the first difference.
  volatile unsigned char difference = 0;
  for (std::size_t i = 0; i < count; ++i) {
    difference = static_cast<unsigned char>(difference | (one[i] ^ other[i]));
  }
  return difference == 0;
}

}  // namespace host
