#include "event_types.h"

#include "lookup.h"

namespace {

constexpr wchar_t kUndefinedSeverity[] = L"UNDEFINED";
constexpr wchar_t kUnknownState[] = L"has unknown state";

template <class Type>
using TextTable = std::map<Type, std::wstring>;

const TextTable<EventSeverity> kSeverities{
    {EventSeverity::NONE, L"NONE"},
    {EventSeverity::INFO, L"INFO"},
    {EventSeverity::WARNING, L"WARNING"},
    {EventSeverity::ERROR, L"ERROR"},
};

const TextTable<DiskEventType> kDiskTypeNames{
    {DiskEventType::DISK_UNKNOWN, L"DISK_UNKNOWN"}, {DiskEventType::DISK_SMART, L"DISK_SMART"},
    {DiskEventType::DISK_FAILED, L"DISK_FAILED"},   {DiskEventType::DISK_UNLOCKED, L"DISK_UNLOCKED"},
    {DiskEventType::DISK_ADDED, L"DISK_ADDED"},     {DiskEventType::DISK_REMOVED, L"DISK_REMOVED"},
    {DiskEventType::DISK_MISSING, L"DISK_MISSING"},
};

const TextTable<DiskEventType> kDiskDescriptions{
    {DiskEventType::DISK_UNKNOWN, kUnknownState}, {DiskEventType::DISK_SMART, L"reported SMART event"},
    {DiskEventType::DISK_FAILED, L"failed"},      {DiskEventType::DISK_UNLOCKED, L"was unlocked"},
    {DiskEventType::DISK_ADDED, L"was added"},    {DiskEventType::DISK_REMOVED, L"was removed"},
    {DiskEventType::DISK_MISSING, L"is missing"},
};

const TextTable<VolumeEventType> kVolumeTypeNames{
    {VolumeEventType::VOLUME_UNKNOWN, L"VOLUME_UNKNOWN"},
    {VolumeEventType::VOLUME_ADDED, L"VOLUME_ADDED"},
    {VolumeEventType::VOLUME_REBUILD_STARTED, L"VOLUME_REBUILD_STARTED"},
    {VolumeEventType::VOLUME_REBUILD_COMPLETE, L"VOLUME_REBUILD_COMPLETE"},
    {VolumeEventType::VOLUME_VERIFY_STARTED, L"VOLUME_VERIFY_STARTED"},
    {VolumeEventType::VOLUME_VERIFY_STOP, L"VOLUME_VERIFY_STOP"},
    {VolumeEventType::VOLUME_VERIFY_AND_FIX_STARTED, L"VOLUME_VERIFY_AND_FIX_STARTED"},
    {VolumeEventType::VOLUME_VERIFY_AND_FIX_STOP, L"VOLUME_VERIFY_AND_FIX_STOP"},
    {VolumeEventType::VOLUME_MIGRATION_STARTED, L"VOLUME_MIGRATION_STARTED"},
    {VolumeEventType::VOLUME_MIGRATION_COMPLETE, L"VOLUME_MIGRATION_COMPLETE"},
    {VolumeEventType::VOLUME_INITIALIZE_STARTED, L"VOLUME_INITIALIZE_STARTED"},
    {VolumeEventType::VOLUME_INITIALIZE_COMPLETE, L"VOLUME_INITIALIZE_COMPLETE"},
    {VolumeEventType::VOLUME_DEGRADED, L"VOLUME_DEGRADED"},
    {VolumeEventType::VOLUME_FAILED, L"VOLUME_FAILED"},
    {VolumeEventType::VOLUME_UNLOCKED, L"VOLUME_UNLOCKED"},
    {VolumeEventType::VOLUME_LOCKED, L"VOLUME_LOCKED"},
    {VolumeEventType::VOLUME_DELETED, L"VOLUME_DELETED"},
    {VolumeEventType::VOLUME_SYNCING_STARTED, L"VOLUME_SYNCING_STARTED"},
    {VolumeEventType::VOLUME_SYNCING_COMPLETED, L"VOLUME_SYNCING_COMPLETED"},
    {VolumeEventType::VOLUME_RECOVERY_DISK_DATA_INVALID, L"VOLUME_RECOVERY_DISK_DATA_INVALID"},
    {VolumeEventType::VOLUME_MASTER_DISK_DATA_INVALID, L"VOLUME_MASTER_DISK_DATA_INVALID"},
    {VolumeEventType::VOLUME_MASTER_DISK_FAILED, L"VOLUME_MASTER_DISK_FAILED"},
    {VolumeEventType::VOLUME_RECOVERY_DISK_FAILED, L"VOLUME_RECOVERY_DISK_FAILED"},
    {VolumeEventType::VOLUME_REVERSE_SYNC_STARTED, L"VOLUME_REVERSE_SYNC_STARTED"},
    {VolumeEventType::VOLUME_REVERSE_SYNC_COMPLETE, L"VOLUME_REVERSE_SYNC_COMPLETE"},
    {VolumeEventType::VOLUME_NORMAL, L"VOLUME_NORMAL"},
};

const TextTable<VolumeEventType> kVolumeDescriptions{
    {VolumeEventType::VOLUME_UNKNOWN, kUnknownState},
    {VolumeEventType::VOLUME_ADDED, L"was added"},
    {VolumeEventType::VOLUME_REBUILD_STARTED, L"rebuild was started"},
    {VolumeEventType::VOLUME_REBUILD_COMPLETE, L"rebuild was completed"},
    {VolumeEventType::VOLUME_VERIFY_STARTED, L"verify was started"},
    {VolumeEventType::VOLUME_VERIFY_STOP, L"verify was stopped"},
    {VolumeEventType::VOLUME_VERIFY_AND_FIX_STARTED, L"verify and fix was started"},
    {VolumeEventType::VOLUME_VERIFY_AND_FIX_STOP, L"verify and fix was stopped"},
    {VolumeEventType::VOLUME_MIGRATION_STARTED, L"migration was started"},
    {VolumeEventType::VOLUME_MIGRATION_COMPLETE, L"migration was completed"},
    {VolumeEventType::VOLUME_INITIALIZE_STARTED, L"initialization was started"},
    {VolumeEventType::VOLUME_INITIALIZE_COMPLETE, L"initialization was completed"},
    {VolumeEventType::VOLUME_DEGRADED, L"was degraded"},
    {VolumeEventType::VOLUME_FAILED, L"failed"},
    {VolumeEventType::VOLUME_UNLOCKED, L"was unlocked"},
    {VolumeEventType::VOLUME_LOCKED, L"was locked"},
    {VolumeEventType::VOLUME_DELETED, L"was deleted"},
    {VolumeEventType::VOLUME_SYNCING_STARTED, L"syncing was started"},
    {VolumeEventType::VOLUME_SYNCING_COMPLETED, L"syncing was completed"},
    {VolumeEventType::VOLUME_RECOVERY_DISK_DATA_INVALID, L"- data invalid on the recovery disk"},
    {VolumeEventType::VOLUME_MASTER_DISK_DATA_INVALID, L"- data invalid on the master disk"},
    {VolumeEventType::VOLUME_MASTER_DISK_FAILED, L"- master disk failed"},
    {VolumeEventType::VOLUME_RECOVERY_DISK_FAILED, L"- recovery disk failed"},
    {VolumeEventType::VOLUME_REVERSE_SYNC_STARTED, L"reverse sync was started"},
    {VolumeEventType::VOLUME_REVERSE_SYNC_COMPLETE, L"reverse sync was completed"},
    {VolumeEventType::VOLUME_NORMAL, L"was changed to normal state"},
};

/// Changes of a mode that no event tells of; nothing reads them.
[[maybe_unused]] const std::map<std::int32_t, std::wstring> kModeChanges{
    {0, L"Unknown"},          {1, L"OffToSafe"},        {2, L"SafeToOff"},         {3, L"SafeToPerformance"},
    {4, L"OffToPerformance"}, {5, L"PerformanceToOff"}, {6, L"PerformanceToSafe"},
};

}  // namespace

std::wstring toText(EventSeverity severity) { return lookUpOr(kSeverities, severity, kUndefinedSeverity); }

std::wstring typeName(DiskEventType type) {
  return lookUpOr(kDiskTypeNames, type, lookUp(kDiskTypeNames, DiskEventType::DISK_UNKNOWN));
}

std::wstring typeName(VolumeEventType type) {
  return lookUpOr(kVolumeTypeNames, type, lookUp(kVolumeTypeNames, VolumeEventType::VOLUME_UNKNOWN));
}

std::wstring descriptionText(DiskEventType type) { return lookUpOr(kDiskDescriptions, type, kUnknownState); }

std::wstring descriptionText(VolumeEventType type) {
  return lookUpOr(kVolumeDescriptions, type, kUnknownState);
}
