#include <algorithm>

#include "simulator/reference/machine.h"

// The actions on volumes.

namespace reference {
namespace {

bool isOneLevel(std::uint32_t code) {
  return code == VEX_RAID_LEVEL_0 || code == VEX_RAID_LEVEL_1 || code == VEX_RAID_LEVEL_5 ||
         code == VEX_RAID_LEVEL_10;
}

bool isStripOf(const LevelRow& row, std::uint32_t strip) {
  const bool isOne = strip != 0 && (strip & (strip - 1)) == 0;
  return row.level == VEX_RAID_LEVEL_1 || (isOne && (row.strips & strip) != 0);
}

/// RAID 1 does not ask for a strip size and has its own.
std::uint32_t stripOf(const LevelRow& row, std::uint32_t strip) {
  return row.level == VEX_RAID_LEVEL_1 ? row.strips & (~row.strips + 1) : strip;
}

}  // namespace

Status Machine::judgeName(const std::string& name, Handle self) const {
  const auto isPlain = [](char c) { return c >= ' ' && c <= '~' && c != '\\'; };
  const bool isName = !name.empty() && name.size() <= 16 && name.front() != ' ' &&
                      std::all_of(name.begin(), name.end(), isPlain);
  if (!isName) return 5;
  const bool isTaken = std::any_of(volumes.begin(), volumes.end(), [&](const auto& entry) {
    return entry.second.name == name && entry.first != self;
  });
  return isTaken ? 40 : 0;
}

std::size_t Machine::volumesOf(const Controller& controller) const {
  return static_cast<std::size_t>(std::count_if(volumes.begin(), volumes.end(), [&](const auto& entry) {
    return arrays.at(entry.second.array).controller == &controller;
  }));
}

Status Machine::judgeSize(const Controller& controller, std::uint32_t level, std::size_t count,
                          std::uint64_t sizeMiB, std::uint64_t room, std::uint64_t& size) const {
  if (room == 0) return 6;
  const std::uint64_t slice = dataDisks(level, count);
  size = sizeMiB == 0 ? room * slice : sizeMiB * kMiB;
  if ((size + slice * kMiB - 1) / (slice * kMiB) * kMiB > room) return 6;
  return size > kTwoTb && !controller.twoTbVolumes ? 39 : 0;
}

Status Machine::judgeJournal(const Disk& drive, const Disk& member, Handle kept) const {
  if (drive.controller != member.controller) return 38;
  const bool isUnsupported =
      drive.condition == VEX_DISK_STATE_UNSUPPORTED || drive.condition == VEX_DISK_STATE_INCOMPATIBLE;
  if (isUnsupported || drive.isX8) return 29;
  if (drive.sector != member.sector) return 34;
  const std::uint32_t journals = journalsOn(drive.handle);
  if (!isFree(drive) && (usageOf(drive) != VEX_DISK_USAGE_JOURNALING_DRIVE || !isUsable(drive.handle)))
    return 18;
  const std::uint64_t others = journals - (drive.handle == kept ? 1 : 0);
  return others >= usableSize(drive) / (1024 * kMiB) ? 37 : 0;
}

Status Machine::judgeRwh(const Engine& engine, std::uint32_t level, std::uint32_t policy, Handle drive,
                         const std::vector<Handle>& members, Handle kept) const {
  if (policy > 2) return 28;
  if (policy == 0) return 0;
  if ((engine.policies & (1U << policy)) == 0) return 28;
  if (level != VEX_RAID_LEVEL_5) return 27;
  if (policy == 1) return 0;
  if (drive == 0 || std::count(members.begin(), members.end(), drive) > 0) return 43;
  const auto found = disks.find(drive);
  if (found == disks.end() || !isListed(found->second)) return 3;
  return judgeJournal(found->second, disks.at(members.front()), kept);
}

Status Machine::judgeWish(const Controller& controller, const Wish& wish, const LevelRow*& level) const {
  if (controller.engine == nullptr) return 14;
  if (const Status status = judgeName(wish.name, 0); status != 0) return status;
  if (!isOneLevel(wish.level)) return 7;
  level = rowOf(*controller.engine, wish.level);
  return level == nullptr ? 27 : 0;
}

Volume& Machine::make(const Array& array, const Wish& wish, std::uint64_t size, const LevelRow& level,
                      Handle handle) {
  Volume volume;
  volume.handle = handle;
  volume.name = wish.name;
  volume.array = array.handle;
  volume.level = wish.level;
  volume.strip = stripOf(level, wish.strip);
  volume.size = size;
  volume.policy = wish.policy;
  volume.journal = wish.policy == 2 ? wish.journal : 0;
  volume.initialized = wish.level == VEX_RAID_LEVEL_0;
  const auto on = volumesOn(array);
  const auto isTaken = [&](const Volume* other) { return other->ordinal == volume.ordinal; };
  while (std::any_of(on.begin(), on.end(), isTaken)) ++volume.ordinal;
  return volumes[handle] = volume;
}

Status Machine::create(Handle handle, const Wish& wish, Born born) {
  const auto found = arrays.find(handle);
  if (found == arrays.end()) return 3;
  const Array& array = found->second;
  const LevelRow* level = nullptr;
  if (const Status status = judgeWish(*array.controller, wish, level); status != 0) return status;
  const Engine& engine = *array.controller->engine;
  if (!takes(*level, array.disks.size())) return 31;
  if (volumesOn(array).size() >= engine.maxVolumesPerArray) return 24;
  if (volumesOf(*array.controller) >= engine.maxVolumesPerController) return 24;
  if (!isStripOf(*level, wish.strip)) return 4;
  if (isBusy(array)) return 18;
  for (const Handle disk : array.disks) {
    if (disks.at(disk).isX8 && wish.level != VEX_RAID_LEVEL_0) return 29;
    if (!isUsable(disk)) return 18;
  }
  const Status rwh = judgeRwh(engine, wish.level, wish.policy, wish.journal, array.disks, 0);
  if (rwh != 0) return rwh;
  std::uint64_t size = 0;
  const Status status =
      judgeSize(*array.controller, wish.level, array.disks.size(), wish.sizeMiB, freeOfEach(array), size);
  if (status != 0) return status;
  make(array, wish, size, *level, born.volume);
  return changedIf(true);
}

Status Machine::createFromDisks(const std::vector<Handle>& members, Handle source, const Wish& wish,
                                Born born) {
  if (const Status status = judgeDisks(members); status != 0) return status;
  Controller& controller = *disks.at(members.front()).controller;
  const LevelRow* level = nullptr;
  if (const Status status = judgeWish(controller, wish, level); status != 0) return status;
  const Engine& engine = *controller.engine;
  if (members.size() > engine.maxDisksPerArray) return 24;
  if (!takes(*level, members.size())) return 31;
  if (engine.maxVolumesPerArray == 0 || volumesOf(controller) >= engine.maxVolumesPerController) return 24;
  if (!isStripOf(*level, wish.strip)) return 4;
  if (source != 0 && !engine.fromExisting) return 14;
  if (source != 0 && std::count(members.begin(), members.end(), source) == 0) return 43;
  const std::uint64_t least = source == 0 ? kMiB : usableSize(disks.at(source));
  const std::uint64_t sector = disks.at(members.front()).sector;
  std::uint64_t smallest = UINT64_MAX;
  for (const Handle disk : members) {
    const Status status =
        judge(disks.at(disk), controller, sector, least, wish.level == VEX_RAID_LEVEL_0, source);
    if (status != 0) return status;
    smallest = std::min(smallest, usableSize(disks.at(disk)));
  }
  if (const Status status = judgeRoom(engine, members); status != 0) return status;
  const Status rwh = judgeRwh(engine, wish.level, wish.policy, wish.journal, members, 0);
  if (rwh != 0) return rwh;
  std::uint64_t size = 0;
  const Status status = judgeSize(controller, wish.level, members.size(), wish.sizeMiB, smallest, size);
  if (status != 0) return status;
  if (source != 0 && size < least) return 6;
  Array& array = arrays[born.array];
  array.handle = born.array;
  array.controller = &controller;
  for (int number = 0; array.name.empty(); ++number) {
    const std::string name = "Array_" + std::to_string(number);
    const auto bears = [&](const auto& entry) { return entry.second.name == name; };
    if (std::none_of(arrays.begin(), arrays.end(), bears)) array.name = name;
  }
  for (const Handle disk : members) join(array, disks.at(disk));
  Volume& volume = make(array, wish, size, *level, born.volume);
  if (source != 0) {
    volume.size = least;
    volume.system = disks.at(source).system;
    migrate(volume, VEX_RAID_LEVEL_0, {source}, size, true);
  }
  return changedIf(true);
}

Status Machine::remove(Handle handle) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  if (found->second.system) return 22;
  if (isMigrating(found->second) && isRunning(found->second)) return 18;
  const Array& array = arrays.at(found->second.array);
  volumes.erase(found);
  if (volumesOn(array).empty() && !array.controller->engine->emptyArrays) dissolve(array.handle);
  return changedIf(true);
}

