#ifndef MIRN_LISTENERS_DISKS_LISTENER_H
#define MIRN_LISTENERS_DISKS_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// State changes of single disks. The constructor is the route table. The pointers are views of one session
/// that outlives the listener.
class DisksListener : public BaseListener {
 public:
  DisksListener(IMirnSession* session, IMirnDisksActions* actions);

 private:
  IMirnSession* m_session;
  IMirnDisksActions* m_actions;
};

#endif
