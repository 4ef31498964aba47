#ifndef MIRN_HOST_COMMANDS_FIRST_CONFIGURATION_H
#define MIRN_HOST_COMMANDS_FIRST_CONFIGURATION_H

#include <filesystem>
#include <string>

namespace host {

/// What an administrator finds in the configuration file at first: the module, the one library in the folder
/// of libraries, if it is the only one, and all other options in comments.
std::string firstConfiguration(const std::filesystem::path& module, const std::filesystem::path& libraries);

/// Writes that where no file is yet. Raises `std::runtime_error`.
void writeFirstConfiguration(const std::filesystem::path& file, const std::string& text);

}  // namespace host

#endif
