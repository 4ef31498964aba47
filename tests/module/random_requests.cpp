#include "module/random_requests.h"

#include <utility>

#include "http_method.h"
#include "module/object_ids.h"
#include "scripted_library/small_machine.h"

using namespace small_machine;
using namespace varied;

namespace {

constexpr const wchar_t* kPaths[] = {
    L"mirn",       L"mirn/raids",   L"mirn/arrays", L"mirn/enddevices", L"mirn/controllers",
    L"mirn/ports", L"mirn/volumes", L"mirn/disks",  L"mirn/events",     L"mirn/nowhere"};
constexpr const wchar_t* kWords[] = {
    L"state",       L"version", L"rescan", L"config",      L"enddevices", L"volumes",    L"arrays",
    L"ports",       L"clear",   L"spare",  L"rebuild",     L"marknormal", L"resetsmart", L"writecache",
    L"readpatrol",  L"rohi",    L"locate", L"level",       L"init",       L"verify",     L"size",
    L"cachepolicy", L"name",    L"rwh",    L"controllers", L"",           L"two words",  L"nosuchid"};
constexpr const wchar_t* kKeys[] = {L"name",   L"size",    L"raidLevel", L"stripSize",   L"disks",
                                    L"diskId", L"arrayId", L"source",    L"rwhPolicy",   L"journalingDriveId",
                                    L"action", L"repair",  L"state",     L"cachePolicy", L"locate_timeout",
                                    L"time",   L"range",   L"type",      L"unheardOf"};
constexpr const wchar_t* kNames[] = {L"{volumeId}",     L"{diskId}", L"{arrayId}",
                                     L"{controllerId}", L"{portId}", L"{raidId}"};
constexpr const wchar_t* kTexts[] = {L"START",
                                     L"CANCEL",
                                     L"MARK",
                                     L"UNMARK",
                                     L"ENABLED",
                                     L"DISABLED",
                                     L"UNKNOWN",
                                     L"RAID_0",
                                     L"RAID_1",
                                     L"RAID_5",
                                     L"RAID_10",
                                     L"RAID_6",
                                     L"RAID_INVALID",
                                     L"SIZE_4KB",
                                     L"SIZE_64KB",
                                     L"SIZE_UNKNOWN",
                                     L"ARRAY",
                                     L"DISK",
                                     L"RWH_OFF",
                                     L"RWH_DISTRIBUTED",
                                     L"RWH_JOURNALING_DRIVE",
                                     L"OFF",
                                     L"WRITE_BACK",
                                     L"0",
                                     L"1024",
                                     L"-1",
                                     L"99999999999999999999",
                                     L"Fotos",
                                     L"System",
                                     L" starts",
                                     L"back\\slash",
                                     L"seventeen letters",
                                     L"",
                                     L"info",
                                     L"level"};
constexpr std::uint32_t kSectorSizes[] = {512, 512, 512, 4096};

struct Kind {
  const char* name;
  std::vector<VEX_HANDLE> handles;
};

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = {
      {"raid", {kSataRaid, kLyxRaid}},
      {"controller", {kSata, kLyx, kPlainController}},
      {"array", {kArray, kParityArray, kEmptyArray}},
      {"disk",
       {kMember1, kMember2, kFree1, kFree2, kLyxDisk1, kLyxDisk2, kLyxDisk3, kParityMember1, kParityMember2,
        kParityMember3, kEmptyMember1, kEmptyMember2, kEmptyMember3, kJournal, kNoDisk}},
      {"volume", {kSystemVolume, kDataVolume, kParityVolume}},
      {"port", {controllerPortOf(kFree1), portOf(kFree1), portOf(kJournal)}},
  };
  return all;
}

}  // namespace

RandomRequests::RandomRequests(std::uint32_t seed) : m_random(seed) {
  // What the varied requests leave out.
  const Segments spare = {idOf("disk", kFree1), L"spare"};
  m_varied.push_back({"DiskUnmarkAsSpare", put(L"mirn/disks", spare, body({{"action", "UNMARK"}}))});
}

