#ifndef MIRN_CATALOGUE_ROUTE_ID_H
#define MIRN_CATALOGUE_ROUTE_ID_H

#include <cstddef>

/// Names every route inside the program; to the outside its row has the same name as a text.
enum class RouteId : std::size_t {
  kGetState,
  kGetVersion,
  kRescan,
  kGetConfig,
  kSetConfig,
  kListRaids,
  kGetRaid,
  kListRaidControllers,
  kListControllers,
  kListControllerDevices,
  kListControllerArrays,
  kListControllerPorts,
  kListControllerVolumes,
  kSetControllerReadPatrol,
  kSetControllerRohi,
  kListDevices,
  kListPorts,
  kLocatePort,
  kListArrays,
  kListArrayDevices,
  kListArrayVolumes,
  kAddArrayDisks,
  kSetArrayWriteCache,
  kListVolumes,
  kMarkVolumeNormal,
  kRebuildVolume,
  kChangeVolumeLevel,
  kInitializeVolume,
  kVerifyVolume,
  kResizeVolume,
  kSetVolumeCachePolicy,
  kRenameVolume,
  kDeleteVolume,
  kCreateVolume,
  kSetVolumeWriteHolePolicy,
  kClearDisk,
  kSetDiskSpare,
  kMarkDiskNormal,
  kResetDiskSmart,
  kRemoveDisk,
  kListEvents,
};

/// How many there are.
constexpr std::size_t kRouteCount = static_cast<std::size_t>(RouteId::kListEvents) + 1;

#endif
