#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <ostream>

#include "base/atomic_file_fixture.h"

// The linker leads these calls of the writer here first.

namespace {

/// Which call fails, and how.
struct Fault {
  std::string call;
  int turn = 1;  ///< counted from 1
  int error = 0;
};

Fault pending;
int failed = 0;
std::size_t mostAtOnce = std::numeric_limits<std::size_t>::max();

bool fails(const char* call) {
  if (pending.call != call || --pending.turn != 0) return false;
  ++failed;
  errno = pending.error;
  return true;
}

}  // namespace

extern "C" {

int realOpen(const char* path, int flags, ...) __asm__("__real_open");
ssize_t realWrite(int file, const void* bytes, std::size_t count) __asm__("__real_write");
int realFsync(int file) __asm__("__real_fsync");
int realFchmod(int file, mode_t mode) __asm__("__real_fchmod");
int realFchown(int file, uid_t user, gid_t group) __asm__("__real_fchown");
int realFlock(int file, int operation) __asm__("__real_flock");
int realRename(const char* from, const char* to) __asm__("__real_rename");
int realLink(const char* from, const char* to) __asm__("__real_link");
int realUnlink(const char* path) __asm__("__real_unlink");

int tryOpen(const char* path, int flags, ...) __asm__("__wrap_open");
ssize_t tryWrite(int file, const void* bytes, std::size_t count) __asm__("__wrap_write");
int tryFsync(int file) __asm__("__wrap_fsync");
int tryFchmod(int file, mode_t mode) __asm__("__wrap_fchmod");
int tryFchown(int file, uid_t user, gid_t group) __asm__("__wrap_fchown");
int tryFlock(int file, int operation) __asm__("__wrap_flock");
int tryRename(const char* from, const char* to) __asm__("__wrap_rename");
int tryLink(const char* from, const char* to) __asm__("__wrap_link");
int tryUnlink(const char* path) __asm__("__wrap_unlink");

int tryOpen(const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : 0;
  va_end(list);
  return fails("open") ? -1 : realOpen(path, flags, mode);
}

ssize_t tryWrite(int file, const void* bytes, std::size_t count) {
  return fails("write") ? -1 : realWrite(file, bytes, std::min(count, mostAtOnce));
}

int tryFsync(int file) { return fails("fsync") ? -1 : realFsync(file); }
int tryFchmod(int file, mode_t mode) { return fails("fchmod") ? -1 : realFchmod(file, mode); }
int tryFchown(int file, uid_t user, gid_t group) {
  return fails("fchown") ? -1 : realFchown(file, user, group);
}
int tryFlock(int file, int operation) { return fails("flock") ? -1 : realFlock(file, operation); }
int tryRename(const char* from, const char* to) { return fails("rename") ? -1 : realRename(from, to); }
int tryLink(const char* from, const char* to) { return fails("link") ? -1 : realLink(from, to); }
int tryUnlink(const char* path) { return fails("unlink") ? -1 : realUnlink(path); }

}  // extern "C"

namespace {

struct Row {
  const char* name;
  Fault fault;
  bool isRefused;
};

class FailingCall : public AtomicFileFixture, public testing::WithParamInterface<Row> {
 protected:
  FailingCall() {
    failed = 0;
    mostAtOnce = 4;  // every write of these tests is short
  }
  ~FailingCall() override {
    pending = {};
    mostAtOnce = std::numeric_limits<std::size_t>::max();
  }
};

std::string nameOf(const testing::TestParamInfo<Row>& info) { return info.param.name; }

class FailingCallOfAReplacement : public FailingCall {};

TEST_P(FailingCallOfAReplacement, LeavesTheOldContentOrTheNewAndSaysWhich) {
  given("the old content");
  pending = GetParam().fault;
  EXPECT_EQ(refusal("the new content"), GetParam().isRefused ? std::strerror(GetParam().fault.error) : "");
  EXPECT_EQ(failed, 1) << "the call was not made";
  EXPECT_EQ(content(), GetParam().isRefused ? "the old content" : "the new content");
  EXPECT_EQ(entries(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    AtomicFile, FailingCallOfAReplacement,
    testing::Values(
        Row{"Making", {"open", 1, EDQUOT}, true}, Row{"MakingInterrupted", {"open", 1, EINTR}, false},
        Row{"Locking", {"flock", 1, ENOLCK}, false}, Row{"LockingInterrupted", {"flock", 1, EINTR}, false},
        Row{"GivingAway", {"fchown", 1, EPERM}, false}, Row{"SettingTheMode", {"fchmod", 1, EPERM}, true},
        Row{"FirstWrite", {"write", 1, ENOSPC}, true}, Row{"LastWrite", {"write", 4, EIO}, true},
        Row{"WriteInterrupted", {"write", 2, EINTR}, false}, Row{"SyncingTheFile", {"fsync", 1, EIO}, true},
        Row{"SyncingTheFileInterrupted", {"fsync", 1, EINTR}, false},
        Row{"Renaming", {"rename", 1, EBUSY}, true}, Row{"OpeningTheFolder", {"open", 2, EMFILE}, false},
        Row{"SyncingTheFolder", {"fsync", 2, EIO}, false},
        Row{"SyncingTheFolderInterrupted", {"fsync", 2, EINTR}, false}),
    nameOf);

class FailingCallOfAMaking : public FailingCall {};

TEST_P(FailingCallOfAMaking, LeavesNoFileOrAWholeOneAndSaysWhich) {
  pending = GetParam().fault;
  std::string refusal;
  try {
    EXPECT_TRUE(makePrivateFile(m_path, "the new content"));
  } catch (const std::runtime_error& failure) {
    refusal = failure.what();
  }
  EXPECT_EQ(refusal, GetParam().isRefused ? std::strerror(GetParam().fault.error) : "");
  EXPECT_EQ(failed, 1) << "the call was not made";
  EXPECT_EQ(content(), GetParam().isRefused ? "" : "the new content");
  EXPECT_EQ(entries(), GetParam().isRefused ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(AtomicFile, FailingCallOfAMaking,
                         testing::Values(Row{"Making", {"open", 1, ENOSPC}, true},
                                         Row{"SettingTheMode", {"fchmod", 1, EPERM}, true},
                                         Row{"LastWrite", {"write", 4, ENOSPC}, true},
                                         Row{"WriteInterrupted", {"write", 4, EINTR}, false},
                                         Row{"SyncingTheFile", {"fsync", 1, EIO}, true},
                                         Row{"Linking", {"link", 1, EPERM}, true},
                                         Row{"SyncingTheFolder", {"fsync", 2, EIO}, false}),
                         nameOf);

class LeftoverOfAFailingCall : public FailingCall {};

TEST_F(LeftoverOfAFailingCall, GoesWithTheNextWrite) {
  pending = {"unlink", 1, EIO};
  EXPECT_TRUE(makePrivateFile(m_path, "content"));
  EXPECT_EQ(failed, 1);
  EXPECT_EQ(entries(), 2U);
  EXPECT_FALSE(makePrivateFile(m_path, "other"));
  EXPECT_EQ(entries(), 1U);
  EXPECT_EQ(content(), "content");
}

TEST_F(LeftoverOfAFailingCall, StaysWhenItCannotBeHeld) {
  writeText(m_folder / "file.0123456789abcdef.new", "left");
  pending = {"flock", 1, ENOLCK};
  EXPECT_EQ(refusal("content"), "");
  EXPECT_EQ(failed, 1);
  EXPECT_EQ(content(), "content");
  EXPECT_EQ(entries(), 2U);
}

}  // namespace
