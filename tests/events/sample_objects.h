#ifndef MIRN_TESTS_EVENTS_SAMPLE_OBJECTS_H
#define MIRN_TESTS_EVENTS_SAMPLE_OBJECTS_H

#include <string>

#include "support/model_samples.h"

inline Volume sampleVolume(const std::wstring& id, VolumeState state = VolumeState::NORMAL,
                           const std::wstring& name = L"Data") {
  return complete<Volume>().id(id).state(state).name(name).build();
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
  EndDevice::Disk disk = sampleDisk();
  disk.type = sample.type;
  disk.state = sample.state;
  disk.usage = sample.usage;
  return complete<EndDevice>()
      .id(sample.id)
      .address(L"0-1-2-3")
      .serialNumber(sample.serialNumber)
      .disk(disk)
      .build();
}

#endif
