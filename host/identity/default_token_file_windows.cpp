#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "identity/token_file.h"
#include "text.h"

namespace host {

std::string defaultTokenFile() {
  const wchar_t* const folder = _wgetenv(L"LOCALAPPDATA");
  if (!folder || !std::filesystem::path(folder).is_absolute()) {
    throw std::runtime_error(
        "%LOCALAPPDATA% names no folder to keep the token in; name a file with --token-file");
  }
  return wideToUtf8(std::wstring(folder) + L"\\mirn\\token");
}

std::string defaultTokenFileText() { return "mirn\\token in %LOCALAPPDATA%"; }

}  // namespace host
