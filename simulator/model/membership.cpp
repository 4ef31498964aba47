#include "model/membership.h"

#include <algorithm>

#include "model/capacity.h"
#include "model/disk_role.h"

namespace simulator {
namespace {

/// Spares may become members, and so may free disks; a source disk may hold the system.
bool mayJoin(const EndDevice& disk, Handle sourceDisk) {
  if (stateOf(disk) != DiskState::NORMAL) return false;
  const DiskUsage usage = usageOf(disk);
  const bool isSource = disk.handle == sourceDisk;
  return usage == DiskUsage::SPARE || (usage == DiskUsage::PASS_THROUGH && (isSource || !disk.systemDisk));
}

}  // namespace

Membership membershipOf(const Machine& machine, const Array& array) {
  Membership membership;
  membership.controller = array.controller;
  membership.logicalSectorSize = machine.devices.at(array.disks.front()).logicalSectorSize;
  membership.minUsableSize = usedPerDisk(machine, array);
  return membership;
}

bool isTooLarge(const Controller& controller, const EndDevice& disk) {
  return disk.totalSize > kTwoTb && !controller.twoTbDiskSupport;
}

bool isForeign(const RaidEngine& engine, const EndDevice& disk) {
  return engine.ordanDrivesOnly && !disk.isOrdanNVMe;
}

Status judgeDrive(const Machine& machine, const Controller& controller, const EndDevice& drive,
                  bool isRaid0Only) {
  const bool isX8Misused = drive.x8 != X8Role::NONE && !isRaid0Only;
  if (!isSupported(drive) || isTooLarge(controller, drive) || isX8Misused) return VEX_STATUS_UNSUPPORTED_DISK;
  const bool isOfAnotherMake = isForeign(machine.engines.at(controller.engine), drive);
  return isOfAnotherMake ? VEX_STATUS_FOREIGN_DRIVE_NOT_SUPPORTED : VEX_STATUS_SUCCESS;
}

Status judgeCandidate(const Machine& machine, const EndDevice& disk, const Membership& membership) {
  if (disk.controller != membership.controller) return VEX_STATUS_DISK_ON_WRONG_CONTROLLER;
  const Controller& controller = machine.controllers.at(membership.controller);
  const Status drive = judgeDrive(machine, controller, disk, membership.isRaid0Only);
  if (drive != VEX_STATUS_SUCCESS) return drive;
  if (disk.logicalSectorSize != membership.logicalSectorSize) return VEX_STATUS_INVALID_SECTOR_SIZE;
  if (!mayJoin(disk, membership.sourceDisk)) return VEX_STATUS_INVALID_STATE;
  return usableSize(disk) < membership.minUsableSize ? VEX_STATUS_DISK_TOO_SMALL : VEX_STATUS_SUCCESS;
}

std::size_t raidDisksOf(const Machine& machine, const RaidEngine& engine) {
  const auto isRaidDisk = [&](const auto& entry) {
    const EndDevice& disk = entry.second;
    return machine.controllers.at(disk.controller).engine == engine.handle && (disk.array != 0 || disk.spare);
  };
  return static_cast<std::size_t>(std::count_if(machine.devices.begin(), machine.devices.end(), isRaidDisk));
}

}  // namespace simulator
