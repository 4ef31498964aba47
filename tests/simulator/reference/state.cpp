#include <algorithm>

#include "simulator/reference/machine.h"

// What the records show.

namespace reference {
namespace {

bool isOffline(const Disk& disk) {
  return disk.condition == VEX_DISK_STATE_OFFLINE || disk.condition == VEX_DISK_STATE_MANUAL_OFFLINE;
}

bool isUnsupported(const Disk& disk) {
  return disk.condition == VEX_DISK_STATE_UNSUPPORTED || disk.condition == VEX_DISK_STATE_INCOMPATIBLE;
}

/// Disks that stand in for each other, and how many of them the data need.
struct Group {
  std::vector<Handle> disks;
  std::size_t needs;
};

std::vector<Group> groupsOf(std::uint32_t level, const std::vector<Handle>& disks) {
  if (level == VEX_RAID_LEVEL_1) return {{disks, 1}};
  if (level == VEX_RAID_LEVEL_5) return {{disks, disks.size() - 1}};
  std::vector<Group> groups;
  const std::size_t width = level == VEX_RAID_LEVEL_10 ? 2 : 1;
  for (std::size_t i = 0; i < disks.size(); i += width) groups.push_back({{}, 1});
  for (std::size_t i = 0; i < disks.size(); ++i) groups[i / width].disks.push_back(disks[i]);
  return groups;
}

enum class Loss { NONE, BORNE, TOO_MUCH };

template <class Has>
Loss lossOf(std::uint32_t level, const std::vector<Handle>& disks, Has has) {
  Loss loss = Loss::NONE;
  for (const Group& group : groupsOf(level, disks)) {
    const auto held = static_cast<std::size_t>(std::count_if(group.disks.begin(), group.disks.end(), has));
    if (held < group.needs) return Loss::TOO_MUCH;
    if (held < group.disks.size()) loss = Loss::BORNE;
  }
  return loss;
}

bool isCurrent(const Volume& volume, Handle disk) {
  const auto part = volume.parts.find(disk);
  return part == volume.parts.end() || part->second.content == Content::CURRENT;
}

/// Where the data lie now.
std::uint32_t levelNow(const Volume& volume) {
  return volume.work && volume.work->task == Task::MIGRATE ? volume.work->sourceLevel : volume.level;
}

const std::vector<Handle>& disksNow(const Machine& machine, const Volume& volume) {
  const bool migrates = volume.work && volume.work->task == Task::MIGRATE;
  return migrates ? volume.work->source : machine.arrays.at(volume.array).disks;
}

template <class MayServe>
Loss lossNow(const Machine& machine, const Volume& volume, MayServe mayServe) {
  return lossOf(levelNow(volume), disksNow(machine, volume),
                [&](Handle disk) { return mayServe(machine.disks.at(disk)) && isCurrent(volume, disk); });
}

std::uint64_t ceilDiv(std::uint64_t size, std::uint64_t by) { return (size + by - 1) / by; }

/// What a volume takes of each disk.
std::uint64_t shareOf(std::uint32_t level, std::size_t disks, std::uint64_t size) {
  return ceilDiv(size, dataDisks(level, disks) * kMiB) * kMiB;
}

std::uint32_t partOf(const Work& work, std::uint64_t whole) {
  return static_cast<std::uint32_t>(work.done * whole / work.total);
}

bool isVerifying(const Volume& volume) {
  return volume.work && (volume.work->task == Task::VERIFY || volume.work->task == Task::REPAIR);
}

}  // namespace

std::uint64_t usableSize(const Disk& disk) { return (disk.size - 8 * kMiB) / kMiB * kMiB; }

std::uint64_t dataDisks(std::uint32_t level, std::size_t count) {
  if (level == VEX_RAID_LEVEL_0) return count;
  if (level == VEX_RAID_LEVEL_1) return 1;
  return level == VEX_RAID_LEVEL_10 ? count / 2 : count - 1;
}

const LevelRow* rowOf(const Engine& engine, std::uint32_t level) {
  for (const LevelRow& row : engine.levels) {
    if (row.level == level) return &row;
  }
  return nullptr;
}

bool takes(const LevelRow& row, std::size_t count) {
  const bool isEven = count % 2 == 0;
  if (row.level == VEX_RAID_LEVEL_10 && !isEven) return false;
  return count >= row.minDisks && count <= row.maxDisks && (isEven ? row.even : row.odd);
}

std::uint32_t Machine::stateOf(const Disk& disk) const {
  if (disk.place != Place::IN) return VEX_DISK_STATE_MISSING;
  if (disk.failed) return VEX_DISK_STATE_FAILED;
  if (isUnsupported(disk)) return disk.condition;
  if (disk.locked) return VEX_DISK_STATE_LOCKED;
  if (disk.condition != VEX_DISK_STATE_NORMAL) return disk.condition;
  return disk.smart ? VEX_DISK_STATE_SMART_EVENT_TRIGGERED : VEX_DISK_STATE_NORMAL;
}

std::uint32_t Machine::usageOf(const Disk& disk) const {
  if (disk.array != 0) return VEX_DISK_USAGE_ARRAY_MEMBER;
  if (journalsOn(disk.handle) > 0) return VEX_DISK_USAGE_JOURNALING_DRIVE;
  if (disk.spare) return VEX_DISK_USAGE_SPARE;
  return disk.foreign ? VEX_DISK_USAGE_OFFLINE_ARRAY : VEX_DISK_USAGE_PASS_THROUGH;
}

std::uint32_t Machine::journalsOn(Handle disk) const {
  return static_cast<std::uint32_t>(std::count_if(
      volumes.begin(), volumes.end(), [&](const auto& entry) { return entry.second.journal == disk; }));
}

bool Machine::isListed(const Disk& disk) const {
  return disk.place == Place::IN || disk.array != 0 || journalsOn(disk.handle) > 0;
}

bool Machine::isUsable(Handle handle) const {
  const std::uint32_t state = stateOf(disks.at(handle));
  return state == VEX_DISK_STATE_NORMAL || state == VEX_DISK_STATE_SMART_EVENT_TRIGGERED;
}

bool Machine::isFree(const Disk& disk) const {
  return stateOf(disk) == VEX_DISK_STATE_NORMAL && usageOf(disk) == VEX_DISK_USAGE_PASS_THROUGH &&
         !disk.system;
}

/// Marking as normal would make it serve.
bool Machine::maySomedayServe(const Disk& disk) const {
  if (disk.place != Place::IN || disk.locked || isUnsupported(disk)) return false;
  if (isOffline(disk)) return true;
  return disk.failed && disk.condition == VEX_DISK_STATE_NORMAL;
}

bool Machine::isLostForGood(const Disk& disk) const {
  return !isUsable(disk.handle) && stateOf(disk) != VEX_DISK_STATE_LOCKED;
}

std::vector<const Volume*> Machine::volumesOn(const Array& array) const {
  std::vector<const Volume*> found;
  for (const auto& entry : volumes) {
    if (entry.second.array == array.handle) found.push_back(&entry.second);
  }
  return found;
}

std::vector<Volume*> Machine::volumesOn(const Array& array) {
  std::vector<Volume*> found;
  for (auto& entry : volumes) {
    if (entry.second.array == array.handle) found.push_back(&entry.second);
  }
  return found;
}

std::uint64_t Machine::footprint(const Volume& volume) const {
  const std::size_t members = arrays.at(volume.array).disks.size();
  if (!isMigrating(volume)) return shareOf(volume.level, members, volume.size);
  const Work& work = *volume.work;
  return std::max(shareOf(work.sourceLevel, work.source.size(), volume.size),
                  shareOf(volume.level, members, work.targetSize));
}

std::uint64_t Machine::memberSize(const Array& array) const {
  std::uint64_t smallest = UINT64_MAX;
  for (const Handle disk : array.disks) smallest = std::min(smallest, usableSize(disks.at(disk)));
  return smallest;
}

std::uint64_t Machine::usedOfEach(const Array& array) const {
  std::uint64_t used = 0;
  for (const Volume* const volume : volumesOn(array)) used += footprint(*volume);
  return used;
}

std::uint64_t Machine::freeOfEach(const Array& array) const { return memberSize(array) - usedOfEach(array); }

std::uint64_t Machine::freeOf(const Disk& disk) const {
  if (disk.array != 0) return freeOfEach(arrays.at(disk.array));
  const bool isForVolumes = usageOf(disk) == VEX_DISK_USAGE_PASS_THROUGH && isUsable(disk.handle);
  return isForVolumes ? usableSize(disk) : 0;
}

bool Machine::serves(const Volume& volume) const {
  return lossNow(*this, volume, [&](const Disk& disk) { return isUsable(disk.handle); }) != Loss::TOO_MUCH;
}

bool Machine::isReduced(const Volume& volume) const {
  return lossNow(*this, volume, [&](const Disk& disk) { return isUsable(disk.handle); }) == Loss::BORNE;
}

bool Machine::isMigrating(const Volume& volume) const {
  return volume.work && volume.work->task == Task::MIGRATE;
}

bool Machine::isRunning(const Volume& volume) const {
  return volume.work && volume.work->done < volume.work->total && serves(volume);
}

/// At its end, but for members that it cannot do without.
bool Machine::waits(const Volume& volume) const {
  return isMigrating(volume) && serves(volume) && volume.work->done >= volume.work->total;
}

bool Machine::arrivesSafely(const Volume& volume, const std::vector<Handle>& caughtUp) const {
  return lossOf(volume.level, arrays.at(volume.array).disks, [&](Handle disk) {
           const bool isWritten = std::count(caughtUp.begin(), caughtUp.end(), disk) > 0;
           return isUsable(disk) && (isCurrent(volume, disk) || isWritten);
         }) != Loss::TOO_MUCH;
}

bool Machine::isBusy(const Array& array) const {
  const auto on = volumesOn(array);
  return std::any_of(on.begin(), on.end(), [](const Volume* volume) { return volume->work.has_value(); });
}

std::uint64_t Machine::runningOn(const Array& array) const {
  const auto on = volumesOn(array);
  return static_cast<std::uint64_t>(
      std::count_if(on.begin(), on.end(), [&](const Volume* volume) { return isRunning(*volume); }));
}

std::uint32_t Machine::stateOf(const Volume& volume) const {
  if (serves(volume)) {
    static const std::uint32_t kAtWork[] = {VEX_VOLUME_STATE_REBUILDING, VEX_VOLUME_STATE_INITIALIZING,
                                            VEX_VOLUME_STATE_VERIFYING, VEX_VOLUME_STATE_VERIFYING_AND_FIXING,
                                            VEX_VOLUME_STATE_GENERAL_MIGRATION};
    if (volume.work) return kAtWork[static_cast<int>(volume.work->task)];
    return isReduced(volume) ? VEX_VOLUME_STATE_DEGRADED : VEX_VOLUME_STATE_NORMAL;
  }
  const auto unlocked = [&](const Disk& disk) {
    const bool isOpened = stateOf(disk) == VEX_DISK_STATE_LOCKED && disk.condition == VEX_DISK_STATE_NORMAL;
    return isUsable(disk.handle) || isOpened;
  };
  if (lossNow(*this, volume, unlocked) != Loss::TOO_MUCH) return VEX_VOLUME_STATE_LOCKED;
  const auto marked = [&](const Disk& disk) {
    return isUsable(disk.handle) || (disk.failed && maySomedayServe(disk));
  };
  const bool mayComeBack =
      levelNow(volume) == VEX_RAID_LEVEL_0 && lossNow(*this, volume, marked) != Loss::TOO_MUCH;
  return mayComeBack ? VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK : VEX_VOLUME_STATE_FAILED;
}

std::uint32_t Machine::progressOf(const Volume& volume) const {
  return volume.work ? partOf(*volume.work, 0xFFFFFFFF) : 0;
}

std::uint32_t Machine::errorsOf(const Volume& volume) const {
  return isVerifying(volume) ? partOf(*volume.work, volume.latentErrors) : volume.errors;
}

std::uint32_t Machine::badBlocksOf(const Volume& volume) const {
  return isVerifying(volume) ? partOf(*volume.work, volume.latentBadBlocks) : volume.badBlocks;
}

}  // namespace reference
