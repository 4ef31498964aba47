#ifndef MIRN_SESSION_SESSION_LOCK_WAITS_H
#define MIRN_SESSION_SESSION_LOCK_WAITS_H

#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>
#include <boost/thread/thread.hpp>

#include "mirn_exception.h"
#include "session_locks.h"
#include "session_messages.h"

/// The definitions of session_locks.h, for whoever has a mutex to use them with.

namespace session_lock_waits {

using Uninterrupted = boost::this_thread::disable_interruption;

/// A monotonic clock, so that setting the machine's time neither cuts a wait short nor draws it out.
template <class Ownership>
Ownership acquire(typename Ownership::mutex_type& mutex, std::int64_t seconds) {
  const Uninterrupted wait;
  Ownership ownership(mutex, boost::chrono::steady_clock::now() + boost::chrono::seconds(seconds));
  if (!ownership.owns_lock()) throw MirnException(kErrorOperationFailed, kMsgSessionTimeout);
  return ownership;
}

template <class Mutex>
boost::upgrade_to_unique_lock<Mutex> steppedUp(boost::upgrade_lock<Mutex>& ownership) {
  const Uninterrupted wait;
  return boost::upgrade_to_unique_lock<Mutex>(ownership);
}

}  // namespace session_lock_waits

template <class Mutex>
boost::shared_lock<Mutex> acquireShared(Mutex& mutex, std::int64_t seconds) {
  return session_lock_waits::acquire<boost::shared_lock<Mutex>>(mutex, seconds);
}

template <class Mutex>
boost::unique_lock<Mutex> acquireUnique(Mutex& mutex, std::int64_t seconds) {
  return session_lock_waits::acquire<boost::unique_lock<Mutex>>(mutex, seconds);
}

template <class Mutex>
boost::upgrade_lock<Mutex> acquireUpgrade(Mutex& mutex, std::int64_t seconds) {
  return session_lock_waits::acquire<boost::upgrade_lock<Mutex>>(mutex, seconds);
}

template <class Mutex>
boost::upgrade_lock<Mutex> acquireUpgradeUntimed(Mutex& mutex) {
  const session_lock_waits::Uninterrupted wait;
  return boost::upgrade_lock<Mutex>(mutex);
}

template <class Mutex>
ExclusiveStepOf<Mutex>::ExclusiveStepOf(boost::upgrade_lock<Mutex>& ownership)
    : m_exclusive(session_lock_waits::steppedUp(ownership)) {}

#endif
