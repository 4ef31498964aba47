#include "model/redundancy.h"

#include <algorithm>

#include "model/disk_role.h"

namespace simulator {
namespace {

RaidLevel levelOfData(const Volume& volume) {
  return isMigrating(volume) ? volume.work->sourceLevel : volume.level;
}

const std::vector<Handle>& disksOfData(const Machine& machine, const Volume& volume) {
  return isMigrating(volume) ? volume.work->sourceDisks : machine.arrays.at(volume.array).disks;
}

/// The health of data that lie at this level on these disks, when `holdsData` tells which of them have
/// their part.
template <class HoldsData>
Health healthOfLayout(const Machine& machine, RaidLevel level, const std::vector<Handle>& disks,
                      HoldsData holdsData) {
  std::vector<bool> held;
  held.reserve(disks.size());
  for (const Handle disk : disks) held.push_back(holdsData(machine.devices.at(disk)));
  const auto lost = std::count(held.begin(), held.end(), false);
  if (lost == 0) return Health::INTACT;
  switch (level) {
    case RaidLevel::RAID_0:
      return Health::LOST;
    case RaidLevel::RAID_1:
      return lost == static_cast<std::ptrdiff_t>(held.size()) ? Health::LOST : Health::REDUCED;
    case RaidLevel::RAID_5:
      return lost > 1 ? Health::LOST : Health::REDUCED;
    case RaidLevel::RAID_10:
      for (std::size_t i = 0; i + 1 < held.size(); i += 2) {
        if (!held[i] && !held[i + 1]) return Health::LOST;
      }
      return Health::REDUCED;
  }
  return Health::LOST;
}

/// The health of the volume where its data lie now.
template <class HoldsData>
Health healthBy(const Machine& machine, const Volume& volume, HoldsData holdsData) {
  return healthOfLayout(machine, levelOfData(volume), disksOfData(machine, volume), holdsData);
}

/// Would the volume serve if its locked disks were unlocked?
bool isLostToLocksOnly(const Machine& machine, const Volume& volume) {
  return healthBy(machine, volume, [&](const EndDevice& disk) {
           return (isUsable(disk) || isLockedOnly(disk)) && !isStale(volume, disk.handle);
         }) != Health::LOST;
}

/// A failed disk that is still there may be marked as normal again.
bool isLostToFailedDisksOnly(const Machine& machine, const Volume& volume) {
  return healthBy(machine, volume, [&](const EndDevice& disk) {
           const bool mayServe = isUsable(disk) || (disk.failed && mayBeMarkedAsNormal(disk));
           return mayServe && !isStale(volume, disk.handle);
         }) != Health::LOST;
}

VolumeState stateOfLost(const Machine& machine, const Volume& volume) {
  if (isLostToLocksOnly(machine, volume)) return VolumeState::LOCKED;
  const bool mayComeBack = !isRedundant(levelOfData(volume)) && isLostToFailedDisksOnly(machine, volume);
  return mayComeBack ? VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK : VolumeState::FAILED;
}

VolumeState stateAtWork(WorkKind kind) {
  switch (kind) {
    case WorkKind::REBUILD:
      return VolumeState::REBUILDING;
    case WorkKind::INITIALIZE:
      return VolumeState::INITIALIZING;
    case WorkKind::VERIFY:
      return VolumeState::VERIFYING;
    case WorkKind::VERIFY_AND_FIX:
      return VolumeState::VERIFYING_AND_FIXING;
    case WorkKind::MIGRATE:
      return VolumeState::GENERAL_MIGRATION;
  }
  return VolumeState::NORMAL;
}

}  // namespace

bool contains(const std::vector<Handle>& disks, Handle disk) {
  return std::find(disks.begin(), disks.end(), disk) != disks.end();
}

bool isStale(const Volume& volume, Handle disk) { return contains(volume.stale, disk); }

bool isMigrating(const Volume& volume) { return volume.work && volume.work->kind == WorkKind::MIGRATE; }

Health healthOf(const Machine& machine, const Volume& volume) {
  return healthBy(machine, volume,
                  [&](const EndDevice& disk) { return isUsable(disk) && !isStale(volume, disk.handle); });
}

bool wouldServeAtTarget(const Machine& machine, const Volume& volume, const std::vector<Handle>& caughtUp) {
  const auto& disks = machine.arrays.at(volume.array).disks;
  return healthOfLayout(machine, volume.level, disks, [&](const EndDevice& disk) {
           return isUsable(disk) && (!isStale(volume, disk.handle) || contains(caughtUp, disk.handle));
         }) != Health::LOST;
}

bool isRunning(const Machine& machine, const Volume& volume) {
  return volume.work && volume.work->elapsedMs < volume.work->totalMs &&
         healthOf(machine, volume) != Health::LOST;
}

bool waitsForMember(const Machine& machine, const Volume& volume) {
  return isMigrating(volume) && !isRunning(machine, volume) && healthOf(machine, volume) != Health::LOST;
}

VolumeState stateOf(const Machine& machine, const Volume& volume) {
  const Health health = healthOf(machine, volume);
  if (health == Health::LOST) return stateOfLost(machine, volume);
  if (volume.work) return stateAtWork(volume.work->kind);
  return health == Health::INTACT ? VolumeState::NORMAL : VolumeState::DEGRADED;
}

bool isAtWork(const Machine& machine, const Array& array) {
  return std::any_of(array.volumes.begin(), array.volumes.end(),
                     [&](Handle volume) { return isRunning(machine, machine.volumes.at(volume)); });
}

bool isBusy(const Machine& machine, const Array& array) {
  return std::any_of(array.volumes.begin(), array.volumes.end(),
                     [&](Handle volume) { return machine.volumes.at(volume).work.has_value(); });
}

}  // namespace simulator
