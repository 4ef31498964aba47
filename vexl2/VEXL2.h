#ifndef MIRN_VEXL2_VEXL2_H
#define MIRN_VEXL2_VEXL2_H

/// The interface of the closed storage library VEXL2: fifty operations with C linkage, the records that they
/// fill and take, and the codes in those records. Valid as C99 and as C++17.
///
/// - Every operation returns a `VEX_STATUS` and signals failure in no other way. All may be called from
///   any thread.
/// - `VexInitialize` precedes every other operation and `VexFinalize` follows them all.
/// - The caller zeroes a record whole before the library fills it. All numbers are little-endian, no record
///   has implicit padding, and `reserved<offset>` marks bytes without a meaning for the caller.
/// - Texts are UTF-8 in fixed fields and end at the first NUL. Flags are true when 1, and false at any
///   other value.
/// - A handle of 0 names no object.

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define VEX_EXTERN_C extern "C"
#else
#define VEX_EXTERN_C
#endif

// VEXL2_BUILDS_LIBRARY is defined by those who implement the operations.
#ifndef _WIN32
#define VEX_API VEX_EXTERN_C __attribute__((visibility("default")))
#elif defined(VEXL2_BUILDS_LIBRARY)
#define VEX_API VEX_EXTERN_C __declspec(dllexport)
#else
#define VEX_API VEX_EXTERN_C __declspec(dllimport)
#endif

