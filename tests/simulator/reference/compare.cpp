#include <algorithm>
#include <sstream>

#include "simulator/reference/library_view.h"
#include "simulator/reference/walk.h"
#include "vexl2_simulator.h"

namespace reference {
namespace {

/// Collects what differs in one record.
class Differences {
 public:
  explicit Differences(std::string object) : m_object(std::move(object)) {}

  template <class Library, class Reference>
  Differences& field(const char* name, const Library& library, const Reference& reference) {
    if (static_cast<std::uint64_t>(library) == static_cast<std::uint64_t>(reference)) return *this;
    m_text << m_object << ": " << name << " is " << library << " in the library, " << reference
           << " in the reference\n";
    return *this;
  }

  Differences& text(const char* name, const std::string& library, const std::string& reference) {
    if (library != reference) {
      m_text << m_object << ": " << name << " is " << library << " in the library, " << reference
             << " in the reference\n";
    }
    return *this;
  }

  std::string get() const { return m_text.str(); }

 private:
  std::string m_object;
  std::ostringstream m_text;
};

template <class Records, class Expected, class HandleOf>
std::string compareHandles(const char* kind, const Records& records, const Expected& expected,
                           HandleOf handleOf) {
  std::vector<Handle> listed;
  for (const auto& record : records) listed.push_back(handleOf(record));
  if (listed == expected) return "";
  std::ostringstream text;
  text << kind << ": the library lists";
  for (const Handle handle : listed) text << " " << handle;
  text << ", the reference";
  for (const Handle handle : expected) text << " " << handle;
  return text.str() + "\n";
}

template <class Objects>
std::vector<Handle> keysOf(const Objects& objects) {
  std::vector<Handle> keys;
  for (const auto& entry : objects) keys.push_back(entry.first);
  return keys;
}

}  // namespace

std::string Walk::compareDisks() const {
  std::vector<Handle> expected;
  for (const auto& entry : m_machine.disks) {
    if (m_machine.isListed(entry.second)) expected.push_back(entry.first);
  }
  const auto records = LibraryView(m_session).disks();
  std::string text = compareHandles("disks", records, expected,
                                    [](const VEX_END_DEVICE_INFO& record) { return record.endDeviceHandle; });
  if (!text.empty()) return text;
  for (const auto& record : records) {
    const Disk& disk = m_machine.disks.at(record.endDeviceHandle);
    text += Differences("disk " + disk.id)
                .text("uniqueId", record.uniqueId, disk.id)
                .field("diskState", record.diskState, m_machine.stateOf(disk))
                .field("diskUsage", record.diskUsage, m_machine.usageOf(disk))
                .field("arrayHandle", record.arrayHandle, disk.array)
                .field("controllerHandle", record.controllerHandle, disk.controller->handle)
                .field("raidInfoHandle", record.raidInfoHandle,
                       disk.controller->engine == nullptr ? 0 : disk.controller->engine->handle)
                .field("totalSize", record.totalSize, disk.size)
                .field("freeSize", record.freeSize, m_machine.freeOf(disk))
                .field("logicalSectorSize", record.logicalSectorSize, disk.sector)
                .field("physicalSectorSize", record.physicalSectorSize, disk.physicalSector)
                .field("writeCachePolicy", record.writeCachePolicy, disk.cache)
                .field("systemDisk", record.systemDisk, disk.system ? 1 : 0)
                .field("managedHotplug", record.managedHotplug, disk.hasHotPlug ? 1 : 0)
                .get();
  }
  return text;
}

std::string Walk::compareArrays() const {
  const auto records = LibraryView(m_session).arrays();
  std::string text = compareHandles("arrays", records, keysOf(m_machine.arrays),
                                    [](const VEX_ARRAY_INFO& record) { return record.arrayHandle; });
  if (!text.empty()) return text;
  for (const auto& record : records) {
    const Array& array = m_machine.arrays.at(record.arrayHandle);
    const std::uint64_t members = array.disks.size();
    text += Differences("array " + array.name)
                .text("name", record.name, array.name)
                .field("state", record.state,
                       m_machine.isBusy(array) ? VEX_ARRAY_STATE_BUSY : VEX_ARRAY_STATE_NORMAL)
                .field("totalSize", record.totalSize, m_machine.memberSize(array) * members)
                .field("freeSize", record.freeSize, m_machine.freeOfEach(array) * members)
                .field("writeCacheState", record.writeCacheState, array.cache)
                .field("numDisks", record.numDisks, members)
                .field("numVolumes", record.numVolumes, m_machine.volumesOn(array).size())
                .get();
  }
  return text;
}

std::string Walk::compareVolumes() const {
  const auto records = LibraryView(m_session).volumes();
  std::string text = compareHandles("volumes", records, keysOf(m_machine.volumes),
                                    [](const VEX_VOLUME_INFO& record) { return record.volumeHandle; });
  if (!text.empty()) return text;
  for (const auto& record : records) {
    const Volume& volume = m_machine.volumes.at(record.volumeHandle);
    const Array& array = m_machine.arrays.at(volume.array);
    const Disk& first = m_machine.disks.at(array.disks.front());
    const bool isMigrating = volume.work && volume.work->task == Task::MIGRATE;
    text += Differences("volume " + volume.name)
                .text("name", record.name, volume.name)
                .field("arrayHandle", record.arrayHandle, volume.array)
                .field("arrayOrdinal", record.arrayOrdinal, volume.ordinal)
                .field("state", record.state, m_machine.stateOf(volume))
                .field("raidLevel", record.raidLevel, volume.level)
                .field("totalSize", record.totalSize, volume.size)
                .field("stripSize", record.stripSize, volume.strip)
                .field("numDisks", record.numDisks, array.disks.size())
                .field("migrationProgress", record.migrationProgress, m_machine.progressOf(volume))
                .field("migrationInProgress", record.migrationInProgress, isMigrating ? 1 : 0)
                .field("cachePolicy", record.cachePolicy, volume.cache)
                .field("rwhPolicy", record.rwhPolicy, volume.policy)
                .field("journalingDriveHandle", record.journalingDriveHandle, volume.journal)
                .field("systemVolume", record.systemVolume, volume.system ? 1 : 0)
                .field("initialized", record.initialized, volume.initialized ? 1 : 0)
                .field("verifyErrors", record.verifyErrors, m_machine.errorsOf(volume))
                .field("verifyBadBlocks", record.verifyBadBlocks, m_machine.badBlocksOf(volume))
                .field("logicalSectorSize", record.logicalSectorSize, first.sector)
                .field("physicalSectorSize", record.physicalSectorSize, first.physicalSector)
                .get();
  }
  return text;
}

std::string Walk::comparePhys() const {
  std::string text;
  for (const auto& record : LibraryView(m_session).phys()) {
    for (const auto& [bay, phy] : m_phys) {
      if (phy != record.phyHandle) continue;
      const Disk& disk = holderOf(bay);
      text += Differences("phy of " + disk.id)
                  .field("endDeviceHandle", record.endDeviceHandle, disk.place == Place::IN ? disk.handle : 0)
                  .get();
    }
  }
  return text;
}

std::string Walk::comparePorts() const {
  std::vector<Handle> expected = keysOf(m_farPorts);
  for (const auto& [port, bay] : m_ports) {
    if (holderOf(bay).place == Place::IN) expected.push_back(port);
  }
  std::sort(expected.begin(), expected.end());
  const auto records = LibraryView(m_session).ports();
  std::string text = compareHandles("ports", records, expected,
                                    [](const VEX_PORT_INFO& record) { return record.portHandle; });
  if (!text.empty()) return text;
  for (const auto& record : records) {
    const auto port = m_ports.find(record.portHandle);
    const int bay = port != m_ports.end() ? port->second : m_farPorts.at(record.portHandle);
    const Disk& disk = holderOf(bay);
    Handle farPort = 0;
    for (const auto& each : port != m_ports.end() ? m_farPorts : m_ports) {
      if (each.second == bay && disk.place == Place::IN) farPort = each.first;
    }
    text += Differences(std::string("port ") + record.uniqueId)
                .field("localDeviceHandle", record.localDeviceHandle,
                       port != m_ports.end() ? disk.handle : disk.controller->handle)
                .field("connectedPortHandle", record.connectedPortHandle, farPort)
                .get();
  }
  return text;
}

std::string Walk::compareControllers() const {
  std::string text;
  for (const auto& record : LibraryView(m_session).controllers()) {
    for (const Controller& controller : m_machine.controllers) {
      if (controller.handle != record.controllerHandle) continue;
      text += Differences("controller " + controller.id)
                  .field("rohiEnabled", record.rohiEnabled, controller.rebuildsOnInsert ? 1 : 0)
                  .field("readPatrolEnabled", record.readPatrolEnabled, controller.readPatrol ? 1 : 0)
                  .get();
    }
  }
  return text;
}

std::string Walk::compareLevels() const {
  std::string text;
  const LibraryView view(m_session);
  for (const Engine& engine : m_machine.engines) {
    for (const LevelRow& row : engine.levels) {
      const bool isInUse =
          std::any_of(m_machine.volumes.begin(), m_machine.volumes.end(), [&](const auto& entry) {
            const Array& array = m_machine.arrays.at(entry.second.array);
            return entry.second.level == row.level && array.controller->engine == &engine;
          });
      text += Differences("level of " + engine.id)
                  .field("created", view.isLevelInUse(engine.handle, row.level) ? 1 : 0, isInUse ? 1 : 0)
                  .get();
    }
  }
  return text;
}

/// A change wakes the waiters; nothing else does but work that comes on, which is told at each percent.
std::string Walk::compareWake() {
  const bool hasChanged = m_machine.takeChanged();
  const Status status = VexEventWait(0, m_event);
  const bool isWorking = std::any_of(m_machine.volumes.begin(), m_machine.volumes.end(),
                                     [](const auto& entry) { return entry.second.work.has_value(); });
  if (hasChanged && status != 0) return "nobody is told of a change\n";
  if (!hasChanged && status == 0 && !isWorking) return "a change is told where none was\n";
  return "";
}

std::string Walk::compare() {
  char violation[512] = "";
  if (VexSimCheck(violation, sizeof(violation)) != 0) return violation;
  return compareWake() + compareVolumes() + compareArrays() + compareDisks() + comparePhys() +
         comparePorts() + compareControllers() + compareLevels();
}

}  // namespace reference
