#include <algorithm>

#include "engine/work.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/redundancy.h"
#include "rules/checks.h"
#include "rules/rules.h"

namespace simulator {
namespace {

/// A disk that failed or was taken offline may serve again; any other that does not serve stands in the way.
bool mayServeAgain(const EndDevice& disk) { return isUsable(disk) || mayBeMarkedAsNormal(disk); }

}  // namespace

void markVolumeAsNormal(Machine& machine, Handle handle) {
  Volume& volume = machine.volumes.at(handle);
  require(controllerOf(machine, volume).supportsMarkAsNormal, VEX_STATUS_NOT_SUPPORTED);
  const VolumeState state = stateOf(machine, volume);
  require(state == VolumeState::FAILED || state == VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK,
          VEX_STATUS_INVALID_STATE);
  const Array& array = machine.arrays.at(volume.array);
  for (const Handle disk : array.disks) {
    const bool hasContent = !contains(volume.blank, disk);
    require(hasContent && mayServeAgain(machine.devices.at(disk)), VEX_STATUS_MARK_AS_NORMAL_FAILED);
  }
  for (const Handle handleOfDisk : array.disks) {
    EndDevice& disk = machine.devices.at(handleOfDisk);
    takeAsNormal(disk);
  }
  volume.stale.clear();
  if (volume.work) volume.work->catchUp.clear();
  if (isRedundant(volume.level)) volume.initialized = false;
}

void renameVolume(Machine& machine, Handle handle, std::string_view name) {
  Volume& volume = machine.volumes.at(handle);
  require(controllerOf(machine, volume).supportsVolumeRename, VEX_STATUS_NOT_SUPPORTED);
  requireName(machine, name, handle);
  volume.name = name;
}

void setCachePolicy(Machine& machine, Handle handle, std::uint32_t policy) {
  Volume& volume = machine.volumes.at(handle);
  require(controllerOf(machine, volume).supportsVolumeSetCachePolicy, VEX_STATUS_NOT_SUPPORTED);
  require(policy >= VEX_CACHE_POLICY_OFF && policy <= VEX_CACHE_POLICY_WRITE_BACK,
          VEX_STATUS_INVALID_CACHE_POLICY);
  require(healthOf(machine, volume) != Health::LOST, VEX_STATUS_INVALID_STATE);
  volume.cachePolicy = static_cast<CachePolicy>(policy);
}

void setRwhPolicy(Machine& machine, Handle handle, Handle drive, std::uint32_t policy) {
  Volume& volume = machine.volumes.at(handle);
  const Array& array = machine.arrays.at(volume.array);
  const RwhChoice choice = requireRwh(machine, engineOf(machine, array), volume.level, policy, drive,
                                      array.disks, volume.journalingDrive);
  require(healthOf(machine, volume) != Health::LOST, VEX_STATUS_INVALID_STATE);
  volume.rwhPolicy = choice.policy;
  setJournalingDrive(machine, volume, choice.journalingDrive);
}

void expandVolume(Machine& machine, Handle handle, std::uint64_t sizeMiB) {
  Volume& volume = machine.volumes.at(handle);
  const Array& array = machine.arrays.at(volume.array);
  const Controller& controller = controllerOf(machine, volume);
  require(controller.supportsVolumeModify, VEX_STATUS_NOT_SUPPORTED);
  const bool isNormal = stateOf(machine, volume) == VolumeState::NORMAL;
  require(isNormal && !isBusy(machine, array), VEX_STATUS_INVALID_STATE);
  const std::uint64_t room = footprintOf(machine, volume) + freePerDisk(machine, array);
  const std::uint64_t size = requireSize(controller, volume.level, array.disks.size(), sizeMiB, room);
  require(size > volume.size, VEX_STATUS_INVALID_VOLUME_SIZE);
  startMigration(machine, volume, volume.level, array.disks, size, false);
}

}  // namespace simulator
