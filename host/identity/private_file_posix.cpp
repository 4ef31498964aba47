#include "identity/private_file.h"

#include <sys/stat.h>

#include <cerrno>

#include "system_reason.h"

namespace host {

namespace {

constexpr mode_t kOwnerDirectory = S_IRWXU;

}  // namespace

const char* const kPrivacyRemedy = "chmod 600";

bool othersMayReach(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) throw lastSystemFailure();
  return (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
}

void makePrivateDirectory(const std::filesystem::path& directory) {
  if (mkdir(directory.c_str(), kOwnerDirectory) != 0 && errno != EEXIST) throw lastSystemFailure();
}

}  // namespace host
