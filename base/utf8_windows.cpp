#include "utf8_windows.h"

#include <windows.h>

std::string asUtf8(const std::wstring& text) {
  const int units = static_cast<int>(text.size());
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), units, result.data(), size, nullptr, nullptr);
  return result;
}
