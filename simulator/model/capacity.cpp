#include "model/capacity.h"

#include <algorithm>
#include <limits>

#include "model/disk_role.h"
#include "model/redundancy.h"

namespace simulator {

std::uint64_t usableSize(const EndDevice& disk) {
  if (disk.type != DeviceType::DISK || disk.totalSize < kMetadataSize) return 0;
  return (disk.totalSize - kMetadataSize) / kMiB * kMiB;
}

std::uint64_t journalRoom(const EndDevice& drive) { return usableSize(drive) / kJournalSize; }

std::uint32_t dataDisks(RaidLevel level, std::size_t disks) {
  const auto count = static_cast<std::uint32_t>(disks);
  switch (level) {
    case RaidLevel::RAID_0:
      return count;
    case RaidLevel::RAID_1:
      return 1;
    case RaidLevel::RAID_10:
      return count / 2;
    case RaidLevel::RAID_5:
      return count - 1;
  }
  return 0;
}

std::uint64_t shareOf(RaidLevel level, std::size_t disks, std::uint64_t size) {
  const std::uint64_t slice = kMiB * dataDisks(level, disks);
  return (size / slice + (size % slice == 0 ? 0 : 1)) * kMiB;
}

std::uint64_t footprintOf(const Machine& machine, const Volume& volume) {
  const std::size_t disks = machine.arrays.at(volume.array).disks.size();
  if (!isMigrating(volume)) {
    return shareOf(volume.level, disks, volume.size);
  }
  return std::max(shareOf(volume.work->sourceLevel, volume.work->sourceDisks.size(), volume.size),
                  shareOf(volume.level, disks, volume.work->targetSize));
}

std::uint64_t memberSize(const Machine& machine, const Array& array) {
  std::uint64_t smallest = std::numeric_limits<std::uint64_t>::max();
  for (const Handle disk : array.disks) smallest = std::min(smallest, usableSize(machine.devices.at(disk)));
  return array.disks.empty() ? 0 : smallest;
}

std::uint64_t usedPerDisk(const Machine& machine, const Array& array) {
  std::uint64_t used = 0;
  for (const Handle volume : array.volumes) used += footprintOf(machine, machine.volumes.at(volume));
  return used;
}

std::uint64_t freePerDisk(const Machine& machine, const Array& array) {
  const std::uint64_t size = memberSize(machine, array);
  const std::uint64_t used = usedPerDisk(machine, array);
  return used < size ? size - used : 0;
}

std::uint64_t totalSize(const Machine& machine, const Array& array) {
  return memberSize(machine, array) * array.disks.size();
}

std::uint64_t freeSize(const Machine& machine, const Array& array) {
  return freePerDisk(machine, array) * array.disks.size();
}

std::uint64_t freeSize(const Machine& machine, const EndDevice& disk) {
  if (disk.array != 0) return freePerDisk(machine, machine.arrays.at(disk.array));
  return usageOf(disk) == DiskUsage::PASS_THROUGH && isUsable(disk) ? usableSize(disk) : 0;
}

}  // namespace simulator
