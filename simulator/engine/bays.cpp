#include "engine/bays.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "model/capacity.h"
#include "model/links.h"
#include "model/names.h"

namespace simulator {
namespace {

constexpr std::size_t kMaxModelSize = 40;
constexpr std::uint64_t kMinSectorSize = 512;

Handle bayOf(const EndDevice& device) { return device.bay != 0 ? device.bay : device.handle; }

bool isSectorSize(std::uint64_t size) {
  const bool isPowerOfTwo = (size & (size - 1)) == 0;
  return size >= kMinSectorSize && size <= std::numeric_limits<std::uint32_t>::max() && isPowerOfTwo;
}

/// What is of the bay and of its make of disks, without what happened to the former one.
EndDevice drawUp(const EndDevice& former) {
  EndDevice disk;
  disk.controller = former.controller;
  disk.address = former.address;
  disk.vendorId = former.vendorId;
  disk.model = former.model;
  disk.firmware = former.firmware;
  disk.diskType = former.diskType;
  disk.totalSize = former.totalSize;
  disk.logicalSectorSize = former.logicalSectorSize;
  disk.physicalSectorSize = former.physicalSectorSize;
  disk.managedHotplug = former.managedHotplug;
  disk.lyxDomain = former.lyxDomain;
  disk.isOrdanNVMe = former.isOrdanNVMe;
  disk.bay = bayOf(former);
  disk.presence = Presence::ABSENT;
  return disk;
}

}  // namespace

bool isBayEmpty(const Machine& machine, const EndDevice& device) {
  return std::none_of(machine.devices.begin(), machine.devices.end(), [&](const auto& entry) {
    return bayOf(entry.second) == bayOf(device) && entry.second.presence != Presence::ABSENT;
  });
}

void takeBay(Machine& machine, EndDevice& device) {
  for (const auto& entry : std::as_const(machine).devices) {
    const EndDevice& last = entry.second;
    if (bayOf(last) != bayOf(device) || last.handle == device.handle) continue;
    handOver(machine, machine.devices.at(last.handle), device);
  }
}

EndDevice& makeBlankDisk(Machine& machine, const EndDevice& former, const BlankDisk& wanted) {
  require(former.type == DeviceType::DISK, VEX_STATUS_INVALID_DISK);
  EndDevice disk = drawUp(former);
  if (wanted.totalSize != 0) disk.totalSize = wanted.totalSize;
  if (wanted.logicalSectorSize != 0) disk.logicalSectorSize = wanted.logicalSectorSize;
  if (!wanted.model.empty()) disk.model = wanted.model;
  disk.physicalSectorSize = std::max(disk.physicalSectorSize, disk.logicalSectorSize);
  require(usableSize(disk) > 0, VEX_STATUS_DISK_TOO_SMALL);
  require(isSectorSize(disk.logicalSectorSize), VEX_STATUS_INVALID_SECTOR_SIZE);
  require(disk.model.size() <= kMaxModelSize, VEX_STATUS_INVALID_PARAMETER);
  disk.handle = takeHandle(machine);
  disk.id = newId(machine, "DISK-", disk.handle);
  disk.serialNumber = disk.id;
  return addDevice(machine, std::move(disk));
}

}  // namespace simulator
