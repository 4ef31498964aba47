#ifndef MIRN_BASE_PROCESS_START_H
#define MIRN_BASE_PROCESS_START_H

#include <optional>
#include <string>
#include <vector>

/// What this process was started with, as UTF-8; one source a system.

/// What stands behind the program's name on the command line. `argc` and `argv` are those of the main
/// function. Raises `std::runtime_error` with the system's reason.
std::vector<std::string> programArguments(int argc, const char* const* argv);

/// A variable of the environment; none where it is empty, too. Not while another thread changes it.
std::optional<std::string> environmentVariable(const std::string& name);

#endif
