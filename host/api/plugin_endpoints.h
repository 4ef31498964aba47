#ifndef MIRN_HOST_API_PLUGIN_ENDPOINTS_H
#define MIRN_HOST_API_PLUGIN_ENDPOINTS_H

#include <cstddef>
#include <string>
#include <vector>

#include "api/endpoint_table.h"
#include "plugin_interface.h"

namespace host {

/// Adds what `plugin`, which outlives the table and handles `keys`, can be asked, under "api" and its
/// version. A plug-in that describes itself gets an endpoint for each of its routes, with its id and role,
/// and no other request reaches it. Of another one every path below its keys can be asked: GET observes, and
/// everything else changes and takes an administrator. A body is nested no deeper than `maxBodyDepth`.
///
/// Raises `std::runtime_error` when a key of the plug-in begins with an address that is the host's own.
void addPluginEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                        const std::vector<std::wstring>& keys, std::size_t maxBodyDepth);

}  // namespace host

#endif
