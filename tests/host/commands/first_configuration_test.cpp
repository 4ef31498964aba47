#include "commands/first_configuration.h"

#include <gtest/gtest.h>

#include <fstream>

#include "options.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

namespace fs = std::filesystem;

class FirstConfigurationTest : public testing::Test {
 protected:
  fs::path folder() const { return fs::u8path(m_folder.path().string()); }

  Options written(const std::string& text) const {
    const fs::path file = folder() / "host.conf";
    writeFirstConfiguration(file, text);
    return parseOptions({"--config", file.u8string()});
  }

 private:
  TemporaryFolder m_folder;
};

TEST_F(FirstConfigurationTest, NamesTheModuleAndTheOnlyLibrary) {
  fs::create_directories(folder() / "libraries" / "simulator");
  std::ofstream(folder() / "libraries" / "no_folder") << "";
  const Options options = written(firstConfiguration("module.dll", folder() / "libraries"));
  EXPECT_EQ(options.module, "module.dll");
  EXPECT_EQ(options.library, "simulator");
}

TEST_F(FirstConfigurationTest, ChoosesNoneOfSeveralLibraries) {
  fs::create_directories(folder() / "libraries" / "simulator");
  fs::create_directories(folder() / "libraries" / "other");
  EXPECT_EQ(written(firstConfiguration("module.dll", folder() / "libraries")).library, "");
}

TEST_F(FirstConfigurationTest, DoesWithoutLibraries) {
  EXPECT_EQ(written(firstConfiguration("module.dll", folder() / "libraries")).library, "");
}

TEST_F(FirstConfigurationTest, LeavesAConfigurationThatIsThere) {
  written("module = first.dll\n");
  EXPECT_EQ(written("module = second.dll\n").module, "first.dll");
}

TEST_F(FirstConfigurationTest, IsRefusedWhereNoFileCanBe) {
  EXPECT_THROW(writeFirstConfiguration(folder() / "none" / "host.conf", ""), std::runtime_error);
}

}  // namespace

}  // namespace host
