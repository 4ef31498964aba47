#ifndef MIRN_HOST_SYSTEM_PROCESS_H
#define MIRN_HOST_SYSTEM_PROCESS_H

#include <string>
#include <vector>

namespace host {

/// What the system says of this process, and how it is left; one source a system.

/// What stands behind the program's name on the command line, as UTF-8. `argc` and `argv` are those of the
/// main function.
std::vector<std::string> programArguments(int argc, const char* const* argv);

/// Ends the process without another step of its code: threads may still be under way in it.
[[noreturn]] void leaveProcess(int status);

}  // namespace host

#endif
