#include "engine/clock.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

class ClockTest : public testing::Test {
 protected:
  Clock::Instant m_now{};
  Clock m_clock{[this] { return m_now; }};
};

TEST_F(ClockTest, GoesWithRealTimeAtFirst) {
  m_now += milliseconds(7);
  EXPECT_EQ(m_clock.take(), 7U);
  EXPECT_EQ(m_clock.take(), 0U);
}

TEST_F(ClockTest, LosesNoFractions) {
  for (int step = 0; step < 10; ++step) {
    m_now += microseconds(300);
    m_clock.setSpeed(1);
  }
  EXPECT_EQ(m_clock.take(), 3U);
}

TEST_F(ClockTest, GoesFasterAndKeepsWhatHasPassed) {
  m_now += milliseconds(5);
  m_clock.setSpeed(100);
  m_now += milliseconds(5);
  EXPECT_EQ(m_clock.take(), 505U);
}

TEST_F(ClockTest, StandsStillAndMovesByHand) {
  m_clock.setSpeed(0);
  m_now += milliseconds(5);
  EXPECT_EQ(m_clock.take(), 0U);
  m_clock.advance(60000);
  EXPECT_EQ(m_clock.take(), 60000U);
}

TEST_F(ClockTest, AddsUpDecadesAtItsFastest) {
  m_clock.setSpeed(999999);
  m_now += std::chrono::hours(24 * 365 * 20);
  EXPECT_EQ(m_clock.take(), std::uint64_t{24} * 365 * 20 * 3600 * 1000 * 999999);
}

TEST_F(ClockTest, CountsNoFurtherThanTheLargestNumber) {
  m_clock.advance(UINT64_MAX);
  m_clock.advance(UINT64_MAX);
  m_now += milliseconds(5);
  EXPECT_EQ(m_clock.take(), UINT64_MAX);
}

TEST_F(ClockTest, TellsWhenATimeWillHavePassed) {
  m_clock.setSpeed(100);
  EXPECT_GE(m_clock.whenPassed(1000), m_now + milliseconds(10));
  EXPECT_LE(m_clock.whenPassed(1000), m_now + milliseconds(11));
  m_clock.setSpeed(0);
  EXPECT_EQ(m_clock.whenPassed(1), Clock::Instant::max());
}

}  // namespace
}  // namespace simulator
