#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "VEXL2.h"

namespace {

/// All of these fields hold exactly a `Type`: size and place alone would let a signed number pass.
template <class Type, class Record, class... Fields>
constexpr bool hold(Fields Record::*... /*fields*/) {
  return (std::is_same_v<Type, Fields> && ...);
}

TEST(CodesAndHandles, AreUnsignedNumbersOf32Bits) {
  EXPECT_TRUE((std::is_same_v<VEX_STATUS, std::uint32_t>));
  EXPECT_TRUE((std::is_same_v<VEX_HANDLE, std::uint32_t>));
  EXPECT_TRUE((std::is_same_v<VEX_SCOPE_TYPE, std::uint32_t>));
}

TEST(FieldTypes, OfTheLibraryItself) {
  using R = VEX_SYSTEM_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(&R::interfaceVersionMajor, &R::interfaceVersionMinor,
                                   &R::volSetSizeSupport, &R::passThroughSupport)));
  EXPECT_TRUE((hold<char[36]>(&R::libraryVersion)));
}

TEST(FieldTypes, OfAController) {
  using R = VEX_CONTROLLER_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(
      &R::controllerHandle, &R::address, &R::controllerType, &R::raidInfoHandle, &R::prebootManagerLoaded,
      &R::twoTbVolumeSupport, &R::twoTbDiskSupport, &R::disableESataSpanning, &R::xorSupported,
      &R::nvsramSupported, &R::supportsPortLocate, &R::supportsFunction420, &R::supportsMarkAsNormal,
      &R::supportsVolumeDelete, &R::supportsArrayCreate, &R::supportsVolumeModify, &R::supportsVolumeRename,
      &R::supportsAddDisksToArray, &R::supportsVolumeSetCachePolicy, &R::supportsVolumeCancelVerify,
      &R::supportsMarkAsSpare, &R::readPatrolSupported, &R::readPatrolEnabled, &R::xorEnabled,
      &R::rohiSupported, &R::rohiEnabled)));
  EXPECT_TRUE((hold<char[24]>(&R::uniqueId)));
  EXPECT_TRUE((hold<char[256]>(&R::name)));
  EXPECT_TRUE((hold<char[32]>(&R::version, &R::prebootManagerVersion)));
  EXPECT_TRUE((hold<std::uint16_t>(&R::vendorId, &R::deviceId, &R::subSystemId, &R::subVendorId)));
  EXPECT_TRUE((hold<std::uint8_t>(&R::hardwareRevisionId, &R::subClassCode)));
}

TEST(FieldTypes, OfAnEndDevice) {
  using R = VEX_END_DEVICE_INFO;
  EXPECT_TRUE(
      (hold<std::uint32_t>(&R::endDeviceHandle, &R::address, &R::deviceType, &R::raidInfoHandle,
                           &R::arrayHandle, &R::controllerHandle, &R::unpublishedNumber, &R::diskType,
                           &R::diskState, &R::diskUsage, &R::writeCachePolicy, &R::systemDisk,
                           &R::managedHotplug, &R::x8PortA, &R::x8PortB, &R::lyxDomain, &R::isOrdanNVMe)));
  EXPECT_TRUE((hold<char[24]>(&R::uniqueId)));
  EXPECT_TRUE((hold<char[16]>(&R::vendorId)));
  EXPECT_TRUE((hold<char[21]>(&R::serialNumber)));
  EXPECT_TRUE((hold<char[41]>(&R::model)));
  EXPECT_TRUE((hold<char[22]>(&R::firmware)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::totalSize, &R::logicalSectorSize, &R::physicalSectorSize, &R::freeSize,
                                   &R::unpublishedSize)));
}

TEST(FieldTypes, OfAPhy) {
  using R = VEX_PHY_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(&R::phyHandle, &R::endDeviceHandle, &R::negotiatedLinkSpeed)));
}

