#include "model/invariants.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "model/capability.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/names.h"
#include "model/redundancy.h"

namespace simulator {
namespace {

struct Violation : std::runtime_error {
  using std::runtime_error::runtime_error;
};

template <class T>
void expect(bool holds, const T& object, const char* rule) {
  if (!holds) throw Violation(object.id + " (" + std::to_string(object.handle) + "): " + rule);
}

bool hasDuplicate(const std::vector<Handle>& handles) {
  return std::set<Handle>(handles.begin(), handles.end()).size() != handles.size();
}

bool isCondition(DiskState state) {
  return state != DiskState::MISSING && state != DiskState::FAILED && state != DiskState::LOCKED &&
         state != DiskState::SMART_EVENT_TRIGGERED;
}

bool isAloneInBay(const Machine& machine, const EndDevice& device) {
  const auto bayOf = [](const EndDevice& each) { return each.bay != 0 ? each.bay : each.handle; };
  return std::none_of(machine.devices.begin(), machine.devices.end(), [&](const auto& entry) {
    const EndDevice& other = entry.second;
    return other.handle != device.handle && other.presence != Presence::ABSENT &&
           bayOf(other) == bayOf(device);
  });
}

void checkDevice(const Machine& machine, const EndDevice& device) {
  const Array* const array = machine.arrays.find(device.array);
  expect(device.array == 0 || (array != nullptr && contains(array->disks, device.handle)), device,
         "its array does not hold it");
  expect(!(device.array != 0 && (device.spare || device.foreignMetadata)), device,
         "a member is a spare or carries foreign metadata");
  expect(!(device.array != 0 && device.journalUsers != 0), device, "a member holds a journal");
  expect(device.spareFor == 0 || (device.spare && machine.arrays.contains(device.spareFor)), device,
         "is the spare of nothing");
  expect(isCondition(device.condition), device, "stores as its condition what is told apart");
  expect(contains(machine.controllers.at(device.controller).devices, device.handle), device,
         "its controller does not hold it");
  expect(device.bay == 0 || device.presence == Presence::ABSENT || isAloneInBay(machine, device), device,
         "shares its bay with another");
  expect(device.journalUsers <= journalRoom(device), device, "holds more journals than it has room for");
  const auto users = std::count_if(machine.volumes.begin(), machine.volumes.end(), [&](const auto& entry) {
    return entry.second.journalingDrive == device.handle;
  });
  expect(static_cast<std::uint32_t>(users) == device.journalUsers, device, "miscounts its journals");
}

void checkArray(const Machine& machine, const Array& array) {
  expect(!array.disks.empty(), array, "has no disks");
  expect(!hasDuplicate(array.disks), array, "holds a disk twice");
  const EndDevice& first = machine.devices.at(array.disks.front());
  for (const Handle handle : array.disks) {
    const EndDevice& disk = machine.devices.at(handle);
    expect(disk.array == array.handle, array, "a disk of it does not know");
    expect(disk.controller == array.controller, array, "a disk is on another controller");
    expect(disk.logicalSectorSize == first.logicalSectorSize, array, "its disks have different sectors");
  }
  const RaidEngine& engine = engineOf(machine, array);
  expect(array.disks.size() <= engine.maxDisksPerArray, array, "has too many disks");
  expect(array.volumes.size() <= engine.maxVolumesPerArray, array, "has too many volumes");
  expect(!array.volumes.empty() || engine.emptyArraysSupport, array, "is empty");
  expect(usedPerDisk(machine, array) <= memberSize(machine, array), array, "gives more than its disks have");
  expect(contains(machine.controllers.at(array.controller).arrays, array.handle), array,
         "its controller does not hold it");
}

void checkLayout(const Machine& machine, const Volume& volume, const Array& array) {
  const LevelCapability* const level = findLevel(engineOf(machine, array), volume.level);
  expect(level != nullptr, volume, "its engine has no such level");
  expect(takesDiskCount(*level, array.disks.size()), volume, "has a wrong number of disks");
  expect(volume.size > 0, volume, "has no size");
  expect(volume.initialized || isRedundant(volume.level), volume, "has no redundancy to be initialised");
  expect(volume.rwhPolicy == RwhPolicy::RWH_OFF || volume.level == RaidLevel::RAID_5, volume,
         "closes a write hole that it does not have");
  expect((volume.rwhPolicy == RwhPolicy::RWH_JOURNALING_DRIVE) == (volume.journalingDrive != 0), volume,
         "its journal is not where its policy says");
  const EndDevice* const drive = machine.devices.find(volume.journalingDrive);
  expect(volume.journalingDrive == 0 || (drive != nullptr && drive->controller == array.controller), volume,
         "its journal is on another controller");
}

/// A volume that serves is not up to date on the disks that it has lost; what is stale is a member.
void checkStale(const Machine& machine, const Volume& volume, const Array& array) {
  expect(!hasDuplicate(volume.stale), volume, "a disk is stale twice");
  for (const Handle disk : volume.stale) {
    expect(contains(array.disks, disk), volume, "a disk is stale that is no member");
  }
  for (const Handle disk : volume.blank)
    expect(isStale(volume, disk), volume, "a disk is blank and not stale");
  if (healthOf(machine, volume) == Health::LOST) return;
  for (const Handle disk : array.disks) {
    expect(isUsable(machine.devices.at(disk)) || isStale(volume, disk), volume, "a lost disk is up to date");
  }
}

bool mayEnd(const Machine& machine, const Volume& volume) {
  return wouldServeAtTarget(machine, volume, volume.work->catchUp);
}

void checkMigration(const Machine& machine, const Volume& volume, Health health) {
  const Work& work = *volume.work;
  for (const Handle disk : work.sourceDisks) {
    expect(machine.devices.at(disk).array == volume.array, volume, "migrates from a disk that is no member");
  }
  for (const Handle disk : work.catchUp) {
    expect(isStale(volume, disk), volume, "a disk is caught up that is not stale");
    expect(health == Health::LOST || isUsable(machine.devices.at(disk)), volume, "a lost disk is caught up");
  }
}

void checkWork(const Machine& machine, const Volume& volume) {
  const Health health = healthOf(machine, volume);
  if (!volume.work) {
    const bool couldRebuild = health == Health::REDUCED &&
                              std::any_of(volume.stale.begin(), volume.stale.end(),
                                          [&](Handle disk) { return isUsable(machine.devices.at(disk)); });
    expect(!couldRebuild, volume, "is not rebuilt though it could be");
    return;
  }
  const Work& work = *volume.work;
  const bool waits = work.kind == WorkKind::MIGRATE && (health == Health::LOST || !mayEnd(machine, volume));
  expect(work.elapsedMs < work.totalMs || waits, volume, "its work is over and has not ended");
  switch (work.kind) {
    case WorkKind::REBUILD:
      expect(isStale(volume, work.disk) && isUsable(machine.devices.at(work.disk)), volume,
             "is rebuilt onto a disk that needs or takes none");
      expect(health == Health::REDUCED, volume, "is rebuilt though it is not degraded");
      break;
    case WorkKind::INITIALIZE:
    case WorkKind::VERIFY:
    case WorkKind::VERIFY_AND_FIX:
      expect(health == Health::INTACT && isRedundant(volume.level), volume, "is checked though it cannot be");
      break;
    case WorkKind::MIGRATE:
      checkMigration(machine, volume, health);
      break;
  }
}

void checkVolume(const Machine& machine, const Volume& volume) {
  const Array* const array = machine.arrays.find(volume.array);
  expect(array != nullptr && contains(array->volumes, volume.handle), volume, "its array does not hold it");
  expect(isVolumeName(volume.name), volume, "has no volume name");
  expect(findVolumeByName(machine, volume.name) == &volume, volume, "its name is taken");
  checkLayout(machine, volume, *array);
  checkStale(machine, volume, *array);
  checkWork(machine, volume);
}

template <class T>
void checkHandles(const Machine& machine, const Table<T>& table, std::set<Handle>& seen) {
  for (const auto& entry : table) {
    expect(entry.first == entry.second.handle, entry.second, "stands under another handle");
    expect(entry.first != 0 && entry.first < machine.nextHandle, entry.second,
           "its handle may be given again");
    expect(seen.insert(entry.first).second, entry.second, "its handle is given twice");
  }
}

void checkAllHandles(const Machine& machine) {
  std::set<Handle> seen;
  checkHandles(machine, machine.engines, seen);
  checkHandles(machine, machine.controllers, seen);
  checkHandles(machine, machine.devices, seen);
  checkHandles(machine, machine.ports, seen);
  checkHandles(machine, machine.arrays, seen);
  checkHandles(machine, machine.volumes, seen);
  for (const auto& entry : machine.phyOwner) {
    if (!seen.insert(entry.first).second) throw Violation("the handle of a phy is given twice");
  }
}

bool hasLostJournal(const Machine& machine, const Volume& volume) {
  const EndDevice* const drive = machine.devices.find(volume.journalingDrive);
  return drive != nullptr && !isUsable(*drive);
}

}  // namespace

std::string findUnprotected(const Machine& machine) {
  for (const auto& entry : machine.volumes) {
    const Volume& volume = entry.second;
    if (!hasLostJournal(machine, volume)) continue;
    return volume.id + " (" + std::to_string(volume.handle) +
           "): goes on without its journal, since the drive " +
           machine.devices.at(volume.journalingDrive).id + " is lost";
  }
  return "";
}

std::string findViolation(const Machine& machine) try {
  checkAllHandles(machine);
  for (const auto& entry : machine.devices) checkDevice(machine, entry.second);
  for (const auto& entry : machine.arrays) checkArray(machine, entry.second);
  for (const auto& entry : machine.volumes) checkVolume(machine, entry.second);
  return "";
} catch (const Violation& violation) {
  return violation.what();
} catch (const Refusal&) {
  return "a handle names nothing";
}

}  // namespace simulator
