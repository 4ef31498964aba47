#ifndef MIRN_CLI_DESTINATION_PROFILE_FILE_H
#define MIRN_CLI_DESTINATION_PROFILE_FILE_H

#include <filesystem>
#include <map>
#include <string>

namespace mirnctl {

/// `text`, a file of profiles, with these values in the section `name`, which is added where it is not there.
/// Everything else stays as it stands: other sections, other keys, comments.
std::string withProfile(const std::string& text, const std::string& name,
                        const std::map<std::string, std::string>& values);

/// Raises `Failure` for a name that cannot be a file's, too.
void requireProfileName(const std::string& name);

/// Puts a token into a file of its own, for its owner alone, and its name with the service's into the profile
/// `name` of `configuration`. Folders that are not there are made, the last for its owner alone. Each file is
/// there whole or not at all. Raises `Failure`.
void saveProfile(const std::filesystem::path& configuration, const std::string& name,
                 const std::string& token, std::map<std::string, std::string> values);

}  // namespace mirnctl

#endif
