#include "history/fresh_epoch.h"

#include <array>
#include <cstdio>

#include "random_bytes.h"

namespace insight {

std::string freshEpoch() {
  std::array<unsigned char, 8> bytes{};
  fillWithRandomBytes(bytes.data(), bytes.size());
  std::string text;
  for (const unsigned char byte : bytes) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", byte);
    text += digits.data();
  }
  return text;
}

}  // namespace insight
