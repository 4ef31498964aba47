#include "view/machine_view.h"

#include <gtest/gtest.h>

namespace insight {
namespace {

using ovra::data_transfer::ServiceObject;

void put(ServiceObject& object, const wchar_t* key, const wchar_t* text) {
  object.member(key) = ServiceObject(text);
}

void put(ServiceObject& object, const wchar_t* key, std::uint64_t number) { object.member(key) = number; }

void put(ServiceObject& object, const wchar_t* key, bool flag) { object.member(key) = flag; }

/// A volume on an array of two disks behind one controller, and a device that is no disk.
ServiceObject smallPicture() {
  ServiceObject picture;
  ServiceObject& position = picture.member(L"position");
  put(position, L"epoch", L"0123456789abcdef");
  put(position, L"revision", std::uint64_t{7});
  put(position, L"structure", std::uint64_t{5});
  put(position, L"sequence", std::uint64_t{3});
  put(picture, L"takenAt", std::uint64_t{1700000000123});
  picture.member(L"failedAt") = ServiceObject::null();
  picture.member(L"failure") = ServiceObject::null();
  ServiceObject& state = picture.member(L"state");
  put(state, L"state", L"WARNING");
  ServiceObject& work = state.member(L"inProgress").at(0);
  put(work, L"objectID", L"V1");
  put(work, L"action", L"REBUILDING");
  ServiceObject& raid = picture.member(L"raids").at(0);
  put(raid, L"raidId", L"R1");
  ServiceObject& level = raid.member(L"raidLevelInfo").at(0);
  put(level, L"raidLevel", L"RAID_5");
  level.member(L"stripSizesSupported").at(0) = std::wstring(L"SIZE_64KB");
  ServiceObject& controller = picture.member(L"controllers").at(0);
  put(controller, L"id", L"C1");
  put(controller, L"name", L"First");
  put(controller, L"raidId", L"R1");
  ServiceObject& array = picture.member(L"arrays").at(0);
  put(array, L"id", L"A1");
  put(array, L"name", L"Array_0000");
  put(array, L"freeSize", std::uint64_t{4096});
  put(array, L"totalSize", std::uint64_t{8192});
  put(array, L"numDisks", std::uint64_t{2});
  array.member(L"controllerIds").at(0) = std::wstring(L"C1");
  ServiceObject& devices = picture.member(L"enddevices");
  for (std::size_t i = 0; i < 2; ++i) {
    ServiceObject& disk = devices.at(i);
    put(disk, L"id", i == 0 ? L"D1" : L"D2");
    put(disk, L"deviceType", L"DISK");
    put(disk, L"controllerId", L"C1");
    put(disk, L"arrayId", L"A1");
    put(disk, L"state", i == 0 ? L"NORMAL" : L"SMART_EVENT_TRIGGERED");
    put(disk, L"usage", L"ARRAY_MEMBER");
    put(disk, L"serialNumber", i == 0 ? L"S1" : L"S2");
    put(disk, L"totalSize", std::uint64_t{1} << 40U);
    put(disk, L"freeSize", std::uint64_t{2048});
    put(disk, L"systemDisk", i == 0);
  }
  put(devices.at(2), L"id", L"E1");
  put(devices.at(2), L"deviceType", L"NON_STORAGE");
  devices.at(2).member(L"arrayId") = ServiceObject::null();
  ServiceObject& volume = picture.member(L"volumes").at(0);
  put(volume, L"id", L"V1");
  put(volume, L"name", L"Data");
  put(volume, L"arrayId", L"A1");
  put(volume, L"state", L"REBUILDING");
  put(volume, L"raidLevel", L"RAID_1");
  put(volume, L"numDisks", std::uint64_t{2});
  put(volume, L"migrProgress", std::uint64_t{42});
  put(volume, L"initialized", true);
  put(volume, L"migration", false);
  put(volume.member(L"verify"), L"errors", std::uint64_t{4});
  put(volume.member(L"verify"), L"badBlocks", std::uint64_t{9});
  ServiceObject& port = picture.member(L"ports").at(0);
  put(port, L"id", L"P1");
  put(port, L"localDeviceId", L"C1");
  put(port, L"connectedPortId", L"P2");
  picture.member(L"controllerPorts").member(L"C1").at(0) = std::wstring(L"P1");
  return picture;
}

TEST(MachineView, ReadsTheWholePicture) {
  const MachineView machine = machineViewOf(smallPicture());
  EXPECT_EQ(machine.position.epoch, L"0123456789abcdef");
  EXPECT_EQ(machine.position.revision, 7U);
  EXPECT_EQ(machine.position.structure, 5U);
  EXPECT_EQ(machine.position.sequence, 3U);
  EXPECT_EQ(machine.takenAt, 1700000000123U);
  EXPECT_FALSE(machine.failedAt.has_value());
  EXPECT_EQ(machine.serviceState, L"WARNING");
  ASSERT_EQ(machine.raids.size(), 1U);
  EXPECT_EQ(machine.raids.front().id, L"R1");
  ASSERT_EQ(machine.raids.front().levels.size(), 1U);
  EXPECT_EQ(machine.raids.front().levels.front().level, L"RAID_5");
  EXPECT_EQ(machine.raids.front().levels.front().stripSizes, std::vector<std::wstring>{L"SIZE_64KB"});
  ASSERT_EQ(machine.controllers.size(), 1U);
  EXPECT_EQ(machine.controllers.front().name, L"First");
  ASSERT_EQ(machine.arrays.size(), 1U);
  EXPECT_EQ(machine.arrays.front().freeBytes, 4096U);
  EXPECT_EQ(machine.arrays.front().totalBytes, 8192U);
  EXPECT_EQ(machine.arrays.front().diskCount, 2U);
  EXPECT_EQ(machine.arrays.front().controllerIds, std::vector<std::wstring>{L"C1"});
  EXPECT_EQ(machine.portsOfController.at(L"C1"), std::vector<std::wstring>{L"P1"});
  ASSERT_EQ(machine.ports.size(), 1U);
  EXPECT_EQ(machine.ports.front().id, L"P1");
  EXPECT_EQ(machine.ports.front().deviceId, L"C1");
  EXPECT_EQ(machine.ports.front().connectedId, L"P2");
}

TEST(MachineView, ReadsAVolumeWithWhatVerificationCounted) {
  const MachineView machine = machineViewOf(smallPicture());
  ASSERT_EQ(machine.volumes.size(), 1U);
  const VolumeView& volume = machine.volumes.front();
  EXPECT_EQ(volume.name, L"Data");
  EXPECT_EQ(volume.state, L"REBUILDING");
  EXPECT_EQ(volume.level, L"RAID_1");
  EXPECT_EQ(volume.diskCount, 2U);
  EXPECT_EQ(volume.percent, 42U);
  EXPECT_EQ(volume.verifyErrors, 4U);
  EXPECT_EQ(volume.badBlocks, 9U);
  EXPECT_TRUE(volume.isInitialized);
  EXPECT_FALSE(volume.isMigrating);
}

TEST(MachineView, HasDisksAloneOfTheEndDevices) {
  const MachineView machine = machineViewOf(smallPicture());
  ASSERT_EQ(machine.disks.size(), 2U);
  EXPECT_EQ(machine.disks.back().state, L"SMART_EVENT_TRIGGERED");
  EXPECT_EQ(machine.disks.back().freeBytes, 2048U);
  EXPECT_TRUE(machine.disks.front().isSystemDisk);
  EXPECT_FALSE(machine.disks.back().isSystemDisk);
  EXPECT_EQ(machine.disk(L"E1"), nullptr);
}

TEST(MachineView, FindsObjectsByTheirIds) {
  const MachineView machine = machineViewOf(smallPicture());
  EXPECT_EQ(machine.controller(L"C1"), &machine.controllers.front());
  EXPECT_EQ(machine.array(L"A1"), &machine.arrays.front());
  EXPECT_EQ(machine.disk(L"D2"), &machine.disks.back());
  EXPECT_EQ(machine.volume(L"V1"), &machine.volumes.front());
  EXPECT_EQ(machine.volume(L"V2"), nullptr);
  EXPECT_EQ(machine.array(L""), nullptr);
}

TEST(MachineView, KnowsTheDisksOfAnArrayInTheirOrder) {
  const MachineView machine = machineViewOf(smallPicture());
  const std::vector<const DiskView*> members = machine.membersOf(L"A1");
  ASSERT_EQ(members.size(), 2U);
  EXPECT_EQ(members.front()->id, L"D1");
  EXPECT_EQ(members.back()->id, L"D2");
  EXPECT_TRUE(machine.membersOf(L"A2").empty());
  EXPECT_TRUE(machine.membersOf(L"").empty());
}

TEST(MachineView, KnowsWhatIsBeingDoneToAVolume) {
  const MachineView machine = machineViewOf(smallPicture());
  EXPECT_EQ(machine.workOn(L"V1"), L"REBUILDING");
  EXPECT_FALSE(machine.workOn(L"V2").has_value());
}

TEST(MachineView, OfAPluginThatHasNoPictureYetIsEmpty) {
  ServiceObject picture = smallPicture();
  for (const wchar_t* const key : {L"takenAt", L"controllers", L"arrays", L"enddevices", L"volumes"}) {
    picture.member(key) = ServiceObject::null();
  }
  const MachineView machine = machineViewOf(picture);
  EXPECT_FALSE(machine.takenAt.has_value());
  EXPECT_TRUE(machine.disks.empty());
  EXPECT_TRUE(machine.volumes.empty());
  EXPECT_TRUE(machineViewOf(ServiceObject()).volumes.empty());
}

TEST(MachineView, TellsWhyTheLastRefreshFailed) {
  ServiceObject picture = smallPicture();
  put(picture, L"failedAt", std::uint64_t{1700000005000});
  put(picture, L"failure", L"the library refuses");
  const MachineView machine = machineViewOf(picture);
  EXPECT_EQ(machine.failedAt, 1700000005000U);
  EXPECT_EQ(machine.failure, L"the library refuses");
}

}  // namespace
}  // namespace insight
