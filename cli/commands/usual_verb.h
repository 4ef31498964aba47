#ifndef MIRN_CLI_COMMANDS_USUAL_VERB_H
#define MIRN_CLI_COMMANDS_USUAL_VERB_H

#include <string>
#include <vector>

#include "commands/command.h"

namespace mirnctl {

/// The words of a command line, with what people leave out of them: a noun without a verb lists or shows
/// ("history", "actions volume Archive"), and a verb may be written as an option ("events --follow").
std::vector<std::string> withVerb(const std::vector<Command>& commands, std::vector<std::string> words);

}  // namespace mirnctl

#endif
