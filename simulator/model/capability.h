#ifndef MIRN_SIMULATOR_MODEL_CAPABILITY_H
#define MIRN_SIMULATOR_MODEL_CAPABILITY_H

#include "model/machine.h"

/// What RAID engines can do.
namespace simulator {

/// The level's capability, or null when the engine has no such level.
const LevelCapability* findLevel(const RaidEngine& engine, RaidLevel level);

/// A RAID 10 is made of pairs, whatever its capability says.
bool takesDiskCount(const LevelCapability& level, std::size_t disks);

bool takesStripSize(const LevelCapability& level, StripSize size);

/// The engine of the array's controller: an array cannot be without one.
const RaidEngine& engineOf(const Machine& machine, const Array& array);

/// Whether a volume of the level stands on a controller of the engine.
bool isLevelInUse(const Machine& machine, const RaidEngine& engine, RaidLevel level);

}  // namespace simulator

#endif
