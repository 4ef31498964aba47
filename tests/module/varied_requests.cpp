#include "module/varied_requests.h"

#include "module/object_ids.h"
#include "scripted_library/small_machine.h"

using namespace small_machine;
using namespace varied;

namespace {

using Requests = std::vector<VariedRequest>;

void attachDisk(ScriptedMachine& machine, VEX_HANDLE disk, VEX_HANDLE controller) {
  machine.addDisk(disk, controller);
  machine.addPhy(phyOf(disk), disk);
  machine.addControllerPort(controllerPortOf(disk), controller);
  machine.addDiskPort(portOf(disk), disk, controllerPortOf(disk));
}

Requests reads() {
  return {
      {"GetState", get(L"mirn", {L"state"})},
      {"GetVersion", get(L"mirn", {L"version"})},
      {"GetRaids", get(L"mirn/raids")},
      {"GetControllers", get(L"mirn/controllers")},
      {"GetEndDevices", get(L"mirn/enddevices")},
      {"GetPorts", get(L"mirn/ports")},
      {"GetArrays", get(L"mirn/arrays")},
      {"GetVolumes", get(L"mirn/volumes")},
      {"GetVolumesOfController", get(L"mirn/controllers", {idOf("controller", kSata), L"volumes"})},
  };
}

Requests diskRequests() {
  const auto disk = [](VEX_HANDLE handle, const wchar_t* action, const ServiceObject& body = {}) {
    return put(L"mirn/disks", {idOf("disk", handle), action}, body);
  };
  return {
      {"DiskClearOfALyxDisk", disk(kLyxDisk1, L"clear")},
      {"DiskClearOfNoDisk", disk(kNoDisk, L"clear")},
      {"DiskMarkAsSpareOfALyxDisk", disk(kLyxDisk2, L"spare", body({{"action", "MARK"}}))},
      {"DiskSpareOfAnUnknownKind", disk(kFree1, L"spare", body({{"action", "BOTH"}}))},
      {"DiskMarkAsNormalOfAMember", disk(kMember1, L"marknormal")},
      {"DiskResetSmartOfNoDisk", disk(kNoDisk, L"resetsmart")},
      {"DiskRemoveThatMayBePulled", remove(L"mirn/disks", {idOf("disk", kFree1)})},
      {"DiskRemoveThatMayNot", remove(L"mirn/disks", {idOf("disk", kFree2)})},
      {"DiskThatIsNone", disk(999, L"clear")},
  };
}

Requests arrayRequests() {
  const auto addDisks = [](VEX_HANDLE array, const std::vector<VEX_HANDLE>& disks) {
    return put(L"mirn/arrays", {idOf("array", array)}, body({{"disks", diskIds(disks)}}));
  };
  const auto writeCache = [](const char* state) {
    return put(L"mirn/arrays", {idOf("array", kArray), L"writecache"}, body({{"state", state}}));
  };
  return {
      {"ArrayAddNoDisks", addDisks(kArray, {})},
      {"ArrayAddOneDisk", addDisks(kArray, {kFree1})},
      {"ArrayAddDisksInTheOrderGiven", addDisks(kEmptyArray, {kFree2, kJournal, kFree1})},
      {"ArrayAddOneDiskTwice", addDisks(kArray, {kFree1, kFree1})},
      {"ArrayWriteCacheOn", writeCache("ENABLED")},
      {"ArrayWriteCacheOff", writeCache("DISABLED")},
      {"ArrayWriteCacheOther", writeCache("UNKNOWN")},
  };
}

Requests controllerAndPortRequests() {
  const auto turn = [](VEX_HANDLE controller, const wchar_t* what, const char* state) {
    return put(L"mirn/controllers", {idOf("controller", controller), what}, body({{"state", state}}));
  };
  const auto locate = [](VEX_HANDLE port, const char* state) {
    return put(L"mirn/ports", {idOf("port", port), L"locate"}, body({{"state", state}}));
  };
  return {
      {"ControllerReadPatrolOn", turn(kSata, L"readpatrol", "ENABLED")},
      {"ControllerReadPatrolOff", turn(kLyx, L"readpatrol", "DISABLED")},
      {"ControllerRohiOn", turn(kLyx, L"rohi", "ENABLED")},
      {"ControllerRohiOff", turn(kPlainController, L"rohi", "DISABLED")},
      {"PortLocateOfAController", locate(controllerPortOf(kFree1), "ENABLED")},
      {"PortLocateOfADisk", locate(portOf(kFree1), "ENABLED")},
      {"PortLocateOff", locate(portOf(kFree1), "DISABLED")},
  };
}

}  // namespace

ScriptedMachine variedMachine() {
  ScriptedMachine machine = small_machine::make();
  machine.addController(kPlainController, VEX_CONTROLLER_TYPE_NVME, 0);
  for (VEX_HANDLE disk = kParityMember1; disk <= kParityMember3; ++disk) attachDisk(machine, disk, kLyx);
  for (VEX_HANDLE disk = kEmptyMember1; disk <= kJournal; ++disk) attachDisk(machine, disk, kSata);
  machine.addDisk(kNoDisk, kSata).deviceType = VEX_DEVICE_TYPE_NON_DISK_STORAGE;
  machine.addArray(kParityArray, "Array_1", {kParityMember1, kParityMember2, kParityMember3});
  machine.addArray(kEmptyArray, "Array_2", {kEmptyMember1, kEmptyMember2, kEmptyMember3});
  VEX_VOLUME_INFO& parity = machine.addVolume(kParityVolume, "Parity", kParityArray, VEX_RAID_LEVEL_5);
  parity.state = VEX_VOLUME_STATE_DEGRADED;
  parity.stripSize = VEX_STRIP_SIZE_128KB;
  machine.endDevices.at(kFree1).managedHotplug = 1;
  return machine;
}

std::vector<VariedRequest> variedRequests() {
  Requests all;
  for (const Requests& requests :
       {reads(), Requests{{"Rescan", post(L"mirn", {L"rescan"})}}, diskRequests(), arrayRequests(),
        controllerAndPortRequests(), variedCreations(), variedVolumeChanges()}) {
    all.insert(all.end(), requests.begin(), requests.end());
  }
  return all;
}
