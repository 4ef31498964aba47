#include "support/read_cases.h"

std::vector<ReadCase> readCases() {
  return {
      {"GetRaids", [](auto& s, auto&) { s.getRaids(); }},
      {"GetRaidLevels", [](auto& s, auto& ids) { s.getRaidLevels(ids.raid); }},
      {"GetRaidLevel", [](auto& s, auto& ids) { s.getRaidLevel(ids.raid, RaidLevel::RAID_5); }},
      {"GetControllers", [](auto& s, auto&) { s.getControllers(); }},
      {"GetControllerArrays", [](auto& s, auto& ids) { s.getControllerArrays(ids.controller); }},
      {"GetControllerPorts", [](auto& s, auto& ids) { s.getControllerPorts(ids.controller); }},
      {"GetControllerVolumes", [](auto& s, auto& ids) { s.getControllerVolumes(ids.controller); }},
      {"GetArrays", [](auto& s, auto&) { s.getArrays(); }},
      {"GetEndDevices", [](auto& s, auto&) { s.getEndDevices(); }},
      {"GetPorts", [](auto& s, auto&) { s.getPorts(); }},
      {"GetVolumes", [](auto& s, auto&) { s.getVolumes(); }},
      {"GetVersion", [](auto& s, auto&) { s.getVersion(); }},
      {"GetServiceState", [](auto& s, auto&) { s.getServiceState(); }},
      {"GetVolumesInProgress", [](auto& s, auto&) { s.getVolumesInProgress(); }},
      {"FindRaid", [](auto& s, auto& ids) { s.findRaid(ids.raid); }},
      {"FindController", [](auto& s, auto& ids) { s.findController(ids.controller); }},
      {"FindArray", [](auto& s, auto&) { s.findArray(L"1"); }},
      {"FindEndDevice", [](auto& s, auto&) { s.findEndDevice(L"1"); }},
      {"FindEndDevices",
       [](auto& s, auto&) {
         s.findEndDevices({L"1", L"2"});
       }},
      {"FindPort", [](auto& s, auto&) { s.findPort(L"1"); }},
      {"FindVolume", [](auto& s, auto&) { s.findVolume(L"1"); }},
      {"FindVolumeByName", [](auto& s, auto&) { s.findVolumeByName(L"Data"); }},
      {"FindControllerOfVolume", [](auto& s, auto&) { s.findControllerOfVolume(L"1"); }},
      {"GetArrayEndDevices", [](auto& s, auto&) { s.getArrayEndDevices(L"1"); }},
      {"GetArrayVolumes", [](auto& s, auto&) { s.getArrayVolumes(L"1"); }},
  };
}
