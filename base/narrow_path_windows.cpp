#include "narrow_path.h"

#include <windows.h>

std::filesystem::path narrowPath(const std::string& text) {
  const int count = static_cast<int>(text.size());
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text.data(), count, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, text.data(), count, result.data(), size);
  return result;
}
