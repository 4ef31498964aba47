#ifndef MIRN_COMMON_ENUMERATIONS_H
#define MIRN_COMMON_ENUMERATIONS_H

#include <boost/bimap.hpp>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Every enumeration of the model: its numbers inside the program and its texts on the wire. A value takes a
/// byte, since there are tens of thousands of them.
///
/// All functions here are safe from any thread and from static initialisation; a value without a text, or a
/// text without a value, gives the default told at the function.

enum class RaidLevel : std::uint8_t {
  RAID_UNKNOWN = 0,  ///< A word that is no level.
  RAID_INVALID = 1,  ///< A known level that the system cannot create.
  RAID_0 = 2,
  RAID_1 = 3,
  RAID_5 = 4,
  RAID_10 = 5,
};

enum class StripSize : std::uint8_t {
  SIZE_2KB = 0,
  SIZE_4KB = 1,
  SIZE_8KB = 2,
  SIZE_16KB = 3,
  SIZE_32KB = 4,
  SIZE_64KB = 5,
  SIZE_128KB = 6,
  SIZE_256KB = 7,
  SIZE_512KB = 8,
  SIZE_1MB = 9,
  SIZE_2MB = 10,
  SIZE_4MB = 11,
  SIZE_8MB = 12,
  SIZE_16MB = 13,
  SIZE_32MB = 14,
  SIZE_64MB = 15,
  NOT_AVAILABLE = 16,  ///< "N/A", the strip size of RAID 1.
  SIZE_UNKNOWN = 17,
};

/// Write-hole policy.
enum class RwhPolicy : std::uint8_t { NONE = 0, RWH_OFF = 1, RWH_DISTRIBUTED = 2, RWH_JOURNALING_DRIVE = 3 };

enum class EnableState : std::uint8_t { UNKNOWN = 0, DISABLED = 1, ENABLED = 2 };

enum class VolumeState : std::uint8_t {
  UNKNOWN = 0,
  NORMAL = 1,
  DEGRADED = 2,
  FAILED = 3,
  INITIALIZING = 4,
  REBUILDING = 5,
  VERIFYING = 6,
  VERIFYING_AND_FIXING = 7,
  GENERAL_MIGRATION = 8,
  LOCKED = 9,
  REBUILDING_ALTERNATE = 10,  ///< Reads "REBUILDING" like 5, and is a state of its own in every comparison.
  NON_REDUNDANT_VOLUME_FAILED_DISK = 11,
};

/// Cache policy of a volume.
enum class CachePolicy : std::uint8_t {
  UNKNOWN = 0,
  OFF = 1,
  WRITE_THROUGH = 2,
  WRITE_BACK = 3,
  NOT_SUPPORTED = 4
};

enum class ArrayState : std::uint8_t { UNKNOWN = 0, NORMAL = 1, STATE_BUSY = 2 };

/// Write cache of an array or disk.
enum class WriteCacheState : std::uint8_t { UNKNOWN = 0, OFF = 1, ON = 2, NOT_SUPPORTED = 3 };

enum class ControllerType : std::uint8_t { UNKNOWN = 0, SATA = 1, NVMe = 2, Lyx = 3, SCU = 4 };

enum class ControllerMode : std::uint8_t { UNKNOWN = 0, AHCI = 1, RAID = 2 };

enum class DeviceType : std::uint8_t { UNKNOWN = 0, DISK = 1, NON_DISK_STORAGE = 2, NON_STORAGE = 3 };

/// Negotiated link speed: 1.5, 3 and 6 Gb/s.
enum class LinkSpeed : std::uint8_t { UNKNOWN = 0, GBPS_1_5 = 1, GBPS_3 = 2, GBPS_6 = 3 };

enum class DiskType : std::uint8_t { UNKNOWN = 0, SATA = 1, NVME = 2, Lyx = 3 };

enum class DiskState : std::uint8_t {
  UNKNOWN = 0,
  OFFLINE = 1,
  MISSING = 2,
  FAILED = 3,
  SMART_EVENT_TRIGGERED = 4,
  CONFIG_IS_UPREV = 5,
  NORMAL = 6,
  LOCKED = 7,
  MANUAL_OFFLINE = 8,
  INCOMPATIBLE = 9,
  UNSUPPORTED = 10,
};

