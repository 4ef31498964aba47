#ifndef MIRN_HOST_NET_SHARED_STATE_H
#define MIRN_HOST_NET_SHARED_STATE_H

#include "api/api_service.h"
#include "api/request_counts.h"
#include "http/host_names.h"
#include "net/connections.h"
#include "net/event_loops.h"
#include "net/lanes.h"
#include "service_limits.h"

namespace host {

/// What all connections share. Outlives them.
struct SharedState {
  EventLoops& loops;
  const ApiService& service;
  const Limits limits;
  const HostNames names;
  const bool logRequests;
  Connections connections;
  Lanes lanes;
  RequestCounts* counts = nullptr;  ///< Null where nobody wants to know.
};

}  // namespace host

#endif
