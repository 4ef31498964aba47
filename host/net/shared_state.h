#ifndef MIRN_HOST_NET_SHARED_STATE_H
#define MIRN_HOST_NET_SHARED_STATE_H

#include "api/api_service.h"
#include "http/host_names.h"
#include "net/connections.h"
#include "net/lanes.h"
#include "service_limits.h"

namespace host {

/// What all connections share. Outlives them.
struct SharedState {
  const ApiService& service;
  const Limits limits;
  const HostNames names;
  const bool logRequests;
  Connections connections;
  Lanes lanes;
};

}  // namespace host

#endif
