#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "simulator/state/state_fixture.h"

namespace simulator {
namespace {

mode_t modeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & ACCESSPERMS;
}

using StateFiles = StateFixture;

TEST_F(StateFiles, AreForTheirOwnerAlone) {
  const mode_t before = umask(0);
  EXPECT_EQ(start(), 0U);
  EXPECT_EQ(rename("one"), 0U);
  umask(before);
  for (const char* const file : {"state.json", "state.json.journal", "state.json.lock"}) {
    EXPECT_EQ(modeOf(path(file)), mode_t{0600}) << file;
  }
}

TEST_F(StateFiles, KeepTheModeThatSomebodyGaveThem) {
  ASSERT_EQ(start(), 0U);
  stop();
  ASSERT_EQ(chmod(path("state.json").c_str(), 0640), 0);
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  stop();
  EXPECT_EQ(modeOf(path("state.json")), mode_t{0640});
  EXPECT_NE(read("state.json").find("\"one\""), std::string::npos);
}

TEST_F(StateFiles, FollowsALinkAndLeavesIt) {
  boost::filesystem::create_directory(path("elsewhere"));
  boost::filesystem::create_symlink(path("elsewhere/machine.json"), path("state.json"));
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  stop();
  EXPECT_TRUE(boost::filesystem::is_symlink(path("state.json")));
  EXPECT_TRUE(isThere("elsewhere/machine.json.lock"));
  EXPECT_NE(read("elsewhere/machine.json").find("\"one\""), std::string::npos);
}

/// A folder of its own file system, which only root may make; the others count as skipped.
class StateOnItsOwnFileSystem : public StateFixture {
 protected:
  void SetUp() override {
    boost::filesystem::create_directory(path("disk"));
    if (mount("tmpfs", path("disk").c_str(), "tmpfs", 0, "size=256k") != 0) {
      GTEST_SKIP() << "no file system may be mounted here";
    }
    m_isMounted = true;
    setVariable("VEXL2_STATE", path("disk/state.json"));
  }
  void TearDown() override {
    kill();
    EXPECT_EQ(m_isMounted ? umount(path("disk").c_str()) : 0, 0);
  }

  void remount(unsigned long flags) {
    ASSERT_EQ(mount("tmpfs", path("disk").c_str(), "tmpfs", MS_REMOUNT | flags, "size=256k"), 0);
  }

  /// Leaves no room but what the last page of each file still has.
  void fill() const {
    std::ofstream file(path("disk/filler").c_str(), std::ios::binary);
    while (file << std::string(4096, 'x') << std::flush) {
    }
  }

  bool m_isMounted = false;
};

TEST_F(StateOnItsOwnFileSystem, AFullDiskRefusesChangesUntilThereIsRoom) {
  ASSERT_EQ(start(), 0U);
  fill();
  int done = 0;
  std::string before;
  const std::string text = said([&] {
    do {
      before = machine();
      ++done;
    } while (rename("name " + std::to_string(done)) == 0 && done < 1000);
    EXPECT_EQ(machine(), before);
    EXPECT_EQ(rename("again"), VEX_STATUS_FAILED);
  });
  EXPECT_LT(done, 1000);
  EXPECT_EQ(text,
            "VEXL2: " + path("disk/state.json.journal") +
                ": cannot be written: No space left on device; until that is mended, no change can be kept, "
                "and all are refused\n");
  said([&] { EXPECT_EQ(start(), 0U); });
  EXPECT_EQ(machine(), before) << "a start on the full disk finds it all";
  boost::filesystem::remove(path("disk/filler"));
  EXPECT_EQ(rename("again"), 0U);
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(name(), "again");
}

TEST_F(StateOnItsOwnFileSystem, AReadOnlyFolderCanBeReadAndRefusesChanges) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  stop();
  const std::string before = read("disk/state.json");
  remount(MS_RDONLY);
  const std::string text = said([&] {
    EXPECT_EQ(start(), 0U);
    EXPECT_EQ(name(), "one");
    EXPECT_EQ(rename("two"), VEX_STATUS_FAILED);
    EXPECT_EQ(rename("three"), VEX_STATUS_FAILED);
    EXPECT_EQ(machine(), before);
    stop();
  });
  EXPECT_EQ(text,
            "VEXL2: " + path("disk/state.json.lock") +
                ": cannot be locked: Read-only file system; until that is mended, no change can be kept, "
                "and all are refused\n");
  remount(0);
  EXPECT_EQ(read("disk/state.json"), before);
}

}  // namespace
}  // namespace simulator