// A failing check names its record and field: in the message in C++, in the name of the type in C.
#ifdef __cplusplus
#define VEX_ASSERT_OFFSET(record, field, offset) \
  static_assert(offsetof(record, field) == (offset), #record "." #field " must be at offset " #offset)
#define VEX_ASSERT_SIZE(record, size) \
  static_assert(sizeof(record) == (size), #record " must have " #size " bytes")
#else
#define VEX_ASSERT_OFFSET(record, field, offset) \
  typedef char record##_##field##_must_be_at_##offset[offsetof(record, field) == (offset) ? 1 : -1]
#define VEX_ASSERT_SIZE(record, size) \
  typedef char record##_must_have_##size##_bytes[sizeof(record) == (size) ? 1 : -1]
#endif

typedef uint32_t VEX_STATUS;      ///< VEX_STATUS_...
typedef uint32_t VEX_HANDLE;      ///< Names one object of the library; 0 names none.
typedef uint32_t VEX_SCOPE_TYPE;  ///< VEX_SCOPE_..., always given with the handle of the scope's object.

/// VEX_STATUS_...: what an operation can return.
#define VEX_STATUS_SUCCESS UINT32_C(0)
#define VEX_STATUS_NO_SESSION_LEFT UINT32_C(1)
#define VEX_STATUS_INVALID_PARAMETER UINT32_C(2)
#define VEX_STATUS_INVALID_HANDLE UINT32_C(3)
#define VEX_STATUS_INVALID_STRIP_SIZE UINT32_C(4)
#define VEX_STATUS_INVALID_VOLUME_NAME UINT32_C(5)
#define VEX_STATUS_INVALID_VOLUME_SIZE UINT32_C(6)
#define VEX_STATUS_INVALID_RAID_LEVEL UINT32_C(7)
#define VEX_STATUS_INVALID_SESSION UINT32_C(8)
#define VEX_STATUS_TIMEOUT UINT32_C(9)  ///< also: `VexEventWait` saw no change
#define VEX_STATUS_UNSUPPORTED_PLATFORM UINT32_C(10)
#define VEX_STATUS_ALREADY_INITIALIZED UINT32_C(11)
#define VEX_STATUS_NOT_INITIALIZED UINT32_C(12)
#define VEX_STATUS_NOT_ENOUGH_ITEMS UINT32_C(13)  ///< also: a handle buffer too small; the need was stored
#define VEX_STATUS_NOT_SUPPORTED UINT32_C(14)
#define VEX_STATUS_FAILED UINT32_C(15)
#define VEX_STATUS_INTERNAL_ERROR UINT32_C(16)
#define VEX_STATUS_INVALID_SCOPE UINT32_C(17)
#define VEX_STATUS_INVALID_STATE UINT32_C(18)
#define VEX_STATUS_UNLOCK_LIMIT_REACHED UINT32_C(19)
#define VEX_STATUS_WRONG_PASSWORD UINT32_C(20)
#define VEX_STATUS_INVALID_METADATA_SIZE UINT32_C(21)
#define VEX_STATUS_NOT_PERMITTED UINT32_C(22)
#define VEX_STATUS_BUSY UINT32_C(23)
#define VEX_STATUS_TOO_MANY_ITEMS UINT32_C(24)
#define VEX_STATUS_DISABLE_CACHE_FAILED UINT32_C(25)
#define VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED UINT32_C(27)
#define VEX_STATUS_INVALID_RWH_MODE UINT32_C(28)
#define VEX_STATUS_UNSUPPORTED_DISK UINT32_C(29)
#define VEX_STATUS_MARK_AS_NORMAL_FAILED UINT32_C(30)
#define VEX_STATUS_INVALID_DISK_COUNT UINT32_C(31)
#define VEX_STATUS_INVALID_SECTOR_SIZE UINT32_C(34)
#define VEX_STATUS_FOREIGN_DRIVE_NOT_SUPPORTED UINT32_C(35)
#define VEX_STATUS_UNCHECK_JOURNALING_DRIVE_FAILED UINT32_C(36)
#define VEX_STATUS_DISK_TOO_SMALL UINT32_C(37)
#define VEX_STATUS_DISK_ON_WRONG_CONTROLLER UINT32_C(38)
#define VEX_STATUS_VOLUME_OVER_2TB UINT32_C(39)
#define VEX_STATUS_DUPLICATE_VOLUME_NAME UINT32_C(40)
#define VEX_STATUS_INVALID_CACHE_MODE UINT32_C(41)
#define VEX_STATUS_INVALID_CONTROLLER_MODE UINT32_C(42)
#define VEX_STATUS_INVALID_DISK UINT32_C(43)
#define VEX_STATUS_INVALID_CACHE_POLICY UINT32_C(44)
#define VEX_STATUS_INVALID_VOLUME UINT32_C(45)
#define VEX_STATUS_INVALID_CACHE_HANDLE UINT32_C(46)

/// VEX_SCOPE_...: which objects an enumeration gives.
#define VEX_SCOPE_SYSTEM UINT32_C(0)            ///< with handle 0: all of them
#define VEX_SCOPE_CONTROLLER_PORTS UINT32_C(1)  ///< with a controller: its ports
#define VEX_SCOPE_CONTROLLER UINT32_C(2)        ///< with a controller: its end devices, arrays or volumes

/// VEX_RAID_LEVEL_...: RAID levels, a bit each. RAID 10 lies below RAID 5.
#define VEX_RAID_LEVEL_NONE UINT32_C(0x0)
#define VEX_RAID_LEVEL_0 UINT32_C(0x1)
#define VEX_RAID_LEVEL_1 UINT32_C(0x2)
#define VEX_RAID_LEVEL_10 UINT32_C(0x4)
#define VEX_RAID_LEVEL_5 UINT32_C(0x8)
#define VEX_RAID_LEVEL_INVALID UINT32_C(0x10)
#define VEX_RAID_LEVEL_INEXPRESSIBLE UINT32_C(0x80000000)  ///< sent for a level that has no bit

/// VEX_STRIP_SIZE_...: strip sizes, a bit each: bit n is 2 KB shifted left by n.
#define VEX_STRIP_SIZE_UNKNOWN UINT32_C(0x0)
#define VEX_STRIP_SIZE_2KB UINT32_C(0x1)
#define VEX_STRIP_SIZE_4KB UINT32_C(0x2)
#define VEX_STRIP_SIZE_8KB UINT32_C(0x4)
#define VEX_STRIP_SIZE_16KB UINT32_C(0x8)
#define VEX_STRIP_SIZE_32KB UINT32_C(0x10)
#define VEX_STRIP_SIZE_64KB UINT32_C(0x20)
#define VEX_STRIP_SIZE_128KB UINT32_C(0x40)
#define VEX_STRIP_SIZE_256KB UINT32_C(0x80)
#define VEX_STRIP_SIZE_512KB UINT32_C(0x100)
#define VEX_STRIP_SIZE_1MB UINT32_C(0x200)
#define VEX_STRIP_SIZE_2MB UINT32_C(0x400)
#define VEX_STRIP_SIZE_4MB UINT32_C(0x800)
#define VEX_STRIP_SIZE_8MB UINT32_C(0x1000)
#define VEX_STRIP_SIZE_16MB UINT32_C(0x2000)
#define VEX_STRIP_SIZE_32MB UINT32_C(0x4000)
#define VEX_STRIP_SIZE_64MB UINT32_C(0x8000)

/// VEX_CONTROLLER_TYPE_...
#define VEX_CONTROLLER_TYPE_SATA UINT32_C(1)
#define VEX_CONTROLLER_TYPE_SCU UINT32_C(2)
#define VEX_CONTROLLER_TYPE_NVME UINT32_C(3)
#define VEX_CONTROLLER_TYPE_LYX UINT32_C(4)

/// VEX_DEVICE_TYPE_...
#define VEX_DEVICE_TYPE_DISK UINT32_C(1)
#define VEX_DEVICE_TYPE_NON_DISK_STORAGE UINT32_C(2)
#define VEX_DEVICE_TYPE_NON_STORAGE UINT32_C(3)

/// VEX_DISK_TYPE_...
#define VEX_DISK_TYPE_SATA UINT32_C(1)
#define VEX_DISK_TYPE_NVME UINT32_C(2)
#define VEX_DISK_TYPE_LYX UINT32_C(3)

/// VEX_DISK_STATE_...
#define VEX_DISK_STATE_OFFLINE UINT32_C(1)
#define VEX_DISK_STATE_MISSING UINT32_C(2)
#define VEX_DISK_STATE_FAILED UINT32_C(3)
#define VEX_DISK_STATE_SMART_EVENT_TRIGGERED UINT32_C(4)
#define VEX_DISK_STATE_CONFIG_IS_UPREV UINT32_C(5)
#define VEX_DISK_STATE_NORMAL UINT32_C(6)
#define VEX_DISK_STATE_LOCKED UINT32_C(7)
#define VEX_DISK_STATE_MANUAL_OFFLINE UINT32_C(8)
#define VEX_DISK_STATE_INCOMPATIBLE UINT32_C(9)
#define VEX_DISK_STATE_UNSUPPORTED UINT32_C(10)

/// VEX_DISK_USAGE_...
#define VEX_DISK_USAGE_ARRAY_MEMBER UINT32_C(1)
#define VEX_DISK_USAGE_PASS_THROUGH UINT32_C(2)
#define VEX_DISK_USAGE_OFFLINE_ARRAY UINT32_C(3)
#define VEX_DISK_USAGE_SPARE UINT32_C(4)
#define VEX_DISK_USAGE_ARRAY_MEMBER_READONLY_MOUNT UINT32_C(5)
#define VEX_DISK_USAGE_PASS_THRU_READONLY_MOUNT UINT32_C(6)
#define VEX_DISK_USAGE_JOURNALING_DRIVE UINT32_C(7)

/// VEX_LINK_SPEED_...
#define VEX_LINK_SPEED_1_5_GBPS UINT32_C(1)
#define VEX_LINK_SPEED_3_GBPS UINT32_C(2)
#define VEX_LINK_SPEED_6_GBPS UINT32_C(3)

/// VEX_ARRAY_STATE_...
#define VEX_ARRAY_STATE_NORMAL UINT32_C(1)
#define VEX_ARRAY_STATE_BUSY UINT32_C(2)

/// VEX_WRITE_CACHE_...: of arrays and disks.
#define VEX_WRITE_CACHE_OFF UINT32_C(1)
#define VEX_WRITE_CACHE_ON UINT32_C(2)

/// VEX_VOLUME_STATE_...
#define VEX_VOLUME_STATE_NORMAL UINT32_C(1)
#define VEX_VOLUME_STATE_DEGRADED UINT32_C(2)
#define VEX_VOLUME_STATE_FAILED UINT32_C(3)
#define VEX_VOLUME_STATE_INITIALIZING UINT32_C(4)
#define VEX_VOLUME_STATE_REBUILDING UINT32_C(5)
#define VEX_VOLUME_STATE_VERIFYING UINT32_C(6)
#define VEX_VOLUME_STATE_VERIFYING_AND_FIXING UINT32_C(7)
#define VEX_VOLUME_STATE_GENERAL_MIGRATION UINT32_C(8)
#define VEX_VOLUME_STATE_LOCKED UINT32_C(9)
#define VEX_VOLUME_STATE_REBUILDING_OTHER UINT32_C(13)  ///< also a rebuild
#define VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK UINT32_C(16)

/// VEX_CACHE_POLICY_...: of volumes.
#define VEX_CACHE_POLICY_OTHER UINT32_C(0)
#define VEX_CACHE_POLICY_OFF UINT32_C(1)
#define VEX_CACHE_POLICY_WRITE_THROUGH UINT32_C(2)
#define VEX_CACHE_POLICY_WRITE_BACK UINT32_C(3)

/// VEX_RWH_POLICY_...: how a volume closes the RAID write hole.
#define VEX_RWH_POLICY_OFF UINT32_C(0)
#define VEX_RWH_POLICY_DISTRIBUTED UINT32_C(1)
#define VEX_RWH_POLICY_JOURNALING_DRIVE UINT32_C(2)

/// VEX_LOCAL_DEVICE_...: what a port belongs to.
#define VEX_LOCAL_DEVICE_CONTROLLER UINT32_C(1)
#define VEX_LOCAL_DEVICE_END_DEVICE UINT32_C(2)

/// The library itself.
typedef struct VEX_SYSTEM_INFO {
  uint32_t interfaceVersionMajor;  ///< major number of the interface version
  uint32_t interfaceVersionMinor;  ///< minor number of the interface version
  char libraryVersion[36];         ///< text
  uint32_t volSetSizeSupport;      ///< flag
  uint32_t passThroughSupport;     ///< flag
} VEX_SYSTEM_INFO;
VEX_ASSERT_SIZE(VEX_SYSTEM_INFO, 52);
VEX_ASSERT_OFFSET(VEX_SYSTEM_INFO, interfaceVersionMajor, 0);
VEX_ASSERT_OFFSET(VEX_SYSTEM_INFO, interfaceVersionMinor, 4);
VEX_ASSERT_OFFSET(VEX_SYSTEM_INFO, libraryVersion, 8);
VEX_ASSERT_OFFSET(VEX_SYSTEM_INFO, volSetSizeSupport, 44);
VEX_ASSERT_OFFSET(VEX_SYSTEM_INFO, passThroughSupport, 48);

/// A controller.
typedef struct VEX_CONTROLLER_INFO {
  VEX_HANDLE controllerHandle;  ///< handle
  char uniqueId[24];            ///< identity text
  uint32_t address;             ///< four address bytes, lowest first
  uint8_t reserved32[12];
  char name[256];                  ///< text
  uint32_t controllerType;         ///< VEX_CONTROLLER_TYPE_...
  VEX_HANDLE raidInfoHandle;       ///< handle of its VEX_RAID_INFO, 0 for none
  char version[32];                ///< text, version of the controller software
  char prebootManagerVersion[32];  ///< text
  uint16_t vendorId;               ///< PCI vendor id
  uint16_t deviceId;               ///< PCI device id
  uint16_t subSystemId;            ///< PCI subsystem id
  uint8_t hardwareRevisionId;      ///< PCI revision
  uint8_t subClassCode;            ///< PCI sub-class; 4 and 7 are RAID mode
  uint16_t subVendorId;            ///< PCI sub-vendor id
  uint8_t reserved382[2];
  uint32_t prebootManagerLoaded;  ///< flag
  uint32_t twoTbVolumeSupport;    ///< flag
  uint32_t twoTbDiskSupport;      ///< flag
  uint32_t disableESataSpanning;  ///< flag
  uint32_t xorSupported;          ///< flag
  uint32_t nvsramSupported;       ///< flag
  uint32_t supportsPortLocate;    ///< flag
  uint8_t reserved412[8];
  uint32_t supportsFunction420;           ///< flag
  uint32_t supportsMarkAsNormal;          ///< flag
  uint32_t supportsVolumeDelete;          ///< flag
  uint32_t supportsArrayCreate;           ///< flag
  uint32_t supportsVolumeModify;          ///< flag
  uint32_t supportsVolumeRename;          ///< flag
  uint32_t supportsAddDisksToArray;       ///< flag
  uint32_t supportsVolumeSetCachePolicy;  ///< flag
  uint32_t supportsVolumeCancelVerify;    ///< flag
  uint32_t supportsMarkAsSpare;           ///< flag
  uint32_t readPatrolSupported;           ///< flag
  uint32_t readPatrolEnabled;             ///< flag
  uint32_t xorEnabled;                    ///< flag
  uint32_t rohiSupported;                 ///< flag
  uint32_t rohiEnabled;                   ///< flag
  uint8_t reserved480[20];
} VEX_CONTROLLER_INFO;
VEX_ASSERT_SIZE(VEX_CONTROLLER_INFO, 500);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, controllerHandle, 0);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, address, 28);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, name, 44);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, controllerType, 300);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, raidInfoHandle, 304);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, version, 308);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, prebootManagerVersion, 340);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, vendorId, 372);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, deviceId, 374);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, subSystemId, 376);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, hardwareRevisionId, 378);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, subClassCode, 379);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, subVendorId, 380);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, prebootManagerLoaded, 384);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, twoTbVolumeSupport, 388);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, twoTbDiskSupport, 392);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, disableESataSpanning, 396);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, xorSupported, 400);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, nvsramSupported, 404);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsPortLocate, 408);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsFunction420, 420);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsMarkAsNormal, 424);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsVolumeDelete, 428);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsArrayCreate, 432);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsVolumeModify, 436);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsVolumeRename, 440);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsAddDisksToArray, 444);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsVolumeSetCachePolicy, 448);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsVolumeCancelVerify, 452);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, supportsMarkAsSpare, 456);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, readPatrolSupported, 460);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, readPatrolEnabled, 464);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, xorEnabled, 468);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, rohiSupported, 472);
VEX_ASSERT_OFFSET(VEX_CONTROLLER_INFO, rohiEnabled, 476);

