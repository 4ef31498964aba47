#ifndef MIRN_LISTENERS_RAIDS_LISTENER_H
#define MIRN_LISTENERS_RAIDS_LISTENER_H

#include "base_listener.h"
#include "read_interface.h"

/// What the RAID engines of the machine can do. The constructor is the route table. The pointers are views of
/// one session that outlives the listener.
class RaidsListener : public BaseListener {
 public:
  explicit RaidsListener(IMirnSession* session);

 private:
  IMirnSession* m_session;
};

#endif
