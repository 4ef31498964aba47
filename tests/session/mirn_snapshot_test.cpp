#include "mirn_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/by_name.h"
#include "support/model_samples.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr VEX_HANDLE kNothing = 0;
constexpr VEX_HANDLE kUnheardOf = 999;

Array array(VEX_HANDLE handle, const std::wstring& id) {
  return complete<Array>().handle(handle).id(id).build();
}

Raid raid(VEX_HANDLE handle, const std::wstring& id) {
  return complete<Raid>().handle(handle).id(id).build();
}

Controller controller(VEX_HANDLE handle, const std::wstring& id, VEX_HANDLE raidHandle = kNothing) {
  return complete<Controller>().handle(handle).id(id).raidHandle(raidHandle).build();
}

/// A device without links.
EndDevice::Builder device(VEX_HANDLE handle, const std::wstring& id) {
  EndDevice::Builder builder = complete<EndDevice>();
  builder.handle(handle).id(id).arrayHandle(kNothing).raidHandle(kNothing).controllerHandle(kNothing);
  return builder;
}

/// A volume without links.
Volume::Builder volume(VEX_HANDLE handle, const std::wstring& id) {
  Volume::Builder builder = complete<Volume>();
  builder.handle(handle).id(id).arrayHandle(kNothing).journalingDriveHandle(kNothing);
  return builder;
}

/// A port without links.
Port::Builder port(VEX_HANDLE handle, const std::wstring& id) {
  Port::Builder builder = complete<Port>();
  builder.handle(handle).id(id).localDeviceHandle(kNothing).connectedPortHandle(kNothing);
  return builder;
}

MirnSnapshot finished(MirnSnapshot snapshot) {
  finishSnapshot(snapshot);
  return snapshot;
}

template <class Object>
std::vector<VEX_HANDLE> handlesOf(const std::vector<Object>& objects) {
  std::vector<VEX_HANDLE> handles;
  for (const Object& object : objects) handles.push_back(object.handle());
  return handles;
}

// Sorting

TEST(SnapshotOrder, IsThatOfTheHandlesAsUnsignedNumbers) {
  MirnSnapshot read;
  for (const VEX_HANDLE handle : {0x80000000u, 2u, 0xFFFFFFFFu, 1u}) {
    const std::wstring id = std::to_wstring(handle);
    read.controllers.push_back(controller(handle, id));
    read.arrays.push_back(array(handle, id));
    read.endDevices.push_back(device(handle, id).build());
    read.ports.push_back(port(handle, id).build());
    read.volumes.push_back(volume(handle, id).build());
    read.raids.push_back(raid(handle, id));
  }
  const MirnSnapshot snapshot = finished(read);
  const auto inOrder = ElementsAre(1u, 2u, 0x80000000u, 0xFFFFFFFFu);
  EXPECT_THAT(handlesOf(snapshot.controllers), inOrder);
  EXPECT_THAT(handlesOf(snapshot.arrays), inOrder);
  EXPECT_THAT(handlesOf(snapshot.endDevices), inOrder);
  EXPECT_THAT(handlesOf(snapshot.ports), inOrder);
  EXPECT_THAT(handlesOf(snapshot.volumes), inOrder);
  EXPECT_THAT(handlesOf(snapshot.raids), inOrder);
}

TEST(SnapshotOrder, OfIdsUnderAControllerIsThatOfTheirTexts) {
  MirnSnapshot read;
  read.controllerArrays = {{L"1", {L"9", L"10", L"100"}}};
  read.controllerPorts = {{L"1", {L"b", L"B", L"a"}}, {L"2", {L"2", L"1"}}};
  read.controllerVolumes = {{L"1", {}}, {L"2", {L"\x00e4", L"z"}}};
  const MirnSnapshot snapshot = finished(read);
  EXPECT_THAT(snapshot.controllerArrays.at(L"1"), ElementsAre(L"10", L"100", L"9"));
  EXPECT_THAT(snapshot.controllerPorts.at(L"1"), ElementsAre(L"B", L"a", L"b"));
  EXPECT_THAT(snapshot.controllerPorts.at(L"2"), ElementsAre(L"1", L"2"));
  EXPECT_THAT(snapshot.controllerVolumes.at(L"1"), IsEmpty());
  EXPECT_THAT(snapshot.controllerVolumes.at(L"2"), ElementsAre(L"z", L"\x00e4"));
}

// Links

TEST(SnapshotLinks, OfAnEndDeviceNameItsArrayRaidEngineAndController) {
  MirnSnapshot read;
  read.arrays = {array(1, L"array-1"), array(2, L"array-2")};
  read.raids = {raid(1, L"raid-1"), raid(2, L"raid-2"), raid(3, L"raid-3")};
  read.controllers = {controller(1, L"controller-1"), controller(4, L"controller-4")};
  read.endDevices = {device(9, L"disk").arrayHandle(2).raidHandle(3).controllerHandle(4).build()};
  const EndDevice linked = finished(read).endDevices.front();
  EXPECT_EQ(linked.arrayId(), L"array-2");
  EXPECT_EQ(linked.raidId(), L"raid-3");
  EXPECT_EQ(linked.controllerId(), L"controller-4");
}