/// A device at the end of a cable: a disk, or something else that a controller sees.
typedef struct VEX_END_DEVICE_INFO {
  VEX_HANDLE endDeviceHandle;  ///< handle
  char uniqueId[24];           ///< identity text
  uint32_t address;            ///< four address bytes, lowest first
  uint8_t reserved32[12];
  uint32_t deviceType;          ///< VEX_DEVICE_TYPE_...
  VEX_HANDLE raidInfoHandle;    ///< handle of its VEX_RAID_INFO, 0 for none
  VEX_HANDLE arrayHandle;       ///< handle of the array it is a member of, 0 for none
  VEX_HANDLE controllerHandle;  ///< handle of its controller
  uint8_t reserved60[16];
  uint32_t unpublishedNumber;   ///< a number nobody shows
  char vendorId[16];            ///< text
  char serialNumber[21];        ///< text
  char model[41];               ///< text
  char firmware[22];            ///< text
  uint32_t diskType;            ///< VEX_DISK_TYPE_...
  uint32_t diskState;           ///< VEX_DISK_STATE_...
  uint32_t diskUsage;           ///< VEX_DISK_USAGE_...
  uint64_t totalSize;           ///< bytes
  uint64_t logicalSectorSize;   ///< bytes
  uint64_t physicalSectorSize;  ///< bytes
  uint8_t reserved216[8];
  uint64_t freeSize;          ///< bytes
  uint32_t writeCachePolicy;  ///< VEX_WRITE_CACHE_...
  uint32_t systemDisk;        ///< flag
  uint8_t reserved240[4];
  uint32_t managedHotplug;  ///< flag
  uint8_t reserved248[24];
  uint32_t x8PortA;      ///< not 0: attached by port A
  uint32_t x8PortB;      ///< not 0: attached by port B; read when x8PortA is 0
  uint32_t lyxDomain;    ///< number of the domain
  uint32_t isOrdanNVMe;  ///< flag
  uint8_t reserved288[8];
  uint64_t unpublishedSize;  ///< a number nobody shows
} VEX_END_DEVICE_INFO;
VEX_ASSERT_SIZE(VEX_END_DEVICE_INFO, 304);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, endDeviceHandle, 0);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, address, 28);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, deviceType, 44);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, raidInfoHandle, 48);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, arrayHandle, 52);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, controllerHandle, 56);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, unpublishedNumber, 76);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, vendorId, 80);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, serialNumber, 96);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, model, 117);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, firmware, 158);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, diskType, 180);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, diskState, 184);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, diskUsage, 188);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, totalSize, 192);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, logicalSectorSize, 200);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, physicalSectorSize, 208);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, freeSize, 224);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, writeCachePolicy, 232);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, systemDisk, 236);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, managedHotplug, 244);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, x8PortA, 272);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, x8PortB, 276);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, lyxDomain, 280);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, isOrdanNVMe, 284);
VEX_ASSERT_OFFSET(VEX_END_DEVICE_INFO, unpublishedSize, 296);

