#ifndef MIRN_SESSION_ACTION_CALLS_H
#define MIRN_SESSION_ACTION_CALLS_H

#include <cstdint>
#include <string>
#include <vector>

#include "action_interfaces.h"
#include "library_call.h"

/// What each action of the session comes to: its checks, which raise as action_interfaces.h tells, and then
/// the one call that it makes of the library. None calls anything outside, nor looks at the picture.
namespace action_calls {

LibraryCall rescan();

LibraryCall clearMetadata(VEX_HANDLE disk);
LibraryCall markAsSpare(VEX_HANDLE disk, VEX_HANDLE array);
LibraryCall unmarkAsSpare(VEX_HANDLE disk);
LibraryCall markAsNormal(VEX_HANDLE disk);
LibraryCall assignStoragePool(VEX_HANDLE disk, std::uint8_t pool);
LibraryCall unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password);
LibraryCall resetSmartEvent(VEX_HANDLE disk);
LibraryCall removeDisk(const EndDevice& disk);

LibraryCall setWriteCacheState(VEX_HANDLE array, EnableState state);
LibraryCall addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks);

LibraryCall markAsNormal(const Volume& volume);
LibraryCall rebuild(const Volume& volume, const EndDevice& disk);
LibraryCall initialize(const Volume& volume);
LibraryCall verify(const Volume& volume, bool repair);
LibraryCall cancelVerify(const Volume& volume);
LibraryCall rename(const Volume& volume, const std::wstring& name);
LibraryCall expand(const Volume& volume, std::uint64_t newSize);
LibraryCall setCachePolicy(const Volume& volume, CachePolicy policy);
LibraryCall modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                            std::uint64_t newSize, const std::vector<EndDevice>& disks);
LibraryCall deleteVolume(const Volume& volume);
LibraryCall createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                         RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh);
LibraryCall createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                  StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                  const std::wstring& sourceDiskId, const RwhRequest& rwh);
LibraryCall setRwhPolicy(const Volume& volume, const RwhRequest& rwh);

LibraryCall setReadPatrolState(VEX_HANDLE controller, EnableState state);
LibraryCall setRohiState(VEX_HANDLE controller, EnableState state);

LibraryCall locate(const Port& port, EnableState state);

}  // namespace action_calls

#endif
