#include "atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace {

constexpr mode_t kNewFileMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (isOpen()) ::close(m_descriptor);
  }

  bool isOpen() const { return m_descriptor >= 0; }
  int get() const { return m_descriptor; }

 private:
  int m_descriptor;
};

/// A new file beside the one that it is to replace; goes away again unless it gets there.
class TemporaryFile {
 public:
  explicit TemporaryFile(const boost::filesystem::path& target)
      : m_name(target.string() + ".XXXXXX"), m_file(::mkostemp(&m_name[0], O_CLOEXEC)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (m_file.isOpen() && !m_moved) ::unlink(m_name.c_str());
  }

  bool isOpen() const { return m_file.isOpen(); }
  bool setMode(mode_t mode) { return ::fchmod(m_file.get(), mode) == 0; }
  bool sync() { return ::fsync(m_file.get()) == 0; }

  bool write(const std::string& content) {
    std::size_t written = 0;
    while (written < content.size()) {
      const ssize_t count = ::write(m_file.get(), content.data() + written, content.size() - written);
      if (count < 0 && errno != EINTR) return false;
      if (count > 0) written += static_cast<std::size_t>(count);
    }
    return true;
  }

  bool moveTo(const boost::filesystem::path& target) {
    m_moved = ::rename(m_name.c_str(), target.c_str()) == 0;
    return m_moved;
  }

 private:
  std::string m_name;
  FileDescriptor m_file;
  bool m_moved = false;
};

mode_t modeOf(const boost::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & ACCESSPERMS : kNewFileMode;
}

/// A rename lasts only when its folder is on the disk.
bool syncFolder(const boost::filesystem::path& folder) {
  const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return descriptor.isOpen() && ::fsync(descriptor.get()) == 0;
}

}  // namespace

bool replaceFile(const boost::filesystem::path& path, const std::string& content) {
  const auto folder = path.has_parent_path() ? path.parent_path() : boost::filesystem::path(".");
  TemporaryFile file(path);
  return file.isOpen() && file.setMode(modeOf(path)) && file.write(content) && file.sync() &&
         file.moveTo(path) && syncFolder(folder);
}
