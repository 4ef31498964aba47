#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/given_reader.h"
#include "support/model_samples.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;

class ServiceStateTest : public SessionTest {
 protected:
  ServiceStateTest() {
    GivenReader::picture = {};
    GivenReader::picture.version = std::make_shared<Version>(complete<Version>().build());
  }

  void givenVolumes(const std::vector<VolumeState>& states) {
    auto& volumes = GivenReader::picture.volumes;
    volumes.clear();
    for (const VolumeState state : states) {
      const auto handle = static_cast<VEX_HANDLE>(volumes.size() + 1);
      volumes.push_back(complete<Volume>().handle(handle).id(std::to_wstring(handle)).state(state).build());
    }
  }

  void addDevice(DeviceType type, DiskState state, DiskUsage usage) {
    auto& devices = GivenReader::picture.endDevices;
    EndDevice::Disk disk;
    disk.state = state;
    disk.usage = usage;
    const auto handle = static_cast<VEX_HANDLE>(devices.size() + 1);
    const std::wstring id = std::to_wstring(handle);
    devices.push_back(complete<EndDevice>().handle(handle).id(id).deviceType(type).disk(disk).build());
  }

  void givenDevice(DeviceType type, DiskState state, DiskUsage usage) {
    GivenReader::picture.endDevices.clear();
    addDevice(type, state, usage);
  }

  std::wstring serviceState() {
    m_session.refresh(false);
    return m_session.getServiceState();
  }
};

// The rules, as a reader of the words would write them down. N normal, W warning, F failed.

/// By the number of the volume's state, 0 to 12.
constexpr char kByVolumeState[] = "WNWFNNNNNNNFN";

/// By the number of the disk's state, 0 to 11, and of its usage, 0 to 8.
constexpr const char* kByDiskState[] = {
    "NNNNNNNNN",  // unknown
    "WNNNNNNNN",  // offline
    "WWWWWWWWW",  // missing
    "FWFWWWWWW",  // failed
    "WWWWWWWWW",  // SMART event
    "WWWWWWWWW",  // configuration of a later version
    "WNNNNNNNN",  // normal
    "NNNNNNNNN",  // locked
    "WWWWWWWWW",  // everything above
    "WWWWWWWWW",  //
    "WWWWWWWWW",  //
    "WWWWWWWWW",  //
};

constexpr std::int32_t kVolumeStates = 13;
constexpr std::int32_t kDiskStates = 12;
constexpr std::int32_t kUsages = 9;
constexpr std::int32_t kDeviceTypes = 5;

std::wstring worse(char a, char b) {
  if (a == 'F' || b == 'F') return L"FAILED";
  return a == 'W' || b == 'W' ? L"WARNING" : L"NORMAL";
}

/// Every state of a volume with every state, usage and type of one device.
class ServiceStateOf : public ServiceStateTest, public testing::WithParamInterface<std::int32_t> {};

TEST_P(ServiceStateOf, AVolumeAndADeviceIsThatOfTheWorse) {
  const std::int32_t volumeState = GetParam();
  givenVolumes({VolumeState(volumeState)});
  for (std::int32_t type = 0; type < kDeviceTypes; ++type) {
    for (std::int32_t state = 0; state < kDiskStates; ++state) {
      for (std::int32_t usage = 0; usage < kUsages; ++usage) {
        givenDevice(DeviceType(type), DiskState(state), DiskUsage(usage));
        const char ofDevice = type == 1 ? kByDiskState[state][usage] : 'N';
        EXPECT_EQ(serviceState(), worse(kByVolumeState[volumeState], ofDevice))
            << "type " << type << ", state " << state << ", usage " << usage;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(VolumeStates, ServiceStateOf, testing::Range(0, kVolumeStates));

TEST_F(ServiceStateTest, IsNormalWithoutVolumesAndDisks) { EXPECT_EQ(serviceState(), L"NORMAL"); }

TEST_F(ServiceStateTest, IsFailedForADegradedVolumeAheadOfAFailedOne) {
  givenVolumes({VolumeState::DEGRADED, VolumeState::FAILED});
  EXPECT_EQ(serviceState(), L"FAILED");
}

TEST_F(ServiceStateTest, IsFailedForAFailedVolumeWithAMissingDisk) {
  givenVolumes({VolumeState::FAILED});
  givenDevice(DeviceType::DISK, DiskState::MISSING, DiskUsage::ARRAY_MEMBER);
  EXPECT_EQ(serviceState(), L"FAILED");
}

TEST_F(ServiceStateTest, StaysWarningWhateverIsHealthyAfterwards) {
  givenVolumes({VolumeState::DEGRADED, VolumeState::NORMAL});
  givenDevice(DeviceType::DISK, DiskState::NORMAL, DiskUsage::ARRAY_MEMBER);
  EXPECT_EQ(serviceState(), L"WARNING");
}

TEST_F(ServiceStateTest, IsFailedForAFailedDiskBehindAWarning) {
  addDevice(DeviceType::DISK, DiskState::MISSING, DiskUsage::SPARE);
  addDevice(DeviceType::DISK, DiskState::FAILED, DiskUsage::PASS_THROUGH);
  EXPECT_EQ(serviceState(), L"FAILED");
}

TEST_F(ServiceStateTest, IsWarningForAFailedMember) {
  givenDevice(DeviceType::DISK, DiskState::FAILED, DiskUsage::ARRAY_MEMBER);
  EXPECT_EQ(serviceState(), L"WARNING");
}

TEST_F(ServiceStateTest, IsNormalForAnOfflineMember) {
  givenDevice(DeviceType::DISK, DiskState::OFFLINE, DiskUsage::ARRAY_MEMBER);
  EXPECT_EQ(serviceState(), L"NORMAL");
}

TEST_F(ServiceStateTest, IsNormalForAMissingThingThatIsNoDisk) {
  givenDevice(DeviceType::NON_DISK_STORAGE, DiskState::MISSING, DiskUsage::UNKNOWN);
  EXPECT_EQ(serviceState(), L"NORMAL");
}

// Volumes in progress

TEST_F(ServiceStateTest, VolumesInProgressAreThoseOfFiveStatesInListOrder) {
  std::vector<VolumeState> all;
  for (std::int32_t state = kVolumeStates - 1; state >= 0; --state) all.push_back(VolumeState(state));
  givenVolumes(all);
  m_session.refresh(false);
  std::vector<std::int32_t> inProgress;
  for (const Volume& volume : m_session.getVolumesInProgress()) {
    inProgress.push_back(static_cast<std::int32_t>(volume.state()));
  }
  EXPECT_THAT(inProgress, ElementsAre(8, 7, 6, 5, 4));
}

TEST_F(ServiceStateTest, TheOtherStateThatReadsRebuildingIsNotInProgress) {
  EXPECT_EQ(toText(VolumeState(10)), L"REBUILDING");
  givenVolumes({VolumeState(10)});
  m_session.refresh(false);
  EXPECT_TRUE(m_session.getVolumesInProgress().empty());
}

}  // namespace
