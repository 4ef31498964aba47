#ifndef MIRN_LISTENERS_BASIC_LISTENER_H
#define MIRN_LISTENERS_BASIC_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// Health, version, rescan and the settings of the system, on the bare path key. The constructor is the route
/// table. The pointers are views of one session that outlives the listener.
class BasicListener : public BaseListener {
 public:
  BasicListener(IMirnSession* session, IMirnBasicActions* actions);

 private:
  IMirnSession* m_session;
  IMirnBasicActions* m_actions;
};

#endif
