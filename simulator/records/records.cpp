#include "records/records.h"

#include "engine/work.h"
#include "model/capability.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/redundancy.h"
#include "text_field.h"

namespace simulator {
namespace {

using vexl2::putText;

std::uint32_t flag(bool value) { return value ? 1 : 0; }

template <class Code>
std::uint32_t code(Code value) {
  return static_cast<std::uint32_t>(value);
}

void fillFunctions(const Controller& controller, VEX_CONTROLLER_INFO& info) {
  info.supportsPortLocate = flag(controller.supportsPortLocate);
  info.supportsFunction420 = flag(controller.supportsFunction420);
  info.supportsMarkAsNormal = flag(controller.supportsMarkAsNormal);
  info.supportsVolumeDelete = flag(controller.supportsVolumeDelete);
  info.supportsArrayCreate = flag(controller.supportsArrayCreate);
  info.supportsVolumeModify = flag(controller.supportsVolumeModify);
  info.supportsVolumeRename = flag(controller.supportsVolumeRename);
  info.supportsAddDisksToArray = flag(controller.supportsAddDisksToArray);
  info.supportsVolumeSetCachePolicy = flag(controller.supportsVolumeSetCachePolicy);
  info.supportsVolumeCancelVerify = flag(controller.supportsVolumeCancelVerify);
  info.supportsMarkAsSpare = flag(controller.supportsMarkAsSpare);
}

void fillSwitches(const Controller& controller, VEX_CONTROLLER_INFO& info) {
  info.prebootManagerLoaded = flag(controller.prebootManagerLoaded);
  info.twoTbVolumeSupport = flag(controller.twoTbVolumeSupport);
  info.twoTbDiskSupport = flag(controller.twoTbDiskSupport);
  info.disableESataSpanning = flag(controller.disableESataSpanning);
  info.xorSupported = flag(controller.xorSupported);
  info.xorEnabled = flag(controller.xorEnabled);
  info.nvsramSupported = flag(controller.nvsramSupported);
  info.readPatrolSupported = flag(controller.readPatrolSupported);
  info.readPatrolEnabled = flag(controller.readPatrolEnabled);
  info.rohiSupported = flag(controller.rohiSupported);
  info.rohiEnabled = flag(controller.rohiEnabled);
}

void fillDisk(const Machine& machine, const EndDevice& disk, VEX_END_DEVICE_INFO& info) {
  info.diskType = code(disk.diskType);
  info.diskState = code(stateOf(disk));
  info.diskUsage = code(usageOf(disk));
  info.totalSize = disk.totalSize;
  info.logicalSectorSize = disk.logicalSectorSize;
  info.physicalSectorSize = disk.physicalSectorSize;
  info.freeSize = freeSize(machine, disk);
  info.writeCachePolicy = code(disk.writeCache);
  info.systemDisk = flag(disk.systemDisk);
  info.x8PortA = flag(disk.x8 == X8Role::A);
  info.x8PortB = flag(disk.x8 == X8Role::B);
}

}  // namespace

void fill(const Machine& machine, VEX_SYSTEM_INFO& info) {
  info.interfaceVersionMajor = machine.system.interfaceVersionMajor;
  info.interfaceVersionMinor = machine.system.interfaceVersionMinor;
  putText(info.libraryVersion, machine.system.libraryVersion);
  info.volSetSizeSupport = flag(machine.system.volSetSizeSupport);
  info.passThroughSupport = flag(machine.system.passThroughSupport);
}

void fill(const Machine&, const Controller& controller, VEX_CONTROLLER_INFO& info) {
  info.controllerHandle = controller.handle;
  putText(info.uniqueId, controller.id);
  info.address = controller.address;
  putText(info.name, controller.name);
  info.controllerType = code(controller.type);
  info.raidInfoHandle = controller.engine;
  putText(info.version, controller.version);
  putText(info.prebootManagerVersion, controller.prebootManagerVersion);
  info.vendorId = controller.vendorId;
  info.deviceId = controller.deviceId;
  info.subSystemId = controller.subSystemId;
  info.subVendorId = controller.subVendorId;
  info.hardwareRevisionId = controller.hardwareRevisionId;
  info.subClassCode = controller.subClassCode;
  fillSwitches(controller, info);
  fillFunctions(controller, info);
}

void fill(const Machine& machine, const EndDevice& device, VEX_END_DEVICE_INFO& info) {
  info.endDeviceHandle = device.handle;
  putText(info.uniqueId, device.id);
  info.address = device.address;
  info.deviceType = code(device.type);
  info.raidInfoHandle = machine.controllers.at(device.controller).engine;
  info.arrayHandle = device.array;
  info.controllerHandle = device.controller;
  info.unpublishedNumber = device.unpublishedNumber;
  putText(info.vendorId, device.vendorId);
  putText(info.serialNumber, device.serialNumber);
  putText(info.model, device.model);
  putText(info.firmware, device.firmware);
  if (device.type == DeviceType::DISK) fillDisk(machine, device, info);
  info.managedHotplug = flag(device.managedHotplug);
  info.lyxDomain = device.lyxDomain;
  info.isOrdanNVMe = flag(device.isOrdanNVMe);
  info.unpublishedSize = device.unpublishedSize;
}

void fill(const EndDevice& owner, const Phy& phy, VEX_PHY_INFO& info) {
  const bool isThere = owner.presence == Presence::PRESENT;
  info.phyHandle = phy.handle;
  info.endDeviceHandle = isThere ? owner.handle : 0;
  info.negotiatedLinkSpeed = isThere ? code(phy.linkSpeed) : 0;
}

void fill(const Machine& machine, const Array& array, VEX_ARRAY_INFO& info) {
  info.arrayHandle = array.handle;
  putText(info.uniqueId, array.id);
  putText(info.name, array.name);
  info.state = isBusy(machine, array) ? VEX_ARRAY_STATE_BUSY : VEX_ARRAY_STATE_NORMAL;
  info.totalSize = totalSize(machine, array);
  info.freeSize = freeSize(machine, array);
  info.writeCacheState = code(array.writeCache);
  info.numDisks = static_cast<std::uint32_t>(array.disks.size());
  info.numVolumes = static_cast<std::uint32_t>(array.volumes.size());
}

void fill(const Machine& machine, const Volume& volume, VEX_VOLUME_INFO& info) {
  const Array& array = machine.arrays.at(volume.array);
  const EndDevice& member = machine.devices.at(array.disks.front());
  info.volumeHandle = volume.handle;
  putText(info.uniqueId, volume.id);
  info.arrayHandle = volume.array;
  info.arrayOrdinal = volume.ordinal;
  putText(info.name, volume.name);
  info.state = code(stateOf(machine, volume));
  info.raidLevel = code(volume.level);
  info.totalSize = volume.size;
  info.stripSize = code(volume.stripSize);
  info.numDisks = static_cast<std::uint32_t>(array.disks.size());
  info.migrationProgress = progressOf(machine, volume);
  info.migrationInProgress = flag(volume.work && volume.work->kind == WorkKind::MIGRATE);
  info.cachePolicy = code(volume.cachePolicy);
  info.rwhPolicy = code(volume.rwhPolicy);
  info.journalingDriveHandle = volume.journalingDrive;
  info.systemVolume = flag(volume.systemVolume);
  info.initialized = flag(volume.initialized);
  info.verifyErrors = verifyErrorsOf(machine, volume);
  info.verifyBadBlocks = verifyBadBlocksOf(machine, volume);
  info.logicalSectorSize = static_cast<std::uint32_t>(member.logicalSectorSize);
  info.physicalSectorSize = static_cast<std::uint32_t>(member.physicalSectorSize);
}

void fill(const Machine& machine, const Port& port, VEX_PORT_INFO& info) {
  const EndDevice* const device = machine.devices.find(port.device);
  const Port* const farPort = machine.ports.find(port.connectedTo);
  const bool isFarPortListed = farPort != nullptr && isListed(machine, *farPort);
  info.portHandle = port.handle;
  putText(info.uniqueId, port.id);
  info.address = port.address;
  info.numPhys = port.numPhys;
  info.localDeviceType = device != nullptr ? VEX_LOCAL_DEVICE_END_DEVICE : VEX_LOCAL_DEVICE_CONTROLLER;
  info.localDeviceHandle = port.device;
  info.connectedPortHandle = isFarPortListed ? port.connectedTo : 0;
}

void fill(const Machine&, const RaidEngine& engine, VEX_RAID_INFO& info) {
  info.raidInfoHandle = engine.handle;
  putText(info.uniqueId, engine.id);
  info.maxDisksPerArray = engine.maxDisksPerArray;
  info.maxRaidDisksSupported = engine.maxRaidDisksSupported;
  info.maxVolumesPerArray = engine.maxVolumesPerArray;
  info.maxVolumesPerHba = engine.maxVolumesPerHba;
  info.raidEnabled = flag(engine.raidEnabled);
  info.globalSpareSupport = flag(engine.globalSpareSupport);
  info.dedicatedSpareSupport = flag(engine.dedicatedSpareSupport);
  info.createFromExistingSupport = flag(engine.createFromExistingSupport);
  info.emptyArraysSupport = flag(engine.emptyArraysSupport);
}

void fillLevel(const Machine& machine, const RaidEngine& engine, std::uint32_t levelCode,
               VEX_RAID_LEVEL_INFO& info) {
  const auto level = static_cast<RaidLevel>(levelCode);
  const LevelCapability* const capability = findLevel(engine, level);
  info.supported = flag(capability != nullptr);
  if (capability == nullptr) return;
  info.minDisks = capability->minDisks;
  info.maxDisks = capability->maxDisks;
  info.defaultStripSize = code(capability->defaultStripSize);
  info.migrationTargets = capability->migrationTargets;
  info.migrationRequiresDisk = capability->migrationRequiresDisk;
  info.evenDiskCount = flag(capability->evenDiskCount);
  info.oddDiskCount = flag(capability->oddDiskCount);
  info.stripSizes = capability->stripSizes;
  info.created = flag(isLevelInUse(machine, engine, level));
}

}  // namespace simulator
