#include "session_mutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>
#include <boost/chrono/time_point.hpp>
#include <chrono>
#include <thread>

namespace {

constexpr std::chrono::minutes kPatient(10);
std::atomic<bool> isWaiting{false};

/// The time is asked for by who waits, and by nobody else.
struct ClockOfWhoWaits {
  using duration = boost::chrono::steady_clock::duration;
  using rep = duration::rep;
  using period = duration::period;
  using time_point = boost::chrono::time_point<ClockOfWhoWaits>;

  static time_point now() {
    isWaiting = true;
    return time_point(boost::chrono::steady_clock::now().time_since_epoch());
  }
};

ClockOfWhoWaits::time_point later() {
  return ClockOfWhoWaits::time_point(boost::chrono::steady_clock::now().time_since_epoch() +
                                     boost::chrono::minutes(10));
}

TEST(SessionMutex, AReaderThatWaitsThroughAnExchangeComesInBeforeTheNext) {
  SessionMutex mutex(kPatient);
  std::atomic<bool> hasRead{false};
  isWaiting = false;
  mutex.lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  std::thread reader([&] {
    if (!mutex.try_lock_shared_until(later())) return;
    hasRead = true;
    mutex.unlock_shared();
  });
  while (!isWaiting) std::this_thread::yield();
  mutex.unlock_and_lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  EXPECT_TRUE(hasRead);
  mutex.unlock();
  reader.join();
}

TEST(SessionMutex, AReaderThatWaitsThroughTheFirstPictureComesInBeforeAnExchange) {
  SessionMutex mutex(kPatient);
  std::atomic<bool> hasRead{false};
  isWaiting = false;
  ASSERT_TRUE(mutex.try_lock());
  std::thread reader([&] {
    if (!mutex.try_lock_shared_until(later())) return;
    hasRead = true;
    mutex.unlock_shared();
  });
  while (!isWaiting) std::this_thread::yield();
  mutex.unlock();
  mutex.lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  EXPECT_TRUE(hasRead);
  mutex.unlock();
  reader.join();
}

TEST(SessionMutex, AnExchangeDoesNotWaitForWhoGaveUp) {
  SessionMutex mutex(kPatient);
  mutex.lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  std::thread([&] { EXPECT_FALSE(mutex.try_lock_shared_until(boost::chrono::steady_clock::now())); }).join();
  mutex.unlock_and_lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  EXPECT_FALSE(mutex.try_lock_shared());
  mutex.unlock();
}

}  // namespace
