#include "commands/exit_status.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "options.h"
#include "support/by_name.h"

namespace host {

namespace {

struct StatusRow {
  std::string name;
  std::function<int()> work;
  int status;
  std::string told;
};

class ExitStatusTest : public testing::TestWithParam<StatusRow> {};

TEST_P(ExitStatusTest, IsToldWithTheReason) {
  testing::internal::CaptureStderr();
  const int status = statusOf(GetParam().work);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), GetParam().told);
  EXPECT_EQ(status, GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    Ends, ExitStatusTest,
    testing::Values(StatusRow{"AsItIs", [] { return 7; }, 7, ""},
                    StatusRow{"Usage", []() -> int { throw UsageError("no such option"); }, 2,
                              "mirn-host: no such option (--help tells more)\n"},
                    StatusRow{"Failure", []() -> int { throw std::runtime_error("no file"); }, 1,
                              "mirn-host: no file\n"},
                    StatusRow{"NoReason", []() -> int { throw 1; }, 1,
                              "mirn-host: the plug-in failed without a reason\n"}),
    ByName());

}  // namespace

}  // namespace host
