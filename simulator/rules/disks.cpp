#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/redundancy.h"
#include "rules/checks.h"
#include "rules/rules.h"

namespace simulator {
namespace {

constexpr std::uint32_t kMaxFailedUnlocks = 5;

/// A member of an array on which no volume stands.
bool isIdleMember(const Machine& machine, const EndDevice& disk) {
  return disk.array != 0 && machine.arrays.at(disk.array).volumes.empty();
}

/// Metadata are cleared of a disk that can be written and that nothing uses.
bool isClearable(const Machine& machine, const EndDevice& disk) {
  const DiskState state = stateOf(disk);
  const bool isWritable =
      isUsable(disk) || state == DiskState::OFFLINE || state == DiskState::CONFIG_IS_UPREV;
  const DiskUsage usage = usageOf(disk);
  const bool isUnused = usage == DiskUsage::PASS_THROUGH || usage == DiskUsage::SPARE ||
                        usage == DiskUsage::OFFLINE_ARRAY || isIdleMember(machine, disk);
  return isWritable && isUnused && !disk.systemDisk;
}

void dropSpareRole(EndDevice& disk) {
  disk.spare = false;
  disk.spareFor = 0;
}

void requireSpareOf(Machine& machine, const EndDevice& disk, Handle arrayHandle) {
  const Array& array = machine.arrays.at(arrayHandle);
  require(disk.controller == array.controller, VEX_STATUS_DISK_ON_WRONG_CONTROLLER);
  const EndDevice& member = machine.devices.at(array.disks.front());
  require(disk.logicalSectorSize == member.logicalSectorSize, VEX_STATUS_INVALID_SECTOR_SIZE);
  require(usableSize(disk) >= usedPerDisk(machine, array), VEX_STATUS_DISK_TOO_SMALL);
}

/// A volume that runs the system must not be lost, and must not lose what it still has.
bool holdsUpSystem(const Machine& machine, const EndDevice& device) {
  if (device.array == 0) return device.systemDisk;
  for (const Handle handle : machine.arrays.at(device.array).volumes) {
    const Volume& volume = machine.volumes.at(handle);
    const bool isSafe = isRedundant(volume.level) && stateOf(machine, volume) == VolumeState::NORMAL;
    if (volume.systemVolume && !isSafe) return true;
  }
  return false;
}

}  // namespace

void clearMetadata(Machine& machine, Handle handle) {
  EndDevice& disk = diskAt(machine, handle);
  require(isClearable(machine, disk), VEX_STATUS_INVALID_STATE);
  if (disk.array != 0) leaveArray(machine, machine.arrays.at(disk.array), disk);
  dropSpareRole(disk);
  disk.foreignMetadata = false;
  disk.condition = DiskState::NORMAL;
}

void markDiskAsNormal(Machine& machine, Handle handle) {
  EndDevice& disk = diskAt(machine, handle);
  require(machine.controllers.at(disk.controller).supportsMarkAsNormal, VEX_STATUS_NOT_SUPPORTED);
  const DiskState state = stateOf(disk);
  require(state == DiskState::FAILED || state == DiskState::OFFLINE || state == DiskState::MANUAL_OFFLINE,
          VEX_STATUS_INVALID_STATE);
  takeAsNormal(disk);
}

void markAsSpare(Machine& machine, Handle handle, Handle array) {
  EndDevice& disk = diskAt(machine, handle);
  const Controller& controller = machine.controllers.at(disk.controller);
  require(controller.supportsMarkAsSpare, VEX_STATUS_NOT_SUPPORTED);
  const RaidEngine& engine = requireEngine(machine, controller);
  require(array == 0 ? engine.globalSpareSupport : engine.dedicatedSpareSupport, VEX_STATUS_NOT_SUPPORTED);
  const Status drive = judgeDrive(machine, controller, disk, false);
  require(drive == VEX_STATUS_SUCCESS, drive);
  require(isFree(disk), VEX_STATUS_INVALID_STATE);
  if (array != 0) requireSpareOf(machine, disk, array);
  requireRaidDiskRoom(machine, engine, {handle});
  disk.spare = true;
  disk.spareFor = array;
}

void unmarkAsSpare(Machine& machine, Handle handle) {
  EndDevice& disk = diskAt(machine, handle);
  require(usageOf(disk) == DiskUsage::SPARE, VEX_STATUS_INVALID_STATE);
  dropSpareRole(disk);
}

void assignStoragePool(Machine& machine, Handle handle, std::uint8_t pool) {
  EndDevice& disk = diskAt(machine, handle);
  require(isFree(disk), VEX_STATUS_INVALID_STATE);
  disk.storagePool = pool;
}

void unlockDisk(Machine& machine, Handle handle, std::string_view password, bool isMaster) {
  EndDevice& disk = diskAt(machine, handle);
  require(stateOf(disk) == DiskState::LOCKED, VEX_STATUS_INVALID_STATE);
  require(disk.failedUnlocks < kMaxFailedUnlocks, VEX_STATUS_UNLOCK_LIMIT_REACHED);
  const std::string& wanted = isMaster ? disk.masterPassword : disk.userPassword;
  if (wanted.empty() || password != wanted) {
    ++disk.failedUnlocks;
    ++machine.changes;
    throw Refusal(VEX_STATUS_WRONG_PASSWORD);
  }
  disk.failedUnlocks = 0;
  disk.locked = false;
}

void resetSmartEvent(Machine& machine, Handle handle) {
  EndDevice& disk = diskAt(machine, handle);
  require(stateOf(disk) == DiskState::SMART_EVENT_TRIGGERED, VEX_STATUS_INVALID_STATE);
  disk.smartEvent = false;
}

void removePhy(Machine& machine, Handle phy, std::uint32_t one) {
  require(one == 1, VEX_STATUS_INVALID_PARAMETER);
  EndDevice& device = machine.devices.at(machine.phyOwner.at(phy));
  require(device.presence == Presence::PRESENT, VEX_STATUS_INVALID_STATE);
  require(device.managedHotplug, VEX_STATUS_NOT_SUPPORTED);
  require(!holdsUpSystem(machine, device), VEX_STATUS_INVALID_STATE);
  device.presence = Presence::ABSENT;
}

}  // namespace simulator
