#include "state/process_lock.h"

#include <fstream>
#include <thread>

namespace simulator {

std::unique_ptr<ProcessLock> waitForLock(const std::filesystem::path& path, const LockWait& wait) {
  for (auto waited = std::chrono::milliseconds(0);; waited += wait.between) {
    auto lock = ProcessLock::take(path);
    if (lock || waited >= wait.total) return lock;
    if (wait.sleep) {
      wait.sleep(wait.between);
    } else {
      std::this_thread::sleep_for(wait.between);
    }
  }
}

std::string holderOf(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::string holder;
  file >> holder;
  return holder.find_first_not_of("0123456789") == std::string::npos ? holder : "";
}

}  // namespace simulator
