#ifndef MIRN_CLI_MANUAL_MANUAL_PAGE_H
#define MIRN_CLI_MANUAL_MANUAL_PAGE_H

#include <string>
#include <vector>

#include "commands/command.h"

namespace mirnctl {

/// mirnctl(1) as text for troff with the macros "man". What it tells comes from the commands and the tables
/// of options and exit statuses. `date`, such as 2026-01-31, stands at the foot.
std::string manualPage(const std::vector<Command>& commands, const std::string& date);

}  // namespace mirnctl

#endif
