#ifndef MIRN_SESSION_ACTION_PARAMETERS_H
#define MIRN_SESSION_ACTION_PARAMETERS_H

#include <cstdint>
#include <string>
#include <vector>

#include "action_interfaces.h"
#include "VEXL2.h"

/// Fills the library's parameter records from validated values. Every record is zeroed whole first. Where a
/// record points to handles, it points into the vector given, which must outlive the call; no handles: a null
/// pointer and 0.

std::vector<VEX_HANDLE> handlesOf(const std::vector<EndDevice>& devices);
/// Where the library finds the handles; null for none.
const VEX_HANDLE* handlesOrNull(const std::vector<VEX_HANDLE>& handles);
/// Raises `std::length_error` for more than 32 bits can count.
std::uint32_t handleCount(const std::vector<VEX_HANDLE>& handles);

VEX_CREATE_VOLUME_PARAMS createVolumeParameters(const Array& array, const std::wstring& name,
                                                StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                                const RwhRequest& rwh);

/// `sourceDisk` 0: none.
VEX_CREATE_FROM_DISKS_PARAMS createFromDisksParameters(const std::vector<VEX_HANDLE>& disks,
                                                       const std::wstring& name, StripSize stripSize,
                                                       RaidLevel raidLevel, std::uint64_t size,
                                                       VEX_HANDLE sourceDisk, const RwhRequest& rwh);

VEX_RAID_LEVEL_MODIFY_PARAMS raidLevelModifyParameters(StripSize stripSize, RaidLevel raidLevel,
                                                       std::uint64_t size,
                                                       const std::vector<VEX_HANDLE>& disks);

/// `password` in UTF-8, at most as long as the record's field.
VEX_UNLOCK_PARAMS unlockParameters(UserLevel level, const std::string& password);

/// The drive's handle; 0 when the request names none.
VEX_HANDLE journalingDriveHandle(const RwhRequest& rwh);

#endif
