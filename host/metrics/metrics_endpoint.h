#ifndef MIRN_HOST_METRICS_METRICS_ENDPOINT_H
#define MIRN_HOST_METRICS_METRICS_ENDPOINT_H

#include <memory>
#include <optional>
#include <string>

#include "api/endpoint_table.h"
#include "api/own_endpoints.h"
#include "api/request_counts.h"
#include "plugin_interface.h"
#include "revisions/revisions.h"
#include "system/health_monitor.h"

namespace insight {
class InsightMetrics;
}

namespace host {

/// What there is to measure. All that it refers to outlives the table.
struct Measured {
  std::string version;  ///< Of the host.
  const ovra::plugin_interface& plugin;
  const std::optional<LibraryDescription>& library;
  const HealthMonitor& monitor;
  const RequestCounts& requests;
  const Revisions* revisions;                        ///< Null where the plug-in tells none.
  std::shared_ptr<insight::InsightMetrics> insight;  ///< Null where insight cannot read the plug-in.
};

/// "metrics", for whoever may observe. Asks neither the plug-in nor its library anything.
void addMetricsEndpoint(EndpointTable& table, const Measured& measured);

}  // namespace host

#endif
