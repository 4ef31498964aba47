#include "atomic_file.h"

#include "base/atomic_file_fixture.h"

namespace {

namespace fs = std::filesystem;

class AtomicFile : public AtomicFileFixture {};

/// While it lives, relative paths begin in `folder`.
class WorkingFolder {
 public:
  explicit WorkingFolder(const fs::path& folder) : m_before(fs::current_path()) { fs::current_path(folder); }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { fs::current_path(m_before); }

 private:
  const fs::path m_before;
};

TEST_F(AtomicFile, IsMadeAndReplaced) {
  replaceFile(m_path, "one", Readers::kEveryone);
  EXPECT_EQ(content(), "one");
  replaceFile(m_path, "other", Readers::kEveryone);
  EXPECT_EQ(content(), "other");
}

TEST_F(AtomicFile, IsReplacedWhole) {
  given("a much longer content than the new one");
  replaceFile(m_path, "new", Readers::kEveryone);
  EXPECT_EQ(content(), "new");
}

TEST_F(AtomicFile, MayBeEmptyAndMayHoldEveryByte) {
  replaceFile(m_path, "", Readers::kOwner);
  EXPECT_EQ(content(), "");
  const std::string bytes("\0\r\n\xFF\x1A", 5);
  replaceFile(m_path, bytes, Readers::kOwner);
  EXPECT_EQ(content(), bytes);
}

TEST_F(AtomicFile, LeavesNothingBesideItself) {
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_TRUE(makePrivateFile(inFolder("another"), "content"));
  EXPECT_EQ(entries(), 2U);
}

TEST_F(AtomicFile, NeedsItsFolder) {
  EXPECT_NE(refusal(inFolder("missing/file"), "content"), "");
  EXPECT_EQ(entries(), 0U);
}

TEST_F(AtomicFile, DoesNotReplaceAFolder) {
  fs::create_directory(m_path);
  EXPECT_EQ(refusal("content"), "is not a regular file");
  EXPECT_TRUE(fs::is_directory(m_path));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFile, MayBeABareName) {
  const WorkingFolder folder(m_path.parent_path());
  replaceFile("file", "content", Readers::kEveryone);
  EXPECT_TRUE(makePrivateFile("another", "more"));
  EXPECT_EQ(content(), "content");
  EXPECT_EQ(readText(m_folder / "another"), "more");
  EXPECT_EQ(entries(), 2U);
}

TEST_F(AtomicFile, MayHaveANameOfAnyCharacters) {
  const fs::path path = m_path.parent_path() / fs::u8path("ordn\xC3\xBCng \xE2\x82\xAC");
  replaceFile(path, "one", Readers::kEveryone);
  replaceFile(path, "other", Readers::kEveryone);
  std::ifstream stream(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "other");
}

TEST_F(AtomicFile, OfItsOwnerIsMadeOnce) {
  EXPECT_TRUE(makePrivateFile(m_path, "first"));
  EXPECT_FALSE(makePrivateFile(m_path, "second"));
  EXPECT_EQ(content(), "first");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFile, OfItsOwnerIsNotMadeWhereAFolderIs) {
  fs::create_directory(m_path);
  EXPECT_FALSE(makePrivateFile(m_path, "content"));
  EXPECT_TRUE(fs::is_directory(m_path));
}

TEST_F(AtomicFile, WhatAKilledWriterLeftGoesWithTheNextWrite) {
  writeText(m_folder / "file.0123456789abcdef.new", "left");
  writeText(m_folder / "file.fedcba9876543210.new", "left");
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_EQ(entries(), 1U);
  writeText(m_folder / "another.0123456789abcdef.new", "left");
  EXPECT_TRUE(makePrivateFile(inFolder("another"), "content"));
  EXPECT_EQ(entries(), 2U);
}

class NameBeside : public AtomicFileFixture, public testing::WithParamInterface<const char*> {};

TEST_P(NameBeside, IsNobodysLeftover) {
  writeText(m_folder / GetParam(), "mine");
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_EQ(readText(m_folder / GetParam()), "mine");
}

INSTANTIATE_TEST_SUITE_P(AtomicFile, NameBeside,
                         testing::Values("file.new", "file.backup", "file.0123456789abcde.new",
                                         "file.0123456789abcdef0.new", "file.0123456789abcdeg.new",
                                         "file.0123456789abcdef.old", "file.0123456789ABCDEF.new",
                                         "files.0123456789abcdef.new", "0123456789abcdef.new"));

}  // namespace
