#include "simulator/refusal_rows.h"

// What becomes of a migration when disks go and come back.

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;

class Migration : public Workbench {
 protected:
  /// Spreads the stripe, 300 MiB of each of two disks, over a third.
  void growStripe() {
    ASSERT_EQ(addDisks(arrayHandle("stripe"), diskHandles({"a7"})), kOk);
    ASSERT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  }

  void expectToWait() {
    pass(1000000);
    EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
    EXPECT_EQ(volume("volume stripe").migrationProgress, 0xFFFFFFFFU);
  }

  void expectToEndIn(std::uint64_t milliseconds) {
    pass(milliseconds - 1);
    EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
    pass(1);
    EXPECT_EQ(stateOf("stripe"), VEX_VOLUME_STATE_NORMAL);
  }

  /// A RAID 5 on three free disks, not initialised.
  void createFive(std::uint64_t size) {
    Wanted wanted;
    wanted.level = VEX_RAID_LEVEL_5;
    wanted.strip = VEX_STRIP_SIZE_64KB;
    wanted.size = size;
    ASSERT_EQ(createFromDisks(diskHandles({"a7", "a8", "a9"}), wanted), kOk);
    ASSERT_EQ(volumeNamed("new").initialized, 0U);
  }
};

TEST_F(Migration, DoesNotEndWhereTheVolumeWouldNotServe) {
  growStripe();
  ASSERT_EQ(VexSimFailDisk("a7"), kOk);
  expectToWait();
  ASSERT_EQ(VexDiskMarkAsNormal(diskHandle("a7")), kOk);
  EXPECT_EQ(volume("volume stripe").migrationProgress, 0U) << "a7 is caught up first";
  expectToEndIn(3000);
}

TEST_F(Migration, CatchesUpTheDisksThatCameBackWhileItRan) {
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7", "a8"})), kOk);
  for (const char* const id : {"a7", "a8"}) ASSERT_EQ(VexSimPullDisk(id), kOk);
  pass(4000);
  for (const char* const id : {"a7", "a8"}) ASSERT_EQ(VexSimInsertDisk(id), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_GENERAL_MIGRATION);
  pass(5000);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Migration, TakesASpareForALostDiskThatItWaitsFor) {
  growStripe();
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(VexSimFailDisk("a7"), kOk);
  EXPECT_EQ(disk("a8").diskUsage, VEX_DISK_USAGE_SPARE) << "nothing is replaced while the migration goes on";
  pass(3000);
  EXPECT_EQ(disk("a8").arrayHandle, arrayHandle("stripe"));
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_OFFLINE_ARRAY);
  expectToEndIn(3000);
}

TEST_F(Migration, TakesADiskOfChoiceForALostDiskThatItWaitsFor) {
  growStripe();
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  EXPECT_EQ(VexVolumeRebuild(volumeHandle("stripe"), diskHandle("a8")), VEX_STATUS_INVALID_STATE);
  expectToWait();
  ASSERT_EQ(VexVolumeRebuild(volumeHandle("stripe"), diskHandle("a8")), kOk);
  expectToEndIn(3000);
}

TEST_F(Migration, CanBeGivenUpWhileItWaits) {
  growStripe();
  EXPECT_EQ(VexVolumeDelete(volumeHandle("stripe")), VEX_STATUS_INVALID_STATE);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  expectToWait();
  EXPECT_EQ(VexVolumeDelete(volumeHandle("stripe")), kOk);
}

TEST_F(Migration, ThatWaitsOnLostDataKeepsNoSpareFromTheOtherVolume) {
  Wanted wanted;
  ASSERT_EQ(create(arrayHandle("five"), wanted), kOk);
  ASSERT_EQ(VexDiskMarkAsSpare(diskHandle("a8"), 0), kOk);
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7"})), kOk);
  ASSERT_EQ(VexSimFailDisk("a2"), kOk);
  pass(100000);
  EXPECT_EQ(volumeNamed("new").state, VEX_VOLUME_STATE_FAILED) << "half a RAID 0 is lost";
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL) << "rebuilt onto the spare";
  EXPECT_EQ(disk("a8").arrayHandle, arrayHandle("five"));
  EXPECT_NE(machine().find(R"("sourceDisks":["a8","a3","a4"])"), std::string::npos) << "it follows";
  EXPECT_EQ(VexVolumeDelete(volumeNamed("new").volumeHandle), kOk);
  EXPECT_EQ(array("array five").state, VEX_ARRAY_STATE_NORMAL);
}

TEST_F(Migration, ThatWritesEverythingAnewLeavesTheVolumeInitialised) {
  createFive(100);
  ASSERT_EQ(VexExpandVolume(volumeNamed("new").volumeHandle, 200), kOk);
  pass(100000);
  EXPECT_EQ(volumeNamed("new").initialized, 0U) << "what is there stays as it is";
  ASSERT_EQ(addDisks(volumeNamed("new").arrayHandle, diskHandles({"large"})), kOk);
  EXPECT_EQ(volumeNamed("new").initialized, 0U);
  pass(100000);
  EXPECT_EQ(volumeNamed("new").initialized, 1U);
}

TEST_F(Migration, ToNoRedundancyLeavesNothingToInitialise) {
  createFive(100);
  ASSERT_EQ(modify(volumeNamed("new").volumeHandle, VEX_RAID_LEVEL_0), kOk);
  EXPECT_EQ(volumeNamed("new").initialized, 1U);
}

TEST_F(Migration, LeavesAMemberThatItDidNotWriteBlank) {
  ASSERT_EQ(addDisks(arrayHandle("five"), diskHandles({"a7"})), kOk);
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  pass(5000);
  ASSERT_EQ(stateOf("five"), VEX_VOLUME_STATE_DEGRADED);
  ASSERT_EQ(VexSimFailDisk("a3"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  ASSERT_EQ(stateOf("five"), VEX_VOLUME_STATE_FAILED);
  EXPECT_EQ(VexVolumeMarkAsNormal(volumeHandle("five")), VEX_STATUS_MARK_AS_NORMAL_FAILED);
  ASSERT_EQ(VexDiskMarkAsNormal(diskHandle("a3")), kOk);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING) << "a3 brings the volume back";
}

TEST_F(Migration, GoesOnAfterARestartFromWhereItWaits) {
  growStripe();
  ASSERT_EQ(VexSimPullDisk("a7"), kOk);
  expectToWait();
  const std::string kept = machine();
  ASSERT_EQ(VexSimLoadText(kept.c_str()), kOk) << lastError();
  EXPECT_EQ(machine(), kept);
  ASSERT_EQ(VexSimInsertDisk("a7"), kOk);
  expectToEndIn(3000);
}

}  // namespace
