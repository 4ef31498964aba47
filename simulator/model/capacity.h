#ifndef MIRN_SIMULATOR_MODEL_CAPACITY_H
#define MIRN_SIMULATOR_MODEL_CAPACITY_H

#include <cstdint>

#include "model/machine.h"

/// Who takes how much of what. All sizes are bytes; volumes are laid out in whole mebibytes of each disk.
namespace simulator {

/// Kept for metadata at the end of each disk.
constexpr std::uint64_t kMetadataSize = 8 * kMiB;

/// What the journal of one volume takes of its drive.
constexpr std::uint64_t kJournalSize = 1024 * kMiB;

/// How many volumes may keep their journal on the drive.
std::uint64_t journalRoom(const EndDevice& drive);

/// What volumes can take of a disk: whole mebibytes without the metadata.
std::uint64_t usableSize(const EndDevice& disk);

/// How many of `disks` disks hold data: the others hold redundancy.
std::uint32_t dataDisks(RaidLevel level, std::size_t disks);

/// What a volume takes of each of its disks.
std::uint64_t shareOf(RaidLevel level, std::size_t disks, std::uint64_t size);

/// What a volume takes of each disk of its array now; during a migration the larger of both layouts.
std::uint64_t footprintOf(const Machine& machine, const Volume& volume);

/// The usable size of the array's smallest disk: no disk gives more than it.
std::uint64_t memberSize(const Machine& machine, const Array& array);

/// What the volumes of the array take of each disk.
std::uint64_t usedPerDisk(const Machine& machine, const Array& array);

/// What is left of each disk.
std::uint64_t freePerDisk(const Machine& machine, const Array& array);

std::uint64_t totalSize(const Machine& machine, const Array& array);
std::uint64_t freeSize(const Machine& machine, const Array& array);

/// What a new volume could take of the disk, of a member what its array leaves of each; 0 for a disk that
/// none can take.
std::uint64_t freeSize(const Machine& machine, const EndDevice& disk);

}  // namespace simulator

#endif
