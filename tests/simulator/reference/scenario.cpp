#include "simulator/reference/scenario.h"

#include <sstream>

namespace reference {
namespace {

constexpr std::uint32_t kR0 = VEX_RAID_LEVEL_0;
constexpr std::uint32_t kR1 = VEX_RAID_LEVEL_1;
constexpr std::uint32_t kR5 = VEX_RAID_LEVEL_5;
constexpr std::uint32_t kR10 = VEX_RAID_LEVEL_10;
constexpr std::uint32_t k64 = VEX_STRIP_SIZE_64KB;
constexpr std::uint32_t k128 = VEX_STRIP_SIZE_128KB;

const std::vector<LevelRow> kAllLevels = {
    {kR0, 2, 6, k64 | k128, kR0 | kR5 | kR10, kR5 | kR10},
    {kR1, 2, 2, k64, kR0 | kR5, kR5, true, false},
    {kR5, 3, 6, k64 | k128, kR0 | kR5, 0},
    {kR10, 4, 6, k64, kR0 | kR5 | kR10, 0},
};

const std::vector<LevelRow> kTwoLevels = {{kR0, 2, 4, k64 | k128, kR0 | kR1, 0}, {kR1, 2, 2, k64, kR0, 0}};

void addEngines(Machine& machine) {
  machine.engines = {
      {"engine", 6, 20, 2, 8, true, true, true, false, false, 7, kAllLevels},
      {"strict", 4, 12, 3, 4, false, true, false, true, true, 1, kTwoLevels},
      {"plain", 6, 12, 2, 4, true, false, true, true, false, 3, kAllLevels},
  };
  const Engine* const engine = machine.engines.data();
  machine.controllers = {
      {"A", engine, true, true},      {"B", engine + 1, false, false}, {"C", nullptr, true, true},
      {"D", engine + 2, false, true}, {"E", engine, false, false},
  };
}

class Shelf {
 public:
  explicit Shelf(Machine& machine) : m_machine(machine) {}

  /// Puts `count` disks in; returns the last one.
  Disk& put(std::size_t controller, int count, std::uint64_t size, std::uint64_t sector = 512) {
    Disk* last = nullptr;
    for (int i = 0; i < count; ++i) {
      const auto number = static_cast<Handle>(m_machine.disks.size() + 1);
      Disk& disk = m_machine.disks[number];
      disk.handle = number;
      disk.bay = static_cast<int>(number);
      disk.id = "d" + std::to_string(number);
      disk.controller = &m_machine.controllers[controller];
      disk.size = size;
      disk.sector = sector;
      disk.physicalSector = sector;
      disk.password = number % 9 == 0 ? "" : "user";
      disk.hasHotPlug = number % 5 != 0;
      last = &disk;
    }
    return *last;
  }

