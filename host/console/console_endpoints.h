#ifndef MIRN_HOST_CONSOLE_CONSOLE_ENDPOINTS_H
#define MIRN_HOST_CONSOLE_CONSOLE_ENDPOINTS_H

#include "api/endpoint_table.h"
#include "console/console_files.h"

namespace host {

/// Adds the page for people under "/" and what it is made of under "/console". They are there for everybody,
/// without a token: they hold nothing of the machine. No path of a client's becomes one of a file system.
void addConsoleEndpoints(EndpointTable& table, const ConsoleFiles& files);

}  // namespace host

#endif
