#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <vector>

#include "plugin_version.h"
#include "support/by_name.h"

namespace host {

namespace {

const std::filesystem::path kProgram = MIRN_HOST_PROGRAM;

/// The program's file as one that holds resources, and nothing of it runs.
class ProgramFile {
 public:
  ProgramFile()
      : m_module(::LoadLibraryExW(kProgram.c_str(), nullptr,
                                  LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {}
  ProgramFile(const ProgramFile&) = delete;
  ProgramFile& operator=(const ProgramFile&) = delete;
  ~ProgramFile() { ::FreeLibrary(m_module); }

  /// The text of a message with its insert; empty when the table has no such message.
  std::wstring message(DWORD identifier, const wchar_t* insert) const {
    std::wstring text(1000, L'\0');
    const DWORD_PTR inserts[] = {reinterpret_cast<DWORD_PTR>(insert)};
    auto* const list = reinterpret_cast<va_list*>(const_cast<DWORD_PTR*>(inserts));
    text.resize(::FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, m_module,
                                 identifier, 0, text.data(), static_cast<DWORD>(text.size()), list));
    return text;
  }

 private:
  HMODULE m_module;
};

struct MessageRow {
  std::string name;
  DWORD identifier;
  std::wstring text;
};

class MessageTableTest : public testing::TestWithParam<MessageRow> {};

TEST_P(MessageTableTest, HasTheText) {
  EXPECT_EQ(ProgramFile().message(GetParam().identifier, L"A disk is 90% full"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Messages, MessageTableTest,
                         testing::Values(MessageRow{"Information", 0x40020102, L"A disk is 90% full"},
                                         MessageRow{"Warning", 0x80020101, L"A disk is 90% full"},
                                         MessageRow{"Error", 0xC0020100, L"A disk is 90% full"},
                                         MessageRow{"HostInformation", 0x40030202, L"A disk is 90% full"},
                                         MessageRow{"HostError", 0xC0030200, L"A disk is 90% full"},
                                         MessageRow{"PluginCategory", 1, L"Plug-in"},
                                         MessageRow{"HostCategory", 2, L"Host"},
                                         MessageRow{"NoOther", 3, L""}),
                         ByName());

TEST(VersionResource, IsTheProductsVersion) {
  std::vector<char> record(::GetFileVersionInfoSizeW(kProgram.c_str(), nullptr));
  ASSERT_TRUE(::GetFileVersionInfoW(kProgram.c_str(), 0, static_cast<DWORD>(record.size()), record.data()));
  void* found = nullptr;
  UINT size = 0;
  ASSERT_TRUE(::VerQueryValueW(record.data(), L"\\", &found, &size));
  const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(found);
  EXPECT_EQ(fixed.dwFileVersionMS, static_cast<DWORD>(MIRN_VERSION_MAJOR << 16 | MIRN_VERSION_MINOR));
  EXPECT_EQ(fixed.dwFileVersionLS, static_cast<DWORD>(MIRN_VERSION_PATCH << 16 | MIRN_VERSION_BUILD));
  EXPECT_EQ(fixed.dwFileType, static_cast<DWORD>(VFT_APP));
}

}  // namespace

}  // namespace host
