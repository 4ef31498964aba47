#include <algorithm>
#include <limits>

#include "engine/work.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/names.h"
#include "model/redundancy.h"
#include "rules/checks.h"
#include "rules/rules.h"

namespace simulator {
namespace {

std::size_t volumesOn(const Machine& machine, const Controller& controller) {
  std::size_t count = 0;
  for (const Handle array : controller.arrays) count += machine.arrays.at(array).volumes.size();
  return count;
}

void requireVolumeRoom(const Machine& machine, const Controller& controller, const RaidEngine& engine,
                       std::size_t volumesInArray) {
  require(volumesInArray < engine.maxVolumesPerArray, VEX_STATUS_TOO_MANY_ITEMS);
  require(volumesOn(machine, controller) < engine.maxVolumesPerHba, VEX_STATUS_TOO_MANY_ITEMS);
}

std::uint32_t freeOrdinal(const Machine& machine, const Array& array) {
  std::uint32_t ordinal = 0;
  for (const Handle volume : array.volumes) {
    if (machine.volumes.at(volume).ordinal == ordinal) ++ordinal;
  }
  return ordinal;
}

/// What does not depend on the array.
Volume drawUp(const NewVolume& wanted, RaidLevel level, StripSize strip, std::uint64_t size,
              const RwhChoice& rwh) {
  Volume volume;
  volume.name = wanted.name;
  volume.level = level;
  volume.stripSize = strip;
  volume.size = size;
  volume.rwhPolicy = rwh.policy;
  volume.journalingDrive = rwh.journalingDrive;
  volume.initialized = !isRedundant(level);
  return volume;
}

Volume& addTo(Machine& machine, const Array& array, Volume volume) {
  volume.handle = takeHandle(machine);
  volume.id = newId(machine, "VOLUME-", volume.handle);
  volume.array = array.handle;
  volume.ordinal = freeOrdinal(machine, array);
  return addVolume(machine, std::move(volume));
}

/// The least that a disk of the new array must give: all that the source disk has, when there is one.
std::uint64_t requireSource(const Machine& machine, const RaidEngine& engine,
                            const std::vector<Handle>& disks, Handle source) {
  if (source == 0) return kMiB;
  require(engine.createFromExistingSupport, VEX_STATUS_NOT_SUPPORTED);
  require(std::count(disks.begin(), disks.end(), source) == 1, VEX_STATUS_INVALID_DISK);
  return usableSize(machine.devices.at(source));
}

std::uint64_t smallestOf(const Machine& machine, const std::vector<Handle>& disks) {
  std::uint64_t smallest = std::numeric_limits<std::uint64_t>::max();
  for (const Handle disk : disks) smallest = std::min(smallest, usableSize(machine.devices.at(disk)));
  return smallest;
}

Array& addNewArray(Machine& machine, const std::vector<Handle>& disks) {
  Array array;
  array.handle = takeHandle(machine);
  array.id = newId(machine, "ARRAY-", array.handle);
  array.name = nameOfNewArray(machine);
  array.disks = disks;
  Array& added = addArray(machine, std::move(array));
  for (const Handle disk : disks) machine.devices.at(disk).writeCache = added.writeCache;
  return added;
}

/// The volume begins as the bare source disk and migrates from there.
void takeOver(Machine& machine, Volume& volume, const EndDevice& source) {
  const std::uint64_t target = volume.size;
  volume.size = usableSize(source);
  volume.systemVolume = source.systemDisk;
  startMigration(machine, volume, RaidLevel::RAID_0, {source.handle}, target);
}

}  // namespace

void createVolume(Machine& machine, Handle arrayHandle, const NewVolume& wanted) {
  const Array& array = machine.arrays.at(arrayHandle);
  const Controller& controller = machine.controllers.at(array.controller);
  const RaidEngine& engine = requireEngine(machine, controller);
  requireName(machine, wanted.name, 0);
  const LevelCapability& level = requireLevel(engine, wanted.level);
  require(takesDiskCount(level, array.disks.size()), VEX_STATUS_INVALID_DISK_COUNT);
  requireVolumeRoom(machine, controller, engine, array.volumes.size());
  const StripSize strip = requireStripSize(level, wanted.stripSize);
  require(!isBusy(machine, array), VEX_STATUS_INVALID_STATE);
  for (const Handle handle : array.disks) {
    const EndDevice& disk = machine.devices.at(handle);
    require(disk.x8 == X8Role::NONE || level.level == RaidLevel::RAID_0, VEX_STATUS_UNSUPPORTED_DISK);
    require(isUsable(disk), VEX_STATUS_INVALID_STATE);
  }
  const RwhChoice rwh =
      requireRwh(machine, engine, level.level, wanted.rwhPolicy, wanted.journalingDrive, array.disks);
  const std::uint64_t size =
      requireSize(controller, level.level, array.disks.size(), wanted.sizeMiB, freePerDisk(machine, array));
  addTo(machine, array, drawUp(wanted, level.level, strip, size, rwh));
}

Handle createVolumeFromDisks(Machine& machine, const std::vector<Handle>& disks, Handle source,
                             const NewVolume& wanted) {
  requireDisks(machine, disks);
  const EndDevice& first = machine.devices.at(disks.front());
  const Controller& controller = machine.controllers.at(first.controller);
  require(controller.supportsArrayCreate, VEX_STATUS_NOT_SUPPORTED);
  const RaidEngine& engine = requireEngine(machine, controller);
  requireName(machine, wanted.name, 0);
  const LevelCapability& level = requireLevel(engine, wanted.level);
  require(disks.size() <= engine.maxDisksPerArray, VEX_STATUS_TOO_MANY_ITEMS);
  require(takesDiskCount(level, disks.size()), VEX_STATUS_INVALID_DISK_COUNT);
  requireVolumeRoom(machine, controller, engine, 0);
  const StripSize strip = requireStripSize(level, wanted.stripSize);
  Membership membership;
  membership.controller = controller.handle;
  membership.logicalSectorSize = first.logicalSectorSize;
  membership.minUsableSize = requireSource(machine, engine, disks, source);
  membership.isRaid0Only = level.level == RaidLevel::RAID_0;
  membership.sourceDisk = source;
  for (const Handle disk : disks) requireCandidate(machine, machine.devices.at(disk), membership);
  requireRaidDiskRoom(machine, engine, disks);
  const RwhChoice rwh =
      requireRwh(machine, engine, level.level, wanted.rwhPolicy, wanted.journalingDrive, disks);
  const std::uint64_t size =
      requireSize(controller, level.level, disks.size(), wanted.sizeMiB, smallestOf(machine, disks));
  require(source == 0 || size >= membership.minUsableSize, VEX_STATUS_INVALID_VOLUME_SIZE);

  Volume drawn = drawUp(wanted, level.level, strip, size, rwh);
  Volume& volume = addTo(machine, addNewArray(machine, disks), std::move(drawn));
  if (source != 0) takeOver(machine, volume, machine.devices.at(source));
  return volume.handle;
}

void deleteVolume(Machine& machine, Handle handle) {
  const Volume& volume = machine.volumes.at(handle);
  require(controllerOf(machine, volume).supportsVolumeDelete, VEX_STATUS_NOT_SUPPORTED);
  require(!volume.systemVolume, VEX_STATUS_NOT_PERMITTED);
  require(!isMigrating(volume) || !isRunning(machine, volume), VEX_STATUS_INVALID_STATE);
  const Array& array = machine.arrays.at(volume.array);
  const Handle arrayHandle = array.handle;
  removeVolume(machine, handle);
  if (array.volumes.empty() && !engineOf(machine, array).emptyArraysSupport)
    removeArray(machine, arrayHandle);
}

}  // namespace simulator
