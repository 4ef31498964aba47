#ifndef MIRN_HOST_INSIGHT_ALARM_ENDPOINTS_H
#define MIRN_HOST_INSIGHT_ALARM_ENDPOINTS_H

#include <memory>

#include "api/endpoint_table.h"
#include "insight/insight_desk.h"

namespace host {

/// What is wrong and was, under "alarms", and who has taken notice.
void addAlarmEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
