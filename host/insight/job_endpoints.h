#ifndef MIRN_HOST_INSIGHT_JOB_ENDPOINTS_H
#define MIRN_HOST_INSIGHT_JOB_ENDPOINTS_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// Work on volumes, under "jobs": what runs, what has ended, and how it went.
void addJobEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
