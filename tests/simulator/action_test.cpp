#include "simulator/refusal_rows.h"

// What the actions do when they are not refused.

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;
constexpr std::uint64_t kMiB = 1 << 20;

using Action = Workbench;

Wanted wish(const char* name, std::uint32_t level, std::uint64_t size) {
  Wanted wanted;
  wanted.name = name;
  wanted.level = level;
  wanted.strip = VEX_STRIP_SIZE_64KB;
  wanted.size = size;
  return wanted;
}

TEST_F(Action, SwitchesAControllersFunctions) {
  const VEX_HANDLE a = controller("A").controllerHandle;
  EXPECT_EQ(controller("A").readPatrolEnabled, 0U);
  ASSERT_EQ(VexReadPatrolSetState(a, 1), kOk);
  ASSERT_EQ(VexROHISetState(a, 1), kOk);
  EXPECT_EQ(controller("A").readPatrolEnabled, 1U);
  EXPECT_EQ(controller("A").rohiEnabled, 1U);
  ASSERT_EQ(VexReadPatrolSetState(a, 0), kOk);
  EXPECT_EQ(controller("A").readPatrolEnabled, 0U);
}

TEST_F(Action, LocatesAPort) {
  ASSERT_EQ(VexPortLocate(port("port a0").portHandle, 1), kOk);
  EXPECT_NE(machine().find("\"locate\":true"), std::string::npos);
  ASSERT_EQ(VexPortLocate(port("port a0").portHandle, 0), kOk);
  EXPECT_EQ(machine().find("\"locate\":true"), std::string::npos);
}

TEST_F(Action, ClearsMetadataThatAreTooNew) {
  ASSERT_EQ(VexDiskClearMetadata(diskHandle("uprev")), kOk);
  EXPECT_EQ(disk("uprev").diskState, VEX_DISK_STATE_NORMAL);
}

TEST_F(Action, MarksADiskAsNormalAndItsVolumeIsRebuilt) {
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  ASSERT_EQ(VexDiskMarkAsNormal(diskHandle("a2")), kOk);
  EXPECT_EQ(disk("a2").diskState, VEX_DISK_STATE_NORMAL);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
}

TEST_F(Action, GivesAndTakesTheRoleOfASpare) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), arrayHandle("mirror")), kOk);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_SPARE);
  EXPECT_EQ(disk("a7").freeSize, 0U);
  ASSERT_EQ(VexDiskUnmarkAsSpare(diskHandle("a7")), kOk);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
}

TEST_F(Action, AssignsAStoragePool) {
  ASSERT_EQ(VexDiskAssignStoragePool(diskHandle("a7"), 3), kOk);
  EXPECT_NE(machine().find("\"storagePool\":3"), std::string::npos);
}

TEST_F(Action, UnlocksWithEitherPassword) {
  VEX_UNLOCK_PARAMS params = {};
  std::memcpy(params.password, "01234567890123456789012345678901", 32);  // full: no NUL at its end
  EXPECT_EQ(VexDiskUnlock(diskHandle("locked"), &params), VEX_STATUS_WRONG_PASSWORD);
  params.master = 1;
  EXPECT_EQ(VexDiskUnlock(diskHandle("locked"), &params), kOk);
  EXPECT_EQ(disk("locked").diskState, VEX_DISK_STATE_NORMAL);
  ASSERT_EQ(VexSimLockDisk("locked"), kOk);
  params = {};
  std::strcpy(params.password, "user");
  EXPECT_EQ(VexDiskUnlock(diskHandle("locked"), &params), kOk);
}

