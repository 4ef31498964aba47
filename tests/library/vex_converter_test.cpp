#include "vex_converter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "identifiers.h"
#include "support/id_vectors.h"
#include "support/lines_of.h"
#include "support/virtual_slot.h"

namespace {

using Lines = std::vector<std::string>;

/// Fills a text field of a zeroed record.
template <std::size_t kSize>
void put(char (&field)[kSize], const std::string& text) {
  ASSERT_LT(text.size(), kSize);
  std::copy(text.begin(), text.end(), field);
}

const VexConverter kConverter;

TEST(VexConverter, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<VexConverter>::value);
  EXPECT_FALSE(std::is_copy_assignable<VexConverter>::value);
}

TEST(VexConverter, KeepsTheOrderOfItsOperations) {
  EXPECT_EQ(virtualSlot(&IVexConverter::toEndDevice), 2U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toRaidLevelSupport), 3U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toRaid), 4U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toPort), 5U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toController), 6U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toVolume), 7U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toArray), 8U);
  EXPECT_EQ(virtualSlot(&IVexConverter::toVersion), 9U);
  EXPECT_EQ(virtualSlot(&VexConverter::toFunctions), 10U);
  EXPECT_EQ(virtualSlot(&VexConverter::toDisk), 11U);
}

TEST(ConvertedObjects, HaveTheIdOfTheirIdentityText) {
  VEX_ARRAY_INFO array{};
  VEX_VOLUME_INFO volume{};
  VEX_PORT_INFO port{};
  VEX_RAID_INFO raid{};
  VEX_END_DEVICE_INFO device{};
  VEX_CONTROLLER_INFO controller{};
  for (const IdVector& vector : kIdVectors) {
    const std::string text = vector.uniqueId;
    for (char* const field :
         {volume.uniqueId, port.uniqueId, raid.uniqueId, device.uniqueId, controller.uniqueId}) {
      std::fill_n(field, sizeof(volume.uniqueId), '\0');
      std::copy(text.begin(), text.end(), field);
    }
    EXPECT_EQ(kConverter.toVolume(volume).id(), vector.id);
    EXPECT_EQ(kConverter.toPort(port).id(), vector.id);
    EXPECT_EQ(kConverter.toRaid(raid).id(), vector.id);
    EXPECT_EQ(kConverter.toEndDevice(device, {}).id(), vector.id);
    EXPECT_EQ(kConverter.toController(controller, 0, 0, boost::none).id(), vector.id);
  }
  put(array.uniqueId, "controller-0");
  EXPECT_EQ(kConverter.toArray(array).id(), L"4645455526652599684");
}

TEST(ConvertedObjects, ShareOneIdWhereTheIdentityTextIsEmpty) {
  EXPECT_EQ(kConverter.toArray({}).id(), kConverter.toVolume({}).id());
  EXPECT_EQ(kConverter.toArray({}).id(), idFromUniqueId(""));
}

TEST(ConvertedObjects, NameNoRelatedObjectYet) {
  const EndDevice device = kConverter.toEndDevice({}, {});
  EXPECT_EQ(device.controllerId() + device.raidId() + device.arrayId(), L"");
  const Volume volume = kConverter.toVolume({});
  EXPECT_EQ(volume.arrayId() + volume.journalingDriveId(), L"");
  const Port port = kConverter.toPort({});
  EXPECT_EQ(port.localDeviceId() + port.connectedPortId(), L"");
  EXPECT_EQ(kConverter.toController({}, 0, 0, boost::none).raidId(), L"");
  EXPECT_TRUE(kConverter.toArray({}).controllerIds().empty());
}

TEST(ConvertedObjects, RefuseTextThatIsNotUtf8) {
  for (const char* text : {"\xFF", "\xED\xA0\x80"}) {
    VEX_ARRAY_INFO record{};
    put(record.name, text);
    EXPECT_THROW(kConverter.toArray(record), std::range_error);
  }
}

