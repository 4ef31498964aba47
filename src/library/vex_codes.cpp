#include "vex_codes.h"

#include <map>

#include "lookup.h"
#include "VEXL2.h"

namespace {

/// Every table of this file, so that all are built together. Strip sizes have theirs beside their texts.
struct Tables {
  std::map<std::uint32_t, RaidLevel> raidLevels{
      {VEX_RAID_LEVEL_0, RaidLevel::RAID_0},          {VEX_RAID_LEVEL_1, RaidLevel::RAID_1},
      {VEX_RAID_LEVEL_10, RaidLevel::RAID_10},        {VEX_RAID_LEVEL_5, RaidLevel::RAID_5},
      {VEX_RAID_LEVEL_NONE, RaidLevel::RAID_INVALID}, {VEX_RAID_LEVEL_INVALID, RaidLevel::RAID_INVALID},
  };

  std::map<RaidLevel, std::uint32_t> raidLevelCodes{
      {RaidLevel::RAID_INVALID, VEX_RAID_LEVEL_NONE}, {RaidLevel::RAID_0, VEX_RAID_LEVEL_0},
      {RaidLevel::RAID_1, VEX_RAID_LEVEL_1},          {RaidLevel::RAID_5, VEX_RAID_LEVEL_5},
      {RaidLevel::RAID_10, VEX_RAID_LEVEL_10},
  };

  std::map<std::uint32_t, RwhPolicy> rwhPolicies{
      {VEX_RWH_POLICY_DISTRIBUTED, RwhPolicy::RWH_DISTRIBUTED},
      {VEX_RWH_POLICY_JOURNALING_DRIVE, RwhPolicy::RWH_JOURNALING_DRIVE},
  };

  std::map<RwhPolicy, std::uint32_t> rwhPolicyCodes{
      {RwhPolicy::RWH_DISTRIBUTED, VEX_RWH_POLICY_DISTRIBUTED},
      {RwhPolicy::RWH_JOURNALING_DRIVE, VEX_RWH_POLICY_JOURNALING_DRIVE},
  };

  std::map<std::uint32_t, VolumeState> volumeStates{
      {VEX_VOLUME_STATE_NORMAL, VolumeState::NORMAL},
      {VEX_VOLUME_STATE_DEGRADED, VolumeState::DEGRADED},
      {VEX_VOLUME_STATE_FAILED, VolumeState::FAILED},
      {VEX_VOLUME_STATE_INITIALIZING, VolumeState::INITIALIZING},
      {VEX_VOLUME_STATE_REBUILDING, VolumeState::REBUILDING},
      {VEX_VOLUME_STATE_VERIFYING, VolumeState::VERIFYING},
      {VEX_VOLUME_STATE_VERIFYING_AND_FIXING, VolumeState::VERIFYING_AND_FIXING},
      {VEX_VOLUME_STATE_GENERAL_MIGRATION, VolumeState::GENERAL_MIGRATION},
      {VEX_VOLUME_STATE_LOCKED, VolumeState::LOCKED},
      {VEX_VOLUME_STATE_REBUILDING_OTHER, VolumeState::REBUILDING_ALTERNATE},
      {VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK, VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK},
  };

  std::map<std::uint32_t, CachePolicy> cachePolicies{
      {VEX_CACHE_POLICY_OFF, CachePolicy::OFF},
      {VEX_CACHE_POLICY_WRITE_THROUGH, CachePolicy::WRITE_THROUGH},
      {VEX_CACHE_POLICY_WRITE_BACK, CachePolicy::WRITE_BACK},
  };

  std::map<CachePolicy, std::uint32_t> cachePolicyCodes{
      {CachePolicy::OFF, VEX_CACHE_POLICY_OFF},
      {CachePolicy::WRITE_THROUGH, VEX_CACHE_POLICY_WRITE_THROUGH},
      {CachePolicy::WRITE_BACK, VEX_CACHE_POLICY_WRITE_BACK},
  };

  std::map<std::uint32_t, ArrayState> arrayStates{
      {VEX_ARRAY_STATE_NORMAL, ArrayState::NORMAL},
      {VEX_ARRAY_STATE_BUSY, ArrayState::STATE_BUSY},
  };

  std::map<std::uint32_t, WriteCacheState> writeCacheStates{
      {VEX_WRITE_CACHE_OFF, WriteCacheState::OFF},
      {VEX_WRITE_CACHE_ON, WriteCacheState::ON},
  };

  std::map<std::uint32_t, ControllerType> controllerTypes{
      {VEX_CONTROLLER_TYPE_SATA, ControllerType::SATA},
      {VEX_CONTROLLER_TYPE_SCU, ControllerType::SCU},
      {VEX_CONTROLLER_TYPE_NVME, ControllerType::NVMe},
      {VEX_CONTROLLER_TYPE_LYX, ControllerType::Lyx},
  };

  std::map<std::uint32_t, DeviceType> deviceTypes{
      {VEX_DEVICE_TYPE_DISK, DeviceType::DISK},
      {VEX_DEVICE_TYPE_NON_DISK_STORAGE, DeviceType::NON_DISK_STORAGE},
      {VEX_DEVICE_TYPE_NON_STORAGE, DeviceType::NON_STORAGE},
  };

  std::map<std::uint32_t, DiskType> diskTypes{
      {VEX_DISK_TYPE_SATA, DiskType::SATA},
      {VEX_DISK_TYPE_NVME, DiskType::NVME},
      {VEX_DISK_TYPE_LYX, DiskType::Lyx},
  };

