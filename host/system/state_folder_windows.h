#ifndef MIRN_HOST_SYSTEM_STATE_FOLDER_WINDOWS_H
#define MIRN_HOST_SYSTEM_STATE_FOLDER_WINDOWS_H

#include <filesystem>

namespace host {

/// Where the host keeps its state when it runs for the machine and not for a user: `Mirn` in the machine's
/// folder of program data. Raises `std::runtime_error` with the system's reason.
std::filesystem::path stateFolder();

/// Makes `folder` for the system and the administrators alone, who also come to own it; what is made in it
/// later is theirs, too. One that is there already is taken when it belongs to one of them, or to the user of
/// this process. Raises `std::runtime_error`.
void makeStateFolder(const std::filesystem::path& folder);

}  // namespace host

#endif
