#ifndef MIRN_SIMULATOR_MODEL_MEMBERSHIP_H
#define MIRN_SIMULATOR_MODEL_MEMBERSHIP_H

#include <cstdint>
#include <vector>

#include "model/machine.h"

/// Which disks get into arrays. Every way in asks here: the actions, spares, hot insertion, scenarios.
namespace simulator {

/// Above this a disk or a volume needs its controller's support.
constexpr std::uint64_t kTwoTb = std::uint64_t{1} << 41;

/// What an array asks of a disk that is to join it, or of all disks of an array that is to be.
struct Membership {
  Handle controller = 0;
  std::uint64_t logicalSectorSize = 0;
  std::uint64_t minUsableSize = 0;
  bool isRaid0Only = false;  ///< all volumes will be RAID 0, so X8 disks may join
  Handle sourceDisk = 0;     ///< may be a system disk
};

/// What the array asks of a disk that is to take the place of a member.
Membership membershipOf(const Machine& machine, const Array& array);

/// Larger than the controller's arrays take.
bool isTooLarge(const Controller& controller, const EndDevice& disk);

/// Not of the one make that the engine takes.
bool isForeign(const RaidEngine& engine, const EndDevice& disk);

/// Whether the controller's engine has members like this drive: success, or the status that says why not.
Status judgeDrive(const Machine& machine, const Controller& controller, const EndDevice& drive,
                  bool isRaid0Only);

/// Whether the disk may become a member now: as above, and it is pass-through or a spare, normal, and what
/// `membership` asks.
Status judgeCandidate(const Machine& machine, const EndDevice& disk, const Membership& membership);

/// How many members and spares the engine has.
std::size_t raidDisksOf(const Machine& machine, const RaidEngine& engine);

}  // namespace simulator

#endif