TEST_F(Action, CountsWrongPasswordsAnewAfterADiskWasOut) {
  VEX_UNLOCK_PARAMS params = {};
  std::strcpy(params.password, "guess");
  const VEX_HANDLE locked = diskHandle("locked");
  for (int guess = 0; guess < 5; ++guess) {
    EXPECT_EQ(VexDiskUnlock(locked, &params), VEX_STATUS_WRONG_PASSWORD);
  }
  EXPECT_EQ(VexDiskUnlock(locked, &params), VEX_STATUS_UNLOCK_LIMIT_REACHED);
  ASSERT_EQ(VexSimPullDisk("locked"), kOk);
  ASSERT_EQ(VexSimInsertDisk("locked"), kOk);
  ASSERT_EQ(VexRescan(), kOk);
  EXPECT_EQ(VexDiskUnlock(locked, &params), VEX_STATUS_WRONG_PASSWORD);
}

TEST_F(Action, RemovesADiskAtItsPhy) {
  ASSERT_EQ(VexPhyRemove(phyOf("a2"), 1), kOk);
  EXPECT_EQ(disk("a2").diskState, VEX_DISK_STATE_MISSING);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Action, SwitchesTheWriteCacheOfAnArrayAndItsDisks) {
  ASSERT_EQ(VexArraySetWriteCacheState(arrayHandle("five"), 1), kOk);
  EXPECT_EQ(array("array five").writeCacheState, VEX_WRITE_CACHE_ON);
  EXPECT_EQ(disk("a3").writeCachePolicy, VEX_WRITE_CACHE_ON);
  ASSERT_EQ(VexArraySetWriteCacheState(arrayHandle("five"), 0), kOk);
  EXPECT_EQ(array("array five").writeCacheState, VEX_WRITE_CACHE_OFF);
}

TEST_F(Action, AddsDisksAndSpreadsTheVolumesOverThem) {
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7", "a8"})), kOk);
  EXPECT_EQ(array("array five").numDisks, 5U);
  EXPECT_EQ(array("array five").state, VEX_ARRAY_STATE_BUSY);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  EXPECT_EQ(volume("volume five").migrationInProgress, 1U);
  EXPECT_EQ(array("array five").freeSize, 5 * 500 * kMiB);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume five").totalSize, 1000 * kMiB);
  EXPECT_EQ(array("array five").freeSize, 5 * 750 * kMiB);  // 1000 MiB over four disks of data
}

TEST_F(Action, AMigrationGoesOnWhileItsSourceIsSafe) {
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7"})), kOk);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
}

