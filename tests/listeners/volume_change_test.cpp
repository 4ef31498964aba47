#include <gmock/gmock.h>

#include "listeners/order_of_checks.h"
#include "support/by_name.h"
#include "volumes_listener.h"

namespace {

using testing::ElementsAre;

/// RAID 0 volume 7 on disks 41 and 42 of array 21, spare 51, free disks 52 to 54, and disk 61 to hold a
/// journal; all on Lyx controller 12.
void arrangeVolume(FakeSession& session) {
  session.controllers = {aController(L"11"), aLyxController(L"12")};
  session.volumes = {
      aVolume(L"7").inArray(L"21").raidLevel(RaidLevel::RAID_0).stripSize(StripSize::SIZE_256KB)};
  session.endDevices = {aDisk(L"41").inArray(L"21"), aDisk(L"42").inArray(L"21"),
                        aDisk(L"51").usage(DiskUsage::SPARE)};
  for (const wchar_t* id : {L"52", L"53", L"54", L"61"}) session.endDevices.push_back(aDisk(id));
  for (DiskMaker& disk : session.endDevices) disk.onController(L"12");
}

class VolumeChangeTest : public ListenerTest<VolumesListener> {
 protected:
  VolumeChangeTest() { arrangeVolume(m_session); }

  std::string changeLevel(std::initializer_list<BodyField> fields) { return put("7/level", body(fields)); }
  std::string changeRwh(std::initializer_list<BodyField> fields) { return put("7/rwh", body(fields)); }
};

class LevelChange : public VolumeChangeTest {};
class RwhChange : public VolumeChangeTest {};

TEST_F(LevelChange, TellsWhatChangedAndTheDisksWhenSomeWereAdded) {
  m_session.duringAction = [this] {
    m_session.volume(L"7").raidLevel(RaidLevel::RAID_5).stripSize(StripSize::SIZE_64KB);
    m_session.disk(L"51").inArray(L"21");
  };
  EXPECT_EQ(changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51"})}}),
            "disks[0] = \"41\", disks[1] = \"42\", disks[2] = \"51\", raidLevel = \"RAID_5\", "
            "stripSize = \"SIZE_64KB\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_64KB, RAID_5, 0, disks 51)"));
}

TEST_F(LevelChange, WithoutNewDisksTellsNoDisks) {
  EXPECT_EQ(changeLevel({{"raidLevel", "RAID_10"}}), "volumeId = \"7\"");
  EXPECT_EQ(changeLevel({{"raidLevel", "RAID_10"}, {"disks", list({})}}), "volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_256KB, RAID_10, 0, disks)",
                                             "modifyRaidLevel(volume 7, SIZE_256KB, RAID_10, 0, disks)"));
}

TEST_F(LevelChange, TakesTheStripSizeOfTheRequest) {
  changeLevel({{"raidLevel", "RAID_5"}, {"stripSize", "SIZE_16KB"}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_16KB, RAID_5, 0, disks)"));
}

TEST_F(LevelChange, OfAMirrorGets64KBHoweverLargeItsStripWas) {
  m_session.volume(L"7").raidLevel(RaidLevel::RAID_1).stripSize(StripSize::SIZE_1MB);
  changeLevel({{"raidLevel", "RAID_0"}});
  changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51", "52"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_64KB, RAID_0, 0, disks)",
                                             "modifyRaidLevel(volume 7, SIZE_64KB, RAID_5, 0, disks 51 52)"));
}

TEST_F(LevelChange, ToRaid5OnLyxGoesByAllDisksOldAndNew) {
  changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51", "52"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_32KB, RAID_5, 0, disks 51 52)"));
}

TEST_F(LevelChange, ToRaid5OnLyxFollowsNoOtherVolumeOfTheArray) {
  m_session.volumes.push_back(aVolume(L"8").inArray(L"21").stripSize(StripSize::SIZE_1MB));
  changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_64KB, RAID_5, 0, disks 51)"));
}

TEST_F(LevelChange, ToRaid5ElsewhereKeepsTheStripSize) {
  m_session.disk(L"41").onController(L"11");
  changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_256KB, RAID_5, 0, disks 51)"));
}

