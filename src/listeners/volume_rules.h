#ifndef MIRN_LISTENERS_VOLUME_RULES_H
#define MIRN_LISTENERS_VOLUME_RULES_H

#include <string>
#include <vector>

#include "requests.h"

/// What the handlers of several requests on volumes look up and check alike.

/// The volume that the path names.
Volume requestedVolume(IMirnSession& session, const RouteMatch& match);

/// "raidLevel" of a judged body.
RaidLevel requestedLevel(const ServiceObject& body);

/// The disk with the id that a body names.
EndDevice requestedDisk(IMirnSession& session, const std::wstring& id);

/// Disks of an x8 pair serve RAID 0 only.
void requireX8OnlyInRaid0(const EndDevice& disk, RaidLevel level);

/// The devices of an array, which must suit the level.
std::vector<EndDevice> judgedMembers(IMirnSession& session, const std::wstring& arrayId, RaidLevel level);

#endif
