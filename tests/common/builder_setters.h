#ifndef MIRN_TESTS_COMMON_BUILDER_SETTERS_H
#define MIRN_TESTS_COMMON_BUILDER_SETTERS_H

#include <functional>
#include <string>
#include <vector>

#include "support/model_samples.h"

/// Every setter of every builder, written out by hand in the promised order of the flags, to hold the lists
/// of fields and the setters together.

template <class Model>
struct Setter {
  std::string name;  ///< Of its field in the list.
  std::function<void(typename Model::Builder&)> call;
};
template <class Model>
using Setters = std::vector<Setter<Model>>;

template <class Model>
Setters<Model> setters();

template <>
inline Setters<Array> setters<Array>() {
  using Builder = Array::Builder;
  return {
      {"id", [](Builder& b) { b.id(L"21"); }},
      {"handle", [](Builder& b) { b.handle(0x21); }},
      {"name", [](Builder& b) { b.name(L"Array_0"); }},
      {"state", [](Builder& b) { b.state(ArrayState::NORMAL); }},
      {"totalSize", [](Builder& b) { b.totalSize(3000); }},
      {"freeSize", [](Builder& b) { b.freeSize(1000); }},
      {"writeCachePolicy", [](Builder& b) { b.writeCachePolicy(WriteCacheState::ON); }},
      {"numDisks", [](Builder& b) { b.numDisks(3); }},
      {"numVolumes", [](Builder& b) { b.numVolumes(1); }},
  };
}

template <>
inline Setters<Volume> setters<Volume>() {
  using Builder = Volume::Builder;
  return {
      {"id", [](Builder& b) { b.id(L"31"); }},
      {"handle", [](Builder& b) { b.handle(0x31); }},
      {"arrayHandle", [](Builder& b) { b.arrayHandle(0x21); }},
      {"arrayOrdinal", [](Builder& b) { b.arrayOrdinal(1); }},
      {"name", [](Builder& b) { b.name(L"Data"); }},
      {"state", [](Builder& b) { b.state(VolumeState::NORMAL); }},
      {"raidLevel", [](Builder& b) { b.raidLevel(RaidLevel::RAID_5); }},
      {"totalSize", [](Builder& b) { b.totalSize(2000); }},
      {"stripSize", [](Builder& b) { b.stripSize(StripSize::SIZE_64KB); }},
      {"numDisks", [](Builder& b) { b.numDisks(3); }},
      {"migrProgress", [](Builder& b) { b.migrProgress(40); }},
      {"cachePolicy", [](Builder& b) { b.cachePolicy(CachePolicy::WRITE_BACK); }},
      {"systemVolume", [](Builder& b) { b.systemVolume(true); }},
      {"migration", [](Builder& b) { b.migration(false); }},
      {"initialized", [](Builder& b) { b.initialized(true); }},
      {"verify",
       [](Builder& b) {
         b.verify({2, 5});
       }},
      {"sectorSize",
       [](Builder& b) {
         b.sectorSize({512, 4096});
       }},
      {"journalingDriveHandle", [](Builder& b) { b.journalingDriveHandle(0x41); }},
      {"rwhPolicy", [](Builder& b) { b.rwhPolicy(RwhPolicy::RWH_DISTRIBUTED); }},
  };
}

template <>
inline Setters<Port> setters<Port>() {
  using Builder = Port::Builder;
  return {
      {"id", [](Builder& b) { b.id(L"51"); }},
      {"handle", [](Builder& b) { b.handle(0x51); }},
      {"address", [](Builder& b) { b.address(L"1-2-3-4"); }},
      {"numPhys", [](Builder& b) { b.numPhys(4); }},
      {"localDeviceType", [](Builder& b) { b.localDeviceType(PortLocalDeviceType::CONTROLLER); }},
      {"localDeviceHandle", [](Builder& b) { b.localDeviceHandle(0x11); }},
      {"connectedPortHandle", [](Builder& b) { b.connectedPortHandle(0x52); }},
  };
}

