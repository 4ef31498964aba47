#include "host/identity/open_to_others.h"

#include <windows.h>
// After the header that it needs.
#include <sddl.h>

#include <memory>

#include "owner_only_windows.h"
#include "system_reason.h"

namespace host {

/// All for whoever owns the file, and for everyone to read.
void openToOthers(const std::filesystem::path& file) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)(A;;FR;;;WD)", SDDL_REVISION_1,
                                                              &descriptor, nullptr)) {
    throw lastSystemFailure();
  }
  const std::unique_ptr<void, LocalMemory> owned(descriptor);
  if (!::SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, descriptor)) throw lastSystemFailure();
}

}  // namespace host
