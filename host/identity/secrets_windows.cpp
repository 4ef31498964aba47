#include "identity/secrets.h"

namespace host {

bool sameBytes(const char* one, const char* other, std::size_t count) {
  // Volatile, so that no compiler leaves the loop at the first difference.
  volatile unsigned char difference = 0;
  for (std::size_t i = 0; i < count; ++i) {
    difference = static_cast<unsigned char>(difference | (one[i] ^ other[i]));
  }
  return difference == 0;
}

}  // namespace host
