#include "scripted_library/small_machine.h"

namespace small_machine {

namespace {

void attachDisk(ScriptedMachine& machine, VEX_HANDLE disk, VEX_HANDLE controller) {
  machine.addDisk(disk, controller);
  machine.addPhy(phyOf(disk), disk);
  machine.addControllerPort(controllerPortOf(disk), controller);
  machine.addDiskPort(portOf(disk), disk, controllerPortOf(disk));
}

}  // namespace

ScriptedMachine make() {
  ScriptedMachine machine;
  machine.addRaid(kSataRaid);
  machine.addRaid(kLyxRaid);
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, kSataRaid);
  machine.addController(kLyx, VEX_CONTROLLER_TYPE_LYX, kLyxRaid);
  for (VEX_HANDLE disk = kMember1; disk <= kFree2; ++disk) attachDisk(machine, disk, kSata);
  for (VEX_HANDLE disk = kLyxDisk1; disk <= kLyxDisk3; ++disk) attachDisk(machine, disk, kLyx);
  machine.addArray(kArray, "Array_0", {kMember1, kMember2});
  machine.addVolume(kSystemVolume, "System", kArray, VEX_RAID_LEVEL_1).systemVolume = 1;
  machine.addVolume(kDataVolume, "Data", kArray, VEX_RAID_LEVEL_0);
  return machine;
}

}  // namespace small_machine
