#ifndef MIRN_HOST_SHARED_STATE_H
#define MIRN_HOST_SHARED_STATE_H

#include "host/api_service.h"
#include "host/connections.h"
#include "host/limits.h"
#include "host/worker_pool.h"

/// What all sessions share. Outlives them.
struct SharedState {
  const ApiService& service;
  const Limits limits;
  const bool logRequests;
  Connections connections;
  WorkerPool workers;
};

#endif
