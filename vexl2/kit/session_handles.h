#ifndef MIRN_VEXL2_KIT_SESSION_HANDLES_H
#define MIRN_VEXL2_KIT_SESSION_HANDLES_H

#include "refusal.h"

namespace vexl2 {

/// All handles are of one number space: sessions and subscriptions take theirs from here upwards, objects
/// stay below.
constexpr Handle kFirstSessionHandle = 0x80000000U;

/// Gives handles to sessions and subscriptions, none of them twice. The owner guards it.
class SessionHandles {
 public:
  explicit SessionHandles(Handle first = kFirstSessionHandle) : m_next(first) {}

  /// Refused with 1 when all have been given.
  Handle take() {
    require(m_next != 0, VEX_STATUS_NO_SESSION_LEFT);
    return m_next++;
  }

 private:
  Handle m_next;
};

}  // namespace vexl2

#endif
