#ifndef MIRN_TESTS_LISTENERS_CREATION_REQUESTS_H
#define MIRN_TESTS_LISTENERS_CREATION_REQUESTS_H

#include "listeners/listener_requests.h"

/// A system to create volumes on, and a good request of either source.

/// Array 21 of disks 41 to 43 with one volume, empty array 22 of disk 44, free disks 51 to 53, and disk 61 to
/// hold a journal; all on Lyx controller 12.
inline void arrangeSystem(FakeSession& session) {
  session.controllers = {aController(L"11").onRaid(L"71"), aLyxController(L"12").onRaid(L"71")};
  session.raids = {aRaid(L"71")};
  session.raidLevels[L"71"] = {aLevel(RaidLevel::RAID_INVALID), aLevel(RaidLevel::RAID_0),
                               aLevel(RaidLevel::RAID_1, StripSize::NOT_AVAILABLE), aLevel(RaidLevel::RAID_5),
                               aLevel(RaidLevel::RAID_10)};
  session.arrays = {anArray(L"21").numVolumes(1), anArray(L"22").numVolumes(0)};
  session.volumes = {aVolume(L"1").name(L"Taken").inArray(L"21").raidLevel(RaidLevel::RAID_0)};
  for (const wchar_t* id : {L"41", L"42", L"43"}) session.endDevices.push_back(aDisk(id).inArray(L"21"));
  session.endDevices.push_back(aDisk(L"44").inArray(L"22"));
  for (const wchar_t* id : {L"51", L"52", L"53", L"61"}) session.endDevices.push_back(aDisk(id));
  for (DiskMaker& disk : session.endDevices) disk.onController(L"12");
}

inline ServiceObject arrayRequest() {
  return body(
      {{"source", "ARRAY"}, {"arrayId", "21"}, {"size", "0"}, {"raidLevel", "RAID_5"}, {"name", "Data"}});
}

inline ServiceObject disksRequest() {
  return body({{"source", "DISK"},
               {"disks", list({"51", "52", "53"})},
               {"size", "1024"},
               {"raidLevel", "RAID_5"},
               {"name", "Data"}});
}

#endif