TEST_F(LevelChange, TakesAnUnknownControllerOfTheFirstMemberAsNotLyx) {
  m_session.disk(L"41").onController(L"99");
  changeLevel({{"raidLevel", "RAID_5"}, {"disks", list({"51"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_256KB, RAID_5, 0, disks 51)"));
}

TEST_F(LevelChange, OfAVolumeInNoArrayCountsTheFreeDevicesAsItsOwn) {
  m_session.volume(L"7").inArray(L"");
  changeLevel({{"raidLevel", "RAID_5"}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, SIZE_128KB, RAID_5, 0, disks)"))
      << "five free devices";
}

TEST_F(LevelChange, AllowsX8DisksForRaid0) {
  m_session.disk(L"42").x8(X8Disk::X8_A);
  m_session.disk(L"51").x8(X8Disk::X8_B);
  changeLevel({{"raidLevel", "RAID_0"}, {"disks", list({"51"})}});
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(LevelChange, RefusesUnusableLevels) {
  for (const char* level : {"RAID_INVALID", "RAID_6", "RAID_UNKNOWN", "RAID_7"}) {
    expectRefused(changeLevel({{"raidLevel", level}}), "INVALID_PARAMETER", "Invalid RAID level");
  }
}

TEST_F(LevelChange, RefusesAStripSizeOfAMirrorUnderItsOwnId) {
  expectRefused(changeLevel({{"raidLevel", "RAID_1"}, {"stripSize", "SIZE_64KB"}}), "Mirn_INVALID_RAID_LEVEL",
                "Parameter stripSize is not supported for RAID 1");
}

TEST_F(LevelChange, RefusesAVolumeWhoseStripSizeIsUnknown) {
  m_session.volume(L"7").stripSize(StripSize::SIZE_UNKNOWN);
  expectRefused(changeLevel({{"raidLevel", "RAID_10"}}), "INVALID_PARAMETER", "Invalid strip size");
}

TEST_F(LevelChange, AcceptsNoStripSizeByItsText) {
  changeLevel({{"raidLevel", "RAID_10"}, {"stripSize", "N/A"}});
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 7, N/A, RAID_10, 0, disks)"));
}

TEST_F(RwhChange, TellsThePolicyAndTheDrive) {
  m_session.volume(L"7").raidLevel(RaidLevel::RAID_5);
  m_session.duringAction = [this] {
    m_session.volume(L"7").rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).journalingDrive(L"61");
  };
  EXPECT_EQ(changeRwh({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "61"}}),
            "journalingDriveId = \"61\", rwhPolicy = \"RWH_JOURNALING_DRIVE\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions,
              ElementsAre("setRwhPolicy(volume 7, RWH_JOURNALING_DRIVE on 61 handle 1061)"));
}

TEST_F(RwhChange, TellsADriveThatIsGoneAsNull) {
  m_session.volume(L"7")
      .raidLevel(RaidLevel::RAID_5)
      .rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE)
      .journalingDrive(L"61");
  m_session.duringAction = [this] {
    m_session.volume(L"7").rwhPolicy(RwhPolicy::RWH_DISTRIBUTED).journalingDrive(L"");
  };
  EXPECT_EQ(changeRwh({{"rwhPolicy", "RWH_DISTRIBUTED"}}),
            "journalingDriveId = null, rwhPolicy = \"RWH_DISTRIBUTED\", volumeId = \"7\"");
}

TEST_F(RwhChange, SwitchesOffOnEveryLevel) {
  EXPECT_EQ(changeRwh({{"rwhPolicy", "RWH_OFF"}}), "volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, ElementsAre("setRwhPolicy(volume 7, RWH_OFF)"));
}

TEST_F(RwhChange, DistributesOnRaid5Only) {
  m_session.volume(L"7").raidLevel(RaidLevel::RAID_1);
  expectRefused(changeRwh({{"rwhPolicy", "RWH_DISTRIBUTED"}}), "Mirn_INVALID_RAID_LEVEL",
                "RAID Write Hole policy is supported for RAID 5 only");
}

TEST_F(RwhChange, JudgesTheDriveWhateverThePolicy) {
  expectRefused(changeRwh({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "6/1"}}), "INVALID_PARAMETER",
                "Invalid journaling drive identifier");
}

TEST_F(RwhChange, ComparesTheDriveWithTheVolumesSectorSize) {
  m_session.volume(L"7").sectorSize(4096);
  expectRefused(changeRwh({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "61"}}), "NOT_SUPPORTED",
                "Journaling drive block size has to be equal to source disks block size");
  m_session.disk(L"61").sectorSize(4096);
  EXPECT_EQ(changeRwh({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "61"}}), "volumeId = \"7\"");
}

TEST_F(RwhChange, ComparesAllOfTheDrivesSectorSize) {
  const std::uint64_t size = 512;
  for (const unsigned bit : {15U, 16U, 31U, 32U, 63U}) {
    m_session.disk(L"61").sectorSize(size + (std::uint64_t{1} << bit));
    expectRefused(changeRwh({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "61"}}), "NOT_SUPPORTED",
                  "Journaling drive block size has to be equal to source disks block size");
  }
  EXPECT_THAT(m_session.actions, ElementsAre());
}

