#include <algorithm>

#include "simulator/reference/machine.h"

// What the machine does by itself.

namespace reference {
namespace {

bool contains(const std::vector<Handle>& handles, Handle handle) {
  return std::find(handles.begin(), handles.end(), handle) != handles.end();
}

/// Members whose content is not current, those first that went out of date first.
std::vector<Handle> outdated(const Volume& volume) {
  std::vector<std::pair<std::uint64_t, Handle>> found;
  for (const auto& part : volume.parts) {
    if (part.second.content != Content::CURRENT) found.emplace_back(part.second.since, part.first);
  }
  std::sort(found.begin(), found.end());
  std::vector<Handle> handles;
  for (const auto& each : found) handles.push_back(each.second);
  return handles;
}

}  // namespace

bool Machine::takeChanged() {
  const bool result = m_changed;
  m_changed = false;
  return result;
}

void Machine::begin(Volume& volume, Work work) {
  volume.work = std::move(work);
  const std::uint64_t bytes = footprint(volume);
  volume.work->total = std::max<std::uint64_t>(1, bytes * 1000 / (rate * kMiB));
  m_changed = true;
}

void Machine::stop(Volume& volume) {
  const bool repairs = volume.work->task == Task::REPAIR;
  if (repairs || volume.work->task == Task::VERIFY) {
    volume.errors = errorsOf(volume);
    volume.badBlocks = badBlocksOf(volume);
  }
  if (repairs) {
    volume.latentErrors -= volume.errors;
    volume.latentBadBlocks -= volume.badBlocks;
  }
  volume.work.reset();
}

void Machine::migrate(Volume& volume, std::uint32_t sourceLevel, const std::vector<Handle>& source,
                      std::uint64_t targetSize, bool rewrites) {
  Work work;
  work.task = Task::MIGRATE;
  work.sourceLevel = sourceLevel;
  work.source = source;
  work.targetSize = targetSize;
  work.rewrites = rewrites;
  if (volume.level == VEX_RAID_LEVEL_0) volume.initialized = true;
  begin(volume, std::move(work));
}

void Machine::settle(Volume& volume) {
  if (serves(volume)) {
    for (const Handle disk : arrays.at(volume.array).disks) {
      Part& part = volume.parts[disk];
      if (isUsable(disk) || part.content != Content::CURRENT) continue;
      const bool isNew = isMigrating(volume) && !contains(volume.work->source, disk);
      part = {isNew ? Content::BLANK : Content::OLD, ++m_moment};
    }
  }
  if (volume.work) {
    const Task task = volume.work->task;
    const bool isChecked = task == Task::INITIALIZE || task == Task::VERIFY || task == Task::REPAIR;
    const bool hasLost = !serves(volume) || isReduced(volume);
    if (isChecked && hasLost) stop(volume);
    if (task == Task::REBUILD && (!isReduced(volume) || !isUsable(volume.work->onto))) stop(volume);
  }
  if (isMigrating(volume) && serves(volume)) settleMigration(volume);
  rebuildOntoReturned(volume);
}

void Machine::settleMigration(Volume& volume) {
  Work& work = *volume.work;
  std::vector<Handle> returned = outdated(volume);
  returned.erase(
      std::remove_if(returned.begin(), returned.end(), [&](Handle disk) { return !isUsable(disk); }),
      returned.end());
  const auto isGone = [&](Handle disk) { return !isUsable(disk); };
  work.catchesUp.erase(std::remove_if(work.catchesUp.begin(), work.catchesUp.end(), isGone),
                       work.catchesUp.end());
  if (work.done == 0) work.catchesUp = returned;
  if (!arrivesSafely(volume, work.catchesUp)) {
    if (!arrivesSafely(volume, returned)) return;
    Work anew = work;
    anew.done = 0;
    anew.rest = 0;
    anew.catchesUp = returned;
    begin(volume, std::move(anew));
    return;
  }
  if (work.done < work.total) return;
  for (const Handle disk : work.catchesUp) volume.parts[disk].content = Content::CURRENT;
  for (auto& part : volume.parts) {
    if (part.second.content == Content::OLD) part.second.content = Content::BLANK;
  }
  volume.size = work.targetSize;
  if (work.rewrites) volume.initialized = true;
  volume.work.reset();
  m_changed = true;
}

void Machine::rebuildOntoReturned(Volume& volume) {
  if (volume.work || !serves(volume) || !isReduced(volume)) return;
  for (const Handle disk : outdated(volume)) {
    if (!isUsable(disk)) continue;
    Work work;
    work.task = Task::REBUILD;
    work.onto = disk;
    return begin(volume, std::move(work));
  }
}

/// Spares of this array first, then those of all, then what was put in; small before large.
Disk* Machine::chooseReplacement(const Array& array) {
  const auto rankOf = [&](const Disk& disk) {
    if (disk.spare && disk.spareFor == array.handle) return 0;
    if (disk.spare && disk.spareFor == 0) return 1;
    return disk.wanted && isFree(disk) && array.controller->rebuildsOnInsert ? 2 : 3;
  };
  const std::uint64_t sector = disks.at(array.disks.front()).sector;
  Disk* best = nullptr;
  for (auto& entry : disks) {
    Disk& disk = entry.second;
    if (rankOf(disk) > 2) continue;
    if (judge(disk, *array.controller, sector, usedOfEach(array), false, 0) != 0) continue;
    const auto key = [&](const Disk& each) { return std::pair(rankOf(each), usableSize(each)); };
    if (best == nullptr || key(disk) < key(*best)) best = &disk;
  }
  return best;
}

bool Machine::replaceLost(Array& array) {
  const auto on = volumesOn(array);
  const bool isCalled = on.empty() || std::any_of(on.begin(), on.end(), [&](const Volume* volume) {
                          return waits(*volume) || (!volume->work && serves(*volume) && isReduced(*volume));
                        });
  if (!isCalled || runningOn(array) > 0) return false;
  for (const Handle member : array.disks) {
    if (!isLostForGood(disks.at(member))) continue;
    Disk* const replacement = chooseReplacement(array);
    if (replacement == nullptr) return false;
    replace(array, disks.at(member), *replacement);
    return true;
  }
  return false;
}

void Machine::replace(Array& array, Disk& lost, Disk& replacement) {
  std::replace(array.disks.begin(), array.disks.end(), lost.handle, replacement.handle);
  lost.array = 0;
  lost.foreign = true;
  replacement.array = array.handle;
  replacement.spare = false;
  replacement.spareFor = 0;
  replacement.wanted = false;
  if (array.cache != 0) replacement.cache = array.cache;
  replacement.system = lost.system;
  lost.system = false;
  for (Volume* const volume : volumesOn(array)) {
    volume->parts.erase(lost.handle);
    volume->parts[replacement.handle] = {Content::BLANK, ++m_moment};
    if (!isMigrating(*volume)) continue;
    auto& source = volume->work->source;
    std::replace(source.begin(), source.end(), lost.handle, replacement.handle);
    auto& caught = volume->work->catchesUp;
    caught.erase(std::remove(caught.begin(), caught.end(), lost.handle), caught.end());
  }
  m_changed = true;
}

/// Some array of its controller that still serves has to replace a member, and could take it.
bool Machine::isWanted(const Disk& disk) const {
  if (!disk.controller->rebuildsOnInsert || !isFree(disk)) return false;
  return std::any_of(arrays.begin(), arrays.end(), [&](const auto& entry) {
    const Array& array = entry.second;
    if (array.controller != disk.controller) return false;
    const auto on = volumesOn(array);
    const bool isWorthIt =
        on.empty() || std::any_of(on.begin(), on.end(), [&](const Volume* each) { return serves(*each); });
    const bool hasLost = std::any_of(array.disks.begin(), array.disks.end(),
                                     [&](Handle member) { return isLostForGood(disks.at(member)); });
    const std::uint64_t sector = disks.at(array.disks.front()).sector;
    return isWorthIt && hasLost && judge(disk, *array.controller, sector, usedOfEach(array), false, 0) == 0;
  });
}

void Machine::settle() {
  for (auto& entry : volumes) settle(entry.second);
  for (auto& entry : arrays) {
    while (replaceLost(entry.second)) {
      for (Volume* const volume : volumesOn(entry.second)) settle(*volume);
    }
  }
  for (auto& entry : disks) {
    if (entry.second.wanted) entry.second.wanted = isWanted(entry.second);
  }
}

/// The time until some work ends.
std::optional<std::uint64_t> Machine::nextEnd() const {
  std::optional<std::uint64_t> next;
  for (const auto& entry : volumes) {
    const Volume& volume = entry.second;
    if (!isRunning(volume)) continue;
    const std::uint64_t whole = (volume.work->total - volume.work->done) * runningOn(arrays.at(volume.array));
    const std::uint64_t left = whole > volume.work->rest ? whole - volume.work->rest : 1;
    next = std::min(next.value_or(left), left);
  }
  return next;
}

void Machine::count(std::uint64_t milliseconds) {
  std::map<Handle, std::uint64_t> sharers;
  for (const auto& entry : volumes) {
    if (isRunning(entry.second)) sharers[entry.first] = runningOn(arrays.at(entry.second.array));
  }
  for (const auto& [handle, count] : sharers) {
    Work& work = *volumes.at(handle).work;
    const std::uint64_t time = work.rest + milliseconds;
    work.done = std::min(work.total, work.done + time / count);
    work.rest = time % count;
  }
}

bool Machine::finishDue() {
  bool hasEnded = false;
  for (auto& entry : volumes) {
    Volume& volume = entry.second;
    if (!volume.work || volume.work->done < volume.work->total || isMigrating(volume)) continue;
    if (volume.work->task == Task::REBUILD) volume.parts[volume.work->onto].content = Content::CURRENT;
    if (volume.work->task == Task::INITIALIZE) volume.initialized = true;
    stop(volume);
    hasEnded = true;
  }
  return hasEnded;
}

void Machine::pass(std::uint64_t milliseconds) {
  while (milliseconds > 0) {
    const auto next = nextEnd();
    if (!next) return;
    const std::uint64_t length = std::min(*next, milliseconds);
    milliseconds -= length;
    count(length);
    if (length < *next) return;
    finishDue();
    m_changed = true;
    settle();
  }
}

}  // namespace reference
