#ifndef MIRN_TESTS_SUPPORT_RESTRICTED_KEY_WINDOWS_H
#define MIRN_TESTS_SUPPORT_RESTRICTED_KEY_WINDOWS_H

#include <windows.h>

#include <string>

/// While it lives, everyone has these rights on a key of the machine-wide hive and no others. The key is made
/// when it is missing.
class RestrictedKey {
 public:
  enum class Rights { kNone, kRead };

  RestrictedKey(const std::wstring& path, Rights rights);
  RestrictedKey(const RestrictedKey&) = delete;
  RestrictedKey& operator=(const RestrictedKey&) = delete;
  ~RestrictedKey();

 private:
  HKEY m_key = nullptr;  // with the right to give the rights back
};

#endif
