#include "support/fake_session.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "mirn_exception.h"
#include "service_exceptions.h"
#include "text.h"

namespace {

constexpr char kEveryRead[] = "every read";

// Arguments, as the tests read them.
std::string told(const std::wstring& text) { return '"' + wideToUtf8(text) + '"'; }
std::string told(bool value) { return value ? "true" : "false"; }
std::string told(std::uint32_t handle) { return "handle " + std::to_string(handle); }
std::string told(std::int64_t number) { return std::to_string(number); }
std::string told(std::uint64_t number) { return std::to_string(number); }
std::string told(const Volume& volume) { return "volume " + wideToUtf8(volume.id()); }
std::string told(const Array& array) { return "array " + wideToUtf8(array.id()); }
std::string told(const EndDevice& disk) { return "disk " + wideToUtf8(disk.id()); }
std::string told(const Port& port) { return "port " + wideToUtf8(port.id()); }
std::string told(StripSize value) { return wideToUtf8(toText(value)); }
std::string told(RaidLevel value) { return wideToUtf8(toText(value)); }
std::string told(EnableState value) { return wideToUtf8(toText(value)); }
std::string told(CachePolicy value) { return wideToUtf8(toText(value)); }

std::string told(const std::vector<EndDevice>& disks) {
  std::string text = "disks";
  for (const EndDevice& disk : disks) text += " " + wideToUtf8(disk.id());
  return text;
}

std::string told(const RwhRequest& rwh) {
  const std::string policy = wideToUtf8(toText(rwh.policy));
  if (rwh.journalingDrive.id.empty()) return policy;
  return policy + " on " + wideToUtf8(rwh.journalingDrive.id) + " " + told(rwh.journalingDrive.handle);
}

template <class Maker>
Maker& byId(std::vector<Maker>& makers, const std::wstring& id) {
  return *std::find_if(makers.begin(), makers.end(), [&](const Maker& maker) { return maker.id() == id; });
}

template <class Maker>
auto made(const std::vector<Maker>& makers) {
  std::vector<decltype(makers.front().make())> objects;
  for (const Maker& maker : makers) objects.push_back(maker.make());
  return objects;
}

template <class Object, class Predicate>
boost::optional<Object> firstOf(const std::vector<Object>& objects, Predicate predicate) {
  const auto found = std::find_if(objects.begin(), objects.end(), predicate);
  return found == objects.end() ? boost::none : boost::optional<Object>(*found);
}

template <class Object>
boost::optional<Object> withId(const std::vector<Object>& objects, const std::wstring& id) {
  return firstOf(objects, [&](const Object& object) { return object.id() == id; });
}

template <class Object>
std::vector<Object> inArray(std::vector<Object> objects, const std::wstring& arrayId) {
  const auto end = std::remove_if(objects.begin(), objects.end(),
                                  [&](const Object& object) { return object.arrayId() != arrayId; });
  objects.erase(end, objects.end());
  return objects;
}

/// Those of the makers that a controller's list names.
template <class Maker>
std::vector<Maker> listed(const std::vector<Maker>& makers, const FakeSession::IdsById& idsByController,
                          const std::wstring& controllerId) {
  const auto ids = idsByController.find(controllerId);
  if (ids == idsByController.end())
    throw ListenerException(kErrorObjectNotFound, "Controller identifier not found");
  std::vector<Maker> result;
  for (const Maker& maker : makers) {
    if (std::count(ids->second.begin(), ids->second.end(), maker.id()) > 0) result.push_back(maker);
  }
  return result;
}

}  // namespace

VolumeMaker& FakeSession::volume(const std::wstring& id) { return byId(volumes, id); }
DiskMaker& FakeSession::disk(const std::wstring& id) { return byId(endDevices, id); }
ArrayMaker& FakeSession::array(const std::wstring& id) { return byId(arrays, id); }
ControllerMaker& FakeSession::controller(const std::wstring& id) { return byId(controllers, id); }

void FakeSession::loseEverything() { failingRead = kEveryRead; }

void FakeSession::read(const std::string& name) {
  ++reads[name];
  if (failingRead == name || failingRead == kEveryRead)
    throw MirnException(kErrorOperationFailed, kReadFailure);
}

template <class... Arguments>
void FakeSession::act(const std::string& name, const Arguments&... arguments) {
  std::string text;
  ((text += (text.empty() ? "" : ", ") + told(arguments)), ...);
  actions.push_back(name + "(" + text + ")");
  duringAction();
}

bool FakeSession::setLocateTimeout(std::int64_t seconds) {
  act("setLocateTimeout", seconds);
  return !storeRefuses;
}

std::int64_t FakeSession::getLocateTimeout() { return locateTimeout; }

std::vector<Raid> FakeSession::getRaids() {
  read("getRaids");
  return made(raids);
}

std::vector<RaidLevelSupport> FakeSession::getRaidLevels(const std::wstring& raidId) {
  read("getRaidLevels");
  return raidLevels.at(raidId);
}

RaidLevelSupport FakeSession::getRaidLevel(const std::wstring& raidId, RaidLevel level) {
  read("getRaidLevel");
  for (const RaidLevelSupport& support : raidLevels.at(raidId)) {
    if (support.raidLevel() == level) return support;
  }
  throw std::out_of_range("invalid map<K, T> key");
}

std::vector<Controller> FakeSession::getControllers() {
  read("getControllers");
  return made(controllers);
}

std::vector<Array> FakeSession::getControllerArrays(const std::wstring& controllerId) {
  read("getControllerArrays");
  return made(listed(arrays, controllerArrays, controllerId));
}

std::vector<Port> FakeSession::getControllerPorts(const std::wstring& controllerId) {
  read("getControllerPorts");
  return made(listed(ports, controllerPorts, controllerId));
}

