#include "engine/settle.h"

#include <algorithm>

#include "engine/migration.h"
#include "engine/work.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/membership.h"
#include "model/redundancy.h"

namespace simulator {
namespace {

void markStale(const Machine& machine, Volume& volume) {
  if (healthOf(machine, volume) == Health::LOST) return;
  for (const Handle disk : machine.arrays.at(volume.array).disks) {
    if (isUsable(machine.devices.at(disk)) || isStale(volume, disk)) continue;
    volume.stale.push_back(disk);
    if (isMigrating(volume) && !contains(volume.work->sourceDisks, disk)) volume.blank.push_back(disk);
  }
}

bool hasGround(const Machine& machine, const Volume& volume) {
  switch (volume.work->kind) {
    case WorkKind::REBUILD:
      return healthOf(machine, volume) == Health::REDUCED && isUsable(machine.devices.at(volume.work->disk));
    case WorkKind::INITIALIZE:
    case WorkKind::VERIFY:
    case WorkKind::VERIFY_AND_FIX:
      return healthOf(machine, volume) == Health::INTACT;
    case WorkKind::MIGRATE:
      return true;  // it may wait
  }
  return false;
}

bool needsRebuild(const Machine& machine, const Volume& volume) {
  return !volume.work && healthOf(machine, volume) == Health::REDUCED;
}

/// A stale member that is there and can be written.
Handle findReturnedMember(const Machine& machine, const Volume& volume) {
  for (const Handle disk : volume.stale) {
    if (isUsable(machine.devices.at(disk))) return disk;
  }
  return 0;
}

bool isSpareFor(const EndDevice& disk, const Array& array) {
  return disk.spare && (disk.spareFor == 0 || disk.spareFor == array.handle);
}

bool mayReplace(const Machine& machine, const EndDevice& disk, const Array& array) {
  return judgeCandidate(machine, disk, membershipOf(machine, array)) == VEX_STATUS_SUCCESS;
}

/// Dedicated spares come before global ones, and small ones before large ones.
EndDevice* findSpare(Machine& machine, const Array& array) {
  EndDevice* best = nullptr;
  const auto isBetter = [&](const EndDevice& disk) {
    if (best == nullptr) return true;
    if ((disk.spareFor != 0) != (best->spareFor != 0)) return disk.spareFor != 0;
    return usableSize(disk) < usableSize(*best);
  };
  for (const Handle handle : machine.controllers.at(array.controller).devices) {
    EndDevice& disk = machine.devices.at(handle);
    if (isSpareFor(disk, array) && mayReplace(machine, disk, array) && isBetter(disk)) best = &disk;
  }
  return best;
}

EndDevice* findArrived(Machine& machine, const Array& array, Handle arrived) {
  EndDevice* const disk = machine.devices.find(arrived);
  const Controller& controller = machine.controllers.at(array.controller);
  if (disk == nullptr || !controller.rohiEnabled || disk->controller != controller.handle) return nullptr;
  const bool serves = isFree(*disk) && mayReplace(machine, *disk, array);
  return serves ? disk : nullptr;
}

EndDevice* findReplaceableMember(Machine& machine, const Array& array) {
  for (const Handle handle : array.disks) {
    EndDevice& disk = machine.devices.at(handle);
    if (mayBeReplaced(disk)) return &disk;
  }
  return nullptr;
}

/// A volume whose redundancy or whose migration needs a member more, or an array on which nothing stands yet.
bool callsForMember(const Machine& machine, const Array& array) {
  const auto calls = [&](Handle handle) {
    const Volume& volume = machine.volumes.at(handle);
    return needsRebuild(machine, volume) || waitsForMember(machine, volume);
  };
  return array.volumes.empty() || std::any_of(array.volumes.begin(), array.volumes.end(), calls);
}

bool replaceLostMember(Machine& machine, Array& array, Handle arrived) {
  if (isAtWork(machine, array) || !callsForMember(machine, array)) return false;
  EndDevice* const lost = findReplaceableMember(machine, array);
  if (lost == nullptr) return false;
  EndDevice* replacement = findSpare(machine, array);
  if (replacement == nullptr) replacement = findArrived(machine, array, arrived);
  if (replacement == nullptr) return false;
  replaceMember(machine, array, *lost, *replacement);
  return true;
}

void rebuildOntoReturned(Machine& machine, Volume& volume) {
  if (!needsRebuild(machine, volume)) return;
  const Handle disk = findReturnedMember(machine, volume);
  if (disk != 0) startRebuild(machine, volume, disk);
}

void settleVolume(Machine& machine, Volume& volume) {
  markStale(machine, volume);
  if (volume.work && !hasGround(machine, volume)) volume.work.reset();
  if (isMigrating(volume)) settleMigration(machine, volume);
  rebuildOntoReturned(machine, volume);
}

}  // namespace

void settle(Machine& machine, Handle arrived) {
  for (auto& entry : machine.volumes) settleVolume(machine, entry.second);
  for (auto& entry : machine.arrays) {
    Array& array = entry.second;
    while (replaceLostMember(machine, array, arrived)) {
      for (const Handle volume : array.volumes) settleVolume(machine, machine.volumes.at(volume));
    }
  }
}

}  // namespace simulator
