#include "vex_converter.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "controller_builder.h"
#include "identifiers.h"
#include "plugin_version.h"
#include "text.h"
#include "vex_codes.h"

namespace {

bool isSet(std::uint32_t flag) { return flag == 1; }

/// The numbers of a version, with dots between them.
std::wstring versionText(const std::vector<std::uint32_t>& numbers) {
  std::vector<std::wstring> texts;
  texts.reserve(numbers.size());
  for (const std::uint32_t number : numbers) texts.push_back(std::to_wstring(number));
  return joined(texts, L".");
}

/// The library counts in fractions of the full 32-bit range.
std::uint32_t percentOf(std::uint32_t progress) {
  return static_cast<std::uint32_t>(std::uint64_t{progress} * 100 / 0xFFFFFFFFU);
}

ControllerMode modeOf(const VEX_CONTROLLER_INFO& record) {
  constexpr std::uint8_t kRaidSubClass = 4;
  constexpr std::uint8_t kOtherRaidSubClass = 7;
  if (record.subClassCode == kRaidSubClass || record.subClassCode == kOtherRaidSubClass)
    return ControllerMode::RAID;
  return record.controllerType == VEX_CONTROLLER_TYPE_SATA ? ControllerMode::AHCI : ControllerMode::UNKNOWN;
}

Controller::PciIds pciIdsOf(const VEX_CONTROLLER_INFO& record) {
  return {record.vendorId,           record.deviceId,     record.subSystemId,
          record.hardwareRevisionId, record.subClassCode, record.subVendorId};
}

Controller::Preboot prebootOf(const VEX_CONTROLLER_INFO& record) {
  return {wideFromNarrow(record.prebootManagerVersion), isSet(record.prebootManagerLoaded),
          isSet(record.twoTbVolumeSupport), isSet(record.twoTbDiskSupport)};
}

X8Disk x8DiskOf(const VEX_END_DEVICE_INFO& record) {
  if (record.x8PortA != 0) return X8Disk::X8_A;
  return record.x8PortB != 0 ? X8Disk::X8_B : X8Disk::UNKNOWN;
}

/// A phy of nothing when none of the list names the device. Handle 0 is no device: the phys that have it
/// there are free.
VEX_PHY_INFO phyOf(VEX_HANDLE device, const std::vector<VEX_PHY_INFO>& phys) {
  if (device == 0) return {};
  const auto found = std::find_if(
      phys.begin(), phys.end(), [device](const VEX_PHY_INFO& phy) { return phy.endDeviceHandle == device; });
  return found != phys.end() ? *found : VEX_PHY_INFO{};
}

std::vector<RaidLevelSupport::Migration> migrationsOf(const VEX_RAID_LEVEL_INFO& record) {
  std::vector<RaidLevelSupport::Migration> migrations;
  for (const std::uint32_t level :
       {VEX_RAID_LEVEL_0, VEX_RAID_LEVEL_1, VEX_RAID_LEVEL_10, VEX_RAID_LEVEL_5}) {
    if ((record.migrationTargets & level) == 0) continue;
    migrations.push_back({raidLevelFromVex(level), (record.migrationRequiresDisk & level) != 0});
  }
  std::sort(migrations.begin(), migrations.end(),
            [](const auto& left, const auto& right) { return left.raidLevel < right.raidLevel; });
  return migrations;
}

std::set<StripSize> stripSizesOf(std::uint32_t bits) {
  std::set<StripSize> sizes;
  for (std::uint32_t bit = VEX_STRIP_SIZE_2KB; bit <= VEX_STRIP_SIZE_64MB; bit <<= 1) {
    if ((bits & bit) != 0) sizes.insert(stripSizeFromVex(bit));
  }
  return sizes;
}

}  // namespace

VexConverter::VexConverter(std::shared_ptr<KnownTexts> texts) : m_texts(std::move(texts)) {}

