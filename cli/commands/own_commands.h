#ifndef MIRN_CLI_COMMANDS_OWN_COMMANDS_H
#define MIRN_CLI_COMMANDS_OWN_COMMANDS_H

#include <vector>

#include "commands/command.h"

namespace mirnctl {

/// The commands that are not of the document. They go ahead of those of the same name.
std::vector<Command> ownCommands(const ApiDocument& document);

}  // namespace mirnctl

#endif
