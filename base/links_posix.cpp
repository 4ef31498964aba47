#include "links.h"

#include <cerrno>
#include <system_error>

#include "system_reason.h"

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;  // as many as the system itself follows

}  // namespace

fs::path behindLinks(const fs::path& path) {
  fs::path file = path;
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(file, error)); ++links) {
    errno = ELOOP;
    if (links == kMostLinks) throw lastSystemFailure();
    const fs::path next = fs::read_symlink(file, error);
    errno = error.value();
    if (error) throw lastSystemFailure();
    file = file.parent_path() / next;
  }
  return file;
}
