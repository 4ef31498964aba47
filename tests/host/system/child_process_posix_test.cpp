#include "system/child_process.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <string>

namespace host {
namespace {

using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kSoon{20};

ChildResult runChild(const ChildOrder& order) { return ChildRunner().run(order); }

/// Of the shell, which has `text` as its script.
ChildOrder script(const std::string& text) { return {{"/bin/sh", "-c", text}, ""}; }

/// As the system tells it: "S" for one that sleeps, "Z" for one that has ended, empty for one that is gone.
std::string stateOf(const std::string& process) {
  std::ifstream file("/proc/" + process + "/stat");
  std::string number;
  std::string name;
  std::string state;
  file >> number >> name >> state;
  return state;
}

TEST(ChildProcessOnPosix, TellsTheSignalThatEndedIt) {
  const ChildResult result = runChild(script("kill -SEGV $$"));
  EXPECT_EQ(result.end, ChildEnd::kCrashed);
  EXPECT_EQ(result.status, SIGSEGV);
}

TEST(ChildProcessOnPosix, LeavesNothingBehind) {
  const auto begin = Clock::now();
  const ChildResult result = runChild(script("sleep 600 & echo $!"));
  EXPECT_LT(Clock::now() - begin, kSoon);
  const std::string sleeper = result.output.substr(0, result.output.find('\n'));
  ASSERT_FALSE(sleeper.empty());
  const auto isRunning = [&] { return !stateOf(sleeper).empty() && stateOf(sleeper) != "Z"; };
  while (isRunning() && Clock::now() - begin < kSoon) ::usleep(1000);
  EXPECT_FALSE(isRunning());
}

TEST(ChildProcessOnPosix, HasTheEnvironmentThatItIsGivenAndNoOther) {
  ChildOrder order{{"/usr/bin/env"}, ""};
  order.environment = {"LANG=C"};
  EXPECT_EQ(runChild(order).output, "LANG=C\n");
}

TEST(ChildProcessOnPosix, HasNothingOpenButItsStreams) {
  const int open = ::fcntl(STDERR_FILENO, F_DUPFD, 100);  // which others might inherit
  ASSERT_GE(open, 100);
  const ChildResult result = runChild(script("for each in /proc/$$/fd/*; do echo ${each##*/}; done"));
  ::close(open);
  EXPECT_EQ(result.output.substr(0, 6), "0\n1\n2\n");
  EXPECT_THAT(result.output, testing::Not(HasSubstr("\n" + std::to_string(open) + "\n")));
}

TEST(ChildProcessOnPosix, TellsWhyThereIsNone) {
  try {
    runChild({{"/nowhere/at/all"}, ""});
    FAIL() << "it ran";
  } catch (const std::runtime_error& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("No such file"));
  }
}

}  // namespace
}  // namespace host
