#include "perform.h"

#include <gtest/gtest.h>

#include "operation_names.h"

namespace vexl2 {
namespace {

TEST(Perform, AnswersWhatTheBodyAnswers) {
  FaultPoints faults;
  EXPECT_EQ(perform(faults, "VexRescan", [] { return Status{7}; }), 7U);
  EXPECT_EQ(faults.callsOf("VexRescan"), 1U);
}

TEST(Perform, AnswersTheStatusOfARefusal) {
  FaultPoints faults;
  EXPECT_EQ(perform(faults, "VexRescan", []() -> Status { throw Refusal(18); }), 18U);
}

TEST(Perform, DoesNothingWhenAFaultIsOrdered) {
  FaultPoints faults;
  faults.add("VexRescan", {0, 1, 15, 0});
  bool isDone = false;
  EXPECT_EQ(perform(faults, "VexRescan", [&]() -> Status { return isDone = true; }), 15U);
  EXPECT_FALSE(isDone);
}

TEST(Perform, SaysWhatItCannotTellAsAStatus) {
  FaultPoints faults;
  testing::internal::CaptureStderr();
  EXPECT_EQ(perform(faults, "VexRescan", []() -> Status { throw std::runtime_error("out of paper"); }),
            VEX_STATUS_INTERNAL_ERROR);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "VEXL2: out of paper\n");
}

TEST(OperationNames, AreThoseOfTheFifty) {
  EXPECT_TRUE(isOperationName("VexInitialize"));
  EXPECT_TRUE(isOperationName("VexFreeEventHandle"));
  EXPECT_FALSE(isOperationName("VexPaint"));
  EXPECT_FALSE(isOperationName(""));
}

}  // namespace
}  // namespace vexl2