EndDevice VexConverter::toEndDevice(const VEX_END_DEVICE_INFO& record,
                                    const std::vector<VEX_PHY_INFO>& phys) const {
  const VEX_PHY_INFO phy = phyOf(record.endDeviceHandle, phys);
  EndDevice::Builder builder;
  builder.id(m_texts->ids.of(record.uniqueId))
      .handle(record.endDeviceHandle)
      .controllerHandle(record.controllerHandle)
      .raidHandle(record.raidInfoHandle)
      .arrayHandle(record.arrayHandle)
      .phyHandle(phy.phyHandle)
      .address(m_texts->addresses.of(record.address))
      .deviceType(deviceTypeFromVex(record.deviceType))
      .unpublishedNumber(record.unpublishedNumber)
      .vendorId(m_texts->vendorIds.of(record.vendorId))
      .serialNumber(m_texts->serialNumbers.of(record.serialNumber))
      .model(m_texts->models.of(record.model))
      .firmware(m_texts->firmwares.of(record.firmware))
      .disk(toDisk(record))
      .unpublishedSize(record.unpublishedSize)
      .negotiatedLinkSpeed(linkSpeedFromVex(phy.negotiatedLinkSpeed))
      .lyxDomain(record.lyxDomain)
      .isOrdanNVMe(isSet(record.isOrdanNVMe))
      .managedHotplug(isSet(record.managedHotplug));
  return std::move(builder).build();
}

/// RAID 1 has no strips.
RaidLevelSupport VexConverter::toRaidLevelSupport(const VEX_RAID_LEVEL_INFO& record,
                                                  std::uint32_t level) const {
  const bool hasStrips = level != VEX_RAID_LEVEL_1;
  return RaidLevelSupport::Builder()
      .raidLevel(raidLevelFromVex(level))
      .supported(isSet(record.supported))
      .minDisks(record.minDisks)
      .maxDisks(record.maxDisks)
      .defaultStripSize(hasStrips ? stripSizeFromVex(record.defaultStripSize) : StripSize::NOT_AVAILABLE)
      .migrSupport(migrationsOf(record))
      .evenDiskCount(isSet(record.evenDiskCount))
      .oddDiskCount(isSet(record.oddDiskCount))
      .stripSizesSupported(hasStrips ? stripSizesOf(record.stripSizes) : std::set<StripSize>())
      .created(isSet(record.created))
      .build();
}

Raid VexConverter::toRaid(const VEX_RAID_INFO& record) const {
  return Raid::Builder()
      .id(m_texts->ids.of(record.uniqueId))
      .handle(record.raidInfoHandle)
      .maxDisksPerArray(record.maxDisksPerArray)
      .maxRaidDisksSupported(record.maxRaidDisksSupported)
      .maxVolumesPerArray(record.maxVolumesPerArray)
      .maxVolumesPerHba(record.maxVolumesPerHba)
      .raidEnabled(isSet(record.raidEnabled))
      .globalSpareSupport(isSet(record.globalSpareSupport))
      .dedicatedSpareSupport(isSet(record.dedicatedSpareSupport))
      .createFromExistingSupport(isSet(record.createFromExistingSupport))
      .emptyArraysSupport(isSet(record.emptyArraysSupport))
      .build();
}

Port VexConverter::toPort(const VEX_PORT_INFO& record) const {
  Port::Builder builder;
  builder.id(m_texts->ids.of(record.uniqueId))
      .handle(record.portHandle)
      .address(m_texts->addresses.of(record.address))
      .numPhys(record.numPhys)
      .localDeviceType(portLocalDeviceTypeFromVex(record.localDeviceType))
      .localDeviceHandle(record.localDeviceHandle)
      .connectedPortHandle(record.connectedPortHandle);
  return std::move(builder).build();
}

Controller VexConverter::toController(const VEX_CONTROLLER_INFO& record, std::uint64_t availableDisks,
                                      std::uint64_t availableDevices,
                                      const boost::optional<VEX_RAID_INFO>& /*raid*/) const {
  return ControllerBuilder()
      .id(m_texts->ids.of(record.uniqueId))
      .handle(record.controllerHandle)
      .raidHandle(record.raidInfoHandle)
      .address(m_texts->addresses.of(record.address))
      .name(m_texts->controllerNames.of(record.name))
      .type(controllerTypeFromVex(record.controllerType))
      .mode(modeOf(record))
      .version(m_texts->controllerVersions.of(record.version))
      .availableDisks(availableDisks)
      .availableDevices(availableDevices)
      .disableESataSpanning(isSet(record.disableESataSpanning))
      .pciIds(pciIdsOf(record))
      .preboot(prebootOf(record))
      .xorSwitch({isSet(record.xorSupported), isSet(record.xorEnabled)})
      .nvsramSupported(isSet(record.nvsramSupported))
      .supportedFunctions(toFunctions(record))
      .readPatrol({isSet(record.readPatrolSupported), isSet(record.readPatrolEnabled)})
      .rohi({isSet(record.rohiSupported), isSet(record.rohiEnabled)})
      .build();
}

