#include "health/machine_causes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "health/cause_kinds.h"
#include "insight/machine/small_machine.h"
#include "support/by_name.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t kNow = kSmallMachineTakenAt + 1000;

std::vector<Cause> causesAfter(void (*spoil)(MachineView&), std::uint64_t now = kNow) {
  MachineView machine = smallMachine();
  spoil(machine);
  machine.index();
  return causesOf(machine, now);
}

VolumeView& volumeOf(MachineView& machine) { return machine.volumes.front(); }
DiskView& memberOf(MachineView& machine) { return machine.disks.front(); }
DiskView& spareOf(MachineView& machine) { return machine.disks.back(); }

TEST(MachineCauses, OfASoundMachineAreNone) {
  EXPECT_THAT(causesAfter([](MachineView&) {}), IsEmpty());
}

struct CauseCase {
  const char* name;
  void (*spoil)(MachineView& machine);
  const char* id;
  Severity severity;
};

void PrintTo(const CauseCase& row, std::ostream* stream) { *stream << row.name; }

class SpoiltMachine : public testing::TestWithParam<CauseCase> {};

TEST_P(SpoiltMachine, HasTheOneCause) {
  const std::vector<Cause> causes = causesAfter(GetParam().spoil);
  ASSERT_THAT(causes, SizeIs(1));
  EXPECT_EQ(causes.front().id(), GetParam().id);
  EXPECT_EQ(causes.front().severity, GetParam().severity);
  EXPECT_EQ(causes.front().text.find('{'), std::string::npos) << causes.front().text;
}

void makeMirror(MachineView& machine) {
  volumeOf(machine).level = L"RAID_1";
  volumeOf(machine).state = L"DEGRADED";
}

INSTANTIATE_TEST_SUITE_P(
    Volumes, SpoiltMachine,
    testing::Values(CauseCase{"Failed", [](MachineView& m) { volumeOf(m).state = L"FAILED"; },
                              "volume-failed-V", Severity::kCritical},
                    CauseCase{"FailedForADisk",
                              [](MachineView& m) { volumeOf(m).state = L"NON_REDUNDANT_VOLUME_FAILED_DISK"; },
                              "volume-failed-V", Severity::kCritical},
                    CauseCase{"Degraded", [](MachineView& m) { volumeOf(m).state = L"DEGRADED"; },
                              "volume-degraded-V", Severity::kCritical},
                    CauseCase{"MirrorOfThreeDegraded", makeMirror, "volume-degraded-V", Severity::kWarning},
                    CauseCase{"MirrorOfThreeWithOneLeft",
                              [](MachineView& m) {
                                makeMirror(m);
                                m.disks.erase(m.disks.begin(), m.disks.begin() + 2);
                              },
                              "volume-degraded-V", Severity::kCritical},
                    CauseCase{"MirrorOfThreeRebuilding",
                              [](MachineView& m) {
                                makeMirror(m);
                                volumeOf(m).state = L"REBUILDING";
                              },
                              "volume-degraded-V", Severity::kCritical},
                    CauseCase{"Rebuilding", [](MachineView& m) { volumeOf(m).state = L"REBUILDING"; },
                              "volume-degraded-V", Severity::kCritical},
                    CauseCase{"RebuildingBehindTheState",
                              [](MachineView& m) {
                                m.work.push_back({L"V", L"REBUILDING"});
                              },
                              "volume-degraded-V", Severity::kCritical},
                    CauseCase{"Locked", [](MachineView& m) { volumeOf(m).state = L"LOCKED"; },
                              "volume-locked-V", Severity::kWarning},
                    CauseCase{"Unknown", [](MachineView& m) { volumeOf(m).state = L"UNKNOWN"; },
                              "volume-unknown-V", Severity::kUnknown},
                    CauseCase{"VerifyErrors", [](MachineView& m) { volumeOf(m).verifyErrors = 1; },
                              "verify-errors-V", Severity::kWarning},
                    CauseCase{"BadBlocks", [](MachineView& m) { volumeOf(m).badBlocks = 1; },
                              "verify-errors-V", Severity::kWarning},
                    CauseCase{"JournalGone",
                              [](MachineView& m) { volumeOf(m).writeHolePolicy = L"RWH_JOURNALING_DRIVE"; },
                              "journaling-drive-lost-V", Severity::kWarning}),
    ByName());

