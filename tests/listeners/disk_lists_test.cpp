#include <gmock/gmock.h>

#include "arrays_listener.h"
#include "listeners/creation_requests.h"
#include "listeners/listener_requests.h"
#include "volumes_listener.h"

// Requests that name several disks: which fault is reported when two of them, or two volumes, have one.

namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string kSectorWords = "Cannot add a disk with block size different from source disks";

/// RAID 0 volumes 1 and 2 in array 21 of disks 41 and 42, free disks 51 to 54; all on Lyx controller 12.
void arrangeMembers(FakeSession& session) {
  session.controllers = {aController(L"11"), aLyxController(L"12")};
  session.arrays = {anArray(L"21"), anArray(L"22")};
  session.volumes = {aVolume(L"1").inArray(L"21").raidLevel(RaidLevel::RAID_0),
                     aVolume(L"2").inArray(L"21").raidLevel(RaidLevel::RAID_0)};
  session.endDevices = {aDisk(L"41").inArray(L"21"), aDisk(L"42").inArray(L"21")};
  for (const wchar_t* id : {L"51", L"52", L"53", L"54"}) session.endDevices.push_back(aDisk(id));
  for (DiskMaker& disk : session.endDevices) disk.onController(L"12");
}

class DisksForAnArray : public ListenerTest<ArraysListener> {
 protected:
  DisksForAnArray() { arrangeMembers(m_session); }

  std::string add(const ServiceObject& disks) { return put("21", body({{"disks", disks}})); }
};

TEST_F(DisksForAnArray, MustBeNamed) { expectInvalid(put("21", body({})), "Argument: disks not present"); }

TEST_F(DisksForAnArray, AreJudgedOneAfterTheOther) {
  m_session.disk(L"51").sectorSize(4096);
  expectRefused(add(list({"51", "999"})), "NOT_SUPPORTED", kSectorWords);
  expectRefused(add(list({"999", "51"})), "OBJECT_NOT_FOUND", "Invalid disk identifier");
}

TEST_F(DisksForAnArray, AreJudgedWholeOneAfterTheOther) {
  const std::string x8Words = "Cannot add X8 disk to array with raid level other than RAID 0";
  m_session.volume(L"1").raidLevel(RaidLevel::RAID_1);
  m_session.disk(L"51").x8(X8Disk::X8_A);
  m_session.disk(L"52").sectorSize(4096);
  expectRefused(add(list({"51", "52"})), "NOT_SUPPORTED", x8Words);
  expectRefused(add(list({"52", "51"})), "NOT_SUPPORTED", kSectorWords);
}

TEST_F(DisksForAnArray, FitEveryVolumeOfIt) {
  m_session.volume(L"2").sectorSize(4096);
  expectRefused(add(list({"51"})), "NOT_SUPPORTED", kSectorWords);
  m_session.disk(L"51").sectorSize(4096);
  expectRefused(add(list({"51"})), "NOT_SUPPORTED", kSectorWords);
}

TEST_F(DisksForAnArray, AreComparedWithOneVolumeWholeBeforeTheNext) {
  m_session.disk(L"51").x8(X8Disk::X8_B);
  m_session.volume(L"1").raidLevel(RaidLevel::RAID_1);
  m_session.volume(L"2").sectorSize(4096);
  expectRefused(add(list({"51"})), "NOT_SUPPORTED",
                "Cannot add X8 disk to array with raid level other than RAID 0");
}

TEST_F(DisksForAnArray, HaveItsSectorSizeWhateverThatIs) {
  for (VolumeMaker& volume : m_session.volumes) volume.sectorSize(4096);
  expectRefused(add(list({"51"})), "NOT_SUPPORTED", kSectorWords);
  m_session.disk(L"51").sectorSize(4096);
  EXPECT_EQ(add(list({"51"})), "arrayId = \"21\", disks[0] = \"41\", disks[1] = \"42\"");
}

TEST_F(DisksForAnArray, StandInTheAnswerWhateverKindOfDeviceTheyAre) {
  m_session.disk(L"42").deviceType(DeviceType::NON_STORAGE);
  EXPECT_EQ(get("21/enddevices"), forms({m_session.disk(L"41"), m_session.disk(L"42")}));
  EXPECT_EQ(add(list({"51"})), "arrayId = \"21\", disks[0] = \"41\", disks[1] = \"42\"");
}