TEST(ConvertedArray, HoldsEveryField) {
  VEX_ARRAY_INFO record{};
  record.arrayHandle = 0x21;
  put(record.name, " Array \xC3\xBC ");
  record.state = 2;
  record.totalSize = 9007199254740993U;
  record.freeSize = 1000;
  record.writeCacheState = 2;
  record.numDisks = 3;
  record.numVolumes = 1;
  const Array array = kConverter.toArray(record);
  EXPECT_EQ(array.handle(), 0x21U);
  EXPECT_EQ(linesOf(array.toServiceObject()), (Lines{
                                                  "controllerIds = []",
                                                  "freeSize = \"1000\"",
                                                  "id = \"14695981038468906945\"",
                                                  "name = \" Array \xC3\xBC \"",
                                                  "numDisks = 3",
                                                  "numVolumes = 1",
                                                  "state = \"STATE_BUSY\"",
                                                  "totalSize = \"9007199254740993\"",
                                                  "writeCachePolicy = \"ON\"",
                                              }));
}

VEX_VOLUME_INFO volumeRecord() {
  VEX_VOLUME_INFO record{};
  record.volumeHandle = 0x31;
  record.arrayHandle = 0x21;
  record.arrayOrdinal = 1;
  put(record.name, "Data");
  record.state = 13;
  record.raidLevel = 8;
  record.totalSize = 2000;
  record.stripSize = 0x20;
  record.numDisks = 3;
  record.migrationProgress = 0x80000000;
  record.cachePolicy = 3;
  record.rwhPolicy = 2;
  record.systemVolume = 1;
  record.migrationInProgress = 1;
  record.initialized = 0;
  record.verifyErrors = 2;
  record.verifyBadBlocks = 5;
  record.logicalSectorSize = 512;
  record.physicalSectorSize = 4096;
  record.journalingDriveHandle = 0x41;
  return record;
}

TEST(ConvertedVolume, HoldsEveryField) {
  const Volume volume = kConverter.toVolume(volumeRecord());
  EXPECT_EQ(volume.handle(), 0x31U);
  EXPECT_EQ(volume.arrayHandle(), 0x21U);
  EXPECT_EQ(volume.journalingDriveHandle(), 0x41U);
  EXPECT_EQ(volume.state(), VolumeState::REBUILDING_ALTERNATE);
  EXPECT_EQ(linesOf(volume.toServiceObject()), (Lines{
                                                   "arrayId = \"\"",
                                                   "arrayOrdinal = 1",
                                                   "cachePolicy = \"WRITE_BACK\"",
                                                   "id = \"14695981038468906945\"",
                                                   "initialized = false",
                                                   "journalingDriveId = \"\"",
                                                   "migrProgress = 50",
                                                   "migration = true",
                                                   "name = \"Data\"",
                                                   "numDisks = 3",
                                                   "raidLevel = \"RAID_5\"",
                                                   "rwhPolicy = \"RWH_JOURNALING_DRIVE\"",
                                                   "sectorSize.logical = \"512\"",
                                                   "sectorSize.physical = \"4096\"",
                                                   "state = \"REBUILDING\"",
                                                   "stripSize = \"SIZE_64KB\"",
                                                   "systemVolume = true",
                                                   "totalSize = \"2000\"",
                                                   "verify.badBlocks = 5",
                                                   "verify.errors = 2",
                                               }));
}

TEST(ConvertedVolume, CountsItsMigrationInPercent) {
  const auto progressOf = [](std::uint32_t fraction) {
    VEX_VOLUME_INFO record{};
    record.migrationProgress = fraction;
    return kConverter.toVolume(record).migrProgress();
  };
  EXPECT_EQ(progressOf(0), 0U);
  EXPECT_EQ(progressOf(0x028F5C28), 0U);
  EXPECT_EQ(progressOf(0x028F5C29), 1U);
  EXPECT_EQ(progressOf(0x80000000), 50U);
  EXPECT_EQ(progressOf(0xFFFFFFFE), 99U);
  EXPECT_EQ(progressOf(0xFFFFFFFF), 100U);
}

