#ifndef MIRN_SESSION_GUARDED_SESSION_H
#define MIRN_SESSION_GUARDED_SESSION_H

#include <cstdint>
#include <functional>

#include "mirn_session.h"

/// A session as another one, but for a condition on every change: it is looked at when the change is about to
/// be handed to the library or to the settings' store. Reads ask for nothing.
class GuardedSession : public SnapshotReads, public SessionActions {
 public:
  /// `condition` raises where it does not hold; the change is not made then, and what was raised passes to
  /// the caller. See `MirnSession::carryOut` on when it runs. `session` must outlive this one.
  GuardedSession(MirnSession& session, std::function<void()> condition);

  Picture picture() override { return m_session.picture(); }
  bool setLocateTimeout(std::int64_t seconds) override;
  std::int64_t getLocateTimeout() override { return m_session.getLocateTimeout(); }

 protected:
  void carryOut(const PreparedCall& call) override { m_session.carryOut(call, m_condition); }

 private:
  MirnSession& m_session;
  const std::function<void()> m_condition;
};

#endif
