#include "simulator/refusal_rows.h"
#include "support/by_name.h"

// What becomes of volumes when disks go and come back.

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;

using Incident = Workbench;

TEST_F(Incident, ARedundantVolumeGoesOnDegraded) {
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
  EXPECT_EQ(disk("a2").diskState, VEX_DISK_STATE_FAILED);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_ARRAY_MEMBER);
}

TEST_F(Incident, AMemberPulledIsListedAsMissing) {
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  EXPECT_EQ(disk("a2").diskState, VEX_DISK_STATE_MISSING);
  EXPECT_EQ(phyOf("a2"), 0U);
  EXPECT_EQ(array("array five").numDisks, 3U);
}

TEST_F(Incident, AFreeDiskPulledIsNotListed) {
  const VEX_HANDLE handle = diskHandle("a7");
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  EXPECT_EQ(disk("a7").endDeviceHandle, 0U);
  VEX_END_DEVICE_INFO info = {};
  EXPECT_EQ(VexGetEndDeviceInfo(session(), handle, &info), VEX_STATUS_INVALID_HANDLE);
  EXPECT_EQ(VexDiskMarkAsSpare(handle, 0), VEX_STATUS_INVALID_HANDLE);
}

TEST_F(Incident, APortOfAPulledDeviceIsNotListed) {
  const VEX_HANDLE handle = port("port a0").portHandle;
  ASSERT_EQ(VexSimPullDisk("a0"), kOk);
  EXPECT_EQ(port("port a0").portHandle, 0U);
  EXPECT_EQ(port("port A").connectedPortHandle, 0U);
  EXPECT_EQ(VexPortLocate(handle, 1), VEX_STATUS_INVALID_HANDLE);
}

TEST_F(Incident, AVolumeWithoutRedundancyFails) {
  ASSERT_EQ(VexSimPullDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_FAILED);
  ASSERT_EQ(VexSimInsertDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Incident, AFailedDiskOfAVolumeWithoutRedundancyMayBeMarkedAsNormal) {
  ASSERT_EQ(VexSimFailDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK);
  ASSERT_EQ(VexVolumeMarkAsNormal(volumeHandle("stripe")), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(disk("a5").diskState, VEX_DISK_STATE_NORMAL);
}

TEST_F(Incident, Raid10SurvivesOneLossInEachPair) {
  ASSERT_EQ(VexSimFailDisk("a10"), kOk);
  ASSERT_EQ(VexSimFailDisk("a12"), kOk);
  EXPECT_EQ(stateOf("ten"), VEX_VOLUME_STATE_DEGRADED);
  ASSERT_EQ(VexSimFailDisk("a13"), kOk);
  EXPECT_EQ(stateOf("ten"), VEX_VOLUME_STATE_FAILED);
}

TEST_F(Incident, AMemberThatComesBackIsRebuilt) {
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(array("array five").state, VEX_ARRAY_STATE_BUSY);
  pass(2500);
  EXPECT_EQ(volume("volume five").migrationProgress, 0x7FFFFFFFU);  // half of 500 MiB at 100 MiB a second
  pass(2500);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume five").migrationProgress, 0U);
  EXPECT_EQ(array("array five").state, VEX_ARRAY_STATE_NORMAL);
}

TEST_F(Incident, ASecondLossDuringARebuildFailsTheVolume) {
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  pass(1000);
  ASSERT_EQ(VexSimPullDisk("a3"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_FAILED);
  pass(100000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_FAILED);
}

TEST_F(Incident, TheSecondDiskBringsAFailedVolumeBackAndTheRebuildBeginsAgain) {
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  ASSERT_EQ(VexSimPullDisk("a3"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_FAILED) << "a2 is out of date";
  ASSERT_EQ(VexSimInsertDisk("a3"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Incident, ASpareTakesThePlaceOfALostDisk) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(disk("a7").arrayHandle, arrayHandle("five"));
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_ARRAY_MEMBER);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
  EXPECT_EQ(array("array five").numDisks, 3U);
}

TEST_F(Incident, ADiskMarkedAsSpareServesAtOnce) {
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
}

TEST_F(Incident, DedicatedSparesComeFirstAndSmallOnesBeforeLarge) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("large"), 0), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("journal"), arrayHandle("five")), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(disk("journal").arrayHandle, arrayHandle("five"));
  ASSERT_EQ(VexSimFailDisk("a0"), kOk);
  EXPECT_EQ(disk("a8").arrayHandle, arrayHandle("mirror"));
  EXPECT_EQ(disk("large").diskUsage, VEX_DISK_USAGE_SPARE);
}

TEST_F(Incident, ASpareTooSmallOrOfOtherSectorsStaysASpare) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("small"), 0), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("sectors"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Incident, ADiskPutInIsTakenOnlyWithRebuildOnHotInsert) {
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
  ASSERT_EQ(VexROHISetState(controller("A").controllerHandle, 1), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED) << "a7 is in already";
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(disk("a7").arrayHandle, arrayHandle("five"));
}

