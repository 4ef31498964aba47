#include "engine/settle.h"

#include <algorithm>
#include <optional>
#include <utility>

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

/// The best disk of the array's controller that `suits` and may become a member, or null: dedicated spares
/// come before others, and small disks before large ones.
template <class Suits>
const EndDevice* findBest(const Machine& machine, const Array& array, Suits suits) {
  const EndDevice* best = nullptr;
  const auto isBetter = [&](const EndDevice& disk) {
    if (best == nullptr) return true;
    if ((disk.spareFor != 0) != (best->spareFor != 0)) return disk.spareFor != 0;
    return usableSize(disk) < usableSize(*best);
  };
  for (const Handle handle : machine.controllers.at(array.controller).devices) {
    const EndDevice& disk = machine.devices.at(handle);
    if (suits(disk) && mayReplace(machine, disk, array) && isBetter(disk)) best = &disk;
  }
  return best;
}

const EndDevice* findReplacement(const Machine& machine, const Array& array) {
  const EndDevice* const spare =
      findBest(machine, array, [&](const EndDevice& disk) { return isSpareFor(disk, array); });
  if (spare != nullptr || !machine.controllers.at(array.controller).rohiEnabled) return spare;
  return findBest(machine, array, [](const EndDevice& disk) { return disk.hotInserted && isFree(disk); });
}

/// The first member that is lost for good, or null.
const EndDevice* findReplaceableMember(const Machine& machine, const Array& array) {
  for (const Handle handle : array.disks) {
    const EndDevice& disk = machine.devices.at(handle);
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

/// Who takes whose place in the array now.
struct Replacement {
  const EndDevice* lost = nullptr;
  const EndDevice* replacement = nullptr;
};

std::optional<Replacement> replacementFor(const Machine& machine, const Array& array) {
  const EndDevice* const lost = findReplaceableMember(machine, array);
  if (lost == nullptr || isAtWork(machine, array) || !callsForMember(machine, array)) return {};
  const EndDevice* const replacement = findReplacement(machine, array);
  if (replacement == nullptr) return {};
  return Replacement{lost, replacement};
}

/// An array that serves or is empty, and that has lost a member for good.
bool missesMember(const Machine& machine, const Array& array) {
  const auto serves = [&](Handle volume) {
    return healthOf(machine, machine.volumes.at(volume)) != Health::LOST;
  };
  const bool isWorthIt =
      array.volumes.empty() || std::any_of(array.volumes.begin(), array.volumes.end(), serves);
  return isWorthIt && findReplaceableMember(machine, array) != nullptr;
}

/// A disk put in is remembered only while an array that it fits waits until its work is over.
bool isStillWanted(const Machine& machine, const EndDevice& disk) {
  const Controller& controller = machine.controllers.at(disk.controller);
  const auto wants = [&](Handle handle) {
    const Array& array = machine.arrays.at(handle);
    return missesMember(machine, array) && mayReplace(machine, disk, array);
  };
  return controller.rohiEnabled && isFree(disk) &&
         std::any_of(controller.arrays.begin(), controller.arrays.end(), wants);
}

void rebuildOntoReturned(Machine& machine, Volume& volume) {
  if (!needsRebuild(machine, volume)) return;
  const Handle disk = findReturnedMember(machine, volume);
  if (disk != 0) startRebuild(machine, volume, disk);
}

bool isWell(const Machine& machine, const Volume& volume) {
  return !volume.work && volume.stale.empty() && healthOf(machine, volume) == Health::INTACT;
}

void settleVolume(Machine& machine, Handle handle) {
  if (isWell(machine, std::as_const(machine).volumes.at(handle))) return;
  Volume& volume = machine.volumes.at(handle);
  markStale(machine, volume);
  if (volume.work && !hasGround(machine, volume)) stopWork(machine, volume);
  if (isMigrating(volume)) settleMigration(machine, volume);
  rebuildOntoReturned(machine, volume);
}

void settleArray(Machine& machine, const Array& array) {
  while (const auto found = replacementFor(machine, array)) {
    replaceMember(machine, machine.arrays.at(array.handle), machine.devices.at(found->lost->handle),
                  machine.devices.at(found->replacement->handle));
    for (const Handle volume : array.volumes) settleVolume(machine, volume);
  }
}

}  // namespace

/// Objects are only looked at where nothing changes: whoever watches the machine keeps a copy of each
/// that might.
void settle(Machine& machine) {
  const Machine& present = machine;
  for (const auto& entry : present.volumes) settleVolume(machine, entry.first);
  for (const auto& entry : present.arrays) settleArray(machine, entry.second);
  for (const auto& entry : present.devices) {
    const EndDevice& disk = entry.second;
    if (disk.hotInserted && !isStillWanted(present, disk))
      machine.devices.at(disk.handle).hotInserted = false;
  }
}

}  // namespace simulator