/// A phy: the link to which a device is attached.
typedef struct VEX_PHY_INFO {
  VEX_HANDLE phyHandle;  ///< handle
  uint8_t reserved4[56];
  VEX_HANDLE endDeviceHandle;  ///< handle of the device attached
  uint8_t reserved64[24];
  uint32_t negotiatedLinkSpeed;  ///< VEX_LINK_SPEED_...
  uint8_t reserved92[48];
} VEX_PHY_INFO;
VEX_ASSERT_SIZE(VEX_PHY_INFO, 140);
VEX_ASSERT_OFFSET(VEX_PHY_INFO, phyHandle, 0);
VEX_ASSERT_OFFSET(VEX_PHY_INFO, endDeviceHandle, 60);
VEX_ASSERT_OFFSET(VEX_PHY_INFO, negotiatedLinkSpeed, 88);

/// An array: the disks that volumes share.
typedef struct VEX_ARRAY_INFO {
  VEX_HANDLE arrayHandle;  ///< handle
  char uniqueId[21];       ///< identity text
  char name[17];           ///< text
  uint8_t reserved42[6];
  uint32_t state;  ///< VEX_ARRAY_STATE_...
  uint8_t reserved52[4];
  uint64_t totalSize;        ///< bytes
  uint64_t freeSize;         ///< bytes
  uint32_t writeCacheState;  ///< VEX_WRITE_CACHE_...
  uint32_t numDisks;         ///< count
  uint32_t numVolumes;       ///< count
  uint8_t reserved84[4];
} VEX_ARRAY_INFO;
VEX_ASSERT_SIZE(VEX_ARRAY_INFO, 88);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, arrayHandle, 0);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, name, 25);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, state, 48);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, totalSize, 56);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, freeSize, 64);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, writeCacheState, 72);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, numDisks, 76);
VEX_ASSERT_OFFSET(VEX_ARRAY_INFO, numVolumes, 80);

