#include "system_reason.h"

#include <windows.h>

#include <array>
#include <string>

#include "utf8_windows.h"

namespace {

/// The system's message as one line; some have several, and all end in a line's end.
std::wstring asLine(std::wstring text) {
  for (wchar_t& character : text) {
    if (character == L'\r' || character == L'\n') character = L' ';
  }
  text.erase(text.find_last_not_of(L" .") + 1);
  return text;
}

}  // namespace

std::runtime_error lastSystemFailure() {
  const DWORD error = ::GetLastError();
  std::array<wchar_t, 512> text{};
  // Inserts stay as they are: only the call that failed knew what to put there.
  const DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
  if (size == 0) return std::runtime_error("error " + std::to_string(error));
  return std::runtime_error(asUtf8(asLine(std::wstring(text.data(), size))));
}