std::vector<Volume> FakeSession::getControllerVolumes(const std::wstring& controllerId) {
  read("getControllerVolumes");
  return made(listed(volumes, controllerVolumes, controllerId));
}

std::vector<Array> FakeSession::getArrays() {
  read("getArrays");
  return made(arrays);
}

std::vector<EndDevice> FakeSession::getEndDevices() {
  read("getEndDevices");
  return made(endDevices);
}

std::vector<Port> FakeSession::getPorts() {
  read("getPorts");
  return made(ports);
}

std::vector<Volume> FakeSession::getVolumes() {
  read("getVolumes");
  return made(volumes);
}

Version FakeSession::getVersion() {
  read("getVersion");
  return complete<Version>().build();
}

std::wstring FakeSession::getServiceState() {
  read("getServiceState");
  return serviceState;
}

std::vector<Volume> FakeSession::getVolumesInProgress() {
  read("getVolumesInProgress");
  return made(volumesInProgress);
}

boost::optional<Raid> FakeSession::findRaid(const std::wstring& id) { return withId(getRaids(), id); }
boost::optional<Controller> FakeSession::findController(const std::wstring& id) {
  return withId(getControllers(), id);
}
boost::optional<Array> FakeSession::findArray(const std::wstring& id) { return withId(getArrays(), id); }
boost::optional<EndDevice> FakeSession::findEndDevice(const std::wstring& id) {
  return withId(getEndDevices(), id);
}
std::vector<boost::optional<EndDevice>> FakeSession::findEndDevices(const std::vector<std::wstring>& ids) {
  const std::vector<EndDevice> all = getEndDevices();
  std::vector<boost::optional<EndDevice>> found;
  for (const std::wstring& id : ids) found.push_back(withId(all, id));
  return found;
}
boost::optional<Port> FakeSession::findPort(const std::wstring& id) { return withId(getPorts(), id); }
boost::optional<Volume> FakeSession::findVolume(const std::wstring& id) { return withId(getVolumes(), id); }
boost::optional<Volume> FakeSession::findVolumeByName(const std::wstring& name) {
  return firstOf(getVolumes(), [&](const Volume& volume) { return volume.name() == name; });
}
boost::optional<Controller> FakeSession::findControllerOfVolume(const std::wstring& volumeId) {
  for (const Controller& controller : getControllers()) {
    if (withId(getControllerVolumes(controller.id()), volumeId)) return controller;
  }
  return {};
}
std::vector<EndDevice> FakeSession::getArrayEndDevices(const std::wstring& arrayId) {
  return inArray(getEndDevices(), arrayId);
}
std::vector<Volume> FakeSession::getArrayVolumes(const std::wstring& arrayId) {
  return inArray(getVolumes(), arrayId);
}

void FakeSession::rescan() { act("rescan"); }

void FakeSession::clearMetadata(VEX_HANDLE disk) { act("clearMetadata", disk); }
void FakeSession::markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) { act("markAsSpare", disk, array); }
void FakeSession::unmarkAsSpare(VEX_HANDLE disk) { act("unmarkAsSpare", disk); }
void FakeSession::markAsNormal(VEX_HANDLE disk) { act("markAsNormal", disk); }
void FakeSession::assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) {
  act("assignStoragePool", disk, std::uint64_t{pool});
}
void FakeSession::unlock(VEX_HANDLE disk, UserLevel, const std::wstring& password) {
  act("unlock", disk, password);
}
void FakeSession::resetSmartEvent(VEX_HANDLE disk) { act("resetSmartEvent", disk); }
void FakeSession::removeDisk(const EndDevice& disk) { act("removeDisk", disk); }

void FakeSession::setWriteCacheState(VEX_HANDLE array, EnableState state) {
  act("setWriteCacheState", array, state);
}
void FakeSession::addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) {
  act("addDisks", array, disks);
}

void FakeSession::markAsNormal(const Volume& volume) { act("markAsNormal", volume); }
void FakeSession::rebuild(const Volume& volume, const EndDevice& disk) { act("rebuild", volume, disk); }
void FakeSession::initialize(const Volume& volume) { act("initialize", volume); }
void FakeSession::verify(const Volume& volume, bool repair) { act("verify", volume, repair); }
void FakeSession::cancelVerify(const Volume& volume) { act("cancelVerify", volume); }
void FakeSession::rename(const Volume& volume, const std::wstring& name) { act("rename", volume, name); }
void FakeSession::expand(const Volume& volume, std::uint64_t newSize) { act("expand", volume, newSize); }
void FakeSession::setCachePolicy(const Volume& volume, CachePolicy policy) {
  act("setCachePolicy", volume, policy);
}
void FakeSession::modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                                  std::uint64_t newSize, const std::vector<EndDevice>& disks) {
  act("modifyRaidLevel", volume, stripSize, raidLevel, newSize, disks);
}
void FakeSession::deleteVolume(const Volume& volume) { act("deleteVolume", volume); }
void FakeSession::createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                               RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh) {
  act("createVolume", array, name, stripSize, raidLevel, size, rwh);
}
void FakeSession::createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                        StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                        const std::wstring& sourceDiskId, const RwhRequest& rwh) {
  act("createVolumeFromDisks", disks, name, stripSize, raidLevel, size, sourceDiskId, rwh);
}
void FakeSession::setRwhPolicy(const Volume& volume, const RwhRequest& rwh) {
  act("setRwhPolicy", volume, rwh);
}

void FakeSession::setReadPatrolState(VEX_HANDLE controller, EnableState state) {
  act("setReadPatrolState", controller, state);
}
void FakeSession::setRohiState(VEX_HANDLE controller, EnableState state) {
  act("setRohiState", controller, state);
}

void FakeSession::locate(const Port& port, EnableState state) { act("locate", port, state); }
