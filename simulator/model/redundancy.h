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

/// Whether a volume of the array is at work: its layout must not change now.
bool isBusy(const Machine& machine, const Array& array);

/// Whether the level survives the loss of a disk.
constexpr bool isRedundant(RaidLevel level) { return level != RaidLevel::RAID_0; }

bool isStale(const Volume& volume, Handle disk);

}  // namespace simulator

#endif
