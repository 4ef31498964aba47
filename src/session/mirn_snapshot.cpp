#include "mirn_snapshot.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "handle.h"
#include "sorted_list.h"
#include "text_order.h"

namespace {

constexpr auto kHandleOf = [](const auto& object) { return object.handle(); };

template <class Object>
void sortByHandle(std::vector<Object>& objects) {
  sortStablyBy(kHandleOf, objects);
}

/// Ids by handle. Of several objects with one handle the first counts; handle 0 names nothing.
template <class Object>
class IdsByHandle {
 public:
  /// The list is sorted by handle. It stays where it is, and keeps its ids, as long as they are looked up.
  explicit IdsByHandle(const std::vector<Object>& objects) : m_search(kHandleOf, objects) {}

  /// Null when the handle names nothing.
  const SharedText* find(VEX_HANDLE handle) const {
    if (handle == 0) return nullptr;
    const Object* const object = m_search.find(handle);
    return object == nullptr ? nullptr : &object->sharedId();
  }

 private:
  OrderedSearch<Object, decltype(kHandleOf)> m_search;
};

/// What the objects of a picture name each other by.
struct Ids {
  explicit Ids(const MirnSnapshot& snapshot)
      : raids(snapshot.raids),
        controllers(snapshot.controllers),
        arrays(snapshot.arrays),
        endDevices(snapshot.endDevices),
        ports(snapshot.ports) {}

  const IdsByHandle<Raid> raids;
  const IdsByHandle<Controller> controllers;
  const IdsByHandle<Array> arrays;
  const IdsByHandle<EndDevice> endDevices;
  const IdsByHandle<Port> ports;
};

void sortIds(MirnSnapshot::IdLists& lists) {
  for (auto& list : lists) sortTexts(list.second);
}

void sortSnapshot(MirnSnapshot& snapshot) {
  sortByHandle(snapshot.controllers);
  sortByHandle(snapshot.arrays);
  sortByHandle(snapshot.endDevices);
  sortByHandle(snapshot.ports);
  sortByHandle(snapshot.volumes);
  sortByHandle(snapshot.raids);
  sortIds(snapshot.controllerArrays);
  sortIds(snapshot.controllerPorts);
  sortIds(snapshot.controllerVolumes);
}

void linkEndDevices(std::vector<EndDevice>& endDevices, const Ids& ids) {
  for (EndDevice& device : endDevices) {
    if (const auto* id = ids.arrays.find(device.arrayHandle())) device.setArrayId(*id);
    if (const auto* id = ids.raids.find(device.raidHandle())) device.setRaidId(*id);
    if (const auto* id = ids.controllers.find(device.controllerHandle())) device.setControllerId(*id);
  }
}

void linkVolumes(std::vector<Volume>& volumes, const Ids& ids) {
  for (Volume& volume : volumes) {
    if (const auto* id = ids.arrays.find(volume.arrayHandle())) volume.setArrayId(*id);
    if (const auto* id = ids.endDevices.find(volume.journalingDriveHandle())) {
      volume.setJournalingDriveId(*id);
    }
  }
}

void linkControllers(std::vector<Controller>& controllers, const Ids& ids) {
  for (Controller& controller : controllers) {
    if (const auto* id = ids.raids.find(controller.raidHandle())) controller.setRaidId(*id);
  }
}

void linkPorts(std::vector<Port>& ports, const Ids& ids) {
  for (Port& port : ports) {
    if (const auto* id = ids.ports.find(port.connectedPortHandle())) port.setConnectedPortId(*id);
    // An end device wins over a controller.
    const auto* const device = ids.endDevices.find(port.localDeviceHandle());
    const auto* const local = device != nullptr ? device : ids.controllers.find(port.localDeviceHandle());
    if (local != nullptr) port.setLocalDeviceId(*local);
  }
}

void linkArrays(MirnSnapshot& snapshot) {
  std::unordered_map<std::wstring_view, std::vector<SharedText>> controllersOfArray;
  for (const auto& [controllerId, arrayIds] : snapshot.controllerArrays) {
    const SharedText controller = controllerId;
    for (const SharedText& arrayId : arrayIds) {
      std::vector<SharedText>& controllers = controllersOfArray[arrayId.text()];
      if (controllers.empty() || !controllers.back().isSharedWith(controller))
        controllers.push_back(controller);
    }
  }
  for (Array& array : snapshot.arrays) array.setControllerIds(controllersOfArray[array.id()]);
}

/// A system volume that would not survive the loss of a member.
bool forbidsHotplug(const Volume& volume) {
  return volume.systemVolume() &&
         (volume.raidLevel() < RaidLevel::RAID_1 || volume.state() != VolumeState::NORMAL);
}

void adjustHotplugFlags(MirnSnapshot& snapshot) {
  std::unordered_set<VEX_HANDLE> fixedArrays;
  for (const Volume& volume : snapshot.volumes) {
    if (forbidsHotplug(volume)) fixedArrays.insert(volume.arrayHandle());
  }
  for (EndDevice& device : snapshot.endDevices) {
    if (!device.managedHotplug()) continue;
    if (device.arrayHandle() == 0) {
      device.setManagedHotplug(!device.disk().systemDisk);
    } else if (fixedArrays.count(device.arrayHandle()) != 0) {
      device.setManagedHotplug(false);
    }
  }
}

}  // namespace

void finishSnapshot(MirnSnapshot& snapshot) {
  sortSnapshot(snapshot);
  const Ids ids(snapshot);
  linkEndDevices(snapshot.endDevices, ids);
  linkVolumes(snapshot.volumes, ids);
  linkControllers(snapshot.controllers, ids);
  linkPorts(snapshot.ports, ids);
  linkArrays(snapshot);
  adjustHotplugFlags(snapshot);
}
