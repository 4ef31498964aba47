#include "state/append_file.h"

#include <windows.h>

#include "owner_only_windows.h"
#include "system_reason.h"

namespace simulator {
namespace {

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

HANDLE open(const std::filesystem::path& path) {
  OwnerOnly access(OwnerOnly::Kind::kFile);
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    access.attributes(), OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  return file;
}

void synchronize(HANDLE file) {
  if (!::FlushFileBuffers(file)) throw lastSystemFailure();
}

void seek(HANDLE file, std::uint64_t offset, DWORD from) {
  LARGE_INTEGER distance;
  distance.QuadPart = static_cast<LONGLONG>(offset);
  if (!::SetFilePointerEx(file, distance, nullptr, from)) throw lastSystemFailure();
}

}  // namespace

AppendFile::AppendFile(const std::filesystem::path& path)
    : m_handle(reinterpret_cast<std::intptr_t>(open(path))) {}

AppendFile::~AppendFile() { ::CloseHandle(asHandle(m_handle)); }

void AppendFile::append(std::string_view text) {
  seek(asHandle(m_handle), 0, FILE_END);
  while (!text.empty()) {
    DWORD count = 0;
    if (!::WriteFile(asHandle(m_handle), text.data(), static_cast<DWORD>(text.size()), &count, nullptr)) {
      throw lastSystemFailure();
    }
    text.remove_prefix(count);
  }
  synchronize(asHandle(m_handle));
}

void AppendFile::cut(std::uint64_t size) {
  seek(asHandle(m_handle), size, FILE_BEGIN);
  if (!::SetEndOfFile(asHandle(m_handle))) throw lastSystemFailure();
  synchronize(asHandle(m_handle));
}

}  // namespace simulator
