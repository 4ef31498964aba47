#ifndef MIRN_HOST_CONFIGURATION_OPTION_TABLE_H
#define MIRN_HOST_CONFIGURATION_OPTION_TABLE_H

#include <string>
#include <vector>

#include "configuration/option.h"

namespace host {

/// Every option that this system has, in the order in which a reader is told of them, group after group. The
/// command line, its help, the configuration file and the manual pages come from here.
const std::vector<Option>& optionTable();

/// The row of that name; null where there is none.
const Option* findOption(const std::string& name);

/// The heading of a group, such as "Threads and bounds".
std::string headingOf(OptionGroup group);

}  // namespace host

#endif