TEST(ConvertedVolume, OfRaid1HasNoStripSizeWhateverTheRecordHolds) {
  VEX_VOLUME_INFO record = volumeRecord();
  record.raidLevel = 2;
  record.stripSize = 0x20;
  EXPECT_EQ(toText(kConverter.toVolume(record).stripSize()), L"N/A");
}

TEST(ConvertedVolume, WithTwoStripSizeBitsHasAnUnknownOne) {
  VEX_VOLUME_INFO record = volumeRecord();
  record.stripSize = 0x60;
  EXPECT_EQ(kConverter.toVolume(record).stripSize(), StripSize::SIZE_UNKNOWN);
}

TEST(ConvertedVolume, HasAFlagOnlyForOne) {
  VEX_VOLUME_INFO record = volumeRecord();
  record.systemVolume = 2;
  record.initialized = 0xFFFFFFFF;
  EXPECT_FALSE(kConverter.toVolume(record).systemVolume());
  EXPECT_FALSE(kConverter.toVolume(record).initialized());
}

TEST(ConvertedPort, HoldsEveryField) {
  VEX_PORT_INFO record{};
  record.portHandle = 0x51;
  record.address = 0x04030201;
  record.numPhys = 4;
  record.localDeviceType = 2;
  record.localDeviceHandle = 0x11;
  record.connectedPortHandle = 0x52;
  const Port port = kConverter.toPort(record);
  EXPECT_EQ(port.handle(), 0x51U);
  EXPECT_EQ(port.address(), L"1-2-3-4");
  EXPECT_EQ(port.numPhys(), 4U);
  EXPECT_EQ(port.localDeviceType(), PortLocalDeviceType::END_DEVICE);
  EXPECT_EQ(port.localDeviceHandle(), 0x11U);
  EXPECT_EQ(port.connectedPortHandle(), 0x52U);
}

TEST(ConvertedRaid, HoldsEveryField) {
  VEX_RAID_INFO record{};
  record.raidInfoHandle = 0x61;
  record.maxDisksPerArray = 24;
  record.maxRaidDisksSupported = 48;
  record.maxVolumesPerArray = 2;
  record.maxVolumesPerHba = 12;
  record.raidEnabled = 1;
  record.dedicatedSpareSupport = 1;
  record.emptyArraysSupport = 1;
  const Raid raid = kConverter.toRaid(record);
  EXPECT_EQ(raid.handle(), 0x61U);
  EXPECT_EQ(linesOf(raid.toServiceObject()), (Lines{
                                                 "createFromExistingSupport = false",
                                                 "dedicatedSpareSupport = true",
                                                 "emptyArraysSupport = true",
                                                 "globalSpareSupport = false",
                                                 "maxDisksPerArray = 24",
                                                 "maxRaidDisksSupported = 48",
                                                 "maxVolumesPerArray = 2",
                                                 "maxVolumesPerHba = 12",
                                                 "raidEnabled = true",
                                                 "raidId = \"14695981038468906945\"",
                                             }));
}

VEX_RAID_LEVEL_INFO levelRecord() {
  VEX_RAID_LEVEL_INFO record{};
  record.supported = 1;
  record.minDisks = 3;
  record.maxDisks = 24;
  record.defaultStripSize = 0x20;
  record.migrationTargets = 0xF;
  record.migrationRequiresDisk = 0x6;
  record.oddDiskCount = 1;
  record.stripSizes = 0x8041;
  record.created = 1;
  return record;
}

