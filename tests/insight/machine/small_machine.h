#ifndef MIRN_TESTS_INSIGHT_MACHINE_SMALL_MACHINE_H
#define MIRN_TESTS_INSIGHT_MACHINE_SMALL_MACHINE_H

#include "view/machine_view.h"

namespace insight {

/// When the picture of the small machine was taken.
constexpr std::uint64_t kSmallMachineTakenAt = 1'700'000'000'000;

/// A RAID 5 "Data" (V) on an array (A) of three disks (D0 to D2), and a spare (S) that fits, all behind one
/// controller (C). Nothing is wrong with it.
inline MachineView smallMachine() {
  MachineView machine;
  machine.position = {L"0123456789abcdef", 7, 5, 3};
  machine.takenAt = kSmallMachineTakenAt;
  machine.serviceState = L"NORMAL";
  machine.controllers.push_back({L"C", L"Controller", L"R"});
  machine.arrays.push_back({L"A", L"Array_0000", {L"C"}, 0});
  for (const wchar_t* const id : {L"D0", L"D1", L"D2", L"S"}) {
    DiskView disk;
    disk.id = id;
    disk.controllerId = L"C";
    disk.state = L"NORMAL";
    disk.type = L"SATA";
    disk.serialNumber = L"N-" + disk.id;
    disk.totalBytes = std::uint64_t{1} << 40U;
    disk.usage = disk.id == L"S" ? L"SPARE" : L"ARRAY_MEMBER";
    if (disk.id != L"S") disk.arrayId = L"A";
    machine.disks.push_back(disk);
  }
  VolumeView volume;
  volume.id = L"V";
  volume.name = L"Data";
  volume.arrayId = L"A";
  volume.state = L"NORMAL";
  volume.level = L"RAID_5";
  volume.writeHolePolicy = L"RWH_OFF";
  volume.diskCount = 3;
  volume.isInitialized = true;
  machine.volumes.push_back(volume);
  machine.index();
  return machine;
}

}  // namespace insight

#endif