std::vector<Fault> levelFaults() {
  const std::string x8Words = "X8 disks are supported for RAID 0 only";
  return {
      unknownField(),
      unknownParameter(),
      unknownObject("/level", "OBJECT_NOT_FOUND", "Volume identifier not found"),
      refusedField("bad level", {"raidLevel", "RAID_6"}, "INVALID_PARAMETER", "Invalid RAID level"),
      {"X8 member", [](Situation& s) { s.session.disk(L"42").x8(X8Disk::X8_A); },
       refused("Mirn_INVALID_RAID_LEVEL", x8Words)},
      refusedField("bad disk", {"disks", list({"5/1"})}, "INVALID_PARAMETER", "Invalid disk identifier"),
      refusedField("unknown disk", {"disks", list({"999"})}, "OBJECT_NOT_FOUND", "Disk identifier not found"),
      {"no disk", [](Situation& s) { s.session.disk(L"52").deviceType(DeviceType::NON_STORAGE); },
       refused("INVALID_PARAMETER", "Disk identifier not found")},
      {"disk in use", [](Situation& s) { s.session.disk(L"52").usage(DiskUsage::ARRAY_MEMBER); },
       refused("Mirn_DISK_INVALID_STATE", "The disk provided cannot be used as a part of the volume")},
      {"sector size", [](Situation& s) { s.session.disk(L"52").sectorSize(4096); },
       refused("NOT_SUPPORTED", "Cannot add a disk with block size different from source disks")},
      {"X8 disk", [](Situation& s) { s.session.disk(L"52").x8(X8Disk::X8_B); },
       refused("Mirn_INVALID_RAID_LEVEL", x8Words)},
      {"strip size of a mirror",
       [](Situation& s) {
         set(s.request.body, {"raidLevel", "RAID_1"});
         set(s.request.body, {"stripSize", "SIZE_3KB"});
       },
       refused("Mirn_INVALID_RAID_LEVEL", "Parameter stripSize is not supported for RAID 1")},
      refusedField("bad strip size", {"stripSize", "SIZE_3KB"}, "INVALID_PARAMETER", "Invalid strip size"),
  };
}

/// Without members there are too few disks for a default.
std::vector<Fault> defaultStripSizeFaults() {
  return {
      {"disk in use", [](Situation& s) { s.session.disk(L"52").usage(DiskUsage::JOURNALING_DRIVE); },
       refused("Mirn_DISK_INVALID_STATE", "The disk provided cannot be used as a part of the volume")},
      {"no default strip size",
       [](Situation& s) {
         s.session.disk(L"42").inArray(L"22");
         set(s.request.body, {"disks", list({"52"})});
       },
       refused("INTERNAL_ERROR", "Could not determine default strip size")},
  };
}

std::vector<Fault> rwhFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownObject("/rwh", "OBJECT_NOT_FOUND", "Volume identifier not found"),
      refusedField("bad policy", {"rwhPolicy", "RWH_ON"}, "INVALID_PARAMETER",
                   "Invalid RAID Write Hole policy"),
      {"other level", [](Situation& s) { s.session.volume(L"7").raidLevel(RaidLevel::RAID_10); },
       refused("Mirn_INVALID_RAID_LEVEL", "RAID Write Hole policy is supported for RAID 5 only")},
      {"no drive", [](Situation& s) { s.request.body = without("journalingDriveId", s.request.body); },
       refused("INVALID_PARAMETER", "Missing journaling drive identifier")},
      refusedField("bad drive", {"journalingDriveId", "6/1"}, "INVALID_PARAMETER",
                   "Invalid journaling drive identifier"),
      refusedField("unknown drive", {"journalingDriveId", "999"}, "OBJECT_NOT_FOUND",
                   "Journaling drive identifier not found"),
      {"drive is no disk",
       [](Situation& s) { s.session.disk(L"61").deviceType(DeviceType::NON_DISK_STORAGE); },
       refused("INVALID_PARAMETER", "Disk identifier not found")},
      {"sector size", [](Situation& s) { s.session.disk(L"61").sectorSize(4096); },
       refused("NOT_SUPPORTED", "Journaling drive block size has to be equal to source disks block size")},
  };
}

void arrangeRaid5(FakeSession& session) {
  arrangeVolume(session);
  session.volume(L"7").raidLevel(RaidLevel::RAID_5);
}

Request levelRequest(const char* level) {
  return {HttpMethod::kPut, "7/level", body({{"raidLevel", level}, {"disks", list({"51", "52"})}})};
}

Request rwhRequest() {
  return {HttpMethod::kPut, "7/rwh",
          body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "61"}})};
}

INSTANTIATE_TEST_SUITE_P(
    VolumeChange, OrderOfChecks,
    testing::Values(checksOf<VolumesListener>("Level", arrangeVolume, levelRequest("RAID_10"), levelFaults()),
                    checksOf<VolumesListener>("LevelWithDefault", arrangeVolume, levelRequest("RAID_5"),
                                              defaultStripSizeFaults()),
                    checksOf<VolumesListener>("Rwh", arrangeRaid5, rwhRequest(), rwhFaults())),
    ByName());

}  // namespace