TEST_F(Action, AMigrationWaitsWhileItsSourceIsLost) {
  ASSERT_EQ(VexExpandVolume(volumeHandle("stripe"), 0), kOk);
  pass(1000);
  ASSERT_EQ(VexSimPullDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_FAILED);
  pass(100000);
  ASSERT_EQ(VexSimInsertDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  pass(9000);
  EXPECT_EQ(volume("volume stripe").totalSize, 2000 * kMiB);
}

TEST_F(Action, RebuildsOntoADiskOfChoice) {
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  ASSERT_EQ(VexVolumeRebuild(volumeHandle("five"), diskHandle("large")), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
  EXPECT_EQ(disk("large").arrayHandle, arrayHandle("five"));
  EXPECT_EQ(disk("a2").arrayHandle, 0U);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Action, MarksAFailedVolumeAsNormalThoughItsParityMayBeWrong) {
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  ASSERT_EQ(VexSimFailDisk("a3"), kOk);
  ASSERT_EQ(VexVolumeMarkAsNormal(volumeHandle("five")), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume five").initialized, 0U);
  EXPECT_EQ(disk("a2").diskState, VEX_DISK_STATE_NORMAL);
}

TEST_F(Action, InitializesAVolume) {
  ASSERT_EQ(create(arrayHandle("five"), wish("new", VEX_RAID_LEVEL_5, 0)), kOk);
  const VEX_VOLUME_INFO created = volumeNamed("new");
  EXPECT_EQ(created.initialized, 0U);
  ASSERT_EQ(VexVolumeInitialize(created.volumeHandle), kOk);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_INITIALIZING);
  pass(5000);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volumeNamed("new").initialized, 1U);
}

TEST_F(Action, RenamesAVolume) {
  ASSERT_EQ(VexVolumeRename(volumeHandle("five"), "sixteen letters!"), kOk);
  EXPECT_STREQ(volume("volume five").name, "sixteen letters!");
  EXPECT_EQ(VexVolumeRename(volumeHandle("five"), "sixteen letters!"), kOk) << "it may keep its name";
}

TEST_F(Action, ExpandsAVolume) {
  ASSERT_EQ(VexExpandVolume(volumeHandle("five"), 1500), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  EXPECT_EQ(volume("volume five").totalSize, 1000 * kMiB);
  EXPECT_EQ(disk("a2").freeSize, 250 * kMiB) << "the room is taken from the start";
  pass(7500);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume five").totalSize, 1500 * kMiB);
}

TEST_F(Action, SetsTheCachePolicy) {
  ASSERT_EQ(VexVolumeSetCachePolicy(volumeHandle("five"), VEX_CACHE_POLICY_WRITE_BACK), kOk);
  EXPECT_EQ(volume("volume five").cachePolicy, VEX_CACHE_POLICY_WRITE_BACK);
}

TEST_F(Action, KeepsAJournalForAVolume) {
  const VEX_HANDLE drive = diskHandle("journal");
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), drive, VEX_RWH_POLICY_JOURNALING_DRIVE), kOk);
  EXPECT_EQ(volume("volume five").journalingDriveHandle, drive);
  EXPECT_EQ(disk("journal").diskUsage, VEX_DISK_USAGE_JOURNALING_DRIVE);
  ASSERT_EQ(VexSimPullDisk("journal"), kOk);
  EXPECT_EQ(disk("journal").diskState, VEX_DISK_STATE_MISSING);
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), drive, VEX_RWH_POLICY_DISTRIBUTED), kOk);
  EXPECT_EQ(volume("volume five").rwhPolicy, VEX_RWH_POLICY_DISTRIBUTED);
  EXPECT_EQ(volume("volume five").journalingDriveHandle, 0U);
  EXPECT_EQ(disk("journal").endDeviceHandle, 0U);
}

TEST_F(Action, AVolumeGoesOnWithoutItsJournalAndThatIsTold) {
  const VEX_HANDLE drive = diskHandle("journal");
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), drive, VEX_RWH_POLICY_JOURNALING_DRIVE), kOk);
  char text[256] = "";
  ASSERT_EQ(VexSimCheck(text, sizeof(text)), kOk);
  EXPECT_STREQ(text, "");
  VEX_HANDLE event = 0;
  ASSERT_EQ(VexGetEventHandle(&event), kOk);
  ASSERT_EQ(VexSimFailDisk("journal"), kOk);
  EXPECT_EQ(VexEventWait(0, event), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  ASSERT_EQ(VexSimCheck(text, sizeof(text)), kOk);
  EXPECT_EQ(text, "volume five (" + std::to_string(volumeHandle("five")) +
                      "): goes on without its journal, since the drive journal is lost");
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), 0, VEX_RWH_POLICY_OFF), kOk);
  ASSERT_EQ(VexSimCheck(text, sizeof(text)), kOk);
  EXPECT_STREQ(text, "");
}

TEST_F(Action, AJournalingDriveHasRoomForAJournalInEachGibibyte) {
  const VEX_HANDLE drive = diskHandle("journal");  // 2000 MiB
  Wanted wanted = wish("new", VEX_RAID_LEVEL_5, 100);
  wanted.rwh = VEX_RWH_POLICY_JOURNALING_DRIVE;
  wanted.drive = drive;
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), drive, VEX_RWH_POLICY_JOURNALING_DRIVE), kOk);
  EXPECT_EQ(create(arrayHandle("five"), wanted), VEX_STATUS_DISK_TOO_SMALL);
  EXPECT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), drive, VEX_RWH_POLICY_JOURNALING_DRIVE), kOk)
      << "it has its place there already";
}

