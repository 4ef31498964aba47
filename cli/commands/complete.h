#ifndef MIRN_CLI_COMMANDS_COMPLETE_H
#define MIRN_CLI_COMMANDS_COMPLETE_H

#include <string>
#include <vector>

#include "commands/command.h"

namespace mirnctl {

/// Writes what may stand in the place of the last of `words`, the words of a command line without the
/// program's name. A candidate is a line: the whole word, a tab, what it is; ":" alone stands for any file.
/// Names of objects come from the service, unless it answers late or not at all. Raises nothing, and tells
/// nothing else.
void complete(const ApiDocument& document, const Surroundings& surroundings, const ServiceMaker& makeService,
              const std::vector<std::string>& words, Terminal& terminal);

/// The script that has a shell ask for candidates; `shell` is one of `completedShells()`.
std::string_view completionScript(const std::string& shell);
const std::vector<std::string>& completedShells();

}  // namespace mirnctl

#endif