Volume VexConverter::toVolume(const VEX_VOLUME_INFO& record) const {
  const RaidLevel level = raidLevelFromVex(record.raidLevel);
  Volume::Builder builder;
  builder.id(m_texts->ids.of(record.uniqueId))
      .handle(record.volumeHandle)
      .arrayHandle(record.arrayHandle)
      .arrayOrdinal(record.arrayOrdinal)
      .name(m_texts->volumeNames.of(record.name))
      .state(volumeStateFromVex(record.state))
      .raidLevel(level)
      .totalSize(record.totalSize)
      .stripSize(level == RaidLevel::RAID_1 ? StripSize::NOT_AVAILABLE : stripSizeFromVex(record.stripSize))
      .numDisks(record.numDisks)
      .migrProgress(percentOf(record.migrationProgress))
      .cachePolicy(cachePolicyFromVex(record.cachePolicy))
      .systemVolume(isSet(record.systemVolume))
      .migration(isSet(record.migrationInProgress))
      .initialized(isSet(record.initialized))
      .verify({record.verifyErrors, record.verifyBadBlocks})
      .sectorSize({record.logicalSectorSize, record.physicalSectorSize})
      .journalingDriveHandle(record.journalingDriveHandle)
      .rwhPolicy(rwhPolicyFromVex(record.rwhPolicy));
  return std::move(builder).build();
}

Array VexConverter::toArray(const VEX_ARRAY_INFO& record) const {
  Array::Builder builder;
  builder.id(m_texts->ids.of(record.uniqueId))
      .handle(record.arrayHandle)
      .name(m_texts->arrayNames.of(record.name))
      .state(arrayStateFromVex(record.state))
      .totalSize(record.totalSize)
      .freeSize(record.freeSize)
      .writeCachePolicy(writeCacheStateFromVex(record.writeCacheState))
      .numDisks(record.numDisks)
      .numVolumes(record.numVolumes);
  return std::move(builder).build();
}

/// The library's version stands for the product's as well.
Version VexConverter::toVersion(const VEX_SYSTEM_INFO& record) const {
  return Version::Builder()
      .productVersion(wideFromNarrow(record.libraryVersion))
      .pluginVersion(
          versionText({MIRN_VERSION_MAJOR, MIRN_VERSION_MINOR, MIRN_VERSION_PATCH, MIRN_VERSION_BUILD}))
      .vexInterfaceVersion(versionText({record.interfaceVersionMajor, record.interfaceVersionMinor}))
      .vexVersion(wideFromNarrow(record.libraryVersion))
      .volSetSizeSupport(isSet(record.volSetSizeSupport))
      .passThroughSupport(isSet(record.passThroughSupport))
      .build();
}

Controller::Functions VexConverter::toFunctions(const VEX_CONTROLLER_INFO& record) const {
  return Controller::Functions::Builder()
      .portLocate(isSet(record.supportsPortLocate))
      .function420(isSet(record.supportsFunction420))
      .markAsNormal(isSet(record.supportsMarkAsNormal))
      .volumeDelete(isSet(record.supportsVolumeDelete))
      .arrayCreate(isSet(record.supportsArrayCreate))
      .volumeModify(isSet(record.supportsVolumeModify))
      .volumeRename(isSet(record.supportsVolumeRename))
      .addDisksToArray(isSet(record.supportsAddDisksToArray))
      .volumeSetCachePolicy(isSet(record.supportsVolumeSetCachePolicy))
      .volumeCancelVerify(isSet(record.supportsVolumeCancelVerify))
      .markAsSpare(isSet(record.supportsMarkAsSpare))
      .build();
}

EndDevice::Disk VexConverter::toDisk(const VEX_END_DEVICE_INFO& record) const {
  EndDevice::Disk disk;
  disk.type = diskTypeFromVex(record.diskType);
  disk.state = diskStateFromVex(record.diskState);
  disk.usage = diskUsageFromVex(record.diskUsage);
  disk.totalSize = record.totalSize;
  disk.logicalSectorSize = record.logicalSectorSize;
  disk.physicalSectorSize = record.physicalSectorSize;
  disk.freeSize = record.freeSize;
  disk.writeCachePolicy = writeCacheStateFromVex(record.writeCachePolicy);
  disk.systemDisk = isSet(record.systemDisk);
  disk.x8Disk = x8DiskOf(record);
  return disk;
}
