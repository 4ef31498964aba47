#include "fault_points.h"

#include <gtest/gtest.h>

#include <chrono>

namespace vexl2 {
namespace {

using Order = FaultPoints::Order;

class FaultPointsTest : public testing::Test {
 protected:
  /// What the next call of the operation answers, 0 when it goes through.
  Status call(const std::string& operation = "VexRescan") { return m_points.pass(operation).value_or(0); }

  FaultPoints m_points;
};

TEST_F(FaultPointsTest, LetCallsThroughWithoutAnOrder) {
  EXPECT_EQ(m_points.pass("VexRescan"), std::nullopt);
}

TEST_F(FaultPointsTest, FailSoManyCallsAfterThoseThatGoThrough) {
  m_points.add("VexRescan", {1, 2, 15, 0});
  EXPECT_EQ(call(), 0U);
  EXPECT_EQ(call(), 15U);
  EXPECT_EQ(call(), 15U);
  EXPECT_EQ(call(), 0U);
}

TEST_F(FaultPointsTest, FailTheOperationOfTheirNameOnly) {
  m_points.add("VexRescan", {0, 1, 15, 0});
  EXPECT_EQ(call("VexFinalize"), 0U);
  EXPECT_EQ(call(), 15U);
}

TEST_F(FaultPointsTest, DoNothingForNoCalls) {
  m_points.add("VexRescan", {0, 0, 15, 0});
  m_points.add("VexRescan", {3, 0, 15, 0});
  for (int round = 0; round < 10; ++round) EXPECT_EQ(call(), 0U);
}

TEST_F(FaultPointsTest, AreUsedUpOneAfterTheOther) {
  m_points.add("VexRescan", {0, 2, 15, 0});
  m_points.add("VexRescan", {1, 1, 16, 0});
  EXPECT_EQ(call(), 15U);
  EXPECT_EQ(call(), 15U);
  EXPECT_EQ(call(), 0U);
  EXPECT_EQ(call(), 16U);
  EXPECT_EQ(call(), 0U);
}

TEST_F(FaultPointsTest, LastForEverUntilTheNextOrder) {
  m_points.add("VexRescan", {0, FaultPoints::kAlways, 15, 0});
  for (int round = 0; round < 10; ++round) EXPECT_EQ(call(), 15U);
  m_points.add("VexRescan", {0, 1, 16, 0});
  EXPECT_EQ(call(), 16U);
  EXPECT_EQ(call(), 0U);
}

TEST_F(FaultPointsTest, AnswerAStatusAlsoWhenItIsSuccess) {
  m_points.add("VexRescan", {0, 1, VEX_STATUS_SUCCESS, 0});
  EXPECT_EQ(m_points.pass("VexRescan"), VEX_STATUS_SUCCESS);
}

TEST_F(FaultPointsTest, DelayAndFailOneCall) {
  m_points.add("VexRescan", {0, 1, {}, 20});
  m_points.add("VexRescan", {0, 1, 15, 0});
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(call(), 15U);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(20));
}

TEST_F(FaultPointsTest, AreForgottenAtOnceButNotTheCount) {
  m_points.add("VexRescan", {0, 5, 15, 0});
  EXPECT_EQ(call(), 15U);
  m_points.clear();
  EXPECT_EQ(call(), 0U);
  EXPECT_EQ(m_points.callsOf("VexRescan"), 2U);
  EXPECT_EQ(m_points.callsOf("VexFinalize"), 0U);
}

}  // namespace
}  // namespace vexl2
