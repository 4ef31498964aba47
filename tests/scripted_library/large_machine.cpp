#include "scripted_library/large_machine.h"

#include <cstdint>
#include <string>

namespace large_machine {

namespace {

constexpr VEX_HANDLE kRaid = 1;

// The handles of a kind stand in a row from here on.
constexpr VEX_HANDLE kFirstController = 1000;
constexpr VEX_HANDLE kFirstDisk = 100000;
constexpr VEX_HANDLE kFirstPhy = 200000;
constexpr VEX_HANDLE kFirstControllerPort = 300000;
constexpr VEX_HANDLE kFirstDiskPort = 400000;
constexpr VEX_HANDLE kFirstArray = 500000;
constexpr VEX_HANDLE kFirstVolume = 600000;

VEX_HANDLE handleAt(VEX_HANDLE first, std::size_t place) { return first + static_cast<VEX_HANDLE>(place); }

/// As long as the field allows, and another one for each object.
template <std::size_t Size>
void fillText(char (&field)[Size], const std::string& start) {
  setText(field, start + std::string(Size, 'x'));
}

void addDisk(ScriptedMachine& machine, std::size_t place) {
  const VEX_HANDLE controller = handleAt(kFirstController, place / kDisksPerController);
  const VEX_HANDLE handle = handleAt(kFirstDisk, place);
  VEX_END_DEVICE_INFO& disk = machine.addDisk(handle, controller);
  fillText(disk.uniqueId, std::to_string(handle));
  fillText(disk.serialNumber, std::to_string(handle));
  fillText(disk.model, "Model ");
  fillText(disk.firmware, "Firmware ");
  machine.addPhy(handleAt(kFirstPhy, place), handle);
  machine.addControllerPort(handleAt(kFirstControllerPort, place), controller);
  machine.addDiskPort(handleAt(kFirstDiskPort, place), handle, handleAt(kFirstControllerPort, place));
}

void addArray(ScriptedMachine& machine, std::size_t place, std::size_t disks) {
  std::vector<VEX_HANDLE> members;
  for (std::size_t i = 0; i < disks; ++i) members.push_back(handleAt(kFirstDisk, place * disks + i));
  const VEX_HANDLE array = handleAt(kFirstArray, place);
  machine.addArray(array, "Array_" + std::to_string(place), members);
  for (const std::size_t volume : {2 * place, 2 * place + 1}) {
    machine.addVolume(handleAt(kFirstVolume, volume), "Volume_" + std::to_string(volume), array,
                      VEX_RAID_LEVEL_5);
  }
}

ScriptedMachine make(std::size_t disks, std::size_t disksPerArray) {
  ScriptedMachine machine;
  machine.addRaid(kRaid);
  for (std::size_t i = 0; i < disks / kDisksPerController + 2; ++i) {
    machine.addController(handleAt(kFirstController, i), VEX_CONTROLLER_TYPE_SATA, kRaid);
  }
  for (std::size_t i = 0; i < disks; ++i) addDisk(machine, i);
  for (std::size_t i = 0; i < disks / disksPerArray; ++i) addArray(machine, i, disksPerArray);
  return machine;
}

}  // namespace

ScriptedMachine make(std::size_t disks) { return make(disks, kDisksPerArray); }

ScriptedMachine makeWithVolumes(std::size_t volumes) { return make(volumes / 2 * 3, 3); }

}  // namespace large_machine
