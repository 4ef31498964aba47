#include "enumerations.h"

#include <stdexcept>

#include "lookup.h"

namespace {

constexpr wchar_t kUnknown[] = L"UNKNOWN";
constexpr char kInvalidArgument[] = "Invalid argument";

template <class Value>
using TextTable = std::map<Value, std::wstring>;

/// Every table of this file, so that all are built together.
struct Tables {
  TextTable<RaidLevel> raidLevels{
      {RaidLevel::RAID_UNKNOWN, L"RAID_UNKNOWN"},
      {RaidLevel::RAID_INVALID, L"RAID_INVALID"},
      {RaidLevel::RAID_0, L"RAID_0"},
      {RaidLevel::RAID_1, L"RAID_1"},
      {RaidLevel::RAID_5, L"RAID_5"},
      {RaidLevel::RAID_10, L"RAID_10"},
  };

  /// A known level that cannot be created is told apart from a word that is no level.
  std::map<std::wstring, RaidLevel> raidLevelsByText{
      {L"RAID_UNKNOWN", RaidLevel::RAID_UNKNOWN},
      {L"RAID_INVALID", RaidLevel::RAID_INVALID},
      {L"RAID_0", RaidLevel::RAID_0},
      {L"RAID_1", RaidLevel::RAID_1},
      {L"RAID_5", RaidLevel::RAID_5},
      {L"RAID_10", RaidLevel::RAID_10},
      {L"RAID_2", RaidLevel::RAID_INVALID},
      {L"RAID_3", RaidLevel::RAID_INVALID},
      {L"RAID_4", RaidLevel::RAID_INVALID},
      {L"RAID_6", RaidLevel::RAID_INVALID},
      {L"RAID_01", RaidLevel::RAID_INVALID},
  };

  TwoWayTable<StripSize, std::wstring> stripSizes = makeTwoWayTable<StripSize, std::wstring>({
      {StripSize::SIZE_2KB, L"SIZE_2KB"},
      {StripSize::SIZE_4KB, L"SIZE_4KB"},
      {StripSize::SIZE_8KB, L"SIZE_8KB"},
      {StripSize::SIZE_16KB, L"SIZE_16KB"},
      {StripSize::SIZE_32KB, L"SIZE_32KB"},
      {StripSize::SIZE_64KB, L"SIZE_64KB"},
      {StripSize::SIZE_128KB, L"SIZE_128KB"},
      {StripSize::SIZE_256KB, L"SIZE_256KB"},
      {StripSize::SIZE_512KB, L"SIZE_512KB"},
      {StripSize::SIZE_1MB, L"SIZE_1MB"},
      {StripSize::SIZE_2MB, L"SIZE_2MB"},
      {StripSize::SIZE_4MB, L"SIZE_4MB"},
      {StripSize::SIZE_8MB, L"SIZE_8MB"},
      {StripSize::SIZE_16MB, L"SIZE_16MB"},
      {StripSize::SIZE_32MB, L"SIZE_32MB"},
      {StripSize::SIZE_64MB, L"SIZE_64MB"},
      {StripSize::NOT_AVAILABLE, L"N/A"},
      {StripSize::SIZE_UNKNOWN, L"SIZE_UNKNOWN"},
  });

  StripSizeBits stripSizeBits = makeTwoWayTable<StripSize, std::uint32_t>({
      {StripSize::SIZE_2KB, 0x1},
      {StripSize::SIZE_4KB, 0x2},
      {StripSize::SIZE_8KB, 0x4},
      {StripSize::SIZE_16KB, 0x8},
      {StripSize::SIZE_32KB, 0x10},
      {StripSize::SIZE_64KB, 0x20},
      {StripSize::SIZE_128KB, 0x40},
      {StripSize::SIZE_256KB, 0x80},
      {StripSize::SIZE_512KB, 0x100},
      {StripSize::SIZE_1MB, 0x200},
      {StripSize::SIZE_2MB, 0x400},
      {StripSize::SIZE_4MB, 0x800},
      {StripSize::SIZE_8MB, 0x1000},
      {StripSize::SIZE_16MB, 0x2000},
      {StripSize::SIZE_32MB, 0x4000},
      {StripSize::SIZE_64MB, 0x8000},
      {StripSize::SIZE_UNKNOWN, 0},
  });

  TwoWayTable<RwhPolicy, std::wstring> rwhPolicies = makeTwoWayTable<RwhPolicy, std::wstring>({
      {RwhPolicy::RWH_OFF, L"RWH_OFF"},
      {RwhPolicy::RWH_DISTRIBUTED, L"RWH_DISTRIBUTED"},
      {RwhPolicy::RWH_JOURNALING_DRIVE, L"RWH_JOURNALING_DRIVE"},
  });