TEST(SnapshotLinks, OfAVolumeNameItsArrayAndJournalingDrive) {
  MirnSnapshot read;
  read.arrays = {array(1, L"array-1"), array(2, L"array-2")};
  read.endDevices = {device(1, L"disk-1").build(), device(5, L"disk-5").build()};
  read.volumes = {volume(9, L"volume").arrayHandle(2).journalingDriveHandle(5).build()};
  const Volume linked = finished(read).volumes.front();
  EXPECT_EQ(linked.arrayId(), L"array-2");
  EXPECT_EQ(linked.journalingDriveId(), L"disk-5");
}

TEST(SnapshotLinks, OfAControllerNameItsRaidEngine) {
  MirnSnapshot read;
  read.raids = {raid(1, L"raid-1"), raid(2, L"raid-2")};
  read.controllers = {controller(9, L"controller", 2)};
  EXPECT_EQ(finished(read).controllers.front().raidId(), L"raid-2");
}

TEST(SnapshotLinks, OfAPortNameItsFarEndAndLocalDevice) {
  MirnSnapshot read;
  read.controllers = {controller(1, L"controller")};
  read.endDevices = {device(2, L"disk").build()};
  read.ports = {port(11, L"port-11").localDeviceHandle(1).connectedPortHandle(12).build(),
                port(12, L"port-12").localDeviceHandle(2).connectedPortHandle(11).build()};
  const auto linked = finished(read).ports;
  EXPECT_EQ(linked[0].localDeviceId(), L"controller");
  EXPECT_EQ(linked[0].connectedPortId(), L"port-12");
  EXPECT_EQ(linked[1].localDeviceId(), L"disk");
  EXPECT_EQ(linked[1].connectedPortId(), L"port-11");
}

TEST(SnapshotLinks, OfAPortPreferAnEndDeviceToAControllerOfTheSameHandle) {
  MirnSnapshot read;
  read.controllers = {controller(7, L"controller")};
  read.endDevices = {device(7, L"disk").build()};
  read.ports = {port(11, L"port").localDeviceHandle(7).build()};
  EXPECT_EQ(finished(read).ports.front().localDeviceId(), L"disk");
}

TEST(SnapshotLinks, OfAnArrayNameItsControllersInTheOrderOfTheirIds) {
  MirnSnapshot read;
  read.arrays = {array(1, L"shared"), array(2, L"single"), array(3, L"orphan")};
  read.controllerArrays = {
      {L"20", {L"shared"}}, {L"3", {L"shared", L"single"}}, {L"1", {}}, {L"100", {L"other", L"shared"}}};
  const auto linked = finished(read).arrays;
  EXPECT_THAT(linked[0].controllerIds(), ElementsAre(L"100", L"20", L"3"));
  EXPECT_THAT(linked[1].controllerIds(), ElementsAre(L"3"));
  EXPECT_THAT(linked[2].controllerIds(), IsEmpty());
}

TEST(SnapshotLinks, OfAnArrayNameAControllerThatListsItTwiceOnce) {
  MirnSnapshot read;
  read.arrays = {array(1, L"array")};
  read.controllerArrays = {{L"1", {L"array", L"array"}}};
  EXPECT_THAT(finished(read).arrays.front().controllerIds(), ElementsAre(L"1"));
}

TEST(SnapshotLinks, OfAnArrayReplaceThoseItHad) {
  MirnSnapshot read;
  read.arrays = {array(1, L"array")};
  read.arrays.front().setControllerIds({L"old"});
  read.controllerArrays = {{L"1", {L"array"}}};
  EXPECT_THAT(finished(read).arrays.front().controllerIds(), ElementsAre(L"1"));
}

TEST(SnapshotLinks, TakeTheFirstOfSeveralObjectsWithOneHandle) {
  MirnSnapshot read;
  read.arrays = {array(1, L"first"), array(1, L"second")};
  read.volumes = {volume(9, L"volume").arrayHandle(1).build()};
  EXPECT_EQ(finished(read).volumes.front().arrayId(), L"first");
}

TEST(SnapshotLinks, TakeTheFirstOfSeveralObjectsWithOneHandleThatAreNotInOrder) {
  MirnSnapshot read;
  read.arrays = {array(7, L"last"), array(1, L"first"), array(3, L"other"), array(1, L"second")};
  read.volumes = {volume(9, L"volume").arrayHandle(1).build(), volume(8, L"far").arrayHandle(7).build()};
  const auto volumes = finished(read).volumes;
  EXPECT_EQ(volumes[0].arrayId(), L"last");
  EXPECT_EQ(volumes[1].arrayId(), L"first");
}