TEST(ConvertedRaidLevel, HoldsEveryFieldWithMigrationsInTheModelsOrder) {
  const RaidLevelSupport level = kConverter.toRaidLevelSupport(levelRecord(), 8);
  EXPECT_TRUE(level.supported());
  EXPECT_FALSE(level.defaultStripSizes());
  EXPECT_EQ(linesOf(level.toServiceObject()), (Lines{
                                                  "created = true",
                                                  "defaultStripSize = \"SIZE_64KB\"",
                                                  "evenDiskCount = false",
                                                  "maxDisks = 24",
                                                  "migrSupport[0].raidLevel = \"RAID_0\"",
                                                  "migrSupport[0].requiresDisk = false",
                                                  "migrSupport[1].raidLevel = \"RAID_1\"",
                                                  "migrSupport[1].requiresDisk = true",
                                                  "migrSupport[2].raidLevel = \"RAID_5\"",
                                                  "migrSupport[2].requiresDisk = false",
                                                  "migrSupport[3].raidLevel = \"RAID_10\"",
                                                  "migrSupport[3].requiresDisk = true",
                                                  "minDisks = 3",
                                                  "oddDiskCount = true",
                                                  "raidLevel = \"RAID_5\"",
                                                  "stripSizesSupported[0] = \"SIZE_2KB\"",
                                                  "stripSizesSupported[1] = \"SIZE_128KB\"",
                                                  "stripSizesSupported[2] = \"SIZE_64MB\"",
                                              }));
}

TEST(ConvertedRaidLevel, OfRaid1HasNoStripSizes) {
  const RaidLevelSupport level = kConverter.toRaidLevelSupport(levelRecord(), 2);
  EXPECT_EQ(level.raidLevel(), RaidLevel::RAID_1);
  EXPECT_TRUE(level.stripSizesSupported().empty());
  ASSERT_TRUE(level.defaultStripSize());
  EXPECT_EQ(toText(*level.defaultStripSize()), L"N/A");
}

TEST(ConvertedRaidLevel, HasAnUnknownDefaultForABitWithoutAPair) {
  VEX_RAID_LEVEL_INFO record = levelRecord();
  record.defaultStripSize = 0x60;
  const RaidLevelSupport level = kConverter.toRaidLevelSupport(record, 8);
  ASSERT_TRUE(level.defaultStripSize());
  EXPECT_EQ(static_cast<int>(*level.defaultStripSize()), 17);
}

TEST(ConvertedRaidLevel, ReadsNoBitBeyondItsLevelsAndSizes) {
  VEX_RAID_LEVEL_INFO record{};
  record.migrationTargets = 0xFFFFFFF0;
  record.migrationRequiresDisk = 0xFFFFFFFF;
  record.stripSizes = 0xFFFF0000;
  const RaidLevelSupport level = kConverter.toRaidLevelSupport(record, 1);
  EXPECT_TRUE(level.migrSupport().empty());
  EXPECT_TRUE(level.stripSizesSupported().empty());
  EXPECT_FALSE(level.supported());
}

TEST(ConvertedRaidLevel, NamesTheLevelOfEveryCode) {
  EXPECT_EQ(kConverter.toRaidLevelSupport({}, 0).raidLevel(), RaidLevel::RAID_INVALID);
  EXPECT_EQ(kConverter.toRaidLevelSupport({}, 1).raidLevel(), RaidLevel::RAID_0);
  EXPECT_EQ(kConverter.toRaidLevelSupport({}, 4).raidLevel(), RaidLevel::RAID_10);
  EXPECT_EQ(kConverter.toRaidLevelSupport({}, 3).raidLevel(), RaidLevel::RAID_UNKNOWN);
}

TEST(ConvertedVersion, TakesTheLibrarysNumbersAndOurs) {
  VEX_SYSTEM_INFO record{};
  record.interfaceVersionMajor = 2;
  record.interfaceVersionMinor = 13;
  put(record.libraryVersion, "17.5.0.1017");
  record.volSetSizeSupport = 1;
  record.passThroughSupport = 3;
  EXPECT_EQ(linesOf(kConverter.toVersion(record).toServiceObject()), (Lines{
                                                                         "passThroughSupport = false",
                                                                         "pluginVersion = \"5.4.0.1465\"",
                                                                         "productVersion = \"17.5.0.1017\"",
                                                                         "vexInterfaceVersion = \"2.13\"",
                                                                         "vexVersion = \"17.5.0.1017\"",
                                                                         "volSetSizeSupport = true",
                                                                     }));
}

