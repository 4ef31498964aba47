#include "insight/machine/random_change.h"

#include <algorithm>
#include <functional>
#include <set>

#include "actions/look.h"
#include "plan/affected_objects.h"
#include "text.h"

using insight::ArrayView;
using insight::Candidate;
using insight::CandidateQuestion;
using insight::DiskView;
using insight::MachineView;
using insight::Operation;
using insight::OperationField;
using insight::VolumeView;
using ovra::data_transfer::ServiceObject;

namespace {

using Texts = std::vector<std::wstring>;

constexpr int kDraws = 10;
const std::set<std::wstring> kRare{L"rebuildVolume", L"markVolumeNormal"};

/// What leaves the machine's objects as they are.
const std::set<std::wstring> kLeftOut{L"rescan", L"setConfig", L"locatePort"};

bool isAtRest(const MachineView& machine, const std::wstring& array) {
  return std::all_of(machine.volumes.begin(), machine.volumes.end(), [&](const VolumeView& volume) {
    return volume.arrayId != array || (volume.state == L"NORMAL" && !machine.workOn(volume.id));
  });
}

bool isAlone(const MachineView& machine, const VolumeView& volume) {
  return std::count_if(machine.volumes.begin(), machine.volumes.end(),
                       [&](const VolumeView& each) { return each.arrayId == volume.arrayId; }) == 1;
}

/// Degraded, with a member that is lost for good, and nothing going on.
bool waitsForDisk(const MachineView& machine, const VolumeView& volume) {
  const auto members = machine.membersOf(volume.arrayId);
  const bool hasLost = std::any_of(members.begin(), members.end(),
                                   [](const DiskView* disk) { return insight::isLostMember(*disk); });
  const bool isWorkedOn = std::any_of(
      machine.volumes.begin(), machine.volumes.end(),
      [&](const VolumeView& each) { return each.arrayId == volume.arrayId && machine.workOn(each.id); });
  return volume.state == L"DEGRADED" && hasLost && !isWorkedOn;
}

bool isRedundant(const VolumeView& volume) { return volume.level != L"RAID_0"; }

/// So many disks can have the level, as the machines' engine tells.
bool takes(const std::wstring& level, std::uint64_t disks) {
  if (level == L"RAID_0") return disks >= 2 && disks <= 6;
  if (level == L"RAID_1") return disks >= 2 && disks <= 4;
  if (level == L"RAID_10") return disks == 4 || disks == 6;
  return disks >= 3 && disks <= 6;
}

bool mayGrow(const MachineView& machine, const ArrayView& array) {
  return std::all_of(machine.volumes.begin(), machine.volumes.end(), [&](const VolumeView& volume) {
    return volume.arrayId != array.id || takes(volume.level, array.diskCount + 1);
  });
}

/// The levels that a volume of one can get.
const Texts& targetsOf(const std::wstring& level) {
  static const std::map<std::wstring, Texts> kTargets{{L"RAID_0", {L"RAID_0", L"RAID_5"}},
                                                      {L"RAID_1", {L"RAID_0", L"RAID_5"}},
                                                      {L"RAID_5", {L"RAID_0", L"RAID_5"}},
                                                      {L"RAID_10", {L"RAID_5"}}};
  return kTargets.at(level);
}

/// The word that the object is in a state for.
std::wstring actionOn(const MachineView& machine, const std::wstring& id) {
  if (const DiskView* const disk = machine.disk(id)) return disk->usage == L"SPARE" ? L"UNMARK" : L"MARK";
  return machine.workOn(id) ? L"CANCEL" : L"START";
}

using VolumeTest = std::function<bool(const MachineView&, const VolumeView&)>;
using DiskTest = std::function<bool(const MachineView&, const DiskView&)>;

/// For which volumes an operation is meant; for those that are missing here, any.
const std::map<std::wstring, VolumeTest>& volumeTests() {
  const auto normal = [](const MachineView& machine, const VolumeView& volume) {
    return volume.state == L"NORMAL" && isAtRest(machine, volume.arrayId);
  };
  static const std::map<std::wstring, VolumeTest> kTests{
      {L"markVolumeNormal", [](const auto&, const auto& volume) { return volume.state == L"FAILED"; }},
      {L"rebuildVolume",
       [](const auto& machine, const auto& volume) { return waitsForDisk(machine, volume); }},
      {L"changeVolumeLevel",
       [=](const auto& machine, const auto& volume) {
         return normal(machine, volume) && isAlone(machine, volume);
       }},
      {L"initializeVolume",
       [=](const auto& machine, const auto& volume) {
         return normal(machine, volume) && isRedundant(volume);
       }},
      {L"verifyVolume",
       [=](const auto& machine, const auto& volume) {
         const bool runs = volume.state == L"VERIFYING";
         return runs || (normal(machine, volume) && isRedundant(volume) && volume.isInitialized);
       }},
      {L"resizeVolume", normal},
      {L"setVolumeWriteHolePolicy",
       [=](const auto& machine, const auto& volume) {
         return volume.level == L"RAID_5" && normal(machine, volume);
       }},
      {L"setVolumeCachePolicy", [](const auto&, const auto& volume) { return volume.state != L"FAILED"; }},
      {L"deleteVolume", [](const auto&, const auto& volume) { return !volume.isMigrating; }}};
  return kTests;
}

const std::map<std::wstring, DiskTest>& diskTests() {
  const auto isFree = [](const MachineView&, const DiskView& disk) {
    return disk.state == L"NORMAL" && (disk.usage == L"PASS_THROUGH" || disk.usage == L"SPARE");
  };
  static const std::map<std::wstring, DiskTest> kTests{
      {L"clearDisk", isFree},
      {L"setDiskSpare", isFree},
      {L"markDiskNormal", [](const auto&, const auto& disk) { return disk.state == L"FAILED"; }},
      {L"resetDiskSmart",
       [](const auto&, const auto& disk) { return disk.state == L"SMART_EVENT_TRIGGERED"; }},
      {L"removeDisk", [](const auto&, const auto& disk) { return disk.state != L"MISSING"; }}};
  return kTests;
}

template <class View, class Tests>
Texts suiting(const MachineView& machine, const std::vector<View>& views, const Tests& tests,
              const std::wstring& operation) {
  const auto test = tests.find(operation);
  Texts ids;
  for (const View& view : views) {
    if (test == tests.end() || test->second(machine, view)) ids.push_back(view.id);
  }
  return ids;
}

Texts objectsFor(const MachineView& machine, const Operation& operation) {
  if (operation.objectType == L"volume")
    return suiting(machine, machine.volumes, volumeTests(), operation.id);
  if (operation.objectType == L"disk") return suiting(machine, machine.disks, diskTests(), operation.id);
  Texts ids;
  if (operation.objectType == L"array") {
    const bool grows = operation.id == L"addArrayDisks";
    for (const ArrayView& array : machine.arrays) {
      if (isAtRest(machine, array.id) && (!grows || mayGrow(machine, array))) ids.push_back(array.id);
    }
  }
  if (operation.objectType == L"controller") {
    for (const auto& controller : machine.controllers) ids.push_back(controller.id);
  }
  if (operation.objectType == L"service") ids.push_back(L"service");
  return ids;
}

std::wstring joined(const Texts& texts) {
  std::wstring all;
  for (const std::wstring& text : texts) all += (all.empty() ? L"" : L",") + text;
  return all;
}

}  // namespace

