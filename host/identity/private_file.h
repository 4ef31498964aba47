#ifndef MIRN_HOST_IDENTITY_PRIVATE_FILE_H
#define MIRN_HOST_IDENTITY_PRIVATE_FILE_H

#include <filesystem>

namespace host {

/// Files that only their owner may read, by the means of the system; one source a system. All throw
/// std::runtime_error with the system's reason.

/// Whether the system lets anyone read or write the file beside its owner and who administers the machine.
bool othersMayReach(const std::filesystem::path& file);

/// How a user ends that, such as "chmod 600".
extern const char* const kPrivacyRemedy;

/// Makes a directory for its owner alone; one that is there already stays as it is.
void makePrivateDirectory(const std::filesystem::path& directory);

}  // namespace host

#endif
