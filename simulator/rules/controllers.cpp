#include "engine/incidents.h"
#include "model/disk_role.h"
#include "rules/checks.h"
#include "rules/rules.h"

namespace simulator {

void rescan(Machine& machine) { notice(machine); }

void setReadPatrol(Machine& machine, Handle handle, std::uint32_t enable) {
  Controller& controller = machine.controllers.at(handle);
  require(controller.readPatrolSupported, VEX_STATUS_NOT_SUPPORTED);
  controller.readPatrolEnabled = parseSwitch(enable);
}

void setRohi(Machine& machine, Handle handle, std::uint32_t enable) {
  Controller& controller = machine.controllers.at(handle);
  require(controller.rohiSupported, VEX_STATUS_NOT_SUPPORTED);
  controller.rohiEnabled = parseSwitch(enable);
}

void locatePort(Machine& machine, Handle handle, std::uint32_t enable) {
  Port& port = machine.ports.at(handle);
  require(isListed(machine, port), VEX_STATUS_INVALID_HANDLE);
  const EndDevice* const device = machine.devices.find(port.device);
  const Controller& controller = machine.controllers.at(device != nullptr ? device->controller : port.device);
  require(controller.supportsPortLocate, VEX_STATUS_NOT_SUPPORTED);
  port.locate = parseSwitch(enable);
}

}  // namespace simulator
