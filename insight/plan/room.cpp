#include "plan/room.h"

#include <algorithm>
#include <limits>

namespace insight {

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;

/// What the library keeps of a disk for itself, as shows where nothing else is on it.
std::uint64_t keptOfDisk(const MachineView& machine) {
  for (const DiskView& disk : machine.disks) {
    const bool isFree = disk.arrayId.empty() && disk.freeBytes > 0 && disk.freeBytes <= disk.totalBytes;
    if (isFree) return disk.totalBytes - disk.freeBytes;
  }
  for (const ArrayView& array : machine.arrays) {
    std::uint64_t smallest = std::numeric_limits<std::uint64_t>::max();
    for (const DiskView* const disk : machine.membersOf(array.id))
      smallest = std::min(smallest, disk->totalBytes);
    const std::uint64_t given = array.diskCount == 0 ? 0 : array.totalBytes / array.diskCount;
    if (given > 0 && given <= smallest) return smallest - given;
  }
  return 0;
}

/// What an array can take of a disk. Only one that is free shows it.
std::uint64_t givenBy(const MachineView& machine, const DiskView& disk) {
  if (disk.arrayId.empty() && disk.freeBytes > 0) return disk.freeBytes;
  return disk.totalBytes - std::min(disk.totalBytes, keptOfDisk(machine));
}

std::uint64_t smallestOf(const MachineView& machine, const std::vector<std::wstring>& disks) {
  std::uint64_t smallest = std::numeric_limits<std::uint64_t>::max();
  for (const std::wstring& id : disks) {
    if (const DiskView* const disk = machine.disk(id)) smallest = std::min(smallest, givenBy(machine, *disk));
  }
  return smallest;
}

}  // namespace

std::optional<std::uint64_t> dataDisksOf(const std::wstring& level, std::size_t disks) {
  const std::uint64_t count = disks;
  if (level == L"RAID_0") return count;
  if (level == L"RAID_1") return 1;
  if (level == L"RAID_10") return count / 2;
  if (level == L"RAID_5" && count > 0) return count - 1;
  return {};
}

std::uint64_t memberBytesOf(const MachineView& machine, const ArrayView& array,
                            const std::vector<std::wstring>& more) {
  if (array.diskCount == 0) return 0;
  return std::min(array.totalBytes / array.diskCount, smallestOf(machine, more));
}

std::uint64_t memberBytesOf(const MachineView& machine, const std::vector<std::wstring>& disks) {
  const std::uint64_t smallest = smallestOf(machine, disks);
  return smallest == std::numeric_limits<std::uint64_t>::max() ? 0 : smallest;
}

std::uint64_t freeOfMember(const ArrayView& array) {
  return array.diskCount == 0 ? 0 : array.freeBytes / array.diskCount;
}

std::optional<std::uint64_t> shareOf(const VolumeView& volume) {
  const auto data = dataDisksOf(volume.level, volume.diskCount);
  if (!data || *data == 0) return {};
  const std::uint64_t slice = *data * kMebibyte;
  return (volume.totalBytes + slice - 1) / slice * kMebibyte;
}

}  // namespace insight