RandomChange::RandomChange(std::uint32_t seed, const std::vector<Operation>& operations) : m_random(seed) {
  for (const Operation& operation : operations) {
    if (kLeftOut.count(operation.id) == 0) m_operations.push_back(&operation);
    if (kRare.count(operation.id) != 0) m_rare.push_back(&operation);
  }
}

std::optional<AskedAtRandom> RandomChange::on(const MachineView& machine) {
  m_machine = &machine;
  for (int draw = 0; draw < kDraws; ++draw) {
    const auto& drawn = draw == 0 ? m_rare : m_operations;
    const Operation& operation = *drawn[below(drawn.size())];
    const Texts ids = objectsFor(machine, operation);
    auto change = ids.empty() ? std::nullopt : fill(operation, oneOf(ids));
    if (change) return change;
  }
  return {};
}

std::optional<AskedAtRandom> RandomChange::fill(const Operation& operation, const std::wstring& id) {
  m_given.clear();
  m_body = operation.fields.empty() ? ServiceObject() : ServiceObject::object();
  for (const OperationField& field : operation.fields) {
    if (!isWanted(operation, field, id)) continue;
    if (!put(field, {operation, field, id, m_given})) return {};
  }
  return AskedAtRandom{&operation, insight::segmentsOn(id, operation), m_body};
}

