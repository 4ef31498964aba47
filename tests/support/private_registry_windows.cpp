#include "support/private_registry_windows.h"

#include <array>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "text.h"

namespace {

void require(LSTATUS error, const char* what) {
  if (error != ERROR_SUCCESS) throw std::runtime_error(std::string(what) + ": " + std::to_string(error));
}

std::wstring pathOfThisProcess() {
  return L"Software\\Mirn tests\\" + std::to_wstring(::GetCurrentProcessId());
}

void describeValues(HKEY key, const std::wstring& path, std::ostream& out) {
  for (DWORD index = 0;; ++index) {
    std::array<wchar_t, 256> name{};
    std::vector<BYTE> data(4096);
    auto nameSize = static_cast<DWORD>(name.size());
    auto dataSize = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const auto error =
        ::RegEnumValueW(key, index, name.data(), &nameSize, nullptr, &type, data.data(), &dataSize);
    if (error == ERROR_NO_MORE_ITEMS) return;
    require(error, "RegEnumValueW");
    out << wideToUtf8(path) << " " << wideToUtf8(name.data()) << " " << type;
    for (DWORD i = 0; i < dataSize; ++i) out << " " << static_cast<unsigned>(data[i]);
    out << "\n";
  }
}

void describeKey(HKEY key, const std::wstring& path, std::ostream& out) {
  describeValues(key, path, out);
  for (DWORD index = 0;; ++index) {
    std::array<wchar_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    const auto error = ::RegEnumKeyExW(key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
    if (error == ERROR_NO_MORE_ITEMS) return;
    require(error, "RegEnumKeyExW");
    HKEY child = nullptr;
    require(::RegOpenKeyExW(key, name.data(), 0, KEY_READ, &child), "RegOpenKeyExW");
    describeKey(child, path + L"\\" + name.data(), out);
    ::RegCloseKey(child);
  }
}

}  // namespace

PrivateRegistry::PrivateRegistry() : m_path(pathOfThisProcess()) {
  require(::RegCreateKeyExW(HKEY_CURRENT_USER, m_path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_ALL_ACCESS, nullptr, &m_key, nullptr),
          "RegCreateKeyExW");
  require(::RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_key), "RegOverridePredefKey");
}

PrivateRegistry::~PrivateRegistry() {
  ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  ::RegCloseKey(m_key);
  ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str());
}

void PrivateRegistry::store(const std::wstring& key, const std::wstring& name, DWORD type, const void* data,
                            DWORD size) {
  require(::RegSetKeyValueW(m_key, key.c_str(), name.c_str(), type, data, size), "RegSetKeyValueW");
}

std::string PrivateRegistry::image() const {
  std::ostringstream out;
  describeKey(m_key, L"", out);
  return out.str();
}
