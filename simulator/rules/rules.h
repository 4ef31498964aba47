#ifndef MIRN_SIMULATOR_RULES_RULES_H
#define MIRN_SIMULATOR_RULES_RULES_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/machine.h"

/// The rules of the actions, one function each. Every function makes all its checks before its first change:
/// it raises `Refusal`, or it changes the machine and returns. The caller settles the machine afterwards.
/// What each asks and in which order stands in docs/simulator.md.
namespace simulator {

// Whole machine and controllers

void rescan(Machine& machine);
void setReadPatrol(Machine& machine, Handle controller, std::uint32_t enable);
void setRohi(Machine& machine, Handle controller, std::uint32_t enable);
void locatePort(Machine& machine, Handle port, std::uint32_t enable);

// Disks

void clearMetadata(Machine& machine, Handle disk);
void markDiskAsNormal(Machine& machine, Handle disk);

/// `array` is 0 for a spare of all arrays.
void markAsSpare(Machine& machine, Handle disk, Handle array);
void unmarkAsSpare(Machine& machine, Handle disk);
void assignStoragePool(Machine& machine, Handle disk, std::uint8_t pool);

/// A wrong password is counted, although it is refused.
void unlockDisk(Machine& machine, Handle disk, std::string_view password, bool isMaster);
void resetSmartEvent(Machine& machine, Handle disk);
void removePhy(Machine& machine, Handle phy, std::uint32_t one);

// Arrays

void setWriteCache(Machine& machine, Handle array, std::uint32_t enable);
void addDisks(Machine& machine, Handle array, const std::vector<Handle>& disks, std::uint32_t zero);

// Volumes

/// A volume to be: the codes and the size in mebibytes as they came.
struct NewVolume {
  std::string_view name;
  std::uint32_t stripSize = 0;
  std::uint32_t level = 0;
  std::uint64_t sizeMiB = 0;
  std::uint32_t rwhPolicy = 0;
  Handle journalingDrive = 0;
};

void createVolume(Machine& machine, Handle array, const NewVolume& wanted);

/// Returns the handle of the volume. `source` is the disk whose data the volume takes over, or 0.
Handle createVolumeFromDisks(Machine& machine, const std::vector<Handle>& disks, Handle source,
                             const NewVolume& wanted);
void deleteVolume(Machine& machine, Handle volume);

void rebuildVolume(Machine& machine, Handle volume, Handle disk);
void initializeVolume(Machine& machine, Handle volume);
void verifyVolume(Machine& machine, Handle volume, std::uint32_t fix);
void cancelVerify(Machine& machine, Handle volume);

void markVolumeAsNormal(Machine& machine, Handle volume);
void renameVolume(Machine& machine, Handle volume, std::string_view name);
void setCachePolicy(Machine& machine, Handle volume, std::uint32_t policy);
void setRwhPolicy(Machine& machine, Handle volume, Handle journalingDrive, std::uint32_t policy);

/// Sizes are mebibytes; 0 is all that is free.
void expandVolume(Machine& machine, Handle volume, std::uint64_t sizeMiB);
void modifyRaidLevel(Machine& machine, Handle volume, std::uint32_t level, std::uint32_t stripSize,
                     std::uint64_t sizeMiB, const std::vector<Handle>& disks);

}  // namespace simulator

#endif
