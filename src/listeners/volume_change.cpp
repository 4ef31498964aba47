#include "messages.h"
#include "strip_size.h"
#include "volume_answers.h"
#include "volume_requests.h"
#include "volume_rules.h"
#include "write_hole.h"

namespace {

void judgeNewDisk(const EndDevice& disk, const Volume& volume, RaidLevel level) {
  requireThat(disk.disk().usage == DiskUsage::PASS_THROUGH || disk.disk().usage == DiskUsage::SPARE,
              kErrorDiskInvalidState, kMsgDiskNotUsable);
  requireThat(disk.disk().logicalSectorSize == volume.sectorSize().logical, kErrorNotSupported,
              kMsgAddDiskSectorSize);
  requireX8OnlyInRaid0(disk, level);
}

std::vector<EndDevice> requestedNewDisks(const ServiceObject& body, IMirnSession& session,
                                         const Volume& volume, RaidLevel level) {
  std::vector<EndDevice> disks;
  for (const std::wstring& id : textsOf(body, keys::kDisks)) {
    const EndDevice disk = requestedDisk(session, id);
    judgeNewDisk(disk, volume, level);
    disks.push_back(disk);
  }
  return disks;
}

/// The first member decides, and a volume without members is on none.
bool areOnLyx(const std::vector<EndDevice>& members, IMirnSession& session) {
  return !members.empty() && isLyxController(session, members.front().controllerId());
}

StripSize stripSizeForLevel(const ServiceObject& body, IMirnSession& session, const Volume& volume,
                            RaidLevel level, std::vector<EndDevice> members,
                            const std::vector<EndDevice>& newDisks) {
  if (body.hasKey(keys::kStripSize)) return stripSizeFromText(textOf(body, keys::kStripSize));
  if (volume.raidLevel() == RaidLevel::RAID_1) return StripSize::SIZE_64KB;
  if (level != RaidLevel::RAID_5 || !areOnLyx(members, session)) return volume.stripSize();
  members.insert(members.end(), newDisks.begin(), newDisks.end());
  return requiredDefaultStripSize(session, level, members, nullptr);
}

}  // namespace

ServiceObject changeLevelRequest(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                                 const RequestParameters&, const ServiceObject& body) {
  const Volume volume = requestedVolume(*session, match);
  const RaidLevel level = requestedLevel(body);
  requireThat(level != RaidLevel::RAID_UNKNOWN && level != RaidLevel::RAID_INVALID, kErrorInvalidParameter,
              kMsgInvalidRaidLevel);
  const std::vector<EndDevice> members = judgedMembers(*session, volume.arrayId(), level);
  const std::vector<EndDevice> newDisks = requestedNewDisks(body, *session, volume, level);
  requireThat(!body.hasKey(keys::kStripSize) || level != RaidLevel::RAID_1, kErrorInvalidRaidLevel,
              kMsgStripSizeOfRaid1);
  const StripSize stripSize = stripSizeForLevel(body, *session, volume, level, members, newDisks);
  requireThat(stripSize != StripSize::SIZE_UNKNOWN, kErrorInvalidParameter, kMsgInvalidStripSize);
  actions->modifyRaidLevel(volume, stripSize, level, 0, newDisks);
  return makeVolumeResponse(*session, volume, !newDisks.empty());
}

ServiceObject changeRwhRequest(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                               const RequestParameters&, const ServiceObject& body) {
  const Volume volume = requestedVolume(*session, match);
  const RwhRequest rwh = parseRwhRequest(body, *session, volume.raidLevel());
  // Judged whatever the policy.
  if (body.hasKey(keys::kJournalingDriveId)) {
    requireJournalingSectorSize(requestedJournalingDrive(body, *session), volume.sectorSize().logical);
  }
  actions->setRwhPolicy(volume, rwh);
  return makeVolumeResponse(*session, volume, false);
}
