#ifndef MIRN_SIMULATOR_SCENARIO_FIELDS_H
#define MIRN_SIMULATOR_SCENARIO_FIELDS_H

#include "model/machine.h"

/// The scenario file, told once: for each struct its keys, in the order in which they are written. The reader
/// and the writer both walk these lists. `archive` stands for one object of the file; docs/simulator.md
/// explains every key.
namespace simulator {

/// Chooses the list of a struct.
template <class T>
struct Of {};

enum class Need { OPTIONAL, REQUIRED };

/// What a reference may name; a mask, since a port belongs to a controller or to a device.
enum Kind : unsigned {
  kEngine = 1,
  kController = 2,
  kDevice = 4,
  kPort = 8,
  kArray = 16,
  kVolume = 32,
};

template <class A>
void fields(A& archive, Of<SystemInfo>) {
  archive.number("interfaceVersionMajor", &SystemInfo::interfaceVersionMajor);
  archive.number("interfaceVersionMinor", &SystemInfo::interfaceVersionMinor);
  archive.text("libraryVersion", &SystemInfo::libraryVersion, 35);
  archive.flag("volSetSizeSupport", &SystemInfo::volSetSizeSupport);
  archive.flag("passThroughSupport", &SystemInfo::passThroughSupport);
}

template <class A>
void fields(A& archive, Of<Rates>) {
  archive.number("rebuildMiBps", &Rates::rebuild);
  archive.number("initializeMiBps", &Rates::initialize);
  archive.number("verifyMiBps", &Rates::verify);
  archive.number("migrateMiBps", &Rates::migrate);
}

template <class A>
void fields(A& archive, Of<LevelCapability>) {
  using Level = LevelCapability;
  archive.word("level", &Level::level, Need::REQUIRED);
  archive.number("minDisks", &Level::minDisks, Need::REQUIRED);
  archive.number("maxDisks", &Level::maxDisks, Need::REQUIRED);
  archive.word("defaultStripSize", &Level::defaultStripSize, Need::REQUIRED);
  archive.template words<StripSize>("stripSizes", &Level::stripSizes);
  archive.template words<RaidLevel>("migrationTargets", &Level::migrationTargets);
  archive.template words<RaidLevel>("migrationRequiresDisk", &Level::migrationRequiresDisk);
  archive.flag("evenDiskCount", &Level::evenDiskCount);
  archive.flag("oddDiskCount", &Level::oddDiskCount);
}

template <class A>
void fields(A& archive, Of<RaidEngine>) {
  using Engine = RaidEngine;
  archive.identity(kEngine, 23);
  archive.number("maxDisksPerArray", &Engine::maxDisksPerArray);
  archive.number("maxRaidDisksSupported", &Engine::maxRaidDisksSupported);
  archive.number("maxVolumesPerArray", &Engine::maxVolumesPerArray);
  archive.number("maxVolumesPerHba", &Engine::maxVolumesPerHba);
  archive.flag("raidEnabled", &Engine::raidEnabled);
  archive.flag("globalSpareSupport", &Engine::globalSpareSupport);
  archive.flag("dedicatedSpareSupport", &Engine::dedicatedSpareSupport);
  archive.flag("createFromExistingSupport", &Engine::createFromExistingSupport);
  archive.flag("emptyArraysSupport", &Engine::emptyArraysSupport);
  archive.flag("ordanDrivesOnly", &Engine::ordanDrivesOnly);
  archive.template words<RwhPolicy>("rwhPolicies", &Engine::rwhPolicies);
  archive.list("levels", &Engine::levels);
}

template <class A>
void fields(A& archive, Of<Controller>) {
  archive.identity(kController, 23);
  archive.address("address", &Controller::address);
  archive.text("name", &Controller::name, 255, Need::REQUIRED);
  archive.word("type", &Controller::type, Need::REQUIRED);
  archive.reference("engine", &Controller::engine, kEngine);
  archive.text("version", &Controller::version, 31);
  archive.text("prebootManagerVersion", &Controller::prebootManagerVersion, 31);
  archive.number("vendorId", &Controller::vendorId);
  archive.number("deviceId", &Controller::deviceId);
  archive.number("subSystemId", &Controller::subSystemId);
  archive.number("subVendorId", &Controller::subVendorId);
  archive.number("hardwareRevisionId", &Controller::hardwareRevisionId);
  archive.number("subClassCode", &Controller::subClassCode);
  archive.flag("prebootManagerLoaded", &Controller::prebootManagerLoaded);
  archive.flag("twoTbVolumeSupport", &Controller::twoTbVolumeSupport);
  archive.flag("twoTbDiskSupport", &Controller::twoTbDiskSupport);
  archive.flag("disableESataSpanning", &Controller::disableESataSpanning);
  archive.flag("xorSupported", &Controller::xorSupported);
  archive.flag("xorEnabled", &Controller::xorEnabled);
  archive.flag("nvsramSupported", &Controller::nvsramSupported);
  archive.flag("supportsPortLocate", &Controller::supportsPortLocate);
  archive.flag("supportsFunction420", &Controller::supportsFunction420);
  archive.flag("supportsMarkAsNormal", &Controller::supportsMarkAsNormal);
  archive.flag("supportsVolumeDelete", &Controller::supportsVolumeDelete);
  archive.flag("supportsArrayCreate", &Controller::supportsArrayCreate);
  archive.flag("supportsVolumeModify", &Controller::supportsVolumeModify);
  archive.flag("supportsVolumeRename", &Controller::supportsVolumeRename);
  archive.flag("supportsAddDisksToArray", &Controller::supportsAddDisksToArray);
  archive.flag("supportsVolumeSetCachePolicy", &Controller::supportsVolumeSetCachePolicy);
  archive.flag("supportsVolumeCancelVerify", &Controller::supportsVolumeCancelVerify);
  archive.flag("supportsMarkAsSpare", &Controller::supportsMarkAsSpare);
  archive.flag("readPatrolSupported", &Controller::readPatrolSupported);
  archive.flag("readPatrolEnabled", &Controller::readPatrolEnabled);
  archive.flag("rohiSupported", &Controller::rohiSupported);
  archive.flag("rohiEnabled", &Controller::rohiEnabled);
}

template <class A>
void fields(A& archive, Of<Phy>) {
  archive.handle();
  archive.word("linkSpeed", &Phy::linkSpeed);
}

template <class A>
void fields(A& archive, Of<EndDevice>) {
  archive.identity(kDevice, 23);
  archive.reference("controller", &EndDevice::controller, kController, Need::REQUIRED);
  archive.address("address", &EndDevice::address);
  archive.word("deviceType", &EndDevice::type);
  archive.text("vendorId", &EndDevice::vendorId, 15);
  archive.text("serialNumber", &EndDevice::serialNumber, 20);
  archive.text("model", &EndDevice::model, 40);
  archive.text("firmware", &EndDevice::firmware, 21);
  archive.word("diskType", &EndDevice::diskType);
  archive.word("state", &EndDevice::condition);
  archive.flag("failed", &EndDevice::failed);
  archive.flag("locked", &EndDevice::locked);
  archive.flag("smartEvent", &EndDevice::smartEvent);
  archive.word("presence", &EndDevice::presence);
  archive.flag("spare", &EndDevice::spare);
  archive.reference("spareFor", &EndDevice::spareFor, kArray);
  archive.flag("hotInserted", &EndDevice::hotInserted);
  archive.flag("foreignMetadata", &EndDevice::foreignMetadata);
  archive.flag("readOnlyMount", &EndDevice::readOnlyMount);
  archive.number("storagePool", &EndDevice::storagePool);
  archive.number("totalSize", &EndDevice::totalSize);
  archive.number("logicalSectorSize", &EndDevice::logicalSectorSize);
  archive.number("physicalSectorSize", &EndDevice::physicalSectorSize);
  archive.word("writeCachePolicy", &EndDevice::writeCache);
  archive.flag("systemDisk", &EndDevice::systemDisk);
  archive.flag("managedHotplug", &EndDevice::managedHotplug);
  archive.word("x8Disk", &EndDevice::x8);
  archive.number("lyxDomain", &EndDevice::lyxDomain);
  archive.flag("isOrdanNVMe", &EndDevice::isOrdanNVMe);
  archive.number("unpublishedNumber", &EndDevice::unpublishedNumber);
  archive.number("unpublishedSize", &EndDevice::unpublishedSize);
  archive.text("userPassword", &EndDevice::userPassword, 32);
  archive.text("masterPassword", &EndDevice::masterPassword, 32);
  archive.number("failedUnlocks", &EndDevice::failedUnlocks);
  archive.reference("bay", &EndDevice::bay, kDevice);
  archive.list("phys", &EndDevice::phys);
}

template <class A>
void fields(A& archive, Of<Port>) {
  archive.identity(kPort, 23);
  archive.address("address", &Port::address);
  archive.reference("device", &Port::device, kController | kDevice, Need::REQUIRED);
  archive.reference("connectedTo", &Port::connectedTo, kPort);
  archive.number("numPhys", &Port::numPhys);
  archive.flag("locate", &Port::locate);
}

template <class A>
void fields(A& archive, Of<Array>) {
  archive.identity(kArray, 20);
  archive.text("name", &Array::name, 16, Need::REQUIRED);
  archive.word("writeCacheState", &Array::writeCache);
  archive.references("disks", &Array::disks, kDevice, Need::REQUIRED);
}

template <class A>
void fields(A& archive, Of<Work>) {
  archive.word("kind", &Work::kind, Need::REQUIRED);
  archive.number("elapsedMs", &Work::elapsedMs);
  archive.number("totalMs", &Work::totalMs);
  archive.number("carryMs", &Work::carryMs);
  archive.reference("disk", &Work::disk, kDevice);
  archive.word("sourceLevel", &Work::sourceLevel);
  archive.references("sourceDisks", &Work::sourceDisks, kDevice);
  archive.number("targetSize", &Work::targetSize);
  archive.references("catchUp", &Work::catchUp, kDevice);
  archive.flag("rewrites", &Work::rewrites);
}

template <class A>
void fields(A& archive, Of<Volume>) {
  archive.identity(kVolume, 23);
  archive.text("name", &Volume::name, 16, Need::REQUIRED);
  archive.reference("array", &Volume::array, kArray, Need::REQUIRED);
  archive.number("arrayOrdinal", &Volume::ordinal);
  archive.word("raidLevel", &Volume::level, Need::REQUIRED);
  archive.word("stripSize", &Volume::stripSize);
  archive.number("size", &Volume::size);
  archive.references("stale", &Volume::stale, kDevice);
  archive.references("blank", &Volume::blank, kDevice);
  archive.word("cachePolicy", &Volume::cachePolicy);
  archive.word("rwhPolicy", &Volume::rwhPolicy);
  archive.reference("journalingDrive", &Volume::journalingDrive, kDevice);
  archive.flag("systemVolume", &Volume::systemVolume);
  archive.flag("initialized", &Volume::initialized);
  archive.number("verifyErrors", &Volume::verifyErrors);
  archive.number("verifyBadBlocks", &Volume::verifyBadBlocks);
  archive.number("latentErrors", &Volume::latentErrors);
  archive.number("latentBadBlocks", &Volume::latentBadBlocks);
  archive.maybe("work", &Volume::work);
}

template <class A>
void fields(A& archive, Of<Machine>) {
  archive.object("system", &Machine::system);
  archive.object("rates", &Machine::rates);
  archive.table("engines", &Machine::engines);
  archive.table("controllers", &Machine::controllers);
  archive.table("devices", &Machine::devices);
  archive.table("ports", &Machine::ports);
  archive.table("arrays", &Machine::arrays);
  archive.table("volumes", &Machine::volumes);
  archive.number("nextHandle", &Machine::nextHandle);
}

}  // namespace simulator

#endif
