#include "scripted_library/event_gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using testing::ElementsAre;

/// A thread as the storage plug-in has it: waits, looks at what came, and waits again until
/// it is told to stop.
class EventGateTest : public testing::Test {
 protected:
  void TearDown() override {
    m_running = false;
    m_gate.release();
    if (m_thread.joinable()) m_thread.join();
  }

  void startThread() {
    m_thread = std::thread([this] {
      while (m_running) {
        const VEX_STATUS status = m_gate.wait();
        if (m_running) m_seen.push_back(status);
      }
    });
  }

  EventGate m_gate;
  std::vector<VEX_STATUS> m_seen;
  std::atomic<bool> m_running{true};
  std::thread m_thread;
};

TEST_F(EventGateTest, WaitLastsUntilWoken) {
  startThread();
  m_gate.waitForEventWaits(1);
  EXPECT_EQ(m_gate.eventWaits(), 1U);
  m_gate.wake(VEX_STATUS_TIMEOUT);
  m_gate.waitForEventWaits(2);
  EXPECT_THAT(m_seen, ElementsAre(VEX_STATUS_TIMEOUT));
}

TEST_F(EventGateTest, SettlingReturnsWhenTheThreadHasDoneItsWork) {
  startThread();
  m_gate.wakeAndSettle();
  EXPECT_THAT(m_seen, ElementsAre(VEX_STATUS_SUCCESS));
  m_gate.wakeAndSettle(VEX_STATUS_FAILED);
  EXPECT_THAT(m_seen, ElementsAre(VEX_STATUS_SUCCESS, VEX_STATUS_FAILED));
}

TEST_F(EventGateTest, WakeThatComesEarlyIsNotLost) {
  m_gate.wake(VEX_STATUS_BUSY);
  m_gate.wake();
  EXPECT_EQ(m_gate.wait(), VEX_STATUS_BUSY);
  EXPECT_EQ(m_gate.wait(), VEX_STATUS_SUCCESS);
}

TEST_F(EventGateTest, ReleasedWaitsTimeOutAtOnce) {
  m_gate.release();
  EXPECT_EQ(m_gate.wait(), VEX_STATUS_TIMEOUT);
  EXPECT_EQ(m_gate.wait(), VEX_STATUS_TIMEOUT);
  EXPECT_EQ(m_gate.eventWaits(), 2U);
}

TEST_F(EventGateTest, ResetForgetsWakesAndHoldsAgain) {
  m_gate.release();
  m_gate.wake(VEX_STATUS_BUSY);
  m_gate.reset();
  EXPECT_EQ(m_gate.eventWaits(), 0U);
  startThread();
  m_gate.wakeAndSettle(VEX_STATUS_FAILED);
  EXPECT_THAT(m_seen, ElementsAre(VEX_STATUS_FAILED));
}

TEST_F(EventGateTest, ThousandThreadsComeAndGo) {
  for (int round = 0; round < 1000; ++round) {
    m_gate.reset();
    m_running = true;
    startThread();
    m_gate.waitForEventWaits(1);
    TearDown();
  }
  EXPECT_THAT(m_seen, testing::IsEmpty());
}

}  // namespace
