#ifndef MIRN_SIMULATOR_MODEL_MACHINE_H
#define MIRN_SIMULATOR_MODEL_MACHINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/codes.h"
#include "model/table.h"

/// One machine as plain data. Sizes are bytes, handles 0 where there is nothing. What a scenario file holds
/// of each struct stands in scenario/fields.h; members marked "derived" are not in the file: they follow from
/// the rest, `relate` computes them and links.h keeps them.
namespace simulator {

constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;

struct SystemInfo {
  std::uint32_t interfaceVersionMajor = 3;
  std::uint32_t interfaceVersionMinor = 1;
  std::string libraryVersion = "9.3.0.1052";
  bool volSetSizeSupport = true;
  bool passThroughSupport = true;
};

/// How fast long work goes, in mebibytes of one member a second of machine time.
struct Rates {
  std::uint32_t rebuild = 200;
  std::uint32_t initialize = 400;
  std::uint32_t verify = 400;
  std::uint32_t migrate = 100;
};

struct LevelCapability {
  RaidLevel level = RaidLevel::RAID_0;
  std::uint32_t minDisks = 2;
  std::uint32_t maxDisks = 2;
  StripSize defaultStripSize = StripSize::SIZE_64KB;
  std::uint32_t stripSizes = 0;             ///< bits of StripSize
  std::uint32_t migrationTargets = 0;       ///< bits of RaidLevel
  std::uint32_t migrationRequiresDisk = 0;  ///< bits of RaidLevel
  bool evenDiskCount = true;                ///< even numbers of disks are allowed
  bool oddDiskCount = true;                 ///< odd numbers of disks are allowed
};

struct RaidEngine {
  Handle handle = 0;
  std::string id;
  std::uint32_t maxDisksPerArray = 8;
  std::uint32_t maxRaidDisksSupported = 32;
  std::uint32_t maxVolumesPerArray = 2;
  std::uint32_t maxVolumesPerHba = 16;
  bool raidEnabled = true;
  bool globalSpareSupport = true;
  bool dedicatedSpareSupport = false;
  bool createFromExistingSupport = true;
  bool emptyArraysSupport = false;
  bool ordanDrivesOnly = false;
  std::uint32_t rwhPolicies = 1;  ///< bit n: the policy with the code n
  std::vector<LevelCapability> levels;
};

struct Controller {
  Handle handle = 0;
  std::string id;
  std::uint32_t address = 0;
  std::string name;
  ControllerType type = ControllerType::SATA;
  Handle engine = 0;
  std::string version;
  std::string prebootManagerVersion;
  std::uint16_t vendorId = 0;
  std::uint16_t deviceId = 0;
  std::uint16_t subSystemId = 0;
  std::uint16_t subVendorId = 0;
  std::uint8_t hardwareRevisionId = 0;
  std::uint8_t subClassCode = 0;
  bool prebootManagerLoaded = false;
  bool twoTbVolumeSupport = true;
  bool twoTbDiskSupport = true;
  bool disableESataSpanning = false;
  bool xorSupported = false;
  bool xorEnabled = false;
  bool nvsramSupported = false;
  bool supportsPortLocate = false;
  bool supportsFunction420 = false;
  bool supportsMarkAsNormal = true;
  bool supportsVolumeDelete = true;
  bool supportsArrayCreate = true;
  bool supportsVolumeModify = true;
  bool supportsVolumeRename = true;
  bool supportsAddDisksToArray = true;
  bool supportsVolumeSetCachePolicy = true;
  bool supportsVolumeCancelVerify = true;
  bool supportsMarkAsSpare = true;
  bool readPatrolSupported = false;
  bool readPatrolEnabled = false;
  bool rohiSupported = false;
  bool rohiEnabled = false;

