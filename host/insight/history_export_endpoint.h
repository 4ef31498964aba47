#ifndef MIRN_HOST_INSIGHT_HISTORY_EXPORT_ENDPOINT_H
#define MIRN_HOST_INSIGHT_HISTORY_EXPORT_ENDPOINT_H

#include <memory>

#include "api/endpoint_table.h"
#include "history/history.h"
#include "plugin_interface.h"

namespace host {

/// All of the history as lines of JSON, under "history/export".
void addHistoryExportEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                              std::shared_ptr<insight::History> history);

}  // namespace host

#endif
