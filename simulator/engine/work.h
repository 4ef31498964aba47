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

/// Begins the way from the source layout to the volume's present level, strip size and array, and to
/// `targetSize`. What is written anew is initialised at the end, and so is always what has no redundancy.
void startMigration(Machine& machine, Volume& volume, RaidLevel sourceLevel, std::vector<Handle> sourceDisks,
                    std::uint64_t targetSize, bool rewrites = true);

/// Moves the time on: work proceeds, ends and draws its consequences, in the order of time. Two steps do what
/// one step of the same length does.
void advance(Machine& machine, std::uint64_t milliseconds);

/// When something happens next by itself, counted from where all work stands; nothing when no work runs.
struct Upcoming {
  std::optional<std::uint64_t> end;      ///< of the work that ends first
  std::optional<std::uint64_t> percent;  ///< some work comes to its next hundredth, `after` or later
};
Upcoming upcoming(const Machine& machine, std::uint64_t after = 0);

/// Ends the work before its time. A verification leaves what it has found and repaired by then.
void stopWork(const Machine& machine, Volume& volume);

/// What the verification that runs has found by now, or what the last one found.
std::uint32_t verifyErrorsOf(const Machine& machine, const Volume& volume);
std::uint32_t verifyBadBlocksOf(const Machine& machine, const Volume& volume);

/// The time that the work has spent, the pending time included.
std::uint64_t elapsedOf(const Machine& machine, const Volume& volume);

/// The fraction done, in the full range of 32 bits; 0 without work.
std::uint32_t progressOf(const Machine& machine, const Volume& volume);

}  // namespace simulator

#endif
