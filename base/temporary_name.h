#ifndef MIRN_BASE_TEMPORARY_NAME_H
#define MIRN_BASE_TEMPORARY_NAME_H

#include <filesystem>

/// A path beside `target` that no other file has: the target's, random digits and an end of its own.
std::filesystem::path temporaryNameFor(const std::filesystem::path& target);

/// Whether `name` is such a name for a file called `target`; both without a folder.
bool isTemporaryName(const std::filesystem::path& name, const std::filesystem::path& target);

#endif