  TwoWayTable<EnableState, std::wstring> enableStates = makeTwoWayTable<EnableState, std::wstring>({
      {EnableState::DISABLED, L"DISABLED"},
      {EnableState::ENABLED, L"ENABLED"},
  });

  TextTable<VolumeState> volumeStates{
      {VolumeState::NORMAL, L"NORMAL"},
      {VolumeState::DEGRADED, L"DEGRADED"},
      {VolumeState::FAILED, L"FAILED"},
      {VolumeState::INITIALIZING, L"INITIALIZING"},
      {VolumeState::REBUILDING, L"REBUILDING"},
      {VolumeState::VERIFYING, L"VERIFYING"},
      {VolumeState::VERIFYING_AND_FIXING, L"VERIFYING_AND_FIXING"},
      {VolumeState::GENERAL_MIGRATION, L"GENERAL_MIGRATION"},
      {VolumeState::LOCKED, L"LOCKED"},
      {VolumeState::REBUILDING_ALTERNATE, L"REBUILDING"},
      {VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK, L"NON_REDUNDANT_VOLUME_FAILED_DISK"},
  };

  TextTable<CachePolicy> cachePolicies{
      {CachePolicy::OFF, L"OFF"},
      {CachePolicy::WRITE_THROUGH, L"WRITE_THROUGH"},
      {CachePolicy::WRITE_BACK, L"WRITE_BACK"},
      {CachePolicy::NOT_SUPPORTED, L"NOT_SUPPORTED"},
  };

  std::map<std::wstring, CachePolicy> cachePoliciesByText{
      {L"OFF", CachePolicy::OFF},
      {L"WRITE_THROUGH", CachePolicy::WRITE_THROUGH},
      {L"WRITE_BACK", CachePolicy::WRITE_BACK},
      {L"UNKNOWN", CachePolicy::UNKNOWN},
  };

  TextTable<ArrayState> arrayStates{
      {ArrayState::NORMAL, L"NORMAL"},
      {ArrayState::STATE_BUSY, L"STATE_BUSY"},
  };

  TextTable<WriteCacheState> writeCacheStates{
      {WriteCacheState::OFF, L"OFF"},
      {WriteCacheState::ON, L"ON"},
      {WriteCacheState::NOT_SUPPORTED, L"NOT_SUPPORTED"},
  };

  TextTable<ControllerType> controllerTypes{
      {ControllerType::SATA, L"SATA"},
      {ControllerType::NVMe, L"NVMe"},
      {ControllerType::Lyx, L"Lyx"},
      {ControllerType::SCU, L"SCU"},
  };

  TextTable<ControllerMode> controllerModes{
      {ControllerMode::AHCI, L"AHCI"},
      {ControllerMode::RAID, L"RAID"},
  };

  TextTable<DeviceType> deviceTypes{
      {DeviceType::DISK, L"DISK"},
      {DeviceType::NON_DISK_STORAGE, L"NON_DISK_STORAGE"},
      {DeviceType::NON_STORAGE, L"NON_STORAGE"},
  };

  TextTable<LinkSpeed> linkSpeeds{
      {LinkSpeed::GBPS_1_5, L"1.5 Gb/s"},
      {LinkSpeed::GBPS_3, L"3 Gb/s"},
      {LinkSpeed::GBPS_6, L"6 Gb/s"},
  };

  TextTable<DiskType> diskTypes{
      {DiskType::SATA, L"SATA"},
      {DiskType::NVME, L"NVME"},
      {DiskType::Lyx, L"Lyx"},
  };

  TextTable<DiskState> diskStates{
      {DiskState::OFFLINE, L"OFFLINE"},
      {DiskState::MISSING, L"MISSING"},
      {DiskState::FAILED, L"FAILED"},
      {DiskState::SMART_EVENT_TRIGGERED, L"SMART_EVENT_TRIGGERED"},
      {DiskState::CONFIG_IS_UPREV, L"CONFIG_IS_UPREV"},
      {DiskState::NORMAL, L"NORMAL"},
      {DiskState::LOCKED, L"LOCKED"},
      {DiskState::MANUAL_OFFLINE, L"MANUAL_OFFLINE"},
      {DiskState::INCOMPATIBLE, L"INCOMPATIBLE"},
      {DiskState::UNSUPPORTED, L"UNSUPPORTED"},
  };

