#include "scripted_library/operations_support.h"

using Machine = ScriptedMachine;

VEX_STATUS VexGetSystemInfo(VEX_SYSTEM_INFO* info) {
  return respond(
      __func__, [info](const Machine& machine) { return store(machine.system, info); }, outRecord(info));
}

VEX_STATUS VexGetControllerHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                   VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::controllersIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetEndDeviceHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                  VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::endDevicesIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetPhyHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                            VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::physIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetArrayHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                              VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::arraysIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetVolumeHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                               VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::volumesIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetPortHandles(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                             VEX_HANDLE* handles, uint32_t* count) {
  return enumerate(__func__, &Machine::portsIn, session, {scope, scopeHandle}, handles, count);
}

VEX_STATUS VexGetRaidInfoHandles(VEX_HANDLE session, VEX_HANDLE* handles, uint32_t* count) {
  const auto answer = [=](const Machine& machine) {
    std::vector<VEX_HANDLE> found;
    for (const VEX_RAID_INFO& raid : machine.raids.records()) found.push_back(raid.raidInfoHandle);
    return storeHandles(found, handles, count);
  };
  return respond(__func__, inSession(session, answer), session, Out{handles, 0}, Count{count});
}

VEX_STATUS VexGetControllerInfo(VEX_HANDLE session, VEX_HANDLE controller, VEX_CONTROLLER_INFO* info) {
  return readRecord(__func__, &Machine::controllers, session, controller, info);
}

VEX_STATUS VexGetEndDeviceInfo(VEX_HANDLE session, VEX_HANDLE endDevice, VEX_END_DEVICE_INFO* info) {
  return readRecord(__func__, &Machine::endDevices, session, endDevice, info);
}

VEX_STATUS VexGetPhyInfo(VEX_HANDLE session, VEX_HANDLE phy, VEX_PHY_INFO* info) {
  return readRecord(__func__, &Machine::phys, session, phy, info);
}

VEX_STATUS VexGetArrayInfo(VEX_HANDLE session, VEX_HANDLE array, VEX_ARRAY_INFO* info) {
  return readRecord(__func__, &Machine::arrays, session, array, info);
}

VEX_STATUS VexGetVolumeInfo(VEX_HANDLE session, VEX_HANDLE volume, VEX_VOLUME_INFO* info) {
  return readRecord(__func__, &Machine::volumes, session, volume, info);
}

VEX_STATUS VexGetPortInfo(VEX_HANDLE session, VEX_HANDLE port, VEX_PORT_INFO* info) {
  return readRecord(__func__, &Machine::ports, session, port, info);
}

VEX_STATUS VexGetRaidInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, VEX_RAID_INFO* info) {
  return readRecord(__func__, &Machine::raids, session, raidInfo, info);
}

VEX_STATUS VexGetRaidLevelInfo(VEX_HANDLE session, VEX_HANDLE raidInfo, uint32_t raidLevel,
                               VEX_RAID_LEVEL_INFO* info) {
  const auto answer = [=](const Machine& machine) {
    if (!machine.raids.has(raidInfo)) return VEX_STATUS_INVALID_HANDLE;
    const auto level = machine.raidLevels.find({raidInfo, raidLevel});
    return store(level == machine.raidLevels.end() ? VEX_RAID_LEVEL_INFO{} : level->second, info);
  };
  return respond(__func__, inSession(session, answer), session, raidInfo, raidLevel, outRecord(info));
}