VEX_CONTROLLER_INFO controllerRecord() {
  VEX_CONTROLLER_INFO record{};
  record.controllerHandle = 0x11;
  record.address = 0x00170000;
  put(record.name, "Controller A");
  record.controllerType = 4;
  record.raidInfoHandle = 0x61;
  put(record.version, "1.2");
  put(record.prebootManagerVersion, "3.4");
  record.vendorId = 0x8ABC;
  record.deviceId = 0x2822;
  record.subSystemId = 0;
  record.hardwareRevisionId = 4;
  record.subClassCode = 7;
  record.subVendorId = 0x1D;
  record.prebootManagerLoaded = 1;
  record.twoTbDiskSupport = 1;
  record.disableESataSpanning = 1;
  record.xorSupported = 1;
  record.nvsramSupported = 1;
  record.readPatrolSupported = 1;
  record.rohiEnabled = 1;
  record.supportsVolumeDelete = 1;
  return record;
}

TEST(ConvertedController, HoldsEveryField) {
  const Controller controller = kConverter.toController(controllerRecord(), 6, 7, boost::none);
  EXPECT_EQ(controller.handle(), 0x11U);
  EXPECT_EQ(controller.raidHandle(), 0x61U);
  EXPECT_EQ(controller.address(), L"0-0-23-0");
  EXPECT_EQ(linesOf(controller.toServiceObject()), (Lines{
                                                       "availableDevices = 7",
                                                       "availableDisks = 6",
                                                       "deviceId = \"0x2822\"",
                                                       "disableESataSpanning = true",
                                                       "hardwareRevisionId = 4",
                                                       "id = \"14695981038468906945\"",
                                                       "mode = \"RAID\"",
                                                       "name = \"Controller A\"",
                                                       "nvsramSupported = true",
                                                       "preboot.loaded = true",
                                                       "preboot.managerVersion = \"3.4\"",
                                                       "preboot.twoTbDiskSupport = true",
                                                       "preboot.twoTbVolumeSupport = false",
                                                       "raidId = \"\"",
                                                       "readPatrol.enabled = false",
                                                       "readPatrol.supported = true",
                                                       "rohi.enabled = true",
                                                       "rohi.supported = false",
                                                       "subClassCode = 7",
                                                       "subSystemId = \"0x0\"",
                                                       "subVendorId = \"0x1d\"",
                                                       "supportedFunctions.addDisksToArray = false",
                                                       "supportedFunctions.arrayCreate = false",
                                                       "supportedFunctions.markAsNormal = false",
                                                       "supportedFunctions.markAsSpare = false",
                                                       "supportedFunctions.portLocate = false",
                                                       "supportedFunctions.volumeCancelVerify = false",
                                                       "supportedFunctions.volumeDelete = true",
                                                       "supportedFunctions.volumeModify = false",
                                                       "supportedFunctions.volumeRename = false",
                                                       "supportedFunctions.volumeSetCachePolicy = false",
                                                       "type = \"Lyx\"",
                                                       "vendorId = \"0x8abc\"",
                                                       "version = \"1.2\"",
                                                       "xor.enabled = false",
                                                       "xor.supported = true",
                                                   }));
}

TEST(ConvertedController, IsTheSameWithAndWithoutItsRaidRecord) {
  VEX_RAID_INFO raid{};
  raid.raidInfoHandle = 0x99;
  const Controller with = kConverter.toController(controllerRecord(), 6, 7, raid);
  const Controller without = kConverter.toController(controllerRecord(), 6, 7, boost::none);
  EXPECT_EQ(with.raidHandle(), 0x61U);
  EXPECT_EQ(linesOf(with.toServiceObject()), linesOf(without.toServiceObject()));
}

