#include "action_parameters.h"
#include "assert_reporter.h"
#include "mirn_exception.h"
#include "mirn_session.h"
#include "status_text.h"
#include "text.h"

namespace {

constexpr std::size_t kPasswordSize = sizeof(VEX_UNLOCK_PARAMS::password);
constexpr char kInvalidPassword[] = "Invalid locked item password";

/// Any value but ENABLED counts as off.
std::uint32_t truthOf(EnableState state) { return state == EnableState::ENABLED ? 1 : 0; }

/// What `VexPhyRemove` and `VexAddDisksToArray` always get in their last place.
constexpr std::uint32_t kPhyRemoveMode = 1;
constexpr std::uint32_t kAddDisksMode = 0;

}  // namespace

void MirnSession::actOnDisk(const LibraryCall& call) {
  actMapped(call, VEX_STATUS_INVALID_STATE, kErrorDiskInvalidState);
}

void MirnSession::rescan() { act(VexRescan); }

void MirnSession::clearMetadata(VEX_HANDLE disk) {
  actOnDisk([=] { return VexDiskClearMetadata(disk); });
}

void MirnSession::markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) {
  actOnDisk([=] { return VexDiskMarkAsSpare(disk, array); });
}

void MirnSession::unmarkAsSpare(VEX_HANDLE disk) {
  actOnDisk([=] { return VexDiskUnmarkAsSpare(disk); });
}

void MirnSession::markAsNormal(VEX_HANDLE disk) {
  actOnDisk([=] { return VexDiskMarkAsNormal(disk); });
}

void MirnSession::assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) {
  act([=] { return VexDiskAssignStoragePool(disk, pool); });
}

void MirnSession::unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) {
  MIRN_ASSERT_AT(UserLevel::kMaster == level || UserLevel::kUser == level,
                 "UserLevel::kMaster == level || UserLevel::kUser == level", "src\\mirn_session", __LINE__);
  const std::string text = wideToUtf8(password);
  if (text.size() > kPasswordSize) throw MirnException(kErrorInvalidParameter, kInvalidPassword);
  const VEX_UNLOCK_PARAMS parameters = unlockParameters(level, text);
  act([&] { return VexDiskUnlock(disk, &parameters); });
}

void MirnSession::resetSmartEvent(VEX_HANDLE disk) {
  act([=] { return VexDiskResetSmartEvent(disk); });
}

void MirnSession::removeDisk(const EndDevice& disk) {
  if (!disk.managedHotplug()) {
    throw MirnException(statusToErrorId(VEX_STATUS_NOT_SUPPORTED), statusToText(VEX_STATUS_NOT_SUPPORTED));
  }
  act([&] { return VexPhyRemove(disk.phyHandle(), kPhyRemoveMode); });
}

void MirnSession::setWriteCacheState(VEX_HANDLE array, EnableState state) {
  act([=] { return VexArraySetWriteCacheState(array, truthOf(state)); });
}

void MirnSession::addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) {
  const std::vector<VEX_HANDLE> handles = handlesOf(disks);
  const VEX_HANDLE* const first = handlesOrNull(handles);
  const std::uint32_t count = handleCount(handles);
  // The state of an array shows as an internal error, not as the status that disks and volumes give.
  actMapped([&] { return VexAddDisksToArray(array, first, count, kAddDisksMode); }, VEX_STATUS_INTERNAL_ERROR,
            kErrorArrayInvalidState);
}

void MirnSession::setReadPatrolState(VEX_HANDLE controller, EnableState state) {
  act([=] { return VexReadPatrolSetState(controller, truthOf(state)); });
}

void MirnSession::setRohiState(VEX_HANDLE controller, EnableState state) {
  act([=] { return VexROHISetState(controller, truthOf(state)); });
}

void MirnSession::locate(const Port& port, EnableState state) {
  act([&] { return VexPortLocate(port.handle(), truthOf(state)); });
}
