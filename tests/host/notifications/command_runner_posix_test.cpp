#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <future>

#include "notifications/command_runner.h"
#include "notifications/command_target.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::StartsWith;

constexpr milliseconds kPatience{30'000};

class CommandRunnerOnPosix : public testing::Test {
 protected:
  /// Runs a script of the shell, with the folder as its first argument.
  std::string run(const std::string& script, const std::string& input = "{}",
                  milliseconds patience = kPatience) {
    return m_runner.run({"/bin/sh", "-c", script, "sh", m_folder.path().string()}, input, patience);
  }

  std::string left(const std::string& name) const { return readText(m_folder / name); }

  /// Until the process whose number stands in the file is no more.
  bool awaitEndOf(const std::string& name) const {
    const pid_t process = std::stoi(left(name));
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (kill(process, 0) == 0 && !isZombie(process)) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      usleep(1000);
    }
    return true;
  }

  /// Ended, and not yet taken in by whoever takes in orphans.
  static bool isZombie(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(status), {}};
    const std::size_t name = text.rfind(')');
    return name == std::string::npos || text.compare(name, 3, ") Z") == 0;
  }

  TemporaryFolder m_folder;
  CommandRunner m_runner;
};

TEST_F(CommandRunnerOnPosix, GivesItsInput) {
  EXPECT_EQ(run(R"(cat > "$1/input")", R"({"event": "raised"})"), "");
  EXPECT_EQ(left("input"), R"({"event": "raised"})");
}

TEST_F(CommandRunnerOnPosix, GivesInputOfAnySize) {
  const std::string large(1 << 20, 'x');
  EXPECT_EQ(run(R"(cat > "$1/input")", large), "");
  EXPECT_EQ(left("input"), large);
}

TEST_F(CommandRunnerOnPosix, ItsInputNeedNotBeRead) {
  const std::string large(1 << 20, 'x');
  EXPECT_EQ(run("exec <&-; exit 0", large), "");
  EXPECT_EQ(run("exit 0", large), "");
}

TEST_F(CommandRunnerOnPosix, TellsHowItEnded) {
  EXPECT_EQ(run("exit 3"), "it ended with the status 3");
  EXPECT_EQ(run("kill -TERM $$"), "it was ended by the signal 15");
}

TEST_F(CommandRunnerOnPosix, TellsThatItCannotBeRun) {
  EXPECT_THAT(m_runner.run({"/nowhere/program"}, "{}", kPatience), StartsWith("it cannot be run: "));
}

TEST_F(CommandRunnerOnPosix, NoShellReadsItsWords) {
  const std::string word = R"($(touch "/x"); `x` * " ' \)";
  EXPECT_EQ(
      m_runner.run({"/bin/sh", "-c", R"(printf '%s' "$2" > "$1/word")", "sh", m_folder.path().string(), word},
                   "{}", kPatience),
      "");
  EXPECT_EQ(left("word"), word);
}

TEST_F(CommandRunnerOnPosix, ItsEnvironmentIsClean) {
  setenv("MIRN_TEST_SECRET", "secret", 1);
  EXPECT_EQ(m_runner.run({"/bin/sh", "-c",
                          R"(tr '\0' '\n' < /proc/self/environ > "$1/environment"; pwd > "$1/folder")", "sh",
                          m_folder.path().string()},
                         "{}", kPatience),
            "");
  unsetenv("MIRN_TEST_SECRET");
  // The shell adds PWD to what it hands on.
  const std::string environment = left("environment");
  EXPECT_EQ(environment.find("MIRN_"), std::string::npos) << environment;
  EXPECT_NE(environment.find("PATH=/usr/local/sbin:"), std::string::npos) << environment;
  EXPECT_EQ(left("folder"), "/\n");
}

TEST_F(CommandRunnerOnPosix, FindsNoFileOfOurs) {
  const int ours = dup(1);  // as a socket that nobody has marked
  EXPECT_EQ(run(R"(exec > "$1/files"; ls /proc/$$/fd)"), "");
  close(ours);
  EXPECT_EQ(left("files"), "0\n1\n2\n");
}

TEST_F(CommandRunnerOnPosix, MaySayAsMuchAsItLikes) {
  EXPECT_EQ(run("head -c 5000000 /dev/zero; head -c 5000000 /dev/zero >&2"), "");
}

TEST_F(CommandRunnerOnPosix, OneThatHangsIsEndedWithAllThatItStarted) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(run(R"(trap '' TERM INT HUP; sleep 1000 & echo $! > "$1/child"; echo $$ > "$1/parent"; wait)",
                "{}", seconds(2)),  // enough for a busy machine to start both
            "it took too long, and was ended");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, seconds(20));
  EXPECT_TRUE(awaitEndOf("child"));
  EXPECT_TRUE(awaitEndOf("parent"));
}

TEST_F(CommandRunnerOnPosix, WhatItLeavesBehindIsEnded) {
  EXPECT_EQ(run(R"(sleep 1000 & echo $! > "$1/child")"), "");
  EXPECT_TRUE(awaitEndOf("child"));
}

TEST_F(CommandRunnerOnPosix, AStopEndsIt) {
  auto end =
      std::async(std::launch::async, [this] { return run(R"(echo $$ > "$1/parent"; exec sleep 1000)"); });
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (left("parent").empty() && std::chrono::steady_clock::now() < deadline) usleep(1000);
  m_runner.stop();
  ASSERT_EQ(end.wait_for(seconds(20)), std::future_status::ready);
  EXPECT_EQ(end.get(), "the host stops");
  EXPECT_TRUE(awaitEndOf("parent"));
  EXPECT_EQ(run("exit 0"), "the host stops");
}

TEST(CommandTargetOnPosix, IsAProgram) {
  EXPECT_EQ(wordsOfFailure<std::runtime_error>([] {
              CommandTarget({"/nowhere/x", "secret"}, kPatience);
            }),
            "command /nowhere/x: this is no program that can be run");
  EXPECT_EQ(wordsOfFailure<std::runtime_error>([] { CommandTarget({"/etc/passwd"}, kPatience); }),
            "command /etc/passwd: this is no program that can be run");
  EXPECT_EQ(wordsOfFailure<std::runtime_error>([] { CommandTarget({"/"}, kPatience); }),
            "command /: this is no program that can be run");
  EXPECT_EQ(CommandTarget({"/bin/sh", "secret"}, kPatience).name(), "command /bin/sh");
}

}  // namespace

}  // namespace host
