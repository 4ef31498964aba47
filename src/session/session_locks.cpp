#include "session_locks.h"

#include "session_lock_waits.h"

template SharedOwnership acquireShared(SessionMutex& mutex, std::int64_t seconds);
template UniqueOwnership acquireUnique(SessionMutex& mutex, std::int64_t seconds);
template UpgradeOwnership acquireUpgrade(SessionMutex& mutex, std::int64_t seconds);
template UpgradeOwnership acquireUpgradeUntimed(SessionMutex& mutex);
template class ExclusiveStepOf<SessionMutex>;
