#ifndef MIRN_CLI_DESTINATION_PRIVATE_FILE_H
#define MIRN_CLI_DESTINATION_PRIVATE_FILE_H

#include <filesystem>

namespace mirnctl {

/// Raises `Failure` for a file that others than its owner may read or change: what is in there is no secret.
void requirePrivate(const std::filesystem::path& file);

}  // namespace mirnctl

#endif