  TextTable<DiskUsage> diskUsages{
      {DiskUsage::ARRAY_MEMBER, L"ARRAY_MEMBER"},
      {DiskUsage::PASS_THROUGH, L"PASS_THROUGH"},
      {DiskUsage::OFFLINE_ARRAY, L"OFFLINE_ARRAY"},
      {DiskUsage::SPARE, L"SPARE"},
      {DiskUsage::ARRAY_MEMBER_READONLY_MOUNT, L"ARRAY_MEMBER_READONLY_MOUNT"},
      {DiskUsage::PASS_THRU_READONLY_MOUNT, L"PASS_THRU_READONLY_MOUNT"},
      {DiskUsage::JOURNALING_DRIVE, L"JOURNALING_DRIVE"},
  };

  TextTable<X8Disk> x8Disks{
      {X8Disk::X8_A, L"X8_A"},
      {X8Disk::X8_B, L"X8_B"},
  };

  TextTable<PortLocalDeviceType> portLocalDeviceTypes{
      {PortLocalDeviceType::CONTROLLER, L"CONTROLLER"},
      {PortLocalDeviceType::END_DEVICE, L"END_DEVICE"},
  };

  TextTable<ServiceState> serviceStates{
      {ServiceState::WARNING, L"WARNING"},
      {ServiceState::NORMAL, L"NORMAL"},
      {ServiceState::FAILED, L"FAILED"},
  };
};

/// Built on the first use and in any case at load, whichever is earlier.
const Tables& tables() {
  static const Tables instance;
  return instance;
}
[[maybe_unused]] const Tables& kBuiltAtLoad = tables();

}  // namespace

std::wstring toText(RaidLevel value) { return lookUpOr(tables().raidLevels, value, kUnknown); }
std::wstring toText(StripSize value) { return lookUpOr(tables().stripSizes.left, value, L"SIZE_UNKNOWN"); }
std::wstring toText(RwhPolicy value) { return lookUpOr(tables().rwhPolicies.left, value, L"RWH_OFF"); }
std::wstring toText(EnableState value) { return lookUpOr(tables().enableStates.left, value, kUnknown); }
std::wstring toText(VolumeState value) { return lookUpOr(tables().volumeStates, value, kUnknown); }
std::wstring toText(CachePolicy value) { return lookUpOr(tables().cachePolicies, value, kUnknown); }
std::wstring toText(ArrayState value) { return lookUpOr(tables().arrayStates, value, kUnknown); }
std::wstring toText(WriteCacheState value) { return lookUpOr(tables().writeCacheStates, value, kUnknown); }
std::wstring toText(ControllerType value) { return lookUpOr(tables().controllerTypes, value, kUnknown); }
std::wstring toText(ControllerMode value) { return lookUpOr(tables().controllerModes, value, kUnknown); }
std::wstring toText(DeviceType value) { return lookUpOr(tables().deviceTypes, value, kUnknown); }
std::wstring toText(LinkSpeed value) { return lookUpOr(tables().linkSpeeds, value, kUnknown); }
std::wstring toText(DiskType value) { return lookUpOr(tables().diskTypes, value, kUnknown); }
std::wstring toText(DiskState value) { return lookUpOr(tables().diskStates, value, kUnknown); }
std::wstring toText(DiskUsage value) { return lookUpOr(tables().diskUsages, value, kUnknown); }
std::wstring toText(X8Disk value) { return lookUpOr(tables().x8Disks, value, kUnknown); }
std::wstring toText(PortLocalDeviceType value) {
  return lookUpOr(tables().portLocalDeviceTypes, value, kUnknown);
}

std::wstring toText(ServiceState value) {
  try {
    return lookUp(tables().serviceStates, value);
  } catch (const std::out_of_range&) {
    throw std::invalid_argument(kInvalidArgument);
  }
}

RaidLevel raidLevelFromText(const std::wstring& text) {
  return lookUpOr(tables().raidLevelsByText, text, RaidLevel::RAID_UNKNOWN);
}

StripSize stripSizeFromText(const std::wstring& text) {
  return lookUpOr(tables().stripSizes.right, text, StripSize::SIZE_UNKNOWN);
}

RwhPolicy rwhPolicyFromText(const std::wstring& text) {
  return lookUpOr(tables().rwhPolicies.right, text, RwhPolicy::NONE);
}

EnableState enableStateFromText(const std::wstring& text) {
  return lookUpOr(tables().enableStates.right, text, EnableState::UNKNOWN);
}

CachePolicy cachePolicyFromText(const std::wstring& text) {
  return lookUpOr(tables().cachePoliciesByText, text, CachePolicy::UNKNOWN);
}

const StripSizeBits& stripSizeBits() { return tables().stripSizeBits; }
