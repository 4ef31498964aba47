#include <algorithm>

#include "engine/work.h"
#include "model/capacity.h"
#include "model/links.h"
#include "model/redundancy.h"
#include "rules/checks.h"
#include "rules/rules.h"

namespace simulator {
namespace {

/// The level can be reached from the volume's, with the disks that this takes.
void requireWay(const LevelCapability& from, const LevelCapability& to, std::size_t disks, std::size_t more) {
  require((from.migrationTargets & bitOf(to.level)) != 0, VEX_STATUS_INVALID_RAID_LEVEL);
  const bool takesMore = (from.migrationRequiresDisk & bitOf(to.level)) != 0;
  require(more > 0 || !takesMore, VEX_STATUS_INVALID_DISK_COUNT);
  require(takesDiskCount(to, disks + more), VEX_STATUS_INVALID_DISK_COUNT);
}

void requireNewMembers(Machine& machine, const Volume& volume, RaidLevel target,
                       const std::vector<Handle>& disks) {
  const Array& array = machine.arrays.at(volume.array);
  const RaidEngine& engine = engineOf(machine, array);
  Membership membership = membershipOf(machine, array);
  membership.isRaid0Only = target == RaidLevel::RAID_0;
  for (const Handle disk : disks) requireCandidate(machine, machine.devices.at(disk), membership);
  require(array.disks.size() + disks.size() <= engine.maxDisksPerArray, VEX_STATUS_TOO_MANY_ITEMS);
  requireRaidDiskRoom(machine, engine, disks);
}

void requireMembersAtLevel(const Machine& machine, const Array& array, RaidLevel target) {
  if (target == RaidLevel::RAID_0) return;
  for (const Handle disk : array.disks) {
    require(machine.devices.at(disk).x8 == X8Role::NONE, VEX_STATUS_UNSUPPORTED_DISK);
  }
}

/// What a disk of the array will give once the new ones have joined.
std::uint64_t memberSizeWith(const Machine& machine, const Array& array, const std::vector<Handle>& disks) {
  std::uint64_t smallest = memberSize(machine, array);
  for (const Handle disk : disks) smallest = std::min(smallest, usableSize(machine.devices.at(disk)));
  return smallest;
}

/// All that there is room for, up to where volumes end.
std::uint64_t allThatFits(const Controller& controller, RaidLevel level, std::size_t disks,
                          std::uint64_t room) {
  const std::uint64_t size = room * dataDisks(level, disks);
  return controller.twoTbVolumeSupport ? size : std::min(size, kTwoTb);
}

}  // namespace

void modifyRaidLevel(Machine& machine, Handle handle, std::uint32_t levelCode, std::uint32_t stripCode,
                     std::uint64_t sizeMiB, const std::vector<Handle>& disks) {
  Volume& volume = machine.volumes.at(handle);
  Array& array = machine.arrays.at(volume.array);
  const Controller& controller = controllerOf(machine, volume);
  require(controller.supportsVolumeModify, VEX_STATUS_NOT_SUPPORTED);
  const RaidEngine& engine = engineOf(machine, array);
  const LevelCapability& target = requireLevel(engine, levelCode);
  const bool isNormal = stateOf(machine, volume) == VolumeState::NORMAL;
  require(isNormal && array.volumes.size() == 1, VEX_STATUS_INVALID_STATE);
  if (!disks.empty()) requireDisks(machine, disks);
  requireWay(*findLevel(engine, volume.level), target, array.disks.size(), disks.size());
  const StripSize strip = requireStripSize(target, stripCode);
  requireMembersAtLevel(machine, array, target.level);
  requireNewMembers(machine, volume, target.level, disks);
  const std::size_t count = array.disks.size() + disks.size();
  const std::uint64_t room = memberSizeWith(machine, array, disks);
  const std::uint64_t size = sizeMiB == 0 ? allThatFits(controller, target.level, count, room)
                                          : requireSize(controller, target.level, count, sizeMiB, room);
  require(size >= volume.size, VEX_STATUS_INVALID_VOLUME_SIZE);
  const bool isNew =
      target.level != volume.level || strip != volume.stripSize || !disks.empty() || size > volume.size;
  require(isNew, VEX_STATUS_INVALID_PARAMETER);

  const RaidLevel levelBefore = volume.level;
  const std::vector<Handle> disksBefore = array.disks;
  for (const Handle disk : disks) joinArray(machine, array, machine.devices.at(disk));
  volume.level = target.level;
  volume.stripSize = strip;
  if (volume.level != RaidLevel::RAID_5) {
    volume.rwhPolicy = RwhPolicy::RWH_OFF;
    setJournalingDrive(machine, volume, 0);
  }
  startMigration(machine, volume, levelBefore, disksBefore, size);
}

}  // namespace simulator
