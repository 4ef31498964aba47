#include <algorithm>
#include <vector>

#include "core/library.h"
#include "handle_list.h"
#include "model/disk_role.h"
#include "records/enumeration.h"
#include "records/records.h"
#include "VEXL2.h"

using simulator::Handle;
using simulator::Library;
using simulator::Machine;

namespace {

using ScopedList = std::vector<Handle> (*)(const Machine&, VEX_SCOPE_TYPE, Handle);

VEX_STATUS enumerate(const char* operation, ScopedList list, VEX_HANDLE session, VEX_SCOPE_TYPE scope,
                     VEX_HANDLE scopeHandle, VEX_HANDLE* handles, uint32_t* count) {
  return Library::instance().read(operation, session, count, [&](const Machine& machine) {
    vexl2::storeHandles(list(machine, scope, scopeHandle), handles, *count);
  });
}

/// Fills a record with an object of a table of the machine.
template <class T, class Info>
VEX_STATUS describe(const char* operation, simulator::Table<T> Machine::*table, VEX_HANDLE session,
                    VEX_HANDLE handle, Info* info) {
  return Library::instance().read(operation, session, info, [&](const Machine& machine) {
    fill(machine, (machine.*table).at(handle), *info);
  });
}

}  // namespace

VEX_STATUS VexGetSystemInfo(VEX_SYSTEM_INFO* info) {
  return Library::instance().read(__func__, info,
                                  [&](const Machine& machine) { simulator::fill(machine, *info); });
}

VEX_STATUS VexGetControllerHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                   VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listControllers, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetEndDeviceHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                  VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listEndDevices, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetPhyHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                            VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listPhys, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetArrayHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                              VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listArrays, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetVolumeHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                               VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listVolumes, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetPortHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                             VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, simulator::listPorts, session, scope, scopeHandle, handles, count);
}

VEX_STATUS VexGetRaidInfoHandles(VEX_HANDLE session, VEX_HANDLE* handles, uint32_t* count) {
  return Library::instance().read(__func__, session, count, [&](const Machine& machine) {
    vexl2::storeHandles(simulator::listEngines(machine), handles, *count);
  });
}

VEX_STATUS VexGetControllerInfo(VEX_HANDLE session, VEX_HANDLE controller, VEX_CONTROLLER_INFO* info) {
  return describe(__func__, &Machine::controllers, session, controller, info);
}

VEX_STATUS VexGetEndDeviceInfo(VEX_HANDLE session, VEX_HANDLE endDevice, VEX_END_DEVICE_INFO* info) {
  return Library::instance().read(__func__, session, info, [&](const Machine& machine) {
    simulator::fill(machine, simulator::listedDevice(machine, endDevice), *info);
  });
}

VEX_STATUS VexGetPhyInfo(VEX_HANDLE session, VEX_HANDLE phy, VEX_PHY_INFO* info) {
  return Library::instance().read(__func__, session, info, [&](const Machine& machine) {
    const auto& owner = machine.devices.at(machine.phyOwner.at(phy));
    const auto found = std::find_if(owner.phys.begin(), owner.phys.end(),
                                    [&](const simulator::Phy& other) { return other.handle == phy; });
    simulator::fill(owner, *found, *info);
  });
}

VEX_STATUS VexGetArrayInfo(VEX_HANDLE session, VEX_HANDLE array, VEX_ARRAY_INFO* info) {
  return describe(__func__, &Machine::arrays, session, array, info);
}

VEX_STATUS VexGetVolumeInfo(VEX_HANDLE session, VEX_HANDLE volume, VEX_VOLUME_INFO* info) {
  return describe(__func__, &Machine::volumes, session, volume, info);
}

VEX_STATUS VexGetPortInfo(VEX_HANDLE session, VEX_HANDLE port, VEX_PORT_INFO* info) {
  return Library::instance().read(__func__, session, info, [&](const Machine& machine) {
    simulator::fill(machine, simulator::listedPort(machine, port), *info);
  });
}

VEX_STATUS VexGetRaidInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, VEX_RAID_INFO* info) {
  return describe(__func__, &Machine::engines, session, raidInfo, info);
}

VEX_STATUS VexGetRaidLevelInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, uint32_t raidLevel,
                               VEX_RAID_LEVEL_INFO* info) {
  return Library::instance().read(__func__, session, info, [&](const Machine& machine) {
    simulator::fillLevel(machine, machine.engines.at(raidInfo), raidLevel, *info);
  });
}
