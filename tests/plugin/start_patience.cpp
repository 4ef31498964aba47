#include "plugin/start_patience.h"

#include "session_lock_waits.h"

std::optional<std::int64_t> startPatience;

// These take the place of those in the library: one with the tests' limit, all others as they are.

template <>
UniqueOwnership acquireUnique(SessionMutex& mutex, std::int64_t seconds) {
  return session_lock_waits::acquire<UniqueOwnership>(mutex, startPatience.value_or(seconds));
}

template SharedOwnership acquireShared(SessionMutex& mutex, std::int64_t seconds);
template UpgradeOwnership acquireUpgrade(SessionMutex& mutex, std::int64_t seconds);
template UpgradeOwnership acquireUpgradeUntimed(SessionMutex& mutex);
template class ExclusiveStepOf<SessionMutex>;
