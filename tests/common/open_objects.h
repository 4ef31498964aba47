#ifndef MIRN_TESTS_COMMON_OPEN_OBJECTS_H
#define MIRN_TESTS_COMMON_OPEN_OBJECTS_H

#include "support/model_samples.h"

/// An object of which every field is published that can be.
template <class Model>
Model openObject() {
  return complete<Model>().build();
}

template <>
inline Volume openObject() {
  return complete<Volume>().rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).build();
}

template <>
inline EndDevice openObject() {
  EndDevice::Disk disk = sampleDisk();
  disk.type = DiskType::Lyx;
  disk.x8Disk = X8Disk::X8_A;
  return complete<EndDevice>().disk(disk).build();
}

template <>
inline Raid openObject() {
  Raid raid = complete<Raid>().build();
  raid.setLevels({complete<RaidLevelSupport>().build()});
  return raid;
}

template <>
inline RaidLevelSupport openObject() {
  RaidLevelSupport level = complete<RaidLevelSupport>().build();
  level.setDefaultStripSizes({{3, StripSize::SIZE_64KB}});
  return level;
}

#endif
