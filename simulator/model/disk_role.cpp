#include "model/disk_role.h"

namespace simulator {
namespace {

bool isPresent(const EndDevice& disk) { return disk.presence == Presence::PRESENT; }

bool isOffline(const EndDevice& disk) {
  return disk.condition == DiskState::OFFLINE || disk.condition == DiskState::MANUAL_OFFLINE;
}

}  // namespace

DiskUsage usageOf(const EndDevice& disk) {
  if (disk.array != 0) {
    return disk.readOnlyMount ? DiskUsage::ARRAY_MEMBER_READONLY_MOUNT : DiskUsage::ARRAY_MEMBER;
  }
  if (disk.journalUsers != 0) return DiskUsage::JOURNALING_DRIVE;
  if (disk.spare) return DiskUsage::SPARE;
  if (disk.foreignMetadata) return DiskUsage::OFFLINE_ARRAY;
  return disk.readOnlyMount ? DiskUsage::PASS_THRU_READONLY_MOUNT : DiskUsage::PASS_THROUGH;
}

DiskState stateOf(const EndDevice& disk) {
  if (!isPresent(disk)) return DiskState::MISSING;
  if (disk.failed) return DiskState::FAILED;
  if (!isSupported(disk)) return disk.condition;
  if (disk.locked) return DiskState::LOCKED;
  if (disk.condition == DiskState::NORMAL && disk.smartEvent) return DiskState::SMART_EVENT_TRIGGERED;
  return disk.condition;
}

bool isUsable(const EndDevice& disk) {
  const DiskState state = stateOf(disk);
  return state == DiskState::NORMAL || state == DiskState::SMART_EVENT_TRIGGERED;
}

bool isLockedOnly(const EndDevice& disk) {
  return stateOf(disk) == DiskState::LOCKED && disk.condition == DiskState::NORMAL;
}

bool mayBeMarkedAsNormal(const EndDevice& disk) {
  if (!isPresent(disk) || disk.locked) return false;
  return isOffline(disk) || (disk.failed && disk.condition == DiskState::NORMAL);
}

bool mayBeReplaced(const EndDevice& disk) { return !isUsable(disk) && stateOf(disk) != DiskState::LOCKED; }

bool isSupported(const EndDevice& disk) {
  return disk.condition != DiskState::UNSUPPORTED && disk.condition != DiskState::INCOMPATIBLE;
}

bool isListed(const EndDevice& device) {
  return device.presence == Presence::PRESENT || device.array != 0 || device.journalUsers != 0;
}

bool isListed(const Machine& machine, const Port& port) {
  const EndDevice* const device = machine.devices.find(port.device);
  return device == nullptr || device->presence == Presence::PRESENT;
}

const EndDevice& listedDevice(const Machine& machine, Handle handle) {
  const EndDevice& device = machine.devices.at(handle);
  require(isListed(device), VEX_STATUS_INVALID_HANDLE);
  return device;
}

const Port& listedPort(const Machine& machine, Handle handle) {
  const Port& port = machine.ports.at(handle);
  require(isListed(machine, port), VEX_STATUS_INVALID_HANDLE);
  return port;
}

bool isFree(const EndDevice& disk) {
  return stateOf(disk) == DiskState::NORMAL && usageOf(disk) == DiskUsage::PASS_THROUGH && !disk.systemDisk;
}

}  // namespace simulator
