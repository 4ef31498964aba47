#include "session_locks.h"

#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>
#include <boost/thread/thread.hpp>

#include "mirn_exception.h"
#include "session_messages.h"

namespace {

using Uninterrupted = boost::this_thread::disable_interruption;

/// A monotonic clock, so that setting the machine's time neither cuts a wait short nor draws it out.
template <class Ownership>
Ownership acquire(SessionMutex& mutex, std::int64_t seconds) {
  const Uninterrupted wait;
  Ownership ownership(mutex, boost::chrono::steady_clock::now() + boost::chrono::seconds(seconds));
  if (!ownership.owns_lock()) throw MirnException(kErrorOperationFailed, kMsgSessionTimeout);
  return ownership;
}

boost::upgrade_to_unique_lock<SessionMutex> steppedUp(UpgradeOwnership& ownership) {
  const Uninterrupted wait;
  return boost::upgrade_to_unique_lock<SessionMutex>(ownership);
}

}  // namespace

SharedOwnership acquireShared(SessionMutex& mutex, std::int64_t seconds) {
  return acquire<SharedOwnership>(mutex, seconds);
}

UniqueOwnership acquireUnique(SessionMutex& mutex, std::int64_t seconds) {
  return acquire<UniqueOwnership>(mutex, seconds);
}

UpgradeOwnership acquireUpgrade(SessionMutex& mutex, std::int64_t seconds) {
  return acquire<UpgradeOwnership>(mutex, seconds);
}

UpgradeOwnership acquireUpgradeUntimed(SessionMutex& mutex) {
  const Uninterrupted wait;
  return UpgradeOwnership(mutex);
}

ExclusiveStep::ExclusiveStep(UpgradeOwnership& ownership) : m_exclusive(steppedUp(ownership)) {}
