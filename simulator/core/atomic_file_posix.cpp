#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "core/atomic_file.h"

namespace simulator {
namespace {

bool writeAll(int file, const std::string& content) {
  std::size_t written = 0;
  while (written < content.size()) {
    const ssize_t count = ::write(file, content.data() + written, content.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return ::fsync(file) == 0;
}

/// The new name lasts only when its folder is on the disk too.
void syncFolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  ::fsync(file);
  ::close(file);
}

}  // namespace

bool replaceFile(const std::string& path, const std::string& content) {
  const std::string temporary = path + ".new";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (file < 0) return false;
  const bool isWritten = writeAll(file, content);
  const bool isClosed = ::close(file) == 0;
  if (!isWritten || !isClosed || std::rename(temporary.c_str(), path.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  syncFolderOf(path);
  return true;
}

}  // namespace simulator
