#ifndef MIRN_SIMULATOR_ENGINE_WORK_H
#define MIRN_SIMULATOR_ENGINE_WORK_H

#include <cstdint>
#include <optional>

#include "model/machine.h"

/// Long work in machine time, which is counted in milliseconds and moves only by `advance`.
namespace simulator {

/// How long the work takes on the volume as it stands, at the machine's rates.
std::uint64_t durationOf(const Machine& machine, const Volume& volume, WorkKind kind);

void startRebuild(Machine& machine, Volume& volume, Handle disk);
void startInitialize(Machine& machine, Volume& volume);
void startVerify(Machine& machine, Volume& volume, bool fix);

/// Begins the way from the source layout to the volume's present level, strip size and
/// array, and to `targetSize`.
void startMigration(Machine& machine, Volume& volume, RaidLevel sourceLevel, std::vector<Handle> sourceDisks,
                    std::uint64_t targetSize);

/// Moves the time on: work proceeds, ends and draws its consequences, in the order of time. Two steps do what
/// one step of the same length does.
void advance(Machine& machine, std::uint64_t milliseconds);

/// The time until the next work ends; nothing when none runs.
std::optional<std::uint64_t> timeToNextEnd(const Machine& machine);

/// The fraction done, in the full range of 32 bits; 0 without work.
std::uint32_t progressOf(const Volume& volume);

}  // namespace simulator

#endif
