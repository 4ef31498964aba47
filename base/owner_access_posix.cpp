#include <sys/stat.h>

#include <cerrno>

#include "owner_access.h"
#include "system_reason.h"

namespace {

constexpr mode_t kOwnerDirectory = S_IRWXU;
constexpr mode_t kOwnerFile = S_IRUSR | S_IWUSR;

}  // namespace

bool othersMayReach(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) throw lastSystemFailure();
  return (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
}

std::string privacyRemedy(const std::filesystem::path& file) { return "chmod 600 " + file.string(); }

void closeToOthers(const std::filesystem::path& file) {
  if (chmod(file.c_str(), kOwnerFile) != 0) throw lastSystemFailure();
}

void makePrivateDirectory(const std::filesystem::path& directory) {
  if (mkdir(directory.c_str(), kOwnerDirectory) != 0 && errno != EEXIST) throw lastSystemFailure();
}
