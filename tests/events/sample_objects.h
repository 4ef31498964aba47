#ifndef MIRN_TESTS_EVENTS_SAMPLE_OBJECTS_H
#define MIRN_TESTS_EVENTS_SAMPLE_OBJECTS_H

#include <string>

#include "enddevice.h"
#include "volume.h"

inline Volume sampleVolume(const std::wstring& id, VolumeState state = VolumeState::NORMAL,
                           const std::wstring& name = L"Data") {
  return Volume::Builder()
      .id(id)
      .handle(1)
      .arrayHandle(2)
      .arrayOrdinal(0)
      .name(name)
      .state(state)
      .raidLevel(RaidLevel::RAID_5)
      .totalSize(1)
      .stripSize(StripSize::SIZE_64KB)
      .numDisks(3)
      .migrProgress(0)
      .cachePolicy(CachePolicy::OFF)
      .systemVolume(false)
      .migration(false)
      .initialized(true)
      .verify({})
      .sectorSize({})
      .journalingDriveHandle(0)
      .rwhPolicy(RwhPolicy::RWH_OFF)
      .build();
}

/// What tells one sample device from another.
struct SampleDevice {
  std::wstring id;
  DiskState state = DiskState::NORMAL;
  DiskType type = DiskType::SATA;
  DiskUsage usage = DiskUsage::PASS_THROUGH;
  std::wstring serialNumber = L"SN1";
};

inline EndDevice sampleDevice(const SampleDevice& sample) {
  EndDevice::Disk disk;
  disk.type = sample.type;
  disk.state = sample.state;
  disk.usage = sample.usage;
  return EndDevice::Builder()
      .id(sample.id)
      .handle(1)
      .controllerHandle(2)
      .raidHandle(3)
      .arrayHandle(0)
      .phyHandle(4)
      .address(L"0-1-2-3")
      .deviceType(DeviceType::DISK)
      .unpublishedNumber(0)
      .vendorId(L"0x1")
      .serialNumber(sample.serialNumber)
      .model(L"Model")
      .firmware(L"1.0")
      .disk(disk)
      .unpublishedSize(0)
      .negotiatedLinkSpeed(LinkSpeed::GBPS_6)
      .lyxDomain(0)
      .isOrdanNVMe(false)
      .managedHotplug(false)
      .build();
}

#endif
