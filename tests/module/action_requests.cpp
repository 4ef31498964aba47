#include "module/action_requests.h"

#include "module/object_ids.h"

namespace {

constexpr VEX_HANDLE kRaid = 1;
constexpr VEX_HANDLE kController = 11;
constexpr VEX_HANDLE kMember = 21;
constexpr VEX_HANDLE kOtherMember = 22;
constexpr VEX_HANDLE kFree = 23;
constexpr VEX_HANDLE kPhy = 33;
constexpr VEX_HANDLE kArray = 41;
constexpr VEX_HANDLE kVolume = 51;
constexpr VEX_HANDLE kPort = 63;

constexpr VEX_STATUS kNoStatus = VEX_STATUS_SUCCESS;
constexpr RefusalRule kPlain{"MirnException", kNoStatus, ""};
constexpr RefusalRule kOfSwitch{"ListenerException", kNoStatus, ""};
constexpr RefusalRule kOfDisk{"MirnException", 18, "Mirn_DISK_INVALID_STATE"};
constexpr RefusalRule kOfSpare{"ListenerException", 18, "Mirn_DISK_INVALID_STATE"};
constexpr RefusalRule kOfVolume{"MirnException", 18, "Mirn_VOLUME_INVALID_STATE"};
constexpr RefusalRule kOfAddDisks{"MirnException", 16, "Mirn_ARRAY_INVALID_STATE"};

std::wstring controllerId() { return idOf("controller", kController); }
std::wstring diskId(VEX_HANDLE disk) { return idOf("disk", disk); }
std::wstring arrayId() { return idOf("array", kArray); }
std::wstring volumeId() { return idOf("volume", kVolume); }
std::wstring portId() { return idOf("port", kPort); }

const auto kNoEffect = [](ScriptedMachine&) {};
const ServiceObject kNull = ServiceObject::null();

/// Sets one field of the disk that is free.
template <class Field, class Value>
auto onFreeDisk(Field VEX_END_DEVICE_INFO::*field, Value value) {
  return [=](ScriptedMachine& machine) { machine.endDevices.at(kFree).*field = value; };
}

template <class Field, class Value>
auto onController(Field VEX_CONTROLLER_INFO::*field, Value value) {
  return [=](ScriptedMachine& machine) { machine.controllers.at(kController).*field = value; };
}

template <class Field, class Value>
auto onVolume(Field VEX_VOLUME_INFO::*field, Value value) {
  return [=](ScriptedMachine& machine) { machine.volumes.at(kVolume).*field = value; };
}

std::vector<ActionRequest> diskRequests() {
  const std::wstring path = L"mirn/disks";
  const std::wstring disk = diskId(kFree);
  const ServiceObject stale = body({idField("diskId", disk)});
  const ServiceObject spare = body({idField("diskId", disk), {"usage", "SPARE"}});
  const ServiceObject normal = body({idField("diskId", disk), {"state", "NORMAL"}});
  const auto toSpare = onFreeDisk(&VEX_END_DEVICE_INFO::diskUsage, VEX_DISK_USAGE_SPARE);
  const auto toNormal = onFreeDisk(&VEX_END_DEVICE_INFO::diskState, VEX_DISK_STATE_NORMAL);
  return {
      {"DiskClear", put(path, {disk, L"clear"}), "VexDiskClearMetadata", kOfDisk, toNormal, normal, stale},
      {"DiskMarkAsSpare", put(path, {disk, L"spare"}, body({{"action", "MARK"}})), "VexDiskMarkAsSpare",
       kOfSpare, toSpare, spare, stale},
      {"DiskUnmarkAsSpare", put(path, {disk, L"spare"}, body({{"action", "UNMARK"}})), "VexDiskUnmarkAsSpare",
       kOfSpare, kNoEffect, stale, stale},
      {"DiskMarkAsNormal", put(path, {disk, L"marknormal"}), "VexDiskMarkAsNormal", kOfDisk, toNormal, normal,
       stale},
      {"DiskResetSmart", put(path, {disk, L"resetsmart"}), "VexDiskResetSmartEvent", kPlain, toNormal, normal,
       stale},
      {"DiskRemove", remove(path, {disk}), "VexPhyRemove", kPlain, kNoEffect, kNull, kNull},
  };
}

std::vector<ActionRequest> arrayRequests() {
  const std::wstring path = L"mirn/arrays";
  const auto members = [&](const std::vector<VEX_HANDLE>& disks) {
    return body({idField("arrayId", arrayId()), {"disks", diskIds(disks)}});
  };
  return {
      {"ArrayAddDisks", put(path, {arrayId()}, body({{"disks", diskIds({kFree})}})), "VexAddDisksToArray",
       kOfAddDisks, onFreeDisk(&VEX_END_DEVICE_INFO::arrayHandle, kArray),
       members({kMember, kOtherMember, kFree}), members({kMember, kOtherMember})},
      {"ArrayWriteCache", put(path, {arrayId(), L"writecache"}, body({{"state", "DISABLED"}})),
       "VexArraySetWriteCacheState", kPlain,
       [](ScriptedMachine& machine) { machine.arrays.at(kArray).writeCacheState = VEX_WRITE_CACHE_OFF; },
       body({idField("arrayId", arrayId()), {"writeCachePolicy", "OFF"}}),
       body({idField("arrayId", arrayId())})},
  };
}

std::vector<ActionRequest> controllerAndPortRequests() {
  const std::wstring path = L"mirn/controllers";
  const ServiceObject on = body({{"state", "ENABLED"}});
  const ServiceObject enabled = body({idField("controllerId", controllerId()), {"state", "ENABLED"}});
  const ServiceObject stale = body({idField("controllerId", controllerId())});
  return {
      {"ControllerReadPatrol", put(path, {controllerId(), L"readpatrol"}, on), "VexReadPatrolSetState",
       kOfSwitch, onController(&VEX_CONTROLLER_INFO::readPatrolEnabled, 1u), enabled, stale},
      {"ControllerRohi", put(path, {controllerId(), L"rohi"}, on), "VexROHISetState", kOfSwitch,
       onController(&VEX_CONTROLLER_INFO::rohiEnabled, 1u), enabled, stale},
      {"PortLocate", put(L"mirn/ports", {portId(), L"locate"}, on), "VexPortLocate", kPlain, kNoEffect, kNull,
       kNull},
  };
}

const std::wstring kVolumes = L"mirn/volumes";

/// The answer of a volume route, with what has changed.
ServiceObject volumeAnswer() { return body({idField("volumeId", volumeId())}); }
ServiceObject volumeAnswer(const char* key, const char* now) {
  return body({idField("volumeId", volumeId()), {key, now}});
}

std::vector<ActionRequest> volumeStateRequests() {
  const auto to = [](VEX_STATUS state) { return onVolume(&VEX_VOLUME_INFO::state, state); };
  const auto volume = [](const wchar_t* action, const ServiceObject& body = {}) {
    return put(kVolumes, {volumeId(), action}, body);
  };
  const ServiceObject stale = volumeAnswer();
  return {
      {"VolumeMarkAsNormal", volume(L"marknormal"), "VexVolumeMarkAsNormal", kOfVolume,
       to(VEX_VOLUME_STATE_NORMAL), volumeAnswer("state", "NORMAL"), stale},
      {"VolumeRebuild", volume(L"rebuild", body({idField("diskId", diskId(kFree))})), "VexVolumeRebuild",
       kOfVolume, to(VEX_VOLUME_STATE_REBUILDING), volumeAnswer("state", "REBUILDING"), stale},
      {"VolumeInitialize", volume(L"init"), "VexVolumeInitialize", kOfVolume,
       to(VEX_VOLUME_STATE_INITIALIZING), volumeAnswer("state", "INITIALIZING"), stale},
      {"VolumeVerify", volume(L"verify", body({{"action", "START"}, {"repair", true}})), "VexVolumeVerify",
       kOfVolume, to(VEX_VOLUME_STATE_VERIFYING_AND_FIXING), volumeAnswer("state", "VERIFYING_AND_FIXING"),
       stale},
      {"VolumeCancelVerify", volume(L"verify", body({{"action", "CANCEL"}})), "VexVolumeCancelVerify",
       kOfVolume, to(VEX_VOLUME_STATE_NORMAL), volumeAnswer("state", "NORMAL"), stale},
      {"VolumeDelete", remove(kVolumes, {volumeId()}), "VexVolumeDelete", kOfVolume, kNoEffect, kNull, kNull},
  };
}

std::vector<ActionRequest> volumeChangeRequests() {
  const auto volume = [](const wchar_t* what, const ServiceObject& body) {
    return put(kVolumes, {volumeId(), what}, body);
  };
  const ServiceObject stale = volumeAnswer();
  // A mirror shows no strip size.
  ServiceObject asRaid0 = volumeAnswer("raidLevel", "RAID_0");
  set(asRaid0, {"stripSize", "SIZE_64KB"});
  return {
      {"VolumeLevel", volume(L"level", body({{"raidLevel", "RAID_0"}})), "VexRaidLevelModify", kPlain,
       onVolume(&VEX_VOLUME_INFO::raidLevel, VEX_RAID_LEVEL_0), asRaid0, stale},
      {"VolumeSize", volume(L"size", body({{"size", "200"}})), "VexExpandVolume", kPlain,
       onVolume(&VEX_VOLUME_INFO::totalSize, std::uint64_t{200} << 20), volumeAnswer("size", "200"), stale},
      {"VolumeCachePolicy", volume(L"cachepolicy", body({{"cachePolicy", "WRITE_BACK"}})),
       "VexVolumeSetCachePolicy", kPlain,
       onVolume(&VEX_VOLUME_INFO::cachePolicy, VEX_CACHE_POLICY_WRITE_BACK),
       volumeAnswer("cachePolicy", "WRITE_BACK"), stale},
      // By the new name no volume of the old picture is found, and an answer must not fail any more.
      {"VolumeName", volume(L"name", body({{"name", "Fotos"}})), "VexVolumeRename", kPlain,
       [](ScriptedMachine& machine) { setText(machine.volumes.at(kVolume).name, "Fotos"); },
       volumeAnswer("name", "Fotos"), kNull},
      {"VolumeWriteHole", volume(L"rwh", body({{"rwhPolicy", "RWH_OFF"}})), "VexVolumeSetRwhPolicy", kPlain,
       onVolume(&VEX_VOLUME_INFO::rwhPolicy, VEX_RWH_POLICY_OFF), volumeAnswer("rwhPolicy", "RWH_OFF"),
       stale},
  };
}

/// Only by its effect does a new volume show in the answer, which then is its whole form: here the library
/// takes the order and creates nothing.
std::vector<ActionRequest> volumeCreationRequests() {
  const ServiceObject ofArray = body({{"source", "ARRAY"},
                                      idField("arrayId", arrayId()),
                                      {"name", "Fotos"},
                                      {"raidLevel", "RAID_1"},
                                      {"size", "0"}});
  const ServiceObject ofDisks = body({{"source", "DISK"},
                                      {"disks", diskIds({kFree})},
                                      {"name", "Fotos"},
                                      {"raidLevel", "RAID_0"},
                                      {"size", "0"}});
  return {
      {"VolumeFromArray", post(kVolumes, {}, ofArray), "VexVolumeCreate", kPlain, kNoEffect, kNull, kNull},
      {"VolumeFromDisks", post(kVolumes, {}, ofDisks), "VexVolumeCreateFromDisks", kPlain, kNoEffect, kNull,
       kNull},
  };
}

std::vector<ActionRequest> basicRequests() {
  return {{"Rescan", post(L"mirn", {L"rescan"}), "VexRescan", kPlain, kNoEffect, kNull, kNull}};
}

}  // namespace

