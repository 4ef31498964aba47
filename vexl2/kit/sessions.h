#ifndef MIRN_VEXL2_KIT_SESSIONS_H
#define MIRN_VEXL2_KIT_SESSIONS_H

#include <cstddef>
#include <set>

#include "session_handles.h"

namespace vexl2 {

/// The sessions that are open. The owner guards it.
class Sessions {
 public:
  static constexpr std::size_t kMaxOpen = 1024;

  /// `handles` outlives this.
  explicit Sessions(SessionHandles& handles) : m_handles(handles) {}

  /// Refused with 1 when as many are open as may be.
  Handle open();

  /// Both are refused with 8 when the session is not open.
  void close(Handle session);
  void requireOpen(Handle session) const;

  void clear() { m_open.clear(); }

 private:
  SessionHandles& m_handles;
  std::set<Handle> m_open;
};

}  // namespace vexl2

#endif
