#include "scenario/relate.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "engine/settle.h"
#include "engine/work.h"
#include "model/capability.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/membership.h"
#include "model/names.h"
#include "model/redundancy.h"
#include "scenario/scenario.h"

namespace simulator {
namespace {

std::string indexed(const std::string& path, const char* key, std::size_t index) {
  return path + "." + key + "[" + std::to_string(index) + "]";
}

/// More volumes than this share no array.
constexpr std::uint64_t kMaxCarryMs = 1'000'000;

class Relating {
 public:
  Relating(Machine& machine, const Loading& loading) : m_machine(machine), m_loading(loading) {}

  void run() {
    for (auto& entry : m_machine.engines) checkEngine(entry.second);
    for (auto& entry : m_machine.controllers) checkController(entry.second);
    for (auto& entry : m_machine.devices) relateDevice(entry.second);
    for (auto& entry : m_machine.ports) relatePort(entry.second);
    relateArrays();
    relateVolumes();
    for (const auto& entry : m_machine.devices) {
      checkBay(entry.second);
      checkRole(entry.second);
    }
    for (const auto& entry : m_machine.arrays) checkNotEmpty(entry.second);
    for (auto& entry : m_machine.volumes) relateWork(entry.second);
    settle(m_machine);
  }

 private:
  /// `object` is any object of the file; the message names its place and `key`.
  template <class T>
  void demand(bool condition, const T& object, const char* key, const std::string& text) const {
    if (!condition) throw ScenarioError(m_loading.pathOf(object.handle) + "." + key + ": " + text);
  }

  static void demandAt(bool condition, const std::string& path, const std::string& text) {
    if (!condition) throw ScenarioError(path + ": " + text);
  }

  void checkEngine(const RaidEngine& engine) const {
    const std::string path = m_loading.pathOf(engine.handle);
    for (std::size_t i = 0; i < engine.levels.size(); ++i) {
      const LevelCapability& level = engine.levels[i];
      const std::string at = indexed(path, "levels", i);
      demandAt(findLevel(engine, level.level) == &level, at + ".level", "stands twice");
      demandAt(1 < level.minDisks && level.minDisks <= level.maxDisks, at + ".minDisks",
               "must be 2 at least and maxDisks at most");
      demandAt((level.stripSizes & bitOf(level.defaultStripSize)) != 0, at + ".defaultStripSize",
               "is not one of stripSizes");
      demandAt((level.migrationRequiresDisk & ~level.migrationTargets) == 0, at + ".migrationRequiresDisk",
               "holds a level that migrationTargets does not hold");
    }
  }

  void checkController(const Controller& controller) const {
    demand(!controller.xorEnabled || controller.xorSupported, controller, "xorEnabled", "needs xorSupported");
    demand(!controller.readPatrolEnabled || controller.readPatrolSupported, controller, "readPatrolEnabled",
           "needs readPatrolSupported");
    demand(!controller.rohiEnabled || controller.rohiSupported, controller, "rohiEnabled",
           "needs rohiSupported");
  }

  void relateDevice(EndDevice& device) {
    m_machine.controllers.at(device.controller).devices.push_back(device.handle);
    for (const Phy& phy : device.phys) m_machine.phyOwner.add(phy.handle, device.handle);
    tellFactsApart(device);
    if (device.type != DeviceType::DISK) return;
    demand(usableSize(device) > 0, device, "totalSize", "a disk needs more than 8 MiB");
    demand(device.logicalSectorSize > 0 && device.logicalSectorSize <= UINT32_MAX, device,
           "logicalSectorSize", "must be from 1 to 4294967295");
    demand(device.physicalSectorSize > 0 && device.physicalSectorSize <= UINT32_MAX, device,
           "physicalSectorSize", "must be from 1 to 4294967295");
  }

  /// A state that says the same as a flag is taken as the flag.
  static void tellFactsApart(EndDevice& device) {
    bool* fact = nullptr;
    if (device.condition == DiskState::FAILED) fact = &device.failed;
    if (device.condition == DiskState::LOCKED) fact = &device.locked;
    if (device.condition == DiskState::SMART_EVENT_TRIGGERED) fact = &device.smartEvent;
    if (fact == nullptr) return;
    *fact = true;
    device.condition = DiskState::NORMAL;
  }

