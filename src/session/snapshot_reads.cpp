#include "snapshot_reads.h"

#include <algorithm>
#include <iterator>

#include "find_by_id.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "session_messages.h"

namespace {

constexpr char kControllerNotFound[] = "Controller identifier not found";

template <class Object>
boost::optional<Object> copyOf(const Object* object) {
  return object ? boost::optional<Object>(*object) : boost::none;
}

/// Those of a list that stand in an array, in its order.
template <class Object>
std::vector<Object> inArray(const std::vector<Object>& objects, const std::wstring& arrayId) {
  std::vector<Object> result;
  std::copy_if(objects.begin(), objects.end(), std::back_inserter(result),
               [&](const Object& object) { return object.arrayId() == arrayId; });
  return result;
}

}  // namespace

template <class Object>
std::vector<Object> SnapshotReads::objectsOfController(const std::wstring& controllerId,
                                                       std::vector<Object> MirnSnapshot::*objects,
                                                       MirnSnapshot::IdLists MirnSnapshot::*idLists) {
  const Picture now = picture();
  findById(now->controllers, controllerId, kErrorObjectNotFound, kControllerNotFound);
  const std::vector<SharedText>& ids = lookUp((*now).*idLists, controllerId);

  std::vector<Object> result;
  for (const Object& object : (*now).*objects) {
    // The snapshot keeps these lists sorted.
    if (std::binary_search(ids.begin(), ids.end(), object.sharedId())) result.push_back(object);
  }
  return result;
}

std::vector<Raid> SnapshotReads::getRaids() { return picture()->raids; }

std::vector<RaidLevelSupport> SnapshotReads::getRaidLevels(const std::wstring& raidId) {
  const Picture now = picture();
  std::vector<RaidLevelSupport> levels;
  for (const auto& entry : lookUp(now->raidLevels, raidId)) levels.push_back(entry.second);
  return levels;
}

RaidLevelSupport SnapshotReads::getRaidLevel(const std::wstring& raidId, RaidLevel level) {
  return lookUp(lookUp(picture()->raidLevels, raidId), level);
}

std::vector<Controller> SnapshotReads::getControllers() { return picture()->controllers; }

std::vector<Array> SnapshotReads::getControllerArrays(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::arrays, &MirnSnapshot::controllerArrays);
}

std::vector<Port> SnapshotReads::getControllerPorts(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::ports, &MirnSnapshot::controllerPorts);
}

std::vector<Volume> SnapshotReads::getControllerVolumes(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::volumes, &MirnSnapshot::controllerVolumes);
}

std::vector<Array> SnapshotReads::getArrays() { return picture()->arrays; }

std::vector<EndDevice> SnapshotReads::getEndDevices() { return picture()->endDevices; }

std::vector<Port> SnapshotReads::getPorts() { return picture()->ports; }

std::vector<Volume> SnapshotReads::getVolumes() { return picture()->volumes; }

Version SnapshotReads::getVersion() {
  const Picture now = picture();
  if (!now->version) throw MirnException(kErrorOperationFailed, kMsgNoVersion);
  return *now->version;
}

boost::optional<Raid> SnapshotReads::findRaid(const std::wstring& id) {
  return copyOf(picture()->raidsById.find(id));
}

boost::optional<Controller> SnapshotReads::findController(const std::wstring& id) {
  return copyOf(picture()->controllersById.find(id));
}

boost::optional<Array> SnapshotReads::findArray(const std::wstring& id) {
  return copyOf(picture()->arraysById.find(id));
}

boost::optional<EndDevice> SnapshotReads::findEndDevice(const std::wstring& id) {
  return copyOf(picture()->endDevicesById.find(id));
}

std::vector<boost::optional<EndDevice>> SnapshotReads::findEndDevices(const std::vector<std::wstring>& ids) {
  const Picture now = picture();
  std::vector<boost::optional<EndDevice>> devices;
  for (const std::wstring& id : ids) devices.push_back(copyOf(now->endDevicesById.find(id)));
  return devices;
}

boost::optional<Port> SnapshotReads::findPort(const std::wstring& id) {
  return copyOf(picture()->portsById.find(id));
}

boost::optional<Volume> SnapshotReads::findVolume(const std::wstring& id) {
  return copyOf(picture()->volumesById.find(id));
}

boost::optional<Volume> SnapshotReads::findVolumeByName(const std::wstring& name) {
  const Picture now = picture();
  for (const Volume& volume : now->volumes) {
    if (volume.name() == name) return volume;
  }
  return {};
}

boost::optional<Controller> SnapshotReads::findControllerOfVolume(const std::wstring& volumeId) {
  const Picture now = picture();
  const Volume* const volume = now->volumesById.find(volumeId);
  for (const Controller& controller : now->controllers) {
    const std::vector<SharedText>& ids = lookUp(now->controllerVolumes, controller.id());
    if (volume != nullptr && std::binary_search(ids.begin(), ids.end(), volume->sharedId()))
      return controller;
  }
  return {};
}

std::vector<EndDevice> SnapshotReads::getArrayEndDevices(const std::wstring& arrayId) {
  return inArray(picture()->endDevices, arrayId);
}

std::vector<Volume> SnapshotReads::getArrayVolumes(const std::wstring& arrayId) {
  return inArray(picture()->volumes, arrayId);
}
