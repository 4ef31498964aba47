#include "view/machine_view.h"

#include <algorithm>

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr wchar_t kDisk[] = L"DISK";

/// Members of a form that may lack them.
class Form {
 public:
  explicit Form(const ServiceObject& object) : m_object(object) {}

  const ServiceObject* find(const wchar_t* key) const {
    if (!m_object.isObject() || !m_object.hasKey(key)) return nullptr;
    const ServiceObject& value = m_object.member(key);
    return value.isNull() ? nullptr : &value;
  }

  std::wstring text(const wchar_t* key) const {
    const ServiceObject* const value = find(key);
    return value == nullptr ? std::wstring() : value->toString();
  }

  std::uint64_t number(const wchar_t* key) const { return maybeNumber(key).value_or(0); }

  std::optional<std::uint64_t> maybeNumber(const wchar_t* key) const {
    const ServiceObject* const value = find(key);
    if (value == nullptr) return {};
    return static_cast<std::uint64_t>(value->toInt64());
  }

  /// A number would read the other way round, see `ServiceObject::toBool`.
  bool flag(const wchar_t* key) const {
    const ServiceObject* const value = find(key);
    return value != nullptr && value->toBool();
  }

  std::vector<std::wstring> texts(const wchar_t* key) const {
    std::vector<std::wstring> all;
    forEach(key, [&](const ServiceObject& value) { all.push_back(value.toString()); });
    return all;
  }

  template <class Use>
  void forEach(const wchar_t* key, const Use& use) const {
    const ServiceObject* const list = find(key);
    if (list == nullptr || !list->isArray()) return;
    for (const auto element : *list) use(*element.value);
  }

 private:
  const ServiceObject& m_object;
};

RaidView raidOf(const Form& form) {
  RaidView raid{form.text(L"raidId"), {}};
  form.forEach(L"raidLevelInfo", [&](const ServiceObject& each) {
    raid.levels.push_back({Form(each).text(L"raidLevel"), Form(each).texts(L"stripSizesSupported")});
  });
  return raid;
}

ControllerView controllerOf(const Form& form) {
  return {form.text(L"id"), form.text(L"name"), form.text(L"raidId")};
}

ArrayView arrayOf(const Form& form) {
  return {form.text(L"id"),         form.text(L"name"),        form.texts(L"controllerIds"),
          form.number(L"freeSize"), form.number(L"totalSize"), form.number(L"numDisks"),
          form.text(L"state")};
}

DiskView diskOf(const Form& form) {
  DiskView disk;
  disk.id = form.text(L"id");
  disk.controllerId = form.text(L"controllerId");
  disk.arrayId = form.text(L"arrayId");
  disk.state = form.text(L"state");
  disk.usage = form.text(L"usage");
  disk.type = form.text(L"type");
  disk.serialNumber = form.text(L"serialNumber");
  disk.model = form.text(L"model");
  disk.firmware = form.text(L"firmware");
  disk.address = form.text(L"address");
  disk.totalBytes = form.number(L"totalSize");
  disk.freeBytes = form.number(L"freeSize");
  disk.isSystemDisk = form.flag(L"systemDisk");
  return disk;
}

VolumeView volumeOf(const Form& form) {
  VolumeView volume;
  volume.id = form.text(L"id");
  volume.name = form.text(L"name");
  volume.arrayId = form.text(L"arrayId");
  volume.state = form.text(L"state");
  volume.level = form.text(L"raidLevel");
  volume.writeHolePolicy = form.text(L"rwhPolicy");
  volume.journalingDriveId = form.text(L"journalingDriveId");
  volume.totalBytes = form.number(L"totalSize");
  volume.diskCount = form.number(L"numDisks");
  volume.percent = form.number(L"migrProgress");
  if (const ServiceObject* const verify = form.find(L"verify")) {
    volume.verifyErrors = Form(*verify).number(L"errors");
    volume.badBlocks = Form(*verify).number(L"badBlocks");
  }
  volume.isInitialized = form.flag(L"initialized");
  volume.isMigrating = form.flag(L"migration");
  volume.isSystemVolume = form.flag(L"systemVolume");
  return volume;
}

PortView portOf(const Form& form) {
  return {form.text(L"id"), form.text(L"localDeviceId"), form.text(L"connectedPortId")};
}

