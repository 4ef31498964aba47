#include "health/health_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/machine/small_machine.h"

namespace insight {
namespace {

using testing::ElementsAre;

constexpr std::uint64_t kNow = kSmallMachineTakenAt + 1000;

std::vector<std::string> idsIn(const HealthReport& report) {
  std::vector<std::string> ids;
  for (const Cause& cause : report.causes) ids.push_back(cause.id());
  return ids;
}

TEST(HealthReport, OfASoundMachineIsOk) {
  const HealthReport report = healthOf(smallMachine(), kNow);
  EXPECT_EQ(report.severity, Severity::kOk);
  EXPECT_EQ(report.position.revision, 7U);
  EXPECT_EQ(report.takenAt, kSmallMachineTakenAt);
  ASSERT_EQ(report.volumes.size(), 1U);
  EXPECT_EQ(report.volumes.front().volume.name, L"Data");
  EXPECT_EQ(report.volumes.front().tolerance.mayFail, 1U);
  EXPECT_TRUE(report.volumes.front().tolerance.isExact);
}

TEST(HealthReport, HasTheWorstCauseFirst) {
  MachineView machine = smallMachine();
  machine.volumes.front().state = L"DEGRADED";
  machine.disks[0].state = L"LOCKED";
  machine.disks[1].state = L"SMART_EVENT_TRIGGERED";
  machine.disks[2].state = L"FAILED";
  machine.failedAt = *machine.takenAt + 1;
  const HealthReport report = healthOf(machine, kNow);
  EXPECT_EQ(report.severity, Severity::kCritical);
  EXPECT_THAT(idsIn(report), ElementsAre("volume-degraded-V", "picture-old", "disk-smart-D1",
                                         "disk-failed-D2", "disk-locked-D0"));
}

TEST(HealthReport, IsUnknownWhereThePictureIsOld) {
  const HealthReport report = healthOf(smallMachine(), kNow + 60'000);
  EXPECT_EQ(report.severity, Severity::kUnknown);
  EXPECT_THAT(idsIn(report), ElementsAre("picture-old"));
}

TEST(HealthReport, TakesCausesThatOthersHandIn) {
  MachineView machine = smallMachine();
  machine.disks[0].state = L"SMART_EVENT_TRIGGERED";
  Cause history;
  history.kind = "history";
  Cause worse;
  worse.kind = "notification";
  worse.severity = Severity::kCritical;
  const HealthReport report = healthOf(machine, kNow, {history, worse});
  EXPECT_EQ(report.severity, Severity::kCritical);
  EXPECT_THAT(idsIn(report), ElementsAre("notification", "disk-smart-D0", "history"));
}

}  // namespace
}  // namespace insight
