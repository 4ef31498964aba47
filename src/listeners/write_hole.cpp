#include "write_hole.h"

#include "messages.h"
#include "requests.h"

namespace {

std::wstring journalingDriveId(const ServiceObject& body) {
  return parseIdentifier(textOf(body, keys::kJournalingDriveId), kMsgInvalidJournalingDriveId);
}

}  // namespace

RwhRequest parseRwhRequest(const ServiceObject& body, IMirnSession& session, RaidLevel level) {
  if (level == RaidLevel::RAID_INVALID && body.hasKey(keys::kRaidLevel)) {
    level = raidLevelFromText(textOf(body, keys::kRaidLevel));
  }
  RwhRequest request;
  if (!body.hasKey(keys::kRwhPolicy)) return request;
  const RwhPolicy policy = rwhPolicyFromText(textOf(body, keys::kRwhPolicy));
  requireThat(policy != RwhPolicy::NONE, kErrorInvalidParameter, kMsgInvalidRwhPolicy);
  requireThat(policy == RwhPolicy::RWH_OFF || level == RaidLevel::RAID_5, kErrorInvalidRaidLevel,
              kMsgRwhNeedsRaid5);
  request.policy = policy;
  if (policy != RwhPolicy::RWH_JOURNALING_DRIVE) return request;

  requireThat(body.hasKey(keys::kJournalingDriveId), kErrorInvalidParameter, kMsgJournalingDriveMissing);
  const std::wstring id = journalingDriveId(body);
  // Any device will do here: what may hold a journal is the library's affair.
  const EndDevice drive = findEndDevice(session, id, kMsgJournalingDriveNotFound);
  request.journalingDrive = {drive.id(), drive.handle()};
  return request;
}

EndDevice requestedJournalingDrive(const ServiceObject& body, IMirnSession& session) {
  return findDisk(session, journalingDriveId(body));
}

void requireJournalingSectorSize(const EndDevice& drive, std::uint64_t sectorSize) {
  requireThat(drive.disk().logicalSectorSize == sectorSize, kErrorNotSupported,
              kMsgJournalingDriveSectorSize);
}