Status Machine::rebuild(Handle handle, Handle diskHandle) {
  const auto found = volumes.find(handle);
  const auto disk = disks.find(diskHandle);
  if (found == volumes.end() || disk == disks.end() || !isListed(disk->second)) return 3;
  Array& array = arrays.at(found->second.array);
  const bool isCalled = stateOf(found->second) == VEX_VOLUME_STATE_DEGRADED || waits(found->second);
  if (!isCalled || runningOn(array) > 0) return 18;
  const auto lost = std::find_if(array.disks.begin(), array.disks.end(),
                                 [&](Handle member) { return isLostForGood(disks.at(member)); });
  if (lost == array.disks.end()) return 18;
  const std::uint64_t sector = disks.at(*lost).sector;
  const Status status = judge(disk->second, *array.controller, sector, usedOfEach(array), false, 0);
  if (status != 0) return status;
  replace(array, disks.at(*lost), disk->second);
  return changedIf(true);
}

Status Machine::initialize(Handle handle) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  if (volume.level == VEX_RAID_LEVEL_0) return 27;
  if (stateOf(volume) != VEX_VOLUME_STATE_NORMAL) return 18;
  volume.initialized = false;
  Work work;
  work.task = Task::INITIALIZE;
  begin(volume, work);
  return changedIf(true);
}

