#include "random_bytes.h"

#include <windows.h>
// After the header that it needs.
#include <bcrypt.h>

#include <stdexcept>

void fillWithRandomBytes(unsigned char* bytes, std::size_t count) {
  const NTSTATUS status =
      ::BCryptGenRandom(nullptr, bytes, static_cast<ULONG>(count), BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  if (status < 0) throw std::runtime_error("the system gives no random bytes");
}
