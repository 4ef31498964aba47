#include <chrono>

#include "simulator/workbench_fixture.h"

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;

using Control = Workbench;

extern "C" VEX_STATUS controlsAreC(void);

TEST_F(Control, CanBeUsedFromC) { EXPECT_EQ(controlsAreC(), kOk); }

TEST_F(Control, LetsCallsFailAndThenGoOn) {
  VEX_SYSTEM_INFO info = {};
  ASSERT_EQ(VexSimFailCalls("VexGetSystemInfo", 1, 2, 23), kOk);
  EXPECT_EQ(VexGetSystemInfo(&info), kOk);
  EXPECT_EQ(VexGetSystemInfo(&info), 23U);
  EXPECT_EQ(VexGetSystemInfo(&info), 23U);
  EXPECT_EQ(VexGetSystemInfo(&info), kOk);
}

TEST_F(Control, LetsCallsFailForEverUntilToldOtherwise) {
  VEX_SYSTEM_INFO info = {};
  ASSERT_EQ(VexSimFailCalls("VexGetSystemInfo", 0, VEXSIM_ALWAYS, 16), kOk);
  for (int call = 0; call < 10; ++call) EXPECT_EQ(VexGetSystemInfo(&info), 16U);
  ASSERT_EQ(VexSimClearFaults(), kOk);
  EXPECT_EQ(VexGetSystemInfo(&info), kOk);
}

TEST_F(Control, AFailedActionDoesNothing) {
  const std::string before = machine();
  ASSERT_EQ(VexSimFailCalls("VexVolumeDelete", 0, 1, 15), kOk);
  EXPECT_EQ(VexVolumeDelete(volumeHandle("five")), 15U);
  EXPECT_EQ(machine(), before);
}

TEST_F(Control, FaultsReachTheBeginningAndTheEnd) {
  ASSERT_EQ(VexSimFailCalls("VexFinalize", 0, 1, 16), kOk);
  EXPECT_EQ(VexFinalize(), 16U);
  ASSERT_EQ(VexFinalize(), kOk);
  ASSERT_EQ(VexSimFailCalls("VexInitialize", 0, 1, 10), kOk);
  EXPECT_EQ(VexInitialize(), 10U);
  ASSERT_EQ(VexInitialize(), kOk);
}

TEST_F(Control, DelaysCalls) {
  VEX_SYSTEM_INFO info = {};
  ASSERT_EQ(VexSimDelayCalls("VexGetSystemInfo", 0, 1, 20), kOk);
  const auto before = std::chrono::steady_clock::now();
  ASSERT_EQ(VexGetSystemInfo(&info), kOk);
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(20));
}

TEST_F(Control, CountsCalls) {
  std::uint64_t before = 0;
  ASSERT_EQ(VexSimCountCalls("VexRescan", &before), kOk);
  ASSERT_EQ(VexRescan(), kOk);
  std::uint64_t after = 0;
  ASSERT_EQ(VexSimCountCalls("VexRescan", &after), kOk);
  EXPECT_EQ(after, before + 1);
}

TEST_F(Control, KnowsTheOperationsByName) {
  std::uint64_t calls = 0;
  EXPECT_EQ(VexSimFailCalls("VexPaint", 0, 1, 1), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimFailCalls(nullptr, 0, 1, 1), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimDelayCalls("VexSimCheck", 0, 1, 1), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimCountCalls("VexPaint", &calls), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimCountCalls("VexRescan", nullptr), VEX_STATUS_INVALID_PARAMETER);
}

TEST_F(Control, ReplacesTheMachineUnderItsCallers) {
  VEX_HANDLE event = 0;
  ASSERT_EQ(VexGetEventHandle(&event), kOk);
  ASSERT_EQ(VexSimLoadText("{}"), kOk);
  EXPECT_TRUE(handles(VexGetControllerHandles).empty());
  EXPECT_EQ(VexEventWait(0, event), kOk);
}

TEST_F(Control, RefusesABadScenarioAndKeepsTheMachine) {
  EXPECT_EQ(VexSimLoadText("{\"colour\": 1}"), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(lastError(), "colour: unknown key");
  EXPECT_NE(volumeHandle("five"), 0U);
  EXPECT_EQ(VexSimLoadFile("/no/such/file.json"), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(lastError(), "/no/such/file.json: cannot be read");
  EXPECT_EQ(VexSimLoadText(nullptr), VEX_STATUS_INVALID_PARAMETER);
  ASSERT_EQ(VexSimLoadText("{}"), kOk);
  EXPECT_EQ(lastError(), "");
}

TEST_F(Control, RefusesAScenarioThatItsCheckWouldNotHoldFor) {
  const std::string before = machine();
  EXPECT_EQ(VexSimLoadText(R"({
    "engines": [{"id": "engine", "levels": []}],
    "controllers": [{"id": "A", "name": "A", "type": "SATA", "engine": "engine"}],
    "devices": [{"id": "a0", "controller": "A", "totalSize": 1056964608}],
    "arrays": [{"id": "empty", "name": "empty", "disks": ["a0"]}]})"),
            VEX_STATUS_INVALID_PARAMETER);
  EXPECT_NE(lastError(), "");
  EXPECT_EQ(machine(), before);
}

TEST_F(Control, CutsTheLastErrorToItsPlace) {
  ASSERT_EQ(VexSimLoadText("[]"), VEX_STATUS_INVALID_PARAMETER);
  char text[8] = "";
  ASSERT_EQ(VexSimLastError(text, sizeof(text)), kOk);
  EXPECT_STREQ(text, "the fil");
  EXPECT_EQ(VexSimLastError(nullptr, 0), kOk);
}

TEST_F(Control, AStoppedClockMovesByHandOnly) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), kOk);
  EXPECT_EQ(volume("volume five").migrationProgress, 0U);
  pass(1000);
  EXPECT_EQ(volume("volume five").migrationProgress, 0xFFFFFFFFU / 5);
}

TEST_F(Control, NeedsNoNullPlaces) {
  EXPECT_EQ(VexSimSaveText(nullptr, nullptr), VEX_STATUS_INVALID_PARAMETER);
}

}  // namespace
