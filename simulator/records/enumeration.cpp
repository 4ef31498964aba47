#include "records/enumeration.h"

#include <algorithm>

#include "model/disk_role.h"

namespace simulator {
namespace {

template <class T>
std::vector<Handle> handlesOf(const Table<T>& table) {
  std::vector<Handle> handles;
  handles.reserve(table.size());
  for (const auto& entry : table) handles.push_back(entry.first);
  return handles;
}

/// The controller of a scope, or null for the whole system. `controllerScope` is the one other
/// scope of the kind.
const Controller* controllerOf(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle,
                               VEX_SCOPE_TYPE controllerScope) {
  if (scope == VEX_SCOPE_SYSTEM) {
    require(scopeHandle == 0, VEX_STATUS_INVALID_SCOPE);
    return nullptr;
  }
  require(scope == controllerScope, VEX_STATUS_INVALID_SCOPE);
  return &machine.controllers.at(scopeHandle);
}

}  // namespace

std::vector<Handle> listControllers(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  require(scope == VEX_SCOPE_SYSTEM && scopeHandle == 0, VEX_STATUS_INVALID_SCOPE);
  return handlesOf(machine.controllers);
}

std::vector<Handle> listEndDevices(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  const Controller* const controller = controllerOf(machine, scope, scopeHandle, VEX_SCOPE_CONTROLLER);
  std::vector<Handle> handles = controller != nullptr ? controller->devices : handlesOf(machine.devices);
  const auto isHidden = [&](Handle device) { return !isListed(machine.devices.at(device)); };
  handles.erase(std::remove_if(handles.begin(), handles.end(), isHidden), handles.end());
  return handles;
}

std::vector<Handle> listPhys(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  const Controller* const controller = controllerOf(machine, scope, scopeHandle, VEX_SCOPE_CONTROLLER);
  if (controller == nullptr) return handlesOf(machine.phyOwner);
  std::vector<Handle> handles;
  for (const Handle device : controller->devices) {
    for (const Phy& phy : machine.devices.at(device).phys) handles.push_back(phy.handle);
  }
  std::sort(handles.begin(), handles.end());
  return handles;
}

std::vector<Handle> listArrays(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  const Controller* const controller = controllerOf(machine, scope, scopeHandle, VEX_SCOPE_CONTROLLER);
  return controller != nullptr ? controller->arrays : handlesOf(machine.arrays);
}

std::vector<Handle> listVolumes(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  const Controller* const controller = controllerOf(machine, scope, scopeHandle, VEX_SCOPE_CONTROLLER);
  if (controller == nullptr) return handlesOf(machine.volumes);
  std::vector<Handle> handles;
  for (const Handle array : controller->arrays) {
    const auto& volumes = machine.arrays.at(array).volumes;
    handles.insert(handles.end(), volumes.begin(), volumes.end());
  }
  std::sort(handles.begin(), handles.end());
  return handles;
}

std::vector<Handle> listPorts(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle) {
  const Controller* const controller = controllerOf(machine, scope, scopeHandle, VEX_SCOPE_CONTROLLER_PORTS);
  std::vector<Handle> handles = controller != nullptr ? controller->ports : handlesOf(machine.ports);
  const auto isHidden = [&](Handle port) { return !isListed(machine, machine.ports.at(port)); };
  handles.erase(std::remove_if(handles.begin(), handles.end(), isHidden), handles.end());
  return handles;
}

std::vector<Handle> listEngines(const Machine& machine) { return handlesOf(machine.engines); }

}  // namespace simulator
