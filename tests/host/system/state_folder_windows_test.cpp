#include "system/state_folder_windows.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

namespace fs = std::filesystem;

class StateFolderTest : public testing::Test {
 protected:
  fs::path folder() const { return fs::path(m_folder.path().wstring()) / "Mirn"; }

 private:
  TemporaryFolder m_folder;
};

TEST_F(StateFolderTest, IsMadeAndTakenAgainWithWhatIsInIt) {
  makeStateFolder(folder());
  ASSERT_TRUE(fs::is_directory(folder()));
  std::ofstream(folder() / "token") << "x";
  makeStateFolder(folder());
  EXPECT_TRUE(fs::exists(folder() / "token"));
}

TEST_F(StateFolderTest, IsNoFile) {
  std::ofstream(folder()) << "x";
  EXPECT_NE(wordsOfFailure<std::runtime_error>([this] { makeStateFolder(folder()); }).find("it is no folder"),
            std::string::npos);
}

TEST_F(StateFolderTest, NeedsTheFolderAboveIt) {
  EXPECT_THROW(makeStateFolder(folder() / "none" / "Mirn"), std::runtime_error);
}

TEST(StateFolder, IsTheMachines) {
  EXPECT_TRUE(stateFolder().is_absolute());
  EXPECT_EQ(stateFolder().filename(), "Mirn");
  EXPECT_EQ(stateFolder().parent_path(), fs::path(_wgetenv(L"ProgramData")));
}

}  // namespace

}  // namespace host
