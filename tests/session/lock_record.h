#ifndef MIRN_TESTS_SESSION_LOCK_RECORD_H
#define MIRN_TESTS_SESSION_LOCK_RECORD_H

#include <functional>
#include <string>
#include <vector>

#include "session_locks.h"

/// What sessions ask of their lock, in a test program that links this in place of the session's own waits.
/// Ownership is real; but nobody waits for it, whatever the limit: what is not free is a time-out at once.
///
/// One a process, for one thread at a time.
class LockRecord {
 public:
  static LockRecord& instance();

  /// Forgets everything.
  void reset();

  /// What was asked for so far, such as "shared 30", "unique 30", "upgrade 30", "upgrade for ever" or
  /// "exclusive". Empty afterwards.
  std::vector<std::string> take();

  /// Runs once, when a session asks for its lock the next time and does not have it yet. Before it runs, the
  /// lock is asked for, and what it does is not recorded.
  void atTheNextRequest(std::function<void()> hook);

  /// Which ownership of the lock last asked for is held at this moment: "none", "shared", "upgrade" or
  /// "exclusive". Upgrade ownership stands above shared.
  std::string held() const;

  /// For those who stand in for the session's waits.
  void note(SessionMutex& mutex, const std::string& request);

 private:
  SessionMutex* m_mutex = nullptr;
  std::vector<std::string> m_requests;
  std::function<void()> m_hook;
};

#endif
