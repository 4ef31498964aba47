#ifndef MIRN_BASE_OWNER_ONLY_WINDOWS_H
#define MIRN_BASE_OWNER_ONLY_WINDOWS_H

#include <windows.h>

#include <memory>
#include <string>

/// Memory that the system hands out and takes back by LocalFree.
struct LocalMemory {
  void operator()(void* memory) const { ::LocalFree(memory); }
};

/// What a new file or folder is made with so that it belongs to the user of this process, who alone has
/// access: nothing is inherited from the folder above. A user who administers the machine makes it for the
/// system and the other administrators, too: what a service keeps is made by either.
class OwnerOnly {
 public:
  enum class Kind { kFile, kDirectory };

  /// Raises `std::runtime_error` with the system's reason.
  explicit OwnerOnly(Kind kind);

  /// Valid as long as this is.
  SECURITY_ATTRIBUTES* attributes() { return &m_attributes; }

 private:
  std::unique_ptr<void, LocalMemory> m_descriptor;
  SECURITY_ATTRIBUTES m_attributes{};
};

/// Whether a file's owner and access list let anyone in beside that owner, the user of this process, the
/// system and the administrators. Raises `std::runtime_error` with the system's reason.
bool letsOthersIn(PSECURITY_DESCRIPTOR descriptor);

/// The same of the file `path`, as it is now.
bool letsOthersIn(const std::wstring& path);

/// Whether the file or folder belongs to the system, the administrators or the user of this process. Raises
/// `std::runtime_error` with the system's reason.
bool isOwnedByAdministration(const std::wstring& path);

#endif