TEST_F(Incident, ADiskPutInDuringARebuildIsRememberedForTheSecondLostPair) {
  ASSERT_EQ(VexROHISetState(controller("A").controllerHandle, 1), kOk);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a10"), kOk);
  ASSERT_EQ(disk("a8").arrayHandle, arrayHandle("ten"));
  ASSERT_EQ(VexSimFailDisk("a12"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_PASS_THROUGH) << "the array is at work";
  pass(10000);
  EXPECT_EQ(disk("a7").arrayHandle, arrayHandle("ten"));
  pass(10000);
  EXPECT_EQ(stateOf("ten"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Incident, ADiskPutInWhereNothingIsLostIsForgotten) {
  ASSERT_EQ(VexROHISetState(controller("A").controllerHandle, 1), kOk);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Incident, ADiskReplacedComesBackWithForeignMetadata) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  EXPECT_EQ(disk("a2").endDeviceHandle, 0U);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
  EXPECT_EQ(disk("a2").freeSize, 0U);
  ASSERT_EQ(VexDiskClearMetadata(diskHandle("a2")), kOk);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
  EXPECT_NE(disk("a2").freeSize, 0U);
}

TEST_F(Incident, ADiskThatWasOutWhenItsArrayWasDeletedComesBackWithForeignMetadata) {
  ASSERT_EQ(VexSimPullDisk("a5"), kOk);
  ASSERT_EQ(VexSimFailDisk("a6"), kOk);
  ASSERT_EQ(VexVolumeDelete(volumeHandle("stripe")), kOk);
  EXPECT_EQ(disk("a5").endDeviceHandle, 0U);
  ASSERT_EQ(VexSimInsertDisk("a5"), kOk);
  EXPECT_EQ(disk("a5").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
  EXPECT_EQ(disk("a6").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY) << "nobody could write it";
  ASSERT_EQ(VexDiskClearMetadata(diskHandle("a5")), kOk);
  EXPECT_EQ(disk("a5").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
}

class EmptyArray : public Workbench {
 protected:
  /// The array `five`, whose volume is gone.
  void SetUp() override {
    std::string scenario = kWorkbench;
    const std::string place = "{\"id\": \"engine\", ";
    scenario.insert(scenario.find(place) + place.size(), "\"emptyArraysSupport\": true, ");
    start(scenario.c_str());
    ASSERT_EQ(VexVolumeDelete(volumeHandle("five")), kOk);
    ASSERT_EQ(array("array five").numVolumes, 0U);
  }
};

TEST_F(EmptyArray, GivesItsDisksFreeOneByOne) {
  ASSERT_EQ(VexDiskClearMetadata(diskHandle("a2")), kOk);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
  EXPECT_EQ(array("array five").numDisks, 2U);
  ASSERT_EQ(VexSimPullDisk("a3"), kOk);
  ASSERT_EQ(VexDiskClearMetadata(diskHandle("a4")), kOk);
  EXPECT_EQ(arrayHandle("five"), 0U) << "none of its disks serves any more";
  ASSERT_EQ(VexSimInsertDisk("a3"), kOk);
  EXPECT_EQ(disk("a3").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
}

TEST_F(EmptyArray, TakesASpareForALostMember) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(disk("a7").arrayHandle, arrayHandle("five"));
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
  Wanted wanted;
  wanted.level = VEX_RAID_LEVEL_5;
  EXPECT_EQ(create(arrayHandle("five"), wanted), kOk);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Incident, WithoutHotPlugARescanNoticesADiskPutIn) {
  ASSERT_EQ(VexSimPullDisk("sectors"), kOk);
  ASSERT_EQ(VexSimInsertDisk("sectors"), kOk);
  EXPECT_EQ(disk("sectors").endDeviceHandle, 0U);
  ASSERT_EQ(VexRescan(), kOk);
  EXPECT_NE(disk("sectors").endDeviceHandle, 0U);
}

TEST_F(Incident, ALockedMemberLocksAVolumeThatNeedsIt) {
  ASSERT_EQ(VexSimLockDisk("a5"), kOk);
  EXPECT_EQ(disk("a5").diskState, VEX_DISK_STATE_LOCKED);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_LOCKED);
  ASSERT_EQ(VexSimLockDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED) << "a RAID 5 does not need it";
}

TEST_F(Incident, ASmartEventTakesNothingFromAVolume) {
  ASSERT_EQ(VexSimRaiseSmartEvent("a5"), kOk);
  EXPECT_EQ(disk("a5").diskState, VEX_DISK_STATE_SMART_EVENT_TRIGGERED);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
  ASSERT_EQ(VexDiskResetSmartEvent(diskHandle("a5")), kOk);
  EXPECT_EQ(disk("a5").diskState, VEX_DISK_STATE_NORMAL);
}

TEST_F(Incident, AVerificationEndsWhenADiskIsLost) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Incident, BothVolumesOfAnArrayAreRebuilt) {
  VEX_CREATE_VOLUME_PARAMS params = {};
  params.arrayHandle = arrayHandle("five");
  std::strcpy(params.name, "second");
  params.raidLevel = VEX_RAID_LEVEL_5;
  params.stripSize = VEX_STRIP_SIZE_64KB;
  ASSERT_EQ(VexVolumeCreate(params), kOk);
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(volumeNamed("second").state, VEX_VOLUME_STATE_REBUILDING);
  pass(5000);
  EXPECT_EQ(volume("volume five").migrationProgress, 0x7FFFFFFFU) << "both share the rate of the disks";
  EXPECT_EQ(volumeNamed("second").migrationProgress, 0x7FFFFFFFU);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volumeNamed("second").state, VEX_VOLUME_STATE_NORMAL);
}

struct FactRow {
  std::string name;
  const char* disk;
  VEX_STATUS (*befall)(const char*);
  std::uint32_t state;
};

void PrintTo(const FactRow& row, std::ostream* stream) { *stream << row.name; }

class Fact : public Workbench, public testing::WithParamInterface<FactRow> {};

TEST_P(Fact, OutlivesAFailure) {
  const char* const id = GetParam().disk;
  if (GetParam().befall != nullptr) {
    ASSERT_EQ(GetParam().befall(id), kOk);
  }
  ASSERT_EQ(disk(id).diskState, GetParam().state);
  ASSERT_EQ(VexSimFailDisk(id), kOk);
  EXPECT_EQ(disk(id).diskState, VEX_DISK_STATE_FAILED);
  ASSERT_EQ(VexDiskMarkAsNormal(diskHandle(id)), kOk);
  EXPECT_EQ(disk(id).diskState, GetParam().state);
}

INSTANTIATE_TEST_SUITE_P(
    Incident, Fact,
    testing::Values(FactRow{"Lock", "a5", VexSimLockDisk, VEX_DISK_STATE_LOCKED},
                    FactRow{"SmartEvent", "a5", VexSimRaiseSmartEvent, VEX_DISK_STATE_SMART_EVENT_TRIGGERED},
                    FactRow{"BeingUnsupported", "odd", nullptr, VEX_DISK_STATE_UNSUPPORTED},
                    FactRow{"LaterMetadata", "uprev", nullptr, VEX_DISK_STATE_CONFIG_IS_UPREV}),
    ByName());

TEST_F(Incident, ASmartEventOutlivesALock) {
  ASSERT_EQ(VexSimLockDisk("smart"), kOk);
  EXPECT_EQ(disk("smart").diskState, VEX_DISK_STATE_LOCKED);
  const std::string kept = machine();
  EXPECT_NE(kept.find("\"smartEvent\":true"), std::string::npos) << kept;
}

TEST_F(Incident, ALockedVolumeIsNotMarkedAsNormal) {
  ASSERT_EQ(VexSimLockDisk("a5"), kOk);
  ASSERT_EQ(VexSimFailDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_FAILED) << "marking the disk as normal leaves it locked";
  EXPECT_EQ(VexVolumeMarkAsNormal(volumeHandle("stripe")), VEX_STATUS_MARK_AS_NORMAL_FAILED);
  ASSERT_EQ(VexDiskMarkAsNormal(diskHandle("a5")), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_LOCKED);
}

TEST_F(Incident, ALockedMemberIsReplacedOnceItIsPulled) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  ASSERT_EQ(VexSimLockDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED) << "it may be unlocked";
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(disk("a7").arrayHandle, arrayHandle("five"));
}

