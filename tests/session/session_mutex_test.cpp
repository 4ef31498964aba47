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

/// A reader that comes while somebody has the mutex alone.
class WaitingReader {
 public:
  explicit WaitingReader(SessionMutex& mutex) {
    isWaiting = false;
    m_thread = std::thread([this, &mutex] {
      if (!mutex.try_lock_shared_until(later())) return;
      m_hasRead = true;
      mutex.unlock_shared();
    });
    while (!isWaiting) std::this_thread::yield();
  }
  WaitingReader(const WaitingReader&) = delete;
  WaitingReader& operator=(const WaitingReader&) = delete;
  ~WaitingReader() { m_thread.join(); }

  bool hasRead() const { return m_hasRead; }

 private:
  std::atomic<bool> m_hasRead{false};
  std::thread m_thread;
};

TEST(SessionMutex, AReaderThatWaitsThroughAnExchangeComesInBeforeTheNext) {
  SessionMutex mutex(kPatient);
  mutex.lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  const WaitingReader reader(mutex);
  mutex.unlock_and_lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  EXPECT_TRUE(reader.hasRead());
  mutex.unlock();
}

TEST(SessionMutex, AReaderThatWaitsThroughTheFirstPictureComesInBeforeAnExchange) {
  SessionMutex mutex(kPatient);
  ASSERT_TRUE(mutex.try_lock());
  const WaitingReader reader(mutex);
  mutex.unlock();
  mutex.lock_upgrade();
  mutex.unlock_upgrade_and_lock();
  EXPECT_TRUE(reader.hasRead());
  mutex.unlock();
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
