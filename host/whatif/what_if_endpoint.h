#ifndef MIRN_HOST_WHATIF_WHAT_IF_ENDPOINT_H
#define MIRN_HOST_WHATIF_WHAT_IF_ENDPOINT_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// "whatif": what would come of events, worked through on a twin of the machine as it is now.
void addWhatIfEndpoint(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
