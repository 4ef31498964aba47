#ifndef MIRN_TESTS_SIMULATOR_WORKBENCH_H
#define MIRN_TESTS_SIMULATOR_WORKBENCH_H

/// A machine made for tests. Its plain disks have 1008 MiB, of which volumes can take 1000, and all work goes
/// at 100 MiB of a disk in a second, so that sizes and times are easily told.
///
/// Controller A can do everything: array `mirror` (a0, a1) with a RAID 1 of 400 MiB, `five` (a2 to a4) with a
/// RAID 5 of 1000 MiB, `stripe` (a5, a6) with a RAID 0 of 600 MiB, `ten` (a10 to a13) with a RAID 10 of 2000
/// MiB; a7 to a9 are free, and so are odd ones told by their names. Controller B supports nothing that can be
/// left out, and its engine knows RAID 0 and 1 only; array `plain` (b0, b1) has a RAID 1 of 400 MiB.
/// Controller C has no RAID.
constexpr char kWorkbench[] = R"({
  "rates": {"rebuildMiBps": 100, "initializeMiBps": 100, "verifyMiBps": 100, "migrateMiBps": 100},
  "engines": [
    {"id": "engine", "maxDisksPerArray": 6, "maxRaidDisksSupported": 18, "maxVolumesPerArray": 2, "maxVolumesPerHba": 6,
     "dedicatedSpareSupport": true, "rwhPolicies": ["RWH_OFF", "RWH_DISTRIBUTED", "RWH_JOURNALING_DRIVE"],
     "levels": [
       {"level": "RAID_0", "minDisks": 2, "maxDisks": 6, "defaultStripSize": "SIZE_128KB",
        "stripSizes": ["SIZE_64KB", "SIZE_128KB"], "migrationTargets": ["RAID_0", "RAID_5", "RAID_10"],
        "migrationRequiresDisk": ["RAID_5", "RAID_10"]},
       {"level": "RAID_1", "minDisks": 2, "maxDisks": 2, "oddDiskCount": false, "defaultStripSize": "SIZE_64KB",
        "stripSizes": ["SIZE_64KB"], "migrationTargets": ["RAID_0", "RAID_5"],
        "migrationRequiresDisk": ["RAID_5"]},
       {"level": "RAID_5", "minDisks": 3, "maxDisks": 5, "defaultStripSize": "SIZE_64KB",
        "stripSizes": ["SIZE_64KB", "SIZE_128KB"], "migrationTargets": ["RAID_0", "RAID_5"]},
       {"level": "RAID_10", "minDisks": 4, "maxDisks": 4, "oddDiskCount": false,
        "defaultStripSize": "SIZE_64KB", "stripSizes": ["SIZE_64KB"], "migrationTargets": ["RAID_5"]}]},
    {"id": "small engine", "maxDisksPerArray": 4, "maxVolumesPerHba": 2, "globalSpareSupport": false,
     "dedicatedSpareSupport": true, "createFromExistingSupport": false, "ordanDrivesOnly": true, "rwhPolicies": ["RWH_OFF"],
     "levels": [
       {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_128KB",
        "stripSizes": ["SIZE_128KB"], "migrationTargets": ["RAID_0"]},
       {"level": "RAID_1", "minDisks": 2, "maxDisks": 2, "oddDiskCount": false, "defaultStripSize": "SIZE_64KB",
        "stripSizes": ["SIZE_64KB"]}]},
    {"id": "engine switched off", "raidEnabled": false, "emptyArraysSupport": true,
     "levels": [
       {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_128KB",
        "stripSizes": ["SIZE_128KB"]}]}
  ],
  "controllers": [
    {"id": "A", "name": "Can do everything", "type": "Lyx", "engine": "engine", "supportsPortLocate": true,
     "readPatrolSupported": true, "rohiSupported": true},
    {"id": "B", "name": "Can do little", "type": "NVMe", "engine": "small engine", "twoTbVolumeSupport": false,
     "supportsMarkAsNormal": false, "supportsVolumeDelete": false, "supportsArrayCreate": false,
     "supportsVolumeModify": false, "supportsVolumeRename": false, "supportsAddDisksToArray": false,
     "supportsVolumeSetCachePolicy": false, "supportsVolumeCancelVerify": false, "supportsMarkAsSpare": false},
    {"id": "C", "name": "Can do no RAID", "type": "SATA"},
    {"id": "D", "name": "Has a small engine", "type": "NVMe", "engine": "small engine",
     "twoTbVolumeSupport": false, "twoTbDiskSupport": false, "rohiSupported": true},
    {"id": "E", "name": "Has its RAID off", "type": "SATA", "engine": "engine switched off"}
  ],
  "devices": [
    {"id": "a0", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a1", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a2", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a3", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a4", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a5", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a6", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a7", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a8", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a9", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a10", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a11", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a12", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "a13", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "large", "controller": "A", "totalSize": 2105540608, "managedHotplug": true, "phys": [{}]},
    {"id": "small", "controller": "A", "totalSize": 113246208, "managedHotplug": true, "phys": [{}]},
    {"id": "sectors", "controller": "A", "totalSize": 1056964608, "logicalSectorSize": 4096, "phys": [{}]},
    {"id": "x8", "controller": "A", "totalSize": 1056964608, "x8Disk": "X8_A", "phys": [{}]},
    {"id": "other x8", "controller": "A", "totalSize": 1056964608, "x8Disk": "X8_B", "phys": [{}]},
    {"id": "odd", "controller": "A", "totalSize": 1056964608, "state": "UNSUPPORTED", "phys": [{}]},
    {"id": "system", "controller": "A", "totalSize": 1056964608, "systemDisk": true, "managedHotplug": true,
     "phys": [{}]},
    {"id": "s0", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "s1", "controller": "A", "totalSize": 1056964608, "managedHotplug": true, "phys": [{}]},
    {"id": "uprev", "controller": "A", "totalSize": 1056964608, "state": "CONFIG_IS_UPREV", "phys": [{}]},
    {"id": "journal", "controller": "A", "totalSize": 2105540608, "managedHotplug": true, "phys": [{}]},
    {"id": "optical", "controller": "A", "deviceType": "NON_DISK_STORAGE", "phys": [{}]},
    {"id": "locked", "controller": "A", "totalSize": 1056964608, "state": "LOCKED",
     "userPassword": "user", "masterPassword": "01234567890123456789012345678901", "phys": [{}]},
    {"id": "smart", "controller": "A", "totalSize": 1056964608, "state": "SMART_EVENT_TRIGGERED", "phys": [{}]},
    {"id": "b0", "controller": "B", "totalSize": 1056964608, "isOrdanNVMe": true, "phys": [{}]},
    {"id": "b1", "controller": "B", "totalSize": 1056964608, "isOrdanNVMe": true, "phys": [{}]},
    {"id": "b2", "controller": "B", "totalSize": 1056964608, "phys": [{}]},
    {"id": "b3", "controller": "B", "totalSize": 1056964608, "isOrdanNVMe": true, "phys": [{}]},
    {"id": "c0", "controller": "C", "totalSize": 1056964608, "phys": [{}]},
    {"id": "c1", "controller": "C", "totalSize": 1056964608, "phys": [{}]},
    {"id": "d1", "controller": "D", "totalSize": 1900000000000, "isOrdanNVMe": true},
    {"id": "d2", "controller": "D", "totalSize": 1900000000000, "isOrdanNVMe": true},
    {"id": "d3", "controller": "D", "totalSize": 1900000000000},
    {"id": "d4", "controller": "D", "totalSize": 1900000000000, "isOrdanNVMe": true},
    {"id": "d5", "controller": "D", "totalSize": 1900000000000, "isOrdanNVMe": true},
    {"id": "d6", "controller": "D", "totalSize": 3000000000000, "isOrdanNVMe": true},
    {"id": "e0", "controller": "E", "totalSize": 1056964608},
    {"id": "e1", "controller": "E", "totalSize": 1056964608},
    {"id": "e2", "controller": "E", "totalSize": 1056964608},
    {"id": "e3", "controller": "E", "totalSize": 1056964608}
  ],
  "ports": [
    {"id": "port A", "device": "A", "connectedTo": "port a0"},
    {"id": "port a0", "device": "a0"},
    {"id": "port B", "device": "B"}
  ],
  "arrays": [
    {"id": "array mirror", "name": "mirror", "disks": ["a0", "a1"]},
    {"id": "array five", "name": "five", "disks": ["a2", "a3", "a4"]},
    {"id": "array stripe", "name": "stripe", "disks": ["a5", "a6"]},
    {"id": "array ten", "name": "ten", "disks": ["a10", "a11", "a12", "a13"]},
    {"id": "array boot", "name": "boot", "disks": ["s0", "s1"]},
    {"id": "array plain", "name": "plain", "disks": ["b0", "b1"]},
    {"id": "array tiny", "name": "tiny", "disks": ["d1", "d2"]},
    {"id": "array asleep", "name": "asleep", "disks": ["e0", "e1"]}
  ],
  "volumes": [
    {"id": "volume mirror", "name": "mirror", "array": "array mirror", "raidLevel": "RAID_1", "size": 419430400},
    {"id": "volume five", "name": "five", "array": "array five", "raidLevel": "RAID_5", "size": 1048576000},
    {"id": "volume stripe", "name": "stripe", "array": "array stripe", "raidLevel": "RAID_0",
     "size": 629145600},
    {"id": "volume ten", "name": "ten", "array": "array ten", "raidLevel": "RAID_10", "size": 2097152000},
    {"id": "volume boot", "name": "boot", "array": "array boot", "raidLevel": "RAID_1", "size": 419430400,
     "systemVolume": true},
    {"id": "volume tiny", "name": "tiny", "array": "array tiny", "raidLevel": "RAID_0", "size": 419430400,
     "stripSize": "SIZE_128KB"},
    {"id": "volume plain", "name": "plain", "array": "array plain", "raidLevel": "RAID_1", "size": 419430400}
  ]
})";

#endif
