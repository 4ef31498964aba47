#include "arrays_listener.h"

#include <gmock/gmock.h>

#include "listeners/order_of_checks.h"
#include "mirn_exception.h"
#include "support/by_name.h"

namespace {

using testing::ElementsAre;

/// Array 21 of disks 41 and 42 with volumes 1 and 2, and array 22 of disk 43 without volumes; disks 51 and 52
/// are free.
void arrangeArrays(FakeSession& session) {
  session.arrays = {anArray(L"22"), anArray(L"21")};
  session.volumes = {aVolume(L"1").inArray(L"21").raidLevel(RaidLevel::RAID_0),
                     aVolume(L"2").inArray(L"21").raidLevel(RaidLevel::RAID_0), aVolume(L"3")};
  session.endDevices = {aDisk(L"41").inArray(L"21"), aDisk(L"43").inArray(L"22"), aDisk(L"42").inArray(L"21"),
                        aDisk(L"51"), aDisk(L"52")};
}

class ArraysListenerTest : public ListenerTest<ArraysListener> {
 protected:
  ArraysListenerTest() { arrangeArrays(m_session); }

  std::string addDisks(const ServiceObject& disks, const std::string& path = "21") {
    return put(path, body({{"disks", disks}}));
  }
  std::string setCache(const char* state) { return put("21/writecache", body({{"state", state}})); }
};

TEST_F(ArraysListenerTest, ListsArraysInTheSessionsOrder) {
  EXPECT_EQ(get(""), forms({m_session.array(L"22"), m_session.array(L"21")}));
}

TEST_F(ArraysListenerTest, ListsTheDevicesOfAnArray) {
  EXPECT_EQ(get("21/enddevices"), forms({m_session.disk(L"41"), m_session.disk(L"42")}));
  m_session.endDevices.clear();
  EXPECT_EQ(get("21/enddevices"), "[]");
}

TEST_F(ArraysListenerTest, ListsTheVolumesOfAnArray) {
  EXPECT_EQ(get("21/volumes"), forms({m_session.volume(L"1"), m_session.volume(L"2")}));
  EXPECT_EQ(get("22/volumes"), "[]");
}

TEST_F(ArraysListenerTest, AddingDisksTellsAllMembersOldAndNew) {
  m_session.duringAction = [this] { m_session.disk(L"51").inArray(L"21"); };
  EXPECT_EQ(addDisks(list({"51"})),
            "arrayId = \"21\", disks[0] = \"41\", disks[1] = \"42\", disks[2] = \"51\"");
  EXPECT_THAT(m_session.actions, ElementsAre("addDisks(handle 1021, disks 51)"));
}

TEST_F(ArraysListenerTest, AddingKeepsTheOrderOfTheRequest) {
  addDisks(list({"52", "51"}));
  EXPECT_THAT(m_session.actions, ElementsAre("addDisks(handle 1021, disks 52 51)"));
}

TEST_F(ArraysListenerTest, AddingNoDisksReachesTheSession) {
  EXPECT_EQ(addDisks(list({})), "arrayId = \"21\", disks[0] = \"41\", disks[1] = \"42\"");
  EXPECT_THAT(m_session.actions, ElementsAre("addDisks(handle 1021, disks)"));
}

TEST_F(ArraysListenerTest, AnArrayWithoutVolumesTakesAnyDisk) {
  m_session.disk(L"51").x8(X8Disk::X8_A).sectorSize(4096).deviceType(DeviceType::NON_STORAGE);
  addDisks(list({"51"}), "22");
  EXPECT_THAT(m_session.actions, ElementsAre("addDisks(handle 1022, disks 51)"));
}

TEST_F(ArraysListenerTest, AnX8DiskIsRefusedAsSoonAsOneVolumeIsNotRaid0) {
  m_session.disk(L"51").x8(X8Disk::X8_B);
  addDisks(list({"51"}));
  EXPECT_EQ(m_session.actions.size(), 1u);
  m_session.actions.clear();
  m_session.volume(L"2").raidLevel(RaidLevel::RAID_5);
  expectRefused(addDisks(list({"51"})), "NOT_SUPPORTED",
                "Cannot add X8 disk to array with raid level other than RAID 0");
}

TEST_F(ArraysListenerTest, AnIdentifierOfADiskIsTakenAsItStands) {
  expectRefused(addDisks(list({"5/1"})), "OBJECT_NOT_FOUND", "Invalid disk identifier");
}

TEST_F(ArraysListenerTest, ReadsDevicesAndVolumesOnceHoweverManyDisksAreAdded) {
  m_session.duringAction = [this] {
    EXPECT_EQ(m_session.reads["getEndDevices"], 1);
    EXPECT_EQ(m_session.reads["getVolumes"], 1);
  };
  addDisks(list({"51", "52"}));
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(ArraysListenerTest, TheDisksMustBeAnArray) {
  expectInvalid(put("21", body({{"disks", "51"}})), "Argument: disks not an array type");
}

TEST_F(ArraysListenerTest, WriteCacheIsSwitchedAndToldWhenItChanged) {
  m_session.array(L"21").writeCachePolicy(WriteCacheState::OFF);
  m_session.duringAction = [this] { m_session.array(L"21").writeCachePolicy(WriteCacheState::ON); };
  EXPECT_EQ(setCache("ENABLED"), "arrayId = \"21\", writeCachePolicy = \"ON\"");
  EXPECT_EQ(setCache("DISABLED"), "arrayId = \"21\"");
  EXPECT_THAT(m_session.actions, ElementsAre("setWriteCacheState(handle 1021, ENABLED)",
                                             "setWriteCacheState(handle 1021, DISABLED)"));
}

TEST_F(ArraysListenerTest, TheWriteCacheStateIsComparedExactly) {
  expectRefused(setCache("enabled"), "INVALID_PARAMETER", "Invalid state parameter");
}

TEST_F(ArraysListenerTest, ABadStateOnAnArrayWithoutWriteCacheReportsTheFunction) {
  m_session.array(L"21").writeCachePolicy(WriteCacheState::NOT_SUPPORTED);
  expectRefused(setCache("enabled"), "NOT_SUPPORTED", "This array does not support write cache policy");
}

TEST_F(ArraysListenerTest, BothAnswersAreNullWhenTheArrayIsGoneAfterwards) {
  m_session.duringAction = [this] { m_session.loseEverything(); };
  EXPECT_EQ(addDisks(list({"51"})), "null");
  m_session.failingRead.clear();
  m_session.duringAction = [this] { m_session.arrays.clear(); };
  EXPECT_EQ(setCache("ENABLED"), "null");
}

TEST_F(ArraysListenerTest, FailuresOfTheActionsPassUnchanged) {
  m_session.duringAction = [] { throw MirnException("Mirn_ARRAY_INVALID_STATE", "Refused"); };
  EXPECT_EQ(addDisks(list({"51"})), failed("Mirn_ARRAY_INVALID_STATE", "Refused"));
  EXPECT_EQ(setCache("ENABLED"), failed("Mirn_ARRAY_INVALID_STATE", "Refused"));
}

TEST_F(ArraysListenerTest, FailuresOfTheReadsPassUnchanged) {
  m_session.loseEverything();
  for (const char* path : {"", "21/enddevices", "21/volumes"}) {
    EXPECT_EQ(get(path), failed("Mirn_OPERATION_FAILED", kReadFailure)) << path;
  }
}

Fault unknownArray(const std::string& rest) {
  return unknownObject(rest, "OBJECT_NOT_FOUND", "Array identifier not found");
}

std::vector<Fault> addDisksFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownArray(""),
      refusedField("unknown disk", {"disks", list({"999"})}, "OBJECT_NOT_FOUND", "Invalid disk identifier"),
      {"sector size", [](Situation& s) { s.session.disk(L"51").sectorSize(4096); },
       refused("NOT_SUPPORTED", "Cannot add a disk with block size different from source disks")},
      {"X8 disk",
       [](Situation& s) {
         s.session.disk(L"51").x8(X8Disk::X8_A);
         s.session.volume(L"1").raidLevel(RaidLevel::RAID_1);
       },
       refused("NOT_SUPPORTED", "Cannot add X8 disk to array with raid level other than RAID 0")},
      {"sector size of the next disk", [](Situation& s) { s.session.disk(L"52").sectorSize(4096); },
       refused("NOT_SUPPORTED", "Cannot add a disk with block size different from source disks")},
  };
}

