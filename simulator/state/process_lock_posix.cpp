#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "state/process_lock.h"
#include "system_reason.h"

namespace simulator {
namespace {

int open(const std::filesystem::path& path) {
  for (;;) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file >= 0) return file;
    if (errno != EINTR) throw lastSystemFailure();
  }
}

bool isTaken(int file) {
  while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return false;
    if (errno != EINTR) throw lastSystemFailure();
  }
  return true;
}

/// For those who come later. The lock holds without it: a full disk is no reason not to have one.
void tellHolder(int file) {
  const std::string holder = std::to_string(::getpid()) + "\n";
  const bool isTold = ::ftruncate(file, 0) == 0 && ::pwrite(file, holder.data(), holder.size(), 0) > 0;
  static_cast<void>(isTold);
}

}  // namespace

std::unique_ptr<ProcessLock> ProcessLock::take(const std::filesystem::path& path) {
  auto lock = std::make_unique<ProcessLock>(open(path));
  const int file = static_cast<int>(lock->m_handle);
  if (!isTaken(file)) return nullptr;
  tellHolder(file);
  return lock;
}

ProcessLock::~ProcessLock() { ::close(static_cast<int>(m_handle)); }

}  // namespace simulator
