#ifndef MIRN_SESSION_ACTION_CALLS_H
#define MIRN_SESSION_ACTION_CALLS_H

#include <cstdint>
#include <string>
#include <vector>

#include "action_interfaces.h"
#include "prepared_call.h"

/// What each action of the session comes to: its checks, which raise as action_interfaces.h tells, and then
/// the one call that it makes of the library. None calls anything outside, nor looks at the picture.
namespace action_calls {

PreparedCall rescan();

PreparedCall clearMetadata(VEX_HANDLE disk);
PreparedCall markAsSpare(VEX_HANDLE disk, VEX_HANDLE array);
PreparedCall unmarkAsSpare(VEX_HANDLE disk);
PreparedCall markAsNormal(VEX_HANDLE disk);
PreparedCall assignStoragePool(VEX_HANDLE disk, std::uint8_t pool);
PreparedCall unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password);
PreparedCall resetSmartEvent(VEX_HANDLE disk);
PreparedCall removeDisk(const EndDevice& disk);

PreparedCall setWriteCacheState(VEX_HANDLE array, EnableState state);
PreparedCall addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks);

PreparedCall markAsNormal(const Volume& volume);
PreparedCall rebuild(const Volume& volume, const EndDevice& disk);
PreparedCall initialize(const Volume& volume);
PreparedCall verify(const Volume& volume, bool repair);
PreparedCall cancelVerify(const Volume& volume);
PreparedCall rename(const Volume& volume, const std::wstring& name);
PreparedCall expand(const Volume& volume, std::uint64_t newSize);
PreparedCall setCachePolicy(const Volume& volume, CachePolicy policy);
PreparedCall modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                             std::uint64_t newSize, const std::vector<EndDevice>& disks);
PreparedCall deleteVolume(const Volume& volume);
PreparedCall createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                          RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh);
PreparedCall createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                   StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                   const std::wstring& sourceDiskId, const RwhRequest& rwh);
PreparedCall setRwhPolicy(const Volume& volume, const RwhRequest& rwh);

PreparedCall setReadPatrolState(VEX_HANDLE controller, EnableState state);
PreparedCall setRohiState(VEX_HANDLE controller, EnableState state);

PreparedCall locate(const Port& port, EnableState state);

}  // namespace action_calls

#endif