class DisksForALevel : public ListenerTest<VolumesListener> {
 protected:
  DisksForALevel() {
    arrangeMembers(m_session);
    m_session.volumes.pop_back();
  }

  std::string change(const ServiceObject& disks, const char* level = "RAID_10") {
    return put("1/level", body({{"raidLevel", level}, {"disks", disks}}));
  }
};

TEST_F(DisksForALevel, AreJudgedOneAfterTheOther) {
  expectRefused(change(list({"999", "5/1"})), "OBJECT_NOT_FOUND", "Disk identifier not found");
  expectRefused(change(list({"5/1", "999"})), "INVALID_PARAMETER", "Invalid disk identifier");
  const std::string inUse = "The disk provided cannot be used as a part of the volume";
  m_session.disk(L"51").usage(DiskUsage::ARRAY_MEMBER);
  expectRefused(change(list({"51", "999"})), "Mirn_DISK_INVALID_STATE", inUse);
  expectRefused(change(list({"999", "51"})), "OBJECT_NOT_FOUND", "Disk identifier not found");
}

TEST_F(DisksForALevel, AreJudgedWholeOneAfterTheOther) {
  m_session.disk(L"51").x8(X8Disk::X8_A);
  m_session.disk(L"52").sectorSize(4096);
  expectRefused(change(list({"51", "52"})), "Mirn_INVALID_RAID_LEVEL",
                "X8 disks are supported for RAID 0 only");
  expectRefused(change(list({"52", "51"})), "NOT_SUPPORTED", kSectorWords);
}

TEST_F(DisksForALevel, HaveTheVolumesSectorSizeWhateverThatIs) {
  m_session.volume(L"1").sectorSize(4096);
  expectRefused(change(list({"51"})), "NOT_SUPPORTED", kSectorWords);
  m_session.disk(L"51").sectorSize(4096);
  EXPECT_NE(change(list({"51"})).find("volumeId"), std::string::npos);
}

