#include "atomic_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/file_size_limit.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = boost::filesystem;

class AtomicFile : public testing::Test {
 protected:
  mode_t mode() const {
    struct stat status {};
    EXPECT_EQ(::stat(m_path.c_str(), &status), 0);
    return status.st_mode & ACCESSPERMS;
  }

  TemporaryFolder m_folder;
  fs::path m_path = m_folder / "file";
};

TEST_F(AtomicFile, IsMadeForEveryoneToRead) {
  ASSERT_TRUE(replaceFile(m_path, "content"));
  EXPECT_EQ(readText(m_path), "content");
  EXPECT_EQ(mode(), 0644u);
}

TEST_F(AtomicFile, IsReplacedWholeAndKeepsItsMode) {
  writeText(m_path, "a much longer content than the new one");
  ASSERT_EQ(::chmod(m_path.c_str(), 0640), 0);
  ASSERT_TRUE(replaceFile(m_path, "new"));
  EXPECT_EQ(readText(m_path), "new");
  EXPECT_EQ(mode(), 0640u);
}

TEST_F(AtomicFile, LeavesNothingBesideItself) {
  ASSERT_TRUE(replaceFile(m_path, "content"));
  EXPECT_EQ(m_folder.entries(), 1u);
}

TEST_F(AtomicFile, IsAnotherFileForWhoReadsTheOldOne) {
  writeText(m_path, "old");
  std::ifstream reader(m_path.c_str());
  ASSERT_TRUE(replaceFile(m_path, "new"));
  std::string seen;
  reader >> seen;
  EXPECT_EQ(seen, "old");
}

TEST_F(AtomicFile, StaysAsItWasWhenTheDiskIsFull) {
  writeText(m_path, "old");
  {
    const FileSizeLimit limit(100);
    EXPECT_FALSE(replaceFile(m_path, std::string(200, 'x')));
  }
  EXPECT_EQ(readText(m_path), "old");
  EXPECT_EQ(m_folder.entries(), 1u);
}

TEST_F(AtomicFile, NeedsItsFolder) {
  EXPECT_FALSE(replaceFile(m_folder / "missing" / "file", "content"));
  EXPECT_EQ(m_folder.entries(), 0u);
}

TEST_F(AtomicFile, NeedsRightsOnItsFolder) {
  writeText(m_path, "old");
  fs::permissions(m_folder.path(), static_cast<fs::perms>(0555));
  {
    const OrdinaryUser user;
    EXPECT_FALSE(replaceFile(m_path, "new"));
  }
  fs::permissions(m_folder.path(), fs::owner_all);
  EXPECT_EQ(readText(m_path), "old");
}

TEST_F(AtomicFile, DoesNotReplaceAFolder) {
  fs::create_directory(m_path);
  EXPECT_FALSE(replaceFile(m_path, "content"));
  EXPECT_TRUE(fs::is_directory(m_path));
  EXPECT_EQ(m_folder.entries(), 1u);
}

TEST_F(AtomicFile, MayBeNamedWithoutAFolder) {
  const auto before = fs::current_path();
  fs::current_path(m_folder.path());
  EXPECT_TRUE(replaceFile("file", "content"));
  fs::current_path(before);
  EXPECT_EQ(readText(m_path), "content");
}

}  // namespace
