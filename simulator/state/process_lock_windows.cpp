#include <windows.h>

#include "owner_only_windows.h"
#include "state/process_lock.h"
#include "system_reason.h"

namespace simulator {
namespace {

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

HANDLE open(const std::filesystem::path& path) {
  OwnerOnly access(OwnerOnly::Kind::kFile);
  const HANDLE file =
      ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    access.attributes(), OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  return file;
}

/// One byte far behind the text, which stays readable.
bool isTaken(HANDLE file) {
  OVERLAPPED place{};
  place.Offset = 1U << 30;
  if (::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) return true;
  const DWORD error = ::GetLastError();
  if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) throw lastSystemFailure();
  return false;
}

/// For those who come later. The lock holds without it.
void tellHolder(HANDLE file) {
  const std::string holder = std::to_string(::GetCurrentProcessId()) + "\n";
  DWORD count = 0;
  const bool isTold = ::SetEndOfFile(file) &&
                      ::WriteFile(file, holder.data(), static_cast<DWORD>(holder.size()), &count, nullptr);
  static_cast<void>(isTold);
}

}  // namespace

std::unique_ptr<ProcessLock> ProcessLock::take(const std::filesystem::path& path) {
  auto lock = std::make_unique<ProcessLock>(reinterpret_cast<std::intptr_t>(open(path)));
  const HANDLE file = asHandle(lock->m_handle);
  if (!isTaken(file)) return nullptr;
  tellHolder(file);
  return lock;
}

ProcessLock::~ProcessLock() { ::CloseHandle(asHandle(m_handle)); }

}  // namespace simulator
