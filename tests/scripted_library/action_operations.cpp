#include "scripted_library/operations_support.h"

VEX_STATUS VexReadPatrolSetState(VEX_HANDLE controller, uint32_t enable) {
  return act(__func__, controller, enable);
}

VEX_STATUS VexROHISetState(VEX_HANDLE controller, uint32_t enable) {
  return act(__func__, controller, enable);
}

VEX_STATUS VexDiskClearMetadata(VEX_HANDLE disk) { return act(__func__, disk); }

VEX_STATUS VexDiskMarkAsNormal(VEX_HANDLE disk) { return act(__func__, disk); }

VEX_STATUS VexDiskMarkAsSpare(VEX_HANDLE disk, VEX_HANDLE array) { return act(__func__, disk, array); }

VEX_STATUS VexDiskUnmarkAsSpare(VEX_HANDLE disk) { return act(__func__, disk); }

VEX_STATUS VexDiskAssignStoragePool(VEX_HANDLE disk, uint8_t pool) { return act(__func__, disk, pool); }

VEX_STATUS VexDiskUnlock(VEX_HANDLE disk, const VEX_UNLOCK_PARAMS* params) {
  return actWith(params, __func__, disk, params);
}

VEX_STATUS VexDiskResetSmartEvent(VEX_HANDLE disk) { return act(__func__, disk); }

VEX_STATUS VexPhyRemove(VEX_HANDLE phy, uint32_t one) { return act(__func__, phy, one); }

VEX_STATUS VexPortLocate(VEX_HANDLE port, uint32_t enable) { return act(__func__, port, enable); }

VEX_STATUS VexArraySetWriteCacheState(VEX_HANDLE array, uint32_t enable) {
  return act(__func__, array, enable);
}

VEX_STATUS VexAddDisksToArray(VEX_HANDLE array, const VEX_HANDLE* disks, uint32_t diskCount, uint32_t zero) {
  return act(__func__, array, HandleList{disks, diskCount}, diskCount, zero);
}

VEX_STATUS VexVolumeMarkAsNormal(VEX_HANDLE volume) { return act(__func__, volume); }

VEX_STATUS VexVolumeRebuild(VEX_HANDLE volume, VEX_HANDLE disk) { return act(__func__, volume, disk); }

VEX_STATUS VexVolumeInitialize(VEX_HANDLE volume) { return act(__func__, volume); }

VEX_STATUS VexVolumeVerify(VEX_HANDLE volume, uint8_t fixErrors) { return act(__func__, volume, fixErrors); }

VEX_STATUS VexVolumeCancelVerify(VEX_HANDLE volume) { return act(__func__, volume); }

VEX_STATUS VexVolumeRename(VEX_HANDLE volume, const char* name) {
  return actWith(name, __func__, volume, name);
}

VEX_STATUS VexExpandVolume(VEX_HANDLE volume, uint64_t size) { return act(__func__, volume, size); }

VEX_STATUS VexVolumeSetCachePolicy(VEX_HANDLE volume, uint32_t policy) {
  return act(__func__, volume, policy);
}

VEX_STATUS VexRaidLevelModify(VEX_HANDLE volume, VEX_RAID_LEVEL_MODIFY_PARAMS params) {
  return act(__func__, volume, params);
}

VEX_STATUS VexVolumeDelete(VEX_HANDLE volume) { return act(__func__, volume); }

VEX_STATUS VexVolumeCreate(VEX_CREATE_VOLUME_PARAMS params) { return act(__func__, params); }

VEX_STATUS VexVolumeCreateFromDisks(VEX_CREATE_FROM_DISKS_PARAMS params, VEX_HANDLE* volume) {
  const auto answer = [volume](const ScriptedMachine& machine) {
    return store(machine.createdVolume, volume);
  };
  return respond(__func__, answer, params, Out{volume, 0});
}

VEX_STATUS VexVolumeSetRwhPolicy(VEX_HANDLE volume, VEX_HANDLE journalingDrive, uint32_t policy) {
  return act(__func__, volume, journalingDrive, policy);
}
