#include "notifications/command_runner.h"

#include <gmock/gmock.h>

#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <future>
#include <thread>

#include "host/system/child_probe.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::StartsWith;

constexpr milliseconds kPatience{30'000};

std::string run(std::vector<std::string> words, milliseconds patience = kPatience) {
  return CommandRunner().run(probe(std::move(words)), "{}", patience);
}

TEST(CommandRunner, TellsHowTheCommandEnded) {
  EXPECT_EQ(run({"exit", "0"}), "");
  EXPECT_EQ(run({"exit", "3"}), "it ended with the status 3");
  EXPECT_EQ(run({"hang"}, milliseconds(300)), "it took too long, and was ended");
}

TEST(CommandRunner, TellsThatItCannotBeRun) {
  EXPECT_THAT(CommandRunner().run({"/nowhere/program"}, "{}", kPatience), StartsWith("it cannot be run: "));
}

TEST(CommandRunner, LetsItSayWhatItLikes) { EXPECT_EQ(run({"write", "5000000", "5000000"}), ""); }

TEST(CommandRunner, IsStopped) {
  const TemporaryFolder folder;
  const auto begun = folder / "begun";
  CommandRunner runner;
  auto end = std::async(std::launch::async, [&] {
    return runner.run(probe({"touch", begun.string()}), "{}", kPatience);
  });
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!boost::filesystem::exists(begun) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
  }
  runner.stop();
  ASSERT_EQ(end.wait_for(seconds(20)), std::future_status::ready);
  EXPECT_EQ(end.get(), "the host stops");
  EXPECT_EQ(runner.run(probe({"exit", "0"}), "{}", kPatience), "the host stops");
}

}  // namespace

}  // namespace host