 private:
  Machine& m_machine;
};

constexpr std::uint64_t kUsual = 1008 * kMiB;
constexpr std::uint64_t kLarge = 3000000000000;

void addDisks(Machine& machine) {
  Shelf shelf(machine);
  shelf.put(0, 10, kUsual);
  shelf.put(0, 3, 2108 * kMiB);
  shelf.put(0, 2, 508 * kMiB + 4096);
  shelf.put(0, 3, kUsual, 4096);
  shelf.put(0, 1, kUsual).isX8 = true;
  shelf.put(0, 1, kUsual).isX8 = true;
  shelf.put(0, 1, kUsual).condition = VEX_DISK_STATE_UNSUPPORTED;
  shelf.put(0, 1, kUsual).condition = VEX_DISK_STATE_CONFIG_IS_UPREV;
  shelf.put(0, 1, kUsual).condition = VEX_DISK_STATE_MANUAL_OFFLINE;
  shelf.put(0, 1, kUsual).system = true;
  shelf.put(1, 6, 1900000000000);
  shelf.put(1, 1, kLarge);
  for (auto& entry : machine.disks) entry.second.isOrdan = entry.second.controller == &machine.controllers[1];
  shelf.put(1, 1, 1900000000000);  // of another make
  shelf.put(2, 2, kUsual);
  shelf.put(3, 6, kUsual);
  shelf.put(3, 2, kLarge);
  shelf.put(4, 5, kUsual);
  shelf.put(4, 1, kLarge);
}

void addVolume(Machine& machine, Handle handle, const std::vector<Handle>& disks, std::uint32_t level,
               std::uint64_t size) {
  Array& array = machine.arrays[handle];
  array.handle = handle;
  array.name = "Old_" + std::to_string(handle);
  array.disks = disks;
  array.controller = machine.disks.at(disks.front()).controller;
  for (const Handle disk : disks) machine.disks.at(disk).array = handle;
  Volume& volume = machine.volumes[handle];
  volume.handle = handle;
  volume.array = handle;
  volume.name = "old " + std::to_string(handle);
  volume.level = level;
  volume.strip = k64;
  volume.size = size;
  volume.latentErrors = 37;
  volume.latentBadBlocks = 11;
}

template <class Text>
std::string quoted(const Text& text) {
  return "\"" + std::string(text) + "\"";
}

const char* flag(bool value) { return value ? "true" : "false"; }

std::string levelWord(std::uint32_t level) {
  if (level == kR0) return "\"RAID_0\"";
  if (level == kR1) return "\"RAID_1\"";
  return level == kR5 ? "\"RAID_5\"" : "\"RAID_10\"";
}

std::string levelWords(std::uint32_t levels) {
  std::string words;
  for (const std::uint32_t level : {kR0, kR1, kR5, kR10}) {
    if ((levels & level) != 0) words += (words.empty() ? "" : ", ") + levelWord(level);
  }
  return "[" + words + "]";
}

void write(std::ostream& out, const LevelRow& row) {
  const bool hasBoth = (row.strips & k128) != 0;
  out << R"({"level": )" << levelWord(row.level) << R"(, "minDisks": )" << row.minDisks << R"(, "maxDisks": )"
      << row.maxDisks << R"(, "defaultStripSize": "SIZE_64KB", "stripSizes": ["SIZE_64KB")"
      << (hasBoth ? R"(, "SIZE_128KB")" : "") << R"(], "migrationTargets": )" << levelWords(row.targets)
      << R"(, "migrationRequiresDisk": )" << levelWords(row.needsDisk) << R"(, "evenDiskCount": )"
      << flag(row.even) << R"(, "oddDiskCount": )" << flag(row.odd) << "}";
}

void write(std::ostream& out, const Engine& engine) {
  out << R"({"id": )" << quoted(engine.id) << R"(, "maxDisksPerArray": )" << engine.maxDisksPerArray
      << R"(, "maxRaidDisksSupported": )" << engine.maxRaidDisks << R"(, "maxVolumesPerArray": )"
      << engine.maxVolumesPerArray << R"(, "maxVolumesPerHba": )" << engine.maxVolumesPerController
      << R"(, "globalSpareSupport": )" << flag(engine.globalSpares) << R"(, "dedicatedSpareSupport": )"
      << flag(engine.dedicatedSpares) << R"(, "createFromExistingSupport": )" << flag(engine.fromExisting)
      << R"(, "emptyArraysSupport": )" << flag(engine.emptyArrays) << R"(, "ordanDrivesOnly": )"
      << flag(engine.ordanOnly) << R"(, "rwhPolicies": ["RWH_OFF")"
      << ((engine.policies & 2) != 0 ? R"(, "RWH_DISTRIBUTED")" : "")
      << ((engine.policies & 4) != 0 ? R"(, "RWH_JOURNALING_DRIVE")" : "") << R"(], "levels": [)";
  const char* separator = "";
  for (const LevelRow& row : engine.levels) {
    out << separator;
    write(out, row);
    separator = ", ";
  }
  out << "]}";
}

void write(std::ostream& out, const Controller& controller) {
  out << R"({"id": )" << quoted(controller.id) << R"(, "name": )" << quoted(controller.id)
      << R"(, "type": "SATA", "readPatrolSupported": true, "rohiSupported": true, "twoTbVolumeSupport": )"
      << flag(controller.twoTbVolumes) << R"(, "twoTbDiskSupport": )" << flag(controller.twoTbDisks);
  if (controller.engine != nullptr) out << R"(, "engine": )" << quoted(controller.engine->id);
  out << "}";
}

std::string conditionWord(std::uint32_t condition) {
  if (condition == VEX_DISK_STATE_UNSUPPORTED) return "UNSUPPORTED";
  if (condition == VEX_DISK_STATE_CONFIG_IS_UPREV) return "CONFIG_IS_UPREV";
  return condition == VEX_DISK_STATE_MANUAL_OFFLINE ? "MANUAL_OFFLINE" : "NORMAL";
}

void write(std::ostream& out, const Disk& disk) {
  out << R"({"id": )" << quoted(disk.id) << R"(, "controller": )" << quoted(disk.controller->id)
      << R"(, "totalSize": )" << disk.size << R"(, "logicalSectorSize": )" << disk.sector
      << R"(, "physicalSectorSize": )" << disk.physicalSector << R"(, "x8Disk": )"
      << quoted(disk.isX8 ? "X8_A" : "NONE") << R"(, "isOrdanNVMe": )" << flag(disk.isOrdan)
      << R"(, "managedHotplug": )" << flag(disk.hasHotPlug) << R"(, "systemDisk": )" << flag(disk.system)
      << R"(, "userPassword": )" << quoted(disk.password) << R"(, "state": )"
      << quoted(conditionWord(disk.condition)) << R"(, "phys": [{}]})";
}

void write(std::ostream& out, const Machine& machine, const Array& array) {
  out << R"({"id": )" << quoted(array.name) << R"(, "name": )" << quoted(array.name) << R"(, "disks": [)";
  const char* separator = "";
  for (const Handle disk : array.disks) {
    out << separator << quoted(machine.disks.at(disk).id);
    separator = ", ";
  }
  out << "]}";
}

void write(std::ostream& out, const Machine& machine, const Volume& volume) {
  out << R"({"id": )" << quoted(volume.name) << R"(, "name": )" << quoted(volume.name) << R"(, "array": )"
      << quoted(machine.arrays.at(volume.array).name) << R"(, "raidLevel": )" << levelWord(volume.level)
      << R"(, "size": )" << volume.size << R"(, "latentErrors": )" << volume.latentErrors
      << R"(, "latentBadBlocks": )" << volume.latentBadBlocks << "}";
}

template <class List, class Write>
void writeList(std::ostream& out, const char* key, const List& list, Write each) {
  out << ",\n\"" << key << "\": [";
  const char* separator = "";
  for (const auto& item : list) {
    out << separator << "\n  ";
    each(item);
    separator = ",";
  }
  out << "]";
}

}  // namespace

Machine firstMachine() {
  Machine machine;
  machine.rate = 100;
  addEngines(machine);
  addDisks(machine);
  addVolume(machine, 1, {1, 2, 3}, kR5, 1000 * kMiB);
  addVolume(machine, 2, {4, 5, 6, 7}, kR10, 1200 * kMiB);
  return machine;
}

std::string scenarioOf(const Machine& machine) {
  std::ostringstream out;
  const auto rate = [&](const char* key) { out << "\"" << key << "\": " << machine.rate; };
  out << R"({"rates": {)";
  rate("rebuildMiBps");
  for (const char* const key : {"initializeMiBps", "verifyMiBps", "migrateMiBps"}) {
    out << ", ";
    rate(key);
  }
  out << "}";
  writeList(out, "engines", machine.engines, [&](const Engine& each) { write(out, each); });
  writeList(out, "controllers", machine.controllers, [&](const Controller& each) { write(out, each); });
  writeList(out, "devices", machine.disks, [&](const auto& each) { write(out, each.second); });
  writeList(out, "ports", machine.disks, [&](const auto& each) {
    const Disk& disk = each.second;
    out << R"({"id": "far )" << disk.id << R"(", "device": )" << quoted(disk.controller->id)
        << R"(, "connectedTo": "port )" << disk.id << R"("}, {"id": "port )" << disk.id << R"(", "device": )"
        << quoted(disk.id) << "}";
  });
  writeList(out, "arrays", machine.arrays, [&](const auto& each) { write(out, machine, each.second); });
  writeList(out, "volumes", machine.volumes, [&](const auto& each) { write(out, machine, each.second); });
  out << "}\n";
  return out.str();
}

}  // namespace reference