Status Machine::verify(Handle handle, std::uint32_t repair) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  if (repair > 1) return 2;
  if (volume.level == VEX_RAID_LEVEL_0) return 27;
  if (stateOf(volume) != VEX_VOLUME_STATE_NORMAL || !volume.initialized) return 18;
  volume.errors = 0;
  volume.badBlocks = 0;
  Work work;
  work.task = repair == 1 ? Task::REPAIR : Task::VERIFY;
  begin(volume, work);
  return changedIf(true);
}

Status Machine::cancelVerify(Handle handle) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  const bool isVerifying =
      volume.work && (volume.work->task == Task::VERIFY || volume.work->task == Task::REPAIR);
  if (!isVerifying) return 18;
  stop(volume);
  return changedIf(true);
}

Status Machine::markVolumeNormal(Handle handle) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  const std::uint32_t state = stateOf(volume);
  if (state != VEX_VOLUME_STATE_FAILED && state != VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK) return 18;
  const Array& array = arrays.at(volume.array);
  for (const Handle disk : array.disks) {
    const auto part = volume.parts.find(disk);
    const bool isBlank = part != volume.parts.end() && part->second.content == Content::BLANK;
    if (isBlank || (!isUsable(disk) && !maySomedayServe(disks.at(disk)))) return 30;
  }
  for (const Handle disk : array.disks) takeAsNormal(disks.at(disk));
  volume.parts.clear();
  if (volume.work) volume.work->catchesUp.clear();
  if (volume.level != VEX_RAID_LEVEL_0) volume.initialized = false;
  return changedIf(true);
}

Status Machine::rename(Handle handle, const std::string& name) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  if (const Status status = judgeName(name, handle); status != 0) return status;
  const bool isChange = found->second.name != name;
  found->second.name = name;
  return changedIf(isChange);
}

