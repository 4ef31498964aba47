#include <gmock/gmock.h>

#include "listeners/volumes_listener_fixture.h"

namespace {

using testing::ElementsAre;

TEST_F(VolumesListenerTest, ListsVolumesInTheSessionsOrder) {
  EXPECT_EQ(get(""), forms({m_session.volume(L"5"), m_session.volume(L"7")}));
}

TEST_F(VolumesListenerTest, AListWithoutVolumesIsAnEmptyArray) {
  m_session.volumes.clear();
  EXPECT_EQ(get(""), "[]");
}

TEST_F(VolumesListenerTest, NoRouteReadsASingleVolume) { EXPECT_EQ(get("7"), notFound()); }

TEST_F(VolumesListenerTest, MarkNormalTellsTheNewState) {
  whenActing([](VolumeMaker& volume) { volume.state(VolumeState::NORMAL); });
  EXPECT_EQ(put("7/marknormal"), "state = \"NORMAL\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("markAsNormal(volume 7)"));
}

TEST_F(VolumesListenerTest, InitTellsTheNewState) {
  whenActing([](VolumeMaker& volume) { volume.state(VolumeState::INITIALIZING); });
  EXPECT_EQ(put("7/init"), "state = \"INITIALIZING\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("initialize(volume 7)"));
}

TEST_F(VolumesListenerTest, AStateThatStaysIsNotTold) { EXPECT_EQ(put("7/marknormal"), "volumeId = \"7\""); }

TEST_F(VolumesListenerTest, AChangeBetweenTheTwoRebuildingStatesIsTold) {
  m_session.volume(L"7").state(VolumeState::REBUILDING);
  whenActing([](VolumeMaker& volume) { volume.state(VolumeState::REBUILDING_ALTERNATE); });
  EXPECT_EQ(put("7/marknormal"), "state = \"REBUILDING\", volumeId = \"7\"");
}

TEST_F(VolumesListenerTest, ABodyOfMarkNormalOrInitIsRefusedEvenWhenEmpty) {
  expectInvalid(put("7/marknormal", body({})), "Argument: root not a null type");
  expectInvalid(put("7/init", body({})), "Argument: root not a null type");
}

TEST_F(VolumesListenerTest, RebuildTakesTheVolumeAndTheDisk) {
  whenActing([](VolumeMaker& volume) { volume.state(VolumeState::REBUILDING); });
  EXPECT_EQ(put("7/rebuild", body({{"diskId", "43"}})), "state = \"REBUILDING\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("rebuild(volume 7, disk 43)"));
}

TEST_F(VolumesListenerTest, RebuildReportsAnX8DiskFirst) {
  m_session.disk(L"43").x8(X8Disk::X8_B).sectorSize(4096);
  m_session.volume(L"7").state(VolumeState::NORMAL);
  expectRefused(put("7/rebuild", body({{"diskId", "43"}})), "NOT_SUPPORTED",
                "Rebuild using X8 disks is not supported");
}

TEST_F(VolumesListenerTest, RebuildIsRefusedWithADeviceThatIsNoDisk) {
  m_session.disk(L"43").deviceType(DeviceType::NON_STORAGE);
  expectRefused(put("7/rebuild", body({{"diskId", "43"}})), "INVALID_PARAMETER", "Disk identifier not found");
}

TEST_F(VolumesListenerTest, VerifyStartsWithAndWithoutRepair) {
  EXPECT_EQ(put("7/verify", body({{"action", "START"}, {"repair", false}})), "volumeId = \"7\"");
  EXPECT_EQ(put("7/verify", body({{"action", "START"}, {"repair", true}})), "volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("verify(volume 7, false)", "verify(volume 7, true)"));
}

TEST_F(VolumesListenerTest, CancellingAVerifyIgnoresRepair) {
  EXPECT_EQ(put("7/verify", body({{"action", "CANCEL"}})), "volumeId = \"7\"");
  EXPECT_EQ(put("7/verify", body({{"action", "CANCEL"}, {"repair", true}})), "volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("cancelVerify(volume 7)", "cancelVerify(volume 7)"));
}

TEST_F(VolumesListenerTest, VerifyTellsTheNewState) {
  whenActing([](VolumeMaker& volume) { volume.state(VolumeState::VERIFYING); });
  EXPECT_EQ(put("7/verify", body({{"action", "START"}, {"repair", false}})),
            "state = \"VERIFYING\", volumeId = \"7\"");
}

TEST_F(VolumesListenerTest, TheVerifyActionIsComparedExactly) {
  expectRefused(put("7/verify", body({{"action", "start"}, {"repair", true}})), "INVALID_PARAMETER",
                "Invalid action parameter");
}

TEST_F(VolumesListenerTest, StartingAVerifyNeedsRepair) {
  expectRefused(put("7/verify", body({{"action", "START"}})), "INVALID_PARAMETER",
                "Repair parameter missing");
}

TEST_F(VolumesListenerTest, RepairMustBeABoolean) {
  expectInvalid(put("7/verify", body({{"action", "START"}, {"repair", "yes"}})),
                "Argument: repair not a boolean type");
}

TEST_F(VolumesListenerTest, ResizingPassesTheSizeOnUnchanged) {
  whenActing([](VolumeMaker& volume) { volume.totalSize(5ULL << 20); });
  EXPECT_EQ(put("7/size", body({{"size", "9223372036854775807"}})), "size = \"5\", volumeId = \"7\"");
  put("7/size", body({{"size", "0"}}));
  EXPECT_THAT(m_session.actions, ElementsAre("expand(volume 7, 9223372036854775807)", "expand(volume 7, 0)"));
}

TEST_F(VolumesListenerTest, ASizeThatChangesByBytesIsToldThoughItReadsTheSame) {
  m_session.volume(L"7").totalSize(5ULL << 20);
  whenActing([](VolumeMaker& volume) { volume.totalSize((5ULL << 20) + 512); });
  EXPECT_EQ(put("7/size", body({{"size", "5"}})), "size = \"5\", volumeId = \"7\"");
}

TEST_F(VolumesListenerTest, ASizeMustBeANumberThatIsNotNegative) {
  expectRefused(put("7/size", body({{"size", "-1"}})), "INVALID_PARAMETER", "Invalid size parameter");
  expectRefused(put("7/size", body({{"size", "abc"}})), "INVALID_PARAMETER", "Invalid size parameter");
}

TEST_F(VolumesListenerTest, AnEmptySizeIsRefusedByItsShape) {
  expectInvalid(put("7/size", body({{"size", ""}})), "Argument: size field cannot be empty");
}

TEST_F(VolumesListenerTest, CachePolicyIsSetAndTold) {
  whenActing([](VolumeMaker& volume) { volume.cachePolicy(CachePolicy::WRITE_THROUGH); });
  EXPECT_EQ(put("7/cachepolicy", body({{"cachePolicy", "WRITE_THROUGH"}})),
            "cachePolicy = \"WRITE_THROUGH\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("setCachePolicy(volume 7, WRITE_THROUGH)"));
}

TEST_F(VolumesListenerTest, CachePolicyAsksTheControllerThatHoldsTheVolume) {
  expectRefused(put("5/cachepolicy", body({{"cachePolicy", "OFF"}})), "NOT_SUPPORTED",
                "This volume does not support cache policy");
}

TEST_F(VolumesListenerTest, ABadCachePolicyOnAVolumeWithoutTheFunctionReportsTheFunction) {
  m_session.controller(L"12").setsCachePolicy(false);
  expectRefused(put("7/cachepolicy", body({{"cachePolicy", "SOMETIMES"}})), "NOT_SUPPORTED",
                "This volume does not support cache policy");
}

TEST_F(VolumesListenerTest, CachePolicyTakesNoTextOfAnUnusableValue) {
  for (const char* text : {"UNKNOWN", "NOT_SUPPORTED", "write_back", "SOMETIMES"}) {
    expectRefused(put("7/cachepolicy", body({{"cachePolicy", text}})), "INVALID_PARAMETER",
                  "Invalid cache policy");
  }
}

TEST_F(VolumesListenerTest, CachePolicyOfAVolumeOnNoControllerIsNotFound) {
  m_session.controllerVolumes[L"12"].clear();
  expectRefused(put("7/cachepolicy", body({{"cachePolicy", "OFF"}})), "OBJECT_NOT_FOUND",
                "Controller identifier not found");
}

TEST_F(VolumesListenerTest, RenamingTellsTheNewName) {
  whenActing([](VolumeMaker& volume) { volume.name(L"Archive"); });
  EXPECT_EQ(put("7/name", body({{"name", "Archive"}})), "name = \"Archive\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("rename(volume 7, \"Archive\")"));
}

TEST_F(VolumesListenerTest, RenamingToThePresentNameIsRefused) {
  expectRefused(put("7/name", body({{"name", "Data"}})), "INVALID_PARAMETER",
                "Volume name is already in use");
}

TEST_F(VolumesListenerTest, ARenamingThatDidNotShowGivesNull) {
  EXPECT_EQ(put("7/name", body({{"name", "Archive"}})), "null");
}

TEST_F(VolumesListenerTest, DeletingAnswersNullAndIgnoresABody) {
  EXPECT_EQ(remove("7"), "null");
  EXPECT_EQ(remove("5", body({{"anything", true}})), "null");
  EXPECT_THAT(m_session.actions, ElementsAre("deleteVolume(volume 7)", "deleteVolume(volume 5)"));
}

TEST_F(VolumesListenerTest, AnUnknownVolumeWithABadParameterReportsTheParameter) {
  expectInvalid(remove("999", {}, {{L"force", L"1"}}), "Argument: force not allowed");
}

TEST_F(VolumesListenerTest, OfTwoVolumesWithOneIdTheFirstCounts) {
  m_session.volumes = {aVolume(L"7").state(VolumeState::NORMAL), aVolume(L"7").state(VolumeState::DEGRADED)};
  expectRefused(put("7/rebuild", body({{"diskId", "43"}})), "NOT_SUPPORTED",
                "Rebuild operation can be performed only on degraded volume");
}

}  // namespace
