#include "subscriptions.h"

#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <thread>

namespace vexl2 {
namespace {

using std::chrono::milliseconds;
using Instant = Subscriptions::Instant;

constexpr milliseconds kLong{600000};  // far longer than a test may take

class SubscriptionsTest : public testing::Test {
 protected:
  Status wait(Handle subscription, milliseconds timeout = milliseconds(0)) {
    Subscriptions::Lock lock(m_mutex);
    return m_subscriptions.wait(lock, subscription, timeout, [&] {
      ++m_looks;
      return Instant::max();
    });
  }

  /// Waits in a thread of its own, and returns when that thread has looked and sleeps.
  std::future<Status> waitInBackground(Handle subscription) {
    const int before = looks();
    auto result = std::async(std::launch::async, [=] { return wait(subscription, kLong); });
    while (looks() == before) std::this_thread::yield();
    return result;
  }

  int looks() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_looks;
  }

  std::mutex m_mutex;
  SessionHandles m_handles;
  Subscriptions m_subscriptions{m_handles};
  int m_looks = 0;  // guarded by m_mutex
};

TEST_F(SubscriptionsTest, AreToldOnceOfWhatHasChanged) {
  const Handle subscription = m_subscriptions.add();
  EXPECT_EQ(wait(subscription), VEX_STATUS_TIMEOUT);
  m_subscriptions.tell();
  m_subscriptions.tell();
  EXPECT_EQ(wait(subscription), VEX_STATUS_SUCCESS);
  EXPECT_EQ(wait(subscription), VEX_STATUS_TIMEOUT);
}

TEST_F(SubscriptionsTest, AreToldEachOnItsOwnAndOfNothingBeforeTheirTime) {
  const Handle early = m_subscriptions.add();
  m_subscriptions.tell();
  const Handle late = m_subscriptions.add();
  EXPECT_EQ(wait(late), VEX_STATUS_TIMEOUT);
  EXPECT_EQ(wait(early), VEX_STATUS_SUCCESS);
}

TEST_F(SubscriptionsTest, ThatAreNoneAreRefused) {
  const Handle subscription = m_subscriptions.add();
  m_subscriptions.remove(subscription);
  for (const Handle none : {Handle{0}, subscription}) {
    try {
      wait(none);
      ADD_FAILURE() << none << " is taken";
    } catch (const Refusal& refusal) {
      EXPECT_EQ(refusal.status(), VEX_STATUS_INVALID_HANDLE);
    }
  }
  EXPECT_THROW(m_subscriptions.remove(subscription), Refusal);
}

TEST_F(SubscriptionsTest, WakeAtAChange) {
  auto waiter = waitInBackground(m_subscriptions.add());
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subscriptions.tell();
  }
  EXPECT_EQ(waiter.get(), VEX_STATUS_SUCCESS);
}

TEST_F(SubscriptionsTest, WakeWhenTheyAreRemoved) {
  const Handle subscription = m_subscriptions.add();
  auto waiter = waitInBackground(subscription);
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subscriptions.remove(subscription);
  }
  EXPECT_THROW(waiter.get(), Refusal);
}

TEST_F(SubscriptionsTest, AreToldOfTheEndAlsoWhenTheLibraryBeginsAnewBeforeTheyWake) {
  auto waiter = waitInBackground(m_subscriptions.add());
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subscriptions.clear();
    m_subscriptions.add();
  }
  EXPECT_EQ(waiter.get(), VEX_STATUS_NOT_INITIALIZED);
}

TEST_F(SubscriptionsTest, WaitNoLongerThanTheCap) {
  const Handle subscription = m_subscriptions.add();
  auto waiter = waitInBackground(subscription);
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subscriptions.cap(milliseconds(0));
  }
  EXPECT_EQ(waiter.get(), VEX_STATUS_TIMEOUT);
  EXPECT_EQ(wait(subscription, kLong), VEX_STATUS_TIMEOUT);
}

TEST_F(SubscriptionsTest, LookAgainWhenTheyAreAsked) {
  const Handle subscription = m_subscriptions.add();
  auto waiter = waitInBackground(subscription);
  const int before = looks();
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subscriptions.lookAgain();
  }
  while (looks() == before) std::this_thread::yield();
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_subscriptions.tell();
}

TEST_F(SubscriptionsTest, LookAgainWhenTheyHaveSaidTheyWould) {
  const Handle subscription = m_subscriptions.add();
  Subscriptions::Lock lock(m_mutex);
  const Status status = m_subscriptions.wait(lock, subscription, kLong, [&] {
    if (++m_looks == 3) m_subscriptions.tell();
    return Subscriptions::Clock::now();
  });
  EXPECT_EQ(status, VEX_STATUS_SUCCESS);
  EXPECT_EQ(m_looks, 3);
}

}  // namespace
}  // namespace vexl2
