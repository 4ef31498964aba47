#ifndef MIRN_SESSION_SESSION_LOCKS_H
#define MIRN_SESSION_SESSION_LOCKS_H

#include <boost/thread/lock_types.hpp>
#include <cstdint>

#include "session_mutex.h"

/// The three kinds of ownership of the snapshot, and the step between two of them. Nothing else touches the
/// mutex itself.
///
/// None of the waits is an interruption point of Boost.Thread: a host may interrupt its own threads, and the
/// mutex would keep the mark of a writer that was thrown out of its wait. The interruption stays pending.
///
/// All that is here exists for `SessionMutex` alone. The waits are templates, defined in
/// session_lock_waits.h, so that a test can hand in a mutex that tells what it is asked for.

/// Reads: any number at once, beside one upgrade ownership.
using SharedOwnership = boost::shared_lock<SessionMutex>;
/// The first snapshot: alone.
using UniqueOwnership = boost::unique_lock<SessionMutex>;
/// Actions and refreshes: one at a time, beside readers.
using UpgradeOwnership = boost::upgrade_lock<SessionMutex>;

/// Steps up from upgrade to exclusive ownership, waiting without limit for readers to leave; steps down at
/// its end.
template <class Mutex>
class ExclusiveStepOf {
 public:
  explicit ExclusiveStepOf(boost::upgrade_lock<Mutex>& ownership);

 private:
  boost::upgrade_to_unique_lock<Mutex> m_exclusive;
};

using ExclusiveStep = ExclusiveStepOf<SessionMutex>;

/// Each waits at most `seconds` and then raises `MirnException` with "Mirn_OPERATION_FAILED" and
/// "Timeout on access to protected resource"; nothing has changed then.
template <class Mutex>
boost::shared_lock<Mutex> acquireShared(Mutex& mutex, std::int64_t seconds);
template <class Mutex>
boost::unique_lock<Mutex> acquireUnique(Mutex& mutex, std::int64_t seconds);
template <class Mutex>
boost::upgrade_lock<Mutex> acquireUpgrade(Mutex& mutex, std::int64_t seconds);

/// For the event thread: waits without limit.
template <class Mutex>
boost::upgrade_lock<Mutex> acquireUpgradeUntimed(Mutex& mutex);

#endif
