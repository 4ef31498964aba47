#include "action_parameters.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "text.h"
#include "vex_codes.h"

namespace {

constexpr char kTooManyDisks[] = "Too many disks";

/// Cuts at the field's 16 bytes, even within a character; the zeroed rest ends the text.
template <std::size_t size>
void setName(char (&field)[size], const std::wstring& name) {
  const std::string text = wideToUtf8(name);
  std::memcpy(field, text.data(), std::min(text.size(), size - 1));
}

/// A mirror is always made with 64 KB strips, whatever the caller asks for.
std::uint32_t creationStripSize(StripSize stripSize, RaidLevel raidLevel) {
  return toVex(raidLevel == RaidLevel::RAID_1 ? StripSize::SIZE_64KB : stripSize);
}

/// The fields that both ways of creation share.
template <class Parameters>
void setCreation(Parameters& parameters, const std::wstring& name, StripSize stripSize, RaidLevel raidLevel,
                 std::uint64_t size, const RwhRequest& rwh) {
  setName(parameters.name, name);
  parameters.stripSize = creationStripSize(stripSize, raidLevel);
  parameters.raidLevel = toVex(raidLevel);
  parameters.size = size;
  parameters.rwhPolicy = toVex(rwh.policy);
  parameters.journalingDriveHandle = journalingDriveHandle(rwh);
}

/// Bytes without a field are part of the record: they reach the library as zeros.
template <class Record>
Record zeroed() {
  Record record;
  std::memset(&record, 0, sizeof record);
  return record;
}

}  // namespace

std::vector<VEX_HANDLE> handlesOf(const std::vector<EndDevice>& devices) {
  std::vector<VEX_HANDLE> handles;
  handles.reserve(devices.size());
  for (const EndDevice& device : devices) handles.push_back(device.handle());
  return handles;
}

std::uint32_t handleCount(const std::vector<VEX_HANDLE>& handles) {
  if (handles.size() > std::numeric_limits<std::uint32_t>::max()) throw std::length_error(kTooManyDisks);
  return static_cast<std::uint32_t>(handles.size());
}

const VEX_HANDLE* handlesOrNull(const std::vector<VEX_HANDLE>& handles) {
  return handles.empty() ? nullptr : handles.data();
}

VEX_CREATE_VOLUME_PARAMS createVolumeParameters(const Array& array, const std::wstring& name,
                                                StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                                const RwhRequest& rwh) {
  auto parameters = zeroed<VEX_CREATE_VOLUME_PARAMS>();
  parameters.arrayHandle = array.handle();
  setCreation(parameters, name, stripSize, raidLevel, size, rwh);
  return parameters;
}

VEX_CREATE_FROM_DISKS_PARAMS createFromDisksParameters(const std::vector<VEX_HANDLE>& disks,
                                                       const std::wstring& name, StripSize stripSize,
                                                       RaidLevel raidLevel, std::uint64_t size,
                                                       VEX_HANDLE sourceDisk, const RwhRequest& rwh) {
  auto parameters = zeroed<VEX_CREATE_FROM_DISKS_PARAMS>();
  parameters.disks = handlesOrNull(disks);
  parameters.diskCount = handleCount(disks);
  parameters.sourceDiskHandle = sourceDisk;
  setCreation(parameters, name, stripSize, raidLevel, size, rwh);
  return parameters;
}

VEX_RAID_LEVEL_MODIFY_PARAMS raidLevelModifyParameters(StripSize stripSize, RaidLevel raidLevel,
                                                       std::uint64_t size,
                                                       const std::vector<VEX_HANDLE>& disks) {
  auto parameters = zeroed<VEX_RAID_LEVEL_MODIFY_PARAMS>();
  parameters.stripSize = toVex(stripSize);
  parameters.raidLevel = toVex(raidLevel);
  parameters.size = size;
  parameters.disks = handlesOrNull(disks);
  parameters.diskCount = handleCount(disks);
  return parameters;
}

VEX_UNLOCK_PARAMS unlockParameters(UserLevel level, const std::string& password) {
  auto parameters = zeroed<VEX_UNLOCK_PARAMS>();
  std::memcpy(parameters.password, password.data(), std::min(password.size(), sizeof parameters.password));
  parameters.master = level == UserLevel::kMaster ? 1 : 0;
  return parameters;
}

VEX_HANDLE journalingDriveHandle(const RwhRequest& rwh) {
  return rwh.journalingDrive.id.empty() ? 0 : rwh.journalingDrive.handle;
}
