#ifndef MIRN_BASE_OWNER_ACCESS_H
#define MIRN_BASE_OWNER_ACCESS_H

#include <filesystem>
#include <string>

/// Files that only their owner may read, by the means of the system; one source a system. All throw
/// `std::runtime_error` with the system's reason.

/// Whether the system lets anyone read or write the file beside its owner and who administers the machine.
bool othersMayReach(const std::filesystem::path& file);

/// The command by which a user ends that, such as "chmod 600 FILE".
std::string privacyRemedy(const std::filesystem::path& file);

/// Takes their access to the file from all but its owner and who administers the machine.
void closeToOthers(const std::filesystem::path& file);

/// Makes a directory for its owner alone; one that is there already stays as it is.
void makePrivateDirectory(const std::filesystem::path& directory);

#endif
