#ifndef MIRN_LISTENERS_ARRAYS_LISTENER_H
#define MIRN_LISTENERS_ARRAYS_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// Arrays, their members, growth and write cache. The constructor is the route table. The pointers are views
/// of one session that outlives the listener.
class ArraysListener : public BaseListener {
 public:
  ArraysListener(IMirnSession* session, IMirnArraysActions* actions);

 private:
  IMirnSession* m_session;
  IMirnArraysActions* m_actions;
};

#endif