template <>
inline Setters<Version> setters<Version>() {
  using Builder = Version::Builder;
  return {
      {"productVersion", [](Builder& b) { b.productVersion(L"17.5.0"); }},
      {"pluginVersion", [](Builder& b) { b.pluginVersion(L"5.4.0.1465"); }},
      {"vexInterfaceVersion", [](Builder& b) { b.vexInterfaceVersion(L"2.3"); }},
      {"vexVersion", [](Builder& b) { b.vexVersion(L"17.5.1"); }},
      {"volSetSizeSupport", [](Builder& b) { b.volSetSizeSupport(true); }},
      {"passThroughSupport", [](Builder& b) { b.passThroughSupport(false); }},
  };
}

template <>
inline Setters<RaidLevelSupport> setters<RaidLevelSupport>() {
  using Builder = RaidLevelSupport::Builder;
  return {
      {"raidLevel", [](Builder& b) { b.raidLevel(RaidLevel::RAID_5); }},
      {"supported", [](Builder& b) { b.supported(true); }},
      {"minDisks", [](Builder& b) { b.minDisks(3); }},
      {"maxDisks", [](Builder& b) { b.maxDisks(24); }},
      {"defaultStripSize", [](Builder& b) { b.defaultStripSize(StripSize::SIZE_64KB); }},
      {"migrSupport",
       [](Builder& b) {
         b.migrSupport({{RaidLevel::RAID_0, false}, {RaidLevel::RAID_10, true}});
       }},
      {"evenDiskCount", [](Builder& b) { b.evenDiskCount(false); }},
      {"oddDiskCount", [](Builder& b) { b.oddDiskCount(true); }},
      {"stripSizesSupported",
       [](Builder& b) {
         b.stripSizesSupported({StripSize::SIZE_128KB, StripSize::SIZE_16KB});
       }},
      {"created", [](Builder& b) { b.created(true); }},
  };
}

template <>
inline Setters<Raid> setters<Raid>() {
  using Builder = Raid::Builder;
  return {
      {"raidId", [](Builder& b) { b.id(L"61"); }},
      {"handle", [](Builder& b) { b.handle(0x61); }},
      {"maxDisksPerArray", [](Builder& b) { b.maxDisksPerArray(24); }},
      {"maxRaidDisksSupported", [](Builder& b) { b.maxRaidDisksSupported(48); }},
      {"maxVolumesPerArray", [](Builder& b) { b.maxVolumesPerArray(2); }},
      {"maxVolumesPerHba", [](Builder& b) { b.maxVolumesPerHba(12); }},
      {"raidEnabled", [](Builder& b) { b.raidEnabled(true); }},
      {"globalSpareSupport", [](Builder& b) { b.globalSpareSupport(false); }},
      {"dedicatedSpareSupport", [](Builder& b) { b.dedicatedSpareSupport(true); }},
      {"createFromExistingSupport", [](Builder& b) { b.createFromExistingSupport(false); }},
      {"emptyArraysSupport", [](Builder& b) { b.emptyArraysSupport(true); }},
  };
}

