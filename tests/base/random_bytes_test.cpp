#include "random_bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

TEST(RandomBytes, AreNeverTheSameTwice) {
  std::array<unsigned char, 16> one{};
  std::array<unsigned char, 16> other{};
  fillWithRandomBytes(one.data(), one.size());
  fillWithRandomBytes(other.data(), other.size());
  EXPECT_NE(one, other);
}

TEST(RandomBytes, FillAllThatIsAskedForAndNoMore) {
  for (const std::size_t count : {0U, 1U, 255U, 256U, 257U, 1000U}) {
    std::vector<unsigned char> bytes(count + 1, 0);
    // One round leaves a byte 0 by chance; thirty rounds do not.
    std::vector<unsigned char> seen(count + 1, 0);
    for (int round = 0; round < 30; ++round) {
      fillWithRandomBytes(bytes.data(), count);
      for (std::size_t i = 0; i <= count; ++i) seen[i] = static_cast<unsigned char>(seen[i] | bytes[i]);
    }
    for (std::size_t i = 0; i < count; ++i) EXPECT_NE(seen[i], 0) << i << " of " << count;
    EXPECT_EQ(seen[count], 0) << count;
  }
}

}  // namespace
