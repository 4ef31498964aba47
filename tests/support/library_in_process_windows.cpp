#include <windows.h>

#include <array>

#include "support/library_in_process.h"

namespace {

HMODULE find(const std::string& name) {
  return ::GetModuleHandleW(std::filesystem::u8path(name + ".dll").c_str());
}

}  // namespace

std::filesystem::path pathOfLibrary(const std::string& name) {
  const HMODULE library = find(name);
  std::array<wchar_t, 32768> path{};  // the longest that there is
  const DWORD length =
      library ? ::GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size())) : 0;
  return std::wstring(path.data(), length);
}

void* exportOfLibrary(const std::string& name, const char* symbol) {
  const HMODULE library = find(name);
  return library ? reinterpret_cast<void*>(::GetProcAddress(library, symbol)) : nullptr;
}
