#include "net/deadline.h"

#include <gtest/gtest.h>

#include <boost/asio/io_context.hpp>
#include <optional>

namespace host {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class DeadlineTest : public testing::Test {
 protected:
  boost::asio::io_context m_io;
  int m_count = 0;
  std::optional<Deadline> m_deadline{std::in_place, m_io.get_executor(), [this] { ++m_count; }};
};

TEST_F(DeadlineTest, ComesOnce) {
  const auto end = Clock::now() + 2ms;
  m_deadline->set(end);
  m_io.run();
  EXPECT_EQ(m_count, 1);
  EXPECT_GE(Clock::now(), end);
}

TEST_F(DeadlineTest, ComesNoSoonerThanItWasPutOffTo) {
  const auto end = Clock::now() + 20ms;
  m_deadline->setAfter(1ms);
  m_deadline->set(end);
  m_io.run();
  EXPECT_EQ(m_count, 1);
  EXPECT_GE(Clock::now(), end);
}

TEST_F(DeadlineTest, ComesSoonerWhenItIsBroughtForward) {
  m_deadline->setAfter(1h);
  m_deadline->setAfter(1ms);
  m_io.run();
  EXPECT_EQ(m_count, 1);
}

TEST_F(DeadlineTest, ComesAgainWhenItIsSetAgain) {
  m_deadline->setAfter(1ms);
  m_io.run();
  m_io.restart();
  m_deadline->setAfter(1ms);
  m_io.run();
  EXPECT_EQ(m_count, 2);
}

TEST_F(DeadlineTest, NeverComesWhenThereIsNone) {
  m_deadline->setAfter(1ms);
  m_deadline->setNever();
  m_io.run();
  EXPECT_EQ(m_count, 0);
}

TEST_F(DeadlineTest, NeverComesOnceItIsGone) {
  m_deadline->setAfter(0ms);
  m_deadline.reset();
  m_io.run();
  EXPECT_EQ(m_count, 0);
}

}  // namespace

}  // namespace host
