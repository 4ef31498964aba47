#ifndef MIRN_TESTS_SUPPORT_PRIVATE_REGISTRY_WINDOWS_H
#define MIRN_TESTS_SUPPORT_PRIVATE_REGISTRY_WINDOWS_H

#include <windows.h>

#include <string>

/// While it lives, the machine-wide hive of this process is an empty key of its own.
class PrivateRegistry {
 public:
  PrivateRegistry();
  PrivateRegistry(const PrivateRegistry&) = delete;
  PrivateRegistry& operator=(const PrivateRegistry&) = delete;
  ~PrivateRegistry();

  /// Stores a value under `key` of the hive, which is made when it is missing.
  void store(const std::wstring& key, const std::wstring& name, DWORD type, const void* data, DWORD size);

  /// Every value in the hive, a line each: path, name, type, bytes.
  std::string image() const;

 private:
  std::wstring m_path;
  HKEY m_key = nullptr;
};

/// The storage driver's key.
constexpr wchar_t kDriverKey[] = L"SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device";

#endif
