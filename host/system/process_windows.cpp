#include "system/process_windows.h"

#include <windows.h>

#include <cstdlib>

#include "system/process.h"
#include "system_reason.h"
#include "text.h"

namespace host {

namespace {

/// The longest path that the system knows.
constexpr std::size_t kLongestPath = 32768;

/// In quotes, where a backslash counts for itself unless a quote follows the last of them.
std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : argument) {
    if (character == L'"') text.append(backslashes + 1, L'\\');
    text += character;
    backslashes = character == L'\\' ? backslashes + 1 : 0;
  }
  return text.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::filesystem::path programFile() {
  std::wstring path(kLongestPath, L'\0');
  const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  if (length == 0) throw lastSystemFailure();
  path.resize(length);
  return path;
}

std::wstring commandLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::wstring line = L'"' + program.wstring() + L'"';  // read by a rule of its own, without backslashes
  for (const std::string& argument : arguments) line += L' ' + quoted(utf8ToWide(argument));
  return line;
}

/// An ordinary exit would first run the libraries' own ends, with the other threads killed
/// wherever they were.
void leaveProcess(int status) {
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(status));
  std::abort();
}

}  // namespace host
