#ifndef MIRN_CLI_COMMANDS_COMMAND_LINE_H
#define MIRN_CLI_COMMANDS_COMMAND_LINE_H

#include <string>
#include <vector>

#include "commands/command.h"
#include "destination/profile.h"
#include "document/api_document.h"
#include "exit_status.h"
#include "terminal/terminal.h"

namespace mirnctl {

/// Does what a command line says, of which the program's name is not a part. Raises nothing: failures are
/// told on the terminal's `err`.
ExitStatus runCommand(const std::vector<std::string>& arguments, const ApiDocument& document,
                      const Surroundings& surroundings, const ServiceMaker& makeService, Terminal& terminal);

}  // namespace mirnctl

#endif
