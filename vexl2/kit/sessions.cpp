#include "sessions.h"

namespace vexl2 {

Handle Sessions::open() {
  require(m_open.size() < kMaxOpen, VEX_STATUS_NO_SESSION_LEFT);
  return *m_open.insert(m_handles.take()).first;
}

void Sessions::close(Handle session) { require(m_open.erase(session) == 1, VEX_STATUS_INVALID_SESSION); }

void Sessions::requireOpen(Handle session) const {
  require(m_open.count(session) == 1, VEX_STATUS_INVALID_SESSION);
}

}  // namespace vexl2
