#include "identity/private_text.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "owner_access.h"

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kMaxSize = 1 << 20;

void makeDirectories(const fs::path& directory) {
  if (directory.empty() || fs::exists(directory)) return;
  makeDirectories(directory.parent_path());
  makePrivateDirectory(directory);
}

}  // namespace

std::optional<std::string> readPrivateText(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return {};
  if (!fs::status_known(status)) throw UnreadableFile(error.message());
  if (status.type() != fs::file_type::regular) throw std::runtime_error("is not a regular file");
  if (othersMayReach(path)) {
    throw std::runtime_error("others may read or write it (" + privacyRemedy(path) + " helps)");
  }
  if (fs::file_size(path) > kMaxSize) throw std::runtime_error("is larger than a mebibyte");
  std::ifstream file(path);
  if (!file) throw UnreadableFile("cannot be read");
  return std::string{std::istreambuf_iterator<char>(file), {}};
}

void makeFolderOf(const fs::path& file) { makeDirectories(file.parent_path()); }

}  // namespace host
