#include "engine/work.h"

#include <algorithm>

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

void finishVerify(Volume& volume, bool fix) {
  volume.verifyErrors = volume.latentErrors;
  volume.verifyBadBlocks = volume.latentBadBlocks;
  if (!fix) return;
  volume.latentErrors = 0;
  volume.latentBadBlocks = 0;
}

/// A migration ends with what is settled afterwards, since it may have to wait.
void finish(Volume& volume) {
  if (isMigrating(volume)) return;
  const Work work = std::move(*volume.work);
  volume.work.reset();
  switch (work.kind) {
    case WorkKind::REBUILD:
      bringUpToDate(volume, work.disk);
      break;
    case WorkKind::INITIALIZE:
      volume.initialized = true;
      break;
    case WorkKind::VERIFY:
    case WorkKind::VERIFY_AND_FIX:
      finishVerify(volume, work.kind == WorkKind::VERIFY_AND_FIX);
      break;
    case WorkKind::MIGRATE:
      break;
  }
}

/// What work of the volume has spent once so much more time has passed, in which no work ends.
std::uint64_t elapsedAfter(const Machine& machine, const Volume& volume, std::uint64_t milliseconds) {
  return volume.work->elapsedMs + (isRunning(machine, volume) ? milliseconds : 0);
}

/// From `elapsed` or a later moment to the next whole hundredth.
std::uint64_t timeToNextPercent(std::uint64_t elapsed, std::uint64_t total, std::uint64_t after) {
  const std::uint64_t hundredth = std::max<std::uint64_t>(1, total / 100);
  return after + hundredth - (elapsed + after) % hundredth;
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
  bool hasEnded = false;
  for (const Handle handle : runningVolumes(machine)) {
    Volume& volume = machine.volumes.at(handle);
    volume.work->elapsedMs = elapsedAfter(machine, volume, milliseconds);
    if (volume.work->elapsedMs < volume.work->totalMs) continue;
    finish(volume);
    hasEnded = true;
  }
  return hasEnded;
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
    const Work& work = *machine.volumes.at(handle).work;
    const std::uint64_t end = work.totalMs - work.elapsedMs;
    const std::uint64_t percent = timeToNextPercent(work.elapsedMs, work.totalMs, after);
    result.end = std::min(result.end.value_or(end), end);
    result.percent = std::min(result.percent.value_or(percent), percent);
  }
  return result;
}

std::uint64_t elapsedOf(const Machine& machine, const Volume& volume) {
  return elapsedAfter(machine, volume, machine.pendingMs);
}

std::uint32_t progressOf(const Machine& machine, const Volume& volume) {
  if (!volume.work) return 0;
  const Work& work = *volume.work;
  constexpr std::uint64_t kFull = 0xFFFFFFFF;
  // The time is shortened until the product fits 64 bits: beyond 2^31 ms nobody sees the difference.
  std::uint64_t elapsed = elapsedOf(machine, volume);
  std::uint64_t total = work.totalMs;
  for (; total > 0x7FFFFFFF; total >>= 1) elapsed >>= 1;
  return static_cast<std::uint32_t>(elapsed * kFull / total);
}

}  // namespace simulator
