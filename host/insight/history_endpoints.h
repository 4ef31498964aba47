#ifndef MIRN_HOST_INSIGHT_HISTORY_ENDPOINTS_H
#define MIRN_HOST_INSIGHT_HISTORY_ENDPOINTS_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// What has happened, under "history".
void addHistoryEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
