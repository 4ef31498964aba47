#ifndef MIRN_HOST_METRICS_HOST_METRICS_H
#define MIRN_HOST_METRICS_HOST_METRICS_H

#include <optional>
#include <string>

#include "api/own_endpoints.h"
#include "api/request_counts.h"
#include "metric_text.h"
#include "plugin_interface.h"
#include "revisions/revisions.h"
#include "system/health_monitor.h"

namespace host {

/// What stays the same for as long as the host runs.
void writeFacts(MetricText& text, const std::string& version, const ovra::plugin_interface& plugin,
                const std::optional<LibraryDescription>& library);

/// Whether the host works, and is ready.
void writeVerdicts(MetricText& text, const HealthMonitor& monitor);

void writeRequests(MetricText& text, const RequestCounts& requests);

void writeKeptAnswers(MetricText& text, const Revisions& revisions);

}  // namespace host

#endif
