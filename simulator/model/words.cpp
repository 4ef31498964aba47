#include "model/words.h"

namespace simulator {

template <>
const std::initializer_list<Word<RaidLevel>>& wordsOf<RaidLevel>() {
  static const std::initializer_list<Word<RaidLevel>> kWords = {
      {RaidLevel::RAID_0, "RAID_0"},
      {RaidLevel::RAID_1, "RAID_1"},
      {RaidLevel::RAID_5, "RAID_5"},
      {RaidLevel::RAID_10, "RAID_10"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<StripSize>>& wordsOf<StripSize>() {
  static const std::initializer_list<Word<StripSize>> kWords = {
      {StripSize::SIZE_2KB, "SIZE_2KB"},     {StripSize::SIZE_4KB, "SIZE_4KB"},
      {StripSize::SIZE_8KB, "SIZE_8KB"},     {StripSize::SIZE_16KB, "SIZE_16KB"},
      {StripSize::SIZE_32KB, "SIZE_32KB"},   {StripSize::SIZE_64KB, "SIZE_64KB"},
      {StripSize::SIZE_128KB, "SIZE_128KB"}, {StripSize::SIZE_256KB, "SIZE_256KB"},
      {StripSize::SIZE_512KB, "SIZE_512KB"}, {StripSize::SIZE_1MB, "SIZE_1MB"},
      {StripSize::SIZE_2MB, "SIZE_2MB"},     {StripSize::SIZE_4MB, "SIZE_4MB"},
      {StripSize::SIZE_8MB, "SIZE_8MB"},     {StripSize::SIZE_16MB, "SIZE_16MB"},
      {StripSize::SIZE_32MB, "SIZE_32MB"},   {StripSize::SIZE_64MB, "SIZE_64MB"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<ControllerType>>& wordsOf<ControllerType>() {
  static const std::initializer_list<Word<ControllerType>> kWords = {
      {ControllerType::SATA, "SATA"},
      {ControllerType::SCU, "SCU"},
      {ControllerType::NVMe, "NVMe"},
      {ControllerType::Lyx, "Lyx"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<DeviceType>>& wordsOf<DeviceType>() {
  static const std::initializer_list<Word<DeviceType>> kWords = {
      {DeviceType::DISK, "DISK"},
      {DeviceType::NON_DISK_STORAGE, "NON_DISK_STORAGE"},
      {DeviceType::NON_STORAGE, "NON_STORAGE"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<DiskType>>& wordsOf<DiskType>() {
  static const std::initializer_list<Word<DiskType>> kWords = {
      {DiskType::UNKNOWN, "UNKNOWN"},
      {DiskType::SATA, "SATA"},
      {DiskType::NVME, "NVME"},
      {DiskType::Lyx, "Lyx"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<DiskState>>& wordsOf<DiskState>() {
  static const std::initializer_list<Word<DiskState>> kWords = {
      {DiskState::OFFLINE, "OFFLINE"},
      {DiskState::FAILED, "FAILED"},
      {DiskState::SMART_EVENT_TRIGGERED, "SMART_EVENT_TRIGGERED"},
      {DiskState::CONFIG_IS_UPREV, "CONFIG_IS_UPREV"},
      {DiskState::NORMAL, "NORMAL"},
      {DiskState::LOCKED, "LOCKED"},
      {DiskState::MANUAL_OFFLINE, "MANUAL_OFFLINE"},
      {DiskState::INCOMPATIBLE, "INCOMPATIBLE"},
      {DiskState::UNSUPPORTED, "UNSUPPORTED"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<Presence>>& wordsOf<Presence>() {
  static const std::initializer_list<Word<Presence>> kWords = {
      {Presence::PRESENT, "PRESENT"},
      {Presence::ABSENT, "ABSENT"},
      {Presence::UNNOTICED, "UNNOTICED"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<LinkSpeed>>& wordsOf<LinkSpeed>() {
  static const std::initializer_list<Word<LinkSpeed>> kWords = {
      {LinkSpeed::UNKNOWN, "UNKNOWN"},
      {LinkSpeed::GBPS_1_5, "1.5 Gb/s"},
      {LinkSpeed::GBPS_3, "3 Gb/s"},
      {LinkSpeed::GBPS_6, "6 Gb/s"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<X8Role>>& wordsOf<X8Role>() {
  static const std::initializer_list<Word<X8Role>> kWords = {
      {X8Role::NONE, "NONE"}, {X8Role::A, "X8_A"}, {X8Role::B, "X8_B"}};
  return kWords;
}

template <>
const std::initializer_list<Word<WriteCache>>& wordsOf<WriteCache>() {
  static const std::initializer_list<Word<WriteCache>> kWords = {
      {WriteCache::UNKNOWN, "UNKNOWN"}, {WriteCache::OFF, "OFF"}, {WriteCache::ON, "ON"}};
  return kWords;
}

template <>
const std::initializer_list<Word<CachePolicy>>& wordsOf<CachePolicy>() {
  static const std::initializer_list<Word<CachePolicy>> kWords = {
      {CachePolicy::OFF, "OFF"},
      {CachePolicy::WRITE_THROUGH, "WRITE_THROUGH"},
      {CachePolicy::WRITE_BACK, "WRITE_BACK"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<RwhPolicy>>& wordsOf<RwhPolicy>() {
  static const std::initializer_list<Word<RwhPolicy>> kWords = {
      {RwhPolicy::RWH_OFF, "RWH_OFF"},
      {RwhPolicy::RWH_DISTRIBUTED, "RWH_DISTRIBUTED"},
      {RwhPolicy::RWH_JOURNALING_DRIVE, "RWH_JOURNALING_DRIVE"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<WorkKind>>& wordsOf<WorkKind>() {
  static const std::initializer_list<Word<WorkKind>> kWords = {
      {WorkKind::REBUILD, "REBUILD"}, {WorkKind::INITIALIZE, "INITIALIZE"},
      {WorkKind::VERIFY, "VERIFY"},   {WorkKind::VERIFY_AND_FIX, "VERIFY_AND_FIX"},
      {WorkKind::MIGRATE, "MIGRATE"},
  };
  return kWords;
}

}  // namespace simulator
