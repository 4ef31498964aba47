#ifndef MIRN_HOST_INSIGHT_INSIGHT_READ_H
#define MIRN_HOST_INSIGHT_INSIGHT_READ_H

#include <string>
#include <utility>

#include "api/endpoint.h"

namespace host {

/// An operation that reads, for whoever may observe.
inline ApiEndpoint insightRead(std::string operation, std::wstring path) {
  ApiEndpoint endpoint;
  endpoint.operation = std::move(operation);
  endpoint.method = "GET";
  endpoint.path = std::move(path);
  endpoint.role = Role::kObserve;
  endpoint.lane = Lane::kReads;
  return endpoint;
}

}  // namespace host

#endif