TEST_F(Action, MigratesToALevelWithRedundancy) {
  ASSERT_EQ(modify(volumeHandle("stripe"), VEX_RAID_LEVEL_5, diskHandles({"a7"})), kOk);
  EXPECT_EQ(volume("volume stripe").raidLevel, VEX_RAID_LEVEL_5);
  EXPECT_EQ(volume("volume stripe").numDisks, 3U);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  ASSERT_EQ(VexSimPullDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_FAILED) << "it is no RAID 5 yet";
  ASSERT_EQ(VexSimInsertDisk("a5"), kOk);
  pass(10000);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume stripe").totalSize, 2000 * kMiB) << "a size of 0 is all that is free";
  ASSERT_EQ(VexSimPullDisk("a5"), kOk);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Action, ChangesTheStripSizeAlone) {
  ASSERT_EQ(modify(volumeHandle("stripe"), VEX_RAID_LEVEL_0, {}, VEX_STRIP_SIZE_128KB, 600), kOk);
  pass(3000);
  EXPECT_EQ(volume("volume stripe").stripSize, VEX_STRIP_SIZE_128KB);
  EXPECT_EQ(volume("volume stripe").totalSize, 600 * kMiB);
  EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Action, AVolumeThatLeavesRaid5LeavesItsJournal) {
  ASSERT_EQ(VexVolumeSetRwhPolicy(volumeHandle("five"), diskHandle("journal"), 2), kOk);
  ASSERT_EQ(modify(volumeHandle("five"), VEX_RAID_LEVEL_0), kOk);
  EXPECT_EQ(volume("volume five").rwhPolicy, VEX_RWH_POLICY_OFF);
  EXPECT_EQ(disk("journal").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
}

TEST_F(Action, DeletingTheLastVolumeReleasesTheDisks) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), arrayHandle("five")), kOk);
  ASSERT_EQ(VexVolumeDelete(volumeHandle("five")), kOk);
  EXPECT_EQ(volumeHandle("five"), 0U);
  EXPECT_EQ(arrayHandle("five"), 0U);
  EXPECT_EQ(disk("a2").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
  EXPECT_EQ(disk("a2").freeSize, 1000 * kMiB);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_PASS_THROUGH) << "its array is gone";
}

TEST_F(Action, DeletingOneOfTwoVolumesKeepsTheArray) {
  ASSERT_EQ(create(arrayHandle("five"), wish("second", VEX_RAID_LEVEL_0, 0)), kOk);
  EXPECT_EQ(volumeNamed("second").arrayOrdinal, 1U);
  ASSERT_EQ(VexVolumeDelete(volumeHandle("five")), kOk);
  EXPECT_EQ(array("array five").numVolumes, 1U);
  EXPECT_EQ(array("array five").freeSize, 1500 * kMiB);
  ASSERT_EQ(create(arrayHandle("five"), wish("first", VEX_RAID_LEVEL_5, 0)), kOk);
  EXPECT_EQ(volumeNamed("first").arrayOrdinal, 0U) << "a free ordinal is taken again";
}

TEST_F(Action, CreatesAVolumeOfTheSizeAsked) {
  ASSERT_EQ(create(arrayHandle("five"), wish("new", VEX_RAID_LEVEL_5, 999)), kOk);
  const VEX_VOLUME_INFO created = volumeNamed("new");
  EXPECT_EQ(created.totalSize, 999 * kMiB);
  EXPECT_EQ(created.stripSize, VEX_STRIP_SIZE_64KB);
  EXPECT_EQ(created.numDisks, 3U);
  EXPECT_EQ(array("array five").freeSize, 0U);  // half of 999 MiB takes 500 whole mebibytes of each disk
}

