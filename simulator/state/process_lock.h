#ifndef MIRN_SIMULATOR_STATE_PROCESS_LOCK_H
#define MIRN_SIMULATOR_STATE_PROCESS_LOCK_H

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace simulator {

/// A lock that one process at a time holds, told by a file that names the holder's process id. It goes with
/// the process, however that ends; the file stays. One source a system.
class ProcessLock {
 public:
  /// Null when another process holds it, or this one does already. Raises `std::runtime_error` with the
  /// system's reason when there cannot be such a file.
  static std::unique_ptr<ProcessLock> take(const std::filesystem::path& path);

  explicit ProcessLock(std::intptr_t handle) : m_handle(handle) {}
  ProcessLock(const ProcessLock&) = delete;
  ProcessLock& operator=(const ProcessLock&) = delete;
  ~ProcessLock();

 private:
  std::intptr_t m_handle;  ///< the system's
};

/// How long a process waits for another to let go: that one may be stopping.
struct LockWait {
  std::chrono::milliseconds total{10000};
  std::chrono::milliseconds between{50};
  std::function<void(std::chrono::milliseconds)> sleep;  ///< the thread's own when empty
};

/// Takes the lock as soon as it is free. Null when it is held all the time. Raises as `take` does.
std::unique_ptr<ProcessLock> waitForLock(const std::filesystem::path& path, const LockWait& wait);

/// The process id that the file of a lock names; empty when it names none.
std::string holderOf(const std::filesystem::path& path);

}  // namespace simulator

#endif
