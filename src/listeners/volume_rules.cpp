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
  std::vector<EndDevice> members;
  for (const EndDevice& device : session.getEndDevices()) {
    if (device.arrayId() != arrayId) continue;
    requireX8OnlyInRaid0(device, level);
    members.push_back(device);
  }
  return members;
}
