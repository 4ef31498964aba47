#ifndef MIRN_SIMULATOR_ENGINE_BAYS_H
#define MIRN_SIMULATOR_ENGINE_BAYS_H

#include <cstdint>
#include <string_view>

#include "model/machine.h"

/// Where devices are put in. A bay is told by the device that was in it first; its phys and ports belong to
/// the device that was in it last.
namespace simulator {

/// Whether nothing is in the bay of the device, not even unnoticed.
bool isBayEmpty(const Machine& machine, const EndDevice& device);

/// The phys and ports of its empty bay are the device's from now on.
void takeBay(Machine& machine, EndDevice& device);

/// A disk that nothing has been written to. What is 0 or empty is as with the device whose bay it comes into.
struct BlankDisk {
  std::uint64_t totalSize = 0;
  std::uint64_t logicalSectorSize = 0;
  std::string_view model;
};

/// Makes the disk, which is not in yet, for the bay of `former`. Refused with `VEX_STATUS_INVALID_DISK` where
/// no disk was, `VEX_STATUS_DISK_TOO_SMALL`, `VEX_STATUS_INVALID_SECTOR_SIZE` and, for a model that no record
/// holds, `VEX_STATUS_INVALID_PARAMETER`.
EndDevice& makeBlankDisk(Machine& machine, const EndDevice& former, const BlankDisk& wanted);

}  // namespace simulator

#endif
