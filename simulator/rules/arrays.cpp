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

bool isAtRest(const Machine& machine, const Array& array) {
  return std::all_of(array.volumes.begin(), array.volumes.end(), [&](Handle volume) {
    return stateOf(machine, machine.volumes.at(volume)) == VolumeState::NORMAL;
  });
}

bool isRaid0Only(const Machine& machine, const Array& array) {
  return std::all_of(array.volumes.begin(), array.volumes.end(),
                     [&](Handle volume) { return machine.volumes.at(volume).level == RaidLevel::RAID_0; });
}

/// Each volume must go on over the larger number of disks.
void requireCount(const Machine& machine, const Array& array, std::size_t disks) {
  const RaidEngine& engine = engineOf(machine, array);
  require(disks <= engine.maxDisksPerArray, VEX_STATUS_TOO_MANY_ITEMS);
  for (const Handle volume : array.volumes) {
    const LevelCapability* const level = findLevel(engine, machine.volumes.at(volume).level);
    require(takesDiskCount(*level, disks), VEX_STATUS_INVALID_DISK_COUNT);
  }
}

}  // namespace

void setWriteCache(Machine& machine, Handle handle, std::uint32_t enable) {
  Array& array = machine.arrays.at(handle);
  const bool isOn = parseSwitch(enable);
  for (const Handle disk : array.disks) {
    require(isUsable(machine.devices.at(disk)), VEX_STATUS_INVALID_STATE);
  }
  array.writeCache = isOn ? WriteCache::ON : WriteCache::OFF;
  for (const Handle disk : array.disks) machine.devices.at(disk).writeCache = array.writeCache;
}

void addDisks(Machine& machine, Handle handle, const std::vector<Handle>& disks, std::uint32_t zero) {
  require(zero == 0, VEX_STATUS_INVALID_PARAMETER);
  Array& array = machine.arrays.at(handle);
  require(machine.controllers.at(array.controller).supportsAddDisksToArray, VEX_STATUS_NOT_SUPPORTED);
  requireDisks(machine, disks);
  require(isAtRest(machine, array), VEX_STATUS_INTERNAL_ERROR);
  requireCount(machine, array, array.disks.size() + disks.size());
  Membership membership = membershipOf(machine, array);
  membership.isRaid0Only = isRaid0Only(machine, array);
  for (const Handle disk : disks) requireCandidate(machine, machine.devices.at(disk), membership);
  requireRaidDiskRoom(machine, engineOf(machine, array), disks);

  const std::vector<Handle> before = array.disks;
  for (const Handle disk : disks) joinArray(machine, array, machine.devices.at(disk));
  for (const Handle volumeHandle : array.volumes) {
    Volume& volume = machine.volumes.at(volumeHandle);
    startMigration(machine, volume, volume.level, before, volume.size);
  }
}

}  // namespace simulator
