#include "owner_only_windows.h"

#include <accctrl.h>
#include <aclapi.h>
#include <sddl.h>

#include <array>
#include <vector>

#include "handle_windows.h"
#include "system_reason.h"

namespace {

/// The user that this process runs for.
class ProcessUser {
 public:
  ProcessUser() {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened)) throw lastSystemFailure();
    const Handle token(opened);
    DWORD size = 0;
    ::GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    m_record.resize(size);
    if (!::GetTokenInformation(token.get(), TokenUser, m_record.data(), size, &size)) {
      throw lastSystemFailure();
    }
  }

  PSID sid() const { return reinterpret_cast<const TOKEN_USER*>(m_record.data())->User.Sid; }

  std::wstring text() const {
    wchar_t* text = nullptr;
    if (!::ConvertSidToStringSidW(sid(), &text)) throw lastSystemFailure();
    const std::unique_ptr<wchar_t, LocalMemory> owned(text);
    return text;
  }

 private:
  std::vector<unsigned char> m_record;
};

bool isAdministrator() {
  std::array<unsigned char, SECURITY_MAX_SID_SIZE> sid{};
  auto size = static_cast<DWORD>(sid.size());
  BOOL isMember = FALSE;
  return ::CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, sid.data(), &size) &&
         ::CheckTokenMembership(nullptr, sid.data(), &isMember) && isMember;
}

/// Owner, and a protected list: all access for the owner and those like him; a directory hands it on to what
/// is in it.
std::wstring describe(OwnerOnly::Kind kind) {
  const std::wstring user = ProcessUser().text();
  const std::wstring inheritance = kind == OwnerOnly::Kind::kDirectory ? L"OICI" : L"";
  std::vector<std::wstring> allowed{user};
  if (isAdministrator()) allowed.insert(allowed.end(), {L"SY", L"BA"});
  std::wstring text = L"O:" + user + L"D:P";
  for (const std::wstring& sid : allowed) text += L"(A;" + inheritance + L";FA;;;" + sid + L")";
  return text;
}

bool isOfAdministration(PSID sid, PSID user) {
  return ::EqualSid(sid, user) || ::IsWellKnownSid(sid, WinLocalSystemSid) ||
         ::IsWellKnownSid(sid, WinBuiltinAdministratorsSid);
}

bool isTrusted(PSID sid, PSID owner, PSID user) {
  return (owner && ::EqualSid(sid, owner)) || isOfAdministration(sid, user) ||
         ::IsWellKnownSid(sid, WinCreatorOwnerRightsSid);
}

/// Whether an entry of an access list lets someone in who is not trusted. Entries that refuse, or are for
/// what a folder holds, let nobody in; of the rare kinds, nothing good is assumed.
bool letsOthersIn(const ACE_HEADER& entry, PSID owner, PSID user) {
  if ((entry.AceFlags & INHERIT_ONLY_ACE) != 0 || entry.AceType == ACCESS_DENIED_ACE_TYPE) return false;
  if (entry.AceType != ACCESS_ALLOWED_ACE_TYPE) return true;
  auto& allowed = const_cast<ACCESS_ALLOWED_ACE&>(reinterpret_cast<const ACCESS_ALLOWED_ACE&>(entry));
  return allowed.Mask != 0 && !isTrusted(&allowed.SidStart, owner, user);
}

std::unique_ptr<void, LocalMemory> securityOf(const std::wstring& path, SECURITY_INFORMATION wanted) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD error = ::GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, wanted, nullptr, nullptr, nullptr,
                                              nullptr, &descriptor);
  ::SetLastError(error);
  if (error != ERROR_SUCCESS) throw lastSystemFailure();
  return std::unique_ptr<void, LocalMemory>(descriptor);
}

}  // namespace

OwnerOnly::OwnerOnly(Kind kind) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(describe(kind).c_str(), SDDL_REVISION_1,
                                                              &descriptor, nullptr)) {
    throw lastSystemFailure();
  }
  m_descriptor.reset(descriptor);
  m_attributes = {sizeof m_attributes, descriptor, FALSE};
}

bool letsOthersIn(PSECURITY_DESCRIPTOR descriptor) {
  PSID owner = nullptr;
  PACL list = nullptr;
  BOOL isThere = FALSE;
  BOOL isDefault = FALSE;
  if (!::GetSecurityDescriptorOwner(descriptor, &owner, &isDefault) ||
      !::GetSecurityDescriptorDacl(descriptor, &isThere, &list, &isDefault)) {
    throw lastSystemFailure();
  }
  if (!isThere || !list) return true;  // no list is access for everyone
  const ProcessUser user;
  for (DWORD i = 0; i < list->AceCount; ++i) {
    void* entry = nullptr;
    if (!::GetAce(list, i, &entry)) throw lastSystemFailure();
    if (letsOthersIn(*static_cast<const ACE_HEADER*>(entry), owner, user.sid())) return true;
  }
  return false;
}

bool letsOthersIn(const std::wstring& path) {
  return letsOthersIn(securityOf(path, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION).get());
}

bool isOwnedByAdministration(const std::wstring& path) {
  const auto descriptor = securityOf(path, OWNER_SECURITY_INFORMATION);
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  if (!::GetSecurityDescriptorOwner(descriptor.get(), &owner, &isDefault)) throw lastSystemFailure();
  return owner && isOfAdministration(owner, ProcessUser().sid());
}
