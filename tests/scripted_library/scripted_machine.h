#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_MACHINE_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_MACHINE_H

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "scripted_library/object_list.h"
#include "VEXL2.h"

/// Writes a text into the fixed field of a record: cut to fit, NUL-terminated, zero-filled.
template <std::size_t Size>
void setText(char (&field)[Size], const std::string& text) {
  std::memset(field, 0, Size);
  std::memcpy(field, text.data(), text.size() < Size ? text.size() : Size - 1);
}

/// A subset of the objects: VEX_SCOPE_... and the handle that goes with it.
struct Scope {
  VEX_SCOPE_TYPE type;
  VEX_HANDLE handle;
};

/// What the scripted library reports: the raw records, and which of them belong together. A plain value; a
/// test fills it and changes any record through the lists. Handles are one number space and are
/// chosen by the test.
class ScriptedMachine {
 public:
  /// An empty machine that has only a version.
  ScriptedMachine();

  VEX_SYSTEM_INFO system = {};
  ObjectList<VEX_RAID_INFO, &VEX_RAID_INFO::raidInfoHandle> raids;
  ObjectList<VEX_CONTROLLER_INFO, &VEX_CONTROLLER_INFO::controllerHandle> controllers;
  ObjectList<VEX_END_DEVICE_INFO, &VEX_END_DEVICE_INFO::endDeviceHandle> endDevices;
  ObjectList<VEX_PHY_INFO, &VEX_PHY_INFO::phyHandle> phys;
  ObjectList<VEX_ARRAY_INFO, &VEX_ARRAY_INFO::arrayHandle> arrays;
  ObjectList<VEX_VOLUME_INFO, &VEX_VOLUME_INFO::volumeHandle> volumes;
  ObjectList<VEX_PORT_INFO, &VEX_PORT_INFO::portHandle> ports;

  /// By RAID handle and VEX_RAID_LEVEL_...; a level that is not here is reported as all zero.
  std::map<std::pair<VEX_HANDLE, std::uint32_t>, VEX_RAID_LEVEL_INFO> raidLevels;

  /// What `VexVolumeCreateFromDisks` stores.
  VEX_HANDLE createdVolume = 0;

  // Additions of usual objects, in a good state; `uniqueId` is the kind and the handle, such as "disk-21".
  // Each returns the record just added for further changes; the reference holds until the next addition of
  // that kind.

  /// A RAID engine that has the levels 0, 1, 5 and 10 with the usual limits and strips of 16 to 128 KB.
  VEX_RAID_INFO& addRaid(VEX_HANDLE handle);
  /// A controller with all its functions; `raid` may be 0.
  VEX_CONTROLLER_INFO& addController(VEX_HANDLE handle, std::uint32_t type, VEX_HANDLE raid);
  /// A free disk of 1 TB under a controller, with that controller's RAID engine, and its
  /// type for a disk type.
  VEX_END_DEVICE_INFO& addDisk(VEX_HANDLE handle, VEX_HANDLE controller);
  /// A phy of 6 Gb/s with this device.
  VEX_PHY_INFO& addPhy(VEX_HANDLE handle, VEX_HANDLE endDevice);
  /// An array of these disks, which become its members and have no free size left.
  VEX_ARRAY_INFO& addArray(VEX_HANDLE handle, const std::string& name, const std::vector<VEX_HANDLE>& disks);
  /// A normal volume of 100 GB in an array.
  VEX_VOLUME_INFO& addVolume(VEX_HANDLE handle, const std::string& name, VEX_HANDLE array,
                             std::uint32_t raidLevel);
  /// A port of a controller, connected to nothing.
  VEX_PORT_INFO& addControllerPort(VEX_HANDLE handle, VEX_HANDLE controller);
  /// A port of a disk, connected both ways with a port of a controller.
  VEX_PORT_INFO& addDiskPort(VEX_HANDLE handle, VEX_HANDLE endDevice, VEX_HANDLE controllerPort);

  // What an enumeration with this scope gives, in order. A scope that does not fit is
  // VEX_STATUS_INVALID_SCOPE, a scope handle that names no controller is VEX_STATUS_INVALID_HANDLE. Arrays
  // have no controller of their own: they and their volumes hang under those of their member disks.

  VEX_STATUS controllersIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
  VEX_STATUS endDevicesIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
  VEX_STATUS physIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
  VEX_STATUS arraysIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
  VEX_STATUS volumesIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
  VEX_STATUS portsIn(Scope scope, std::vector<VEX_HANDLE>& found) const;
};

#endif
