#include "catalogue.h"
#include "find_by_id.h"
#include "messages.h"
#include "request_error.h"
#include "request_words.h"
#include "strip_size.h"
#include "text.h"
#include "volume_answers.h"
#include "volume_name.h"
#include "volume_requests.h"
#include "volume_rules.h"
#include "write_hole.h"

using ovra::request_validator::RequestError;

namespace {

StripSize statedStripSize(const ServiceObject& body) {
  const StripSize stripSize = stripSizeFromText(textOf(body, keys::kStripSize));
  requireThat(stripSize != StripSize::SIZE_UNKNOWN, kErrorInvalidParameter, kMsgInvalidStripSize);
  return stripSize;
}

/// Unlike for disks, a mirror gets a default here as well.
StripSize stripSizeForArray(const ServiceObject& body, IMirnSession& session, RaidLevel level,
                            const std::vector<EndDevice>& members, const Array& array) {
  if (body.hasKey(keys::kStripSize)) return statedStripSize(body);
  return requiredDefaultStripSize(session, level, members, &array);
}

void judgeJournalingDriveOfArray(const ServiceObject& body, IMirnSession& session, const Array& array) {
  if (!body.hasKey(keys::kJournalingDriveId)) return;
  const EndDevice drive = requestedJournalingDrive(body, session);
  for (const EndDevice& device : session.getArrayEndDevices(array.id())) {
    requireJournalingSectorSize(drive, device.disk().logicalSectorSize);
  }
}

ServiceObject createFromArray(IMirnSession& session, IMirnVolumesActions& actions,
                              const ServiceObject& body) {
  const Array array = findArray(session, parseIdentifier(textOf(body, keys::kArrayId), kMsgInvalidArrayId));
  const std::uint64_t size = parseSize(textOf(body, keys::kSize), kMsgInvalidSize);
  // A second volume always takes all the rest of the array.
  requireThat(array.numVolumes() == 0 || size == 0, kErrorInvalidParameter, kMsgSecondVolumeSize);
  const std::wstring name = textOf(body, keys::kName);
  validateVolumeName(name, &session);
  const RaidLevel level = requestedLevel(body);
  const std::vector<EndDevice> members = judgedMembers(session, array.id(), level);
  const StripSize stripSize = stripSizeForArray(body, session, level, members, array);
  const RwhRequest rwh = parseRwhRequest(body, session, RaidLevel::RAID_INVALID);
  judgeJournalingDriveOfArray(body, session, array);
  actions.createVolume(array, name, stripSize, level, size, rwh);
  return makeCreatedResponse(session, name);
}

std::vector<EndDevice> requestedDisks(const ServiceObject& body, IMirnSession& session) {
  std::vector<EndDevice> disks;
  for (const std::wstring& id : textsOf(body, keys::kDisks)) disks.push_back(requestedDisk(session, id));
  requireThat(!disks.empty(), kErrorInvalidParameter, kMsgNoDisks);
  return disks;
}

void judgeDisks(const std::vector<EndDevice>& disks, RaidLevel level) {
  for (const EndDevice& disk : disks) requireX8OnlyInRaid0(disk, level);
  for (const EndDevice& disk : disks) {
    requireThat(disk.disk().logicalSectorSize == disks.front().disk().logicalSectorSize, kErrorNotSupported,
                kMsgCreateSectorSize);
  }
}

/// A mirror has no strip size of its own: it stays unknown, and the session knows what to make of it.
StripSize stripSizeForDisks(const ServiceObject& body, IMirnSession& session, RaidLevel level,
                            const std::vector<EndDevice>& disks) {
  if (body.hasKey(keys::kStripSize)) {
    requireThat(level != RaidLevel::RAID_1, kErrorInvalidParameter, kMsgStripSizeOfRaid1);
    return statedStripSize(body);
  }
  if (level == RaidLevel::RAID_1) return StripSize::SIZE_UNKNOWN;
  return requiredDefaultStripSize(session, level, disks, nullptr);
}

/// The id of the disk whose data the volume takes over; empty when the body names none.
std::wstring requestedSourceDisk(const ServiceObject& body, const std::vector<EndDevice>& disks) {
  if (!body.hasKey(keys::kDiskId) || body.member(keys::kDiskId).isNull()) return {};
  const std::wstring id = parseIdentifier(textOf(body, keys::kDiskId), kMsgInvalidDiskId);
  findById(disks, id, kErrorObjectNotFound, kMsgInvalidDiskId);
  return id;
}

ServiceObject createFromDisks(IMirnSession& session, IMirnVolumesActions& actions,
                              const ServiceObject& body) {
  const std::wstring name = textOf(body, keys::kName);
  validateVolumeName(name, &session);
  const RaidLevel level = requestedLevel(body);
  const std::uint64_t size = parseSize(textOf(body, keys::kSize), kMsgInvalidSize);
  const std::vector<EndDevice> disks = requestedDisks(body, session);
  judgeDisks(disks, level);
  const StripSize stripSize = stripSizeForDisks(body, session, level, disks);
  const RwhRequest rwh = parseRwhRequest(body, session, RaidLevel::RAID_INVALID);
  if (body.hasKey(keys::kJournalingDriveId)) {
    requireJournalingSectorSize(requestedJournalingDrive(body, session),
                                disks.front().disk().logicalSectorSize);
  }
  const std::wstring sourceDisk = requestedSourceDisk(body, disks);
  actions.createVolumeFromDisks(disks, name, stripSize, level, size, sourceDisk, rwh);
  return makeCreatedResponse(session, name);
}

}  // namespace

ServiceObject createVolumeRequest(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch&,
                                  const RequestParameters&, const ServiceObject& body) {
  const RaidLevel level = requestedLevel(body);
  requireThat(level != RaidLevel::RAID_UNKNOWN, kErrorInvalidParameter, kMsgInvalidRaidLevel);
  if (level == RaidLevel::RAID_1 && body.hasKey(keys::kStripSize)) {
    throw RequestError(wideToUtf8(kMsgStripSizeOfRaid1));
  }
  // Stricter than the policy's own rule: even switching it off is refused on another level.
  requireThat(!body.hasKey(keys::kRwhPolicy) || level == RaidLevel::RAID_5, kErrorNotSupported,
              kMsgRwhNeedsRaid5);

  const std::wstring source = textOf(body, keys::kSource);
  requireThat(source == request_words::kArray || source == request_words::kDisk, kErrorInvalidParameter,
              kMsgInvalidSource);
  // A field of the other form is not allowed.
  judgeChosenForm(rowOf(RouteId::kCreateVolume), body);
  return source == request_words::kArray ? createFromArray(*session, *actions, body)
                                         : createFromDisks(*session, *actions, body);
}
