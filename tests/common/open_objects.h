#ifndef MIRN_TESTS_COMMON_OPEN_OBJECTS_H
#define MIRN_TESTS_COMMON_OPEN_OBJECTS_H

#include <gtest/gtest.h>

#include <string>

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

/// The classes that have these, and their names in tests.
using OpenModels =
    testing::Types<Array, Controller, EndDevice, Port, Raid, RaidLevelSupport, Version, Volume>;

template <class Model>
constexpr const char* kClassName = nullptr;
template <>
inline constexpr const char* kClassName<Array> = "Array";
template <>
inline constexpr const char* kClassName<Controller> = "Controller";
template <>
inline constexpr const char* kClassName<EndDevice> = "EndDevice";
template <>
inline constexpr const char* kClassName<Port> = "Port";
template <>
inline constexpr const char* kClassName<Raid> = "Raid";
template <>
inline constexpr const char* kClassName<RaidLevelSupport> = "RaidLevelSupport";
template <>
inline constexpr const char* kClassName<Version> = "Version";
template <>
inline constexpr const char* kClassName<Volume> = "Volume";

struct ByClass {
  template <class Model>
  static std::string GetName(int) {  // NOLINT(readability-identifier-naming): the framework's name
    return kClassName<Model>;
  }
};

#endif