  void relatePort(Port& port) {
    Controller* const controller = m_machine.controllers.find(port.device);
    if (controller != nullptr) controller->ports.push_back(port.handle);
    if (port.connectedTo == 0) return;
    Port& farPort = m_machine.ports.at(port.connectedTo);
    demand(farPort.handle != port.handle, port, "connectedTo", "a port cannot be connected to itself");
    demand(farPort.connectedTo == 0 || farPort.connectedTo == port.handle, port, "connectedTo",
           "the far port is connected to another");
    farPort.connectedTo = port.handle;
  }

  void relateArrays() {
    Table<Array> read;
    std::swap(read, m_machine.arrays);
    for (auto& entry : read) {
      checkArray(entry.second);
      addArray(m_machine, std::move(entry.second));
    }
  }

  void checkArray(const Array& array) const {
    demand(!array.disks.empty(), array, "disks", "an array needs a disk");
    const EndDevice& first = m_machine.devices.at(array.disks.front());
    for (std::size_t i = 0; i < array.disks.size(); ++i) {
      const EndDevice& disk = m_machine.devices.at(array.disks[i]);
      const std::string at = indexed(m_loading.pathOf(array.handle), "disks", i);
      demandAt(disk.type == DeviceType::DISK, at, "is not a disk");
      demandAt(std::count(array.disks.begin(), array.disks.end(), disk.handle) == 1, at, "stands twice");
      demandAt(disk.array == 0, at, "is a member of another array");
      demandAt(disk.controller == first.controller, at, "is on another controller than the first disk");
      demandAt(disk.logicalSectorSize == first.logicalSectorSize, at,
               "has another logical sector size than the first disk");
      demandAt(!disk.spare && !disk.foreignMetadata, at, "a spare or a disk with foreign metadata");
    }
    const Controller& controller = m_machine.controllers.at(first.controller);
    demand(controller.engine != 0, array, "disks", "their controller has no RAID engine");
    for (std::size_t i = 0; i < array.disks.size(); ++i) {
      const EndDevice& disk = m_machine.devices.at(array.disks[i]);
      checkDrive(disk, indexed(m_loading.pathOf(array.handle), "disks", i));
    }
    demand(array.disks.size() <= m_machine.engines.at(controller.engine).maxDisksPerArray, array, "disks",
           "are more than the engine's maxDisksPerArray");
  }

  /// A member or spare is a drive that its engine would take.
  void checkDrive(const EndDevice& disk, const std::string& at) const {
    const Controller& controller = m_machine.controllers.at(disk.controller);
    demandAt(!isTooLarge(controller, disk), at, "is over 2 TiB, and its controller takes no such disks");
    demandAt(!isForeign(m_machine.engines.at(controller.engine), disk), at,
             "is no Ordan drive, and the engine takes no others");
  }

  void checkNotEmpty(const Array& array) const {
    demand(!array.volumes.empty() || engineOf(m_machine, array).emptyArraysSupport, array, "disks",
           "no volume stands on them, and the engine has no empty arrays");
  }

  void relateVolumes() {
    Table<Volume> read;
    std::swap(read, m_machine.volumes);
    for (auto& entry : read) claimOrdinal(entry.second);
    for (auto& entry : read) {
      Volume& volume = entry.second;
      chooseOrdinal(volume);
      if (!isRedundant(volume.level)) volume.initialized = true;
      checkVolume(volume);
      completeMigration(volume);
      const Handle handle = volume.handle;
      addVolume(m_machine, std::move(volume));
      fit(m_machine.volumes.at(handle));
    }
  }

  void claimOrdinal(const Volume& volume) {
    if (volume.ordinal == kNoOrdinal) return;
    demand(m_ordinals[volume.array].insert(volume.ordinal).second, volume, "arrayOrdinal",
           "is taken in its array");
  }

  /// Volumes that leave their ordinal out take the first ones that are free, in the order of the file.
  void chooseOrdinal(Volume& volume) {
    if (volume.ordinal != kNoOrdinal) return;
    volume.ordinal = 0;
    while (!m_ordinals[volume.array].insert(volume.ordinal).second) ++volume.ordinal;
  }

