#include "scripted_library/scripted_machine.h"

#include <algorithm>

namespace {

constexpr std::uint64_t kGigabyte = 1'000'000'000;
constexpr std::uint32_t kOn = 1;

std::string uniqueId(const char* kind, VEX_HANDLE handle) { return kind + ("-" + std::to_string(handle)); }

VEX_RAID_LEVEL_INFO levelInfo(std::uint32_t minDisks, std::uint32_t maxDisks,
                              std::uint32_t migrationTargets) {
  VEX_RAID_LEVEL_INFO info = {};
  info.supported = kOn;
  info.minDisks = minDisks;
  info.maxDisks = maxDisks;
  info.defaultStripSize = VEX_STRIP_SIZE_64KB;
  info.migrationTargets = migrationTargets;
  info.migrationRequiresDisk = migrationTargets & VEX_RAID_LEVEL_5;
  info.evenDiskCount = kOn;
  info.oddDiskCount = minDisks == 2 && maxDisks == 2 ? 0 : kOn;
  info.stripSizes = VEX_STRIP_SIZE_16KB | VEX_STRIP_SIZE_32KB | VEX_STRIP_SIZE_64KB | VEX_STRIP_SIZE_128KB;
  return info;
}

std::uint32_t diskTypeUnder(const VEX_CONTROLLER_INFO& controller) {
  switch (controller.controllerType) {
    case VEX_CONTROLLER_TYPE_LYX:
      return VEX_DISK_TYPE_LYX;
    case VEX_CONTROLLER_TYPE_NVME:
      return VEX_DISK_TYPE_NVME;
    default:
      return VEX_DISK_TYPE_SATA;
  }
}

}  // namespace

ScriptedMachine::ScriptedMachine() {
  system.interfaceVersionMajor = 3;
  system.interfaceVersionMinor = 1;
  setText(system.libraryVersion, "8.7.6.5432");
  system.volSetSizeSupport = kOn;
  system.passThroughSupport = kOn;
}

VEX_RAID_INFO& ScriptedMachine::addRaid(VEX_HANDLE handle) {
  raidLevels[{handle, VEX_RAID_LEVEL_0}] = levelInfo(2, 6, VEX_RAID_LEVEL_5);
  raidLevels[{handle, VEX_RAID_LEVEL_1}] = levelInfo(2, 2, VEX_RAID_LEVEL_0 | VEX_RAID_LEVEL_5);
  raidLevels[{handle, VEX_RAID_LEVEL_5}] = levelInfo(3, 6, VEX_RAID_LEVEL_0);
  raidLevels[{handle, VEX_RAID_LEVEL_10}] = levelInfo(4, 4, VEX_RAID_LEVEL_0 | VEX_RAID_LEVEL_5);
  raidLevels[{handle, VEX_RAID_LEVEL_10}].oddDiskCount = 0;
  VEX_RAID_INFO raid = {};
  raid.raidInfoHandle = handle;
  setText(raid.uniqueId, uniqueId("raid", handle));
  raid.maxDisksPerArray = 6;
  raid.maxRaidDisksSupported = 12;
  raid.maxVolumesPerArray = 2;
  raid.maxVolumesPerHba = 4;
  raid.raidEnabled = kOn;
  raid.globalSpareSupport = kOn;
  raid.dedicatedSpareSupport = kOn;
  raid.createFromExistingSupport = kOn;
  raid.emptyArraysSupport = kOn;
  return raids.add(raid);
}

VEX_CONTROLLER_INFO& ScriptedMachine::addController(VEX_HANDLE handle, std::uint32_t type, VEX_HANDLE raid) {
  VEX_CONTROLLER_INFO controller = {};
  controller.controllerHandle = handle;
  setText(controller.uniqueId, uniqueId("controller", handle));
  controller.address = handle;
  setText(controller.name, "Controller " + std::to_string(handle));
  controller.controllerType = type;
  controller.raidInfoHandle = raid;
  setText(controller.version, "1.2.3");
  setText(controller.prebootManagerVersion, "4.5.6");
  controller.vendorId = 0x1234;
  controller.deviceId = 0x5678;
  controller.subClassCode = 4;
  constexpr std::uint32_t VEX_CONTROLLER_INFO::*kFlags[] = {
      &VEX_CONTROLLER_INFO::prebootManagerLoaded,       &VEX_CONTROLLER_INFO::twoTbVolumeSupport,
      &VEX_CONTROLLER_INFO::twoTbDiskSupport,           &VEX_CONTROLLER_INFO::supportsPortLocate,
      &VEX_CONTROLLER_INFO::supportsFunction420,        &VEX_CONTROLLER_INFO::supportsMarkAsNormal,
      &VEX_CONTROLLER_INFO::supportsVolumeDelete,       &VEX_CONTROLLER_INFO::supportsArrayCreate,
      &VEX_CONTROLLER_INFO::supportsVolumeModify,       &VEX_CONTROLLER_INFO::supportsVolumeRename,
      &VEX_CONTROLLER_INFO::supportsAddDisksToArray,    &VEX_CONTROLLER_INFO::supportsVolumeSetCachePolicy,
      &VEX_CONTROLLER_INFO::supportsVolumeCancelVerify, &VEX_CONTROLLER_INFO::supportsMarkAsSpare,
      &VEX_CONTROLLER_INFO::readPatrolSupported,        &VEX_CONTROLLER_INFO::rohiSupported,
  };
  for (const auto flag : kFlags) controller.*flag = kOn;
  return controllers.add(controller);
}

