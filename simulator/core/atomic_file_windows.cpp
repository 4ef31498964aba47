#include <windows.h>

#include <string>

#include "core/atomic_file.h"

namespace simulator {
namespace {

bool writeAll(HANDLE file, const std::string& content) {
  DWORD written = 0;
  return WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) != 0 &&
         written == content.size() && FlushFileBuffers(file) != 0;
}

}  // namespace

bool replaceFile(const std::string& path, const std::string& content) {
  const std::string temporary = path + ".new";
  const HANDLE file = CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool isWritten = writeAll(file, content);
  CloseHandle(file);
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (isWritten && MoveFileExA(temporary.c_str(), path.c_str(), kHow) != 0) return true;
  DeleteFileA(temporary.c_str());
  return false;
}

}  // namespace simulator