  void checkVolume(const Volume& volume) {
    const Array& array = m_machine.arrays.at(volume.array);
    const RaidEngine& engine = engineOf(m_machine, array);
    demand(isVolumeName(volume.name), volume, "name", "is no volume name");
    demand(m_volumeNames.insert(volume.name).second, volume, "name", "is taken by another volume");
    demand(array.volumes.size() < engine.maxVolumesPerArray, volume, "array",
           "has the engine's maxVolumesPerArray already");
    const LevelCapability* const level = findLevel(engine, volume.level);
    demand(level != nullptr, volume, "raidLevel", "the engine has no such level");
    demand(takesDiskCount(*level, array.disks.size()), volume, "raidLevel",
           "does not go with " + std::to_string(array.disks.size()) + " disks on this engine");
    demand(volume.level == RaidLevel::RAID_1 || takesStripSize(*level, volume.stripSize), volume, "stripSize",
           "the engine does not have it at this level");
    for (std::size_t i = 0; i < volume.blank.size(); ++i) {
      demandAt(isStale(volume, volume.blank[i]), indexed(m_loading.pathOf(volume.handle), "blank", i),
               "is not among the stale");
    }
    for (std::size_t i = 0; i < volume.stale.size(); ++i) {
      const bool isMember = m_machine.devices.at(volume.stale[i]).array == volume.array;
      demandAt(isMember, indexed(m_loading.pathOf(volume.handle), "stale", i),
               "is not a disk of the volume's array");
      demandAt(std::count(volume.stale.begin(), volume.stale.end(), volume.stale[i]) == 1,
               indexed(m_loading.pathOf(volume.handle), "stale", i), "stands twice");
    }
    checkX8(volume, array);
    checkJournal(volume, engine);
  }

  void checkX8(const Volume& volume, const Array& array) const {
    const auto isX8 = [&](Handle disk) { return m_machine.devices.at(disk).x8 != X8Role::NONE; };
    const bool holdsX8 = std::any_of(array.disks.begin(), array.disks.end(), isX8);
    demand(!holdsX8 || volume.level == RaidLevel::RAID_0, volume, "raidLevel",
           "X8 disks are for RAID_0 only");
  }

  void checkJournal(const Volume& volume, const RaidEngine& engine) const {
    demand((engine.rwhPolicies & bitOf(volume.rwhPolicy)) != 0 || volume.rwhPolicy == RwhPolicy::RWH_OFF,
           volume, "rwhPolicy", "the engine does not have it");
    demand(volume.level == RaidLevel::RAID_5 || volume.rwhPolicy == RwhPolicy::RWH_OFF, volume, "rwhPolicy",
           "is for RAID_5 only");
    const bool needsDrive = volume.rwhPolicy == RwhPolicy::RWH_JOURNALING_DRIVE;
    demand(needsDrive == (volume.journalingDrive != 0), volume, "journalingDrive",
           "goes with the policy RWH_JOURNALING_DRIVE and no other");
    if (!needsDrive) return;
    const EndDevice& drive = m_machine.devices.at(volume.journalingDrive);
    const Array& array = m_machine.arrays.at(volume.array);
    demand(drive.type == DeviceType::DISK && drive.array == 0 && !drive.spare, volume, "journalingDrive",
           "is a member, a spare or not a disk");
    demand(drive.controller == array.controller, volume, "journalingDrive", "is on another controller");
    demand(drive.journalUsers < journalRoom(drive), volume, "journalingDrive",
           "has no 1 GiB for each of its journals");
  }

  /// What a migration leaves out is as the volume is.
  void completeMigration(Volume& volume) const {
    if (!volume.work || volume.work->kind != WorkKind::MIGRATE) return;
    Work& work = *volume.work;
    const std::string at = m_loading.pathOf(volume.handle) + ".work";
    demand(volume.size > 0, volume, "size", "a volume that migrates needs one");
    if (work.sourceDisks.empty()) work.sourceDisks = m_machine.arrays.at(volume.array).disks;
    if (work.targetSize == 0) work.targetSize = volume.size;
    for (std::size_t i = 0; i < work.sourceDisks.size(); ++i) {
      const bool isMember = m_machine.devices.at(work.sourceDisks[i]).array == volume.array;
      demandAt(isMember, indexed(at, "sourceDisks", i), "is not a disk of the volume's array");
    }
    for (std::size_t i = 0; i < work.catchUp.size(); ++i) {
      demandAt(isStale(volume, work.catchUp[i]), indexed(at, "catchUp", i), "is not among the stale");
    }
    const bool isOfPairs = work.sourceLevel != RaidLevel::RAID_10 || work.sourceDisks.size() % 2 == 0;
    demandAt(isOfPairs && dataDisks(work.sourceLevel, work.sourceDisks.size()) > 0, at + ".sourceLevel",
             "does not go with the number of source disks");
  }

