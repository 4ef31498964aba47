#ifndef MIRN_TESTS_SUPPORT_MODEL_MAKERS_H
#define MIRN_TESTS_SUPPORT_MODEL_MAKERS_H

#include <string>

#include "support/model_samples.h"

/// Model objects that stay changeable until they are read. Each starts complete, under an id of digits, with
/// a handle of its own:
///
///     aVolume(L"7").inArray(L"2").state(VolumeState::DEGRADED)

/// Far from the ids, so that a handle is never taken for one.
inline VEX_HANDLE handleOf(const std::wstring& id) { return static_cast<VEX_HANDLE>(std::stoul(id)) + 1000; }

/// What all of them share: a builder, under `Derived`'s verbs.
template <class Derived, class Model>
class ModelMaker {
 public:
  explicit ModelMaker(const std::wstring& id) : m_id(id) { m_builder.id(id).handle(handleOf(id)); }

  const std::wstring& id() const { return m_id; }
  Derived& handle(VEX_HANDLE value) {
    return with([&](auto& b) { b.handle(value); });
  }

 protected:
  template <class Change>
  Derived& with(Change change) {
    change(m_builder);
    return static_cast<Derived&>(*this);
  }

  typename Model::Builder m_builder = complete<Model>();

 private:
  std::wstring m_id;
};

/// A healthy RAID 5 volume with 512-byte sectors, in no array.
class VolumeMaker : public ModelMaker<VolumeMaker, Volume> {
 public:
  explicit VolumeMaker(const std::wstring& id) : ModelMaker(id) {
    name(L"Volume" + id).rwhPolicy(RwhPolicy::RWH_OFF).sectorSize(512);
  }

  VolumeMaker& name(const std::wstring& value) {
    return with([&](auto& b) { b.name(value); });
  }
  VolumeMaker& state(VolumeState value) {
    return with([&](auto& b) { b.state(value); });
  }
  VolumeMaker& raidLevel(RaidLevel value) {
    return with([&](auto& b) { b.raidLevel(value); });
  }
  VolumeMaker& totalSize(std::uint64_t value) {
    return with([&](auto& b) { b.totalSize(value); });
  }
  VolumeMaker& stripSize(StripSize value) {
    return with([&](auto& b) { b.stripSize(value); });
  }
  VolumeMaker& cachePolicy(CachePolicy value) {
    return with([&](auto& b) { b.cachePolicy(value); });
  }
  VolumeMaker& rwhPolicy(RwhPolicy value) {
    return with([&](auto& b) { b.rwhPolicy(value); });
  }
  VolumeMaker& sectorSize(std::uint32_t logical) {
    return with([&](auto& b) { b.sectorSize({logical, 4096}); });
  }
  VolumeMaker& inArray(const std::wstring& arrayId) {
    m_arrayId = arrayId;
    return *this;
  }
  VolumeMaker& journalingDrive(const std::wstring& id) {
    m_journalingDriveId = id;
    return *this;
  }

  Volume make() const {
    Volume volume = m_builder.build();
    volume.setArrayId(m_arrayId);
    volume.setJournalingDriveId(m_journalingDriveId);
    return volume;
  }

 private:
  std::wstring m_arrayId;
  std::wstring m_journalingDriveId;
};

/// A free disk with 512-byte sectors, on no controller.
class DiskMaker : public ModelMaker<DiskMaker, EndDevice> {
 public:
  explicit DiskMaker(const std::wstring& id) : ModelMaker(id) { usage(DiskUsage::PASS_THROUGH); }

  DiskMaker& deviceType(DeviceType value) {
    return with([&](auto& b) { b.deviceType(value); });
  }
  DiskMaker& usage(DiskUsage value) {
    m_disk.usage = value;
    return *this;
  }
  DiskMaker& state(DiskState value) {
    m_disk.state = value;
    return *this;
  }
  DiskMaker& x8(X8Disk value) {
    m_disk.x8Disk = value;
    return *this;
  }
  DiskMaker& sectorSize(std::uint64_t logical) {
    m_disk.logicalSectorSize = logical;
    return *this;
  }
  DiskMaker& inArray(const std::wstring& arrayId) {
    m_arrayId = arrayId;
    return *this;
  }
  DiskMaker& onController(const std::wstring& id) {
    m_controllerId = id;
    return *this;
  }

