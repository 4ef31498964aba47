#include "system/service_manager_windows.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>

#include "support/by_name.h"
#include "system/stop_signal.h"

namespace host {

namespace {

struct ControlRow {
  std::string name;
  unsigned long control;
};

class StopControlTest : public testing::TestWithParam<ControlRow> {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_P(StopControlTest, IsAStopSignal) {
  EXPECT_EXIT(
      {
        const auto signal = makeStopSignal();
        if (onServiceControl(SERVICE_CONTROL_INTERROGATE) != NO_ERROR) std::exit(1);
        if (onServiceControl(GetParam().control) != NO_ERROR) std::exit(2);
        signal->wait([] {});
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Controls, StopControlTest,
                         testing::Values(ControlRow{"Stop", SERVICE_CONTROL_STOP},
                                         ControlRow{"Shutdown", SERVICE_CONTROL_PRESHUTDOWN}),
                         ByName());

TEST(ServiceControl, OfAnotherKindIsNotKnown) {
  EXPECT_EQ(onServiceControl(SERVICE_CONTROL_PAUSE), ERROR_CALL_NOT_IMPLEMENTED);
}

TEST(Service, IsNotRunWhereTheManagerDidNotStartIt) {
  bool hasRun = false;
  const auto body = [&hasRun] {
    hasRun = true;
    return 0;
  };
  EXPECT_THROW(runAsService(body), std::runtime_error);
  EXPECT_FALSE(hasRun);
}

}  // namespace

}  // namespace host