TEST(ConvertedController, HasItsModeFromSubClassFirstAndTypeSecond) {
  const auto modeOf = [](std::uint8_t subClass, std::uint32_t type) {
    VEX_CONTROLLER_INFO record{};
    record.subClassCode = subClass;
    record.controllerType = type;
    return toText(kConverter.toController(record, 0, 0, boost::none).mode());
  };
  EXPECT_EQ(modeOf(4, 3), L"RAID");
  EXPECT_EQ(modeOf(7, 1), L"RAID");
  EXPECT_EQ(modeOf(6, 1), L"AHCI");
  EXPECT_EQ(modeOf(6, 2), L"UNKNOWN");
  EXPECT_EQ(modeOf(0, 4), L"UNKNOWN");
}

struct FunctionRow {
  std::uint32_t VEX_CONTROLLER_INFO::*field;
  bool (Controller::Functions::*flag)() const;
};

using Functions = Controller::Functions;

const FunctionRow kFunctions[] = {
    {&VEX_CONTROLLER_INFO::supportsPortLocate, &Functions::portLocate},
    {&VEX_CONTROLLER_INFO::supportsFunction420, &Functions::function420},
    {&VEX_CONTROLLER_INFO::supportsMarkAsNormal, &Functions::markAsNormal},
    {&VEX_CONTROLLER_INFO::supportsVolumeDelete, &Functions::volumeDelete},
    {&VEX_CONTROLLER_INFO::supportsArrayCreate, &Functions::arrayCreate},
    {&VEX_CONTROLLER_INFO::supportsVolumeModify, &Functions::volumeModify},
    {&VEX_CONTROLLER_INFO::supportsVolumeRename, &Functions::volumeRename},
    {&VEX_CONTROLLER_INFO::supportsAddDisksToArray, &Functions::addDisksToArray},
    {&VEX_CONTROLLER_INFO::supportsVolumeSetCachePolicy, &Functions::volumeSetCachePolicy},
    {&VEX_CONTROLLER_INFO::supportsVolumeCancelVerify, &Functions::volumeCancelVerify},
    {&VEX_CONTROLLER_INFO::supportsMarkAsSpare, &Functions::markAsSpare},
};

TEST(ConvertedFunctions, TakeEachFlagFromItsOwnField) {
  for (const FunctionRow& on : kFunctions) {
    VEX_CONTROLLER_INFO record{};
    record.*on.field = 1;
    const Functions functions = kConverter.toFunctions(record);
    for (const FunctionRow& row : kFunctions) EXPECT_EQ((functions.*row.flag)(), row.field == on.field);
  }
}

VEX_END_DEVICE_INFO deviceRecord() {
  VEX_END_DEVICE_INFO record{};
  record.endDeviceHandle = 0x41;
  record.address = 0x100;
  record.deviceType = 1;
  record.raidInfoHandle = 0x61;
  record.arrayHandle = 0x21;
  record.controllerHandle = 0x11;
  record.unpublishedNumber = 77;
  put(record.vendorId, " 1234 ");
  put(record.serialNumber, "SN-1");
  put(record.model, "Model A");
  put(record.firmware, "F1");
  record.diskType = 3;
  record.diskState = 6;
  record.diskUsage = 1;
  record.totalSize = 5000;
  record.logicalSectorSize = 512;
  record.physicalSectorSize = 4096;
  record.freeSize = 600;
  record.writeCachePolicy = 1;
  record.systemDisk = 1;
  record.managedHotplug = 1;
  record.x8PortB = 5;
  record.lyxDomain = 9;
  record.isOrdanNVMe = 1;
  record.unpublishedSize = 88;
  return record;
}

VEX_PHY_INFO phyRecord(VEX_HANDLE phy, VEX_HANDLE device, std::uint32_t speed) {
  VEX_PHY_INFO record{};
  record.phyHandle = phy;
  record.endDeviceHandle = device;
  record.negotiatedLinkSpeed = speed;
  return record;
}