/// A volume.
typedef struct VEX_VOLUME_INFO {
  VEX_HANDLE volumeHandle;  ///< handle
  char uniqueId[24];        ///< identity text
  VEX_HANDLE arrayHandle;   ///< handle of its array
  uint32_t arrayOrdinal;    ///< place in the array, counted from 0
  uint8_t reserved36[17];
  char name[17];  ///< text
  uint8_t reserved70[2];
  uint32_t state;              ///< VEX_VOLUME_STATE_...
  uint32_t raidLevel;          ///< VEX_RAID_LEVEL_...
  uint64_t totalSize;          ///< bytes
  uint32_t stripSize;          ///< VEX_STRIP_SIZE_...
  uint32_t numDisks;           ///< count
  uint32_t migrationProgress;  ///< fraction of 0xFFFFFFFF
  uint32_t cachePolicy;        ///< VEX_CACHE_POLICY_...
  uint32_t rwhPolicy;          ///< VEX_RWH_POLICY_...
  uint32_t systemVolume;       ///< flag
  uint8_t reserved112[4];
  uint32_t migrationInProgress;      ///< flag
  uint32_t initialized;              ///< flag
  uint32_t verifyErrors;             ///< count
  uint32_t verifyBadBlocks;          ///< count
  uint32_t logicalSectorSize;        ///< bytes
  uint32_t physicalSectorSize;       ///< bytes
  VEX_HANDLE journalingDriveHandle;  ///< handle of the device with the write-hole journal, 0 for none
} VEX_VOLUME_INFO;
VEX_ASSERT_SIZE(VEX_VOLUME_INFO, 144);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, volumeHandle, 0);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, arrayHandle, 28);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, arrayOrdinal, 32);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, name, 53);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, state, 72);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, raidLevel, 76);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, totalSize, 80);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, stripSize, 88);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, numDisks, 92);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, migrationProgress, 96);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, cachePolicy, 100);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, rwhPolicy, 104);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, systemVolume, 108);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, migrationInProgress, 116);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, initialized, 120);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, verifyErrors, 124);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, verifyBadBlocks, 128);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, logicalSectorSize, 132);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, physicalSectorSize, 136);
VEX_ASSERT_OFFSET(VEX_VOLUME_INFO, journalingDriveHandle, 140);