INSTANTIATE_TEST_SUITE_P(
    Disks, SpoiltMachine,
    testing::Values(CauseCase{"MemberFailed", [](MachineView& m) { memberOf(m).state = L"FAILED"; },
                              "disk-failed-D0", Severity::kWarning},
                    CauseCase{"PlainDiskFailed",
                              [](MachineView& m) {
                                m.disks.push_back(spareOf(m));
                                spareOf(m).id = L"P";
                                spareOf(m).usage = L"PASS_THROUGH";
                                spareOf(m).state = L"FAILED";
                              },
                              "disk-failed-P", Severity::kCritical},
                    CauseCase{"Missing", [](MachineView& m) { memberOf(m).state = L"MISSING"; },
                              "disk-missing-D0", Severity::kWarning},
                    CauseCase{"Smart", [](MachineView& m) { memberOf(m).state = L"SMART_EVENT_TRIGGERED"; },
                              "disk-smart-D0", Severity::kWarning},
                    CauseCase{"Offline", [](MachineView& m) { memberOf(m).state = L"OFFLINE"; },
                              "disk-offline-D0", Severity::kInfo},
                    CauseCase{"OfflineByHand", [](MachineView& m) { memberOf(m).state = L"MANUAL_OFFLINE"; },
                              "disk-offline-D0", Severity::kWarning},
                    CauseCase{"OfflineForNoUse",
                              [](MachineView& m) {
                                memberOf(m).state = L"OFFLINE";
                                memberOf(m).usage = L"UNKNOWN";
                              },
                              "disk-offline-D0", Severity::kWarning},
                    CauseCase{"LockedDisk", [](MachineView& m) { memberOf(m).state = L"LOCKED"; },
                              "disk-locked-D0", Severity::kInfo},
                    CauseCase{"Uprev", [](MachineView& m) { memberOf(m).state = L"CONFIG_IS_UPREV"; },
                              "disk-uprev-D0", Severity::kWarning},
                    CauseCase{"Incompatible", [](MachineView& m) { memberOf(m).state = L"INCOMPATIBLE"; },
                              "disk-unsupported-D0", Severity::kWarning},
                    CauseCase{"Unsupported", [](MachineView& m) { memberOf(m).state = L"UNSUPPORTED"; },
                              "disk-unsupported-D0", Severity::kWarning}),
    ByName());

INSTANTIATE_TEST_SUITE_P(
    ArraysAndPicture, SpoiltMachine,
    testing::Values(CauseCase{"NoSpare", [](MachineView& m) { m.disks.pop_back(); }, "no-spare-fits-A",
                              Severity::kInfo},
                    CauseCase{"SpareTooSmall", [](MachineView& m) { --spareOf(m).totalBytes; },
                              "no-spare-fits-A", Severity::kInfo},
                    CauseCase{"SpareElsewhere", [](MachineView& m) { spareOf(m).controllerId = L"OTHER"; },
                              "no-spare-fits-A", Severity::kInfo},
                    CauseCase{"RefreshFailed", [](MachineView& m) { m.failedAt = *m.takenAt + 1; },
                              "picture-old", Severity::kUnknown},
                    CauseCase{"NeverTaken", [](MachineView& m) { m.takenAt.reset(); }, "picture-old",
                              Severity::kUnknown}),
    ByName());

