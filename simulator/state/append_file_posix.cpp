#include "state/append_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "system_reason.h"
#include "temporary_file.h"

namespace simulator {
namespace {

int open(const std::filesystem::path& path) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
  for (;;) {
    const int file = ::open(path.c_str(), kFlags, S_IRUSR | S_IWUSR);
    if (file >= 0) return file;
    if (errno != EINTR) throw lastSystemFailure();
  }
}

void synchronize(int file) {
  while (::fsync(file) != 0) {
    if (errno != EINTR) throw lastSystemFailure();
  }
}

}  // namespace

AppendFile::AppendFile(const std::filesystem::path& path) : m_handle(open(path)) {
  syncFolder(path.has_parent_path() ? path.parent_path() : ".");
}

AppendFile::~AppendFile() { ::close(static_cast<int>(m_handle)); }

void AppendFile::append(std::string_view text) {
  const int file = static_cast<int>(m_handle);
  while (!text.empty()) {
    const ssize_t count = ::write(file, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw lastSystemFailure();
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  synchronize(file);
}

void AppendFile::cut(std::uint64_t size) {
  const int file = static_cast<int>(m_handle);
  while (::ftruncate(file, static_cast<off_t>(size)) != 0) {
    if (errno != EINTR) throw lastSystemFailure();
  }
  synchronize(file);
}

}  // namespace simulator
