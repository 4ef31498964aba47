#include "owner_access.h"
#include "owner_only_windows.h"
#include "system_reason.h"

bool othersMayReach(const std::filesystem::path& file) { return letsOthersIn(file.wstring()); }

std::string privacyRemedy(const std::filesystem::path& file) {
  return "icacls \"" + file.u8string() + "\" /inheritance:r /grant:r \"%USERNAME%\":F";
}

void closeToOthers(const std::filesystem::path& file) {
  OwnerOnly access(OwnerOnly::Kind::kFile);
  constexpr SECURITY_INFORMATION kList = DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION;
  if (!::SetFileSecurityW(file.c_str(), kList, access.attributes()->lpSecurityDescriptor)) {
    throw lastSystemFailure();
  }
}

void makePrivateDirectory(const std::filesystem::path& directory) {
  OwnerOnly access(OwnerOnly::Kind::kDirectory);
  if (::CreateDirectoryW(directory.c_str(), access.attributes())) return;
  if (::GetLastError() != ERROR_ALREADY_EXISTS) throw lastSystemFailure();
}
