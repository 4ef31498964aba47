#include "plugin/start_patience.h"

#include "session_locks.h"

std::optional<std::int64_t> startPatience;

/// The session's own, whose file this program compiles under this name.
UniqueOwnership acquireUniqueAsTheSession(SessionMutex& mutex, std::int64_t seconds);

UniqueOwnership acquireUnique(SessionMutex& mutex, std::int64_t seconds) {
  return acquireUniqueAsTheSession(mutex, startPatience.value_or(seconds));
}