ScriptedMachine RandomRequests::machine() {
  ScriptedMachine machine = variedMachine();
  for (const VEX_END_DEVICE_INFO& record : machine.endDevices.records()) {
    VEX_END_DEVICE_INFO& disk = machine.endDevices.at(record.endDeviceHandle);
    if (oneIn(3)) disk.diskState = static_cast<std::uint32_t>(below(11));
    if (oneIn(3)) disk.diskUsage = static_cast<std::uint32_t>(below(8));
    if (oneIn(8)) disk.deviceType = static_cast<std::uint32_t>(below(4));
    if (oneIn(8)) disk.x8PortA = 1;
    disk.logicalSectorSize = oneOf(kSectorSizes);
    disk.managedHotplug = oneIn(2) ? 1 : 0;
  }
  for (const VEX_VOLUME_INFO& record : machine.volumes.records()) {
    VEX_VOLUME_INFO& volume = machine.volumes.at(record.volumeHandle);
    if (oneIn(2)) volume.state = static_cast<std::uint32_t>(below(17));
    if (oneIn(2)) volume.raidLevel = std::uint32_t{1} << below(4);
    if (oneIn(4)) volume.logicalSectorSize = oneOf(kSectorSizes);
    if (oneIn(4)) volume.systemVolume = 1;
  }
  for (const VEX_ARRAY_INFO& record : machine.arrays.records()) {
    VEX_ARRAY_INFO& array = machine.arrays.at(record.arrayHandle);
    if (oneIn(3)) array.writeCacheState = static_cast<std::uint32_t>(below(4));
    if (oneIn(3)) array.numVolumes = static_cast<std::uint32_t>(below(3));
  }
  return machine;
}

std::wstring RandomRequests::id() {
  const Kind& kind = oneOf(kinds());
  return idOf(kind.name, oneOf(kind.handles));
}

ServiceObject RandomRequests::value() {
  switch (below(10)) {
    case 0:
      return ServiceObject(oneIn(2));
    case 1: {
      ServiceObject number;
      number = static_cast<std::uint64_t>(below(2) == 0 ? below(4000) : below(3));
      return number;
    }
    case 2:
      return ServiceObject::null();
    case 3: {
      ServiceObject ids = ServiceObject::array();
      const std::size_t count = below(4);
      for (std::size_t place = 0; place < count; ++place) ids.at(place) = id();
      return ids;
    }
    case 4:
    case 5:
    case 6:
      return ServiceObject(id());
    default:
      return ServiceObject(oneOf(kTexts));
  }
}

std::wstring RandomRequests::argument() { return oneIn(3) ? oneOf(kNames) : oneOf(kKeys); }

void RandomRequests::mutateBody(ServiceObject& body) {
  if (oneIn(10)) {
    body = value();
  } else if (body.isObject() && oneIn(3)) {
    body = without(wideToUtf8(oneOf(kKeys)), body);
  } else if (body.isObject() || body.isNull()) {
    body.member(oneOf(kKeys)) = value();
  }
}

void RandomRequests::mutate(Request& request) {
  switch (below(8)) {
    case 0:
      request.path = oneOf(kPaths);
      break;
    case 1:
      request.method = static_cast<std::int32_t>(below(6));
      break;
    case 2:
      request.segments.push_back(oneOf(kWords));
      break;
    case 3:
    case 4:
      if (!request.segments.empty()) {
        request.segments[below(request.segments.size())] = oneIn(4) ? oneOf(kWords) : id();
      }
      break;
    case 5:
      if (oneIn(3)) request.parameters[oneOf(kKeys)] = oneOf(kTexts);
      break;
    default:
      mutateBody(request.body);
  }
}

Request RandomRequests::request() {
  Request request = oneOf(m_varied).request;
  if (oneIn(20)) {
    request = put(L"mirn", {L"config"});
    request.body.member(L"locate_timeout") = static_cast<std::uint64_t>(below(4000));
  }
  for (std::size_t count = below(4); count > 0; --count) mutate(request);
  return request;
}