TEST(MachineCauses, OfAPictureComeWhenItIsTwentySecondsOld) {
  const auto none = [](MachineView&) {};
  EXPECT_THAT(causesAfter(none, kSmallMachineTakenAt + 20'000), IsEmpty());
  EXPECT_THAT(causesAfter(none, kSmallMachineTakenAt + 20'001), SizeIs(1));
  EXPECT_THAT(causesAfter(none, kSmallMachineTakenAt - 1000), IsEmpty()) << "the clock was set back";
}

TEST(MachineCauses, TellTheWordsOfAFailedRefresh) {
  const auto causes = causesAfter([](MachineView& m) {
    m.failedAt = *m.takenAt + 1;
    m.failure = L"Device busy";
  });
  EXPECT_NE(causes.front().text.find("Device busy"), std::string::npos) << causes.front().text;
  EXPECT_EQ(causes.front().object.type, "service");
  EXPECT_THAT(causes.front().atRisk, SizeIs(1));
}

TEST(MachineCauses, OfAnArrayWithoutRedundancyAskForNoSpare) {
  EXPECT_THAT(causesAfter([](MachineView& m) {
                volumeOf(m).level = L"RAID_0";
                m.disks.pop_back();
              }),
              IsEmpty());
}

TEST(MachineCauses, LeadFromTheControllerToTheObject) {
  const auto causes = causesAfter([](MachineView& m) { memberOf(m).state = L"FAILED"; });
  const ObjectRef disk{"disk", L"D0", L"SATA N-D0"};
  EXPECT_EQ(causes.front().object, disk);
  EXPECT_THAT(causes.front().path, ElementsAre(ObjectRef{"controller", L"C", L"Controller"},
                                               ObjectRef{"array", L"A", L"Array_0000"}, disk));
  EXPECT_THAT(causes.front().atRisk, ElementsAre(ObjectRef{"volume", L"V", L"Data"}));
  EXPECT_EQ(causes.front().text, "Disk SATA N-D0 has failed.");
}

TEST(MachineCauses, NameTheVolumesWhoseJournalIsOnTheDisk) {
  const auto causes = causesAfter([](MachineView& m) {
    m.disks.push_back(spareOf(m));
    spareOf(m).id = L"J";
    spareOf(m).usage = L"JOURNALING_DRIVE";
    spareOf(m).state = L"MISSING";
    volumeOf(m).writeHolePolicy = L"RWH_JOURNALING_DRIVE";
    volumeOf(m).journalingDriveId = L"J";
  });
  ASSERT_THAT(causes, SizeIs(2));
  EXPECT_EQ(causes[0].kind, "journaling-drive-lost");
  EXPECT_EQ(causes[1].kind, "disk-missing");
  EXPECT_THAT(causes[1].atRisk, ElementsAre(ObjectRef{"volume", L"V", L"Data"}));
}

TEST(MachineCauses, TellWhatToDoNext) {
  const auto degraded = causesAfter([](MachineView& m) { volumeOf(m).state = L"DEGRADED"; });
  ASSERT_THAT(degraded.front().steps, SizeIs(1));
  EXPECT_EQ(degraded.front().steps.front().operation, "rebuildVolume");
  EXPECT_EQ(degraded.front().steps.front().arguments.at("volumeId"), L"V");
  const auto rebuilding = causesAfter([](MachineView& m) { volumeOf(m).state = L"REBUILDING"; });
  EXPECT_THAT(rebuilding.front().steps, IsEmpty()) << "it is being done already";
}

TEST(CauseKinds, HaveARowEachInTheirOrder) {
  for (std::size_t place = 0; place < causeRows().size(); ++place) {
    EXPECT_EQ(static_cast<std::size_t>(causeRows()[place].kind), place) << causeRows()[place].id;
    const auto isSame = [&](const CauseRow& row) { return row.id == causeRows()[place].id; };
    EXPECT_EQ(std::count_if(causeRows().begin(), causeRows().end(), isSame), 1) << causeRows()[place].id;
  }
}

}  // namespace
}  // namespace insight
