#ifndef MIRN_HOST_OPENAPI_OPENAPI_ENDPOINTS_H
#define MIRN_HOST_OPENAPI_OPENAPI_ENDPOINTS_H

#include "api/endpoint_table.h"
#include "plugin_interface.h"

namespace host {

/// "openapi.json" and, for people, "docs": all that is in the table, these two included, which come last
/// therefore. For anybody. Made here; `plugin` is not asked later.
void addOpenApiEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin);

}  // namespace host

#endif
