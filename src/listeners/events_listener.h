#ifndef MIRN_LISTENERS_EVENTS_LISTENER_H
#define MIRN_LISTENERS_EVENTS_LISTENER_H

#include "base_listener.h"

/// The events of the last seconds, from the module-wide journal. The constructor is the route table.
class EventsListener : public BaseListener {
 public:
  EventsListener();
};

#endif
