#include "volume_rules.h"

#include "messages.h"

Volume requestedVolume(IMirnSession& session, const RouteMatch& match) {
  return findVolume(session, parseIdentifier(match[1].str(), kMsgInvalidVolumeId));
}

RaidLevel requestedLevel(const ServiceObject& body) {
  return raidLevelFromText(textOf(body, keys::kRaidLevel));
}

EndDevice requestedDisk(IMirnSession& session, const std::wstring& id) {
  return findDisk(session, parseIdentifier(id, kMsgInvalidDiskId));
}

void requireX8OnlyInRaid0(const EndDevice& disk, RaidLevel level) {
  requireThat(!isX8Disk(disk) || level == RaidLevel::RAID_0, kErrorInvalidRaidLevel, kMsgX8NeedsRaid0);
}

std::vector<EndDevice> judgedMembers(IMirnSession& session, const std::wstring& arrayId, RaidLevel level) {
  const std::vector<EndDevice> members = session.getArrayEndDevices(arrayId);
  for (const EndDevice& device : members) requireX8OnlyInRaid0(device, level);
  return members;
}
