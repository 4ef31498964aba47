#ifndef MIRN_HOST_SYSTEM_PROCESS_WINDOWS_H
#define MIRN_HOST_SYSTEM_PROCESS_WINDOWS_H

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// The executable of this process. Raises `std::runtime_error` with the system's reason.
std::filesystem::path programFile();

/// The command line, at whose head stands `program`, of which a process reads just these arguments, UTF-8 as
/// they are. Raises `std::range_error` on one that is no UTF-8.
std::wstring commandLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments);

}  // namespace host

#endif