/// A port of a controller or of a device.
typedef struct VEX_PORT_INFO {
  VEX_HANDLE portHandle;  ///< handle
  char uniqueId[24];      ///< identity text
  uint32_t address;       ///< four address bytes, lowest first
  uint8_t reserved32[12];
  uint32_t numPhys;                ///< count
  uint32_t localDeviceType;        ///< VEX_LOCAL_DEVICE_...
  VEX_HANDLE localDeviceHandle;    ///< handle of the device that the port belongs to
  VEX_HANDLE connectedPortHandle;  ///< handle of the port at the far end, 0 for none
} VEX_PORT_INFO;
VEX_ASSERT_SIZE(VEX_PORT_INFO, 60);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, portHandle, 0);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, address, 28);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, numPhys, 44);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, localDeviceType, 48);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, localDeviceHandle, 52);
VEX_ASSERT_OFFSET(VEX_PORT_INFO, connectedPortHandle, 56);

/// What a RAID engine can do.
typedef struct VEX_RAID_INFO {
  VEX_HANDLE raidInfoHandle;           ///< handle
  char uniqueId[24];                   ///< identity text
  uint32_t maxDisksPerArray;           ///< count
  uint32_t maxRaidDisksSupported;      ///< count
  uint32_t maxVolumesPerArray;         ///< count
  uint32_t maxVolumesPerHba;           ///< count
  uint32_t raidEnabled;                ///< flag
  uint32_t globalSpareSupport;         ///< flag
  uint32_t dedicatedSpareSupport;      ///< flag
  uint32_t createFromExistingSupport;  ///< flag
  uint32_t emptyArraysSupport;         ///< flag
} VEX_RAID_INFO;
VEX_ASSERT_SIZE(VEX_RAID_INFO, 64);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, raidInfoHandle, 0);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, uniqueId, 4);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, maxDisksPerArray, 28);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, maxRaidDisksSupported, 32);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, maxVolumesPerArray, 36);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, maxVolumesPerHba, 40);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, raidEnabled, 44);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, globalSpareSupport, 48);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, dedicatedSpareSupport, 52);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, createFromExistingSupport, 56);
VEX_ASSERT_OFFSET(VEX_RAID_INFO, emptyArraysSupport, 60);

/// What a RAID engine can do at one level.
typedef struct VEX_RAID_LEVEL_INFO {
  uint32_t supported;              ///< flag: the level can be used
  uint32_t minDisks;               ///< count
  uint32_t maxDisks;               ///< count
  uint32_t defaultStripSize;       ///< VEX_STRIP_SIZE_...
  uint32_t migrationTargets;       ///< set of VEX_RAID_LEVEL_...
  uint32_t migrationRequiresDisk;  ///< set of VEX_RAID_LEVEL_...: the migration needs a further disk
  uint32_t evenDiskCount;          ///< flag
  uint32_t oddDiskCount;           ///< flag
  uint32_t stripSizes;             ///< set of VEX_STRIP_SIZE_...
  uint32_t created;                ///< flag: a volume of this level exists
} VEX_RAID_LEVEL_INFO;
VEX_ASSERT_SIZE(VEX_RAID_LEVEL_INFO, 40);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, supported, 0);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, minDisks, 4);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, maxDisks, 8);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, defaultStripSize, 12);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, migrationTargets, 16);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, migrationRequiresDisk, 20);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, evenDiskCount, 24);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, oddDiskCount, 28);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, stripSizes, 32);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_INFO, created, 36);

/// A volume to be made in an array.
typedef struct VEX_CREATE_VOLUME_PARAMS {
  VEX_HANDLE arrayHandle;  ///< handle of the array
  char name[17];           ///< text, at most 16 characters
  uint8_t reserved21[3];
  uint32_t stripSize;                ///< VEX_STRIP_SIZE_...
  uint32_t raidLevel;                ///< VEX_RAID_LEVEL_...
  uint64_t size;                     ///< as the client gave it; 0 is all that is free
  uint32_t rwhPolicy;                ///< VEX_RWH_POLICY_...
  VEX_HANDLE journalingDriveHandle;  ///< handle, 0 for none
} VEX_CREATE_VOLUME_PARAMS;
VEX_ASSERT_SIZE(VEX_CREATE_VOLUME_PARAMS, 48);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, arrayHandle, 0);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, name, 4);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, stripSize, 24);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, raidLevel, 28);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, size, 32);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, rwhPolicy, 40);
VEX_ASSERT_OFFSET(VEX_CREATE_VOLUME_PARAMS, journalingDriveHandle, 44);

/// A volume to be made with a new array.
typedef struct VEX_CREATE_FROM_DISKS_PARAMS {
  const VEX_HANDLE* disks;      ///< handles of the disks; the caller's
  uint32_t diskCount;           ///< count
  VEX_HANDLE sourceDiskHandle;  ///< handle of the disk whose data is kept, 0 for none
  char name[17];                ///< text, at most 16 characters
  uint8_t reserved33[3];
  uint32_t stripSize;  ///< VEX_STRIP_SIZE_...
  uint32_t raidLevel;  ///< VEX_RAID_LEVEL_...
  uint8_t reserved44[4];
  uint64_t size;                     ///< as the client gave it; 0 is all that is free
  uint32_t rwhPolicy;                ///< VEX_RWH_POLICY_...
  VEX_HANDLE journalingDriveHandle;  ///< handle, 0 for none
} VEX_CREATE_FROM_DISKS_PARAMS;
VEX_ASSERT_SIZE(VEX_CREATE_FROM_DISKS_PARAMS, 64);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, disks, 0);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, diskCount, 8);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, sourceDiskHandle, 12);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, name, 16);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, stripSize, 36);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, raidLevel, 40);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, size, 48);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, rwhPolicy, 56);
VEX_ASSERT_OFFSET(VEX_CREATE_FROM_DISKS_PARAMS, journalingDriveHandle, 60);

