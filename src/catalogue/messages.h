#ifndef MIRN_CATALOGUE_MESSAGES_H
#define MIRN_CATALOGUE_MESSAGES_H

/// What the listeners say when they refuse a request. The words are part of the interface; several stand
/// under more than one error id, and some are declared with the others and raised by nothing.

// Identifiers and objects
constexpr wchar_t kMsgInvalidVolumeId[] = L"Invalid volume identifier";
constexpr wchar_t kMsgInvalidDiskId[] = L"Invalid disk identifier";
constexpr wchar_t kMsgInvalidArrayId[] = L"Invalid array identifier";
constexpr wchar_t kMsgInvalidControllerId[] = L"Invalid controller identifier";
constexpr wchar_t kMsgInvalidPortId[] = L"Invalid port identifier";
constexpr wchar_t kMsgInvalidRaidId[] = L"Invalid RAID identifier";
constexpr wchar_t kMsgInvalidJournalingDriveId[] = L"Invalid journaling drive identifier";
constexpr wchar_t kMsgVolumeNotFound[] = L"Volume identifier not found";
constexpr wchar_t kMsgVolumeNameNotFound[] = L"Volume with provided name not found";
constexpr wchar_t kMsgDiskNotFound[] = L"Disk identifier not found";
constexpr wchar_t kMsgArrayNotFound[] = L"Array identifier not found";
constexpr wchar_t kMsgControllerNotFound[] = L"Controller identifier not found";
constexpr wchar_t kMsgRaidNotFound[] = L"RAID identifier not found";
constexpr wchar_t kMsgJournalingDriveNotFound[] = L"Journaling drive identifier not found";

// Values
constexpr wchar_t kMsgInvalidState[] = L"Invalid state parameter";
constexpr wchar_t kMsgInvalidAction[] = L"Invalid action parameter";
constexpr wchar_t kMsgRepairMissing[] = L"Repair parameter missing";
constexpr wchar_t kMsgInvalidSize[] = L"Invalid size parameter";
constexpr wchar_t kMsgInvalidSource[] = L"Invalid source parameter";
constexpr wchar_t kMsgInvalidCachePolicy[] = L"Invalid cache policy";
constexpr wchar_t kMsgInvalidRaidLevel[] = L"Invalid RAID level";
constexpr wchar_t kMsgInvalidStripSize[] = L"Invalid strip size";
constexpr wchar_t kMsgInvalidRwhPolicy[] = L"Invalid RAID Write Hole policy";
constexpr wchar_t kMsgInvalidRange[] = L"Invalid range parameter";
constexpr wchar_t kMsgTimeMissing[] = L"Time parameter missing";
constexpr wchar_t kMsgInvalidTime[] = L"Invalid time parameter";

// Configuration; the words on one setting stand in its row, in plugin_setting.cpp
constexpr wchar_t kMsgConfigurationEmpty[] = L"Configuration request cannot be empty";

// Volume names
constexpr wchar_t kMsgNameEmpty[] = L"Volume name cannot be empty";
constexpr wchar_t kMsgNameTooLong[] = L"Volume name is too long";
constexpr wchar_t kMsgNameStartsWithSpace[] = L"Volume name cannot start with whitespace";
constexpr wchar_t kMsgNameForbiddenCharacter[] = L"Volume name contains a forbidden character";
constexpr wchar_t kMsgNameInUse[] = L"Volume name is already in use";

// Rules of volumes
constexpr wchar_t kMsgRebuildX8[] = L"Rebuild using X8 disks is not supported";
constexpr wchar_t kMsgRebuildSectorSize[] =
    L"Cannot rebuild the volume using a disk with block size different from source disks";
constexpr wchar_t kMsgRebuildNotDegraded[] = L"Rebuild operation can be performed only on degraded volume";
constexpr wchar_t kMsgNoCachePolicy[] = L"This volume does not support cache policy";
constexpr wchar_t kMsgStripSizeOfRaid1[] = L"Parameter stripSize is not supported for RAID 1";
constexpr wchar_t kMsgNoDefaultStripSize[] = L"Could not determine default strip size";
constexpr wchar_t kMsgRwhNeedsRaid5[] = L"RAID Write Hole policy is supported for RAID 5 only";
constexpr wchar_t kMsgJournalingDriveMissing[] = L"Missing journaling drive identifier";
constexpr wchar_t kMsgJournalingDriveSectorSize[] =
    L"Journaling drive block size has to be equal to source disks block size";
constexpr wchar_t kMsgSecondVolumeSize[] = L"Size of the second volume must be 0";
constexpr wchar_t kMsgX8NeedsRaid0[] = L"X8 disks are supported for RAID 0 only";
constexpr wchar_t kMsgNoDisks[] = L"Disks array cannot be empty";
constexpr wchar_t kMsgCreateSectorSize[] = L"Cannot create a volume from disks with different block sizes";
constexpr wchar_t kMsgDiskNotUsable[] = L"The disk provided cannot be used as a part of the volume";

// Rules of disks and arrays
constexpr wchar_t kMsgNotADisk[] = L"End Device is not a disk";
constexpr wchar_t kMsgSpareX8[] = L"Mark/unmark as spare is not supported for X8 disks";
constexpr wchar_t kMsgAddDiskSectorSize[] = L"Cannot add a disk with block size different from source disks";
constexpr wchar_t kMsgAddX8Disk[] = L"Cannot add X8 disk to array with raid level other than RAID 0";
constexpr wchar_t kMsgNoWriteCache[] = L"This array does not support write cache policy";

// RAID capability
constexpr wchar_t kMsgLevelNotSupported[] = L"Provided RAID level is not supported";
constexpr wchar_t kMsgTypeNeedsLevelRange[] = L"RAID type parameter is supported for the level range only";

// Declared; no path raises them
constexpr wchar_t kMsgDeleteFirstVolume[] = L"Deleting the first volume in a two-volume array is not allowed";
constexpr wchar_t kMsgJournalingDriveOnLinux[] =
    L"Journaling drive is not supported for RAID Write Hole on Linux";
constexpr wchar_t kMsgReadPatrolOnLinux[] = L"Read patrol is not supported on Linux";
constexpr wchar_t kMsgRohiOnLinux[] = L"Rebuild on hot insert is not supported on Linux";

#endif
