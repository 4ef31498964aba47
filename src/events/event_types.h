#ifndef MIRN_EVENTS_EVENT_TYPES_H
#define MIRN_EVENTS_EVENT_TYPES_H

#include <cstdint>
#include <string>

enum class EventSeverity : std::int32_t { NONE = 0, INFO = 1, WARNING = 2, ERROR = 3 };

enum class DiskEventType : std::int32_t {
  DISK_UNKNOWN = 0,
  DISK_SMART = 1,
  DISK_FAILED = 2,
  DISK_UNLOCKED = 3,
  DISK_ADDED = 4,
  DISK_REMOVED = 5,
  DISK_MISSING = 6,
};

/// The syncing, reverse sync and recovery types, and `VOLUME_MASTER_DISK_DATA_INVALID`, have
/// texts but no maker.
enum class VolumeEventType : std::int32_t {
  VOLUME_UNKNOWN = 0,
  VOLUME_ADDED = 1,
  VOLUME_REBUILD_STARTED = 2,
  VOLUME_REBUILD_COMPLETE = 3,
  VOLUME_VERIFY_STARTED = 4,
  VOLUME_VERIFY_STOP = 5,
  VOLUME_VERIFY_AND_FIX_STARTED = 6,
  VOLUME_VERIFY_AND_FIX_STOP = 7,
  VOLUME_MIGRATION_STARTED = 8,
  VOLUME_MIGRATION_COMPLETE = 9,
  VOLUME_INITIALIZE_STARTED = 10,
  VOLUME_INITIALIZE_COMPLETE = 11,
  VOLUME_DEGRADED = 12,
  VOLUME_FAILED = 13,
  VOLUME_UNLOCKED = 14,
  VOLUME_LOCKED = 24,  ///< Stands with its counterpart, out of line.
  VOLUME_DELETED = 15,
  VOLUME_SYNCING_STARTED = 16,
  VOLUME_SYNCING_COMPLETED = 17,
  VOLUME_RECOVERY_DISK_DATA_INVALID = 18,
  VOLUME_MASTER_DISK_DATA_INVALID = 19,
  VOLUME_MASTER_DISK_FAILED = 20,
  VOLUME_RECOVERY_DISK_FAILED = 21,
  VOLUME_REVERSE_SYNC_STARTED = 22,
  VOLUME_REVERSE_SYNC_COMPLETE = 23,
  VOLUME_NORMAL = 25,
};

/// Any other value gives "UNDEFINED".
std::wstring toText(EventSeverity severity);

/// The name of an event type on the wire. Any other value gives the name of type 0.
std::wstring typeName(DiskEventType type);
std::wstring typeName(VolumeEventType type);

/// What happened, as the end of a sentence that begins with the object. Any other value gives "has
/// unknown state".
std::wstring descriptionText(DiskEventType type);
std::wstring descriptionText(VolumeEventType type);

#endif
