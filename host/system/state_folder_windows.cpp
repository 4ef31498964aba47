#include "system/state_folder_windows.h"

#include <windows.h>
// After the header that they need.
#include <aclapi.h>
#include <knownfolders.h>
#include <sddl.h>
#include <shlobj.h>

#include <memory>
#include <stdexcept>

#include "owner_only_windows.h"
#include "system_reason.h"

namespace host {

namespace {

namespace fs = std::filesystem;

using Descriptor = std::unique_ptr<void, LocalMemory>;

/// Nothing is inherited; what is in the folder inherits all of it.
constexpr wchar_t kAccess[] = L"O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";

struct ComMemory {
  void operator()(wchar_t* memory) const { ::CoTaskMemFree(memory); }
};

std::runtime_error failure(const fs::path& folder, const std::string& reason) {
  return std::runtime_error("the folder " + folder.u8string() + " cannot be the host's: " + reason);
}

Descriptor described() {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(kAccess, SDDL_REVISION_1, &descriptor,
                                                              nullptr)) {
    throw lastSystemFailure();
  }
  return Descriptor(descriptor);
}

/// Anybody may make a folder in the folder of program data, ahead of us: with a way out of it, or with files
/// that stay theirs.
void requireOurs(const fs::path& folder) {
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) throw failure(folder, lastSystemFailure().what());
  const bool leadsAway = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (leadsAway || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) throw failure(folder, "it is no folder");
  if (!isOwnedByAdministration(folder.wstring())) throw failure(folder, "it belongs to somebody else");
}

void giveAccess(const fs::path& folder, PSECURITY_DESCRIPTOR descriptor) {
  PSID owner = nullptr;
  PACL list = nullptr;
  BOOL isThere = FALSE;
  BOOL isDefault = FALSE;
  if (!::GetSecurityDescriptorOwner(descriptor, &owner, &isDefault) ||
      !::GetSecurityDescriptorDacl(descriptor, &isThere, &list, &isDefault)) {
    throw failure(folder, lastSystemFailure().what());
  }
  std::wstring name = folder.wstring();
  const DWORD error = ::SetNamedSecurityInfoW(
      name.data(), SE_FILE_OBJECT,
      OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, owner,
      nullptr, list, nullptr);
  ::SetLastError(error);
  if (error != ERROR_SUCCESS) throw failure(folder, lastSystemFailure().what());
}

}  // namespace

fs::path stateFolder() {
  wchar_t* found = nullptr;
  const HRESULT result = ::SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &found);
  const std::unique_ptr<wchar_t, ComMemory> owned(found);
  if (FAILED(result)) throw std::runtime_error("the machine has no folder of program data");
  return fs::path(found) / "Mirn";
}

void makeStateFolder(const fs::path& folder) {
  const Descriptor descriptor = described();
  SECURITY_ATTRIBUTES access{sizeof access, descriptor.get(), FALSE};
  if (::CreateDirectoryW(folder.c_str(), &access)) return;
  if (::GetLastError() != ERROR_ALREADY_EXISTS) throw failure(folder, lastSystemFailure().what());
  requireOurs(folder);
  giveAccess(folder, descriptor.get());
}

}  // namespace host
