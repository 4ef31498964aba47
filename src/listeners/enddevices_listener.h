#ifndef MIRN_LISTENERS_ENDDEVICES_LISTENER_H
#define MIRN_LISTENERS_ENDDEVICES_LISTENER_H

#include "base_listener.h"
#include "read_interface.h"

/// The list of all end devices: the one read of disks. The constructor is the route table. The pointers are
/// views of one session that outlives the listener.
class EndDevicesListener : public BaseListener {
 public:
  explicit EndDevicesListener(IMirnSession* session);

 private:
  IMirnSession* m_session;
};

#endif
