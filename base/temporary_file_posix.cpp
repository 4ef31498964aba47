#include "temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include "system_reason.h"
#include "temporary_name.h"

namespace fs = std::filesystem;

namespace {

constexpr mode_t kForOwner = S_IRUSR | S_IWUSR;
constexpr mode_t kForEveryone = kForOwner | S_IRGRP | S_IROTH;

/// Makes a call of the system again for as long as a signal comes between.
template <class Call>
auto uninterrupted(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

class FileDescriptor {
 public:
  FileDescriptor(const fs::path& path, int flags)
      : m_descriptor(uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC); })) {}
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

int makeNew(const fs::path& path) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  const int file = uninterrupted([&] { return ::open(path.c_str(), kFlags, kForOwner); });
  if (file < 0) throw lastSystemFailure();
  return file;
}

/// Holds a new file for this writer; goes when its descriptor goes. False when another writer took the file
/// for left behind and removed it before it was held. A file system without locks leaves the file unheld and
/// `removeUnlessInUse` without effect.
bool hold(int file) {
  uninterrupted([&] { return ::flock(file, LOCK_EX); });
  struct stat status {};
  return ::fstat(file, &status) != 0 || status.st_nlink > 0;
}

/// Whoever may not give files away gives what can be given: the group, or nothing.
void giveOwner(int file, uid_t user, gid_t group) {
  constexpr auto kSameUser = static_cast<uid_t>(-1);
  const bool isGiven = ::fchown(file, user, group) == 0 || ::fchown(file, kSameUser, group) == 0;
  static_cast<void>(isGiven);
}

void giveAccess(int file, const fs::path& target, Readers ofNewFile) {
  mode_t mode = ofNewFile == Readers::kEveryone ? kForEveryone : kForOwner;
  struct stat status {};
  if (::stat(target.c_str(), &status) == 0) {
    if (!S_ISREG(status.st_mode)) throw std::runtime_error("is not a regular file");
    mode = status.st_mode & ACCESSPERMS;
    giveOwner(file, status.st_uid, status.st_gid);
  }
  if (::fchmod(file, mode) != 0) throw lastSystemFailure();
}

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& target) {
  for (;;) {
    m_path = temporaryNameFor(target);
    m_handle = makeNew(m_path);
    if (hold(static_cast<int>(m_handle))) return;
    ::close(static_cast<int>(m_handle));
  }
}

TemporaryFile::TemporaryFile(const fs::path& target, Readers ofNewFile) : TemporaryFile(target) {
  giveAccess(static_cast<int>(m_handle), target, ofNewFile);
}

TemporaryFile::~TemporaryFile() {
  // First the name: without it, the file is still held.
  if (!m_isGone) ::unlink(m_path.c_str());
  ::close(static_cast<int>(m_handle));
}

void TemporaryFile::write(std::string_view content) {
  const int file = static_cast<int>(m_handle);
  while (!content.empty()) {
    const ssize_t count = uninterrupted([&] { return ::write(file, content.data(), content.size()); });
    if (count < 0) throw lastSystemFailure();
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  if (uninterrupted([&] { return ::fsync(file); }) != 0) throw lastSystemFailure();
}

void TemporaryFile::replace(const fs::path& target) {
  if (std::rename(m_path.c_str(), target.c_str()) != 0) throw lastSystemFailure();
  m_isGone = true;
}

bool TemporaryFile::become(const fs::path& target) {
  // The second name of the file stays; the first one goes with this object.
  if (::link(m_path.c_str(), target.c_str()) == 0) return true;
  if (errno != EEXIST) throw lastSystemFailure();
  return false;
}

void removeUnlessInUse(const fs::path& temporary) {
  const FileDescriptor file(temporary, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
  if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) ::unlink(temporary.c_str());
}

void syncFolder(const fs::path& folder) {
  const FileDescriptor names(folder, O_RDONLY | O_DIRECTORY);
  if (names.isOpen()) uninterrupted([&] { return ::fsync(names.get()); });
}
