#ifndef MIRN_SIMULATOR_MODEL_LINKS_H
#define MIRN_SIMULATOR_MODEL_LINKS_H

#include "model/machine.h"

/// The only code that makes and breaks links between objects, so that both ends always agree.
namespace simulator {

Handle takeHandle(Machine& machine);

/// Adds the device to its controller.
EndDevice& addDevice(Machine& machine, EndDevice device);

/// The phys and ports of `from` are those of `to` from now on.
void handOver(Machine& machine, EndDevice& from, EndDevice& to);

/// Adds the array and claims its disks.
Array& addArray(Machine& machine, Array array);

/// Releases the disks and the dedicated spares and removes the array, which has no volume left. Disks that do
/// not serve keep its metadata.
void removeArray(Machine& machine, Handle array);

/// Takes the disk out of an array without volumes, which goes with the last of its disks that serves.
void leaveArray(Machine& machine, Array& array, EndDevice& disk);

/// A new member takes the array's write cache.
void joinArray(Machine& machine, Array& array, EndDevice& disk);

/// The system, where the old disk held it, is on the new one from now on. Puts `newDisk`, blank, into the
/// place of `oldDisk`, which keeps the metadata of the array that goes on without it. Migrations that wait go
/// on from `newDisk` instead.
void replaceMember(Machine& machine, Array& array, EndDevice& oldDisk, EndDevice& newDisk);

/// The disk is no stale member of the volume any more.
void bringUpToDate(Volume& volume, Handle disk);

Volume& addVolume(Machine& machine, Volume volume);

void removeVolume(Machine& machine, Handle volume);

/// 0 takes the journal from the volume.
void setJournalingDrive(Machine& machine, Volume& volume, Handle drive);

}  // namespace simulator

#endif