/// What a volume is to become.
typedef struct VEX_RAID_LEVEL_MODIFY_PARAMS {
  uint32_t stripSize;       ///< VEX_STRIP_SIZE_...
  uint32_t raidLevel;       ///< VEX_RAID_LEVEL_...
  uint64_t size;            ///< as the client gave it
  const VEX_HANDLE* disks;  ///< handles of further disks; the caller's; null when there are none
  uint32_t diskCount;       ///< count
  uint8_t reserved28[4];
} VEX_RAID_LEVEL_MODIFY_PARAMS;
VEX_ASSERT_SIZE(VEX_RAID_LEVEL_MODIFY_PARAMS, 32);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_MODIFY_PARAMS, stripSize, 0);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_MODIFY_PARAMS, raidLevel, 4);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_MODIFY_PARAMS, size, 8);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_MODIFY_PARAMS, disks, 16);
VEX_ASSERT_OFFSET(VEX_RAID_LEVEL_MODIFY_PARAMS, diskCount, 24);

/// A password for a locked disk.
typedef struct VEX_UNLOCK_PARAMS {
  char password[32];  ///< text; without a NUL when it is 32 long
  uint32_t master;    ///< 1 master password, 0 user password
} VEX_UNLOCK_PARAMS;
VEX_ASSERT_SIZE(VEX_UNLOCK_PARAMS, 36);
VEX_ASSERT_OFFSET(VEX_UNLOCK_PARAMS, password, 0);
VEX_ASSERT_OFFSET(VEX_UNLOCK_PARAMS, master, 32);

// Lifetime and session

/// Prepares the library.
VEX_API VEX_STATUS VexInitialize(void);

/// Releases the library.
VEX_API VEX_STATUS VexFinalize(void);

/// Opens a read session and stores its handle.
VEX_API VEX_STATUS VexSessionOpen(VEX_HANDLE* session);

/// Closes a read session.
VEX_API VEX_STATUS VexSessionClose(VEX_HANDLE session);

/// Looks for the hardware again.
VEX_API VEX_STATUS VexRescan(void);

// Reading

/// Fills the record of the library. Needs no session.
VEX_API VEX_STATUS VexGetSystemInfo(VEX_SYSTEM_INFO* info);

/// The seven enumerations store the handles of a kind of object in `handles`, which has room for `*count` of
/// them, and their number in `*count`. With `handles` null or too small they store the number needed and
/// return `VEX_STATUS_NOT_ENOUGH_ITEMS`, or 0 when there are no objects. Any other scope gives
/// back `VEX_STATUS_INVALID_SCOPE`.
///
/// Stores the handles of controllers.
VEX_API VEX_STATUS VexGetControllerHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                           VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of end devices.
VEX_API VEX_STATUS VexGetEndDeviceHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                          VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of phys.
VEX_API VEX_STATUS VexGetPhyHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                    VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of arrays.
VEX_API VEX_STATUS VexGetArrayHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                      VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of volumes.
VEX_API VEX_STATUS VexGetVolumeHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                       VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of ports.
VEX_API VEX_STATUS VexGetPortHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                     VEX_HANDLE* handles, uint32_t* count);

/// Stores the handles of all RAID engines. Has no scope.
VEX_API VEX_STATUS VexGetRaidInfoHandles(VEX_HANDLE session, VEX_HANDLE* handles, uint32_t* count);

/// Fills the record of a controller.
VEX_API VEX_STATUS VexGetControllerInfo(VEX_HANDLE session, VEX_HANDLE controller, VEX_CONTROLLER_INFO* info);

/// Fills the record of an end device.
VEX_API VEX_STATUS VexGetEndDeviceInfo(VEX_HANDLE session, VEX_HANDLE endDevice, VEX_END_DEVICE_INFO* info);

/// Fills the record of a phy.
VEX_API VEX_STATUS VexGetPhyInfo(VEX_HANDLE session, VEX_HANDLE phy, VEX_PHY_INFO* info);

/// Fills the record of an array.
VEX_API VEX_STATUS VexGetArrayInfo(VEX_HANDLE session, VEX_HANDLE array, VEX_ARRAY_INFO* info);

/// Fills the record of a volume.
VEX_API VEX_STATUS VexGetVolumeInfo(VEX_HANDLE session, VEX_HANDLE volume, VEX_VOLUME_INFO* info);

/// Fills the record of a port.
VEX_API VEX_STATUS VexGetPortInfo(VEX_HANDLE session, VEX_HANDLE port, VEX_PORT_INFO* info);

/// Fills the record of a RAID engine.
VEX_API VEX_STATUS VexGetRaidInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, VEX_RAID_INFO* info);

