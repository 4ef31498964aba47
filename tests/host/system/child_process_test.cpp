#include "system/child_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>

#include "host/system/child_probe.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kShort{200};
constexpr std::chrono::seconds kSoon{20};

ChildOrder orderTo(std::vector<std::string> words) {
  return {probe(std::move(words)), "", plainEnvironment(), kSoon};
}

ChildResult runChild(const ChildOrder& order) { return ChildRunner().run(order); }

TEST(ChildProcess, GetsItsInputAndIsHeard) {
  ChildOrder order = orderTo({"copy"});
  order.input = "said";
  const ChildResult result = runChild(order);
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "said");
  EXPECT_EQ(result.errors, "");
}

TEST(ChildProcess, TakesMoreThanAPipeHoldsBothWays) {
  ChildOrder order = orderTo({"copy"});
  order.input = std::string(1'000'000, 'x');
  EXPECT_EQ(runChild(order).output, order.input);
}

TEST(ChildProcess, NeedNotReadItsInput) {
  ChildOrder order = orderTo({"exit", "0"});
  order.input = std::string(1'000'000, 'x');
  const ChildResult result = runChild(order);
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.status, 0);
}

TEST(ChildProcess, TellsItsStatus) { EXPECT_EQ(runChild(orderTo({"exit", "3"})).status, 3); }

TEST(ChildProcess, HasItsErrorsCut) {
  ChildOrder order = orderTo({"write", "4", "1000000"});
  order.mostErrors = 3;
  const ChildResult result = runChild(order);
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.output, "xxxx");
  EXPECT_EQ(result.errors, "yyy");
}

TEST(ChildProcess, IsKilledWhenItsTimeIsOver) {
  ChildOrder order = orderTo({"hang"});
  order.patience = kShort;
  const auto begin = Clock::now();
  EXPECT_EQ(runChild(order).end, ChildEnd::kTooLate);
  EXPECT_GE(Clock::now() - begin, kShort);
  EXPECT_LT(Clock::now() - begin, kSoon);
}

TEST(ChildProcess, IsKilledWhenItWritesTooMuch) {
  ChildOrder order = orderTo({"flood"});
  order.mostOutput = 10'000;
  EXPECT_EQ(runChild(order).end, ChildEnd::kTooMuch);
}

TEST(ChildProcess, HasWrittenTooMuchWhereItEndsWithThat) {
  ChildOrder order = orderTo({"write", "6", "0"});
  order.mostOutput = 5;
  EXPECT_EQ(runChild(order).end, ChildEnd::kTooMuch);
}

TEST(ChildProcess, MayWriteJustAsMuchAsItMay) {
  ChildOrder order = orderTo({"write", "5", "0"});
  order.mostOutput = 5;
  const ChildResult result = runChild(order);
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.output, "xxxxx");
}

TEST(ChildProcess, MayWriteWhatItLikesWhereNobodyHears) {
  ChildOrder order = orderTo({"write", "1000000", "1000000"});
  order.isHeard = false;
  order.mostOutput = 5;
  const ChildResult result = runChild(order);
  EXPECT_EQ(result.end, ChildEnd::kExited);
  EXPECT_EQ(result.output + result.errors, "");
}

TEST(ChildProcess, GetsItsWordsAsTheyAre) {
  EXPECT_EQ(runChild(orderTo({"words", "a b", "", "\"c\"", "\\", "d\\\"", "*", "%PATH%", "$HOME"})).output,
            "a b||\"c\"|\\|d\\\"|*|%PATH%|$HOME|");
}

TEST(ChildProcess, HasTheEnvironmentThatItIsGivenAndNoOther) {
  setVariable("MIRN_TEST_SECRET", "secret");
  ChildOrder order = orderTo({"variable", "MIRN_TEST_SECRET"});
  EXPECT_EQ(runChild(order).output, "none");
  order.environment.emplace_back("MIRN_TEST_SECRET=told");
  EXPECT_EQ(runChild(order).output, "told");
  unsetVariable("MIRN_TEST_SECRET");
  EXPECT_NE(runChild(orderTo({"variable", "PATH"})).output, "none");
}

TEST(ChildProcess, WorksWhereItIsTold) {
  const TemporaryFolder folder;
  ChildOrder order = orderTo({"folder"});
  order.folder = folder.path().string();
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::u8path(runChild(order).output),
                                          std::filesystem::u8path(order.folder)));
  order.folder.clear();
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::u8path(runChild(order).output),
                                          std::filesystem::current_path()));
}

TEST(ChildProcess, IsEndedWhenItsRunnerIsStopped) {
  const TemporaryFolder folder;
  const auto begun = folder / "begun";
  ChildRunner runner;
  auto end = std::async(std::launch::async, [&] {
    ChildOrder order = orderTo({"touch", begun.string()});
    order.patience = std::chrono::hours(1);
    return runner.run(order).end;
  });
  const auto deadline = Clock::now() + kSoon;
  while (!boost::filesystem::exists(begun) && Clock::now() < deadline) std::this_thread::yield();
  runner.stop();
  ASSERT_EQ(end.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(end.get(), ChildEnd::kStopped);
  EXPECT_EQ(runner.run(orderTo({"exit", "0"})).end, ChildEnd::kStopped);
}

TEST(ChildProcess, TellsWhyThereIsNone) {
  EXPECT_THROW(runChild({{"/nowhere/at/all"}, ""}), std::runtime_error);
  EXPECT_THROW(runChild({{}, ""}), std::runtime_error);
}

TEST(IsProgram, IsAFileThatRuns) {
  EXPECT_TRUE(isProgram(probe({}).front()));
  EXPECT_FALSE(isProgram(probe({}).front() + "-not"));
  EXPECT_FALSE(isProgram(std::filesystem::u8path(probe({}).front()).parent_path().u8string()));
}

TEST(HelperProgram, StandsBesideTheHost) {
  const std::filesystem::path program = std::filesystem::u8path(probe({}).front());
  EXPECT_EQ(std::filesystem::u8path(helperProgram(program.stem().u8string())).filename(), program.filename());
  EXPECT_EQ(helperProgram("no-such-program"), "");
}

}  // namespace
}  // namespace host