TEST_F(DisksForALevel, MayStandBesideAnX8DiskThatIsNoMember) {
  m_session.disk(L"54").x8(X8Disk::X8_A);
  change(list({"51"}));
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

TEST_F(DisksForALevel, DoNotDecideByTheirControllerForTheMembersDo) {
  m_session.disk(L"51").onController(L"11");
  change(list({"51", "52"}), "RAID_5");
  EXPECT_THAT(m_session.actions, ElementsAre("modifyRaidLevel(volume 1, SIZE_32KB, RAID_5, 0, disks 51 52)"));
}

TEST_F(DisksForALevel, AreToldOfTheArrayWhereTheVolumeIsAfterwards) {
  m_session.duringAction = [this] {
    m_session.volume(L"1").inArray(L"22");
    m_session.disk(L"53").inArray(L"22");
  };
  EXPECT_EQ(change(list({"51"})), "disks[0] = \"53\", volumeId = \"1\"");
}

TEST_F(DisksForALevel, JoinMembersOfWhichAnyMayBeNoDisk) {
  m_session.disk(L"42").deviceType(DeviceType::NON_STORAGE).x8(X8Disk::X8_B);
  expectRefused(change(list({"51"})), "Mirn_INVALID_RAID_LEVEL", "X8 disks are supported for RAID 0 only");
}

class DisksForAVolume : public ListenerTest<VolumesListener> {
 protected:
  DisksForAVolume() { arrangeSystem(m_session); }

  std::string create(const ServiceObject& disks) {
    ServiceObject request = disksRequest();
    set(request, {"disks", disks});
    return post("", request);
  }
};

TEST_F(DisksForAVolume, MustBeNamed) {
  expectInvalid(post("", without("disks", disksRequest())), "Argument: disks not present");
}

TEST_F(DisksForAVolume, AreLookedUpOneAfterTheOther) {
  expectRefused(create(list({"999", "5/1"})), "OBJECT_NOT_FOUND", "Disk identifier not found");
  expectRefused(create(list({"5/1", "999"})), "INVALID_PARAMETER", "Invalid disk identifier");
  m_session.disk(L"52").deviceType(DeviceType::NON_STORAGE);
  expectRefused(create(list({"52", "5/1"})), "INVALID_PARAMETER", "Disk identifier not found");
}

TEST_F(DisksForAVolume, AreAllLookedUpBeforeOneIsJudged) {
  m_session.disk(L"51").x8(X8Disk::X8_A);
  expectRefused(create(list({"51", "999"})), "OBJECT_NOT_FOUND", "Disk identifier not found");
}

TEST_F(DisksForAVolume, AreAllJudgedByTheirRoleBeforeTheirSectorSizesAre) {
  m_session.disk(L"52").sectorSize(4096);
  m_session.disk(L"53").x8(X8Disk::X8_B);
  expectRefused(create(list({"51", "52", "53"})), "Mirn_INVALID_RAID_LEVEL",
                "X8 disks are supported for RAID 0 only");
}

TEST_F(DisksForAVolume, HaveOneSectorSizeWhateverThatIs) {
  for (DiskMaker& disk : m_session.endDevices) disk.sectorSize(4096);
  EXPECT_EQ(create(list({"51", "52", "53"})), "null");
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

TEST_F(DisksForAVolume, HaveEachTheSectorSizeOfTheFirst) {
  for (const wchar_t* const odd : {L"51", L"52", L"53"}) {
    for (DiskMaker& disk : m_session.endDevices) disk.sectorSize(512);
    m_session.disk(odd).sectorSize(4096);
    expectRefused(create(list({"51", "52", "53"})), "NOT_SUPPORTED",
                  "Cannot create a volume from disks with different block sizes");
  }
}

TEST_F(DisksForAVolume, WantAJournalOfTheirSectorSizeWhateverThatIs) {
  for (DiskMaker& disk : m_session.endDevices) disk.sectorSize(4096);
  ServiceObject request = disksRequest();
  set(request, {"rwhPolicy", "RWH_JOURNALING_DRIVE"});
  set(request, {"journalingDriveId", "61"});
  m_session.disk(L"61").sectorSize(512);
  expectRefused(post("", request), "NOT_SUPPORTED",
                "Journaling drive block size has to be equal to source disks block size");
  m_session.disk(L"61").sectorSize(4096);
  post("", request);
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

TEST_F(DisksForAVolume, AreComparedByAllOfTheirSectorSizes) {
  const std::string words = "Cannot create a volume from disks with different block sizes";
  const std::string journalWords = "Journaling drive block size has to be equal to source disks block size";
  ServiceObject request = disksRequest();
  set(request, {"rwhPolicy", "RWH_JOURNALING_DRIVE"});
  set(request, {"journalingDriveId", "61"});
  for (const unsigned bit : {15U, 16U, 31U, 32U, 63U}) {
    const std::uint64_t size = 512 + (std::uint64_t{1} << bit);
    m_session.disk(L"52").sectorSize(size);
    expectRefused(post("", request), "NOT_SUPPORTED", words);
    m_session.disk(L"52").sectorSize(512);
    m_session.disk(L"61").sectorSize(size);
    expectRefused(post("", request), "NOT_SUPPORTED", journalWords);
    for (const wchar_t* const id : {L"51", L"52", L"53"}) m_session.disk(id).sectorSize(size);
    m_session.disk(L"61").sectorSize(512);
    expectRefused(post("", request), "NOT_SUPPORTED", journalWords);
    for (const wchar_t* const id : {L"51", L"52", L"53"}) m_session.disk(id).sectorSize(512);
  }
  EXPECT_THAT(m_session.actions, SizeIs(0));
}

class JournalForAnArray : public ListenerTest<VolumesListener> {
 protected:
  JournalForAnArray() { arrangeSystem(m_session); }

  std::string create() {
    ServiceObject request = arrayRequest();
    set(request, {"rwhPolicy", "RWH_JOURNALING_DRIVE"});
    set(request, {"journalingDriveId", "61"});
    return post("", request);
  }
};

TEST_F(JournalForAnArray, FitsEveryMemberAndNoOtherDevice) {
  m_session.disk(L"44").sectorSize(4096);
  m_session.disk(L"51").sectorSize(4096);
  create();
  EXPECT_THAT(m_session.actions, SizeIs(1)) << "those are no members";
  m_session.actions.clear();
  m_session.disk(L"42").sectorSize(4096);
  expectRefused(create(), "NOT_SUPPORTED",
                "Journaling drive block size has to be equal to source disks block size");
}

TEST_F(JournalForAnArray, HasTheMembersSectorSizeWhateverThatIs) {
  for (DiskMaker& disk : m_session.endDevices) disk.sectorSize(4096);
  create();
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

}  // namespace
