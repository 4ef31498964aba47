#include <algorithm>
#include <set>

#include "simulator/reference/machine.h"

// What befalls disks, and the actions on disks, controllers and arrays.

namespace reference {

Status Machine::changedIf(bool isChange) {
  m_changed = m_changed || isChange;
  settle();
  return 0;
}

Status Machine::fail(Handle handle) {
  Disk& disk = disks.at(handle);
  if (disk.place != Place::IN || disk.failed) return 18;
  disk.failed = true;
  return changedIf(true);
}

Status Machine::pull(Handle handle) {
  Disk& disk = disks.at(handle);
  if (disk.place == Place::OUT) return 18;
  disk.place = Place::OUT;
  return changedIf(true);
}

void Machine::noticed(Disk& disk) {
  disk.place = Place::IN;
  disk.wanted = disk.controller->rebuildsOnInsert;
  settle();
}

Status Machine::insert(Handle handle) {
  Disk& disk = disks.at(handle);
  for (const auto& entry : disks) {
    if (entry.second.bay == disk.bay && entry.second.place != Place::OUT) return 18;
  }
  disk.wrongPasswords = 0;
  disk.place = Place::UNNOTICED;
  if (disk.hasHotPlug) noticed(disk);
  return changedIf(true);
}

Status Machine::insertBlank(Handle former, std::uint64_t size, std::uint64_t sector, Handle born,
                            const std::string& id) {
  const Disk& old = disks.at(former);
  for (const auto& entry : disks) {
    if (entry.second.bay == old.bay && entry.second.place != Place::OUT) return 18;
  }
  Disk disk;
  disk.id = id;
  disk.handle = born;
  disk.controller = old.controller;
  disk.size = size;
  disk.sector = sector;
  disk.physicalSector = std::max(old.physicalSector, sector);
  disk.isOrdan = old.isOrdan;
  disk.hasHotPlug = old.hasHotPlug;
  disk.bay = old.bay;
  disk.place = Place::OUT;
  disks[born] = disk;
  return insert(born);
}

Status Machine::lock(Handle handle) {
  Disk& disk = disks.at(handle);
  if (!isUsable(handle)) return 18;
  disk.locked = true;
  disk.wrongPasswords = 0;
  return changedIf(true);
}

Status Machine::raiseSmart(Handle handle) {
  Disk& disk = disks.at(handle);
  if (stateOf(disk) != VEX_DISK_STATE_NORMAL) return 18;
  disk.smart = true;
  return changedIf(true);
}

Status Machine::rescan() {
  bool isChange = false;
  for (auto& entry : disks) {
    if (entry.second.place != Place::UNNOTICED) continue;
    noticed(entry.second);
    isChange = true;
  }
  return changedIf(isChange);
}

Status Machine::setReadPatrol(Handle handle, std::uint32_t on) {
  for (Controller& controller : controllers) {
    if (controller.handle != handle) continue;
    if (on > 1) return 2;
    const bool isChange = controller.readPatrol != (on == 1);
    controller.readPatrol = on == 1;
    return changedIf(isChange);
  }
  return 3;
}

Status Machine::setRohi(Handle handle, std::uint32_t on) {
  for (Controller& controller : controllers) {
    if (controller.handle != handle) continue;
    if (on > 1) return 2;
    const bool isChange = controller.rebuildsOnInsert != (on == 1);
    controller.rebuildsOnInsert = on == 1;
    return changedIf(isChange);
  }
  return 3;
}

Status Machine::clear(Handle handle) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  Disk& disk = found->second;
  const std::uint32_t state = stateOf(disk);
  const bool isWritable =
      isUsable(handle) || state == VEX_DISK_STATE_OFFLINE || state == VEX_DISK_STATE_CONFIG_IS_UPREV;
  const bool isIdle = disk.array != 0 && volumesOn(arrays.at(disk.array)).empty();
  const bool isInUse = (disk.array != 0 && !isIdle) || journalsOn(handle) > 0;
  if (!isWritable || isInUse || disk.system) return 18;
  const bool isChange =
      disk.array != 0 || disk.spare || disk.foreign || disk.condition != VEX_DISK_STATE_NORMAL;
  if (disk.array != 0) {
    Array& array = arrays.at(disk.array);
    array.disks.erase(std::find(array.disks.begin(), array.disks.end(), handle));
    disk.array = 0;
    const auto serving = [&](Handle member) { return isUsable(member); };
    if (std::none_of(array.disks.begin(), array.disks.end(), serving)) dissolve(array.handle);
  }
  disk.spare = false;
  disk.spareFor = 0;
  disk.foreign = false;
  disk.condition = VEX_DISK_STATE_NORMAL;
  return changedIf(isChange);
}

