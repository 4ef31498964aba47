#ifndef MIRN_HOST_CONFIGURATION_PLATFORM_OPTIONS_H
#define MIRN_HOST_CONFIGURATION_PLATFORM_OPTIONS_H

#include <string>
#include <vector>

#include "configuration/option.h"

namespace host {

/// The rows of the options that not every system has; one source a system.
std::vector<Option> platformOptions();

/// The lines of the help about the commands that not every system has.
std::string platformCommandHelp();

/// Why this system does not have the option of that name, such as ": there is no TLS on Windows"; empty for
/// one that no system has.
std::string whyMissing(const std::string& name);

}  // namespace host

#endif
