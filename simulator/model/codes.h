#ifndef MIRN_SIMULATOR_MODEL_CODES_H
#define MIRN_SIMULATOR_MODEL_CODES_H

#include <cstdint>

#include "refusal.h"

/// The codes of the library's records as enumerations, so that the model says what it means.
namespace simulator {

using vexl2::Handle;
using vexl2::Refusal;
using vexl2::require;
using vexl2::Status;

enum class RaidLevel : std::uint32_t {
  RAID_0 = VEX_RAID_LEVEL_0,
  RAID_1 = VEX_RAID_LEVEL_1,
  RAID_10 = VEX_RAID_LEVEL_10,
  RAID_5 = VEX_RAID_LEVEL_5,
};

/// Bit n is 2 KB shifted left by n.
enum class StripSize : std::uint32_t {
  SIZE_2KB = VEX_STRIP_SIZE_2KB,
  SIZE_4KB = VEX_STRIP_SIZE_4KB,
  SIZE_8KB = VEX_STRIP_SIZE_8KB,
  SIZE_16KB = VEX_STRIP_SIZE_16KB,
  SIZE_32KB = VEX_STRIP_SIZE_32KB,
  SIZE_64KB = VEX_STRIP_SIZE_64KB,
  SIZE_128KB = VEX_STRIP_SIZE_128KB,
  SIZE_256KB = VEX_STRIP_SIZE_256KB,
  SIZE_512KB = VEX_STRIP_SIZE_512KB,
  SIZE_1MB = VEX_STRIP_SIZE_1MB,
  SIZE_2MB = VEX_STRIP_SIZE_2MB,
  SIZE_4MB = VEX_STRIP_SIZE_4MB,
  SIZE_8MB = VEX_STRIP_SIZE_8MB,
  SIZE_16MB = VEX_STRIP_SIZE_16MB,
  SIZE_32MB = VEX_STRIP_SIZE_32MB,
  SIZE_64MB = VEX_STRIP_SIZE_64MB,
};

enum class ControllerType : std::uint32_t {
  SATA = VEX_CONTROLLER_TYPE_SATA,
  SCU = VEX_CONTROLLER_TYPE_SCU,
  NVMe = VEX_CONTROLLER_TYPE_NVME,
  Lyx = VEX_CONTROLLER_TYPE_LYX,
};

enum class DeviceType : std::uint32_t {
  DISK = VEX_DEVICE_TYPE_DISK,
  NON_DISK_STORAGE = VEX_DEVICE_TYPE_NON_DISK_STORAGE,
  NON_STORAGE = VEX_DEVICE_TYPE_NON_STORAGE,
};

enum class DiskType : std::uint32_t {
  UNKNOWN = 0,
  SATA = VEX_DISK_TYPE_SATA,
  NVME = VEX_DISK_TYPE_NVME,
  Lyx = VEX_DISK_TYPE_LYX,
};

/// MISSING is never stored: it is how a device shows that is not there and cannot be left out.
enum class DiskState : std::uint32_t {
  OFFLINE = VEX_DISK_STATE_OFFLINE,
  MISSING = VEX_DISK_STATE_MISSING,
  FAILED = VEX_DISK_STATE_FAILED,
  SMART_EVENT_TRIGGERED = VEX_DISK_STATE_SMART_EVENT_TRIGGERED,
  CONFIG_IS_UPREV = VEX_DISK_STATE_CONFIG_IS_UPREV,
  NORMAL = VEX_DISK_STATE_NORMAL,
  LOCKED = VEX_DISK_STATE_LOCKED,
  MANUAL_OFFLINE = VEX_DISK_STATE_MANUAL_OFFLINE,
  INCOMPATIBLE = VEX_DISK_STATE_INCOMPATIBLE,
  UNSUPPORTED = VEX_DISK_STATE_UNSUPPORTED,
};

enum class DiskUsage : std::uint32_t {
  ARRAY_MEMBER = VEX_DISK_USAGE_ARRAY_MEMBER,
  PASS_THROUGH = VEX_DISK_USAGE_PASS_THROUGH,
  OFFLINE_ARRAY = VEX_DISK_USAGE_OFFLINE_ARRAY,
  SPARE = VEX_DISK_USAGE_SPARE,
  ARRAY_MEMBER_READONLY_MOUNT = VEX_DISK_USAGE_ARRAY_MEMBER_READONLY_MOUNT,
  PASS_THRU_READONLY_MOUNT = VEX_DISK_USAGE_PASS_THRU_READONLY_MOUNT,
  JOURNALING_DRIVE = VEX_DISK_USAGE_JOURNALING_DRIVE,
};

/// Whether a device is in its slot. A device put in where no hot-plug is managed stays UNNOTICED until the
/// next rescan.
enum class Presence : std::uint32_t { PRESENT, ABSENT, UNNOTICED };

enum class LinkSpeed : std::uint32_t {
  UNKNOWN = 0,
  GBPS_1_5 = VEX_LINK_SPEED_1_5_GBPS,
  GBPS_3 = VEX_LINK_SPEED_3_GBPS,
  GBPS_6 = VEX_LINK_SPEED_6_GBPS,
};

enum class X8Role : std::uint32_t { NONE, A, B };

enum class WriteCache : std::uint32_t { UNKNOWN = 0, OFF = VEX_WRITE_CACHE_OFF, ON = VEX_WRITE_CACHE_ON };

enum class CachePolicy : std::uint32_t {
  OFF = VEX_CACHE_POLICY_OFF,
  WRITE_THROUGH = VEX_CACHE_POLICY_WRITE_THROUGH,
  WRITE_BACK = VEX_CACHE_POLICY_WRITE_BACK,
};

enum class RwhPolicy : std::uint32_t {
  RWH_OFF = VEX_RWH_POLICY_OFF,
  RWH_DISTRIBUTED = VEX_RWH_POLICY_DISTRIBUTED,
  RWH_JOURNALING_DRIVE = VEX_RWH_POLICY_JOURNALING_DRIVE,
};

enum class VolumeState : std::uint32_t {
  NORMAL = VEX_VOLUME_STATE_NORMAL,
  DEGRADED = VEX_VOLUME_STATE_DEGRADED,
  FAILED = VEX_VOLUME_STATE_FAILED,
  INITIALIZING = VEX_VOLUME_STATE_INITIALIZING,
  REBUILDING = VEX_VOLUME_STATE_REBUILDING,
  VERIFYING = VEX_VOLUME_STATE_VERIFYING,
  VERIFYING_AND_FIXING = VEX_VOLUME_STATE_VERIFYING_AND_FIXING,
  GENERAL_MIGRATION = VEX_VOLUME_STATE_GENERAL_MIGRATION,
  LOCKED = VEX_VOLUME_STATE_LOCKED,
  NON_REDUNDANT_VOLUME_FAILED_DISK = VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK,
};

/// Work that takes time. MIGRATE changes level, strip size, members or size, one or all of them.
enum class WorkKind : std::uint32_t { REBUILD, INITIALIZE, VERIFY, VERIFY_AND_FIX, MIGRATE };

/// The place of a code in a set of codes that is kept as bits.
constexpr std::uint32_t bitOf(RaidLevel level) { return static_cast<std::uint32_t>(level); }
constexpr std::uint32_t bitOf(StripSize size) { return static_cast<std::uint32_t>(size); }
constexpr std::uint32_t bitOf(RwhPolicy policy) { return 1U << static_cast<std::uint32_t>(policy); }

}  // namespace simulator

#endif
