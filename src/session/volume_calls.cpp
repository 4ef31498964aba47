#include "action_calls.h"
#include "assert_reporter.h"
#include "prepared_call_making.h"
#include "service_exceptions.h"
#include "text.h"
#include "vex_codes.h"

using namespace call_making;

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

/// With the id of a volume in the wrong state for the status that says so.
PreparedCall ofVolume(PreparedCall call) {
  return mapped(std::move(call), VEX_STATUS_INVALID_STATE, kErrorVolumeInvalidState);
}

}  // namespace

PreparedCall action_calls::markAsNormal(const Volume& volume) {
  return ofVolume(made("VexVolumeMarkAsNormal", VexVolumeMarkAsNormal, volume.handle()));
}

PreparedCall action_calls::rebuild(const Volume& volume, const EndDevice& disk) {
  return ofVolume(made("VexVolumeRebuild", VexVolumeRebuild, volume.handle(), disk.handle()));
}

PreparedCall action_calls::initialize(const Volume& volume) {
  return ofVolume(made("VexVolumeInitialize", VexVolumeInitialize, volume.handle()));
}

PreparedCall action_calls::verify(const Volume& volume, bool repair) {
  const std::uint8_t fixErrors = repair ? 1 : 0;
  return ofVolume(made("VexVolumeVerify", VexVolumeVerify, volume.handle(), fixErrors));
}

PreparedCall action_calls::cancelVerify(const Volume& volume) {
  return ofVolume(made("VexVolumeCancelVerify", VexVolumeCancelVerify, volume.handle()));
}

PreparedCall action_calls::rename(const Volume& volume, const std::wstring& name) {
  MIRN_ASSERT_AT(name.size() <= kMaxVolumeNameSize, "name.size() <= kMaxVolumeNameSize", "src\\mirn_session",
                 __LINE__);
  return made("VexVolumeRename", VexVolumeRename, volume.handle(), Text{wideToUtf8(name)});
}

PreparedCall action_calls::expand(const Volume& volume, std::uint64_t newSize) {
  return made("VexExpandVolume", VexExpandVolume, volume.handle(), newSize);
}

PreparedCall action_calls::setCachePolicy(const Volume& volume, CachePolicy policy) {
  return made("VexVolumeSetCachePolicy", VexVolumeSetCachePolicy, volume.handle(), toVex(policy));
}

PreparedCall action_calls::modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                                           std::uint64_t newSize, const std::vector<EndDevice>& disks) {
  const SharedHandles handles = sharedHandlesOf(disks);
  return made("VexRaidLevelModify", VexRaidLevelModify, volume.handle(),
              withDisks(raidLevelModifyParameters(stripSize, raidLevel, newSize, *handles), handles));
}

PreparedCall action_calls::deleteVolume(const Volume& volume) {
  return ofVolume(made("VexVolumeDelete", VexVolumeDelete, volume.handle()));
}

PreparedCall action_calls::createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                                        RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh) {
  return made("VexVolumeCreate", VexVolumeCreate,
              byValue(createVolumeParameters(array, name, stripSize, raidLevel, size, rwh)));
}

PreparedCall action_calls::createVolumeFromDisks(const std::vector<EndDevice>& disks,
                                                 const std::wstring& name, StripSize stripSize,
                                                 RaidLevel raidLevel, std::uint64_t size,
                                                 const std::wstring& sourceDiskId, const RwhRequest& rwh) {
  const SharedHandles handles = sharedHandlesOf(disks);
  const VEX_CREATE_FROM_DISKS_PARAMS parameters = createFromDisksParameters(
      *handles, name, stripSize, raidLevel, size, sourceDiskHandle(disks, sourceDiskId), rwh);
  // The renewed snapshot shows the new volume.
  return made("VexVolumeCreateFromDisks", VexVolumeCreateFromDisks, withDisks(parameters, handles),
              UnreadHandle{});
}

PreparedCall action_calls::setRwhPolicy(const Volume& volume, const RwhRequest& rwh) {
  return made("VexVolumeSetRwhPolicy", VexVolumeSetRwhPolicy, volume.handle(), journalingDriveHandle(rwh),
              toVex(rwh.policy));
}
