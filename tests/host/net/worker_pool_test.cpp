#include "net/worker_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

namespace host {

namespace {

/// A pool of two threads, of which `m_hold` holds the tasks that take it.
class WorkerPoolTest : public testing::Test {
 protected:
  static constexpr std::size_t kThreads = 2;
  static constexpr std::size_t kWaiting = 5;
  static constexpr std::size_t kWaitingOfOne = 3;

  ~WorkerPoolTest() override { release(); }

  bool submit(const std::string& identity) {
    return m_pool.submit(identity, [hold = m_held] { hold.wait(); });
  }

  int submitMany(const std::string& identity, int count) {
    int taken = 0;
    for (int i = 0; i < count; ++i) taken += submit(identity) ? 1 : 0;
    return taken;
  }

  void release() {
    if (!m_isReleased) m_hold.set_value();
    m_isReleased = true;
  }

  std::promise<void> m_hold;
  std::shared_future<void> m_held = m_hold.get_future().share();
  bool m_isReleased = false;
  WorkerPool m_pool{kThreads, {kWaiting, kWaitingOfOne}};
};

TEST_F(WorkerPoolTest, TakesOfOneIdentityWhatMayWaitOfIt) {
  EXPECT_EQ(submitMany("a", 10), 5) << "two run, three wait";
  EXPECT_EQ(submitMany("b", 10), 2) << "what is left for all";
  EXPECT_EQ(submitMany("", 10), 0);
}

TEST_F(WorkerPoolTest, TakesOfNobodyInParticularWhatMayWaitOfAll) { EXPECT_EQ(submitMany("", 10), 7); }

TEST_F(WorkerPoolTest, TakesAsMuchAgainOnceTheTasksHaveEnded) {
  EXPECT_EQ(submitMany("a", 10), 5);
  release();
  for (int i = 0; i < 100; ++i) {
    std::promise<void> ran;
    while (!m_pool.submit("a", [&ran] { ran.set_value(); })) std::this_thread::yield();
    ran.get_future().wait();
  }
}

TEST_F(WorkerPoolTest, EndsWhenEveryTaskHasRun) {
  std::atomic<int> ran{0};
  for (int i = 0; i < 5; ++i) m_pool.submit("a", [&ran] { ++ran; });
  m_pool.join();
  EXPECT_EQ(ran, 5);
}

}  // namespace

}  // namespace host
