#ifndef MIRN_CLI_COMMANDS_LOGIN_H
#define MIRN_CLI_COMMANDS_LOGIN_H

#include "commands/command.h"

namespace mirnctl {

/// Takes a token, a sign-in code or the address with one, a line of the terminal's input, which shows nothing
/// of it. One that the service takes goes into a file for its owner alone, and that into the profile which
/// the line names, else "default", with where the service is. Raises `Failure`.
void logIn(const Start& start);

}  // namespace mirnctl

#endif
