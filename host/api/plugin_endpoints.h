#ifndef MIRN_HOST_API_PLUGIN_ENDPOINTS_H
#define MIRN_HOST_API_PLUGIN_ENDPOINTS_H

#include <string>
#include <vector>

#include "answers/json_reader.h"
#include "api/change_plan.h"
#include "api/endpoint_table.h"
#include "plugin_interface.h"
#include "revisions/revisions.h"

namespace host {

/// Adds what `plugin`, which outlives the table and handles `keys`, can be asked, under "api" and its
/// version. A plug-in that describes itself gets an endpoint for each of its routes, with its id and role,
/// and no other request reaches it. Of another one every path below its keys can be asked: GET observes, and
/// everything else changes and takes an administrator. `bodies` bounds what a body holds.
///
/// The reads of a described plug-in are kept and waited for by `revisions`, the plug-in's own, which outlive
/// the table; without them each one is a call. What its changes would do `plans` tell, where there are some.
///
/// Raises `std::runtime_error` when a key of the plug-in begins with an address that is the host's own.
void addPluginEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                        const std::vector<std::wstring>& keys, const JsonBounds& bodies,
                        Revisions* revisions = nullptr, const ChangePlans& plans = {});

}  // namespace host

#endif
