#include "action_calls.h"
#include "assert_reporter.h"
#include "mirn_exception.h"
#include "prepared_call_making.h"
#include "status_text.h"
#include "text.h"

using namespace call_making;

namespace {

constexpr std::size_t kPasswordSize = sizeof(VEX_UNLOCK_PARAMS::password);
constexpr char kInvalidPassword[] = "Invalid locked item password";

/// Any value but ENABLED counts as off.
std::uint32_t truthOf(EnableState state) { return state == EnableState::ENABLED ? 1 : 0; }

/// What `VexPhyRemove` and `VexAddDisksToArray` always get in their last place.
constexpr std::uint32_t kPhyRemoveMode = 1;
constexpr std::uint32_t kAddDisksMode = 0;

/// With the id of a disk in the wrong state for the status that says so.
PreparedCall ofDisk(PreparedCall call) {
  return mapped(std::move(call), VEX_STATUS_INVALID_STATE, kErrorDiskInvalidState);
}

}  // namespace

PreparedCall action_calls::rescan() { return made("VexRescan", VexRescan); }

PreparedCall action_calls::clearMetadata(VEX_HANDLE disk) {
  return ofDisk(made("VexDiskClearMetadata", VexDiskClearMetadata, disk));
}

PreparedCall action_calls::markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) {
  return ofDisk(made("VexDiskMarkAsSpare", VexDiskMarkAsSpare, disk, array));
}

PreparedCall action_calls::unmarkAsSpare(VEX_HANDLE disk) {
  return ofDisk(made("VexDiskUnmarkAsSpare", VexDiskUnmarkAsSpare, disk));
}

PreparedCall action_calls::markAsNormal(VEX_HANDLE disk) {
  return ofDisk(made("VexDiskMarkAsNormal", VexDiskMarkAsNormal, disk));
}

PreparedCall action_calls::assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) {
  return made("VexDiskAssignStoragePool", VexDiskAssignStoragePool, disk, pool);
}

PreparedCall action_calls::unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) {
  MIRN_ASSERT_AT(UserLevel::kMaster == level || UserLevel::kUser == level,
                 "UserLevel::kMaster == level || UserLevel::kUser == level", "src\\mirn_session", __LINE__);
  const std::string text = wideToUtf8(password);
  if (text.size() > kPasswordSize) throw MirnException(kErrorInvalidParameter, kInvalidPassword);
  return made("VexDiskUnlock", VexDiskUnlock, disk, byPointer(unlockParameters(level, text)));
}

PreparedCall action_calls::resetSmartEvent(VEX_HANDLE disk) {
  return made("VexDiskResetSmartEvent", VexDiskResetSmartEvent, disk);
}

PreparedCall action_calls::removeDisk(const EndDevice& disk) {
  if (!disk.managedHotplug()) {
    throw MirnException(statusToErrorId(VEX_STATUS_NOT_SUPPORTED), statusToText(VEX_STATUS_NOT_SUPPORTED));
  }
  return made("VexPhyRemove", VexPhyRemove, disk.phyHandle(), kPhyRemoveMode);
}

PreparedCall action_calls::setWriteCacheState(VEX_HANDLE array, EnableState state) {
  return made("VexArraySetWriteCacheState", VexArraySetWriteCacheState, array, truthOf(state));
}

PreparedCall action_calls::addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) {
  const SharedHandles handles = sharedHandlesOf(disks);
  // The state of an array shows as an internal error, not as the status that disks and volumes give.
  return mapped(made("VexAddDisksToArray", VexAddDisksToArray, array, HandleList{handles},
                     handleCount(*handles), kAddDisksMode),
                VEX_STATUS_INTERNAL_ERROR, kErrorArrayInvalidState);
}

PreparedCall action_calls::setReadPatrolState(VEX_HANDLE controller, EnableState state) {
  return made("VexReadPatrolSetState", VexReadPatrolSetState, controller, truthOf(state));
}

PreparedCall action_calls::setRohiState(VEX_HANDLE controller, EnableState state) {
  return made("VexROHISetState", VexROHISetState, controller, truthOf(state));
}

PreparedCall action_calls::locate(const Port& port, EnableState state) {
  return made("VexPortLocate", VexPortLocate, port.handle(), truthOf(state));
}
