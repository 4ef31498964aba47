#ifndef MIRN_HOST_INSIGHT_READINESS_ENDPOINT_H
#define MIRN_HOST_INSIGHT_READINESS_ENDPOINT_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// "readiness": how ready the machine is for the next fault.
void addReadinessEndpoint(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
