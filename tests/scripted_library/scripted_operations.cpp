#include "scripted_library/scripted_operations.h"

#include <algorithm>
#include <stdexcept>

const std::array<ScriptedOperation, kOperationCount>& scriptedOperations() {
  static const std::array<ScriptedOperation, kOperationCount> operations = {{
      {"VexInitialize", OperationKind::LIFETIME},
      {"VexFinalize", OperationKind::LIFETIME},
      {"VexSessionOpen", OperationKind::LIFETIME},
      {"VexSessionClose", OperationKind::LIFETIME},
      {"VexRescan", OperationKind::ACTION},
      {"VexGetSystemInfo", OperationKind::READING},
      {"VexGetControllerHandles", OperationKind::READING},
      {"VexGetEndDeviceHandles", OperationKind::READING},
      {"VexGetPhyHandles", OperationKind::READING},
      {"VexGetArrayHandles", OperationKind::READING},
      {"VexGetVolumeHandles", OperationKind::READING},
      {"VexGetPortHandles", OperationKind::READING},
      {"VexGetRaidInfoHandles", OperationKind::READING},
      {"VexGetControllerInfo", OperationKind::READING},
      {"VexGetEndDeviceInfo", OperationKind::READING},
      {"VexGetPhyInfo", OperationKind::READING},
      {"VexGetArrayInfo", OperationKind::READING},
      {"VexGetVolumeInfo", OperationKind::READING},
      {"VexGetPortInfo", OperationKind::READING},
      {"VexGetRaidInfo", OperationKind::READING},
      {"VexGetRaidLevelInfo", OperationKind::READING},
      {"VexReadPatrolSetState", OperationKind::ACTION},
      {"VexROHISetState", OperationKind::ACTION},
      {"VexDiskClearMetadata", OperationKind::ACTION},
      {"VexDiskMarkAsNormal", OperationKind::ACTION},
      {"VexDiskMarkAsSpare", OperationKind::ACTION},
      {"VexDiskUnmarkAsSpare", OperationKind::ACTION},
      {"VexDiskAssignStoragePool", OperationKind::ACTION},
      {"VexDiskUnlock", OperationKind::ACTION},
      {"VexDiskResetSmartEvent", OperationKind::ACTION},
      {"VexPhyRemove", OperationKind::ACTION},
      {"VexPortLocate", OperationKind::ACTION},
      {"VexArraySetWriteCacheState", OperationKind::ACTION},
      {"VexAddDisksToArray", OperationKind::ACTION},
      {"VexVolumeMarkAsNormal", OperationKind::ACTION},
      {"VexVolumeRebuild", OperationKind::ACTION},
      {"VexVolumeInitialize", OperationKind::ACTION},
      {"VexVolumeVerify", OperationKind::ACTION},
      {"VexVolumeCancelVerify", OperationKind::ACTION},
      {"VexVolumeRename", OperationKind::ACTION},
      {"VexExpandVolume", OperationKind::ACTION},
      {"VexVolumeSetCachePolicy", OperationKind::ACTION},
      {"VexRaidLevelModify", OperationKind::ACTION},
      {"VexVolumeDelete", OperationKind::ACTION},
      {"VexVolumeCreate", OperationKind::ACTION},
      {"VexVolumeCreateFromDisks", OperationKind::ACTION},
      {"VexVolumeSetRwhPolicy", OperationKind::ACTION},
      {"VexGetEventHandle", OperationKind::EVENT},
      {"VexEventWait", OperationKind::EVENT},
      {"VexFreeEventHandle", OperationKind::EVENT},
  }};
  return operations;
}

const ScriptedOperation& scriptedOperation(const std::string& name) {
  const auto& all = scriptedOperations();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&name](const ScriptedOperation& row) { return row.name == name; });
  if (found == all.end()) throw std::invalid_argument("the library has no operation " + name);
  return *found;
}
