#include "mirn_snapshot.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "handle.h"

namespace {

/// Ids by handle. Of several objects with one handle the first counts; handle 0 names nothing.
class IdsByHandle {
 public:
  template <class Object>
  explicit IdsByHandle(const std::vector<Object>& objects) {
    m_ids.reserve(objects.size());
    for (const Object& object : objects) {
      if (object.handle() != 0) m_ids.emplace(object.handle(), object.id());
    }
  }

  /// Null when the handle names nothing.
  const std::wstring* find(VEX_HANDLE handle) const {
    const auto found = m_ids.find(handle);
    return found == m_ids.end() ? nullptr : &found->second;
  }

 private:
  std::unordered_map<VEX_HANDLE, std::wstring> m_ids;
};

template <class Object>
void sortByHandle(std::vector<Object>& objects) {
  std::stable_sort(objects.begin(), objects.end(),
                   [](const Object& a, const Object& b) { return a.handle() < b.handle(); });
}

void sortIds(MirnSnapshot::IdLists& lists) {
  for (auto& list : lists) std::sort(list.second.begin(), list.second.end());
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

void linkEndDevices(MirnSnapshot& snapshot) {
  const IdsByHandle arrays(snapshot.arrays);
  const IdsByHandle raids(snapshot.raids);
  const IdsByHandle controllers(snapshot.controllers);
  for (EndDevice& device : snapshot.endDevices) {
    if (const auto* id = arrays.find(device.arrayHandle())) device.setArrayId(*id);
    if (const auto* id = raids.find(device.raidHandle())) device.setRaidId(*id);
    if (const auto* id = controllers.find(device.controllerHandle())) device.setControllerId(*id);
  }
}

void linkVolumes(MirnSnapshot& snapshot) {
  const IdsByHandle arrays(snapshot.arrays);
  const IdsByHandle devices(snapshot.endDevices);
  for (Volume& volume : snapshot.volumes) {
    if (const auto* id = arrays.find(volume.arrayHandle())) volume.setArrayId(*id);
    if (const auto* id = devices.find(volume.journalingDriveHandle())) volume.setJournalingDriveId(*id);
  }
}

void linkControllers(MirnSnapshot& snapshot) {
  const IdsByHandle raids(snapshot.raids);
  for (Controller& controller : snapshot.controllers) {
    if (const auto* id = raids.find(controller.raidHandle())) controller.setRaidId(*id);
  }
}

void linkPorts(MirnSnapshot& snapshot) {
  const IdsByHandle ports(snapshot.ports);
  const IdsByHandle controllers(snapshot.controllers);
  const IdsByHandle devices(snapshot.endDevices);
  for (Port& port : snapshot.ports) {
    if (const auto* id = ports.find(port.connectedPortHandle())) port.setConnectedPortId(*id);
    if (const auto* id = controllers.find(port.localDeviceHandle())) port.setLocalDeviceId(*id);
    // Later, so that an end device wins over a controller.
    if (const auto* id = devices.find(port.localDeviceHandle())) port.setLocalDeviceId(*id);
  }
}

void linkArrays(MirnSnapshot& snapshot) {
  std::unordered_map<std::wstring, std::vector<std::wstring>> controllersOfArray;
  for (const auto& [controllerId, arrayIds] : snapshot.controllerArrays) {
    for (const std::wstring& arrayId : arrayIds) {
      std::vector<std::wstring>& controllerIds = controllersOfArray[arrayId];
      if (controllerIds.empty() || controllerIds.back() != controllerId)
        controllerIds.push_back(controllerId);
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
  linkEndDevices(snapshot);
  linkVolumes(snapshot);
  linkControllers(snapshot);
  linkPorts(snapshot);
  linkArrays(snapshot);
  adjustHotplugFlags(snapshot);
}
