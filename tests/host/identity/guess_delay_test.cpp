#include "identity/guess_delay.h"

#include <gtest/gtest.h>

#include "host/identity/moved_clock.h"

namespace host {

namespace {

using std::chrono::milliseconds;

class GuessDelayTest : public testing::Test {
 protected:
  std::int64_t wrong(const std::string& address) { return m_delay.afterWrong(address).count(); }

  MovedClock m_clock;
  GuessDelay m_delay{m_clock.clock()};
};

TEST_F(GuessDelayTest, DoublesUpToTheLongest) {
  std::vector<std::int64_t> delays;
  for (int i = 0; i < 9; ++i) delays.push_back(wrong("192.0.2.1"));
  EXPECT_EQ(delays, (std::vector<std::int64_t>{100, 200, 400, 800, 1600, 3200, 5000, 5000, 5000}));
}

TEST_F(GuessDelayTest, IsEachAddressesOwn) {
  wrong("192.0.2.1");
  EXPECT_EQ(wrong("192.0.2.2"), 100);
  EXPECT_EQ(wrong("192.0.2.1"), 200);
  EXPECT_EQ(wrong(""), 100);
  EXPECT_EQ(wrong(""), 200);
}

TEST_F(GuessDelayTest, IsTheNetworksOfIpv6) {
  wrong("2001:db8:1:2::1");
  EXPECT_EQ(wrong("2001:db8:1:2:ffff:ffff:ffff:ffff"), 200);
  EXPECT_EQ(wrong("2001:db8:1:3::1"), 100);
  EXPECT_EQ(wrong("::ffff:192.0.2.1"), 100);
  EXPECT_EQ(wrong("::ffff:192.0.2.2"), 100);
}

TEST_F(GuessDelayTest, IsForgottenAfterAQuietTime) {
  wrong("192.0.2.1");
  m_clock.pass(GuessDelay::kMemory - milliseconds(1));
  EXPECT_EQ(wrong("192.0.2.1"), 200);
  m_clock.pass(GuessDelay::kMemory);
  EXPECT_EQ(wrong("192.0.2.1"), 100);
  EXPECT_EQ(m_delay.size(), 1U);
}

TEST_F(GuessDelayTest, RemembersSoManyAddresses) {
  const auto address = [](std::size_t i) {
    return "10.0." + std::to_string(i / 256) + "." + std::to_string(i % 256);
  };
  for (std::size_t i = 0; i < GuessDelay::kAddresses; ++i) wrong(address(i));
  EXPECT_EQ(wrong(address(0)), 200);  // the latest now
  wrong("192.0.2.1");
  EXPECT_EQ(m_delay.size(), GuessDelay::kAddresses);
  EXPECT_EQ(wrong(address(0)), 400);
  EXPECT_EQ(wrong(address(1)), 100);  // had been quiet for longest
}

}  // namespace

}  // namespace host