ovra::PluginPosition positionOf(const Form& form) {
  return {form.text(L"epoch"), form.number(L"revision"), form.number(L"structure"), form.number(L"sequence")};
}

template <class View>
MachineView::Places placesOf(const std::vector<View>& views) {
  MachineView::Places places;
  for (std::size_t place = 0; place < views.size(); ++place) places.emplace(views[place].id, place);
  return places;
}

template <class View>
const View* viewAt(const std::vector<View>& views, const MachineView::Places& places,
                   const std::wstring& id) {
  const auto found = places.find(id);
  return found == places.end() || id.empty() ? nullptr : &views[found->second];
}

void readState(const ServiceObject& form, MachineView& machine) {
  const Form state(form);
  machine.serviceState = state.text(L"state");
  state.forEach(L"inProgress", [&](const ServiceObject& work) {
    machine.work.push_back({Form(work).text(L"objectID"), Form(work).text(L"action")});
  });
}

void readPorts(const ServiceObject& lists, MachineView& machine) {
  if (!lists.isObject()) return;
  for (const auto& entry : lists.asObject()) {
    std::vector<std::wstring>& ids = machine.portsOfController[entry.first];
    for (const auto element : *entry.second) ids.push_back(element.value->toString());
  }
}

}  // namespace

MachineView machineViewOf(const ServiceObject& picture) {
  const Form form(picture);
  MachineView machine;
  if (const ServiceObject* const position = form.find(L"position"))
    machine.position = positionOf(Form(*position));
  machine.takenAt = form.maybeNumber(L"takenAt");
  machine.failedAt = form.maybeNumber(L"failedAt");
  machine.failure = form.text(L"failure");
  if (const ServiceObject* const state = form.find(L"state")) readState(*state, machine);
  if (const ServiceObject* const ports = form.find(L"controllerPorts")) readPorts(*ports, machine);
  form.forEach(L"raids", [&](const ServiceObject& each) { machine.raids.push_back(raidOf(Form(each))); });
  form.forEach(L"controllers", [&](const ServiceObject& each) {  //
    machine.controllers.push_back(controllerOf(Form(each)));
  });
  form.forEach(L"arrays", [&](const ServiceObject& each) { machine.arrays.push_back(arrayOf(Form(each))); });
  form.forEach(L"volumes",
               [&](const ServiceObject& each) { machine.volumes.push_back(volumeOf(Form(each))); });
  form.forEach(L"ports", [&](const ServiceObject& each) { machine.ports.push_back(portOf(Form(each))); });
  form.forEach(L"enddevices", [&](const ServiceObject& each) {
    if (Form(each).text(L"deviceType") == kDisk) machine.disks.push_back(diskOf(Form(each)));
  });
  machine.index();
  return machine;
}

void MachineView::index() {
  controllerPlaces = placesOf(controllers);
  arrayPlaces = placesOf(arrays);
  diskPlaces = placesOf(disks);
  volumePlaces = placesOf(volumes);
  memberPlaces.clear();
  for (std::size_t place = 0; place < disks.size(); ++place) {
    if (!disks[place].arrayId.empty()) memberPlaces[disks[place].arrayId].push_back(place);
  }
}

const ControllerView* MachineView::controller(const std::wstring& id) const {
  return viewAt(controllers, controllerPlaces, id);
}

const ArrayView* MachineView::array(const std::wstring& id) const { return viewAt(arrays, arrayPlaces, id); }

const DiskView* MachineView::disk(const std::wstring& id) const { return viewAt(disks, diskPlaces, id); }

const VolumeView* MachineView::volume(const std::wstring& id) const {
  return viewAt(volumes, volumePlaces, id);
}

std::vector<const DiskView*> MachineView::membersOf(const std::wstring& arrayId) const {
  std::vector<const DiskView*> members;
  const auto places = memberPlaces.find(arrayId);
  if (places == memberPlaces.end()) return members;
  for (const std::size_t place : places->second) members.push_back(&disks[place]);
  return members;
}

std::optional<std::wstring> MachineView::workOn(const std::wstring& volumeId) const {
  const auto found =
      std::find_if(work.begin(), work.end(), [&](const WorkView& each) { return each.volumeId == volumeId; });
  if (found == work.end()) return {};
  return found->action;
}

}  // namespace insight
