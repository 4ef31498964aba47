#include "simulator/reference/walk.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "simulator/reference/library_view.h"
#include "simulator/reference/scenario.h"
#include "vexl2_simulator.h"

namespace reference {
namespace {

constexpr std::size_t kStoryLength = 40;
constexpr std::uint32_t kMostBlankDisks = 30;

void must(Status status, const char* what) {
  if (status == 0) return;
  char text[512] = "";
  VexSimLastError(text, sizeof(text));
  throw std::runtime_error(std::string(what) + " answered " + std::to_string(status) + " " + text);
}

template <class T>
Handle anyOf(const std::map<Handle, T>& objects, std::uint32_t draw) {
  if (objects.empty()) return draw;
  auto found = objects.begin();
  std::advance(found, draw % objects.size());
  return found->first;
}

}  // namespace

const Walk::Outcome Walk::kSkipped = {UINT32_MAX, UINT32_MAX};

Walk::Walk(std::uint32_t seed, Tally& tally) : m_tally(tally), m_machine(firstMachine()), m_random(seed) {
  must(VexSimClearFaults(), "VexSimClearFaults");
  must(VexSimSetClockSpeed(0), "VexSimSetClockSpeed");
  must(VexSimCapEventWait(0), "VexSimCapEventWait");
  must(VexSimLoadText(scenarioOf(m_machine).c_str()), "VexSimLoadText");
  must(VexInitialize(), "VexInitialize");
  must(VexSessionOpen(&m_session), "VexSessionOpen");
  must(VexGetEventHandle(&m_event), "VexGetEventHandle");
  adoptHandles();
}

Walk::~Walk() { VexFinalize(); }

void Walk::adoptHandles() {
  const LibraryView view(m_session);
  std::map<Handle, Handle> byNumber;
  std::map<Handle, Disk> disks;
  for (const auto& record : view.disks()) {
    for (const auto& [key, disk] : m_machine.disks) {
      if (disk.id != record.uniqueId) continue;
      byNumber[key] = record.endDeviceHandle;
      disks[record.endDeviceHandle] = disk;
      disks[record.endDeviceHandle].handle = record.endDeviceHandle;
      m_holders[disk.bay] = record.endDeviceHandle;
    }
  }
  std::map<Handle, Array> arrays;
  std::map<Handle, Volume> volumes;
  for (const auto& record : view.volumes()) {
    for (const auto& [key, volume] : m_machine.volumes) {
      if (volume.name != record.name) continue;
      Volume& adopted = volumes[record.volumeHandle] = volume;
      adopted.handle = record.volumeHandle;
      adopted.array = record.arrayHandle;
      Array& array = arrays[record.arrayHandle] = m_machine.arrays.at(volume.array);
      array.handle = record.arrayHandle;
      for (Handle& disk : array.disks) disk = byNumber.at(disk);
      for (const Handle disk : array.disks) disks.at(disk).array = array.handle;
    }
  }
  for (const auto& record : view.controllers()) {
    for (Controller& controller : m_machine.controllers) {
      if (controller.id != record.uniqueId) continue;
      controller.handle = record.controllerHandle;
      for (Engine& engine : m_machine.engines) {
        if (&engine == controller.engine) engine.handle = record.raidInfoHandle;
      }
    }
  }
  for (const auto& record : view.phys()) m_phys[disks.at(record.endDeviceHandle).bay] = record.phyHandle;
  for (const auto& record : view.ports()) {
    if (record.localDeviceType == VEX_LOCAL_DEVICE_CONTROLLER) continue;
    m_ports[record.portHandle] = disks.at(record.localDeviceHandle).bay;
    m_farPorts[record.connectedPortHandle] = disks.at(record.localDeviceHandle).bay;
  }
  m_machine.disks = std::move(disks);
  m_machine.arrays = std::move(arrays);
  m_machine.volumes = std::move(volumes);
}

void Walk::note(const std::string& text) {
  m_story.push_back(text);
  if (m_story.size() > kStoryLength) m_story.erase(m_story.begin());
}

std::string Walk::story() const {
  std::string text;
  for (const std::string& line : m_story) text += "  " + line + "\n";
  return text;
}

std::string Walk::step() {
  const Action& action = kActions[number(static_cast<std::uint32_t>(kActions.size()))];
  note(action.name);
  const Outcome outcome = action.act(*this);
  m_story.back() += " -> " + std::to_string(outcome.library);
  if (outcome.library != outcome.reference) {
    return action.name + ": the library answers " + std::to_string(outcome.library) + ", the reference " +
           std::to_string(outcome.reference);
  }
  if (outcome.library != kSkipped.library) ++m_tally.answers[{action.name, outcome.library}];
  count();
  return compare();
}

void Walk::count() {
  for (const auto& entry : m_machine.volumes) {
    const Volume& volume = entry.second;
    ++m_tally.states[m_machine.stateOf(volume)];
    if (volume.work) m_tally.worksThatShared += volume.work->rest > 0 ? 1 : 0;
    if (!volume.work || volume.work->task != Task::MIGRATE) continue;
    m_tally.migrationsThatWaited += volume.work->done == volume.work->total ? 1 : 0;
    m_tally.migrationsThatCaughtUp += volume.work->catchesUp.empty() ? 0 : 1;
  }
}

// Drawing.

Handle Walk::anyDisk() { return oneIn(50) ? number(400) : anyOf(m_machine.disks, number(1000)); }
Handle Walk::anyArray() { return oneIn(50) ? number(400) : anyOf(m_machine.arrays, number(1000)); }
Handle Walk::anyVolume() { return oneIn(50) ? number(400) : anyOf(m_machine.volumes, number(1000)); }
Handle Walk::anyController() { return oneIn(50) ? number(400) : m_machine.controllers[number(5)].handle; }

/// Mostly a disk that `suits`.
Handle Walk::diskThat(const std::function<bool(const Disk&)>& suits) {
  std::vector<Handle> suitable;
  for (const auto& entry : m_machine.disks) {
    if (suits(entry.second)) suitable.push_back(entry.first);
  }
  if (suitable.empty() || oneIn(12)) return anyDisk();
  return suitable[number(static_cast<std::uint32_t>(suitable.size()))];
}

Handle Walk::freeDisk() {
  return diskThat([&](const Disk& disk) { return m_machine.isFree(disk); });
}

Handle Walk::member() {
  return diskThat([](const Disk& disk) { return disk.array != 0; });
}

Handle Walk::volumeIn(std::uint32_t state) {
  for (const auto& entry : m_machine.volumes) {
    if (m_machine.stateOf(entry.second) == state && !oneIn(3)) return entry.first;
  }
  return anyVolume();
}

/// Mostly a disk to which a volume migrates and on which it did not lie before.
Handle Walk::newDiskOfMigration() {
  return diskThat([&](const Disk& disk) {
    return std::any_of(m_machine.volumes.begin(), m_machine.volumes.end(), [&](const auto& entry) {
      const Volume& volume = entry.second;
      const bool migrates = volume.work && volume.work->task == Task::MIGRATE;
      return migrates && volume.array == disk.array &&
             std::count(volume.work->source.begin(), volume.work->source.end(), disk.handle) == 0;
    });
  });
}

Handle Walk::diskWithPassword() {
  return diskThat([](const Disk& disk) { return !disk.password.empty(); });
}

/// Mostly a volume of the level.
Handle Walk::volumeAt(std::uint32_t wanted) {
  for (const auto& entry : m_machine.volumes) {
    if (entry.second.level == wanted && !oneIn(3)) return entry.first;
  }
  return anyVolume();
}

/// Mostly a disk that could join the array.
Handle Walk::freeDiskFor(Handle handle) {
  const auto array = m_machine.arrays.find(handle);
  if (array == m_machine.arrays.end()) return freeDisk();
  const Disk& like = m_machine.disks.at(array->second.disks.front());
  return diskThat([&](const Disk& disk) {
    return m_machine.isFree(disk) && disk.controller == like.controller && disk.sector == like.sector;
  });
}

std::vector<Handle> Walk::freeDisksFor(Handle array, std::uint32_t count) {
  std::vector<Handle> drawn;
  for (; count > 0; --count) drawn.push_back(freeDiskFor(array));
  return drawn;
}

/// Mostly free disks of one controller, or its spares, and alike.
std::vector<Handle> Walk::freeDisks(std::uint32_t count) {
  std::vector<Handle> drawn{freeDisk()};
  const auto found = m_machine.disks.find(drawn.front());
  if (found == m_machine.disks.end()) return drawn;
  const Disk& like = found->second;
  while (drawn.size() < count) {
    drawn.push_back(diskThat([&](const Disk& disk) {
      const bool isNew = std::count(drawn.begin(), drawn.end(), disk.handle) == 0;
      const bool isOne = m_machine.isFree(disk) || (disk.spare && oneIn(4));
      return isNew && isOne && disk.controller == like.controller && disk.sector == like.sector;
    }));
  }
  return drawn;
}

/// Mostly as many disks as the level takes.
std::uint32_t Walk::countFor(std::uint32_t wanted) {
  if (oneIn(8)) return 1 + number(6);
  if (wanted == VEX_RAID_LEVEL_1) return 2;
  if (wanted == VEX_RAID_LEVEL_10) return 4;
  return wanted == VEX_RAID_LEVEL_5 ? 3 + number(2) : 2 + number(2);
}

Handle Walk::arrayOf(Handle volume) const {
  const auto found = m_machine.volumes.find(volume);
  return found == m_machine.volumes.end() ? 0 : found->second.array;
}

std::uint32_t Walk::level() { return oneIn(30) ? 3 : 1U << number(4); }

std::uint32_t Walk::strip() {
  if (oneIn(25)) return number(200);
  return oneIn(3) ? VEX_STRIP_SIZE_128KB : VEX_STRIP_SIZE_64KB;
}

std::uint64_t Walk::sizeMiB() { return oneIn(2) ? 0 : (oneIn(6) ? number(4000000) : 1 + number(2500)); }

/// For a volume in the array, or anywhere.
Wish Walk::wish(Handle array) {
  static const char* const kBadNames[] = {"", " bad", "a name too long for it"};
  Wish wish;
  wish.name = oneIn(20) ? kBadNames[number(3)] : "volume " + std::to_string(number(20));
  wish.level = level();
  wish.strip = strip();
  wish.sizeMiB = sizeMiB();
  wish.policy = oneIn(2) ? 0 : number(4);
  wish.journal = oneIn(3) ? diskThat([&](const Disk& disk) { return m_machine.journalsOn(disk.handle) > 0; })
                          : freeDiskFor(array);
  return wish;
}

std::string Walk::idOf(Handle disk) const {
  const auto found = m_machine.disks.find(disk);
  return found == m_machine.disks.end() ? "nobody" : found->second.id;
}

// Doing.

Walk::Outcome Walk::befall(Status (*incident)(const char*), Status (Machine::*rule)(Handle), Handle disk) {
  m_story.back() += " " + idOf(disk);
  const Status library = incident(idOf(disk).c_str());
  if (m_machine.disks.count(disk) == 0) return {library, 3};
  return {library, (m_machine.*rule)(disk)};
}

Walk::Outcome Walk::onDisk(Status (*action)(Handle), Status (Machine::*rule)(Handle), Handle disk) {
  m_story.back() += " " + idOf(disk);
  return {action(disk), (m_machine.*rule)(disk)};
}

Walk::Outcome Walk::onVolume(Status (*action)(Handle), Status (Machine::*rule)(Handle), Handle volume) {
  m_story.back() += " " + std::to_string(volume);
  return {action(volume), (m_machine.*rule)(volume)};
}

Walk::Outcome Walk::pass() {
  const std::uint64_t milliseconds = oneIn(20) ? 100000000 : number(oneIn(4) ? 60000 : 6000);
  m_story.back() += " " + std::to_string(milliseconds);
  const Status library = VexSimAdvanceClock(milliseconds);
  m_machine.pass(milliseconds);
  return {library, 0};
}

Walk::Outcome Walk::insertBlank() {
  const Handle former = diskThat([](const Disk& disk) { return disk.place == Place::OUT; });
  const auto found = m_machine.disks.find(former);
  if (found == m_machine.disks.end() || m_blankDisks >= kMostBlankDisks) return kSkipped;
  const std::uint64_t size = oneIn(2) ? found->second.size : (500 + number(2000)) * kMiB + number(4) * 512;
  const std::uint64_t sector = oneIn(4) ? 4096 : found->second.sector;
  char id[64] = "";
  m_story.back() += " " + found->second.id;
  const Status library = VexSimInsertBlankDisk(found->second.id.c_str(), size,
                                               static_cast<std::uint32_t>(sector), "Blank", id, sizeof(id));
  if (library != 0) return {library, m_machine.insertBlank(former, size, sector, UINT32_MAX, "")};
  const auto handle = static_cast<Handle>(std::stoul(std::string(id).substr(std::strlen("DISK-"))));
  ++m_blankDisks;
  m_holders[found->second.bay] = handle;
  return {library, m_machine.insertBlank(former, size, sector, handle, id)};
}

Walk::Outcome Walk::unlock() {
  const Handle disk = diskThat([](const Disk& each) { return each.locked && each.place == Place::IN; });
  const std::string password = oneIn(8) ? "guess" : "user";
  VEX_UNLOCK_PARAMS params = {};
  password.copy(params.password, sizeof(params.password));
  m_story.back() += " " + idOf(disk);
  return {VexDiskUnlock(disk, &params), m_machine.unlock(disk, password)};
}

Walk::Outcome Walk::removeAtPhy() {
  const int bay = 1 + static_cast<int>(number(static_cast<std::uint32_t>(m_phys.size())));
  const std::uint32_t one = oneIn(20) ? 0 : 1;
  m_story.back() += " of " + holderOf(bay).id;
  return {VexPhyRemove(m_phys.at(bay), one), m_machine.removeAtPhy(m_holders.at(bay), one)};
}

Walk::Outcome Walk::addDisks() {
  const Handle array = anyArray();
  const std::vector<Handle> disks = freeDisksFor(array, 1 + number(2));
  m_story.back() += " to " + std::to_string(array);
  return {VexAddDisksToArray(array, disks.data(), static_cast<std::uint32_t>(disks.size()), 0),
          m_machine.addDisks(array, disks)};
}

/// What the library has made.
Born Walk::born(Status status, const std::string& volumeName) const {
  if (status != 0) return {};
  for (const auto& record : LibraryView(m_session).volumes()) {
    if (volumeName == record.name) return {record.arrayHandle, record.volumeHandle};
  }
  return {};
}

Walk::Outcome Walk::create() {
  const Handle array = anyArray();
  const Wish wanted = wish(array);
  VEX_CREATE_VOLUME_PARAMS params = {};
  params.arrayHandle = array;
  fill(params, wanted);
  const Status library = VexVolumeCreate(params);
  m_story.back() += " in " + std::to_string(array) + " level " + std::to_string(wanted.level);
  return {library, m_machine.create(array, cut(wanted), born(library, wanted.name))};
}

Walk::Outcome Walk::createFromDisks(bool hasSource) {
  const Wish wanted = wish(0);
  const std::vector<Handle> disks = freeDisks(countFor(wanted.level));
  VEX_CREATE_FROM_DISKS_PARAMS params = {};
  params.disks = disks.data();
  params.diskCount = static_cast<std::uint32_t>(disks.size());
  params.sourceDiskHandle = hasSource ? (oneIn(12) ? anyDisk() : disks.back()) : 0;
  fill(params, wanted);
  Handle volume = 0;
  const Status library = VexVolumeCreateFromDisks(params, &volume);
  m_story.back() += " of " + std::to_string(disks.size()) + " disks level " + std::to_string(wanted.level);
  for (const Handle disk : disks) m_story.back() += " " + idOf(disk);
  return {library,
          m_machine.createFromDisks(disks, params.sourceDiskHandle, cut(wanted), born(library, wanted.name))};
}

Walk::Outcome Walk::modify(std::uint32_t mostDisks) {
  const Handle volume = volumeIn(VEX_VOLUME_STATE_NORMAL);
  const std::vector<Handle> disks = freeDisksFor(arrayOf(volume), mostDisks == 0 ? 0 : 1 + number(mostDisks));
  VEX_RAID_LEVEL_MODIFY_PARAMS params = {};
  params.raidLevel = level();
  params.stripSize = strip();
  params.size = sizeMiB();
  params.disks = disks.empty() ? nullptr : disks.data();
  params.diskCount = static_cast<std::uint32_t>(disks.size());
  m_story.back() += " " + std::to_string(volume) + " to level " + std::to_string(params.raidLevel);
  const Status library = VexRaidLevelModify(volume, params);
  return {library, m_machine.modify(volume, params.raidLevel, params.stripSize, params.size, disks)};
}

/// Stops and starts with what was kept: nothing is lost.
Walk::Outcome Walk::reload() {
  if (!oneIn(10)) return kSkipped;
  const std::string kept = LibraryView::machine();
  must(VexSimLoadText(kept.c_str()), "VexSimLoadText");
  must(VexEventWait(0, m_event), "VexEventWait");
  if (LibraryView::machine() != kept) throw std::runtime_error("what was kept comes back otherwise");
  return {0, 0};
}

/// Some stand twice, so that machines are mended faster than they break.
const std::vector<Walk::Action> Walk::kActions = {
    {"pass", [](Walk& w) { return w.pass(); }},
    {"pass", [](Walk& w) { return w.pass(); }},
    {"pass", [](Walk& w) { return w.pass(); }},
    {"pass", [](Walk& w) { return w.pass(); }},
    {"pass", [](Walk& w) { return w.pass(); }},
    {"pass", [](Walk& w) { return w.pass(); }},
    {"rescan",
     [](Walk& w) {
       return Outcome{VexRescan(), w.m_machine.rescan()};
     }},
    {"setReadPatrol",
     [](Walk& w) {
       const Handle controller = w.anyController();
       const std::uint32_t on = w.number(8) / 3;
       return Outcome{VexReadPatrolSetState(controller, on), w.m_machine.setReadPatrol(controller, on)};
     }},
    {"setRohi",
     [](Walk& w) {
       const Handle controller = w.anyController();
       const std::uint32_t on = w.number(8) / 3;
       return Outcome{VexROHISetState(controller, on), w.m_machine.setRohi(controller, on)};
     }},
    {"clear", [](Walk& w) { return w.onDisk(VexDiskClearMetadata, &Machine::clear, w.anyDisk()); }},
    {"clear",
     [](Walk& w) {
       const Handle disk =
           w.diskThat([](const Disk& each) { return each.foreign && each.place == Place::IN; });
       return w.onDisk(VexDiskClearMetadata, &Machine::clear, disk);
     }},
    {"clear",
     [](Walk& w) {
       const Handle disk =
           w.diskThat([](const Disk& each) { return each.foreign && each.place == Place::IN; });
       return w.onDisk(VexDiskClearMetadata, &Machine::clear, disk);
     }},
    {"markDiskNormal",
     [](Walk& w) {
       const Handle disk =
           w.diskThat([](const Disk& each) { return each.failed && each.place == Place::IN; });
       return w.onDisk(VexDiskMarkAsNormal, &Machine::markDiskNormal, disk);
     }},
    {"markDiskNormal",
     [](Walk& w) {
       const Handle disk =
           w.diskThat([](const Disk& each) { return each.failed && each.place == Place::IN; });
       return w.onDisk(VexDiskMarkAsNormal, &Machine::markDiskNormal, disk);
     }},
    {"markSpare",
     [](Walk& w) {
       const Handle array = w.anyArray();
       const Handle disk = w.freeDiskFor(array);
       w.m_story.back() += " " + w.idOf(disk) + " of " + std::to_string(array);
       const Handle only = w.oneIn(2) ? 0 : array;
       return Outcome{VexDiskMarkAsSpare(disk, only), w.m_machine.markSpare(disk, only)};
     }},
    {"unmarkSpare",
     [](Walk& w) {
       const Handle disk = w.diskThat([](const Disk& each) { return each.spare; });
       return w.onDisk(VexDiskUnmarkAsSpare, &Machine::unmarkSpare, disk);
     }},
    {"assignPool",
     [](Walk& w) {
       const Handle disk = w.freeDisk();
       const auto pool = static_cast<std::uint8_t>(w.number(3));
       return Outcome{VexDiskAssignStoragePool(disk, pool), w.m_machine.assignPool(disk, pool)};
     }},
    {"unlock", [](Walk& w) { return w.unlock(); }},
    {"unlock", [](Walk& w) { return w.unlock(); }},
    {"resetSmart",
     [](Walk& w) {
       const Handle disk = w.diskThat([](const Disk& each) { return each.smart; });
       return w.onDisk(VexDiskResetSmartEvent, &Machine::resetSmart, disk);
     }},
    {"removeAtPhy", [](Walk& w) { return w.oneIn(3) ? w.removeAtPhy() : kSkipped; }},
    {"setCache",
     [](Walk& w) {
       const Handle array = w.anyArray();
       const std::uint32_t on = w.number(8) / 3;
       return Outcome{VexArraySetWriteCacheState(array, on), w.m_machine.setCache(array, on)};
     }},
    {"addDisks", [](Walk& w) { return w.addDisks(); }},
    {"addDisks", [](Walk& w) { return w.addDisks(); }},
    {"create", [](Walk& w) { return w.create(); }},
    {"create", [](Walk& w) { return w.create(); }},
    {"createFromDisks", [](Walk& w) { return w.createFromDisks(false); }},
    {"createFromDisks", [](Walk& w) { return w.createFromDisks(false); }},
    {"createFromDisks", [](Walk& w) { return w.createFromDisks(false); }},
    {"createFromDisks", [](Walk& w) { return w.createFromDisks(false); }},
    {"createFromSource", [](Walk& w) { return w.createFromDisks(true); }},
    {"remove", [](Walk& w) { return w.onVolume(VexVolumeDelete, &Machine::remove, w.anyVolume()); }},
    {"rebuild",
     [](Walk& w) {
       const Handle volume =
           w.volumeIn(w.oneIn(3) ? VEX_VOLUME_STATE_GENERAL_MIGRATION : VEX_VOLUME_STATE_DEGRADED);
       const Handle disk = w.freeDiskFor(w.arrayOf(volume));
       w.m_story.back() += " " + std::to_string(volume) + " onto " + w.idOf(disk);
       return Outcome{VexVolumeRebuild(volume, disk), w.m_machine.rebuild(volume, disk)};
     }},
    {"rebuild",
     [](Walk& w) {
       const Handle volume =
           w.volumeIn(w.oneIn(3) ? VEX_VOLUME_STATE_GENERAL_MIGRATION : VEX_VOLUME_STATE_DEGRADED);
       const Handle disk = w.freeDiskFor(w.arrayOf(volume));
       w.m_story.back() += " " + std::to_string(volume) + " onto " + w.idOf(disk);
       return Outcome{VexVolumeRebuild(volume, disk), w.m_machine.rebuild(volume, disk)};
     }},
    {"initialize",
     [](Walk& w) {
       return w.onVolume(VexVolumeInitialize, &Machine::initialize, w.volumeIn(VEX_VOLUME_STATE_NORMAL));
     }},
    {"verify",
     [](Walk& w) {
       const Handle volume = w.volumeIn(VEX_VOLUME_STATE_NORMAL);
       const auto repair = static_cast<std::uint8_t>(w.number(8) / 3);
       return Outcome{VexVolumeVerify(volume, repair), w.m_machine.verify(volume, repair)};
     }},
    {"initialize",
     [](Walk& w) {
       return w.onVolume(VexVolumeInitialize, &Machine::initialize, w.volumeIn(VEX_VOLUME_STATE_NORMAL));
     }},
    {"verify",
     [](Walk& w) {
       const Handle volume = w.volumeIn(VEX_VOLUME_STATE_NORMAL);
       const auto repair = static_cast<std::uint8_t>(w.number(8) / 3);
       return Outcome{VexVolumeVerify(volume, repair), w.m_machine.verify(volume, repair)};
     }},
    {"cancelVerify",
     [](Walk& w) {
       return w.onVolume(VexVolumeCancelVerify, &Machine::cancelVerify,
                         w.volumeIn(VEX_VOLUME_STATE_VERIFYING));
     }},
    {"markVolumeNormal",
     [](Walk& w) {
       const Handle volume =
           w.volumeIn(w.oneIn(2) ? VEX_VOLUME_STATE_FAILED : VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK);
       return w.onVolume(VexVolumeMarkAsNormal, &Machine::markVolumeNormal, volume);
     }},
    {"markVolumeNormal",
     [](Walk& w) {
       const Handle volume =
           w.volumeIn(w.oneIn(2) ? VEX_VOLUME_STATE_FAILED : VEX_VOLUME_STATE_NON_REDUNDANT_FAILED_DISK);
       return w.onVolume(VexVolumeMarkAsNormal, &Machine::markVolumeNormal, volume);
     }},
    {"rename",
     [](Walk& w) {
       const Handle volume = w.anyVolume();
       const std::string name = w.wish(0).name;
       return Outcome{VexVolumeRename(volume, name.c_str()), w.m_machine.rename(volume, name)};
     }},
    {"setPolicy",
     [](Walk& w) {
       const Handle volume = w.anyVolume();
       const std::uint32_t policy = w.number(5);
       return Outcome{VexVolumeSetCachePolicy(volume, policy), w.m_machine.setPolicy(volume, policy)};
     }},
    {"setRwh",
     [](Walk& w) {
       const Handle volume = w.anyVolume();
       const Wish wanted = w.wish(w.arrayOf(volume));
       return Outcome{VexVolumeSetRwhPolicy(volume, wanted.journal, wanted.policy),
                      w.m_machine.setRwh(volume, wanted.journal, wanted.policy)};
     }},
    {"setRwh",
     [](Walk& w) {
       const Handle volume = w.volumeAt(VEX_RAID_LEVEL_5);
       const Handle drive = w.freeDiskFor(w.arrayOf(volume));
       const std::uint32_t policy = w.number(3);
       return Outcome{VexVolumeSetRwhPolicy(volume, drive, policy),
                      w.m_machine.setRwh(volume, drive, policy)};
     }},
    {"expand",
     [](Walk& w) {
       const Handle volume = w.volumeIn(VEX_VOLUME_STATE_NORMAL);
       const std::uint64_t size = w.sizeMiB();
       return Outcome{VexExpandVolume(volume, size), w.m_machine.expand(volume, size)};
     }},
    {"modify", [](Walk& w) { return w.modify(2); }},
    {"modify", [](Walk& w) { return w.modify(0); }},
    {"fail",
     [](Walk& w) { return w.oneIn(3) ? w.befall(VexSimFailDisk, &Machine::fail, w.member()) : kSkipped; }},
    {"pull",
     [](Walk& w) { return w.oneIn(4) ? w.befall(VexSimPullDisk, &Machine::pull, w.member()) : kSkipped; }},
    {"pull",
     [](Walk& w) { return w.oneIn(8) ? w.befall(VexSimPullDisk, &Machine::pull, w.anyDisk()) : kSkipped; }},
    {"pull",
     [](Walk& w) {
       return w.oneIn(3) ? w.befall(VexSimPullDisk, &Machine::pull, w.newDiskOfMigration()) : kSkipped;
     }},
    {"fail",
     [](Walk& w) {
       return w.oneIn(3) ? w.befall(VexSimFailDisk, &Machine::fail, w.newDiskOfMigration()) : kSkipped;
     }},
    {"insert",
     [](Walk& w) {
       const Handle disk = w.diskThat([&](const Disk& each) {
         return each.place == Place::OUT && w.holderOf(each.bay).place == Place::OUT;
       });
       const Outcome outcome = w.befall(VexSimInsertDisk, &Machine::insert, disk);
       if (outcome.library == 0) w.m_holders[w.m_machine.disks.at(disk).bay] = disk;
       return outcome;
     }},
    {"insert",
     [](Walk& w) {
       const Handle disk = w.diskThat([&](const Disk& each) {
         return each.place == Place::OUT && w.holderOf(each.bay).place == Place::OUT;
       });
       const Outcome outcome = w.befall(VexSimInsertDisk, &Machine::insert, disk);
       if (outcome.library == 0) w.m_holders[w.m_machine.disks.at(disk).bay] = disk;
       return outcome;
     }},
    {"insertBlank", [](Walk& w) { return w.oneIn(6) ? w.insertBlank() : kSkipped; }},
    {"lock",
     [](Walk& w) {
       return w.oneIn(6) ? w.befall(VexSimLockDisk, &Machine::lock, w.diskWithPassword()) : kSkipped;
     }},
    {"raiseSmart",
     [](Walk& w) {
       return w.oneIn(8) ? w.befall(VexSimRaiseSmartEvent, &Machine::raiseSmart, w.anyDisk()) : kSkipped;
     }},
    {"reload", [](Walk& w) { return w.reload(); }},
};

}  // namespace reference
