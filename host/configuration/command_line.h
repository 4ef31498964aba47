#ifndef MIRN_HOST_CONFIGURATION_COMMAND_LINE_H
#define MIRN_HOST_CONFIGURATION_COMMAND_LINE_H

#include <string>
#include <vector>

#include "configuration/setting.h"

namespace host {

/// The settings on a command line. Options stand there in full, so that what a script says today means the
/// same when another one is added. Raises `UsageError`.
std::vector<Setting> readCommandLine(const std::vector<std::string>& arguments);

/// Every option with its help and default, group after group.
std::string commandLineHelp();

}  // namespace host

#endif