VEX_END_DEVICE_INFO& ScriptedMachine::addDisk(VEX_HANDLE handle, VEX_HANDLE controller) {
  VEX_END_DEVICE_INFO disk = {};
  disk.endDeviceHandle = handle;
  setText(disk.uniqueId, uniqueId("disk", handle));
  disk.address = handle;
  disk.deviceType = VEX_DEVICE_TYPE_DISK;
  disk.raidInfoHandle = controllers.at(controller).raidInfoHandle;
  disk.controllerHandle = controller;
  setText(disk.vendorId, "1234");
  setText(disk.serialNumber, "SN" + std::to_string(handle));
  setText(disk.model, "Model");
  setText(disk.firmware, "FW1");
  disk.diskType = diskTypeUnder(controllers.at(controller));
  disk.diskState = VEX_DISK_STATE_NORMAL;
  disk.diskUsage = VEX_DISK_USAGE_PASS_THROUGH;
  disk.totalSize = 1000 * kGigabyte;
  disk.logicalSectorSize = 512;
  disk.physicalSectorSize = 4096;
  disk.freeSize = disk.totalSize;
  disk.writeCachePolicy = VEX_WRITE_CACHE_ON;
  return endDevices.add(disk);
}

VEX_PHY_INFO& ScriptedMachine::addPhy(VEX_HANDLE handle, VEX_HANDLE endDevice) {
  VEX_PHY_INFO phy = {};
  phy.phyHandle = handle;
  phy.endDeviceHandle = endDevice;
  phy.negotiatedLinkSpeed = VEX_LINK_SPEED_6_GBPS;
  return phys.add(phy);
}

VEX_ARRAY_INFO& ScriptedMachine::addArray(VEX_HANDLE handle, const std::string& name,
                                          const std::vector<VEX_HANDLE>& disks) {
  VEX_ARRAY_INFO array = {};
  array.arrayHandle = handle;
  setText(array.uniqueId, uniqueId("array", handle));
  setText(array.name, name);
  array.state = VEX_ARRAY_STATE_NORMAL;
  array.writeCacheState = VEX_WRITE_CACHE_ON;
  array.numDisks = static_cast<std::uint32_t>(disks.size());
  for (const VEX_HANDLE handleOfDisk : disks) {
    VEX_END_DEVICE_INFO& disk = endDevices.at(handleOfDisk);
    disk.arrayHandle = handle;
    disk.diskUsage = VEX_DISK_USAGE_ARRAY_MEMBER;
    disk.freeSize = 0;
    array.totalSize += disk.totalSize;
  }
  array.freeSize = array.totalSize;
  return arrays.add(array);
}

VEX_VOLUME_INFO& ScriptedMachine::addVolume(VEX_HANDLE handle, const std::string& name,
                                            VEX_HANDLE arrayHandle, std::uint32_t raidLevel) {
  VEX_ARRAY_INFO& array = arrays.at(arrayHandle);
  VEX_VOLUME_INFO volume = {};
  volume.volumeHandle = handle;
  setText(volume.uniqueId, uniqueId("volume", handle));
  volume.arrayHandle = arrayHandle;
  volume.arrayOrdinal = array.numVolumes++;
  setText(volume.name, name);
  volume.state = VEX_VOLUME_STATE_NORMAL;
  volume.raidLevel = raidLevel;
  volume.totalSize = 100 * kGigabyte;
  volume.stripSize = VEX_STRIP_SIZE_64KB;
  volume.numDisks = array.numDisks;
  volume.cachePolicy = VEX_CACHE_POLICY_OFF;
  volume.initialized = kOn;
  volume.logicalSectorSize = 512;
  volume.physicalSectorSize = 4096;
  array.freeSize -= std::min(array.freeSize, volume.totalSize);
  return volumes.add(volume);
}

VEX_PORT_INFO& ScriptedMachine::addControllerPort(VEX_HANDLE handle, VEX_HANDLE controller) {
  VEX_PORT_INFO port = {};
  port.portHandle = handle;
  setText(port.uniqueId, uniqueId("port", handle));
  port.address = handle;
  port.numPhys = 1;
  port.localDeviceType = VEX_LOCAL_DEVICE_CONTROLLER;
  port.localDeviceHandle = controller;
  return ports.add(port);
}

VEX_PORT_INFO& ScriptedMachine::addDiskPort(VEX_HANDLE handle, VEX_HANDLE endDevice,
                                            VEX_HANDLE controllerPort) {
  VEX_PORT_INFO port = {};
  port.portHandle = handle;
  setText(port.uniqueId, uniqueId("port", handle));
  port.address = handle;
  port.numPhys = 1;
  port.localDeviceType = VEX_LOCAL_DEVICE_END_DEVICE;
  port.localDeviceHandle = endDevice;
  port.connectedPortHandle = controllerPort;
  ports.at(controllerPort).connectedPortHandle = handle;
  return ports.add(port);
}
