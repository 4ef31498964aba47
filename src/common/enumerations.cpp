#include "enumerations.h"

#include <algorithm>
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

/// The texts of an enumeration on their way out: a table, and the word for every value that it lacks, where
/// there is one.
template <class Table>
struct Texts {
  const Table& table;
  const wchar_t* otherwise;
};
template <class Table>
Texts(const Table&, const wchar_t*) -> Texts<Table>;

auto textsOf(RaidLevel) { return Texts{tables().raidLevels, kUnknown}; }
auto textsOf(StripSize) { return Texts{tables().stripSizes.left, L"SIZE_UNKNOWN"}; }
auto textsOf(RwhPolicy) { return Texts{tables().rwhPolicies.left, L"RWH_OFF"}; }
auto textsOf(EnableState) { return Texts{tables().enableStates.left, kUnknown}; }
auto textsOf(VolumeState) { return Texts{tables().volumeStates, kUnknown}; }
auto textsOf(CachePolicy) { return Texts{tables().cachePolicies, kUnknown}; }
auto textsOf(ArrayState) { return Texts{tables().arrayStates, kUnknown}; }
auto textsOf(WriteCacheState) { return Texts{tables().writeCacheStates, kUnknown}; }
auto textsOf(ControllerType) { return Texts{tables().controllerTypes, kUnknown}; }
auto textsOf(ControllerMode) { return Texts{tables().controllerModes, kUnknown}; }
auto textsOf(DeviceType) { return Texts{tables().deviceTypes, kUnknown}; }
auto textsOf(LinkSpeed) { return Texts{tables().linkSpeeds, kUnknown}; }
auto textsOf(DiskType) { return Texts{tables().diskTypes, kUnknown}; }
auto textsOf(DiskState) { return Texts{tables().diskStates, kUnknown}; }
auto textsOf(DiskUsage) { return Texts{tables().diskUsages, kUnknown}; }
auto textsOf(X8Disk) { return Texts{tables().x8Disks, kUnknown}; }
auto textsOf(PortLocalDeviceType) { return Texts{tables().portLocalDeviceTypes, kUnknown}; }
auto textsOf(ServiceState) { return Texts{tables().serviceStates, nullptr}; }

template <class Enumeration>
std::wstring textOf(Enumeration value) {
  const auto texts = textsOf(value);
  return lookUpOr(texts.table, value, texts.otherwise);
}

}  // namespace

std::wstring toText(RaidLevel value) { return textOf(value); }
std::wstring toText(StripSize value) { return textOf(value); }
std::wstring toText(RwhPolicy value) { return textOf(value); }
std::wstring toText(EnableState value) { return textOf(value); }
std::wstring toText(VolumeState value) { return textOf(value); }
std::wstring toText(CachePolicy value) { return textOf(value); }
std::wstring toText(ArrayState value) { return textOf(value); }
std::wstring toText(WriteCacheState value) { return textOf(value); }
std::wstring toText(ControllerType value) { return textOf(value); }
std::wstring toText(ControllerMode value) { return textOf(value); }
std::wstring toText(DeviceType value) { return textOf(value); }
std::wstring toText(LinkSpeed value) { return textOf(value); }
std::wstring toText(DiskType value) { return textOf(value); }
std::wstring toText(DiskState value) { return textOf(value); }
std::wstring toText(DiskUsage value) { return textOf(value); }
std::wstring toText(X8Disk value) { return textOf(value); }
std::wstring toText(PortLocalDeviceType value) { return textOf(value); }

std::wstring toText(ServiceState value) {
  try {
    return lookUp(tables().serviceStates, value);
  } catch (const std::out_of_range&) {
    throw std::invalid_argument(kInvalidArgument);
  }
}

template <class Enumeration>
std::vector<std::wstring> wordsOf() {
  const auto texts = textsOf(Enumeration{});
  std::vector<std::wstring> words;
  const auto add = [&words](const std::wstring& word) {
    if (std::find(words.begin(), words.end(), word) == words.end()) words.push_back(word);
  };
  for (const auto& row : texts.table) add(row.second);
  if (texts.otherwise != nullptr) add(texts.otherwise);
  return words;
}

template std::vector<std::wstring> wordsOf<RaidLevel>();
template std::vector<std::wstring> wordsOf<StripSize>();
template std::vector<std::wstring> wordsOf<RwhPolicy>();
template std::vector<std::wstring> wordsOf<EnableState>();
template std::vector<std::wstring> wordsOf<VolumeState>();
template std::vector<std::wstring> wordsOf<CachePolicy>();
template std::vector<std::wstring> wordsOf<ArrayState>();
template std::vector<std::wstring> wordsOf<WriteCacheState>();
template std::vector<std::wstring> wordsOf<ControllerType>();
template std::vector<std::wstring> wordsOf<ControllerMode>();
template std::vector<std::wstring> wordsOf<DeviceType>();
template std::vector<std::wstring> wordsOf<LinkSpeed>();
template std::vector<std::wstring> wordsOf<DiskType>();
template std::vector<std::wstring> wordsOf<DiskState>();
template std::vector<std::wstring> wordsOf<DiskUsage>();
template std::vector<std::wstring> wordsOf<X8Disk>();
template std::vector<std::wstring> wordsOf<PortLocalDeviceType>();
template std::vector<std::wstring> wordsOf<ServiceState>();

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