TEST(SnapshotLinks, OfAPortPreferTheEndDeviceToTheControllerWithThatHandle) {
  MirnSnapshot read;
  read.controllers = {controller(4, L"controller"), controller(5, L"other controller")};
  read.endDevices = {device(4, L"disk").build()};
  read.ports = {port(1, L"of both").localDeviceHandle(4).build(),
                port(2, L"of the controller").localDeviceHandle(5).build()};
  const auto ports = finished(read).ports;
  EXPECT_EQ(ports[0].localDeviceId(), L"disk");
  EXPECT_EQ(ports[1].localDeviceId(), L"other controller");
}

/// Objects with links to `handle`, among others that could be meant.
MirnSnapshot linkedTo(VEX_HANDLE handle) {
  MirnSnapshot read;
  read.arrays = {array(1, L"array-1"), array(kNothing, L"array-0")};
  read.raids = {raid(1, L"raid-1"), raid(kNothing, L"raid-0")};
  read.controllers = {controller(1, L"controller-1", handle), controller(kNothing, L"controller-0", handle)};
  read.endDevices = {
      device(1, L"disk-1").arrayHandle(handle).raidHandle(handle).controllerHandle(handle).build(),
      device(kNothing, L"disk-0").build()};
  read.volumes = {volume(1, L"volume").arrayHandle(handle).journalingDriveHandle(handle).build()};
  read.ports = {port(1, L"port-1").localDeviceHandle(handle).connectedPortHandle(handle).build(),
                port(kNothing, L"port-0").build()};
  return finished(read);
}

class LinksToNothing : public testing::TestWithParam<VEX_HANDLE> {};

TEST_P(LinksToNothing, AreEmpty) {
  const MirnSnapshot snapshot = linkedTo(GetParam());
  const EndDevice& disk = snapshot.endDevices.back();
  EXPECT_EQ(disk.id(), L"disk-1");
  EXPECT_EQ(disk.arrayId(), L"");
  EXPECT_EQ(disk.raidId(), L"");
  EXPECT_EQ(disk.controllerId(), L"");
  EXPECT_EQ(snapshot.volumes.back().arrayId(), L"");
  EXPECT_EQ(snapshot.volumes.back().journalingDriveId(), L"");
  EXPECT_EQ(snapshot.controllers.back().raidId(), L"");
  EXPECT_EQ(snapshot.ports.back().localDeviceId(), L"");
  EXPECT_EQ(snapshot.ports.back().connectedPortId(), L"");
}

// Handle 0 names nothing, not even an object that has it.
INSTANTIATE_TEST_SUITE_P(Handles, LinksToNothing, testing::Values(kUnheardOf, kNothing));

TEST(SnapshotLinks, TakeNoMemoryOfTheirOwn) {
  const MirnSnapshot snapshot = linkedTo(1);
  const EndDevice& disk = snapshot.endDevices.back();
  EXPECT_EQ(&disk.arrayId(), &snapshot.arrays.back().id());
  EXPECT_EQ(&disk.raidId(), &snapshot.raids.back().id());
  EXPECT_EQ(&disk.controllerId(), &snapshot.controllers.back().id());
  EXPECT_EQ(&snapshot.ports.back().localDeviceId(), &disk.id());
  EXPECT_EQ(&snapshot.volumes.back().journalingDriveId(), &disk.id());
}

TEST(SnapshotLinks, LeaveAnIdAsItStoodWhenNothingMatches) {
  MirnSnapshot read;
  read.volumes = {volume(1, L"volume").arrayHandle(kUnheardOf).build()};
  read.volumes.front().setArrayId(L"before");
  EXPECT_EQ(finished(read).volumes.front().arrayId(), L"before");
}

// Hot-plug flags

/// A device that the library calls removable, in an array with one volume.
struct MemberCase {
  const char* name;
  bool systemVolume;
  RaidLevel level;
  VolumeState state;
  bool removable;
};

class HotplugOfAMember : public testing::TestWithParam<MemberCase> {};

TEST_P(HotplugOfAMember, FollowsFromTheVolumeOfItsArray) {
  const MemberCase& row = GetParam();
  MirnSnapshot read;
  read.volumes = {volume(1, L"volume")
                      .arrayHandle(5)
                      .systemVolume(row.systemVolume)
                      .raidLevel(row.level)
                      .state(row.state)
                      .build()};
  read.endDevices = {device(1, L"disk").arrayHandle(5).managedHotplug(true).build()};
  EXPECT_EQ(finished(read).endDevices.front().managedHotplug(), row.removable);
}