/// Fills the record of one level (VEX_RAID_LEVEL_...) of a RAID engine.
VEX_API VEX_STATUS VexGetRaidLevelInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, uint32_t raidLevel,
                                       VEX_RAID_LEVEL_INFO* info);

// Actions; they need no session

/// Switches the read patrol of a controller: 1 on, 0 off.
VEX_API VEX_STATUS VexReadPatrolSetState(VEX_HANDLE controller, uint32_t enable);

/// Switches rebuild on hot insert of a controller: 1 on, 0 off.
VEX_API VEX_STATUS VexROHISetState(VEX_HANDLE controller, uint32_t enable);

/// Clears the RAID metadata of a disk.
VEX_API VEX_STATUS VexDiskClearMetadata(VEX_HANDLE disk);

/// Marks a disk as normal.
VEX_API VEX_STATUS VexDiskMarkAsNormal(VEX_HANDLE disk);

/// Makes a disk the spare of an array, or of all when the array is 0.
VEX_API VEX_STATUS VexDiskMarkAsSpare(VEX_HANDLE disk, VEX_HANDLE array);

/// Takes the role of a spare from a disk.
VEX_API VEX_STATUS VexDiskUnmarkAsSpare(VEX_HANDLE disk);

/// Assigns a disk to a storage pool.
VEX_API VEX_STATUS VexDiskAssignStoragePool(VEX_HANDLE disk, uint8_t pool);

/// Unlocks a disk.
VEX_API VEX_STATUS VexDiskUnlock(VEX_HANDLE disk, const VEX_UNLOCK_PARAMS* params);

/// Takes a SMART event off a disk.
VEX_API VEX_STATUS VexDiskResetSmartEvent(VEX_HANDLE disk);

/// Removes the device at a phy. `one` is 1.
VEX_API VEX_STATUS VexPhyRemove(VEX_HANDLE phy, uint32_t one);

/// Switches the locate light of a port: 1 on, 0 off.
VEX_API VEX_STATUS VexPortLocate(VEX_HANDLE port, uint32_t enable);

/// Switches the write cache of an array: 1 on, 0 off.
VEX_API VEX_STATUS VexArraySetWriteCacheState(VEX_HANDLE array, uint32_t enable);

/// Adds disks to an array. `zero` is 0.
VEX_API VEX_STATUS VexAddDisksToArray(VEX_HANDLE array, const VEX_HANDLE* disks, uint32_t diskCount,
                                      uint32_t zero);

/// Marks a volume as normal.
VEX_API VEX_STATUS VexVolumeMarkAsNormal(VEX_HANDLE volume);

/// Rebuilds a volume onto a disk.
VEX_API VEX_STATUS VexVolumeRebuild(VEX_HANDLE volume, VEX_HANDLE disk);

/// Initialises a volume.
VEX_API VEX_STATUS VexVolumeInitialize(VEX_HANDLE volume);

/// Verifies a volume; repairs what it finds when `fixErrors` is 1.
VEX_API VEX_STATUS VexVolumeVerify(VEX_HANDLE volume, uint8_t fixErrors);

/// Ends a running verification.
VEX_API VEX_STATUS VexVolumeCancelVerify(VEX_HANDLE volume);

/// Renames a volume. `name` ends in a NUL.
VEX_API VEX_STATUS VexVolumeRename(VEX_HANDLE volume, const char* name);

/// Expands a volume to a size, as the client gave it.
VEX_API VEX_STATUS VexExpandVolume(VEX_HANDLE volume, uint64_t size);

/// Sets the cache policy (VEX_CACHE_POLICY_...) of a volume.
VEX_API VEX_STATUS VexVolumeSetCachePolicy(VEX_HANDLE volume, uint32_t policy);

/// Migrates a volume to another level, strip size or size.
VEX_API VEX_STATUS VexRaidLevelModify(VEX_HANDLE volume, VEX_RAID_LEVEL_MODIFY_PARAMS params);

/// Deletes a volume.
VEX_API VEX_STATUS VexVolumeDelete(VEX_HANDLE volume);

/// Makes a volume in an array.
VEX_API VEX_STATUS VexVolumeCreate(VEX_CREATE_VOLUME_PARAMS params);

/// Makes a volume and its array from disks and stores the volume's handle.
VEX_API VEX_STATUS VexVolumeCreateFromDisks(VEX_CREATE_FROM_DISKS_PARAMS params, VEX_HANDLE* volume);

/// Sets the write-hole policy (VEX_RWH_POLICY_...) of a volume; the drive is 0 for none.
VEX_API VEX_STATUS VexVolumeSetRwhPolicy(VEX_HANDLE volume, VEX_HANDLE journalingDrive, uint32_t policy);

// Events

/// Subscribes to changes of the configuration and stores the subscription's handle.
VEX_API VEX_STATUS VexGetEventHandle(VEX_HANDLE* event);

/// Blocks until the configuration changes (0) or `timeoutMs` milliseconds have passed (`VEX_STATUS_TIMEOUT`).
VEX_API VEX_STATUS VexEventWait(uint32_t timeoutMs, VEX_HANDLE event);

/// Ends a subscription.
VEX_API VEX_STATUS VexFreeEventHandle(VEX_HANDLE event);

#undef VEX_ASSERT_OFFSET
#undef VEX_ASSERT_SIZE

#endif
