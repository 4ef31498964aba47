#include "insight/machine/random_machine.h"

#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/incidents.h"
#include "engine/work.h"
#include "rules/apply.h"
#include "rules/rules.h"
#include "scenario/scenario.h"

using namespace simulator;

namespace {

constexpr std::uint64_t kDiskSize = 2147483648;
constexpr std::uint64_t kVolumeMiB = 100;  ///< Of a member: two volumes and a journal fit on each disk.

constexpr char kEngines[] = R"([{"id": "engine", "maxDisksPerArray": 6, "maxRaidDisksSupported": 64,
  "maxVolumesPerArray": 3, "maxVolumesPerHba": 32, "dedicatedSpareSupport": true,
  "createFromExistingSupport": true, "rwhPolicies": ["RWH_OFF", "RWH_DISTRIBUTED", "RWH_JOURNALING_DRIVE"],
  "levels": [
    {"level": "RAID_0", "minDisks": 2, "maxDisks": 6, "defaultStripSize": "SIZE_64KB",
     "stripSizes": ["SIZE_64KB", "SIZE_128KB"], "migrationTargets": ["RAID_0", "RAID_5"],
     "migrationRequiresDisk": ["RAID_5"]},
    {"level": "RAID_1", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
     "stripSizes": ["SIZE_64KB"], "migrationTargets": ["RAID_0", "RAID_5"],
     "migrationRequiresDisk": ["RAID_5"]},
    {"level": "RAID_5", "minDisks": 3, "maxDisks": 6, "defaultStripSize": "SIZE_64KB",
     "stripSizes": ["SIZE_64KB", "SIZE_128KB"], "migrationTargets": ["RAID_0", "RAID_5"]},
    {"level": "RAID_10", "minDisks": 4, "maxDisks": 6, "oddDiskCount": false, "defaultStripSize": "SIZE_64KB",
     "stripSizes": ["SIZE_64KB"], "migrationTargets": ["RAID_5"]}]}])";

/// The levels that so many disks can have.
std::vector<const char*> levelsOf(std::size_t disks) {
  std::vector<const char*> levels{"RAID_0"};
  if (disks <= 4) levels.push_back("RAID_1");
  if (disks >= 3) levels.push_back("RAID_5");
  if (disks == 4 || disks == 6) levels.push_back("RAID_10");
  return levels;
}

std::uint64_t dataDisks(std::string_view level, std::size_t disks) {
  if (level == "RAID_1") return 1;
  if (level == "RAID_5") return disks - 1;
  return level == "RAID_10" ? disks / 2 : disks;
}

void append(std::string& list, const std::string& element) {
  if (!list.empty()) list += ", ";
  list += element;
}

std::string quoted(const std::string& text) { return '"' + text + '"'; }

}  // namespace

Machine RandomMachine::next() {
  Machine machine = readScenario(scenario());
  for (std::size_t count = below(4); count > 0; --count) befall(machine);
  return machine;
}

std::string RandomMachine::scenario() {
  m_devices.clear();
  m_arrays.clear();
  m_volumes.clear();
  m_diskCount = m_arrayCount = m_volumeCount = 0;
  std::string controllers;
  const std::size_t controllerCount = 1 + below(2);
  for (std::size_t number = 0; number < controllerCount; ++number) {
    const std::string id = "C" + std::to_string(number);
    append(
        controllers,
        R"({"id": ")" + id + R"(", "name": "Controller )" + id +
            R"(", "type": "Lyx", "engine": "engine", "rohiSupported": true, "readPatrolSupported": true})");
    for (std::size_t count = 1 + below(3); count > 0; --count) addArray(id);
    for (std::size_t count = below(3); count > 0; --count) addDisk(id, true);
    for (std::size_t count = below(4); count > 0; --count) addDisk(id, false);
  }
  return R"({"engines": )" + std::string(kEngines) + R"(, "controllers": [)" + controllers +
         R"(], "devices": [)" + m_devices + R"(], "arrays": [)" + m_arrays + R"(], "volumes": [)" +
         m_volumes + "]}";
}

void RandomMachine::addDisk(const std::string& controller, bool isSpare) {
  const std::string id = "D" + std::to_string(m_diskCount++);
  append(m_devices, R"({"id": ")" + id + R"(", "serialNumber": ")" + id + R"(", "controller": ")" +
                        controller + R"(", "diskType": "Lyx", "totalSize": )" + std::to_string(kDiskSize) +
                        R"(, "managedHotplug": true, "spare": )" + (isSpare ? "true" : "false") +
                        R"(, "phys": [{}]})");
}

void RandomMachine::addArray(const std::string& controller) {
  const std::size_t disks = 2 + below(5);
  std::string members;
  for (std::size_t member = 0; member < disks; ++member) {
    append(members, quoted("D" + std::to_string(m_diskCount)));
    addDisk(controller, false);
  }
  const std::string id = "A" + std::to_string(m_arrayCount++);
  append(m_arrays, R"({"id": ")" + id + R"(", "name": "Array )" + id + R"(", "disks": [)" + members + "]}");
  addVolumes(id, disks);
}

void RandomMachine::addVolumes(const std::string& array, std::size_t disks) {
  const std::vector<const char*> levels = levelsOf(disks);
  for (std::size_t count = 1 + below(2); count > 0; --count) {
    const std::string level = levels[below(levels.size())];
    const std::string id = "V" + std::to_string(m_volumeCount++);
    append(m_volumes, R"({"id": ")" + id + R"(", "name": ")" + id + R"(", "array": ")" + array +
                          R"(", "raidLevel": ")" + level + R"(", "initialized": )" +
                          (oneIn(4) ? "false" : "true") + R"(, "size": )" +
                          std::to_string(kVolumeMiB * kMiB * dataDisks(level, disks)) + "}");
  }
}

/// What cannot happen doesn't.
void RandomMachine::befall(Machine& machine) {
  switch (below(4)) {
    case 0:
    case 1:
      return befallDisk(machine);
    case 2:
      return beginWork(machine);
    default:
      advance(machine, below(2000));
  }
}

void RandomMachine::befallDisk(Machine& machine) {
  auto device = std::as_const(machine).devices.begin();
  std::advance(device, static_cast<std::ptrdiff_t>(below(machine.devices.size())));
  const Handle handle = device->first;
  using Incident = void (*)(Machine&, EndDevice&);
  constexpr Incident kIncidents[] = {failDisk, pullDevice, insertDevice, lockDisk, raiseSmartEvent};
  const Incident incident = kIncidents[below(std::size(kIncidents))];
  apply(machine, [&](Machine& changed) { incident(changed, changed.devices.at(handle)); });
}

void RandomMachine::beginWork(Machine& machine) {
  auto entry = std::as_const(machine).volumes.begin();
  std::advance(entry, static_cast<std::ptrdiff_t>(below(machine.volumes.size())));
  const Handle volume = entry->first;
  const std::size_t which = below(4);
  apply(machine, [&](Machine& changed) {
    switch (which) {
      case 0:
        return verifyVolume(changed, volume, 1);
      case 1:
        return initializeVolume(changed, volume);
      case 2:
        return expandVolume(changed, volume, 0);
      default:
        return modifyRaidLevel(changed, volume, VEX_RAID_LEVEL_0, 0, 0, {});
    }
  });
}
