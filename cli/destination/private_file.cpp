#include "destination/private_file.h"

#include "exit_status.h"
#include "owner_access.h"

namespace mirnctl {

void requirePrivate(const std::filesystem::path& file) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (!fs::exists(file, error) || error) {
    throw Failure(ExitStatus::kUsage, "the token file " + file.string() + " is not there");
  }
  if (othersMayReach(file)) {
    throw Failure(ExitStatus::kUsage, "others may read the token file " + file.string(), privacyRemedy(file));
  }
}

}  // namespace mirnctl