ScriptedMachine tinyMachine(const std::string& arrayName) {
  ScriptedMachine machine;
  machine.addRaid(kRaid);
  machine.addController(kController, VEX_CONTROLLER_TYPE_SATA, kRaid);
  machine.addDisk(kMember, kController);
  machine.addDisk(kOtherMember, kController);
  VEX_END_DEVICE_INFO& free = machine.addDisk(kFree, kController);
  free.diskState = VEX_DISK_STATE_SMART_EVENT_TRIGGERED;
  free.managedHotplug = 1;
  machine.addPhy(kPhy, kFree);
  machine.addControllerPort(kPort, kController);
  machine.addArray(kArray, arrayName, {kMember, kOtherMember});
  VEX_VOLUME_INFO& volume = machine.addVolume(kVolume, "Data", kArray, VEX_RAID_LEVEL_1);
  volume.state = VEX_VOLUME_STATE_DEGRADED;
  volume.rwhPolicy = VEX_RWH_POLICY_DISTRIBUTED;
  return machine;
}

std::vector<ActionRequest> actionRequests() {
  std::vector<ActionRequest> all;
  for (const auto& requests : {basicRequests(), diskRequests(), arrayRequests(), controllerAndPortRequests(),
                               volumeStateRequests(), volumeChangeRequests(), volumeCreationRequests()}) {
    all.insert(all.end(), requests.begin(), requests.end());
  }
  return all;
}
