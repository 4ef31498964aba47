#ifndef MIRN_SIMULATOR_RULES_CHECKS_H
#define MIRN_SIMULATOR_RULES_CHECKS_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/capability.h"
#include "model/machine.h"
#include "model/membership.h"

/// Checks that several rules share. Each refuses with the status whose text says why.
namespace simulator {

/// The flag of an action; anything but 0 and 1 is refused.
bool parseSwitch(std::uint32_t enable);

/// A listed device that is a disk.
EndDevice& diskAt(Machine& machine, Handle disk);

Controller& controllerOf(Machine& machine, const Volume& volume);

/// The disk neither failed nor is it offline from now on; its other facts stay.
void takeAsNormal(EndDevice& disk);

/// The disk may become a member.
void requireCandidate(const Machine& machine, const EndDevice& disk, const Membership& membership);

/// Each handle names a disk, and no disk stands twice. At least one disk.
void requireDisks(Machine& machine, const std::vector<Handle>& disks);

/// The engine may have these among its members and spares; one that is a spare already takes no more room.
void requireRaidDiskRoom(const Machine& machine, const RaidEngine& engine, const std::vector<Handle>& disks);

/// The engine of the controller, with RAID enabled.
const RaidEngine& requireEngine(const Machine& machine, const Controller& controller);

/// The capability of a level given by its code.
const LevelCapability& requireLevel(const RaidEngine& engine, std::uint32_t code);

/// A strip size given by its code; RAID 1 has none and takes any code.
StripSize requireStripSize(const LevelCapability& level, std::uint32_t code);

/// `self` is the volume that may bear the name already, or 0.
void requireName(const Machine& machine, std::string_view name, Handle self);

/// The size in bytes for a size in mebibytes, where 0 takes all of `freePerDisk`.
std::uint64_t requireSize(const Controller& controller, RaidLevel level, std::size_t disks,
                          std::uint64_t sizeMiB, std::uint64_t freePerDisk);

/// What a volume is to do about the write hole.
struct RwhChoice {
  RwhPolicy policy = RwhPolicy::RWH_OFF;
  Handle journalingDrive = 0;
};

/// The drive is looked at with the policy RWH_JOURNALING_DRIVE only. `members` may not hold the journal; on
/// the drive `kept` the volume has its place already.
RwhChoice requireRwh(Machine& machine, const RaidEngine& engine, RaidLevel level, std::uint32_t policy,
                     Handle drive, const std::vector<Handle>& members, Handle kept = 0);

}  // namespace simulator

#endif
