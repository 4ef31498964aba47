#include "twin/draft.h"

#include <algorithm>
#include <set>

#include "twin/controller_order.h"
#include "twin/conversions.h"
#include "twin/published_rows.h"
#include "twin/twin_error.h"

namespace simulator {
namespace {

constexpr std::string_view kUsualStripSize = "SIZE_64KB";
constexpr std::string_view kNoPolicy = "RWH_OFF";

const boost::json::object& objectNamed(const boost::json::object& answers, const char* name) {
  return objectAt(neededMemberOf(answers, name, "the answers"), name);
}

const boost::json::array& listNamed(const boost::json::object& answers, const char* name) {
  return arrayAt(neededMemberOf(answers, name, "the answers"), name);
}

boost::json::object controllersOfEngines(const boost::json::object& answers) {
  const boost::json::value* const lists = answers.if_contains("raidControllers");
  return lists == nullptr ? boost::json::object() : objectAt(*lists, "raidControllers");
}

std::string placeOf(const std::string& list, std::size_t index) {
  return list + "[" + std::to_string(index) + "]";
}

/// Calls `make` with each object of a list and its place, and collects what it gives.
template <class Make>
boost::json::array drafted(const boost::json::array& list, const char* name, Make make) {
  boost::json::array result;
  result.reserve(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::string place = placeOf(name, i);
    result.emplace_back(make(objectAt(list[i], place), place));
  }
  return result;
}

boost::json::object systemOf(const boost::json::object& version) {
  boost::json::object system;
  take(kVersionRows, version, "version", system);
  const std::string interface =
      textAt(neededMemberOf(version, "vexInterfaceVersion", "version"), "version.vexInterfaceVersion");
  const std::size_t dot = interface.find('.');
  if (dot == std::string::npos) throw TwinError("version.vexInterfaceVersion: not two numbers");
  system["interfaceVersionMajor"] =
      sizeAt(boost::json::value(interface.substr(0, dot)), "version.vexInterfaceVersion");
  system["interfaceVersionMinor"] =
      sizeAt(boost::json::value(interface.substr(dot + 1)), "version.vexInterfaceVersion");
  return system;
}

/// One that the level has: the plug-in tells none of a level without strips, and of some levels those by the
/// number of disks alone.
boost::json::value usualOf(const boost::json::array& sizes) {
  const bool isUsual =
      std::find(sizes.begin(), sizes.end(), boost::json::value(kUsualStripSize)) != sizes.end();
  return isUsual ? boost::json::value(kUsualStripSize) : sizes.front();
}

boost::json::object levelOf(const boost::json::object& published, const std::string& place) {
  boost::json::object level;
  take(kLevelRows, published, place, level);
  boost::json::array sizes =
      arrayAt(neededMemberOf(published, "stripSizesSupported", place), place + ".stripSizesSupported");
  if (sizes.empty()) sizes.emplace_back(kUsualStripSize);
  if (!level.contains("defaultStripSize")) level["defaultStripSize"] = usualOf(sizes);
  level["stripSizes"] = std::move(sizes);
  boost::json::array targets;
  boost::json::array needingDisk;
  const std::string targetsPlace = place + ".migrSupport";
  for (const auto& each : arrayAt(neededMemberOf(published, "migrSupport", place), targetsPlace)) {
    const boost::json::object& target = objectAt(each, targetsPlace);
    const boost::json::value& name = neededMemberOf(target, "raidLevel", targetsPlace);
    targets.emplace_back(name);
    if (neededMemberOf(target, "requiresDisk", targetsPlace) == boost::json::value(true))
      needingDisk.emplace_back(name);
  }
  level["migrationTargets"] = std::move(targets);
  level["migrationRequiresDisk"] = std::move(needingDisk);
  return level;
}

boost::json::object engineOf(const boost::json::object& published, const std::string& place) {
  boost::json::object engine;
  take(kEngineRows, published, place, engine);
  const boost::json::value* const levels = published.if_contains("raidLevelInfo");
  if (levels != nullptr) {
    engine["levels"] =
        drafted(arrayAt(*levels, place + ".raidLevelInfo"), (place + ".raidLevelInfo").c_str(), levelOf);
  }
  return engine;
}

template <const PublishedRows& rows>
boost::json::object byRows(const boost::json::object& published, const std::string& place) {
  boost::json::object object;
  take(rows, published, place, object);
  return object;
}

boost::json::object deviceOf(const boost::json::object& published, const std::string& place) {
  boost::json::object device = byRows<kDeviceRows>(published, place);
  if (neededMemberOf(published, "deviceType", place) != boost::json::value("DISK")) return device;
  take(kDiskRows, published, place, device);
  takeFacts(published, device);
  return device;
}

std::string idIn(const boost::json::object& object, const char* key) {
  const boost::json::value* const member = object.if_contains(key);
  return member != nullptr && member->is_string() ? std::string(member->get_string()) : std::string();
}

/// Members by the array's id.
std::map<std::string, boost::json::array> membersOf(const boost::json::array& devices) {
  std::map<std::string, boost::json::array> members;
  for (const auto& each : devices) {
    const boost::json::object& device = each.get_object();
    members[idIn(device, "arrayId")].emplace_back(idIn(device, "id"));
  }
  return members;
}

void giveMembers(boost::json::array& arrays, const boost::json::array& devices) {
  auto members = membersOf(devices);
  for (auto& each : arrays) each.get_object()["disks"] = members[idIn(each.get_object(), "id")];
}

/// No list tells which policies an engine has: it has those that its volumes have.
void givePolicies(Draft& draft) {
  std::map<std::string, std::string> engineOfController;
  for (const auto& each : draft.controllers) {
    engineOfController[idIn(each.get_object(), "id")] = idIn(each.get_object(), "engine");
  }
  std::map<std::string, std::string> engineOfDisk;
  for (const auto& each : draft.devices) {
    engineOfDisk[idIn(each.get_object(), "id")] = engineOfController[idIn(each.get_object(), "controller")];
  }
  std::map<std::string, std::string> engineOfArray;
  for (const auto& each : draft.arrays) {
    const boost::json::array& disks = each.get_object().at("disks").get_array();
    if (disks.empty()) continue;
    engineOfArray[idIn(each.get_object(), "id")] = engineOfDisk[std::string(disks.front().get_string())];
  }
  std::map<std::string, std::set<std::string>> policies;
  for (const auto& each : draft.volumes) {
    const std::string policy = idIn(each.get_object(), "rwhPolicy");
    if (!policy.empty()) policies[engineOfArray[idIn(each.get_object(), "array")]].insert(policy);
  }
  for (auto& each : draft.engines) {
    std::set<std::string>& own = policies[idIn(each.get_object(), "id")];
    own.insert(std::string(kNoPolicy));
    each.get_object()["rwhPolicies"] = boost::json::array(own.begin(), own.end());
  }
}

}  // namespace

Answers::Answers(const boost::json::object& answers)
    : version(objectNamed(answers, "version")),
      engines(listNamed(answers, "raids")),
      controllers(inOrderOfHandles(listNamed(answers, "controllers"), controllersOfEngines(answers))),
      devices(listNamed(answers, "enddevices")),
      ports(listNamed(answers, "ports")),
      arrays(listNamed(answers, "arrays")),
      volumes(listNamed(answers, "volumes")) {}

boost::json::object Draft::scenario() const {
  return {{"system", system}, {"engines", engines}, {"controllers", controllers}, {"devices", devices},
          {"ports", ports},   {"arrays", arrays},   {"volumes", volumes}};
}

Draft draftOf(const Answers& answers) {
  Draft draft;
  draft.system = systemOf(answers.version);
  draft.engines = drafted(answers.engines, "raids", engineOf);
  draft.controllers = drafted(answers.controllers, "controllers", byRows<kControllerRows>);
  draft.devices = drafted(answers.devices, "enddevices", deviceOf);
  draft.ports = drafted(answers.ports, "ports", byRows<kPortRows>);
  draft.arrays = drafted(answers.arrays, "arrays", byRows<kArrayRows>);
  draft.volumes = drafted(answers.volumes, "volumes", byRows<kVolumeRows>);
  giveMembers(draft.arrays, answers.devices);
  givePolicies(draft);
  return draft;
}

}  // namespace simulator
