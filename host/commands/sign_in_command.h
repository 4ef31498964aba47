#ifndef MIRN_HOST_COMMANDS_SIGN_IN_COMMAND_H
#define MIRN_HOST_COMMANDS_SIGN_IN_COMMAND_H

#include <ostream>
#include <string>
#include <vector>

namespace host {

/// `mirn-host sign-in ...`: asks a running host over its Unix socket for a sign-in code, and prints the
/// address that takes it. `arguments` are what stands behind "sign-in". Raises `UsageError`, and
/// `std::runtime_error` when there is no host or it refuses. One source a system.
void runSignInCommand(const std::vector<std::string>& arguments, std::ostream& out);

}  // namespace host

#endif