  std::map<std::uint32_t, DiskState> diskStates{
      {VEX_DISK_STATE_OFFLINE, DiskState::OFFLINE},
      {VEX_DISK_STATE_MISSING, DiskState::MISSING},
      {VEX_DISK_STATE_FAILED, DiskState::FAILED},
      {VEX_DISK_STATE_SMART_EVENT_TRIGGERED, DiskState::SMART_EVENT_TRIGGERED},
      {VEX_DISK_STATE_CONFIG_IS_UPREV, DiskState::CONFIG_IS_UPREV},
      {VEX_DISK_STATE_NORMAL, DiskState::NORMAL},
      {VEX_DISK_STATE_LOCKED, DiskState::LOCKED},
      {VEX_DISK_STATE_MANUAL_OFFLINE, DiskState::MANUAL_OFFLINE},
      {VEX_DISK_STATE_INCOMPATIBLE, DiskState::INCOMPATIBLE},
      {VEX_DISK_STATE_UNSUPPORTED, DiskState::UNSUPPORTED},
  };

  std::map<std::uint32_t, DiskUsage> diskUsages{
      {VEX_DISK_USAGE_ARRAY_MEMBER, DiskUsage::ARRAY_MEMBER},
      {VEX_DISK_USAGE_PASS_THROUGH, DiskUsage::PASS_THROUGH},
      {VEX_DISK_USAGE_OFFLINE_ARRAY, DiskUsage::OFFLINE_ARRAY},
      {VEX_DISK_USAGE_SPARE, DiskUsage::SPARE},
      {VEX_DISK_USAGE_ARRAY_MEMBER_READONLY_MOUNT, DiskUsage::ARRAY_MEMBER_READONLY_MOUNT},
      {VEX_DISK_USAGE_PASS_THRU_READONLY_MOUNT, DiskUsage::PASS_THRU_READONLY_MOUNT},
      {VEX_DISK_USAGE_JOURNALING_DRIVE, DiskUsage::JOURNALING_DRIVE},
  };

  std::map<std::uint32_t, LinkSpeed> linkSpeeds{
      {VEX_LINK_SPEED_1_5_GBPS, LinkSpeed::GBPS_1_5},
      {VEX_LINK_SPEED_3_GBPS, LinkSpeed::GBPS_3},
      {VEX_LINK_SPEED_6_GBPS, LinkSpeed::GBPS_6},
  };

  std::map<std::uint32_t, PortLocalDeviceType> portLocalDeviceTypes{
      {VEX_LOCAL_DEVICE_CONTROLLER, PortLocalDeviceType::CONTROLLER},
      {VEX_LOCAL_DEVICE_END_DEVICE, PortLocalDeviceType::END_DEVICE},
  };
};

/// Built on the first use and in any case at load, whichever is earlier.
const Tables& tables() {
  static const Tables instance;
  return instance;
}
[[maybe_unused]] const Tables& kBuiltAtLoad = tables();

}  // namespace

RaidLevel raidLevelFromVex(std::uint32_t code) {
  return lookUpOr(tables().raidLevels, code, RaidLevel::RAID_UNKNOWN);
}

StripSize stripSizeFromVex(std::uint32_t code) {
  return lookUpOr(stripSizeBits().right, code, StripSize::SIZE_UNKNOWN);
}

RwhPolicy rwhPolicyFromVex(std::uint32_t code) {
  return lookUpOr(tables().rwhPolicies, code, RwhPolicy::RWH_OFF);
}

VolumeState volumeStateFromVex(std::uint32_t code) {
  return lookUpOr(tables().volumeStates, code, VolumeState::UNKNOWN);
}

CachePolicy cachePolicyFromVex(std::uint32_t code) {
  return lookUpOr(tables().cachePolicies, code, CachePolicy::UNKNOWN);
}

ArrayState arrayStateFromVex(std::uint32_t code) {
  return lookUpOr(tables().arrayStates, code, ArrayState::UNKNOWN);
}

WriteCacheState writeCacheStateFromVex(std::uint32_t code) {
  return lookUpOr(tables().writeCacheStates, code, WriteCacheState::UNKNOWN);
}

ControllerType controllerTypeFromVex(std::uint32_t code) {
  return lookUpOr(tables().controllerTypes, code, ControllerType::UNKNOWN);
}

DeviceType deviceTypeFromVex(std::uint32_t code) {
  return lookUpOr(tables().deviceTypes, code, DeviceType::UNKNOWN);
}

DiskType diskTypeFromVex(std::uint32_t code) { return lookUpOr(tables().diskTypes, code, DiskType::UNKNOWN); }

DiskState diskStateFromVex(std::uint32_t code) {
  return lookUpOr(tables().diskStates, code, DiskState::UNKNOWN);
}

DiskUsage diskUsageFromVex(std::uint32_t code) {
  return lookUpOr(tables().diskUsages, code, DiskUsage::UNKNOWN);
}

LinkSpeed linkSpeedFromVex(std::uint32_t code) {
  return lookUpOr(tables().linkSpeeds, code, LinkSpeed::UNKNOWN);
}

PortLocalDeviceType portLocalDeviceTypeFromVex(std::uint32_t code) {
  return lookUpOr(tables().portLocalDeviceTypes, code, PortLocalDeviceType::UNKNOWN);
}

std::uint32_t toVex(RaidLevel value) {
  return lookUpOr(tables().raidLevelCodes, value, VEX_RAID_LEVEL_INEXPRESSIBLE);
}

std::uint32_t toVex(StripSize value) { return lookUpOr(stripSizeBits().left, value, VEX_STRIP_SIZE_UNKNOWN); }

std::uint32_t toVex(RwhPolicy value) { return lookUpOr(tables().rwhPolicyCodes, value, VEX_RWH_POLICY_OFF); }

std::uint32_t toVex(CachePolicy value) {
  return lookUpOr(tables().cachePolicyCodes, value, VEX_CACHE_POLICY_OTHER);
}
