#include "bundle/bundled_objects.h"

#include "view/machine_view.h"

namespace host {

namespace {

template <class View>
std::vector<std::wstring> idsOf(const std::vector<View>& views) {
  std::vector<std::wstring> ids;
  ids.reserve(views.size());
  for (const View& each : views) ids.push_back(each.id);
  return ids;
}

/// Adds all objects of a type; false when not all have place.
bool addActing(BundledObjects& objects, const wchar_t* type, const wchar_t* name) {
  for (const std::wstring& id : objects.ids[name]) {
    if (objects.acting.size() == objects.mostActing) return false;
    objects.acting.emplace_back(type, id);
  }
  return true;
}

}  // namespace

BundledObjects bundledObjectsOf(const insight::MachineView& machine, std::size_t mostActing) {
  BundledObjects objects;
  objects.ids = {{L"raidId", idsOf(machine.raids)},   {L"controllerId", idsOf(machine.controllers)},
                 {L"arrayId", idsOf(machine.arrays)}, {L"volumeId", idsOf(machine.volumes)},
                 {L"diskId", idsOf(machine.disks)},   {L"portId", idsOf(machine.ports)}};
  objects.mostActing = mostActing;
  objects.acting = {{L"service", L"service"}};
  objects.areAllActing = addActing(objects, L"controller", L"controllerId") &&
                         addActing(objects, L"array", L"arrayId") &&
                         addActing(objects, L"volume", L"volumeId") &&
                         addActing(objects, L"disk", L"diskId") && addActing(objects, L"port", L"portId");
  return objects;
}

}  // namespace host