void Machine::takeAsNormal(Disk& disk) const {
  disk.failed = false;
  if (disk.condition == VEX_DISK_STATE_OFFLINE || disk.condition == VEX_DISK_STATE_MANUAL_OFFLINE) {
    disk.condition = VEX_DISK_STATE_NORMAL;
  }
}

Status Machine::markDiskNormal(Handle handle) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  const std::uint32_t state = stateOf(found->second);
  if (state != VEX_DISK_STATE_FAILED && state != VEX_DISK_STATE_OFFLINE &&
      state != VEX_DISK_STATE_MANUAL_OFFLINE)
    return 18;
  takeAsNormal(found->second);
  return changedIf(true);
}

Status Machine::judgeDrive(const Controller& controller, const Disk& disk, bool isRaid0Only) const {
  const bool isUnsupported =
      disk.condition == VEX_DISK_STATE_UNSUPPORTED || disk.condition == VEX_DISK_STATE_INCOMPATIBLE;
  if (isUnsupported || (disk.isX8 && !isRaid0Only)) return 29;
  if (disk.size > kTwoTb && !controller.twoTbDisks) return 29;
  return controller.engine->ordanOnly && !disk.isOrdan ? 35 : 0;
}

Status Machine::judge(const Disk& disk, const Controller& controller, std::uint64_t sector,
                      std::uint64_t least, bool isRaid0Only, Handle source) const {
  if (disk.controller != &controller) return 38;
  if (const Status status = judgeDrive(controller, disk, isRaid0Only); status != 0) return status;
  if (disk.sector != sector) return 34;
  const std::uint32_t usage = usageOf(disk);
  const bool isTaken = usage != VEX_DISK_USAGE_SPARE && usage != VEX_DISK_USAGE_PASS_THROUGH;
  const bool isSystem = usage == VEX_DISK_USAGE_PASS_THROUGH && disk.system && disk.handle != source;
  if (stateOf(disk) != VEX_DISK_STATE_NORMAL || isTaken || isSystem) return 18;
  return usableSize(disk) < least ? 37 : 0;
}

std::size_t Machine::raidDisks(const Engine& engine) const {
  return static_cast<std::size_t>(std::count_if(disks.begin(), disks.end(), [&](const auto& entry) {
    const Disk& disk = entry.second;
    return disk.controller->engine == &engine && (disk.array != 0 || disk.spare);
  }));
}

Status Machine::judgeRoom(const Engine& engine, const std::vector<Handle>& added) const {
  std::size_t more = 0;
  for (const Handle disk : added) more += disks.at(disk).spare ? 0 : 1;
  return raidDisks(engine) + more > engine.maxRaidDisks ? 24 : 0;
}

Status Machine::judgeDisks(const std::vector<Handle>& named) const {
  if (named.empty()) return 13;
  for (const Handle disk : named) {
    const auto found = disks.find(disk);
    if (found == disks.end() || !isListed(found->second)) return 3;
  }
  return std::set<Handle>(named.begin(), named.end()).size() == named.size() ? 0 : 43;
}

Status Machine::markSpare(Handle handle, Handle arrayHandle) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  Disk& disk = found->second;
  const Engine* const engine = disk.controller->engine;
  if (engine == nullptr) return 14;
  if (!(arrayHandle == 0 ? engine->globalSpares : engine->dedicatedSpares)) return 14;
  if (const Status status = judgeDrive(*disk.controller, disk, false); status != 0) return status;
  if (!isFree(disk)) return 18;
  if (arrayHandle != 0) {
    const auto array = arrays.find(arrayHandle);
    if (array == arrays.end()) return 3;
    if (array->second.controller != disk.controller) return 38;
    if (disks.at(array->second.disks.front()).sector != disk.sector) return 34;
    if (usableSize(disk) < usedOfEach(array->second)) return 37;
  }
  if (const Status status = judgeRoom(*engine, {handle}); status != 0) return status;
  disk.spare = true;
  disk.spareFor = arrayHandle;
  return changedIf(true);
}

Status Machine::unmarkSpare(Handle handle) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  if (usageOf(found->second) != VEX_DISK_USAGE_SPARE) return 18;
  found->second.spare = false;
  found->second.spareFor = 0;
  return changedIf(true);
}

Status Machine::assignPool(Handle handle, std::uint32_t pool) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  if (!isFree(found->second)) return 18;
  const bool isChange = found->second.pool != pool;
  found->second.pool = pool;
  return changedIf(isChange);
}

