#include "settings_store.h"

#include <windows.h>

namespace {

class RegistryKey final : public ISettingsKey {
 public:
  explicit RegistryKey(HKEY key) : m_key(key) {}
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey() override { ::RegCloseKey(m_key); }

  boost::optional<std::uint32_t> read(const std::wstring& name) const override {
    DWORD value = 0;
    DWORD size = sizeof value;
    const auto error = ::RegGetValueW(m_key, nullptr, name.c_str(), RRF_RT_REG_DWORD, nullptr, &value, &size);
    if (error != ERROR_SUCCESS) return boost::none;
    return static_cast<std::uint32_t>(value);
  }

  bool write(const std::wstring& name, std::uint32_t value) override {
    const DWORD data = value;
    return ::RegSetKeyValueW(m_key, nullptr, name.c_str(), REG_DWORD, &data, sizeof data) == ERROR_SUCCESS;
  }

 private:
  HKEY m_key;
};

class Registry final : public ISettingsStore {
 public:
  std::unique_ptr<ISettingsKey> open(const std::wstring& path, SettingsAccess access) override {
    const REGSAM rights = access == SettingsAccess::kWrite ? KEY_WRITE : KEY_READ;
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, rights, &key) != ERROR_SUCCESS) return nullptr;
    return std::make_unique<RegistryKey>(key);
  }
};

}  // namespace

std::unique_ptr<ISettingsStore> makeSettingsStore() { return std::make_unique<Registry>(); }
