#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "simulator/state/state_fixture.h"

// The linker leads these calls of the state's files here first.

namespace {

/// Which call fails from which time on, counted from 1, and for how many times.
struct Fault {
  std::string call;
  int turn = 0;
  int times = 1;
  int error = 0;
};

Fault pending;
int failed = 0;

bool fails(const char* call) {
  if (pending.call != call || --pending.turn > 0 || pending.times == 0) return false;
  --pending.times;
  ++failed;
  errno = pending.error;
  return true;
}

}  // namespace

extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int file, const void* bytes, std::size_t count);
ssize_t __real_pwrite(int file, const void* bytes, std::size_t count, off_t offset);
int __real_fsync(int file);
int __real_ftruncate(int file, off_t size);
int __real_fchmod(int file, mode_t mode);
int __real_fchown(int file, uid_t user, gid_t group);
int __real_flock(int file, int operation);
int __real_rename(const char* from, const char* to);
int __real_close(int file);
FILE* __real_fopen(const char* path, const char* mode);

int __wrap_open(const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : 0;
  va_end(list);
  return fails("open") ? -1 : __real_open(path, flags, mode);
}

/// A call that fails has written half of it.
ssize_t __wrap_write(int file, const void* bytes, std::size_t count) {
  if (!fails("write")) return __real_write(file, bytes, count);
  if (pending.error == EINTR) return -1;
  const int error = errno;
  ssize_t half = __real_write(file, bytes, count / 2);
  errno = error;
  return half = -1;
}

ssize_t __wrap_pwrite(int file, const void* bytes, std::size_t count, off_t offset) {
  return fails("pwrite") ? -1 : __real_pwrite(file, bytes, count, offset);
}
int __wrap_fsync(int file) { return fails("fsync") ? -1 : __real_fsync(file); }
int __wrap_ftruncate(int file, off_t size) { return fails("ftruncate") ? -1 : __real_ftruncate(file, size); }
int __wrap_fchmod(int file, mode_t mode) { return fails("fchmod") ? -1 : __real_fchmod(file, mode); }
int __wrap_fchown(int file, uid_t user, gid_t group) {
  return fails("fchown") ? -1 : __real_fchown(file, user, group);
}
int __wrap_flock(int file, int operation) { return fails("flock") ? -1 : __real_flock(file, operation); }
int __wrap_rename(const char* from, const char* to) { return fails("rename") ? -1 : __real_rename(from, to); }

/// The file is closed all the same.
int __wrap_close(int file) {
  const int result = __real_close(file);
  return fails("close") ? -1 : result;
}

FILE* __wrap_fopen(const char* path, const char* mode) {
  return fails("fopen") ? nullptr : __real_fopen(path, mode);
}

}  // extern "C"

namespace simulator {
namespace {

/// Every call that the state's files make, and the ways in which it fails.
struct Row {
  const char* call;
  std::vector<int> errors;
};

const std::vector<Row> kRows{
    {"open", {EACCES, EMFILE, ENOSPC, EROFS, EIO, EINTR}},
    {"write", {ENOSPC, EIO, EDQUOT, EFBIG, EINTR}},
    {"pwrite", {ENOSPC, EIO}},
    {"fsync", {EIO, ENOSPC, EDQUOT, EINTR}},
    {"ftruncate", {EIO, EINTR}},
    {"fchmod", {EPERM}},
    {"fchown", {EPERM}},
    {"flock", {ENOLCK, EINTR}},
    {"rename", {EBUSY, ENOSPC, EXDEV, EIO}},
    {"close", {EIO}},
    {"fopen", {EACCES, EMFILE, EIO}},
};

class FailingCalls : public StateFixture, public testing::WithParamInterface<Row> {
 protected:
  ~FailingCalls() override { pending = {}; }

  /// Forgets all files and begins with a machine of a few changes.
  void prepare() {
    kill();
    for (const char* const file : {"state.json", "state.json.journal", "state.json.lock"}) {
      boost::filesystem::remove(path(file));
    }
    ASSERT_EQ(start(), 0U);
    ASSERT_EQ(rename("first"), 0U);
  }

