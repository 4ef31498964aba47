#ifndef MIRN_TESTS_HOST_IDENTITY_OPEN_TO_OTHERS_H
#define MIRN_TESTS_HOST_IDENTITY_OPEN_TO_OTHERS_H

#include <filesystem>

namespace host {

/// Lets others than the owner read the file; one source a system.
void openToOthers(const std::filesystem::path& file);

}  // namespace host

#endif
