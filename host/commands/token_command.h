#ifndef MIRN_HOST_COMMANDS_TOKEN_COMMAND_H
#define MIRN_HOST_COMMANDS_TOKEN_COMMAND_H

#include <ostream>
#include <string>
#include <vector>

namespace host {

/// `mirn-host token ...`: adds, lists and revokes tokens, also while a host runs. `arguments` are what stands
/// behind "token". What a script reads goes to `out`, faults of the table to `errors`. Raises `UsageError`,
/// and `std::runtime_error` when the table cannot be had or the name is not right.
void runTokenCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors);

}  // namespace host

#endif
