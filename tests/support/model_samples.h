#ifndef MIRN_TESTS_SUPPORT_MODEL_SAMPLES_H
#define MIRN_TESTS_SUPPORT_MODEL_SAMPLES_H

#include "array.h"
#include "controller_builder.h"
#include "enddevice.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "support/field_samples.h"
#include "version.h"
#include "volume.h"

/// A valid object of each model class. `complete` gives its builder with every field set, for a test to
/// change what it is about:
///
///     const Volume volume = complete<Volume>().name(L"Data").build();
///
/// A field has the value that `tellStory` gives it, where the tests' stories want one, and else a value by
/// its place in the class's list.

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

template <class Model>
typename Model::Builder complete();

inline void tellStory(Array::Builder& b) {
  b.id(L"21")
      .handle(0x21)
      .name(L"Array_0")
      .state(ArrayState::NORMAL)
      .totalSize(3000)
      .freeSize(1000)
      .writeCachePolicy(WriteCacheState::ON)
      .numDisks(3)
      .numVolumes(1);
}

inline void tellStory(Volume::Builder& b) {
  b.id(L"31")
      .handle(0x31)
      .arrayHandle(0x21)
      .arrayOrdinal(1)
      .name(L"Data")
      .state(VolumeState::NORMAL)
      .raidLevel(RaidLevel::RAID_5)
      .totalSize(2000)
      .stripSize(StripSize::SIZE_64KB)
      .numDisks(3)
      .migrProgress(40)
      .cachePolicy(CachePolicy::WRITE_BACK)
      .systemVolume(true)
      .migration(false)
      .initialized(true)
      .verify({2, 5})
      .sectorSize({512, 4096})
      .journalingDriveHandle(0x41)
      .rwhPolicy(RwhPolicy::RWH_DISTRIBUTED);
}

inline void tellStory(Port::Builder& b) {
  b.id(L"51")
      .handle(0x51)
      .address(L"1-2-3-4")
      .numPhys(4)
      .localDeviceType(PortLocalDeviceType::CONTROLLER)
      .localDeviceHandle(0x11)
      .connectedPortHandle(0x52);
}

inline void tellStory(Version::Builder& b) {
  b.productVersion(L"17.5.0")
      .pluginVersion(L"5.4.0.1465")
      .vexInterfaceVersion(L"2.3")
      .vexVersion(L"17.5.1")
      .volSetSizeSupport(true)
      .passThroughSupport(false);
}

inline void tellStory(RaidLevelSupport::Builder& b) {
  b.raidLevel(RaidLevel::RAID_5)
      .supported(true)
      .minDisks(3)
      .maxDisks(24)
      .defaultStripSize(StripSize::SIZE_64KB)
      .migrSupport({{RaidLevel::RAID_0, false}, {RaidLevel::RAID_10, true}})
      .evenDiskCount(false)
      .oddDiskCount(true)
      .stripSizesSupported({StripSize::SIZE_128KB, StripSize::SIZE_16KB})
      .created(true);
}

inline void tellStory(Raid::Builder& b) {
  b.id(L"61")
      .handle(0x61)
      .maxDisksPerArray(24)
      .maxRaidDisksSupported(48)
      .maxVolumesPerArray(2)
      .maxVolumesPerHba(12)
      .raidEnabled(true)
      .globalSpareSupport(false)
      .dedicatedSpareSupport(true)
      .createFromExistingSupport(false)
      .emptyArraysSupport(true);
}

inline void tellStory(EndDevice::Builder& b) {
  b.id(L"41")
      .handle(0x41)
      .controllerHandle(0x11)
      .raidHandle(0x61)
      .arrayHandle(0x21)
      .phyHandle(0x71)
      .address(L"0-1-0-0")
      .deviceType(DeviceType::DISK)
      .unpublishedNumber(77)
      .vendorId(L"1234")
      .serialNumber(L"SN-1")
      .model(L"Model A")
      .firmware(L"F1")
      .disk(sampleDisk())
      .unpublishedSize(88)
      .negotiatedLinkSpeed(LinkSpeed::GBPS_6)
      .lyxDomain(9)
      .isOrdanNVMe(true)
      .managedHotplug(true);
}

inline void tellStory(Controller::Functions::Builder& b) {
  b.portLocate(true)
      .function420(true)
      .markAsNormal(false)
      .volumeDelete(true)
      .arrayCreate(false)
      .volumeModify(true)
      .volumeRename(false)
      .addDisksToArray(true)
      .volumeSetCachePolicy(false)
      .volumeCancelVerify(true)
      .markAsSpare(false);
}

inline void tellStory(Controller::Builder& b) {
  b.id(L"11")
      .handle(0x11)
      .raidHandle(0x61)
      .address(L"0-0-23-0")
      .name(L"Controller A")
      .type(ControllerType::Lyx)
      .mode(ControllerMode::RAID)
      .version(L"1.2")
      .availableDisks(6)
      .availableDevices(7)
      .disableESataSpanning(true)
      .pciIds({0x8ABC, 0x2822, 0, 4, 7, 0x1D})
      .preboot({L"3.4", true, false, true})
      .xorSwitch({true, false})
      .nvsramSupported(true)
      .supportedFunctions(complete<Controller::Functions>().build())
      .readPatrol({true, true})
      .rohi({false, true});
}

template <class Model>
typename Model::Builder complete() {
  typename Model::Builder builder = filledBuilder<Model>();
  tellStory(builder);
  return builder;
}

#endif