TEST_F(Action, CreatesAVolumeFromDisks) {
  const std::vector<VEX_HANDLE> disks = diskHandles({"a7", "a8", "large"});
  ASSERT_EQ(createFromDisks(disks, wish("new", VEX_RAID_LEVEL_5, 0)), kOk);
  const VEX_VOLUME_INFO created = volumeNamed("new");
  EXPECT_EQ(created.totalSize, 2000 * kMiB) << "the smallest disk counts";
  VEX_ARRAY_INFO info = {};
  ASSERT_EQ(VexGetArrayInfo(session(), created.arrayHandle, &info), kOk);
  EXPECT_STREQ(info.name, "Array_0");
  EXPECT_EQ(info.totalSize, 3000 * kMiB);
  EXPECT_EQ(disk("large").arrayHandle, created.arrayHandle);
  EXPECT_EQ(disk("large").freeSize, 0U) << "no member gives more than the smallest";
}

TEST_F(Action, MembersAndArrayAgreeOnWhatIsFree) {
  ASSERT_EQ(createFromDisks(diskHandles({"a7", "large"}), wish("new", VEX_RAID_LEVEL_0, 500)), kOk);
  EXPECT_EQ(disk("a7").freeSize, 750 * kMiB);
  EXPECT_EQ(disk("large").freeSize, 750 * kMiB);
  VEX_ARRAY_INFO info = {};
  ASSERT_EQ(VexGetArrayInfo(session(), volumeNamed("new").arrayHandle, &info), kOk);
  EXPECT_EQ(info.freeSize, 2 * 750 * kMiB);
}

TEST_F(Action, NewMembersTakeTheWriteCacheOfTheirArray) {
  ASSERT_EQ(VexArraySetWriteCacheState(arrayHandle("five"), 1), kOk);
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7"})), kOk);
  EXPECT_EQ(disk("a7").writeCachePolicy, VEX_WRITE_CACHE_ON);
  pass(5000);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(disk("a8").writeCachePolicy, VEX_WRITE_CACHE_ON);
}

TEST_F(Action, ALevelChangeTakesWhatFitsWhereVolumesEndAt2Tb) {
  ASSERT_EQ(modify(volumeHandle("tiny"), VEX_RAID_LEVEL_0, {}, VEX_STRIP_SIZE_128KB), kOk);
  pass(std::uint64_t{1} << 40);
  EXPECT_EQ(volume("volume tiny").totalSize, std::uint64_t{1} << 41);
}

TEST_F(Action, ASpareMayBecomeAMember) {
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a7"), 0), kOk);
  ASSERT_EQ(createFromDisks(diskHandles({"a7", "a8"}), wish("new", VEX_RAID_LEVEL_1, 0)), kOk);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_ARRAY_MEMBER);
}

TEST_F(Action, ASpareThatBecomesAMemberIsCountedOnce) {
  for (const char* const id : {"a7", "a8", "a9", "large", "journal"}) {
    ASSERT_EQ(VexDiskMarkAsSpare(diskHandle(id), 0), kOk)
        << "the engine has room for 18 disks, and 13 are members";
  }
  EXPECT_EQ(VexDiskMarkAsSpare(diskHandle("sectors"), 0), VEX_STATUS_TOO_MANY_ITEMS);
  EXPECT_EQ(createFromDisks(diskHandles({"a7", "a8"}), wish("new", VEX_RAID_LEVEL_1, 0)), kOk);
  EXPECT_EQ(addDisks(arrayHandle("five"), diskHandles({"a9"})), kOk);
  EXPECT_EQ(modify(volumeHandle("stripe"), VEX_RAID_LEVEL_5, diskHandles({"large"})), kOk);
}

TEST_F(Action, X8DisksMakeARaid0) {
  EXPECT_EQ(createFromDisks(diskHandles({"x8", "other x8"}), wish("new", VEX_RAID_LEVEL_0, 0)), kOk);
}

TEST_F(Action, TakesOverTheDataOfASourceDisk) {
  const std::vector<VEX_HANDLE> disks = diskHandles({"system", "a7"});
  ASSERT_EQ(createFromDisks(disks, wish("new", VEX_RAID_LEVEL_0, 0), disks[0]), kOk);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_GENERAL_MIGRATION);
  EXPECT_EQ(volumeNamed("new").totalSize, 1000 * kMiB);
  EXPECT_EQ(volumeNamed("new").systemVolume, 1U);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_GENERAL_MIGRATION)
      << "the data are on the source still";
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  pass(10000);
  EXPECT_EQ(volumeNamed("new").totalSize, 2000 * kMiB);
}

