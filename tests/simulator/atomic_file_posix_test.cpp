#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "core/atomic_file.h"
#include "support/temporary_folder.h"

namespace simulator {
namespace {

/// Writes two contents in turns for ever, and a byte to the pipe after each.
[[noreturn]] void writeForEver(const std::string& path, int pipe, const std::string& even,
                               const std::string& odd) {
  for (int turn = 0;; ++turn) {
    const bool isWritten = replaceFile(path, turn % 2 == 0 ? even : odd);
    if (!isWritten || write(pipe, "x", 1) != 1) _exit(1);
  }
}

TEST(AtomicFileOfAKilledWriter, IsTheOldOneOrTheNewOne) {
  const TemporaryFolder folder;
  const std::string path = (folder / "state.json").string();
  const std::string even(300000, 'e');
  const std::string odd(400000, 'o');
  for (int round = 0; round < 20; ++round) {
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) writeForEver(path, ends[1], even, odd);
    char byte = 0;
    for (int written = 0; written <= round % 5; ++written) ASSERT_EQ(read(ends[0], &byte, 1), 1);
    ASSERT_EQ(kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    close(ends[0]);
    close(ends[1]);
    const std::string found = readText(path);
    EXPECT_TRUE(found == even || found == odd) << "round " << round << ", " << found.size() << " bytes";
  }
}

}  // namespace
}  // namespace simulator
