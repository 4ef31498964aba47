#include "identity/private_file.h"

#include "owner_only_windows.h"
#include "system_reason.h"

namespace host {

const char* const kPrivacyRemedy = "icacls FILE /inheritance:r /grant:r \"%USERNAME%\":F";

bool othersMayReach(const std::filesystem::path& file) { return letsOthersIn(file.wstring()); }

void makePrivateDirectory(const std::filesystem::path& directory) {
  OwnerOnly access(OwnerOnly::Kind::kDirectory);
  if (::CreateDirectoryW(directory.c_str(), access.attributes())) return;
  if (::GetLastError() != ERROR_ALREADY_EXISTS) throw lastSystemFailure();
}

}  // namespace host
