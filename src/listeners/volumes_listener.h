#ifndef MIRN_LISTENERS_VOLUMES_LISTENER_H
#define MIRN_LISTENERS_VOLUMES_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// Volumes: the list, creation, deletion and all changes. The constructor is the route table. The pointers
/// are views of one session that outlives the listener.
class VolumesListener : public BaseListener {
 public:
  VolumesListener(IMirnSession* session, IMirnVolumesActions* actions);

 private:
  IMirnSession* m_session;
  IMirnVolumesActions* m_actions;
};

#endif
