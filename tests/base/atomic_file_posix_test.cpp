#include "atomic_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include "base/atomic_file_fixture.h"
#include "support/file_size_limit.h"
#include "support/ordinary_user.h"

namespace {

namespace fs = std::filesystem;

class AtomicFileOnPosix : public AtomicFileFixture {
 protected:
  struct stat status() const {
    struct stat status {};
    EXPECT_EQ(::stat(m_path.c_str(), &status), 0);
    return status;
  }

  mode_t mode() const { return status().st_mode & ACCESSPERMS; }
};

TEST_F(AtomicFileOnPosix, IsMadeForWhoIsAskedForWhateverTheMask) {
  for (const mode_t mask : {0000U, 0077U}) {
    const mode_t before = ::umask(mask);
    replaceFile(m_path, "content", Readers::kEveryone);
    EXPECT_EQ(mode(), 0644U);
    fs::remove(m_path);
    replaceFile(m_path, "content", Readers::kOwner);
    EXPECT_EQ(mode(), 0600U);
    fs::remove(m_path);
    makePrivateFile(m_path, "content");
    EXPECT_EQ(mode(), 0600U);
    fs::remove(m_path);
    ::umask(before);
  }
}

TEST_F(AtomicFileOnPosix, KeepsItsMode) {
  for (const mode_t mode : {0640U, 0600U, 0664U, 0444U}) {
    given("old");
    ASSERT_EQ(::chmod(m_path.c_str(), mode), 0);
    for (const Readers readers : {Readers::kEveryone, Readers::kOwner}) {
      replaceFile(m_path, "new", readers);
      EXPECT_EQ(this->mode(), mode);
    }
    fs::remove(m_path);
  }
}

TEST_F(AtomicFileOnPosix, KeepsItsOwnerAndGroup) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser gives files away";
  given("old");
  ASSERT_EQ(::chown(m_path.c_str(), 1234, 5678), 0);
  replaceFile(m_path, "new", Readers::kEveryone);
  EXPECT_EQ(status().st_uid, 1234U);
  EXPECT_EQ(status().st_gid, 5678U);
}

TEST_F(AtomicFileOnPosix, MayBelongToSomebodyElse) {
  given("old");
  fs::permissions(m_path.parent_path(), fs::perms::all);
  {
    const OrdinaryUser user;
    EXPECT_EQ(refusal("new"), "");
  }
  EXPECT_EQ(content(), "new");
}

TEST_F(AtomicFileOnPosix, IsAnotherFileForWhoReadsTheOldOne) {
  given("old");
  std::ifstream reader(m_path);
  replaceFile(m_path, "new", Readers::kEveryone);
  std::string seen;
  reader >> seen;
  EXPECT_EQ(seen, "old");
}

TEST_F(AtomicFileOnPosix, StaysAsItWasWhenTheDiskIsFull) {
  given("old");
  {
    const FileSizeLimit limit(100);
    EXPECT_EQ(refusal(std::string(200, 'x')), std::strerror(EFBIG));
    EXPECT_THROW(makePrivateFile(inFolder("another"), std::string(200, 'x')), std::runtime_error);
  }
  EXPECT_EQ(content(), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFileOnPosix, NeedsRightsOnItsFolder) {
  given("old");
  fs::permissions(m_path.parent_path(), static_cast<fs::perms>(0555));
  {
    const OrdinaryUser user;
    EXPECT_EQ(refusal("new"), std::strerror(EACCES));
    EXPECT_THROW(makePrivateFile(inFolder("another"), "new"), std::runtime_error);
  }
  fs::permissions(m_path.parent_path(), fs::perms::owner_all);
  EXPECT_EQ(content(), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFileOnPosix, IsWrittenInAFolderThatCannotBeListed) {
  fs::permissions(m_path.parent_path(), static_cast<fs::perms>(0333));
  {
    const OrdinaryUser user;
    EXPECT_EQ(refusal("new"), "");
  }
  fs::permissions(m_path.parent_path(), fs::perms::owner_all);
  EXPECT_EQ(content(), "new");
}

TEST_F(AtomicFileOnPosix, DoesNotReplaceWhatIsNoFile) {
  ASSERT_EQ(::mkfifo(m_path.c_str(), 0600), 0);
  EXPECT_EQ(refusal("content"), "is not a regular file");
  EXPECT_FALSE(makePrivateFile(m_path, "content"));
  EXPECT_TRUE(fs::is_fifo(m_path));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFileOnPosix, KeepsWhatALivingWriterIsWriting) {
  const fs::path temporary = inFolder("file.0123456789abcdef.new");
  const int writer = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(::flock(writer, LOCK_EX), 0);
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_TRUE(fs::exists(temporary));
  ASSERT_EQ(::close(writer), 0);
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_FALSE(fs::exists(temporary));
}

class LinkToAtomicFile : public AtomicFileOnPosix {
 protected:
  LinkToAtomicFile() {
    fs::create_directory(inFolder("elsewhere"));
    fs::create_symlink("elsewhere/middle", m_path);
    fs::create_symlink("../target", inFolder("elsewhere/middle"));
  }

  std::string target() const { return readText(m_folder / "target"); }

  void expectLinks() const {
    EXPECT_EQ(fs::read_symlink(m_path), "elsewhere/middle");
    EXPECT_EQ(fs::read_symlink(inFolder("elsewhere/middle")), "../target");
    EXPECT_EQ(entries(), 3U);
  }
};

TEST_F(LinkToAtomicFile, StaysAndItsFileIsReplaced) {
  writeText(m_folder / "target", "old");
  replaceFile(m_path, "new", Readers::kEveryone);
  EXPECT_EQ(target(), "new");
  expectLinks();
}

TEST_F(LinkToAtomicFile, StaysAndItsMissingFileIsMade) {
  replaceFile(m_path, "new", Readers::kEveryone);
  EXPECT_EQ(target(), "new");
  expectLinks();
}

TEST_F(LinkToAtomicFile, StaysAndItsMissingFileIsMadeForItsOwner) {
  EXPECT_TRUE(makePrivateFile(m_path, "new"));
  EXPECT_EQ(target(), "new");
  expectLinks();
}

TEST_F(LinkToAtomicFile, InARingIsRefused) {
  fs::create_symlink("elsewhere/middle", inFolder("target"));
  EXPECT_EQ(refusal("new"), std::strerror(ELOOP));
  expectLinks();
}

}  // namespace