Status Machine::unlock(Handle handle, const std::string& password) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  Disk& disk = found->second;
  if (stateOf(disk) != VEX_DISK_STATE_LOCKED) return 18;
  if (disk.wrongPasswords >= 5) return 19;
  if (disk.password.empty() || disk.password != password) {
    ++disk.wrongPasswords;
    m_changed = true;
    return 20;
  }
  disk.wrongPasswords = 0;
  disk.locked = false;
  return changedIf(true);
}

Status Machine::resetSmart(Handle handle) {
  const auto found = disks.find(handle);
  if (found == disks.end() || !isListed(found->second)) return 3;
  if (stateOf(found->second) != VEX_DISK_STATE_SMART_EVENT_TRIGGERED) return 18;
  found->second.smart = false;
  return changedIf(true);
}

bool Machine::holdsUpSystem(const Disk& disk) const {
  if (disk.array == 0) return disk.system;
  const auto on = volumesOn(arrays.at(disk.array));
  return std::any_of(on.begin(), on.end(), [&](const Volume* volume) {
    const bool isSafe = volume->level != VEX_RAID_LEVEL_0 && stateOf(*volume) == VEX_VOLUME_STATE_NORMAL;
    return volume->system && !isSafe;
  });
}

Status Machine::removeAtPhy(Handle handle, std::uint32_t one) {
  if (one != 1) return 2;
  Disk& disk = disks.at(handle);
  if (disk.place != Place::IN) return 18;
  if (!disk.hasHotPlug) return 14;
  if (holdsUpSystem(disk)) return 18;
  return pull(handle);
}

Status Machine::setCache(Handle handle, std::uint32_t on) {
  const auto found = arrays.find(handle);
  if (found == arrays.end()) return 3;
  if (on > 1) return 2;
  Array& array = found->second;
  for (const Handle disk : array.disks) {
    if (!isUsable(disk)) return 18;
  }
  const std::uint32_t wanted = on == 1 ? VEX_WRITE_CACHE_ON : VEX_WRITE_CACHE_OFF;
  bool isChange = array.cache != wanted;
  array.cache = wanted;
  for (const Handle disk : array.disks) {
    isChange = isChange || disks.at(disk).cache != wanted;
    disks.at(disk).cache = wanted;
  }
  return changedIf(isChange);
}

void Machine::join(Array& array, Disk& disk) {
  array.disks.push_back(disk.handle);
  disk.array = array.handle;
  disk.spare = false;
  disk.spareFor = 0;
  disk.wanted = false;
  disk.cache = array.cache;
}

Status Machine::addDisks(Handle handle, const std::vector<Handle>& added) {
  const auto found = arrays.find(handle);
  if (found == arrays.end()) return 3;
  Array& array = found->second;
  if (const Status status = judgeDisks(added); status != 0) return status;
  const auto on = volumesOn(array);
  for (const Volume* const volume : on) {
    if (stateOf(*volume) != VEX_VOLUME_STATE_NORMAL) return 16;
  }
  const Engine& engine = *array.controller->engine;
  const std::size_t count = array.disks.size() + added.size();
  if (count > engine.maxDisksPerArray) return 24;
  bool isRaid0Only = true;
  for (const Volume* const volume : on) {
    if (!takes(*rowOf(engine, volume->level), count)) return 31;
    isRaid0Only = isRaid0Only && volume->level == VEX_RAID_LEVEL_0;
  }
  const std::uint64_t sector = disks.at(array.disks.front()).sector;
  for (const Handle disk : added) {
    const Status status = judge(disks.at(disk), *array.controller, sector, usedOfEach(array), isRaid0Only, 0);
    if (status != 0) return status;
  }
  if (const Status status = judgeRoom(engine, added); status != 0) return status;
  const std::vector<Handle> before = array.disks;
  for (const Handle disk : added) join(array, disks.at(disk));
  for (Volume* const volume : on) migrate(*volume, volume->level, before, volume->size, true);
  return changedIf(true);
}

void Machine::release(Disk& disk) const {
  disk.array = 0;
  disk.foreign = !isUsable(disk.handle);
}

void Machine::dissolve(Handle handle) {
  for (const Handle disk : arrays.at(handle).disks) release(disks.at(disk));
  for (auto& entry : disks) {
    Disk& disk = entry.second;
    if (disk.spareFor != handle) continue;
    disk.spare = false;
    disk.spareFor = 0;
  }
  arrays.erase(handle);
}

}  // namespace reference