template <>
inline Setters<EndDevice> setters<EndDevice>() {
  using Builder = EndDevice::Builder;
  return {
      {"id", [](Builder& b) { b.id(L"41"); }},
      {"handle", [](Builder& b) { b.handle(0x41); }},
      {"controllerHandle", [](Builder& b) { b.controllerHandle(0x11); }},
      {"raidHandle", [](Builder& b) { b.raidHandle(0x61); }},
      {"arrayHandle", [](Builder& b) { b.arrayHandle(0x21); }},
      {"phyHandle", [](Builder& b) { b.phyHandle(0x71); }},
      {"address", [](Builder& b) { b.address(L"0-1-0-0"); }},
      {"deviceType", [](Builder& b) { b.deviceType(DeviceType::DISK); }},
      {"unpublishedNumber", [](Builder& b) { b.unpublishedNumber(77); }},
      {"vendorId", [](Builder& b) { b.vendorId(L"1234"); }},
      {"serialNumber", [](Builder& b) { b.serialNumber(L"SN-1"); }},
      {"model", [](Builder& b) { b.model(L"Model A"); }},
      {"firmware", [](Builder& b) { b.firmware(L"F1"); }},
      {"disk", [](Builder& b) { b.disk(sampleDisk()); }},
      {"unpublishedSize", [](Builder& b) { b.unpublishedSize(88); }},
      {"negotiatedLinkSpeed", [](Builder& b) { b.negotiatedLinkSpeed(LinkSpeed::GBPS_6); }},
      {"lyxDomain", [](Builder& b) { b.lyxDomain(9); }},
      {"isOrdanNVMe", [](Builder& b) { b.isOrdanNVMe(true); }},
      {"managedHotplug", [](Builder& b) { b.managedHotplug(true); }},
  };
}

template <>
inline Setters<Controller::Functions> setters<Controller::Functions>() {
  using Builder = Controller::Functions::Builder;
  return {
      {"portLocate", [](Builder& b) { b.portLocate(true); }},
      {"function420", [](Builder& b) { b.function420(true); }},
      {"markAsNormal", [](Builder& b) { b.markAsNormal(false); }},
      {"volumeDelete", [](Builder& b) { b.volumeDelete(true); }},
      {"arrayCreate", [](Builder& b) { b.arrayCreate(false); }},
      {"volumeModify", [](Builder& b) { b.volumeModify(true); }},
      {"volumeRename", [](Builder& b) { b.volumeRename(false); }},
      {"addDisksToArray", [](Builder& b) { b.addDisksToArray(true); }},
      {"volumeSetCachePolicy", [](Builder& b) { b.volumeSetCachePolicy(false); }},
      {"volumeCancelVerify", [](Builder& b) { b.volumeCancelVerify(true); }},
      {"markAsSpare", [](Builder& b) { b.markAsSpare(false); }},
  };
}

template <>
inline Setters<Controller> setters<Controller>() {
  using Builder = Controller::Builder;
  return {
      {"id", [](Builder& b) { b.id(L"11"); }},
      {"handle", [](Builder& b) { b.handle(0x11); }},
      {"raidHandle", [](Builder& b) { b.raidHandle(0x61); }},
      {"address", [](Builder& b) { b.address(L"0-0-23-0"); }},
      {"name", [](Builder& b) { b.name(L"Controller A"); }},
      {"type", [](Builder& b) { b.type(ControllerType::Lyx); }},
      {"mode", [](Builder& b) { b.mode(ControllerMode::RAID); }},
      {"version", [](Builder& b) { b.version(L"1.2"); }},
      {"availableDisks", [](Builder& b) { b.availableDisks(6); }},
      {"availableDevices", [](Builder& b) { b.availableDevices(7); }},
      {"disableESataSpanning", [](Builder& b) { b.disableESataSpanning(true); }},
      {"pciIds",
       [](Builder& b) {
         b.pciIds({0x8ABC, 0x2822, 0, 4, 7, 0x1D});
       }},
      {"preboot",
       [](Builder& b) {
         b.preboot({L"3.4", true, false, true});
       }},
      {"xor",
       [](Builder& b) {
         b.xorSwitch({true, false});
       }},
      {"nvsramSupported", [](Builder& b) { b.nvsramSupported(true); }},
      {"supportedFunctions",
       [](Builder& b) { b.supportedFunctions(complete<Controller::Functions>().build()); }},
      {"readPatrol",
       [](Builder& b) {
         b.readPatrol({true, true});
       }},
      {"rohi",
       [](Builder& b) {
         b.rohi({false, true});
       }},
  };
}

#endif