TEST(FieldTypes, OfAnArray) {
  using R = VEX_ARRAY_INFO;
  EXPECT_TRUE(
      (hold<std::uint32_t>(&R::arrayHandle, &R::state, &R::writeCacheState, &R::numDisks, &R::numVolumes)));
  EXPECT_TRUE((hold<char[21]>(&R::uniqueId)));
  EXPECT_TRUE((hold<char[17]>(&R::name)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::totalSize, &R::freeSize)));
}

TEST(FieldTypes, OfAVolume) {
  using R = VEX_VOLUME_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(
      &R::volumeHandle, &R::arrayHandle, &R::arrayOrdinal, &R::state, &R::raidLevel, &R::stripSize,
      &R::numDisks, &R::migrationProgress, &R::cachePolicy, &R::rwhPolicy, &R::systemVolume,
      &R::migrationInProgress, &R::initialized, &R::verifyErrors, &R::verifyBadBlocks, &R::logicalSectorSize,
      &R::physicalSectorSize, &R::journalingDriveHandle)));
  EXPECT_TRUE((hold<char[24]>(&R::uniqueId)));
  EXPECT_TRUE((hold<char[17]>(&R::name)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::totalSize)));
}

TEST(FieldTypes, OfAPort) {
  using R = VEX_PORT_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(&R::portHandle, &R::address, &R::numPhys, &R::localDeviceType,
                                   &R::localDeviceHandle, &R::connectedPortHandle)));
  EXPECT_TRUE((hold<char[24]>(&R::uniqueId)));
}

TEST(FieldTypes, OfARaidEngine) {
  using R = VEX_RAID_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(&R::raidInfoHandle, &R::maxDisksPerArray, &R::maxRaidDisksSupported,
                                   &R::maxVolumesPerArray, &R::maxVolumesPerHba, &R::raidEnabled,
                                   &R::globalSpareSupport, &R::dedicatedSpareSupport,
                                   &R::createFromExistingSupport, &R::emptyArraysSupport)));
  EXPECT_TRUE((hold<char[24]>(&R::uniqueId)));
}

TEST(FieldTypes, OfARaidLevel) {
  using R = VEX_RAID_LEVEL_INFO;
  EXPECT_TRUE((hold<std::uint32_t>(&R::supported, &R::minDisks, &R::maxDisks, &R::defaultStripSize,
                                   &R::migrationTargets, &R::migrationRequiresDisk, &R::evenDiskCount,
                                   &R::oddDiskCount, &R::stripSizes, &R::created)));
}

TEST(FieldTypes, OfAVolumeToBeMade) {
  using R = VEX_CREATE_VOLUME_PARAMS;
  EXPECT_TRUE((hold<std::uint32_t>(&R::arrayHandle, &R::stripSize, &R::raidLevel, &R::rwhPolicy,
                                   &R::journalingDriveHandle)));
  EXPECT_TRUE((hold<char[17]>(&R::name)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::size)));
}

TEST(FieldTypes, OfAVolumeToBeMadeOfDisks) {
  using R = VEX_CREATE_FROM_DISKS_PARAMS;
  EXPECT_TRUE((hold<const VEX_HANDLE*>(&R::disks)));
  EXPECT_TRUE((hold<std::uint32_t>(&R::diskCount, &R::sourceDiskHandle, &R::stripSize, &R::raidLevel,
                                   &R::rwhPolicy, &R::journalingDriveHandle)));
  EXPECT_TRUE((hold<char[17]>(&R::name)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::size)));
}

TEST(FieldTypes, OfAVolumeToBeChanged) {
  using R = VEX_RAID_LEVEL_MODIFY_PARAMS;
  EXPECT_TRUE((hold<std::uint32_t>(&R::stripSize, &R::raidLevel, &R::diskCount)));
  EXPECT_TRUE((hold<std::uint64_t>(&R::size)));
  EXPECT_TRUE((hold<const VEX_HANDLE*>(&R::disks)));
}

TEST(FieldTypes, OfAPassword) {
  using R = VEX_UNLOCK_PARAMS;
  EXPECT_TRUE((hold<char[32]>(&R::password)));
  EXPECT_TRUE((hold<std::uint32_t>(&R::master)));
}

}  // namespace
