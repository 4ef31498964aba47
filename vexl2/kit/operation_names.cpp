#include "operation_names.h"

#include <algorithm>
#include <iterator>

namespace vexl2 {

bool isOperationName(std::string_view name) {
  static constexpr std::string_view kNames[] = {
      "VexInitialize",
      "VexFinalize",
      "VexSessionOpen",
      "VexSessionClose",
      "VexRescan",
      "VexGetSystemInfo",
      "VexGetControllerHandles",
      "VexGetEndDeviceHandles",
      "VexGetPhyHandles",
      "VexGetArrayHandles",
      "VexGetVolumeHandles",
      "VexGetPortHandles",
      "VexGetRaidInfoHandles",
      "VexGetControllerInfo",
      "VexGetEndDeviceInfo",
      "VexGetPhyInfo",
      "VexGetArrayInfo",
      "VexGetVolumeInfo",
      "VexGetPortInfo",
      "VexGetRaidInfo",
      "VexGetRaidLevelInfo",
      "VexReadPatrolSetState",
      "VexROHISetState",
      "VexDiskClearMetadata",
      "VexDiskMarkAsNormal",
      "VexDiskMarkAsSpare",
      "VexDiskUnmarkAsSpare",
      "VexDiskAssignStoragePool",
      "VexDiskUnlock",
      "VexDiskResetSmartEvent",
      "VexPhyRemove",
      "VexPortLocate",
      "VexArraySetWriteCacheState",
      "VexAddDisksToArray",
      "VexVolumeMarkAsNormal",
      "VexVolumeRebuild",
      "VexVolumeInitialize",
      "VexVolumeVerify",
      "VexVolumeCancelVerify",
      "VexVolumeRename",
      "VexExpandVolume",
      "VexVolumeSetCachePolicy",
      "VexRaidLevelModify",
      "VexVolumeDelete",
      "VexVolumeCreate",
      "VexVolumeCreateFromDisks",
      "VexVolumeSetRwhPolicy",
      "VexGetEventHandle",
      "VexEventWait",
      "VexFreeEventHandle",
  };
  static_assert(std::size(kNames) == 50);
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

}  // namespace vexl2