TEST(ConvertedEndDevice, HoldsEveryField) {
  const EndDevice device = kConverter.toEndDevice(deviceRecord(), {phyRecord(0x71, 0x41, 3)});
  EXPECT_EQ(device.handle(), 0x41U);
  EXPECT_EQ(device.controllerHandle(), 0x11U);
  EXPECT_EQ(device.raidHandle(), 0x61U);
  EXPECT_EQ(device.arrayHandle(), 0x21U);
  EXPECT_EQ(device.phyHandle(), 0x71U);
  EXPECT_EQ(device.unpublishedNumber(), 77U);
  EXPECT_EQ(device.unpublishedSize(), 88U);
  EXPECT_EQ(linesOf(device.toServiceObject()), (Lines{
                                                   "address = \"0-1-0-0\"",
                                                   "arrayId = null",
                                                   "controllerId = \"\"",
                                                   "deviceType = \"DISK\"",
                                                   "firmware = \"F1\"",
                                                   "freeSize = \"600\"",
                                                   "id = \"14695981038468906945\"",
                                                   "isOrdanNVMe = true",
                                                   "lyxDomain = 9",
                                                   "managedHotplug = true",
                                                   "model = \"Model A\"",
                                                   "negotiatedLinkSpeed = \"6 Gb/s\"",
                                                   "raidId = \"\"",
                                                   "sectorSize.logical = \"512\"",
                                                   "sectorSize.physical = \"4096\"",
                                                   "serialNumber = \"SN-1\"",
                                                   "state = \"NORMAL\"",
                                                   "systemDisk = true",
                                                   "totalSize = \"5000\"",
                                                   "type = \"Lyx\"",
                                                   "usage = \"ARRAY_MEMBER\"",
                                                   "vendorId = \"0x1234\"",
                                                   "writeCachePolicy = \"OFF\"",
                                                   "x8Disk = \"X8_B\"",
                                               }));
}

TEST(ConvertedEndDevice, TakesTheFirstPhyThatNamesIt) {
  const EndDevice device = kConverter.toEndDevice(
      deviceRecord(), {phyRecord(0x70, 0x40, 3), phyRecord(0x71, 0x41, 1), phyRecord(0x72, 0x41, 2)});
  EXPECT_EQ(device.phyHandle(), 0x71U);
  EXPECT_EQ(toText(device.negotiatedLinkSpeed()), L"1.5 Gb/s");
}

TEST(ConvertedEndDevice, HasNoPhyAndAnUnknownSpeedWhenNoneNamesIt) {
  const EndDevice device = kConverter.toEndDevice(deviceRecord(), {phyRecord(0x70, 0x40, 3)});
  EXPECT_EQ(device.phyHandle(), 0U);
  EXPECT_EQ(toText(device.negotiatedLinkSpeed()), L"UNKNOWN");
}

TEST(ConvertedEndDevice, OfHandle0HasNothingOfAPhyWithoutADevice) {
  VEX_END_DEVICE_INFO record = deviceRecord();
  record.endDeviceHandle = 0;
  const EndDevice device = kConverter.toEndDevice(record, {phyRecord(0x70, 0, 3)});
  EXPECT_EQ(device.handle(), 0U);
  EXPECT_EQ(device.phyHandle(), 0U);
  EXPECT_EQ(toText(device.negotiatedLinkSpeed()), L"UNKNOWN");
}

TEST(ConvertedDisk, HasItsX8RoleFromPortAFirst) {
  const auto roleOf = [](std::uint32_t portA, std::uint32_t portB) {
    VEX_END_DEVICE_INFO record{};
    record.x8PortA = portA;
    record.x8PortB = portB;
    return static_cast<int>(kConverter.toDisk(record).x8Disk);
  };
  EXPECT_EQ(roleOf(5, 6), 2);
  EXPECT_EQ(roleOf(0xFFFFFFFF, 0), 2);
  EXPECT_EQ(roleOf(0, 6), 3);
  EXPECT_EQ(roleOf(0, 0), 1);
}

}  // namespace
