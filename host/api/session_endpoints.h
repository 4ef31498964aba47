#ifndef MIRN_HOST_API_SESSION_ENDPOINTS_H
#define MIRN_HOST_API_SESSION_ENDPOINTS_H

#include <functional>
#include <string>

#include "api/endpoint_table.h"
#include "identity/admission.h"
#include "plugin_interface.h"

namespace host {

/// Sign-in under "session": a code becomes a session for anybody who has one; users of the machine get codes
/// over the Unix socket; a session ends by its own token; anybody is told who they are. `admission` outlives
/// the table. `url` tells where the host is asked, without a slash at its end.
void addSessionEndpoints(EndpointTable& table, const ovra::plugin_interface& plugin, Admission& admission,
                         std::function<std::string()> url);

/// The address that signs somebody in. The code stands behind '#', which browsers keep to themselves.
std::string signInAddress(const std::string& url, const std::string& code);

}  // namespace host

#endif