  /// A size of 0 is all that is free when the volume's turn comes.
  void fit(Volume& volume) const {
    const Array& array = m_machine.arrays.at(volume.array);
    if (volume.size == 0) {
      volume.size = freePerDisk(m_machine, array) * dataDisks(volume.level, array.disks.size());
      demand(volume.size > 0, volume, "size", "nothing is free in the array");
    }
    demand(volume.size % m_machine.devices.at(array.disks.front()).logicalSectorSize == 0, volume, "size",
           "is no whole number of sectors");
    demand(volume.work || isWithinCapacity(array), volume, "size", capacityText(array));
  }

  bool isWithinCapacity(const Array& array) const {
    return usedPerDisk(m_machine, array) <= memberSize(m_machine, array);
  }

  std::string capacityText(const Array& array) const {
    return "the volumes of the array take " + std::to_string(usedPerDisk(m_machine, array)) +
           " bytes of each disk, and a disk has " + std::to_string(memberSize(m_machine, array));
  }

  void checkBay(const EndDevice& device) {
    const Handle bay = device.bay != 0 ? device.bay : device.handle;
    const EndDevice& first = m_machine.devices.at(bay);
    const bool isFirst = bay != device.handle || device.bay == 0;
    demand(isFirst && first.bay == 0, device, "bay", "is not the first device of a bay");
    demand(first.controller == device.controller, device, "bay", "is on another controller");
    if (device.presence == Presence::ABSENT) return;
    demand(m_bays.insert(bay).second, device, "presence", "another device is in its bay");
  }

  void checkRole(const EndDevice& device) const {
    demand(device.spareFor == 0 || device.spare, device, "spareFor", "needs \"spare\"");
    if (device.spare) checkSpare(device);
    if (device.type == DeviceType::DISK) return;
    demand(!device.spare && !device.foreignMetadata && device.x8 == X8Role::NONE, device, "deviceType",
           "only a disk has a role");
  }

  void checkSpare(const EndDevice& spare) const {
    demand(m_machine.controllers.at(spare.controller).engine != 0, spare, "spare",
           "its controller has no RAID engine");
    demand(spare.x8 == X8Role::NONE, spare, "spare", "an X8 disk is no spare");
    checkDrive(spare, m_loading.pathOf(spare.handle) + ".spare");
  }

  void relateWork(Volume& volume) {
    if (!volume.work) return;
    Work& work = *volume.work;
    const std::string at = m_loading.pathOf(volume.handle) + ".work";
    const Array& array = m_machine.arrays.at(volume.array);
    if (work.kind == WorkKind::REBUILD) {
      const bool isMember = work.disk != 0 && m_machine.devices.at(work.disk).array == volume.array;
      demandAt(isMember, at + ".disk", "is not a disk of the volume's array");
      if (!isStale(volume, work.disk)) volume.stale.push_back(work.disk);
    } else if (work.kind != WorkKind::MIGRATE) {
      demandAt(isRedundant(volume.level), at + ".kind", "is for redundant levels only");
    }
    demandAt(isWithinCapacity(array), at, capacityText(array));
    if (work.totalMs == 0) work.totalMs = durationOf(m_machine, volume, work.kind);
    demandAt(work.carryMs < kMaxCarryMs, at + ".carryMs", "must be less than 1000000");
    const bool waits =
        work.kind == WorkKind::MIGRATE && work.elapsedMs == work.totalMs &&
        (healthOf(m_machine, volume) == Health::LOST || !wouldServeAtTarget(m_machine, volume, work.catchUp));
    demandAt(work.elapsedMs < work.totalMs || waits, at + ".elapsedMs", "must be less than totalMs");
  }

  Machine& m_machine;
  const Loading& m_loading;
  std::set<std::string> m_volumeNames;
  std::set<Handle> m_bays;                               ///< in which a device is
  std::map<Handle, std::set<std::uint32_t>> m_ordinals;  ///< of the volumes of each array
};

}  // namespace

void relate(Machine& machine, const Loading& loading) { Relating(machine, loading).run(); }

}  // namespace simulator
