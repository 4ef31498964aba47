#include "destination/profile_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "exit_status.h"
#include "host/identity/open_to_others.h"
#include "owner_access.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

struct Change {
  std::string name, before, after;
};

class ChangedProfiles : public testing::TestWithParam<Change> {};

TEST_P(ChangedProfiles, KeepAllElse) {
  EXPECT_EQ(GetParam().after,
            mirnctl::withProfile(GetParam().before, "a", {{"host", "x:1"}, {"token-file", "/t"}}));
}

INSTANTIATE_TEST_SUITE_P(
    Files, ChangedProfiles,
    testing::Values(
        Change{"None", "", "[a]\nhost = x:1\ntoken-file = /t\n"},
        Change{"OthersAlone", "; mine\n[b]\nhost = y\n",
               "; mine\n[b]\nhost = y\n\n[a]\nhost = x:1\ntoken-file = /t\n"},
        Change{"TheSameKeys", "[a]\nhost=old\ntoken-file =\n[b]\nhost = y\n",
               "[a]\nhost = x:1\ntoken-file = /t\n[b]\nhost = y\n"},
        Change{"OtherKeysAndComments", "[a]\n# here\nca-file = c\n; host = no\n\n[b]\nhost = y\n",
               "[a]\n# here\nca-file = c\n; host = no\nhost = x:1\ntoken-file = /t\n\n[b]\nhost = y\n"},
        Change{"NoEndOfLine", "[a]", "[a]\nhost = x:1\ntoken-file = /t\n"},
        Change{"KeysOfTheNextAlone", "[a]\n[b]\nhost = y\n",
               "[a]\nhost = x:1\ntoken-file = /t\n[b]\nhost = y\n"}),
    ByName());

class SavedProfile : public testing::Test {
 protected:
  static std::string contentOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  TemporaryFolder m_folder;
  const fs::path m_file = fs::path(m_folder.path().string()) / "new" / "mirn" / "config";
};

TEST_F(SavedProfile, IsForItsOwnerAlone) {
  mirnctl::saveProfile(m_file, "far", "mirn_1", {{"host", "x:1"}});
  const fs::path token = m_file.parent_path() / "far.token";
  EXPECT_EQ("mirn_1\n", contentOf(token));
  EXPECT_EQ("[far]\nhost = x:1\ntoken-file = " + token.string() + "\n", contentOf(m_file));
  for (const fs::path& each : {m_file.parent_path(), token, m_file})
    EXPECT_FALSE(othersMayReach(each)) << each;
}

TEST_F(SavedProfile, ClosesATokenFileThatOthersMightRead) {
  mirnctl::saveProfile(m_file, "far", "mirn_1", {});
  const fs::path token = m_file.parent_path() / "far.token";
  host::openToOthers(token);
  ASSERT_TRUE(othersMayReach(token));
  mirnctl::saveProfile(m_file, "far", "mirn_2", {});
  EXPECT_EQ("mirn_2\n", contentOf(token));
  EXPECT_FALSE(othersMayReach(token));
}

TEST_F(SavedProfile, HasANameThatAFileCanHave) {
  for (const char* name : {"", ".", "../up", "a b", "a/b", "[a]"}) {
    EXPECT_THROW(mirnctl::saveProfile(m_file, name, "mirn_1", {}), mirnctl::Failure) << name;
  }
  EXPECT_FALSE(fs::exists(m_file.parent_path()));
}

}  // namespace
