#ifndef MIRN_SIMULATOR_MODEL_REDUNDANCY_H
#define MIRN_SIMULATOR_MODEL_REDUNDANCY_H

#include "model/machine.h"

/// What the loss of disks makes of volumes. The state of a volume is never stored.
namespace simulator {

enum class Health {
  INTACT,   ///< every member has the volume's data
  REDUCED,  ///< some member has not, and the level makes up for it
  LOST,     ///< too many have not: the volume does not serve
};

Health healthOf(const Machine& machine, const Volume& volume);

VolumeState stateOf(const Machine& machine, const Volume& volume);

/// Whether the volume would serve from the layout that it migrates to, when the stale members of `caughtUp`
/// count as up to date.
bool wouldServeAtTarget(const Machine& machine, const Volume& volume, const std::vector<Handle>& caughtUp);

bool isMigrating(const Volume& volume);

/// Whether the volume's work goes on with the time. A migration may wait instead, all other work ends.
bool isRunning(const Machine& machine, const Volume& volume);

/// A migration that has come to its end but for members that its target cannot do without.
bool waitsForMember(const Machine& machine, const Volume& volume);

/// Whether work of a volume of the array goes on with the time.
bool isAtWork(const Machine& machine, const Array& array);

/// Whether a volume of the array has work, be it that it waits: its layout must not change now.
bool isBusy(const Machine& machine, const Array& array);

/// Whether the level survives the loss of a disk.
constexpr bool isRedundant(RaidLevel level) { return level != RaidLevel::RAID_0; }

bool contains(const std::vector<Handle>& disks, Handle disk);

bool isStale(const Volume& volume, Handle disk);

}  // namespace simulator

#endif
