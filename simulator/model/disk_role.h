#ifndef MIRN_SIMULATOR_MODEL_DISK_ROLE_H
#define MIRN_SIMULATOR_MODEL_DISK_ROLE_H

#include "model/machine.h"

/// What a disk is for and whether it can do it. Nothing of this is stored: it follows from the
/// disk's own facts.
namespace simulator {

DiskUsage usageOf(const EndDevice& disk);

/// The state that the library reports. It can tell one fact only, so the first of these that holds: missing,
/// failed, unsupported or incompatible, locked, offline or of a later version, SMART event.
DiskState stateOf(const EndDevice& disk);

/// There and able to serve data.
bool isUsable(const EndDevice& disk);

/// There, and nothing but its lock keeps it from serving.
bool isLockedOnly(const EndDevice& disk);

/// There, and nothing but its failure, or its being offline, keeps it from serving: it may be marked
/// as normal.
bool mayBeMarkedAsNormal(const EndDevice& disk);

/// Lost for as long as nobody repairs it, so that another disk may take its place. A lock is opened instead.
bool mayBeReplaced(const EndDevice& disk);

/// Whether engines work with the disk at all.
bool isSupported(const EndDevice& disk);

/// Whether the library lists the device: it is there, or something still counts on it.
bool isListed(const EndDevice& device);

/// A port is listed with the device that it belongs to.
bool isListed(const Machine& machine, const Port& port);

/// The device or port if it is listed; otherwise the handle is refused.
const EndDevice& listedDevice(const Machine& machine, Handle device);
const Port& listedPort(const Machine& machine, Handle port);

/// Free to take a role: a usable disk without a SMART event that nothing uses.
bool isFree(const EndDevice& disk);

}  // namespace simulator

#endif
