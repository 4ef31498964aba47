#include <string_view>
#include <vector>

#include "core/library.h"
#include "handle_list.h"
#include "rules/rules.h"
#include "text_field.h"
#include "VEXL2.h"

using simulator::Library;
using simulator::Machine;
using vexl2::handlesOf;
using vexl2::require;
using vexl2::textOf;

namespace {

/// An action on one object that takes one number more, or none.
template <class Rule, class... Arguments>
VEX_STATUS act(const char* operation, Rule rule, Arguments... arguments) {
  return Library::instance().change(operation, [&](Machine& machine) { rule(machine, arguments...); });
}

/// The two creation records have these fields alike.
template <class Params>
simulator::NewVolume newVolume(const Params& params) {
  simulator::NewVolume wanted;
  wanted.name = textOf(params.name);
  wanted.stripSize = params.stripSize;
  wanted.level = params.raidLevel;
  wanted.sizeMiB = params.size;
  wanted.rwhPolicy = params.rwhPolicy;
  wanted.journalingDrive = params.journalingDriveHandle;
  return wanted;
}

}  // namespace

VEX_STATUS VexReadPatrolSetState(VEX_HANDLE controller, uint32_t enable) {
  return act(__func__, simulator::setReadPatrol, controller, enable);
}

VEX_STATUS VexROHISetState(VEX_HANDLE controller, uint32_t enable) {
  return act(__func__, simulator::setRohi, controller, enable);
}

VEX_STATUS VexDiskClearMetadata(VEX_HANDLE disk) { return act(__func__, simulator::clearMetadata, disk); }

VEX_STATUS VexDiskMarkAsNormal(VEX_HANDLE disk) { return act(__func__, simulator::markDiskAsNormal, disk); }

VEX_STATUS VexDiskMarkAsSpare(VEX_HANDLE disk, VEX_HANDLE array) {
  return act(__func__, simulator::markAsSpare, disk, array);
}

VEX_STATUS VexDiskUnmarkAsSpare(VEX_HANDLE disk) { return act(__func__, simulator::unmarkAsSpare, disk); }

VEX_STATUS VexDiskAssignStoragePool(VEX_HANDLE disk, uint8_t pool) {
  return act(__func__, simulator::assignStoragePool, disk, pool);
}

VEX_STATUS VexDiskUnlock(VEX_HANDLE disk, const VEX_UNLOCK_PARAMS* params) {
  return Library::instance().change(__func__, [&](Machine& machine) {
    require(params != nullptr, VEX_STATUS_INVALID_PARAMETER);
    simulator::unlockDisk(machine, disk, textOf(params->password), params->master == 1);
  });
}

VEX_STATUS VexDiskResetSmartEvent(VEX_HANDLE disk) { return act(__func__, simulator::resetSmartEvent, disk); }

VEX_STATUS VexPhyRemove(VEX_HANDLE phy, uint32_t one) {
  return act(__func__, simulator::removePhy, phy, one);
}

VEX_STATUS VexPortLocate(VEX_HANDLE port, uint32_t enable) {
  return act(__func__, simulator::locatePort, port, enable);
}

VEX_STATUS VexArraySetWriteCacheState(VEX_HANDLE array, uint32_t enable) {
  return act(__func__, simulator::setWriteCache, array, enable);
}

VEX_STATUS VexAddDisksToArray(VEX_HANDLE array, const VEX_HANDLE* disks, uint32_t diskCount, uint32_t zero) {
  return Library::instance().change(__func__, [&](Machine& machine) {
    simulator::addDisks(machine, array, handlesOf(disks, diskCount), zero);
  });
}

VEX_STATUS VexVolumeMarkAsNormal(VEX_HANDLE volume) {
  return act(__func__, simulator::markVolumeAsNormal, volume);
}

VEX_STATUS VexVolumeRebuild(VEX_HANDLE volume, VEX_HANDLE disk) {
  return act(__func__, simulator::rebuildVolume, volume, disk);
}

VEX_STATUS VexVolumeInitialize(VEX_HANDLE volume) {
  return act(__func__, simulator::initializeVolume, volume);
}

VEX_STATUS VexVolumeVerify(VEX_HANDLE volume, uint8_t fixErrors) {
  return act(__func__, simulator::verifyVolume, volume, fixErrors);
}

VEX_STATUS VexVolumeCancelVerify(VEX_HANDLE volume) { return act(__func__, simulator::cancelVerify, volume); }

VEX_STATUS VexVolumeRename(VEX_HANDLE volume, const char* name) {
  return Library::instance().change(__func__, [&](Machine& machine) {
    require(name != nullptr, VEX_STATUS_INVALID_PARAMETER);
    simulator::renameVolume(machine, volume, name);
  });
}

VEX_STATUS VexExpandVolume(VEX_HANDLE volume, uint64_t size) {
  return act(__func__, simulator::expandVolume, volume, size);
}

VEX_STATUS VexVolumeSetCachePolicy(VEX_HANDLE volume, uint32_t policy) {
  return act(__func__, simulator::setCachePolicy, volume, policy);
}

VEX_STATUS VexRaidLevelModify(VEX_HANDLE volume, VEX_RAID_LEVEL_MODIFY_PARAMS params) {
  return Library::instance().change(__func__, [&](Machine& machine) {
    simulator::modifyRaidLevel(machine, volume, params.raidLevel, params.stripSize, params.size,
                               handlesOf(params.disks, params.diskCount));
  });
}

VEX_STATUS VexVolumeDelete(VEX_HANDLE volume) { return act(__func__, simulator::deleteVolume, volume); }

VEX_STATUS VexVolumeCreate(VEX_CREATE_VOLUME_PARAMS params) {
  return Library::instance().change(__func__, [&](Machine& machine) {
    simulator::createVolume(machine, params.arrayHandle, newVolume(params));
  });
}

VEX_STATUS VexVolumeCreateFromDisks(VEX_CREATE_FROM_DISKS_PARAMS params, VEX_HANDLE* volume) {
  VEX_HANDLE created = 0;
  const VEX_STATUS status = Library::instance().change(__func__, [&](Machine& machine) {
    require(volume != nullptr, VEX_STATUS_INVALID_PARAMETER);
    created = simulator::createVolumeFromDisks(machine, handlesOf(params.disks, params.diskCount),
                                               params.sourceDiskHandle, newVolume(params));
  });
  if (status == VEX_STATUS_SUCCESS) *volume = created;
  return status;
}

VEX_STATUS VexVolumeSetRwhPolicy(VEX_HANDLE volume, VEX_HANDLE journalingDrive, uint32_t policy) {
  return act(__func__, simulator::setRwhPolicy, volume, journalingDrive, policy);
}
