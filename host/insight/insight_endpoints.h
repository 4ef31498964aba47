#ifndef MIRN_HOST_INSIGHT_INSIGHT_ENDPOINTS_H
#define MIRN_HOST_INSIGHT_INSIGHT_ENDPOINTS_H

#include <cstddef>
#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// What insight tells of the plug-in's machine: "health", "actions", "jobs", "alarms", "readiness",
/// "history", with "history/export", and "events/stream". At most so many listen to the stream at once.
void addInsightEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk,
                         std::size_t mostListeners);

}  // namespace host

#endif
