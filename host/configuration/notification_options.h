#ifndef MIRN_HOST_CONFIGURATION_NOTIFICATION_OPTIONS_H
#define MIRN_HOST_CONFIGURATION_NOTIFICATION_OPTIONS_H

#include <vector>

#include "configuration/option.h"

namespace host {

/// The rows of who is told of alarms. They stand in the configuration file only: a command line is for all
/// users of the machine to see.
std::vector<Option> notificationOptions();

}  // namespace host

#endif
