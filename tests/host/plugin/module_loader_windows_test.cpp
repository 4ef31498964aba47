#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "plugin/module_loader.h"
#include "plugin_interface.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

namespace fs = std::filesystem;

class ModuleLoaderTest : public testing::Test {
 protected:
  ModuleLoaderTest() : m_place(fs::path(m_folder.path().wstring()) / L"ordn\u00FCng") {
    fs::create_directory(m_place);
  }

  /// A copy of a library, in a folder whose name the old code page need not have.
  fs::path copy(const fs::path& library) const {
    fs::copy_file(library, m_place / library.filename());
    return m_place / library.filename();
  }

  static std::string refusalOf(const fs::path& path) {
    return wordsOfFailure<std::runtime_error>([&] { const LoadedModule module(path.u8string()); });
  }

  static bool isLoaded(const fs::path& path) { return ::GetModuleHandleW(path.c_str()) != nullptr; }

  const TemporaryFolder m_folder;
  const fs::path m_place;
};

TEST_F(ModuleLoaderTest, FindsTheLibrariesBesideTheModule) {
  const fs::path library = copy(MIRN_TEST_LIBRARY);
  const fs::path module = copy(MIRN_TEST_MODULE);
  {
    const LoadedModule loaded(module.u8string());
    EXPECT_TRUE(isLoaded(module));
    EXPECT_TRUE(isLoaded(library));
  }
  EXPECT_FALSE(isLoaded(module));
}

TEST_F(ModuleLoaderTest, FindsTheExportsOfTheModule) {
  const LoadedModule loaded(MIRN_TEST_MODULE);
  PluginDescription description;
  loaded.find<DiscoverPluginFunction>(kDiscoverPluginName)(description);
  EXPECT_EQ(description.code, L"mirn");
  EXPECT_THROW(loaded.find<DiscoverPluginFunction>("discover_nothing"), std::runtime_error);
}

TEST_F(ModuleLoaderTest, FindsTheFunctionsOfTheLibrariesThatCameAlong) {
  const LoadedModule loaded(MIRN_TEST_MODULE);
  EXPECT_NE(loaded.findAnywhere(kDiscoverPluginName), nullptr);
  EXPECT_NE(loaded.findAnywhere("VexSimFailDisk"), nullptr);
  EXPECT_EQ(loaded.findAnywhere("VexSimNothing"), nullptr);
}

TEST_F(ModuleLoaderTest, LeavesTheSimulatedLibraryWhereItIs) {
  { const LoadedModule loaded(MIRN_TEST_MODULE); }
  EXPECT_FALSE(isLoaded(fs::path(MIRN_TEST_MODULE).make_preferred()));
  EXPECT_TRUE(isLoaded(L"VEXL2.dll"));
}

TEST_F(ModuleLoaderTest, TellsThatThereIsNoModule) {
  const std::string text = refusalOf(m_place / "missing.dll");
  EXPECT_EQ(text.find("cannot load the module: "), 0U) << text;
  EXPECT_NE(text.find("ordn\xC3\xBCng\\missing.dll: "), std::string::npos) << text;
}

TEST_F(ModuleLoaderTest, TellsThatAFileIsNoLibrary) {
  std::ofstream(m_place / "text.dll") << "no library at all\n";
  const std::string text = refusalOf(m_place / "text.dll");
  EXPECT_EQ(text.find("cannot load the module: "), 0U) << text;
  EXPECT_EQ(text.find('%'), std::string::npos) << text;
}

}  // namespace

}  // namespace host
