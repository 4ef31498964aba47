#ifndef MIRN_SIMULATOR_SCENARIO_GENERATOR_H
#define MIRN_SIMULATOR_SCENARIO_GENERATOR_H

#include <cstdint>

#include "model/machine.h"

namespace simulator {

constexpr std::uint32_t kMaxGeneratedDevices = 1'000'000;

/// A large machine of `devices` disks, the same one for the same number: a controller for each 64 disks, an
/// array of RAID 5 over each four, every fourth array with a second volume, each 32nd disk a spare, some
/// disks with SMART events, and a pair of ports for each disk.
Machine generateMachine(std::uint32_t devices);

}  // namespace simulator

#endif