TEST_F(Incident, ARebuildOntoADiskOfChoiceLeavesTheLockedMemberIn) {
  ASSERT_EQ(VexSimLockDisk("a10"), kOk);
  EXPECT_EQ(VexVolumeRebuild(volumeHandle("ten"), diskHandle("a7")), VEX_STATUS_INVALID_STATE);
  ASSERT_EQ(VexSimFailDisk("a12"), kOk);
  ASSERT_EQ(VexVolumeRebuild(volumeHandle("ten"), diskHandle("a7")), kOk);
  EXPECT_EQ(disk("a10").arrayHandle, arrayHandle("ten"));
  EXPECT_EQ(disk("a12").arrayHandle, 0U);
}

TEST_F(Incident, ADiskTooLargeForItsControllerIsNotTakenWhenItIsPutIn) {
  Wanted wanted;
  wanted.level = VEX_RAID_LEVEL_1;
  ASSERT_EQ(createFromDisks(diskHandles({"d4", "d5"}), wanted), kOk);
  ASSERT_EQ(VexROHISetState(controller("D").controllerHandle, 1), kOk);
  ASSERT_EQ(VexSimFailDisk("d4"), kOk);
  ASSERT_EQ(VexSimPullDisk("d6"), kOk);
  ASSERT_EQ(VexSimInsertDisk("d6"), kOk);
  ASSERT_EQ(VexRescan(), kOk);
  EXPECT_NE(diskHandle("d6"), 0U);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Incident, WhatCannotHappenIsRefused) {
  EXPECT_EQ(VexSimPullDisk("nobody"), VEX_STATUS_INVALID_HANDLE);
  EXPECT_EQ(VexSimPullDisk(""), VEX_STATUS_INVALID_HANDLE)
      << "disks without serial number have no name in it";
  EXPECT_EQ(VexSimPullDisk(nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimInsertDisk("a0"), VEX_STATUS_INVALID_STATE);
  EXPECT_EQ(VexSimFailDisk("optical"), VEX_STATUS_INVALID_DISK);
  EXPECT_EQ(VexSimLockDisk("locked"), VEX_STATUS_INVALID_STATE);
  EXPECT_EQ(VexSimRaiseSmartEvent("smart"), VEX_STATUS_INVALID_STATE);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  EXPECT_EQ(VexSimPullDisk("a7"), VEX_STATUS_INVALID_STATE);
  EXPECT_EQ(VexSimFailDisk("a7"), VEX_STATUS_INVALID_STATE);
}

}  // namespace
