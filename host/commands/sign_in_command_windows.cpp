#include "commands/sign_in_command.h"
#include "options.h"

namespace host {

void runSignInCommand(const std::vector<std::string>&, std::ostream&) {
  throw UsageError(
      "\"sign-in\" is unknown: there is no Unix socket on Windows; a host that is started at a "
      "console prints an address to sign in");
}

}  // namespace host
