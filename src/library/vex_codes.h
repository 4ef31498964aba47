#ifndef MIRN_LIBRARY_VEX_CODES_H
#define MIRN_LIBRARY_VEX_CODES_H

#include <cstdint>

#include "enumerations.h"

/// The library's codes and the model's enumerations. A code without a model value gives the default told at
/// the function; all are safe from any thread.

RaidLevel raidLevelFromVex(std::uint32_t code);  ///< Else `RAID_UNKNOWN`.
StripSize stripSizeFromVex(std::uint32_t code);  ///< Else, as for several bits, `SIZE_UNKNOWN`.
RwhPolicy rwhPolicyFromVex(std::uint32_t code);  ///< Else `RWH_OFF`.
VolumeState volumeStateFromVex(std::uint32_t code);
CachePolicy cachePolicyFromVex(std::uint32_t code);
ArrayState arrayStateFromVex(std::uint32_t code);
WriteCacheState writeCacheStateFromVex(std::uint32_t code);
ControllerType controllerTypeFromVex(std::uint32_t code);
DeviceType deviceTypeFromVex(std::uint32_t code);
DiskType diskTypeFromVex(std::uint32_t code);
DiskState diskStateFromVex(std::uint32_t code);
DiskUsage diskUsageFromVex(std::uint32_t code);
LinkSpeed linkSpeedFromVex(std::uint32_t code);
PortLocalDeviceType portLocalDeviceTypeFromVex(
    std::uint32_t code);  ///< Like all since the policy: else `UNKNOWN`.

std::uint32_t toVex(RaidLevel value);    ///< Else 0x80000000, which leaves the refusal to the library.
std::uint32_t toVex(StripSize value);    ///< Else 0.
std::uint32_t toVex(RwhPolicy value);    ///< Else 0, off.
std::uint32_t toVex(CachePolicy value);  ///< Else 0.

#endif
