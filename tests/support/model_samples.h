#ifndef MIRN_TESTS_SUPPORT_MODEL_SAMPLES_H
#define MIRN_TESTS_SUPPORT_MODEL_SAMPLES_H

#include <functional>
#include <vector>

#include "array.h"
#include "controller_builder.h"
#include "enddevice.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "version.h"
#include "volume.h"

/// A valid object of each model class. `complete` gives its builder with every field set, for a test to
/// change what it is about:
///
///     const Volume volume = complete<Volume>().name(L"Data").build();

template <class Model>
using Setters = std::vector<std::function<void(typename Model::Builder&)>>;

/// One call a field, in the order of the flags.
template <class Model>
Setters<Model> setters();

template <class Model>
typename Model::Builder complete() {
  typename Model::Builder builder;
  for (const auto& set : setters<Model>()) set(builder);
  return builder;
}

template <>
inline Setters<Array> setters<Array>() {
  using Builder = Array::Builder;
  return {[](Builder& b) { b.id(L"21"); },
          [](Builder& b) { b.handle(0x21); },
          [](Builder& b) { b.name(L"Array_0"); },
          [](Builder& b) { b.state(ArrayState::NORMAL); },
          [](Builder& b) { b.totalSize(3000); },
          [](Builder& b) { b.freeSize(1000); },
          [](Builder& b) { b.writeCachePolicy(WriteCacheState::ON); },
          [](Builder& b) { b.numDisks(3); },
          [](Builder& b) { b.numVolumes(1); }};
}

template <>
inline Setters<Volume> setters<Volume>() {
  using Builder = Volume::Builder;
  return {[](Builder& b) { b.id(L"31"); },
          [](Builder& b) { b.handle(0x31); },
          [](Builder& b) { b.arrayHandle(0x21); },
          [](Builder& b) { b.arrayOrdinal(1); },
          [](Builder& b) { b.name(L"Data"); },
          [](Builder& b) { b.state(VolumeState::NORMAL); },
          [](Builder& b) { b.raidLevel(RaidLevel::RAID_5); },
          [](Builder& b) { b.totalSize(2000); },
          [](Builder& b) { b.stripSize(StripSize::SIZE_64KB); },
          [](Builder& b) { b.numDisks(3); },
          [](Builder& b) { b.migrProgress(40); },
          [](Builder& b) { b.cachePolicy(CachePolicy::WRITE_BACK); },
          [](Builder& b) { b.systemVolume(true); },
          [](Builder& b) { b.migration(false); },
          [](Builder& b) { b.initialized(true); },
          [](Builder& b) {
            b.verify({2, 5});
          },
          [](Builder& b) {
            b.sectorSize({512, 4096});
          },
          [](Builder& b) { b.journalingDriveHandle(0x41); },
          [](Builder& b) { b.rwhPolicy(RwhPolicy::RWH_DISTRIBUTED); }};
}

template <>
inline Setters<Port> setters<Port>() {
  using Builder = Port::Builder;
  return {[](Builder& b) { b.id(L"51"); },
          [](Builder& b) { b.handle(0x51); },
          [](Builder& b) { b.address(L"1-2-3-4"); },
          [](Builder& b) { b.numPhys(4); },
          [](Builder& b) { b.localDeviceType(PortLocalDeviceType::CONTROLLER); },
          [](Builder& b) { b.localDeviceHandle(0x11); },
          [](Builder& b) { b.connectedPortHandle(0x52); }};
}

template <>
inline Setters<Version> setters<Version>() {
  using Builder = Version::Builder;
  return {
      [](Builder& b) { b.productVersion(L"17.5.0"); },   [](Builder& b) { b.pluginVersion(L"5.4.0.1465"); },
      [](Builder& b) { b.vexInterfaceVersion(L"2.3"); }, [](Builder& b) { b.vexVersion(L"17.5.1"); },
      [](Builder& b) { b.volSetSizeSupport(true); },     [](Builder& b) { b.passThroughSupport(false); }};
}

template <>
inline Setters<RaidLevelSupport> setters<RaidLevelSupport>() {
  using Builder = RaidLevelSupport::Builder;
  return {[](Builder& b) { b.raidLevel(RaidLevel::RAID_5); },
          [](Builder& b) { b.supported(true); },
          [](Builder& b) { b.minDisks(3); },
          [](Builder& b) { b.maxDisks(24); },
          [](Builder& b) { b.defaultStripSize(StripSize::SIZE_64KB); },
          [](Builder& b) {
            b.migrSupport({{RaidLevel::RAID_0, false}, {RaidLevel::RAID_10, true}});
          },
          [](Builder& b) { b.evenDiskCount(false); },
          [](Builder& b) { b.oddDiskCount(true); },
          [](Builder& b) {
            b.stripSizesSupported({StripSize::SIZE_128KB, StripSize::SIZE_16KB});
          },
          [](Builder& b) { b.created(true); }};
}

