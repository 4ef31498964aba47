#include "engine/work.h"

#include <algorithm>
#include <limits>

#include "engine/settle.h"
#include "model/capacity.h"
#include "model/links.h"
#include "model/redundancy.h"

namespace simulator {
namespace {

std::uint64_t rateOf(const Rates& rates, WorkKind kind) {
  switch (kind) {
    case WorkKind::REBUILD:
      return rates.rebuild;
    case WorkKind::INITIALIZE:
      return rates.initialize;
    case WorkKind::VERIFY:
    case WorkKind::VERIFY_AND_FIX:
      return rates.verify;
    case WorkKind::MIGRATE:
      return rates.migrate;
  }
  return 1;
}

void start(Machine& machine, Volume& volume, Work work) {
  volume.work = std::move(work);
  volume.work->totalMs = durationOf(machine, volume, volume.work->kind);
  ++machine.changes;
}

bool isVerifying(const Volume& volume) {
  return volume.work &&
         (volume.work->kind == WorkKind::VERIFY || volume.work->kind == WorkKind::VERIFY_AND_FIX);
}

/// What a verification has found by now stays, and what it has repaired is repaired.
void keepFindings(const Machine& machine, Volume& volume) {
  volume.verifyErrors = verifyErrorsOf(machine, volume);
  volume.verifyBadBlocks = verifyBadBlocksOf(machine, volume);
  if (volume.work->kind != WorkKind::VERIFY_AND_FIX) return;
  volume.latentErrors -= volume.verifyErrors;
  volume.latentBadBlocks -= volume.verifyBadBlocks;
}

/// A migration ends with what is settled afterwards, since it may have to wait.
void finish(const Machine& machine, Volume& volume) {
  if (isMigrating(volume)) return;
  if (volume.work->kind == WorkKind::REBUILD) bringUpToDate(volume, volume.work->disk);
  if (volume.work->kind == WorkKind::INITIALIZE) volume.initialized = true;
  stopWork(machine, volume);
}

/// The sum of so many equal parts, or the largest number when that is larger.
std::uint64_t timesOf(std::uint64_t part, std::uint64_t count) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  return part > kMost / count ? kMost : part * count;
}

/// How many volumes of the array are at work: they share the rate of its disks.
std::uint64_t sharersOf(const Machine& machine, const Volume& volume) {
  const auto& volumes = machine.arrays.at(volume.array).volumes;
  return static_cast<std::uint64_t>(std::count_if(volumes.begin(), volumes.end(), [&](Handle other) {
    return isRunning(machine, machine.volumes.at(other));
  }));
}

struct Spent {
  std::uint64_t elapsedMs;
  std::uint64_t carryMs;
};

/// What running work of the volume has spent once so much more time has passed, in which no work ends. With
/// n that share the disks it goes on a millisecond in n; what is left is counted later.
Spent spentAfter(const Work& work, std::uint64_t sharers, std::uint64_t milliseconds) {
  const std::uint64_t time = work.carryMs + milliseconds;
  return {work.elapsedMs + time / sharers, time % sharers};
}

/// The time until running work has come so much further from what it has spent.
std::uint64_t timeFor(std::uint64_t distance, std::uint64_t sharers, std::uint64_t carryMs) {
  const std::uint64_t time = timesOf(distance, sharers);
  return time > carryMs ? time - carryMs : 1;
}

std::uint64_t toNextHundredth(std::uint64_t elapsed, std::uint64_t total) {
  const std::uint64_t hundredth = std::max<std::uint64_t>(1, total / 100);
  return hundredth - elapsed % hundredth;
}

std::vector<Handle> runningVolumes(const Machine& machine) {
  std::vector<Handle> running;
  for (const auto& entry : machine.volumes) {
    if (isRunning(machine, entry.second)) running.push_back(entry.first);
  }
  return running;
}

/// Moves on by a time in which no work ends early.
bool step(Machine& machine, std::uint64_t milliseconds) {
  const std::vector<Handle> running = runningVolumes(machine);
  std::vector<Spent> spent;
  spent.reserve(running.size());
  for (const Handle handle : running) {
    const Volume& volume = machine.volumes.at(handle);
    spent.push_back(spentAfter(*volume.work, sharersOf(machine, volume), milliseconds));
  }
  bool hasEnded = false;
  for (std::size_t i = 0; i < running.size(); ++i) {
    Volume& volume = machine.volumes.at(running[i]);
    volume.work->elapsedMs = std::min(spent[i].elapsedMs, volume.work->totalMs);
    volume.work->carryMs = spent[i].carryMs;
    if (volume.work->elapsedMs < volume.work->totalMs) continue;
    finish(machine, volume);
    hasEnded = true;
  }
  return hasEnded;
}

/// So much of `whole` as the work has done of its own.
std::uint32_t partDone(const Machine& machine, const Volume& volume, std::uint64_t whole) {
  // The time is shortened until the product fits 64 bits: beyond 2^31 ms nobody sees the difference.
  std::uint64_t elapsed = elapsedOf(machine, volume);
  std::uint64_t total = volume.work->totalMs;
  for (; total > 0x7FFFFFFF; total >>= 1) elapsed >>= 1;
  return static_cast<std::uint32_t>(elapsed * whole / total);
}

}  // namespace

