#include <windows.h>

#include <gtest/gtest.h>
#include <winver.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/loaded_module.h"
#include "text.h"

namespace {

/// What the system reads of the module's file, and the Explorer shows.
class VersionResource : public testing::Test {
 protected:
  VersionResource() {
    const std::wstring path = std::filesystem::u8path(MIRN_TEST_MODULE).make_preferred().wstring();
    m_data.resize(::GetFileVersionInfoSizeW(path.c_str(), nullptr));
    if (!::GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(m_data.size()), m_data.data())) {
      throw std::runtime_error("the module has no version resource");
    }
  }

  VS_FIXEDFILEINFO numbers() const {
    const auto found = valueAt(L"\\");
    if (found.second != sizeof(VS_FIXEDFILEINFO)) throw std::runtime_error("no numbers");
    return *static_cast<const VS_FIXEDFILEINFO*>(found.first);
  }

  /// In US English; "(none)" when there is no such text.
  std::string text(const std::wstring& key) const {
    const auto found = valueAt(L"\\StringFileInfo\\040904B0\\" + key);
    return found.first ? wideToUtf8(static_cast<const wchar_t*>(found.first)) : "(none)";
  }

  std::pair<const void*, UINT> valueAt(const std::wstring& path) const {
    void* value = nullptr;
    UINT size = 0;
    ::VerQueryValueW(m_data.data(), path.c_str(), &value, &size);
    return {value, size};
  }

 private:
  std::vector<char> m_data;
};

PluginVersion versionOf(DWORD high, DWORD low) {
  return {HIWORD(high), LOWORD(high), HIWORD(low), LOWORD(low)};
}

std::string dotted(const PluginVersion& version) {
  std::string text = std::to_string(version.major);
  for (const auto part : {version.minor, version.patch, version.build}) text += '.' + std::to_string(part);
  return text;
}

TEST_F(VersionResource, TellsTheVersionThatDiscoveryTells) {
  const std::string told = dotted(LoadedModule(MIRN_TEST_MODULE).discover().version);
  EXPECT_EQ(told, "5.4.0.1465");
  const VS_FIXEDFILEINFO numbers = this->numbers();
  EXPECT_EQ(dotted(versionOf(numbers.dwFileVersionMS, numbers.dwFileVersionLS)), told);
  EXPECT_EQ(dotted(versionOf(numbers.dwProductVersionMS, numbers.dwProductVersionLS)), told);
  EXPECT_EQ(text(L"FileVersion"), told);
  EXPECT_EQ(text(L"ProductVersion"), told);
}

TEST_F(VersionResource, TellsTheNameThatDiscoveryTells) {
  const std::string told = wideToUtf8(LoadedModule(MIRN_TEST_MODULE).discover().name);
  EXPECT_EQ(told, "Ordan Mirn plugin");
  EXPECT_EQ(text(L"FileDescription"), told);
  EXPECT_EQ(text(L"ProductName"), told);
  EXPECT_EQ(text(L"InternalName"), "Mirn plugin");
}

TEST_F(VersionResource, IsOfALibraryOfThatName) {
  EXPECT_EQ(numbers().dwFileType, static_cast<DWORD>(VFT_DLL));
  const auto name = std::filesystem::u8path(MIRN_TEST_MODULE).filename().string();
  EXPECT_EQ(text(L"OriginalFilename"), name);
  EXPECT_EQ(text(L"OtherName"), "(none)");
}

}  // namespace
