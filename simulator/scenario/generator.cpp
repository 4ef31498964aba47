#include "scenario/generator.h"

#include <string>

#include "model/capacity.h"
#include "model/links.h"

namespace simulator {
namespace {

constexpr std::uint32_t kDisksPerController = 64;
constexpr std::uint32_t kDisksPerArray = 4;
constexpr std::uint32_t kDisksPerSpare = 32;
constexpr std::uint32_t kDisksPerSmartEvent = 97;
constexpr std::uint32_t kArraysPerSecondVolume = 4;
constexpr std::uint64_t kDiskSize = 1'600'321'314'816;

std::string numbered(const char* prefix, std::uint32_t number) { return prefix + std::to_string(number); }

class Generator {
 public:
  explicit Generator(std::uint32_t devices) : m_devices(devices) {}

  Machine run() {
    addEngine();
    for (std::uint32_t disk = 0; disk < m_devices; ++disk) {
      if (disk % kDisksPerController == 0) addController(disk / kDisksPerController);
      addDisk(disk);
      addPorts(disk);
      if (endsArray(disk)) addArrayOf(disk);
    }
    return std::move(m_machine);
  }

 private:
  static bool isSpare(std::uint32_t disk) { return disk % kDisksPerSpare == kDisksPerSpare - 1; }

  /// The four disks ahead of a spare and the spare make no array.
  static bool endsArray(std::uint32_t disk) {
    return disk % kDisksPerArray == kDisksPerArray - 1 && !isSpare(disk);
  }

  void addEngine() {
    RaidEngine engine;
    engine.handle = m_engine = takeHandle(m_machine);
    engine.id = "ENGINE";
    engine.maxRaidDisksSupported = m_devices;
    engine.maxVolumesPerHba = kDisksPerController;
    constexpr std::uint32_t kStrips = bitOf(StripSize::SIZE_64KB) | bitOf(StripSize::SIZE_128KB);
    engine.levels.push_back({RaidLevel::RAID_0, 2, 8, StripSize::SIZE_128KB, kStrips});
    engine.levels.push_back({RaidLevel::RAID_5, 3, 8, StripSize::SIZE_64KB, kStrips});
    m_machine.engines.add(m_engine, std::move(engine));
  }

  void addController(std::uint32_t number) {
    Controller controller;
    controller.handle = m_controller = takeHandle(m_machine);
    controller.id = numbered("CONTROLLER-", number);
    controller.address = number;
    controller.name = numbered("Ordan Ovraline Lyx RAID Controller ", number);
    controller.type = ControllerType::Lyx;
    controller.engine = m_engine;
    controller.subClassCode = 4;
    controller.supportsPortLocate = true;
    m_machine.controllers.add(m_controller, std::move(controller));
  }

  void addDisk(std::uint32_t number) {
    EndDevice disk;
    disk.handle = m_disk = takeHandle(m_machine);
    disk.id = numbered("DISK-", number);
    disk.controller = m_controller;
    disk.address = number;
    disk.vendorId = "1F75";
    disk.serialNumber = numbered("OD1T", 10'000'000 + number);
    disk.model = "Ordan D7 1600";
    disk.firmware = "D7F2210";
    disk.diskType = DiskType::Lyx;
    disk.totalSize = kDiskSize;
    disk.managedHotplug = true;
    disk.isOrdanNVMe = true;
    disk.spare = isSpare(number);
    if (number % kDisksPerSmartEvent == kDisksPerSmartEvent - 1) disk.smartEvent = true;
    disk.phys.push_back({takeHandle(m_machine), LinkSpeed::UNKNOWN});
    m_machine.devices.add(m_disk, std::move(disk));
  }

  void addPorts(std::uint32_t number) {
    const Handle near = takeHandle(m_machine);
    const Handle far = takeHandle(m_machine);
    m_machine.ports.add(near, {near, numbered("PORT-", number), number, m_controller, far});
    m_machine.ports.add(far, {far, numbered("DISK-PORT-", number), number, m_disk, near});
  }

  void addArrayOf(std::uint32_t lastDisk) {
    Array array;
    array.handle = takeHandle(m_machine);
    const std::uint32_t number = lastDisk / kDisksPerArray;
    array.id = numbered("ARRAY-", number);
    array.name = numbered("Array_", number);
    // A disk, its phy and its two ports have handles in a row.
    constexpr Handle kHandlesPerDisk = 4;
    for (Handle back = kDisksPerArray; back > 0; --back) {
      array.disks.push_back(m_disk - (back - 1) * kHandlesPerDisk);
    }
    const Array& added = addArray(m_machine, std::move(array));
    const bool hasSecond = number % kArraysPerSecondVolume == 0;
    addVolumeTo(added, numbered("Volume_", number), RaidLevel::RAID_5, hasSecond ? 2 : 1);
    if (hasSecond) addVolumeTo(added, numbered("Scratch_", number), RaidLevel::RAID_0, 1);
  }

  /// Takes one part of what is free on each disk.
  void addVolumeTo(const Array& array, const std::string& name, RaidLevel level, std::uint64_t parts) {
    Volume volume;
    volume.handle = takeHandle(m_machine);
    volume.id = name;
    volume.name = name;
    volume.array = array.handle;
    volume.ordinal = static_cast<std::uint32_t>(array.volumes.size());
    volume.level = level;
    const std::uint64_t share = freePerDisk(m_machine, array) / parts / kMiB * kMiB;
    volume.size = share * dataDisks(level, array.disks.size());
    addVolume(m_machine, std::move(volume));
  }

  std::uint32_t m_devices;
  Machine m_machine;
  Handle m_engine = 0;
  Handle m_controller = 0;
  Handle m_disk = 0;
};

}  // namespace

Machine generateMachine(std::uint32_t devices) { return Generator(devices).run(); }

}  // namespace simulator
