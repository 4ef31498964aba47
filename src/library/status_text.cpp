#include "status_text.h"

#include <algorithm>
#include <iterator>

#include "service_exceptions.h"

namespace {

struct StatusRow {
  VEX_STATUS status;
  const char* errorId;
  const char* text;
};

constexpr StatusRow kStatusRows[] = {
    {VEX_STATUS_SUCCESS, kErrorInternal, "Function completed successfully"},
    {VEX_STATUS_NO_SESSION_LEFT, kErrorInternal, "Library was unable to allocate a new session"},
    {VEX_STATUS_INVALID_PARAMETER, kErrorInvalidParameter, "Invalid parameter was passed"},
    {VEX_STATUS_INVALID_HANDLE, kErrorObjectNotFound, "Invalid handle was passed to a function"},
    {VEX_STATUS_INVALID_STRIP_SIZE, kErrorInvalidParameter, "Strip size not valid for provided RAID level"},
    {VEX_STATUS_INVALID_VOLUME_NAME, kErrorInvalidParameter, "Invalid volume name"},
    {VEX_STATUS_INVALID_VOLUME_SIZE, kErrorInvalidParameter, "Invalid volume size parameter"},
    {VEX_STATUS_INVALID_RAID_LEVEL, kErrorInvalidParameter,
     "Invalid RAID level parameter for volume creation/migration"},
    {VEX_STATUS_INVALID_SESSION, kErrorInternal, "Session handle is invalid (previously destroyed)"},
    {VEX_STATUS_TIMEOUT, kErrorInternal, "Failed to complete the call within the specified timeframe"},
    {VEX_STATUS_UNSUPPORTED_PLATFORM, kErrorInternal, "Function is not supported on this platform"},
    {VEX_STATUS_ALREADY_INITIALIZED, kErrorInternal, "The library has already been initialized"},
    {VEX_STATUS_NOT_INITIALIZED, kErrorNotInitialized, "The library is not initialized yet"},
    {VEX_STATUS_NOT_ENOUGH_ITEMS, kErrorInvalidParameter,
     "Not enough items (disks, etc) have been specified"},
    {VEX_STATUS_NOT_SUPPORTED, kErrorNotSupported, "Action is not supported"},
    {VEX_STATUS_FAILED, kErrorOperationFailed, "Function failed to complete"},
    {VEX_STATUS_INTERNAL_ERROR, kErrorInternal, "Internal error occurred"},
    {VEX_STATUS_INVALID_SCOPE, kErrorInvalidParameter,
     "Scope passed is either invalid or not valid for current operation"},
    {VEX_STATUS_INVALID_STATE, kErrorInternal,
     "Item not in appropriate state for action to complete successfully"},
    {VEX_STATUS_UNLOCK_LIMIT_REACHED, kErrorInternal, "The limit of unlock attempts is reached"},
    {VEX_STATUS_WRONG_PASSWORD, kErrorInternal, "Password is incorrect for locked item"},
    {VEX_STATUS_INVALID_METADATA_SIZE, kErrorInternal, "Invalid metadata size"},
    {VEX_STATUS_NOT_PERMITTED, kErrorInternal, "User is not permitted to execute the function"},
    {VEX_STATUS_BUSY, kErrorOperationFailed, "Driver has returned a busy notification"},
    {VEX_STATUS_TOO_MANY_ITEMS, kErrorInvalidParameter, "Too many items (disks, etc) have been specified"},
    {VEX_STATUS_DISABLE_CACHE_FAILED, kErrorOperationFailed, "Disable on-device cache failed"},
    {VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED, kErrorNotSupported, "Raid level not supported"},
    {VEX_STATUS_INVALID_RWH_MODE, kErrorInvalidParameter, "Invalid RWH mode"},
    {VEX_STATUS_UNSUPPORTED_DISK, kErrorNotSupported, "Unsupported disk"},
    {VEX_STATUS_MARK_AS_NORMAL_FAILED, kErrorOperationFailed, "Mark as normal failed"},
    {VEX_STATUS_INVALID_DISK_COUNT, kErrorInvalidParameter, "Invalid number of disks"},
    {VEX_STATUS_INVALID_SECTOR_SIZE, kErrorInvalidParameter, "Invalid logical sector size"},
    {VEX_STATUS_FOREIGN_DRIVE_NOT_SUPPORTED, kErrorNotSupported, "Non-Ordan drive not supported"},
    {VEX_STATUS_UNCHECK_JOURNALING_DRIVE_FAILED, kErrorOperationFailed, "Uncheck journaling drive failed"},
    {VEX_STATUS_DISK_TOO_SMALL, kErrorInvalidParameter, "Disk too small"},
    {VEX_STATUS_DISK_ON_WRONG_CONTROLLER, kErrorInvalidParameter, "Disk on wrong controller"},
    {VEX_STATUS_VOLUME_OVER_2TB, kErrorInvalidParameter, "Volume over 2 Tb not allowed"},
    {VEX_STATUS_DUPLICATE_VOLUME_NAME, kErrorInvalidParameter, "Duplicated volume name"},
    {VEX_STATUS_INVALID_CACHE_MODE, kErrorInvalidParameter, "Invalid Cache Mode"},
    {VEX_STATUS_INVALID_CONTROLLER_MODE, kErrorInvalidParameter, "Invalid Controller Mode"},
    {VEX_STATUS_INVALID_DISK, kErrorInvalidParameter, "Invalid Disk"},
    {VEX_STATUS_INVALID_CACHE_POLICY, kErrorInvalidParameter, "Invalid Cache Policy"},
    {VEX_STATUS_INVALID_VOLUME, kErrorInvalidParameter, "Invalid Volume"},
    {VEX_STATUS_INVALID_CACHE_HANDLE, kErrorInvalidParameter, "Invalid handle for cache actions"},
};

constexpr StatusRow kUnknownStatus = {0, kErrorInternal, "Unknown Mirn error status"};

const StatusRow& rowOf(VEX_STATUS status) {
  const auto row = std::find_if(std::begin(kStatusRows), std::end(kStatusRows),
                                [status](const StatusRow& candidate) { return candidate.status == status; });
  return row == std::end(kStatusRows) ? kUnknownStatus : *row;
}

}  // namespace

const char* statusToText(VEX_STATUS status) { return rowOf(status).text; }

std::string statusToErrorId(VEX_STATUS status) { return rowOf(status).errorId; }
