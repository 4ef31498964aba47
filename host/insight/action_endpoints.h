#ifndef MIRN_HOST_INSIGHT_ACTION_ENDPOINTS_H
#define MIRN_HOST_INSIGHT_ACTION_ENDPOINTS_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// What can be done with an object, and with which arguments, under "actions".
void addActionEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
