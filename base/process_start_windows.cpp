#include "process_start_windows.h"

#include <windows.h>
// After the header that it needs.
#include <shellapi.h>

#include <memory>

#include "owner_only_windows.h"
#include "process_start.h"
#include "system_reason.h"
#include "utf8_windows.h"

std::vector<std::string> argumentsOn(const std::wstring& commandLine) {
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalMemory> words(::CommandLineToArgvW(commandLine.c_str(), &count));
  if (!words) throw lastSystemFailure();
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(asUtf8(words.get()[i]));
  return arguments;
}

/// The arguments of the main function are in the system's old code page, which lacks most characters.
std::vector<std::string> programArguments(int, const char* const*) {
  return argumentsOn(::GetCommandLineW());
}

/// The C library's own copy is of that code page, too, even where it is asked for wide text.
std::optional<std::string> environmentVariable(const std::string& name) {
  const std::wstring wideName(name.begin(), name.end());
  const DWORD size = ::GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);  // with the end
  std::wstring value(size, L'\0');
  value.resize(::GetEnvironmentVariableW(wideName.c_str(), value.data(), size));
  if (value.empty()) return {};
  return asUtf8(value);
}
