#ifndef MIRN_BASE_PROCESS_START_WINDOWS_H
#define MIRN_BASE_PROCESS_START_WINDOWS_H

#include <string>
#include <vector>

/// The arguments behind the program's name on a command line, as UTF-8; half a surrogate pair becomes U+FFFD.
/// Raises `std::runtime_error` with the system's reason.
std::vector<std::string> argumentsOn(const std::wstring& commandLine);

#endif
