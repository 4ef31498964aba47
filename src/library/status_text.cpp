#include "status_text.h"

#include <algorithm>
#include <iterator>

#include "service_exceptions.h"

namespace {

struct StatusRow {
  VEX_STATUS status;
  const char* errorId;
  RefusalKind kind;
  const char* text;
};

constexpr StatusRow kStatusRows[] = {
    {VEX_STATUS_SUCCESS, kErrorInternal, RefusalKind::kFailure, "Function completed successfully"},
    {VEX_STATUS_NO_SESSION_LEFT, kErrorInternal, RefusalKind::kFailure,
     "Library was unable to allocate a new session"},
    {VEX_STATUS_INVALID_PARAMETER, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid parameter was passed"},
    {VEX_STATUS_INVALID_HANDLE, kErrorObjectNotFound, RefusalKind::kAbsent,
     "Invalid handle was passed to a function"},
    {VEX_STATUS_INVALID_STRIP_SIZE, kErrorInvalidParameter, RefusalKind::kRequest,
     "Strip size not valid for provided RAID level"},
    {VEX_STATUS_INVALID_VOLUME_NAME, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid volume name"},
    {VEX_STATUS_INVALID_VOLUME_SIZE, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid volume size parameter"},
    {VEX_STATUS_INVALID_RAID_LEVEL, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid RAID level parameter for volume creation/migration"},
    {VEX_STATUS_INVALID_SESSION, kErrorInternal, RefusalKind::kFailure,
     "Session handle is invalid (previously destroyed)"},
    {VEX_STATUS_TIMEOUT, kErrorInternal, RefusalKind::kFailure,
     "Failed to complete the call within the specified timeframe"},
    {VEX_STATUS_UNSUPPORTED_PLATFORM, kErrorInternal, RefusalKind::kFailure,
     "Function is not supported on this platform"},
    {VEX_STATUS_ALREADY_INITIALIZED, kErrorInternal, RefusalKind::kFailure,
     "The library has already been initialized"},
    {VEX_STATUS_NOT_INITIALIZED, kErrorNotInitialized, RefusalKind::kOffline,
     "The library is not initialized yet"},
    {VEX_STATUS_NOT_ENOUGH_ITEMS, kErrorInvalidParameter, RefusalKind::kRequest,
     "Not enough items (disks, etc) have been specified"},
    {VEX_STATUS_NOT_SUPPORTED, kErrorNotSupported, RefusalKind::kUnsupported, "Action is not supported"},
    {VEX_STATUS_FAILED, kErrorOperationFailed, RefusalKind::kFailure, "Function failed to complete"},
    {VEX_STATUS_INTERNAL_ERROR, kErrorInternal, RefusalKind::kFailure, "Internal error occurred"},
    {VEX_STATUS_INVALID_SCOPE, kErrorInvalidParameter, RefusalKind::kFailure,
     "Scope passed is either invalid or not valid for current operation"},
    {VEX_STATUS_INVALID_STATE, kErrorInternal, RefusalKind::kState,
     "Item not in appropriate state for action to complete successfully"},
    {VEX_STATUS_UNLOCK_LIMIT_REACHED, kErrorInternal, RefusalKind::kFailure,
     "The limit of unlock attempts is reached"},
    {VEX_STATUS_WRONG_PASSWORD, kErrorInternal, RefusalKind::kFailure,
     "Password is incorrect for locked item"},
    {VEX_STATUS_INVALID_METADATA_SIZE, kErrorInternal, RefusalKind::kFailure, "Invalid metadata size"},
    {VEX_STATUS_NOT_PERMITTED, kErrorInternal, RefusalKind::kFailure,
     "User is not permitted to execute the function"},
    {VEX_STATUS_BUSY, kErrorOperationFailed, RefusalKind::kOffline,
     "Driver has returned a busy notification"},
    {VEX_STATUS_TOO_MANY_ITEMS, kErrorInvalidParameter, RefusalKind::kRequest,
     "Too many items (disks, etc) have been specified"},
    {VEX_STATUS_DISABLE_CACHE_FAILED, kErrorOperationFailed, RefusalKind::kFailure,
     "Disable on-device cache failed"},
    {VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED, kErrorNotSupported, RefusalKind::kUnsupported,
     "Raid level not supported"},
    {VEX_STATUS_INVALID_RWH_MODE, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid RWH mode"},
    {VEX_STATUS_UNSUPPORTED_DISK, kErrorNotSupported, RefusalKind::kUnsupported, "Unsupported disk"},
    {VEX_STATUS_MARK_AS_NORMAL_FAILED, kErrorOperationFailed, RefusalKind::kFailure, "Mark as normal failed"},
    {VEX_STATUS_INVALID_DISK_COUNT, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid number of disks"},
    {VEX_STATUS_INVALID_SECTOR_SIZE, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid logical sector size"},
    {VEX_STATUS_FOREIGN_DRIVE_NOT_SUPPORTED, kErrorNotSupported, RefusalKind::kUnsupported,
     "Non-Ordan drive not supported"},
    {VEX_STATUS_UNCHECK_JOURNALING_DRIVE_FAILED, kErrorOperationFailed, RefusalKind::kFailure,
     "Uncheck journaling drive failed"},
    {VEX_STATUS_DISK_TOO_SMALL, kErrorInvalidParameter, RefusalKind::kRequest, "Disk too small"},
    {VEX_STATUS_DISK_ON_WRONG_CONTROLLER, kErrorInvalidParameter, RefusalKind::kRequest,
     "Disk on wrong controller"},
    {VEX_STATUS_VOLUME_OVER_2TB, kErrorInvalidParameter, RefusalKind::kRequest,
     "Volume over 2 Tb not allowed"},
    {VEX_STATUS_DUPLICATE_VOLUME_NAME, kErrorInvalidParameter, RefusalKind::kState, "Duplicated volume name"},
    {VEX_STATUS_INVALID_CACHE_MODE, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid Cache Mode"},
    {VEX_STATUS_INVALID_CONTROLLER_MODE, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid Controller Mode"},
    {VEX_STATUS_INVALID_DISK, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid Disk"},
    {VEX_STATUS_INVALID_CACHE_POLICY, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid Cache Policy"},
    {VEX_STATUS_INVALID_VOLUME, kErrorInvalidParameter, RefusalKind::kRequest, "Invalid Volume"},
    {VEX_STATUS_INVALID_CACHE_HANDLE, kErrorInvalidParameter, RefusalKind::kRequest,
     "Invalid handle for cache actions"},
};

constexpr StatusRow kUnknownStatus = {0, kErrorInternal, RefusalKind::kFailure, "Unknown Mirn error status"};

const StatusRow& rowOf(VEX_STATUS status) {
  const auto row = std::find_if(std::begin(kStatusRows), std::end(kStatusRows),
                                [status](const StatusRow& candidate) { return candidate.status == status; });
  return row == std::end(kStatusRows) ? kUnknownStatus : *row;
}

}  // namespace

const char* statusToText(VEX_STATUS status) { return rowOf(status).text; }

std::string statusToErrorId(VEX_STATUS status) { return rowOf(status).errorId; }

RefusalKind statusToKind(VEX_STATUS status) { return rowOf(status).kind; }

std::vector<VEX_STATUS> knownStatuses() {
  std::vector<VEX_STATUS> statuses;
  for (const StatusRow& row : kStatusRows) statuses.push_back(row.status);
  return statuses;
}

VEX_STATUS statusOfInvalidState(const std::string& errorId) {
  return errorId == kErrorArrayInvalidState ? VEX_STATUS_INTERNAL_ERROR : VEX_STATUS_INVALID_STATE;
}
