#include "view/object_path.h"

#include <algorithm>

namespace insight {

namespace {

void appendController(const MachineView& machine, const std::wstring& id, std::vector<ObjectRef>& path) {
  if (const ControllerView* const controller = machine.controller(id)) path.push_back(refOf(*controller));
}

template <class View>
std::optional<ObjectRef> refIfThere(const View* view) {
  if (view == nullptr) return {};
  return refOf(*view);
}

std::optional<ObjectRef> portNamed(const MachineView& machine, const std::wstring& id) {
  for (const auto& [controller, ports] : machine.portsOfController) {
    if (std::find(ports.begin(), ports.end(), id) != ports.end()) return ObjectRef{"port", id, id};
  }
  return {};
}

}  // namespace

std::optional<ObjectRef> objectNamed(const MachineView& machine, const std::wstring& type,
                                     const std::wstring& id) {
  if (type == L"volume") return refIfThere(machine.volume(id));
  if (type == L"disk") return refIfThere(machine.disk(id));
  if (type == L"array") return refIfThere(machine.array(id));
  if (type == L"controller") return refIfThere(machine.controller(id));
  if (type == L"port") return portNamed(machine, id);
  if (type == L"service" && id == L"service") return ObjectRef{"service", {}, L"service"};
  return {};
}

ObjectRef refOf(const ControllerView& controller) { return {"controller", controller.id, controller.name}; }

ObjectRef refOf(const ArrayView& array) { return {"array", array.id, array.name}; }

ObjectRef refOf(const DiskView& disk) { return {"disk", disk.id, disk.type + L' ' + disk.serialNumber}; }

ObjectRef refOf(const VolumeView& volume) { return {"volume", volume.id, volume.name}; }

std::vector<ObjectRef> pathTo(const MachineView& machine, const ArrayView& array) {
  std::vector<ObjectRef> path;
  if (!array.controllerIds.empty()) appendController(machine, array.controllerIds.front(), path);
  path.push_back(refOf(array));
  return path;
}

std::vector<ObjectRef> pathTo(const MachineView& machine, const DiskView& disk) {
  std::vector<ObjectRef> path;
  appendController(machine, disk.controllerId, path);
  if (const ArrayView* const array = machine.array(disk.arrayId)) path.push_back(refOf(*array));
  path.push_back(refOf(disk));
  return path;
}

std::vector<ObjectRef> pathTo(const MachineView& machine, const VolumeView& volume) {
  std::vector<ObjectRef> path;
  if (const ArrayView* const array = machine.array(volume.arrayId)) path = pathTo(machine, *array);
  path.push_back(refOf(volume));
  return path;
}

}  // namespace insight
