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

TEST(VolumeSchema, TellsEveryKeyOfTheForm) {
  const std::string size = R"(pattern = "^[0-9]+$")";
  const auto properties = Volume::schema().member(L"properties");
  EXPECT_EQ(
      linesOf(properties.member(L"id")),
      (Lines{R"(description = "Names the volume; stays the same across restarts.")", R"(type = "string")"}));
  EXPECT_EQ(linesOf(properties.member(L"arrayId")),
            (Lines{R"(description = "The array that the volume lies on.")", R"(refersTo = "array")",
                   R"(type = "string")"}));
  EXPECT_EQ(linesOf(properties.member(L"raidLevel")),
            (Lines{R"(description = "How the data are spread over the disks.")",
                   R"(enum[0] = "RAID_UNKNOWN")", R"(enum[1] = "RAID_INVALID")", R"(enum[2] = "RAID_0")",
                   R"(enum[3] = "RAID_1")", R"(enum[4] = "RAID_5")", R"(enum[5] = "RAID_10")",
                   R"(enum[6] = "UNKNOWN")", R"(type = "string")"}));
  EXPECT_EQ(
      linesOf(properties.member(L"totalSize")),
      (Lines{R"(description = "What the volume holds.")", size, R"(type = "string")", R"(unit = "bytes")"}));
  EXPECT_EQ(linesOf(properties.member(L"migrProgress")),
            (Lines{R"(description = "How far the work under way is.")", "minimum = 0", "progress = true",
                   R"(type = "integer")", R"(unit = "percent")"}));
  EXPECT_EQ(linesOf(properties.member(L"systemVolume")),
            (Lines{R"(description = "Whether the running system lies on it.")", R"(type = "boolean")"}));
  EXPECT_EQ(linesOf(properties.member(L"journalingDriveId")),
            (Lines{R"(condition = "rwhPolicy is RWH_JOURNALING_DRIVE")",
                   R"(description = "The disk that holds the write-hole journal; empty when lost.")",
                   R"(refersTo = "disk")", R"(type = "string")"}));
  EXPECT_EQ(
      linesOf(properties.member(L"verify")),
      (Lines{R"(description = "What verification has counted.")",
             R"(properties.badBlocks.description = "Unreadable blocks found.")",
             "properties.badBlocks.minimum = 0", "properties.badBlocks.progress = true",
             R"(properties.badBlocks.type = "integer")",
             R"(properties.errors.description = "Inconsistencies found.")", "properties.errors.minimum = 0",
             "properties.errors.progress = true", R"(properties.errors.type = "integer")",
             R"(required[0] = "errors")", R"(required[1] = "badBlocks")", R"(type = "object")"}));
}

TEST(VolumeSchema, NamesWhatIsAlwaysThere) {
  EXPECT_EQ(linesOf(Volume::schema().member(L"required")), (Lines{
                                                               "[0] = \"id\"",
                                                               "[1] = \"arrayId\"",
                                                               "[2] = \"arrayOrdinal\"",
                                                               "[3] = \"name\"",
                                                               "[4] = \"state\"",
                                                               "[5] = \"raidLevel\"",
                                                               "[6] = \"totalSize\"",
                                                               "[7] = \"stripSize\"",
                                                               "[8] = \"numDisks\"",
                                                               "[9] = \"migrProgress\"",
                                                               "[10] = \"cachePolicy\"",
                                                               "[11] = \"systemVolume\"",
                                                               "[12] = \"migration\"",
                                                               "[13] = \"initialized\"",
                                                               "[14] = \"verify\"",
                                                               "[15] = \"sectorSize\"",
                                                               "[16] = \"rwhPolicy\"",
                                                           }));
}

TEST(ComparedVolumes, AreTheSameWithOtherHandles) {
  const Volume volume = complete<Volume>().build();
  const Volume moved = complete<Volume>().handle(1).arrayHandle(2).journalingDriveHandle(3).build();
  EXPECT_TRUE(sameForm(volume, moved));
  EXPECT_TRUE(sameStructure(volume, moved));
}

TEST(ComparedVolumes, DifferInProgressWithoutDifferingInStructure) {
  const Volume volume = complete<Volume>().build();
  for (const Volume& worked :
       {complete<Volume>().migrProgress(41).build(), complete<Volume>().verify({3, 5}).build(),
        complete<Volume>().verify({2, 6}).build()}) {
    EXPECT_FALSE(sameForm(volume, worked));
    EXPECT_TRUE(sameStructure(volume, worked));
  }
}

TEST(ComparedVolumes, DifferInStructureWithAnyOtherPublishedField) {
  const Volume volume = complete<Volume>().build();
  for (const Volume& other :
       {complete<Volume>().name(L"Other").build(), complete<Volume>().state(VolumeState::DEGRADED).build(),
        complete<Volume>().totalSize(1).build(), complete<Volume>().sectorSize({512, 512}).build()}) {
    EXPECT_FALSE(sameForm(volume, other));
    EXPECT_FALSE(sameStructure(volume, other));
  }
}

TEST(ComparedVolumes, DifferInALinkThatIsNotPublished) {
  const Volume volume = complete<Volume>().rwhPolicy(RwhPolicy::RWH_OFF).build();
  Volume linked = volume;
  linked.setJournalingDriveId(L"41");
  EXPECT_FALSE(sameForm(volume, linked));
  EXPECT_FALSE(sameStructure(volume, linked));
}

TEST(ComparedVolumes, AreTheSameWhereTwoValuesReadTheSame) {
  EXPECT_TRUE(sameForm(complete<Volume>().state(VolumeState::REBUILDING).build(),
                       complete<Volume>().state(VolumeState::REBUILDING_ALTERNATE).build()));
  EXPECT_TRUE(sameForm(complete<Volume>().rwhPolicy(RwhPolicy::NONE).build(),
                       complete<Volume>().rwhPolicy(RwhPolicy::RWH_OFF).build()));
}

TEST(Volume, KeepsItsHandlesToItself) {
  const Volume volume = complete<Volume>().build();
  EXPECT_EQ(volume.handle(), 0x31U);
  EXPECT_EQ(volume.arrayHandle(), 0x21U);
  EXPECT_EQ(volume.journalingDriveHandle(), 0x41U);
}

}  // namespace