std::vector<Fault> writeCacheFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownArray("/writecache"),
      {"no write cache",
       [](Situation& s) { s.session.array(L"21").writeCachePolicy(WriteCacheState::NOT_SUPPORTED); },
       refused("NOT_SUPPORTED", "This array does not support write cache policy")},
      refusedField("bad state", {"state", "ON"}, "INVALID_PARAMETER", "Invalid state parameter"),
  };
}

INSTANTIATE_TEST_SUITE_P(
    Arrays, OrderOfChecks,
    testing::Values(
        checksOf<ArraysListener>("List", arrangeArrays, {HttpMethod::kGet, ""}, {unknownParameter()}),
        checksOf<ArraysListener>("EndDevices", arrangeArrays, {HttpMethod::kGet, "21/enddevices"},
                                 {unknownParameter(), unknownArray("/enddevices")}),
        checksOf<ArraysListener>("Volumes", arrangeArrays, {HttpMethod::kGet, "21/volumes"},
                                 {unknownParameter(), unknownArray("/volumes")}),
        checksOf<ArraysListener>("AddDisks", arrangeArrays,
                                 {HttpMethod::kPut, "21", body({{"disks", list({"51", "52"})}})},
                                 addDisksFaults()),
        checksOf<ArraysListener>("WriteCache", arrangeArrays,
                                 {HttpMethod::kPut, "21/writecache", body({{"state", "ENABLED"}})},
                                 writeCacheFaults())),
    ByName());

}  // namespace
