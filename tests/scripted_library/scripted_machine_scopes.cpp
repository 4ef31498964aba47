#include <unordered_set>

#include "scripted_library/scripted_machine.h"

namespace {

using Handles = std::vector<VEX_HANDLE>;
using HandleSet = std::unordered_set<VEX_HANDLE>;

/// Success in the scope of the whole system, and in the scope `narrower` of an existing controller.
VEX_STATUS checkScope(const ScriptedMachine& machine, Scope scope, VEX_SCOPE_TYPE narrower) {
  if (scope.type == VEX_SCOPE_SYSTEM && scope.handle == 0) return VEX_STATUS_SUCCESS;
  if (scope.type == VEX_SCOPE_SYSTEM || scope.type != narrower) return VEX_STATUS_INVALID_SCOPE;
  return machine.controllers.has(scope.handle) ? VEX_STATUS_SUCCESS : VEX_STATUS_INVALID_HANDLE;
}

/// The handles of all records, or of those that `belongs` accepts when the scope is a controller.
template <class Record, VEX_HANDLE Record::*HandleField, class Belongs>
Handles choose(const ObjectList<Record, HandleField>& list, Scope scope, Belongs belongs) {
  Handles chosen;
  for (const Record& record : list.records()) {
    if (scope.type == VEX_SCOPE_SYSTEM || belongs(record)) chosen.push_back(record.*HandleField);
  }
  return chosen;
}

/// What a field of the controller's end devices holds: their own handles, or those of their arrays.
HandleSet underController(const ScriptedMachine& machine, Scope scope,
                          VEX_HANDLE VEX_END_DEVICE_INFO::*field) {
  HandleSet handles;
  for (const VEX_END_DEVICE_INFO& device : machine.endDevices.records()) {
    if (device.controllerHandle == scope.handle && device.*field != 0) handles.insert(device.*field);
  }
  return handles;
}

}  // namespace

VEX_STATUS ScriptedMachine::controllersIn(Scope scope, Handles& found) const {
  found = choose(controllers, scope, [](const VEX_CONTROLLER_INFO&) { return true; });
  return checkScope(*this, scope, VEX_SCOPE_SYSTEM);
}

VEX_STATUS ScriptedMachine::endDevicesIn(Scope scope, Handles& found) const {
  found = choose(endDevices, scope, [scope](const VEX_END_DEVICE_INFO& device) {
    return device.controllerHandle == scope.handle;
  });
  return checkScope(*this, scope, VEX_SCOPE_CONTROLLER);
}

VEX_STATUS ScriptedMachine::physIn(Scope scope, Handles& found) const {
  const HandleSet devices = underController(*this, scope, &VEX_END_DEVICE_INFO::endDeviceHandle);
  found = choose(phys, scope,
                 [&devices](const VEX_PHY_INFO& phy) { return devices.count(phy.endDeviceHandle) != 0; });
  return checkScope(*this, scope, VEX_SCOPE_CONTROLLER);
}

VEX_STATUS ScriptedMachine::arraysIn(Scope scope, Handles& found) const {
  const HandleSet under = underController(*this, scope, &VEX_END_DEVICE_INFO::arrayHandle);
  found = choose(arrays, scope,
                 [&under](const VEX_ARRAY_INFO& array) { return under.count(array.arrayHandle) != 0; });
  return checkScope(*this, scope, VEX_SCOPE_CONTROLLER);
}

VEX_STATUS ScriptedMachine::volumesIn(Scope scope, Handles& found) const {
  const HandleSet under = underController(*this, scope, &VEX_END_DEVICE_INFO::arrayHandle);
  found = choose(volumes, scope,
                 [&under](const VEX_VOLUME_INFO& volume) { return under.count(volume.arrayHandle) != 0; });
  return checkScope(*this, scope, VEX_SCOPE_CONTROLLER);
}

VEX_STATUS ScriptedMachine::portsIn(Scope scope, Handles& found) const {
  found = choose(ports, scope, [scope](const VEX_PORT_INFO& port) {
    return port.localDeviceType == VEX_LOCAL_DEVICE_CONTROLLER && port.localDeviceHandle == scope.handle;
  });
  return checkScope(*this, scope, VEX_SCOPE_CONTROLLER_PORTS);
}