INSTANTIATE_TEST_SUITE_P(
    Volumes, HotplugOfAMember,
    testing::Values(
        MemberCase{"NormalSystemMirror", true, RaidLevel::RAID_1, VolumeState::NORMAL, true},
        MemberCase{"NormalSystemRaid5", true, RaidLevel::RAID_5, VolumeState::NORMAL, true},
        MemberCase{"NormalSystemRaid10", true, RaidLevel::RAID_10, VolumeState::NORMAL, true},
        MemberCase{"NormalSystemStripe", true, RaidLevel::RAID_0, VolumeState::NORMAL, false},
        MemberCase{"NormalSystemOfInvalidLevel", true, RaidLevel::RAID_INVALID, VolumeState::NORMAL, false},
        MemberCase{"NormalSystemOfUnknownLevel", true, RaidLevel::RAID_UNKNOWN, VolumeState::NORMAL, false},
        MemberCase{"DegradedSystemMirror", true, RaidLevel::RAID_1, VolumeState::DEGRADED, false},
        MemberCase{"RebuildingSystemMirror", true, RaidLevel::RAID_1, VolumeState::REBUILDING, false},
        MemberCase{"UnknownStateOfASystemMirror", true, RaidLevel::RAID_1, VolumeState::UNKNOWN, false},
        MemberCase{"DataStripe", false, RaidLevel::RAID_0, VolumeState::NORMAL, true},
        MemberCase{"FailedDataMirror", false, RaidLevel::RAID_1, VolumeState::FAILED, true}),
    ByName());

TEST(HotplugFlag, FallsForOneVolumeOfTheArrayAmongOthers) {
  MirnSnapshot read;
  const auto inArray = [](VEX_HANDLE handle, VEX_HANDLE arrayHandle, bool system) {
    return volume(handle, std::to_wstring(handle))
        .arrayHandle(arrayHandle)
        .systemVolume(system)
        .raidLevel(RaidLevel::RAID_0)
        .build();
  };
  read.volumes = {inArray(1, 5, false), inArray(2, 5, true), inArray(3, 6, false)};
  read.endDevices = {device(1, L"1").arrayHandle(5).managedHotplug(true).build(),
                     device(2, L"2").arrayHandle(6).managedHotplug(true).build()};
  const auto devices = finished(read).endDevices;
  EXPECT_FALSE(devices[0].managedHotplug());
  EXPECT_TRUE(devices[1].managedHotplug());
}

TEST(HotplugFlag, OfAMemberStaysWhenItsArrayHasNoVolume) {
  EndDevice::Disk systemDisk;
  systemDisk.systemDisk = true;
  MirnSnapshot read;
  read.endDevices = {device(1, L"1").arrayHandle(5).managedHotplug(true).disk(systemDisk).build()};
  EXPECT_TRUE(finished(read).endDevices.front().managedHotplug());
}

TEST(HotplugFlag, OfAFreeDeviceIsSetUnlessItIsTheSystemDisk) {
  EndDevice::Disk systemDisk;
  systemDisk.systemDisk = true;
  MirnSnapshot read;
  read.endDevices = {device(1, L"1").managedHotplug(true).disk({}).build(),
                     device(2, L"2").managedHotplug(true).disk(systemDisk).build()};
  // A volume without an array has no hold over devices without one.
  read.volumes = {volume(1, L"1").systemVolume(true).raidLevel(RaidLevel::RAID_0).build()};
  const auto devices = finished(read).endDevices;
  EXPECT_TRUE(devices[0].managedHotplug());
  EXPECT_FALSE(devices[1].managedHotplug());
}

TEST(HotplugFlag, ThatWasClearStaysClear) {
  MirnSnapshot read;
  read.endDevices = {device(1, L"1").managedHotplug(false).disk({}).build(),
                     device(2, L"2").arrayHandle(5).managedHotplug(false).disk({}).build()};
  const auto devices = finished(read).endDevices;
  EXPECT_FALSE(devices[0].managedHotplug());
  EXPECT_FALSE(devices[1].managedHotplug());
}

// The rest

TEST(FinishedSnapshot, KeepsVersionAndRaidLevels) {
  MirnSnapshot read;
  read.version = std::make_shared<Version>(complete<Version>().build());
  read.raidLevels[L"61"].emplace(RaidLevel::RAID_5, complete<RaidLevelSupport>().build());
  const MirnSnapshot snapshot = finished(read);
  EXPECT_EQ(snapshot.version, read.version);
  EXPECT_EQ(snapshot.raidLevels.at(L"61").count(RaidLevel::RAID_5), 1u);
}

TEST(FinishedSnapshot, OfNothingIsEmpty) {
  const MirnSnapshot snapshot = finished({});
  EXPECT_THAT(snapshot.controllers, IsEmpty());
  EXPECT_THAT(snapshot.controllerArrays, IsEmpty());
  EXPECT_EQ(snapshot.version, nullptr);
}

}  // namespace