  /// One change while the call fails, and what became of it.
  void change(const Fault& fault) {
    const std::string before = machine();
    pending = fault;
    const Status status = rename("second");
    pending = {};
    const std::string after = machine();
    if (status != 0) {
      ASSERT_EQ(status, VEX_STATUS_FAILED);
      ASSERT_EQ(after, before) << "refused and done all the same";
    } else {
      ASSERT_EQ(name(), "second");
    }
    ASSERT_TRUE(status == 0 || fault.error != EINTR) << "a signal is no reason";
    ASSERT_EQ(start(), 0U);
    ASSERT_EQ(machine(), after) << "another machine after a kill";
    ASSERT_EQ(rename("third"), 0U) << "the disk is well again";
    ASSERT_EQ(start(), 0U);
    ASSERT_EQ(name(), "third");
  }

  /// Lets the call fail the first time, the second time and so on, until it is not made so often. Returns how
  /// often it failed.
  template <class Story>
  int forEachTurn(int error, int times, const Story& story) {
    int count = 0;
    for (int turn = 1;; ++turn) {
      prepare();
      failed = 0;
      story(Fault{GetParam().call, turn, times, error});
      if (failed == 0 || HasFatalFailure()) return count;
      ++count;
    }
  }
};

std::string nameOf(const testing::TestParamInfo<Row>& info) { return info.param.call; }

TEST_P(FailingCalls, RefuseTheChangeOrNot) {
  for (const std::uint64_t maxJournalSize : {std::uint64_t{1} << 20, std::uint64_t{10}}) {
    m_options.maxJournalSize = maxJournalSize;
    for (const int error : GetParam().errors) {
      for (const int times : {1, 1000}) {
        if (error == EINTR && times > 1) continue;  // nobody is interrupted for ever
        testing::internal::CaptureStderr();
        const int count = forEachTurn(error, times, [&](const Fault& fault) { change(fault); });
        const std::string text = testing::internal::GetCapturedStderr();
        ASSERT_FALSE(HasFatalFailure())
            << std::strerror(error) << ", " << count << " turns, journal of " << maxJournalSize << "\n"
            << text;
      }
    }
  }
}

TEST_P(FailingCalls, LoseNothingAtTheStartAndAtTheEnd) {
  for (const int error : GetParam().errors) {
    testing::internal::CaptureStderr();
    const auto story = [&](const Fault& fault) {
      const std::string before = machine();
      kill();
      pending = fault;
      const Status status = start();
      if (status == 0) {
        EXPECT_EQ(library().finalize("VexFinalize"), 0U);
      } else {
        EXPECT_EQ(status, VEX_STATUS_FAILED);
      }
      pending = {};
      ASSERT_TRUE(status == 0 || error != EINTR) << "a signal is no reason";
      ASSERT_EQ(start(), 0U);
      ASSERT_EQ(machine(), before);
    };
    const int count = forEachTurn(error, 1, story);
    const std::string text = testing::internal::GetCapturedStderr();
    ASSERT_FALSE(HasFatalFailure()) << std::strerror(error) << "\n" << text;
    EXPECT_GT(count, 0) << "the call is not made";
  }
}

INSTANTIATE_TEST_SUITE_P(State, FailingCalls, testing::ValuesIn(kRows), nameOf);

class FailingProgress : public StateFixture {
 protected:
  ~FailingProgress() override { pending = {}; }
};

TEST_F(FailingProgress, IsSaidOnceAndToldUntilItIsKept) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(library().setClockSpeed(0), 0U);
  for (const char* const volume : {"volume five", "volume mirror"}) {
    ASSERT_EQ(library().change("VexVolumeInitialize",
                               [&](Machine& machine) {
                                 Handle found = 0;
                                 for (const auto& entry : std::as_const(machine).volumes) {
                                   if (entry.second.id == volume) found = entry.first;
                                 }
                                 initializeVolume(machine, found);
                               }),
              0U);
  }
  pending = {"write", 1, 1000, ENOSPC};
  const std::string text = said([&] {
    EXPECT_EQ(library().advanceClock(4000), 0U);  // the mirror's end
    EXPECT_EQ(library().advanceClock(1000), 0U);  // the other's
  });
  pending = {};
  EXPECT_EQ(text,
            "VEXL2: " + path("state.json.journal") +
                ": cannot be written: No space left on device; until that is mended, no change can be kept, "
                "and all are refused\n");
  EXPECT_NE(library().whyBehind(), "");
  ASSERT_EQ(rename("five"), 0U) << "nothing to save";
  ASSERT_EQ(rename("other"), 0U);
  EXPECT_EQ(library().whyBehind(), "");
  const std::string after = machine();
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(machine(), after) << "what could not be saved came with the next change";
}

}  // namespace
}  // namespace simulator