enum class DiskUsage : std::uint8_t {
  UNKNOWN = 0,
  ARRAY_MEMBER = 1,
  PASS_THROUGH = 2,
  OFFLINE_ARRAY = 3,
  SPARE = 4,
  ARRAY_MEMBER_READONLY_MOUNT = 5,
  PASS_THRU_READONLY_MOUNT = 6,
  JOURNALING_DRIVE = 7,
};

/// Role of a disk with two ports of four lanes.
enum class X8Disk : std::uint8_t { UNKNOWN = 1, X8_A = 2, X8_B = 3 };

enum class PortLocalDeviceType : std::uint8_t { CONTROLLER = 0, END_DEVICE = 1, UNKNOWN = 2 };

enum class ServiceState : std::uint8_t { WARNING = 0, NORMAL = 1, FAILED = 2 };

std::wstring toText(RaidLevel value);  ///< Else "UNKNOWN", not "RAID_UNKNOWN".
std::wstring toText(StripSize value);  ///< Else "SIZE_UNKNOWN".
std::wstring toText(RwhPolicy value);  ///< Else "RWH_OFF".
std::wstring toText(EnableState value);
std::wstring toText(VolumeState value);
std::wstring toText(CachePolicy value);
std::wstring toText(ArrayState value);
std::wstring toText(WriteCacheState value);
std::wstring toText(ControllerType value);
std::wstring toText(ControllerMode value);
std::wstring toText(DeviceType value);
std::wstring toText(LinkSpeed value);
std::wstring toText(DiskType value);
std::wstring toText(DiskState value);
std::wstring toText(DiskUsage value);
std::wstring toText(X8Disk value);
std::wstring toText(PortLocalDeviceType value);  ///< Like all between here and above: else "UNKNOWN".
/// A value without a text raises `std::invalid_argument` with "Invalid argument".
std::wstring toText(ServiceState value);

/// Every word that `toText` gives for a value of the enumeration, each once, in the order of the values; the
/// word for a value without a text comes last, unless a value has it.
template <class Enumeration>
std::vector<std::wstring> wordsOf();

/// Wider than the texts of `toText`: a level that is known but cannot be created gives `RAID_INVALID`, a word
/// that is no level `RAID_UNKNOWN`.
RaidLevel raidLevelFromText(const std::wstring& text);
StripSize stripSizeFromText(const std::wstring& text);      ///< Else `SIZE_UNKNOWN`.
RwhPolicy rwhPolicyFromText(const std::wstring& text);      ///< Else `NONE`.
EnableState enableStateFromText(const std::wstring& text);  ///< Else `UNKNOWN`.
CachePolicy cachePolicyFromText(const std::wstring& text);  ///< Else `UNKNOWN`; "NOT_SUPPORTED" is no input.

/// Strip sizes and the storage library's bit values: size n from 0 to 15 and the bit 1 << n, `SIZE_UNKNOWN`
/// and 0. `NOT_AVAILABLE` has no pair.
using StripSizeBits = boost::bimap<StripSize, std::uint32_t>;
const StripSizeBits& stripSizeBits();

/// Default strip size of a RAID 5 volume on a Lyx controller, by number of disks (3 to 24).
using StripSizeByDisks = std::map<std::int32_t, StripSize>;
inline const StripSizeByDisks kRaid5DefaultStripByDisks = {
    {3, StripSize::SIZE_64KB},   {4, StripSize::SIZE_32KB},   {5, StripSize::SIZE_128KB},
    {6, StripSize::SIZE_64KB},   {7, StripSize::SIZE_128KB},  {8, StripSize::SIZE_16KB},
    {9, StripSize::SIZE_128KB},  {10, StripSize::SIZE_64KB},  {11, StripSize::SIZE_128KB},
    {12, StripSize::SIZE_32KB},  {13, StripSize::SIZE_128KB}, {14, StripSize::SIZE_64KB},
    {15, StripSize::SIZE_128KB}, {16, StripSize::SIZE_8KB},   {17, StripSize::SIZE_128KB},
    {18, StripSize::SIZE_64KB},  {19, StripSize::SIZE_128KB}, {20, StripSize::SIZE_32KB},
    {21, StripSize::SIZE_128KB}, {22, StripSize::SIZE_64KB},  {23, StripSize::SIZE_128KB},
    {24, StripSize::SIZE_16KB},
};

#endif
