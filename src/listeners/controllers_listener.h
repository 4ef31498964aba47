#ifndef MIRN_LISTENERS_CONTROLLERS_LISTENER_H
#define MIRN_LISTENERS_CONTROLLERS_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// Controllers, what hangs under each, and their two switches. The constructor is the route table. The
/// pointers are views of one session that outlives the listener.
class ControllersListener : public BaseListener {
 public:
  ControllersListener(IMirnControllersActions* actions, IMirnSession* session);

 private:
  IMirnControllersActions* m_actions;
  IMirnSession* m_session;
};

#endif
