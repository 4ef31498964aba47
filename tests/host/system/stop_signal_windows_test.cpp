#include "system/stop_signal_windows.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <thread>

#include "system/stop_signal.h"

namespace host {

namespace {

constexpr int kHandlerReturned = 9;
constexpr auto kEndedByCtrlC = static_cast<int>(STATUS_CONTROL_C_EXIT);

/// An orderly stop that takes a while.
[[noreturn]] void stopSlowly(IStopSignal& signal) {
  signal.wait([] {});
  ::Sleep(300);
  std::exit(0);
}

/// As the system does it: the process ends when the handler returns.
void endAfter(unsigned long event) {
  std::thread([event] {
    onConsoleEvent(event);
    ::TerminateProcess(::GetCurrentProcess(), kHandlerReturned);
  }).detach();
}

class StopEventTest : public testing::TestWithParam<unsigned long> {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

using StopKeyTest = StopEventTest;

TEST_P(StopKeyTest, IsAStopSignal) {
  EXPECT_EXIT(
      {
        const auto signal = makeStopSignal();
        if (!onConsoleEvent(GetParam())) std::exit(1);
        stopSlowly(*signal);
      },
      testing::ExitedWithCode(0), "");
}

TEST_P(StopKeyTest, EndsTheProcessWhenItComesAgain) {
  EXPECT_EXIT(
      {
        const auto signal = makeStopSignal();
        onConsoleEvent(CTRL_C_EVENT);
        onConsoleEvent(GetParam());
        stopSlowly(*signal);
      },
      testing::ExitedWithCode(kEndedByCtrlC), "");
}

INSTANTIATE_TEST_SUITE_P(Keys, StopKeyTest, testing::Values(CTRL_C_EVENT, CTRL_BREAK_EVENT));

using StopEndTest = StopEventTest;

TEST_P(StopEndTest, LastsUntilTheOrderlyEnd) {
  EXPECT_EXIT(
      {
        const auto signal = makeStopSignal();
        endAfter(GetParam());
        stopSlowly(*signal);
      },
      testing::ExitedWithCode(0), "");
}

TEST_P(StopEndTest, LetsAStopUnderWayComeToItsEnd) {
  EXPECT_EXIT(
      {
        const auto signal = makeStopSignal();
        onConsoleEvent(CTRL_C_EVENT);
        endAfter(GetParam());
        stopSlowly(*signal);
      },
      testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Ends, StopEndTest, testing::Values(CTRL_CLOSE_EVENT, CTRL_SHUTDOWN_EVENT));

TEST(StopSignal, IsNoEventOfAnotherKind) { EXPECT_FALSE(onConsoleEvent(CTRL_LOGOFF_EVENT)); }

}  // namespace

}  // namespace host
