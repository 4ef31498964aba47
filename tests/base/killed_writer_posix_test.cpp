#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "base/atomic_file_fixture.h"

namespace {

/// Writes two contents in turns for ever, and a byte to the pipe after each.
[[noreturn]] void writeForEver(const std::filesystem::path& path, int pipe, const std::string& even,
                               const std::string& odd) {
  for (int turn = 0;; ++turn) {
    replaceFile(path, turn % 2 == 0 ? even : odd, Readers::kEveryone);
    if (write(pipe, "x", 1) != 1) _exit(1);
  }
}

/// A process that writes for ever, killed when it has written some times and a while has passed.
void writeAndBeKilled(const std::filesystem::path& path, int times, int microseconds, const std::string& even,
                      const std::string& odd) {
  int ends[2] = {};
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) writeForEver(path, ends[1], even, odd);
  char byte = 0;
  for (int written = 0; written < times; ++written) ASSERT_EQ(read(ends[0], &byte, 1), 1);
  usleep(static_cast<useconds_t>(microseconds));
  ASSERT_EQ(kill(child, SIGKILL), 0);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status));
  close(ends[0]);
  close(ends[1]);
}

class AtomicFileOfAKilledWriter : public AtomicFileFixture {};

TEST_F(AtomicFileOfAKilledWriter, IsTheOldOneOrTheNewOneAndNothingElseIsLeftByTheNextWrite) {
  const std::string even(300000, 'e');
  const std::string odd(400000, 'o');
  std::size_t leftovers = 0;
  for (int round = 0; round < 40; ++round) {
    ASSERT_NO_FATAL_FAILURE(writeAndBeKilled(m_path, 1 + round % 5, 37 * round, even, odd));
    const std::string found = content();
    EXPECT_TRUE(found == even || found == odd) << "round " << round << ", " << found.size() << " bytes";
    EXPECT_LE(entries(), 2U) << "more than one write has left";
    leftovers += entries() - 1;
    replaceFile(m_path, even, Readers::kEveryone);
    EXPECT_EQ(entries(), 1U) << "round " << round;
  }
  EXPECT_GT(leftovers, 0U) << "no kill came in the midst of a write";
}

}  // namespace
