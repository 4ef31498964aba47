#include <cstring>
#include <functional>

#include "simulator/workbench_fixture.h"
#include "support/by_name.h"

namespace {

using Reading = Workbench;

TEST_F(Reading, TellsOfTheLibraryWithoutASession) {
  VEX_SYSTEM_INFO info = {};
  ASSERT_EQ(VexGetSystemInfo(&info), 0U);
  EXPECT_EQ(info.interfaceVersionMajor, 3U);
  EXPECT_STREQ(info.libraryVersion, "9.3.0.1052");
  EXPECT_EQ(info.passThroughSupport, 1U);
}

TEST_F(Reading, AnnouncesTheCountFirst) {
  std::uint32_t count = 0;
  EXPECT_EQ(VexGetControllerHandles(session(), 0, 0, nullptr, &count), 13U);
  EXPECT_EQ(count, 5U);
  VEX_HANDLE tooFew[2] = {7, 7};
  count = 2;
  EXPECT_EQ(VexGetControllerHandles(session(), 0, 0, tooFew, &count), 13U);
  EXPECT_EQ(count, 5U);
  EXPECT_EQ(tooFew[0], 7U);
  VEX_HANDLE enough[6] = {};
  count = 6;
  EXPECT_EQ(VexGetControllerHandles(session(), 0, 0, enough, &count), 0U);
  EXPECT_EQ(count, 5U);
  EXPECT_EQ(enough[5], 0U);
}

TEST_F(Reading, NoObjectsAreNoShortage) {
  std::uint32_t count = 5;
  const VEX_HANDLE noRaid = controller("C").controllerHandle;
  EXPECT_EQ(VexGetArrayHandles(session(), 2, noRaid, nullptr, &count), 0U);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(VexGetArrayHandles(session(), 2, noRaid, nullptr, &count), 0U);
}

TEST_F(Reading, ListsWhatHangsUnderAController) {
  const VEX_HANDLE b = controller("B").controllerHandle;
  EXPECT_EQ(handles(VexGetEndDeviceHandles, 2, b).size(), 4U);
  EXPECT_EQ(handles(VexGetPhyHandles, 2, b).size(), 4U);
  EXPECT_EQ(handles(VexGetArrayHandles, 2, b), std::vector<VEX_HANDLE>{arrayHandle("plain")});
  EXPECT_EQ(handles(VexGetVolumeHandles, 2, b), std::vector<VEX_HANDLE>{volumeHandle("plain")});
  EXPECT_EQ(handles(VexGetPortHandles, 1, b), std::vector<VEX_HANDLE>{port("port B").portHandle});
}

TEST_F(Reading, EnginesHaveNoScope) {
  VEX_HANDLE engines[3] = {};
  std::uint32_t count = 3;
  ASSERT_EQ(VexGetRaidInfoHandles(session(), engines, &count), 0U);
  ASSERT_EQ(count, 3U);
  VEX_RAID_INFO info = {};
  ASSERT_EQ(VexGetRaidInfo(session(), engines[0], &info), 0U);
  EXPECT_STREQ(info.uniqueId, "engine");
  EXPECT_EQ(info.maxDisksPerArray, 6U);
  EXPECT_EQ(info.dedicatedSpareSupport, 1U);
  EXPECT_EQ(controller("A").raidInfoHandle, engines[0]);
  EXPECT_EQ(disk("a0").raidInfoHandle, engines[0]);
  EXPECT_EQ(controller("C").raidInfoHandle, 0U);
}

struct ScopeRow {
  std::string name;
  decltype(&VexGetVolumeHandles) operation;
  VEX_SCOPE_TYPE controllerScope;
};

void PrintTo(const ScopeRow& row, std::ostream* stream) { *stream << row.name; }

class Scope : public Workbench, public testing::WithParamInterface<ScopeRow> {
 protected:
  VEX_STATUS list(VEX_SCOPE_TYPE scope, VEX_HANDLE handle) {
    VEX_HANDLE room[64] = {};
    std::uint32_t count = 64;
    return GetParam().operation(session(), scope, handle, room, &count);
  }
};

TEST_P(Scope, IsTheSystemOrAController) {
  const VEX_HANDLE a = controller("A").controllerHandle;
  for (VEX_SCOPE_TYPE scope = 0; scope < 5; ++scope) {
    EXPECT_EQ(list(scope, a), scope == GetParam().controllerScope ? 0U : 17U) << scope;
  }
  EXPECT_EQ(list(0, 0), 0U);
  EXPECT_EQ(list(0xFFFFFFFF, 0), 17U);
}

class ControllerScope : public Scope {};

TEST_P(ControllerScope, OfNoControllerIsAnInvalidHandle) {
  EXPECT_EQ(list(GetParam().controllerScope, 0), 3U);
  EXPECT_EQ(list(GetParam().controllerScope, 4711), 3U);
  EXPECT_EQ(list(GetParam().controllerScope, diskHandle("a0")), 3U);
}

const ScopeRow kBelowControllers[] = {{"EndDevices", VexGetEndDeviceHandles, 2},
                                      {"Phys", VexGetPhyHandles, 2},
                                      {"Arrays", VexGetArrayHandles, 2},
                                      {"Volumes", VexGetVolumeHandles, 2},
                                      {"Ports", VexGetPortHandles, 1}};

constexpr VEX_SCOPE_TYPE kNoScope = 99;

INSTANTIATE_TEST_SUITE_P(BelowControllers, Scope, testing::ValuesIn(kBelowControllers), ByName());
INSTANTIATE_TEST_SUITE_P(Controllers, Scope,
                         testing::Values(ScopeRow{"Controllers", VexGetControllerHandles, kNoScope}),
                         ByName());
INSTANTIATE_TEST_SUITE_P(BelowControllers, ControllerScope, testing::ValuesIn(kBelowControllers), ByName());

/// One read operation with everything but what the test varies.
struct ReadRow {
  std::string name;
  std::function<VEX_STATUS(VEX_HANDLE session, VEX_HANDLE handle, bool hasOut)> call;
};

void PrintTo(const ReadRow& row, std::ostream* stream) { *stream << row.name; }

template <class Info>
ReadRow reader(const std::string& name, VEX_STATUS (*read)(VEX_HANDLE, VEX_HANDLE, Info*)) {
  return {name, [read](VEX_HANDLE session, VEX_HANDLE handle, bool hasOut) {
            Info info = {};
            return read(session, handle, hasOut ? &info : nullptr);
          }};
}

const ReadRow kReaders[] = {
    reader("Controller", VexGetControllerInfo),
    reader("EndDevice", VexGetEndDeviceInfo),
    reader("Phy", VexGetPhyInfo),
    reader("Array", VexGetArrayInfo),
    reader("Volume", VexGetVolumeInfo),
    reader("Port", VexGetPortInfo),
    reader("Raid", VexGetRaidInfo),
    {"RaidLevel",
     [](VEX_HANDLE session, VEX_HANDLE handle, bool hasOut) {
       VEX_RAID_LEVEL_INFO info = {};
       return VexGetRaidLevelInfo(session, handle, 1, hasOut ? &info : nullptr);
     }},
};

class Record : public Workbench, public testing::WithParamInterface<ReadRow> {};

TEST_P(Record, NeedsAPlaceASessionAndAHandle) {
  EXPECT_EQ(GetParam().call(session(), 1, false), 2U);
  EXPECT_EQ(GetParam().call(session() + 1, 1, true), 8U);
  EXPECT_EQ(GetParam().call(0, 1, true), 8U);
  EXPECT_EQ(GetParam().call(session(), 0, true), 3U);
  EXPECT_EQ(GetParam().call(session(), 0xFFFFFFFF, true), 3U);
}

TEST_P(Record, IsOfOneKindOfObjectOnly) {
  int taken = 0;
  const VEX_HANDLE oneOfEach[] = {controller("A").raidInfoHandle,
                                  controller("A").controllerHandle,
                                  diskHandle("a0"),
                                  phyOf("a0"),
                                  port("port A").portHandle,
                                  arrayHandle("mirror"),
                                  volumeHandle("mirror")};
  for (const VEX_HANDLE handle : oneOfEach) {
    const VEX_STATUS status = GetParam().call(session(), handle, true);
    EXPECT_TRUE(status == 0 || status == 3) << status;
    taken += status == 0 ? 1 : 0;
  }
  EXPECT_EQ(taken, 1);
}

INSTANTIATE_TEST_SUITE_P(Operations, Record, testing::ValuesIn(kReaders), ByName());

TEST_F(Reading, NullCountsAreRefused) {
  EXPECT_EQ(VexGetVolumeHandles(session(), 0, 0, nullptr, nullptr), 2U);
  EXPECT_EQ(VexGetRaidInfoHandles(session(), nullptr, nullptr), 2U);
  EXPECT_EQ(VexGetSystemInfo(nullptr), 2U);
}

TEST_F(Reading, EveryLevelHasARecord) {
  const VEX_HANDLE engine = controller("B").raidInfoHandle;
  for (const std::uint32_t level : {0U, 1U, 2U, 3U, 4U, 8U, 16U, 0x80000000U}) {
    VEX_RAID_LEVEL_INFO info = {};
    EXPECT_EQ(VexGetRaidLevelInfo(session(), engine, level, &info), 0U);
    EXPECT_EQ(info.supported, level == 1 || level == 2 ? 1U : 0U) << level;
  }
}

TEST_F(Reading, TellsWhatALevelCanDo) {
  VEX_RAID_LEVEL_INFO info = {};
  ASSERT_EQ(VexGetRaidLevelInfo(session(), controller("A").raidInfoHandle, VEX_RAID_LEVEL_0, &info), 0U);
  EXPECT_EQ(info.minDisks, 2U);
  EXPECT_EQ(info.maxDisks, 6U);
  EXPECT_EQ(info.defaultStripSize, VEX_STRIP_SIZE_128KB);
  EXPECT_EQ(info.stripSizes, VEX_STRIP_SIZE_64KB | VEX_STRIP_SIZE_128KB);
  EXPECT_EQ(info.migrationTargets, VEX_RAID_LEVEL_0 | VEX_RAID_LEVEL_5 | VEX_RAID_LEVEL_10);
  EXPECT_EQ(info.migrationRequiresDisk, VEX_RAID_LEVEL_5 | VEX_RAID_LEVEL_10);
  EXPECT_EQ(info.created, 1U);
}

TEST_F(Reading, AccountsForCapacity) {
  constexpr std::uint64_t kMiB = 1 << 20;
  const VEX_ARRAY_INFO five = array("array five");
  EXPECT_EQ(five.totalSize, 3000 * kMiB);
  EXPECT_EQ(five.freeSize, 1500 * kMiB);  // a RAID 5 of 1000 MiB takes 500 MiB of each of the three
  EXPECT_EQ(five.numDisks, 3U);
  EXPECT_EQ(five.numVolumes, 1U);
  EXPECT_EQ(disk("a2").freeSize, 500 * kMiB);
  EXPECT_EQ(disk("a7").freeSize, 1000 * kMiB);
  EXPECT_EQ(disk("locked").freeSize, 0U);
  EXPECT_EQ(array("array ten").freeSize, 0U);
}

TEST_F(Reading, LinksDisksPhysAndPorts) {
  const VEX_END_DEVICE_INFO a0 = disk("a0");
  EXPECT_EQ(a0.arrayHandle, arrayHandle("mirror"));
  EXPECT_EQ(a0.controllerHandle, controller("A").controllerHandle);
  EXPECT_NE(phyOf("a0"), 0U);
  const VEX_PORT_INFO near = port("port A");
  const VEX_PORT_INFO far = port("port a0");
  EXPECT_EQ(near.localDeviceType, VEX_LOCAL_DEVICE_CONTROLLER);
  EXPECT_EQ(near.connectedPortHandle, far.portHandle);
  EXPECT_EQ(far.localDeviceType, VEX_LOCAL_DEVICE_END_DEVICE);
  EXPECT_EQ(far.localDeviceHandle, a0.endDeviceHandle);
  EXPECT_EQ(far.connectedPortHandle, near.portHandle);
  EXPECT_EQ(port("port B").connectedPortHandle, 0U);
}

TEST_F(Reading, OnlyADiskHasADiskState) {
  const VEX_END_DEVICE_INFO optical = disk("optical");
  EXPECT_EQ(optical.deviceType, VEX_DEVICE_TYPE_NON_DISK_STORAGE);
  EXPECT_EQ(optical.diskState, 0U);
  EXPECT_EQ(optical.diskUsage, 0U);
  EXPECT_EQ(disk("a7").diskState, VEX_DISK_STATE_NORMAL);
  EXPECT_EQ(disk("a7").diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
  EXPECT_EQ(disk("x8").x8PortA, 1U);
  EXPECT_EQ(disk("other x8").x8PortB, 1U);
}

TEST_F(Reading, LeavesBytesWithoutAFieldAlone) {
  VEX_CONTROLLER_INFO info;
  std::memset(&info, 0xAB, sizeof(info));
  ASSERT_EQ(VexGetControllerInfo(session(), controller("A").controllerHandle, &info), 0U);
  for (const std::uint8_t byte : info.reserved480) EXPECT_EQ(byte, 0xAB);
  EXPECT_EQ(info.name[sizeof(info.name) - 1], '\0');
}

}  // namespace