  std::vector<Handle> devices;  ///< derived, ascending
  std::vector<Handle> ports;    ///< derived, ascending
  std::vector<Handle> arrays;   ///< derived, ascending
};

struct Phy {
  Handle handle = 0;
  LinkSpeed linkSpeed = LinkSpeed::UNKNOWN;
};

struct EndDevice {
  Handle handle = 0;
  std::string id;
  Handle controller = 0;
  std::uint32_t address = 0;
  DeviceType type = DeviceType::DISK;
  std::string vendorId;
  std::string serialNumber;
  std::string model;
  std::string firmware;
  DiskType diskType = DiskType::UNKNOWN;
  DiskState condition = DiskState::NORMAL;  ///< never MISSING, FAILED, LOCKED or SMART_EVENT_TRIGGERED
  bool failed = false;                      ///< the facts from here on do not exclude each other
  bool locked = false;
  bool smartEvent = false;
  Presence presence = Presence::PRESENT;
  bool spare = false;
  Handle spareFor = 0;           ///< array of a dedicated spare
  bool hotInserted = false;      ///< put in for a lost member that nothing has replaced yet
  bool foreignMetadata = false;  ///< carries the metadata of an array that goes on without it
  bool readOnlyMount = false;
  std::uint8_t storagePool = 0;
  std::uint64_t totalSize = 0;
  std::uint64_t logicalSectorSize = 512;
  std::uint64_t physicalSectorSize = 512;
  WriteCache writeCache = WriteCache::UNKNOWN;
  bool systemDisk = false;
  bool managedHotplug = false;
  X8Role x8 = X8Role::NONE;
  std::uint32_t lyxDomain = 0;
  bool isOrdanNVMe = false;
  std::uint32_t unpublishedNumber = 0;
  std::uint64_t unpublishedSize = 0;
  std::string userPassword;
  std::string masterPassword;
  std::uint32_t failedUnlocks = 0;
  Handle bay = 0;  ///< the device whose bay it was put into; 0: its own
  std::vector<Phy> phys;

  Handle array = 0;                ///< derived
  std::uint32_t journalUsers = 0;  ///< derived: volumes whose journal it holds
};

struct Port {
  Handle handle = 0;
  std::string id;
  std::uint32_t address = 0;
  Handle device = 0;  ///< the controller or end device that it belongs to
  Handle connectedTo = 0;
  std::uint32_t numPhys = 1;
  bool locate = false;
};

struct Array {
  Handle handle = 0;
  std::string id;
  std::string name;
  WriteCache writeCache = WriteCache::OFF;
  std::vector<Handle> disks;  ///< RAID 10 mirrors disks 0 and 1, 2 and 3 and so on

  Handle controller = 0;        ///< derived
  std::vector<Handle> volumes;  ///< derived, by ordinal
};

struct Work {
  WorkKind kind = WorkKind::VERIFY;
  std::uint64_t elapsedMs = 0;
  std::uint64_t totalMs = 0;
  std::uint64_t carryMs = 0;                  ///< time not yet in elapsedMs, since work shares the disks
  Handle disk = 0;                            ///< REBUILD: the disk rebuilt onto
  RaidLevel sourceLevel = RaidLevel::RAID_0;  ///< MIGRATE: how the data lay before
  std::vector<Handle> sourceDisks;            ///< MIGRATE: and on which disks
  std::uint64_t targetSize = 0;               ///< MIGRATE: the size at the end
  std::vector<Handle> catchUp;                ///< MIGRATE: stale members that it has written since it began
  bool rewrites = true;                       ///< MIGRATE: writes everything anew; an expansion does not
};

/// Not given yet; every volume of a machine has one.
constexpr std::uint32_t kNoOrdinal = 0xFFFFFFFF;

/// Spans all disks of its array, in the array's order. With MIGRATE work, level and strip size are those that
/// it comes to; until then its data are as safe as the source layout of the work makes them.
struct Volume {
  Handle handle = 0;
  std::string id;
  std::string name;
  Handle array = 0;
  std::uint32_t ordinal = kNoOrdinal;
  RaidLevel level = RaidLevel::RAID_0;
  StripSize stripSize = StripSize::SIZE_64KB;
  std::uint64_t size = 0;
  std::vector<Handle> stale;  ///< members whose content is out of date
  std::vector<Handle> blank;  ///< those among them that never held the volume as it lies now
  CachePolicy cachePolicy = CachePolicy::OFF;
  RwhPolicy rwhPolicy = RwhPolicy::RWH_OFF;
  Handle journalingDrive = 0;
  bool systemVolume = false;
  bool initialized = true;
  std::uint32_t verifyErrors = 0;
  std::uint32_t verifyBadBlocks = 0;
  std::uint32_t latentErrors = 0;     ///< what the next verification finds
  std::uint32_t latentBadBlocks = 0;  ///< likewise
  std::optional<Work> work;
};

struct Machine {
  SystemInfo system;
  Rates rates;
  Table<RaidEngine> engines;
  Table<Controller> controllers;
  Table<EndDevice> devices;
  Table<Port> ports;
  Table<Array> arrays;
  Table<Volume> volumes;
  Handle nextHandle = 1;  ///< handles are given once and never again

  std::uint64_t changes = 0;  ///< derived: counts what subscribers are told of
  std::uint64_t pendingMs =
      0;  ///< derived: time that has passed and that work does not count yet, since nothing ends within it
  Table<Handle> phyOwner;  ///< derived: phy handle to device handle
};

}  // namespace simulator

#endif
