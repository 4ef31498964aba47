#include "guarded_session.h"

#include <utility>

GuardedSession::GuardedSession(MirnSession& session, std::function<void()> condition)
    : m_session(session), m_condition(std::move(condition)) {}

bool GuardedSession::setLocateTimeout(std::int64_t seconds) {
  m_condition();
  return m_session.setLocateTimeout(seconds);
}
