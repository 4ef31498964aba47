#include <gtest/gtest.h>

#include <chrono>

#include "host/system/child_probe.h"
#include "support/temporary_folder.h"
#include "system/child_process.h"

namespace host {
namespace {

constexpr std::chrono::seconds kSoon{30};

TEST(ChildProcessOnWindows, TellsTheExceptionThatEndedIt) {
  const ChildResult result =
      ChildRunner().run({probe({"exit", "3221225477"}), "", plainEnvironment(), kSoon});
  EXPECT_EQ(result.end, ChildEnd::kCrashed);
  EXPECT_EQ(static_cast<unsigned>(result.status), 0xC0000005U);
}

/// Which has its output open, and whose end the runner waits for.
TEST(ChildProcessOnWindows, LeavesNothingBehind) {
  const TemporaryFolder folder;
  const auto begin = std::chrono::steady_clock::now();
  const ChildResult result =
      ChildRunner().run({probe({"leave", (folder / "begun").string()}), "", plainEnvironment(), kSoon});
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.output, "begun");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, kSoon);
}

}  // namespace
}  // namespace host
