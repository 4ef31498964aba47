#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_SMALL_MACHINE_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_SMALL_MACHINE_H

#include "scripted_library/scripted_machine.h"

/// A machine with one of everything, small enough to be known by heart. The SATA controller has RAID engine 1
/// and four disks: two form the array "Array_0" with the RAID 1 volume "System" (a system volume, handle 51)
/// and the RAID 0 volume "Data" (52), two are free. The Lyx controller has RAID engine 2 and three disks:
/// none in an array. Each disk has a phy and a port, and each controller a port per disk.
namespace small_machine {

constexpr VEX_HANDLE kSataRaid = 1;
constexpr VEX_HANDLE kLyxRaid = 2;
constexpr VEX_HANDLE kSata = 11;
constexpr VEX_HANDLE kLyx = 12;
constexpr VEX_HANDLE kMember1 = 21;
constexpr VEX_HANDLE kMember2 = 22;
constexpr VEX_HANDLE kFree1 = 23;
constexpr VEX_HANDLE kFree2 = 24;
constexpr VEX_HANDLE kLyxDisk1 = 25;
constexpr VEX_HANDLE kLyxDisk2 = 26;
constexpr VEX_HANDLE kLyxDisk3 = 27;
constexpr VEX_HANDLE kArray = 41;
constexpr VEX_HANDLE kSystemVolume = 51;
constexpr VEX_HANDLE kDataVolume = 52;

// The phy, the controller's port and the disk's own port of a disk.
constexpr VEX_HANDLE phyOf(VEX_HANDLE disk) { return disk + 10; }
constexpr VEX_HANDLE controllerPortOf(VEX_HANDLE disk) { return disk + 40; }
constexpr VEX_HANDLE portOf(VEX_HANDLE disk) { return disk + 50; }

ScriptedMachine make();

}  // namespace small_machine

#endif