bool RandomChange::isWanted(const Operation& operation, const OperationField& field, const std::wstring& id) {
  if (!field.whenField.empty()) {
    const auto given = m_given.find(field.whenField);
    if (given == m_given.end()) return false;
    if (!field.whenWord.empty() && given->second != field.whenWord) return false;
  }
  // The one needs the other.
  const auto given = [&](const wchar_t* name, const wchar_t* word) {
    const auto found = m_given.find(name);
    return found != m_given.end() && found->second == word;
  };
  if (field.name == L"journalingDriveId") return given(L"rwhPolicy", L"RWH_JOURNALING_DRIVE");
  if (field.name == L"rwhPolicy" && !given(L"raidLevel", L"RAID_5") && !field.isRequired) return false;
  if (field.name == L"stripSize") return false;
  if (field.name == L"repair") return given(L"action", L"START");
  if (operation.id == L"createVolume" && field.name == L"diskId") return given(L"size", L"0") && oneIn(2);
  const VolumeView* const volume = m_machine->volume(id);
  const bool isFromMirror = volume != nullptr && (volume->level == L"RAID_0" || volume->level == L"RAID_1");
  if (field.name == L"disks" && isFromMirror && given(L"raidLevel", L"RAID_5")) return true;
  return field.isRequired || oneIn(3);
}

bool RandomChange::put(const OperationField& field, const CandidateQuestion& question) {
  if (field.type == L"list") return putDisks(field, question);
  if (field.type != L"boolean") return putText(field, question);
  m_body.member(field.name) = oneIn(2);
  return true;
}

/// Those of one controller.
bool RandomChange::putDisks(const OperationField& field, const CandidateQuestion& question) {
  Texts ids;
  std::wstring controller;
  for (const Candidate& candidate : insight::candidatesFor(question, *m_machine)) {
    const DiskView& disk = *m_machine->disk(candidate.value);
    if (disk.state != L"NORMAL" || disk.isSystemDisk) continue;
    if (controller.empty() || (ids.size() < 2 && oneIn(2))) {
      if (controller != disk.controllerId) ids.clear();
      controller = disk.controllerId;
    }
    if (disk.controllerId == controller) ids.push_back(disk.id);
  }
  const std::size_t wanted = diskCount(question);
  if (ids.size() < wanted) return false;
  while (ids.size() > wanted) ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(below(ids.size())));
  ServiceObject list = ServiceObject::array();
  std::size_t place = 0;
  for (const std::wstring& id : ids) list.at(place++) = id;
  m_body.member(field.name) = list;
  m_given[field.name] = joined(ids);
  return true;
}

std::size_t RandomChange::diskCount(const CandidateQuestion& question) {
  if (question.operation.id != L"createVolume") return 1;
  const std::wstring& level = m_given[L"raidLevel"];
  if (level == L"RAID_10") return 4;
  return (level == L"RAID_5" ? 3 : 2) + below(2);
}

std::wstring RandomChange::size(const CandidateQuestion& question) {
  const auto bounds = insight::sizeBoundsFor(question, *m_machine);
  const auto source = m_given.find(L"source");
  if (oneIn(2) || (source != m_given.end() && source->second == L"ARRAY")) return L"0";
  // As much as lies on each member as on one.
  const std::uint64_t least = bounds ? bounds->least : 1;
  const std::uint64_t most = bounds ? std::max(least, bounds->most / 4) : 1000;
  return std::to_wstring(least + below(static_cast<std::size_t>(most - least + 1)));
}

/// What may stand there, and goes with the rest.
RandomChange::Texts RandomChange::values(const CandidateQuestion& question) {
  const std::wstring& name = question.field.name;
  const VolumeView* const volume = m_machine->volume(question.objectId);
  if (name == L"raidLevel" && volume != nullptr) return targetsOf(volume->level);
  if (name == L"action") return {actionOn(*m_machine, question.objectId)};
  Texts texts;
  for (const Candidate& each : insight::candidatesFor(question, *m_machine)) {
    const ArrayView* const array = m_machine->array(each.value);
    const bool hasRoom = array == nullptr || (array->freeBytes > 0 && isAtRest(*m_machine, array->id) &&
                                              takes(m_given[L"raidLevel"], array->diskCount));
    const DiskView* const disk = m_machine->disk(each.value);
    const bool isSound = disk == nullptr || disk->state == L"NORMAL";
    if (hasRoom && isSound) texts.push_back(each.value);
  }
  return texts;
}

bool RandomChange::putText(const OperationField& field, const CandidateQuestion& question) {
  std::wstring text;
  if (field.name == L"name") {
    text = L"N" + std::to_wstring(++m_names);
  } else if (field.candidates && field.candidates->from == L"size") {
    text = size(question);
  } else {
    const Texts texts = values(question);
    if (texts.empty()) return false;
    text = oneOf(texts);
  }
  m_body.member(field.name) = text;
  m_given[field.name] = text;
  return true;
}
