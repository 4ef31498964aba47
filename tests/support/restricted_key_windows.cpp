#include "support/restricted_key_windows.h"

#include <sddl.h>

#include <stdexcept>

namespace {

constexpr wchar_t kNobody[] = L"D:P";
constexpr wchar_t kEveryoneReads[] = L"D:P(A;;KR;;;WD)";
constexpr wchar_t kEveryoneDoesAll[] = L"D:P(A;;KA;;;WD)";

void setRights(HKEY key, const wchar_t* rights) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const bool set = ::ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1,
                                                                          &descriptor, nullptr) != FALSE &&
                   ::RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor) == ERROR_SUCCESS;
  ::LocalFree(descriptor);
  if (!set) throw std::runtime_error("the rights on a key cannot be set");
}

}  // namespace

RestrictedKey::RestrictedKey(const std::wstring& path, Rights rights) {
  if (::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &m_key, nullptr) != ERROR_SUCCESS) {
    throw std::runtime_error("a key cannot be made");
  }
  setRights(m_key, rights == Rights::kRead ? kEveryoneReads : kNobody);
}

RestrictedKey::~RestrictedKey() {
  setRights(m_key, kEveryoneDoesAll);
  ::RegCloseKey(m_key);
}
