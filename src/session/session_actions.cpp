#include "session_actions.h"

#include "action_calls.h"

void SessionActions::rescan() { carryOut(action_calls::rescan()); }

void SessionActions::clearMetadata(VEX_HANDLE disk) { carryOut(action_calls::clearMetadata(disk)); }

void SessionActions::markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) {
  carryOut(action_calls::markAsSpare(disk, array));
}

void SessionActions::unmarkAsSpare(VEX_HANDLE disk) { carryOut(action_calls::unmarkAsSpare(disk)); }

void SessionActions::markAsNormal(VEX_HANDLE disk) { carryOut(action_calls::markAsNormal(disk)); }

void SessionActions::assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) {
  carryOut(action_calls::assignStoragePool(disk, pool));
}

void SessionActions::unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) {
  carryOut(action_calls::unlock(disk, level, password));
}

void SessionActions::resetSmartEvent(VEX_HANDLE disk) { carryOut(action_calls::resetSmartEvent(disk)); }

void SessionActions::removeDisk(const EndDevice& disk) { carryOut(action_calls::removeDisk(disk)); }

void SessionActions::setWriteCacheState(VEX_HANDLE array, EnableState state) {
  carryOut(action_calls::setWriteCacheState(array, state));
}

void SessionActions::addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) {
  carryOut(action_calls::addDisks(array, disks));
}

void SessionActions::markAsNormal(const Volume& volume) { carryOut(action_calls::markAsNormal(volume)); }

void SessionActions::rebuild(const Volume& volume, const EndDevice& disk) {
  carryOut(action_calls::rebuild(volume, disk));
}

void SessionActions::initialize(const Volume& volume) { carryOut(action_calls::initialize(volume)); }

void SessionActions::verify(const Volume& volume, bool repair) {
  carryOut(action_calls::verify(volume, repair));
}

void SessionActions::cancelVerify(const Volume& volume) { carryOut(action_calls::cancelVerify(volume)); }

void SessionActions::rename(const Volume& volume, const std::wstring& name) {
  carryOut(action_calls::rename(volume, name));
}

void SessionActions::expand(const Volume& volume, std::uint64_t newSize) {
  carryOut(action_calls::expand(volume, newSize));
}

void SessionActions::setCachePolicy(const Volume& volume, CachePolicy policy) {
  carryOut(action_calls::setCachePolicy(volume, policy));
}

void SessionActions::modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                                     std::uint64_t newSize, const std::vector<EndDevice>& disks) {
  carryOut(action_calls::modifyRaidLevel(volume, stripSize, raidLevel, newSize, disks));
}

void SessionActions::deleteVolume(const Volume& volume) { carryOut(action_calls::deleteVolume(volume)); }

void SessionActions::createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                                  RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh) {
  carryOut(action_calls::createVolume(array, name, stripSize, raidLevel, size, rwh));
}

void SessionActions::createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                           StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                           const std::wstring& sourceDiskId, const RwhRequest& rwh) {
  carryOut(action_calls::createVolumeFromDisks(disks, name, stripSize, raidLevel, size, sourceDiskId, rwh));
}

void SessionActions::setRwhPolicy(const Volume& volume, const RwhRequest& rwh) {
  carryOut(action_calls::setRwhPolicy(volume, rwh));
}

void SessionActions::setReadPatrolState(VEX_HANDLE controller, EnableState state) {
  carryOut(action_calls::setReadPatrolState(controller, state));
}

void SessionActions::setRohiState(VEX_HANDLE controller, EnableState state) {
  carryOut(action_calls::setRohiState(controller, state));
}

void SessionActions::locate(const Port& port, EnableState state) {
  carryOut(action_calls::locate(port, state));
}
