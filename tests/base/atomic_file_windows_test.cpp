#include "atomic_file.h"

#include <windows.h>

#include "base/atomic_file_fixture.h"
#include "links.h"
#include "owner_only_windows.h"

namespace {

namespace fs = std::filesystem;

/// A file that this process has open.
class OpenFile {
 public:
  OpenFile(const fs::path& path, DWORD access, DWORD sharing, DWORD disposition)
      : m_handle(::CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                               nullptr)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { ::CloseHandle(m_handle); }

  bool isOpen() const { return m_handle != INVALID_HANDLE_VALUE; }

 private:
  HANDLE m_handle;
};

class AtomicFileOnWindows : public AtomicFileFixture {};

TEST_F(AtomicFileOnWindows, IsMadeForItsOwnerAloneWhenAskedFor) {
  replaceFile(m_path, "content", Readers::kOwner);
  EXPECT_FALSE(letsOthersIn(m_path.wstring()));
  ASSERT_TRUE(makePrivateFile(inFolder("another"), "content"));
  EXPECT_FALSE(letsOthersIn(inFolder("another").wstring()));
}

TEST_F(AtomicFileOnWindows, KeepsItsAccess) {
  replaceFile(m_path, "old", Readers::kOwner);
  replaceFile(m_path, "new", Readers::kEveryone);
  EXPECT_FALSE(letsOthersIn(m_path.wstring()));

  const fs::path open = inFolder("open");
  writeText(m_folder / "open", "for others");
  const bool wasOpen = letsOthersIn(open.wstring());
  replaceFile(open, "new", Readers::kOwner);
  EXPECT_EQ(letsOthersIn(open.wstring()), wasOpen);
}

TEST_F(AtomicFileOnWindows, KeepsWhatALivingWriterIsWriting) {
  const fs::path temporary = inFolder("file.0123456789abcdef.new");
  {
    const OpenFile writer(temporary, GENERIC_WRITE | DELETE, FILE_SHARE_READ, CREATE_NEW);
    ASSERT_TRUE(writer.isOpen());
    replaceFile(m_path, "content", Readers::kEveryone);
    EXPECT_TRUE(fs::exists(temporary));
  }
  replaceFile(m_path, "content", Readers::kEveryone);
  EXPECT_FALSE(fs::exists(temporary));
}

TEST_F(AtomicFileOnWindows, StaysAsItWasWhileSomebodyHoldsIt) {
  given("old");
  {
    const OpenFile holder(m_path, GENERIC_READ, 0, OPEN_EXISTING);
    ASSERT_TRUE(holder.isOpen());
    EXPECT_NE(refusal("new"), "");
  }
  EXPECT_EQ(content(), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFileOnWindows, ThatIsNoLinkIsItself) {
  EXPECT_EQ(behindLinks(m_path), m_path) << "missing";
  given("content");
  EXPECT_EQ(behindLinks(m_path), m_path);
}

}  // namespace
