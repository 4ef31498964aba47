#include "session_locks.h"

#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>

#include "mirn_exception.h"

namespace {

constexpr char kTimeout[] = "Timeout on access to protected resource";

/// A monotonic clock, so that setting the machine's time neither cuts a wait short nor draws it out.
template <class Ownership>
Ownership acquire(SessionMutex& mutex, std::int64_t seconds) {
  Ownership ownership(mutex, boost::chrono::steady_clock::now() + boost::chrono::seconds(seconds));
  if (!ownership.owns_lock()) throw MirnException(kErrorOperationFailed, kTimeout);
  return ownership;
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

UpgradeOwnership acquireUpgradeUntimed(SessionMutex& mutex) { return UpgradeOwnership(mutex); }
