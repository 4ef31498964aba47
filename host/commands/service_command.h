#ifndef MIRN_HOST_COMMANDS_SERVICE_COMMAND_H
#define MIRN_HOST_COMMANDS_SERVICE_COMMAND_H

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "options.h"

namespace host {

/// `mirn-host service install|remove|run ...`: puts the host among the services of the machine, takes it away
/// from there, or is it. `arguments` are what stands behind "service"; `serve` serves until the stop, and
/// gives the exit status. Raises `UsageError`, and `std::runtime_error` with the reason. One source a system.
int runServiceCommand(const std::vector<std::string>& arguments,
                      const std::function<int(const Options&)>& serve, std::ostream& out);

}  // namespace host

#endif