Status Machine::setPolicy(Handle handle, std::uint32_t policy) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  if (policy < 1 || policy > 3) return 44;
  if (!serves(found->second)) return 18;
  const bool isChange = found->second.cache != policy;
  found->second.cache = policy;
  return changedIf(isChange);
}

Status Machine::setRwh(Handle handle, Handle drive, std::uint32_t policy) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  const Array& array = arrays.at(volume.array);
  const Status status =
      judgeRwh(*array.controller->engine, volume.level, policy, drive, array.disks, volume.journal);
  if (status != 0) return status;
  if (!serves(volume)) return 18;
  const Handle journal = policy == 2 ? drive : 0;
  const bool isChange = volume.policy != policy || volume.journal != journal;
  volume.policy = policy;
  volume.journal = journal;
  return changedIf(isChange);
}

Status Machine::expand(Handle handle, std::uint64_t sizeMiB) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  const Array& array = arrays.at(volume.array);
  if (stateOf(volume) != VEX_VOLUME_STATE_NORMAL || isBusy(array)) return 18;
  std::uint64_t size = 0;
  const Status status = judgeSize(*array.controller, volume.level, array.disks.size(), sizeMiB,
                                  footprint(volume) + freeOfEach(array), size);
  if (status != 0) return status;
  if (size <= volume.size) return 6;
  migrate(volume, volume.level, array.disks, size, false);
  return changedIf(true);
}

Status Machine::modify(Handle handle, std::uint32_t level, std::uint32_t strip, std::uint64_t sizeMiB,
                       const std::vector<Handle>& added) {
  const auto found = volumes.find(handle);
  if (found == volumes.end()) return 3;
  Volume& volume = found->second;
  Array& array = arrays.at(volume.array);
  const Controller& controller = *array.controller;
  const Engine& engine = *controller.engine;
  if (!isOneLevel(level)) return 7;
  const LevelRow* const target = rowOf(engine, level);
  if (target == nullptr) return 27;
  if (stateOf(volume) != VEX_VOLUME_STATE_NORMAL || volumesOn(array).size() != 1) return 18;
  if (!added.empty()) {
    if (const Status status = judgeDisks(added); status != 0) return status;
  }
  const LevelRow& present = *rowOf(engine, volume.level);
  if ((present.targets & level) == 0) return 7;
  if (added.empty() && (present.needsDisk & level) != 0) return 31;
  const std::size_t count = array.disks.size() + added.size();
  if (!takes(*target, count)) return 31;
  if (!isStripOf(*target, strip)) return 4;
  const auto isX8 = [&](Handle disk) { return disks.at(disk).isX8; };
  const bool isRaid0 = level == VEX_RAID_LEVEL_0;
  if (!isRaid0 && std::any_of(array.disks.begin(), array.disks.end(), isX8)) return 29;
  std::uint64_t room = memberSize(array);
  for (const Handle disk : added) {
    const Status status = judge(disks.at(disk), controller, disks.at(array.disks.front()).sector,
                                footprint(volume), isRaid0, 0);
    if (status != 0) return status;
    room = std::min(room, usableSize(disks.at(disk)));
  }
  if (count > engine.maxDisksPerArray) return 24;
  if (const Status status = judgeRoom(engine, added); status != 0) return status;
  std::uint64_t size = room * dataDisks(level, count);
  if (sizeMiB == 0 && !controller.twoTbVolumes) size = std::min(size, kTwoTb);
  if (sizeMiB != 0) {
    const Status status = judgeSize(controller, level, count, sizeMiB, room, size);
    if (status != 0) return status;
  }
  if (size < volume.size) return 6;
  const std::uint32_t newStrip = stripOf(*target, strip);
  if (level == volume.level && newStrip == volume.strip && added.empty() && size == volume.size) return 2;
  const std::uint32_t before = volume.level;
  const std::vector<Handle> source = array.disks;
  for (const Handle disk : added) join(array, disks.at(disk));
  volume.level = level;
  volume.strip = newStrip;
  if (level != VEX_RAID_LEVEL_5) {
    volume.policy = 0;
    volume.journal = 0;
  }
  migrate(volume, before, source, size, true);
  return changedIf(true);
}

}  // namespace reference
