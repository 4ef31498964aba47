#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>

#include "simulator/state/state_fixture.h"

namespace simulator {
namespace {

/// How often a process is killed; MIRN_KILLS says otherwise.
int kills() {
  const char* const wanted = std::getenv("MIRN_KILLS");
  return wanted == nullptr ? 20 : std::atoi(wanted);
}

class KilledLibrary : public StateFixture {
 protected:
  KilledLibrary() { m_options.maxJournalSize = 3000; }  // folded again and again

  /// Renames for ever, and tells each answer through the pipe.
  [[noreturn]] void renameForEver(int from, int pipe) {
    if (start() != 0) _exit(1);
    for (int number = from;; ++number) {
      if (rename("name " + std::to_string(number)) != 0) _exit(2);
      if (write(pipe, &number, sizeof number) != sizeof number) _exit(3);
    }
  }

  /// The last number that was answered before the process was killed; `from` - 1 when none was.
  int renameAndBeKilled(int from, int microseconds) {
    int ends[2] = {};
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) renameForEver(from, ends[1]);
    close(ends[1]);
    usleep(static_cast<useconds_t>(microseconds));
    EXPECT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "ended by itself: " << status;
    int answered = from - 1;
    int number = 0;
    while (::read(ends[0], &number, sizeof number) == sizeof number) answered = number;
    close(ends[0]);
    return answered;
  }
};

TEST_F(KilledLibrary, LosesNothingThatItAnswered) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("name 0"), 0U);
  StateFixture::kill();
  std::mt19937 random(7);
  int last = 0;
  for (int round = 0; round < kills(); ++round) {
    const int answered = renameAndBeKilled(last + 1, static_cast<int>(random() % 60000));
    testing::internal::CaptureStderr();  // a torn line is said
    const Status status = start();
    const std::string text = testing::internal::GetCapturedStderr();
    ASSERT_EQ(status, 0U) << "round " << round << ": " << text;
    const std::string found = name();
    if (found == "name " + std::to_string(answered + 1)) {
      last = answered + 1;
    } else {
      ASSERT_EQ(found, "name " + std::to_string(answered)) << "round " << round;
      last = answered;
    }
    StateFixture::kill();
  }
  EXPECT_GT(last, kills()) << "the processes were killed before they had done anything";
  RecordProperty("answered", last);
}

TEST_F(KilledLibrary, LeavesItsLockToTheNext) {
  int ends[2] = {};
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    const bool isStarted = start() == 0 && write(ends[1], "x", 1) == 1;
    if (isStarted) pause();
    _exit(1);
  }
  char byte = 0;
  ASSERT_EQ(::read(ends[0], &byte, 1), 1);
  EXPECT_EQ(said([&] { EXPECT_EQ(start(), VEX_STATUS_FAILED); }),
            "VEXL2: " + path("state.json") + ": is in use by process " + std::to_string(child) +
                "; stop that one, or name another file with VEXL2_STATE\n");
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(start(), 0U);
  close(ends[0]);
  close(ends[1]);
}

}  // namespace
}  // namespace simulator
