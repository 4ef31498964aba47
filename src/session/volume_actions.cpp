#include "action_parameters.h"
#include "assert_reporter.h"
#include "mirn_session.h"
#include "service_exceptions.h"
#include "text.h"
#include "vex_codes.h"

namespace {

/// The first of `disks` with this id; 0 for an empty id, and, without complaint, for one that
/// names none of them.
VEX_HANDLE sourceDiskHandle(const std::vector<EndDevice>& disks, const std::wstring& id) {
  if (id.empty()) return 0;
  for (const EndDevice& disk : disks) {
    if (disk.id() == id) return disk.handle();
  }
  return 0;
}

}  // namespace

void MirnSession::actOnVolume(const LibraryCall& call) {
  actMapped(call, VEX_STATUS_INVALID_STATE, kErrorVolumeInvalidState);
}

void MirnSession::markAsNormal(const Volume& volume) {
  actOnVolume([&] { return VexVolumeMarkAsNormal(volume.handle()); });
}

void MirnSession::rebuild(const Volume& volume, const EndDevice& disk) {
  actOnVolume([&] { return VexVolumeRebuild(volume.handle(), disk.handle()); });
}

void MirnSession::initialize(const Volume& volume) {
  actOnVolume([&] { return VexVolumeInitialize(volume.handle()); });
}

void MirnSession::verify(const Volume& volume, bool repair) {
  const std::uint8_t fixErrors = repair ? 1 : 0;
  actOnVolume([&] { return VexVolumeVerify(volume.handle(), fixErrors); });
}

void MirnSession::cancelVerify(const Volume& volume) {
  actOnVolume([&] { return VexVolumeCancelVerify(volume.handle()); });
}

void MirnSession::rename(const Volume& volume, const std::wstring& name) {
  MIRN_ASSERT_AT(name.size() <= kMaxVolumeNameSize, "name.size() <= kMaxVolumeNameSize", "src\\mirn_session",
                 __LINE__);
  const std::string text = wideToUtf8(name);
  act([&] { return VexVolumeRename(volume.handle(), text.c_str()); });
}

void MirnSession::expand(const Volume& volume, std::uint64_t newSize) {
  act([&] { return VexExpandVolume(volume.handle(), newSize); });
}

void MirnSession::setCachePolicy(const Volume& volume, CachePolicy policy) {
  act([&] { return VexVolumeSetCachePolicy(volume.handle(), toVex(policy)); });
}

void MirnSession::modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                                  std::uint64_t newSize, const std::vector<EndDevice>& disks) {
  const std::vector<VEX_HANDLE> handles = handlesOf(disks);
  const VEX_RAID_LEVEL_MODIFY_PARAMS parameters =
      raidLevelModifyParameters(stripSize, raidLevel, newSize, handles);
  act([&] { return VexRaidLevelModify(volume.handle(), parameters); });
}

void MirnSession::deleteVolume(const Volume& volume) {
  actOnVolume([&] { return VexVolumeDelete(volume.handle()); });
}

void MirnSession::createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                               RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh) {
  const VEX_CREATE_VOLUME_PARAMS parameters =
      createVolumeParameters(array, name, stripSize, raidLevel, size, rwh);
  act([&] { return VexVolumeCreate(parameters); });
}

void MirnSession::createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                        StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                        const std::wstring& sourceDiskId, const RwhRequest& rwh) {
  const std::vector<VEX_HANDLE> handles = handlesOf(disks);
  const VEX_CREATE_FROM_DISKS_PARAMS parameters = createFromDisksParameters(
      handles, name, stripSize, raidLevel, size, sourceDiskHandle(disks, sourceDiskId), rwh);
  VEX_HANDLE created = 0;  // not read: the renewed snapshot shows the new volume
  act([&] { return VexVolumeCreateFromDisks(parameters, &created); });
}

void MirnSession::setRwhPolicy(const Volume& volume, const RwhRequest& rwh) {
  act([&] { return VexVolumeSetRwhPolicy(volume.handle(), journalingDriveHandle(rwh), toVex(rwh.policy)); });
}