  EndDevice make() const {
    auto builder = m_builder;
    EndDevice device = builder.disk(m_disk).build();
    device.setArrayId(m_arrayId);
    device.setControllerId(m_controllerId);
    return device;
  }

 private:
  EndDevice::Disk m_disk = sampleDisk();
  std::wstring m_arrayId;
  std::wstring m_controllerId;
};

/// An array with one volume and a write cache.
class ArrayMaker : public ModelMaker<ArrayMaker, Array> {
 public:
  using ModelMaker::ModelMaker;

  ArrayMaker& numVolumes(std::uint32_t value) {
    return with([&](auto& b) { b.numVolumes(value); });
  }
  ArrayMaker& writeCachePolicy(WriteCacheState value) {
    return with([&](auto& b) { b.writeCachePolicy(value); });
  }

  Array make() const { return m_builder.build(); }
};

/// A SATA controller with both switches off, that lets clients set the cache policy.
class ControllerMaker : public ModelMaker<ControllerMaker, Controller> {
 public:
  explicit ControllerMaker(const std::wstring& id) : ModelMaker(id) {
    type(ControllerType::SATA).readPatrol(false).rohi(false).setsCachePolicy(true);
  }

  ControllerMaker& type(ControllerType value) {
    return with([&](auto& b) { b.type(value); });
  }
  ControllerMaker& name(const std::wstring& value) {
    return with([&](auto& b) { b.name(value); });
  }
  ControllerMaker& readPatrol(bool enabled) {
    return with([&](auto& b) { b.readPatrol({true, enabled}); });
  }
  ControllerMaker& rohi(bool enabled) {
    return with([&](auto& b) { b.rohi({true, enabled}); });
  }
  /// Both switches as a controller has them that supports neither.
  ControllerMaker& unsupportedSwitches(bool enabled) {
    return with([&](auto& b) { b.readPatrol({false, enabled}).rohi({false, enabled}); });
  }
  ControllerMaker& setsCachePolicy(bool value) {
    return with([&](auto& b) {
      b.supportedFunctions(
          complete<Controller::Functions>().volumeSetCachePolicy(value).markAsSpare(!value).build());
    });
  }
  ControllerMaker& onRaid(const std::wstring& id) {
    m_raidId = id;
    return *this;
  }

  Controller make() const {
    Controller controller = m_builder.build();
    controller.setRaidId(m_raidId);
    return controller;
  }

 private:
  std::wstring m_raidId;
};

class PortMaker : public ModelMaker<PortMaker, Port> {
 public:
  using ModelMaker::ModelMaker;

  Port make() const { return m_builder.build(); }
};

class RaidMaker : public ModelMaker<RaidMaker, Raid> {
 public:
  using ModelMaker::ModelMaker;

  Raid make() const { return m_builder.build(); }
};

inline VolumeMaker aVolume(const std::wstring& id) { return VolumeMaker(id); }
inline DiskMaker aDisk(const std::wstring& id) { return DiskMaker(id); }
inline ArrayMaker anArray(const std::wstring& id) { return ArrayMaker(id); }
inline ControllerMaker aController(const std::wstring& id) { return ControllerMaker(id); }
inline ControllerMaker aLyxController(const std::wstring& id) {
  return ControllerMaker(id).type(ControllerType::Lyx);
}
inline PortMaker aPort(const std::wstring& id) { return PortMaker(id); }
inline RaidMaker aRaid(const std::wstring& id) { return RaidMaker(id); }

/// A supported level with this strip size as its default, which may be none.
inline RaidLevelSupport aLevel(RaidLevel level, boost::optional<StripSize> defaultStripSize = {}) {
  return complete<RaidLevelSupport>().raidLevel(level).defaultStripSize(defaultStripSize).build();
}
inline RaidLevelSupport anUnsupportedLevel(RaidLevel level) {
  return complete<RaidLevelSupport>().raidLevel(level).supported(false).build();
}

#endif
