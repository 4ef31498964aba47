#ifndef MIRN_CLI_COMMANDS_WHAT_IF_H
#define MIRN_CLI_COMMANDS_WHAT_IF_H

#include <cstdint>
#include <string>
#include <vector>

#include "commands/context.h"

namespace mirnctl {

/// Tells what would come of disks that fail or are pulled out: "fail DISK", "pull DISK", "wait TIME", one
/// behind the other. Raises `Failure`.
void whatIf(const Context& context, const std::vector<std::string>& words);

/// "90", "90s", "15m", "2h" or "7d" in seconds. Raises `Failure`.
std::int64_t secondsOf(const std::string& text);

}  // namespace mirnctl

#endif
