#include "model/capability.h"

#include <algorithm>

namespace simulator {

const LevelCapability* findLevel(const RaidEngine& engine, RaidLevel level) {
  const auto found = std::find_if(engine.levels.begin(), engine.levels.end(),
                                  [&](const LevelCapability& row) { return row.level == level; });
  return found == engine.levels.end() ? nullptr : &*found;
}

bool takesDiskCount(const LevelCapability& level, std::size_t disks) {
  if (level.level == RaidLevel::RAID_10 && disks % 2 != 0) return false;
  const bool takesParity = disks % 2 == 0 ? level.evenDiskCount : level.oddDiskCount;
  return takesParity && disks >= level.minDisks && disks <= level.maxDisks;
}

bool takesStripSize(const LevelCapability& level, StripSize size) {
  return (level.stripSizes & bitOf(size)) != 0;
}

const RaidEngine& engineOf(const Machine& machine, const Array& array) {
  return machine.engines.at(machine.controllers.at(array.controller).engine);
}

bool isLevelInUse(const Machine& machine, const RaidEngine& engine, RaidLevel level) {
  return std::any_of(machine.volumes.begin(), machine.volumes.end(), [&](const auto& entry) {
    const Volume& volume = entry.second;
    return volume.level == level &&
           engineOf(machine, machine.arrays.at(volume.array)).handle == engine.handle;
  });
}

}  // namespace simulator
