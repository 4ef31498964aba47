#include "random_bytes.h"

#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::size_t kMostAtOnce = 256;

}  // namespace

void fillWithRandomBytes(unsigned char* bytes, std::size_t count) {
  for (std::size_t filled = 0; filled < count; filled += kMostAtOnce) {
    if (::getentropy(bytes + filled, std::min(count - filled, kMostAtOnce)) != 0) {
      throw std::runtime_error("the system gives no random bytes");
    }
  }
}
