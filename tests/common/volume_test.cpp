#include "volume.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PublishedVolume, HasEveryKeyAndNoOther) {
  Volume volume = complete<Volume>().rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).build();
  volume.setArrayId(L"21");
  volume.setJournalingDriveId(L"41");
  EXPECT_EQ(linesOf(volume.toServiceObject()), (Lines{
                                                   "arrayId = \"21\"",
                                                   "arrayOrdinal = 1",
                                                   "cachePolicy = \"WRITE_BACK\"",
                                                   "id = \"31\"",
                                                   "initialized = true",
                                                   "journalingDriveId = \"41\"",
                                                   "migrProgress = 40",
                                                   "migration = false",
                                                   "name = \"Data\"",
                                                   "numDisks = 3",
                                                   "raidLevel = \"RAID_5\"",
                                                   "rwhPolicy = \"RWH_JOURNALING_DRIVE\"",
                                                   "sectorSize.logical = \"512\"",
                                                   "sectorSize.physical = \"4096\"",
                                                   "state = \"NORMAL\"",
                                                   "stripSize = \"SIZE_64KB\"",
                                                   "systemVolume = true",
                                                   "totalSize = \"2000\"",
                                                   "verify.badBlocks = 5",
                                                   "verify.errors = 2",
                                               }));
}

TEST(PublishedVolume, NamesNoJournalingDriveUnderAnotherPolicy) {
  for (const RwhPolicy policy : {RwhPolicy::NONE, RwhPolicy::RWH_OFF, RwhPolicy::RWH_DISTRIBUTED}) {
    Volume volume = complete<Volume>().rwhPolicy(policy).build();
    volume.setJournalingDriveId(L"41");
    EXPECT_FALSE(volume.toServiceObject().hasKey(L"journalingDriveId")) << static_cast<int>(policy);
  }
}

TEST(PublishedVolume, NamesAnEmptyJournalingDriveThatWasNotFound) {
  const auto form = complete<Volume>().rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"journalingDriveId")), Lines{"\"\""});
}

TEST(PublishedVolume, KeepsASizeThatADoubleCannotHold) {
  const auto form = complete<Volume>().totalSize(9007199254740993U).build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"totalSize")), Lines{"\"9007199254740993\""});
}

TEST(Volume, KeepsItsHandlesToItself) {
  const Volume volume = complete<Volume>().build();
  EXPECT_EQ(volume.handle(), 0x31U);
  EXPECT_EQ(volume.arrayHandle(), 0x21U);
  EXPECT_EQ(volume.journalingDriveHandle(), 0x41U);
}

}  // namespace
