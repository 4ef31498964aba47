#include "engine/incidents.h"

#include <utility>

#include "engine/bays.h"
#include "engine/settle.h"
#include "model/disk_role.h"

namespace simulator {
namespace {

bool isDisk(const EndDevice& device) { return device.type == DeviceType::DISK; }

/// The device is there from now on.
void arrive(Machine& machine, EndDevice& device) {
  device.presence = Presence::PRESENT;
  device.hotInserted = isDisk(device) && machine.controllers.at(device.controller).rohiEnabled;
  settle(machine);
}

}  // namespace

EndDevice& findDevice(Machine& machine, std::string_view name) {
  require(!name.empty(), VEX_STATUS_INVALID_HANDLE);  // many have no serial number
  for (const auto& entry : std::as_const(machine).devices) {
    const EndDevice& device = entry.second;
    if (device.id == name || device.serialNumber == name) return machine.devices.at(entry.first);
  }
  throw Refusal(VEX_STATUS_INVALID_HANDLE);
}

void failDisk(Machine&, EndDevice& disk) {
  require(isDisk(disk), VEX_STATUS_INVALID_DISK);
  require(disk.presence == Presence::PRESENT && !disk.failed, VEX_STATUS_INVALID_STATE);
  disk.failed = true;
}

void pullDevice(Machine&, EndDevice& device) {
  require(device.presence != Presence::ABSENT, VEX_STATUS_INVALID_STATE);
  device.presence = Presence::ABSENT;
}

void insertDevice(Machine& machine, EndDevice& device) {
  require(isBayEmpty(machine, device), VEX_STATUS_INVALID_STATE);
  takeBay(machine, device);
  device.failedUnlocks = 0;
  if (device.managedHotplug) {
    arrive(machine, device);
  } else {
    device.presence = Presence::UNNOTICED;
  }
}

const EndDevice& insertBlankDisk(Machine& machine, const EndDevice& former, const BlankDisk& wanted) {
  require(isBayEmpty(machine, former), VEX_STATUS_INVALID_STATE);
  EndDevice& disk = makeBlankDisk(machine, former, wanted);
  insertDevice(machine, disk);
  return disk;
}

void lockDisk(Machine&, EndDevice& disk) {
  require(isDisk(disk), VEX_STATUS_INVALID_DISK);
  require(isUsable(disk), VEX_STATUS_INVALID_STATE);
  disk.locked = true;
  disk.failedUnlocks = 0;
}

void raiseSmartEvent(Machine&, EndDevice& disk) {
  require(isDisk(disk), VEX_STATUS_INVALID_DISK);
  require(stateOf(disk) == DiskState::NORMAL, VEX_STATUS_INVALID_STATE);
  disk.smartEvent = true;
}

void notice(Machine& machine) {
  for (const auto& entry : std::as_const(machine).devices) {
    if (entry.second.presence == Presence::UNNOTICED) arrive(machine, machine.devices.at(entry.first));
  }
}

}  // namespace simulator
