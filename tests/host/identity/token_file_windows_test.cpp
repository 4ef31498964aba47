#include <gtest/gtest.h>
#include <windows.h>

#include "atomic_file.h"
#include "identity/token_file.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

/// A file that nobody else may open, as it is for a moment while it takes its name.
class HeldFile {
 public:
  explicit HeldFile(const std::string& path)
      : m_handle(::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                               nullptr)) {}
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;
  ~HeldFile() { release(); }

  bool isHeld() const { return m_handle != INVALID_HANDLE_VALUE; }

  void release() {
    if (isHeld()) ::CloseHandle(m_handle);
    m_handle = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE m_handle;
};

TEST(TokenFileInUse, IsReadWhenItIsFree) {
  const TemporaryFolder folder;
  const std::string path = (folder / "token").string();
  const std::string token(40, 'x');
  ASSERT_TRUE(makePrivateFile(path, token + "\n"));
  HeldFile held(path);
  ASSERT_TRUE(held.isHeld());
  int pauses = 0;
  const auto release = [&](std::chrono::milliseconds) {
    if (++pauses == 3) held.release();
  };
  EXPECT_EQ(loadOrCreateToken(path, release), token);
  EXPECT_EQ(pauses, 3);
}

}  // namespace

}  // namespace host