TEST_F(Action, TheSystemMovesWithTheDiskThatTakesOver) {
  const std::vector<VEX_HANDLE> disks = diskHandles({"system", "a7"});
  ASSERT_EQ(createFromDisks(disks, wish("new", VEX_RAID_LEVEL_1, 0), disks[0]), kOk);
  pass(10000);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("system"), kOk);
  EXPECT_EQ(disk("a8").systemDisk, 1U);
  EXPECT_EQ(disk("system").systemDisk, 0U);
  ASSERT_EQ(VexDiskMarkAsNormal(disks[0]), kOk);
  ASSERT_EQ(VexDiskClearMetadata(disks[0]), kOk);
  EXPECT_EQ(VexDiskMarkAsSpare(disks[0], 0), kOk) << "it can be used again";
}

TEST_F(Action, NewHandlesAreNeverThoseOfDeletedObjects) {
  ASSERT_EQ(create(arrayHandle("five"), wish("new", VEX_RAID_LEVEL_0, 0)), kOk);
  const VEX_HANDLE first = volumeNamed("new").volumeHandle;
  ASSERT_EQ(VexVolumeDelete(first), kOk);
  ASSERT_EQ(create(arrayHandle("five"), wish("new", VEX_RAID_LEVEL_0, 0)), kOk);
  EXPECT_GT(volumeNamed("new").volumeHandle, first);
}

class Verification : public Workbench {
 protected:
  void SetUp() override {
    std::string scenario = kWorkbench;
    const std::string place = "\"raidLevel\": \"RAID_5\", ";
    scenario.insert(scenario.rfind(place) + place.size(), "\"latentErrors\": 5, \"latentBadBlocks\": 2, ");
    start(scenario.c_str());
  }

  void verify(std::uint8_t fix, std::uint32_t state) {
    ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), fix), kOk);
    EXPECT_EQ(stateOf("five"), state);
    EXPECT_EQ(volume("volume five").verifyErrors, 0U);
    pass(5000);
    EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  }
};

TEST_F(Verification, FindsWhatIsWrongEachTime) {
  for (int round = 0; round < 2; ++round) {
    verify(0, VEX_VOLUME_STATE_VERIFYING);
    EXPECT_EQ(volume("volume five").verifyErrors, 5U);
    EXPECT_EQ(volume("volume five").verifyBadBlocks, 2U);
  }
}

TEST_F(Verification, RepairsWhatItFinds) {
  verify(1, VEX_VOLUME_STATE_VERIFYING_AND_FIXING);
  EXPECT_EQ(volume("volume five").verifyErrors, 5U);
  verify(0, VEX_VOLUME_STATE_VERIFYING);
  EXPECT_EQ(volume("volume five").verifyErrors, 0U);
}

TEST_F(Verification, CanBeCancelled) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 1), kOk);
  pass(1000);
  ASSERT_EQ(VexVolumeCancelVerify(volumeHandle("five")), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
  EXPECT_EQ(volume("volume five").verifyErrors, 1U) << "a fifth of five";
  EXPECT_EQ(volume("volume five").verifyBadBlocks, 0U);
  verify(0, VEX_VOLUME_STATE_VERIFYING);
  EXPECT_EQ(volume("volume five").verifyErrors, 4U) << "one was repaired";
}

TEST_F(Verification, ShowsWhatItFindsWhileItRuns) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), kOk);
  for (const std::uint32_t found : {1U, 2U, 3U, 4U}) {
    pass(1000);
    EXPECT_EQ(volume("volume five").verifyErrors, found);
  }
}

TEST_F(Verification, KeepsWhatItHasFoundWhenADiskIsLost) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), kOk);
  pass(2000);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  EXPECT_EQ(volume("volume five").verifyErrors, 2U);
}

}  // namespace
