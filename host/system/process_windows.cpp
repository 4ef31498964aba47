#include "system/process.h"

#include <windows.h>
// After the header that it needs.
#include <shellapi.h>

#include <cstdlib>
#include <memory>

#include "owner_only_windows.h"
#include "system_reason.h"
#include "text.h"

namespace host {

/// The arguments of the main function are in the system's old code page, which lacks most characters.
std::vector<std::string> programArguments(int, const char* const*) {
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalMemory> words(::CommandLineToArgvW(::GetCommandLineW(), &count));
  if (!words) throw lastSystemFailure();
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(wideToUtf8(words.get()[i]));
  return arguments;
}

/// An ordinary exit would first run the libraries' own ends, with the other threads killed wherever they
/// were.
void leaveProcess(int status) {
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(status));
  std::abort();
}

}  // namespace host
