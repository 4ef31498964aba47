#ifndef MIRN_SESSION_SESSION_MUTEX_H
#define MIRN_SESSION_SESSION_MUTEX_H

#include <boost/thread/shared_mutex.hpp>
#include <chrono>

#include "reader_turns.h"

// NOLINTBEGIN(readability-identifier-naming)
/// A shared mutex with upgrade ownership whose readers and exchanges take turns: readers who wait while one
/// exchange goes on come in before the next, however fast that follows. A waiting writer shuts the door on
/// new readers, so that none starves.
///
/// The functions are those that Boost.Thread's locks ask a mutex for, see `boost::shared_mutex`.
class SessionMutex {
 public:
  /// An exchange waits no longer than `courtesy` for readers to come in.
  explicit SessionMutex(std::chrono::microseconds courtesy = std::chrono::milliseconds(5))
      : m_courtesy(courtesy) {}

  bool try_lock_shared() { return m_mutex.try_lock_shared(); }
  template <class Time>
  bool try_lock_shared_until(const Time& time) {
    if (m_mutex.try_lock_shared()) return true;
    const ReaderTurns::Turn turn = m_turns.beginWaiting();
    const bool isIn = m_mutex.try_lock_shared_until(time);
    m_turns.endWaiting(turn);
    return isIn;
  }
  void unlock_shared() { m_mutex.unlock_shared(); }

  bool try_lock() { return m_mutex.try_lock(); }
  template <class Time>
  bool try_lock_until(const Time& time) {
    return m_mutex.try_lock_until(time);
  }
  void unlock() {
    m_turns.letIn();
    m_mutex.unlock();
  }

  void lock_upgrade() { m_mutex.lock_upgrade(); }
  bool try_lock_upgrade() { return m_mutex.try_lock_upgrade(); }
  template <class Time>
  bool try_lock_upgrade_until(const Time& time) {
    return m_mutex.try_lock_upgrade_until(time);
  }
  void unlock_upgrade() { m_mutex.unlock_upgrade(); }

  void unlock_upgrade_and_lock() {
    m_turns.awaitThoseDue(m_courtesy);
    m_mutex.unlock_upgrade_and_lock();
  }
  void unlock_and_lock_upgrade() {
    m_turns.letIn();
    m_mutex.unlock_and_lock_upgrade();
  }

 private:
  boost::shared_mutex m_mutex;
  ReaderTurns m_turns;
  const std::chrono::microseconds m_courtesy;
};
// NOLINTEND(readability-identifier-naming)

#endif