template <>
inline Setters<Raid> setters<Raid>() {
  using Builder = Raid::Builder;
  return {[](Builder& b) { b.id(L"61"); },
          [](Builder& b) { b.handle(0x61); },
          [](Builder& b) { b.maxDisksPerArray(24); },
          [](Builder& b) { b.maxRaidDisksSupported(48); },
          [](Builder& b) { b.maxVolumesPerArray(2); },
          [](Builder& b) { b.maxVolumesPerHba(12); },
          [](Builder& b) { b.raidEnabled(true); },
          [](Builder& b) { b.globalSpareSupport(false); },
          [](Builder& b) { b.dedicatedSpareSupport(true); },
          [](Builder& b) { b.createFromExistingSupport(false); },
          [](Builder& b) { b.emptyArraysSupport(true); }};
}

/// A disk of a SATA controller, in an array.
inline EndDevice::Disk sampleDisk() {
  EndDevice::Disk disk;
  disk.type = DiskType::SATA;
  disk.state = DiskState::NORMAL;
  disk.usage = DiskUsage::ARRAY_MEMBER;
  disk.totalSize = 5000;
  disk.logicalSectorSize = 512;
  disk.physicalSectorSize = 4096;
  disk.freeSize = 600;
  disk.writeCachePolicy = WriteCacheState::OFF;
  disk.systemDisk = true;
  return disk;
}

template <>
inline Setters<EndDevice> setters<EndDevice>() {
  using Builder = EndDevice::Builder;
  return {[](Builder& b) { b.id(L"41"); },
          [](Builder& b) { b.handle(0x41); },
          [](Builder& b) { b.controllerHandle(0x11); },
          [](Builder& b) { b.raidHandle(0x61); },
          [](Builder& b) { b.arrayHandle(0x21); },
          [](Builder& b) { b.phyHandle(0x71); },
          [](Builder& b) { b.address(L"0-1-0-0"); },
          [](Builder& b) { b.deviceType(DeviceType::DISK); },
          [](Builder& b) { b.unpublishedNumber(77); },
          [](Builder& b) { b.vendorId(L"1234"); },
          [](Builder& b) { b.serialNumber(L"SN-1"); },
          [](Builder& b) { b.model(L"Model A"); },
          [](Builder& b) { b.firmware(L"F1"); },
          [](Builder& b) { b.disk(sampleDisk()); },
          [](Builder& b) { b.unpublishedSize(88); },
          [](Builder& b) { b.negotiatedLinkSpeed(LinkSpeed::GBPS_6); },
          [](Builder& b) { b.lyxDomain(9); },
          [](Builder& b) { b.isOrdanNVMe(true); },
          [](Builder& b) { b.managedHotplug(true); }};
}

template <>
inline Setters<Controller::Functions> setters<Controller::Functions>() {
  using Builder = Controller::Functions::Builder;
  return {[](Builder& b) { b.portLocate(true); },
          [](Builder& b) { b.function420(true); },
          [](Builder& b) { b.markAsNormal(false); },
          [](Builder& b) { b.volumeDelete(true); },
          [](Builder& b) { b.arrayCreate(false); },
          [](Builder& b) { b.volumeModify(true); },
          [](Builder& b) { b.volumeRename(false); },
          [](Builder& b) { b.addDisksToArray(true); },
          [](Builder& b) { b.volumeSetCachePolicy(false); },
          [](Builder& b) { b.volumeCancelVerify(true); },
          [](Builder& b) { b.markAsSpare(false); }};
}

template <>
inline Setters<Controller> setters<Controller>() {
  using Builder = Controller::Builder;
  return {[](Builder& b) { b.id(L"11"); },
          [](Builder& b) { b.handle(0x11); },
          [](Builder& b) { b.raidHandle(0x61); },
          [](Builder& b) { b.address(L"0-0-23-0"); },
          [](Builder& b) { b.name(L"Controller A"); },
          [](Builder& b) { b.type(ControllerType::Lyx); },
          [](Builder& b) { b.mode(ControllerMode::RAID); },
          [](Builder& b) { b.version(L"1.2"); },
          [](Builder& b) { b.availableDisks(6); },
          [](Builder& b) { b.availableDevices(7); },
          [](Builder& b) { b.disableESataSpanning(true); },
          [](Builder& b) {
            b.pciIds({0x8ABC, 0x2822, 0, 4, 7, 0x1D});
          },
          [](Builder& b) {
            b.preboot({L"3.4", true, false, true});
          },
          [](Builder& b) {
            b.xorSwitch({true, false});
          },
          [](Builder& b) { b.nvsramSupported(true); },
          [](Builder& b) { b.supportedFunctions(complete<Controller::Functions>().build()); },
          [](Builder& b) {
            b.readPatrol({true, true});
          },
          [](Builder& b) {
            b.rohi({false, true});
          }};
}

#endif