std::uint64_t durationOf(const Machine& machine, const Volume& volume, WorkKind kind) {
  const std::uint64_t perSecond = kMiB * std::max<std::uint64_t>(rateOf(machine.rates, kind), 1);
  const std::uint64_t bytes = footprintOf(machine, volume);
  return std::max<std::uint64_t>(1, bytes / perSecond * 1000 + bytes % perSecond * 1000 / perSecond);
}

void startRebuild(Machine& machine, Volume& volume, Handle disk) {
  Work work;
  work.kind = WorkKind::REBUILD;
  work.disk = disk;
  start(machine, volume, std::move(work));
}

void startInitialize(Machine& machine, Volume& volume) {
  Work work;
  work.kind = WorkKind::INITIALIZE;
  volume.initialized = false;
  start(machine, volume, std::move(work));
}

void startVerify(Machine& machine, Volume& volume, bool fix) {
  Work work;
  work.kind = fix ? WorkKind::VERIFY_AND_FIX : WorkKind::VERIFY;
  volume.verifyErrors = 0;
  volume.verifyBadBlocks = 0;
  start(machine, volume, std::move(work));
}

void startMigration(Machine& machine, Volume& volume, RaidLevel sourceLevel, std::vector<Handle> sourceDisks,
                    std::uint64_t targetSize, bool rewrites) {
  Work work;
  work.kind = WorkKind::MIGRATE;
  work.sourceLevel = sourceLevel;
  work.sourceDisks = std::move(sourceDisks);
  work.targetSize = targetSize;
  work.rewrites = rewrites;
  if (!isRedundant(volume.level)) volume.initialized = true;
  start(machine, volume, std::move(work));
}

void advance(Machine& machine, std::uint64_t milliseconds) {
  while (milliseconds > 0) {
    const auto next = upcoming(machine).end;
    if (!next) return;
    const std::uint64_t length = std::min(*next, milliseconds);
    milliseconds -= length;
    if (!step(machine, length)) continue;
    ++machine.changes;
    settle(machine);
  }
}

Upcoming upcoming(const Machine& machine, std::uint64_t after) {
  Upcoming result;
  for (const Handle handle : runningVolumes(machine)) {
    const Volume& volume = machine.volumes.at(handle);
    const Work& work = *volume.work;
    const std::uint64_t sharers = sharersOf(machine, volume);
    const std::uint64_t end = timeFor(work.totalMs - work.elapsedMs, sharers, work.carryMs);
    const Spent spent = spentAfter(work, sharers, after);
    const std::uint64_t percent =
        after + timeFor(toNextHundredth(spent.elapsedMs, work.totalMs), sharers, spent.carryMs);
    result.end = std::min(result.end.value_or(end), end);
    result.percent = std::min(result.percent.value_or(percent), percent);
  }
  return result;
}

void stopWork(const Machine& machine, Volume& volume) {
  if (isVerifying(volume)) keepFindings(machine, volume);
  volume.work.reset();
}

std::uint64_t elapsedOf(const Machine& machine, const Volume& volume) {
  if (machine.pendingMs == 0 || !isRunning(machine, volume)) return volume.work->elapsedMs;
  return spentAfter(*volume.work, sharersOf(machine, volume), machine.pendingMs).elapsedMs;
}

std::uint32_t progressOf(const Machine& machine, const Volume& volume) {
  return volume.work ? partDone(machine, volume, 0xFFFFFFFF) : 0;
}

std::uint32_t verifyErrorsOf(const Machine& machine, const Volume& volume) {
  return isVerifying(volume) ? partDone(machine, volume, volume.latentErrors) : volume.verifyErrors;
}

std::uint32_t verifyBadBlocksOf(const Machine& machine, const Volume& volume) {
  return isVerifying(volume) ? partDone(machine, volume, volume.latentBadBlocks) : volume.verifyBadBlocks;
}

}  // namespace simulator
