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

EndDevice& lostMemberOf(Machine& machine, const Volume& volume) {
  for (const Handle handle : machine.arrays.at(volume.array).disks) {
    EndDevice& disk = machine.devices.at(handle);
    if (mayBeReplaced(disk)) return disk;
  }
  throw Refusal(VEX_STATUS_INVALID_STATE);
}

bool isVerifying(const Volume& volume) {
  return volume.work &&
         (volume.work->kind == WorkKind::VERIFY || volume.work->kind == WorkKind::VERIFY_AND_FIX);
}

}  // namespace

void rebuildVolume(Machine& machine, Handle handle, Handle diskHandle) {
  const Volume& volume = machine.volumes.at(handle);
  EndDevice& disk = diskAt(machine, diskHandle);
  Array& array = machine.arrays.at(volume.array);
  const bool isDegraded = stateOf(machine, volume) == VolumeState::DEGRADED;
  const bool needsMember = isDegraded || waitsForMember(machine, volume);
  require(needsMember && !isAtWork(machine, array), VEX_STATUS_INVALID_STATE);
  EndDevice& lost = lostMemberOf(machine, volume);
  requireCandidate(machine, disk, membershipOf(machine, array));
  replaceMember(machine, array, lost, disk);
}

void initializeVolume(Machine& machine, Handle handle) {
  Volume& volume = machine.volumes.at(handle);
  require(isRedundant(volume.level), VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED);
  require(stateOf(machine, volume) == VolumeState::NORMAL, VEX_STATUS_INVALID_STATE);
  startInitialize(machine, volume);
}

void verifyVolume(Machine& machine, Handle handle, std::uint32_t fix) {
  Volume& volume = machine.volumes.at(handle);
  const bool fixes = parseSwitch(fix);
  require(isRedundant(volume.level), VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED);
  const bool isNormal = stateOf(machine, volume) == VolumeState::NORMAL;
  require(isNormal && volume.initialized, VEX_STATUS_INVALID_STATE);
  startVerify(machine, volume, fixes);
}

void cancelVerify(Machine& machine, Handle handle) {
  Volume& volume = machine.volumes.at(handle);
  require(controllerOf(machine, volume).supportsVolumeCancelVerify, VEX_STATUS_NOT_SUPPORTED);
  require(isVerifying(volume), VEX_STATUS_INVALID_STATE);
  stopWork(machine, volume);
}

}  // namespace simulator
