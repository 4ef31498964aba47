#include "insight/machine/planned_changes.h"

#include <algorithm>

#include "jobs/job.h"
#include "text.h"

using insight::ObjectRef;
using insight::PlannedEffect;
using insight::PlannedObject;
using insight::PlannedWork;

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;

using Ids = std::set<std::wstring>;

/// Objects that come are told apart by all that is told of them.
std::string lineOf(const std::wstring& type, const std::wstring& name, const std::wstring& level,
                   Ids members) {
  std::wstring line = type + L' ' + name + L' ' + level + L" on";
  for (const std::wstring& id : members) line += L' ' + id;
  return wideToUtf8(line);
}

std::string lineOf(const PlannedObject& planned) {
  Ids members;
  for (const ObjectRef& each : planned.members) members.insert(each.id);
  return lineOf(utf8ToWide(planned.object.type), planned.object.name, planned.level, members);
}

std::string lineOf(const std::wstring& type, const std::wstring& id, const MachinePicture& machine) {
  const auto& object = machine.objects(type).at(id);
  const bool isVolume = type == L"volume";
  const std::wstring array = isVolume ? object.member(L"arrayId").toString() : id;
  return lineOf(type, isVolume ? object.member(L"name").toString() : std::wstring(),
                isVolume ? object.member(L"raidLevel").toString() : std::wstring(),
                machine.having(L"disk", L"arrayId", array));
}

void addDifference(const std::multiset<std::string>& lines, const std::multiset<std::string>& others,
                   const char* what, std::vector<std::string>& faults) {
  std::vector<std::string> rest;
  std::set_difference(lines.begin(), lines.end(), others.begin(), others.end(), std::back_inserter(rest));
  for (const std::string& line : rest) faults.push_back(line + ": " + what);
}

void addDifference(const std::wstring& type, const Ids& ids, const Ids& others, const char* what,
                   std::vector<std::string>& faults) {
  for (const std::wstring& id : ids) {
    if (others.count(id) == 0) faults.push_back(wideToUtf8(type + L' ' + id) + ": " + what);
  }
}

bool isTold(const std::vector<PlannedWork>& works, const std::wstring& id, const std::wstring& name) {
  return std::any_of(works.begin(), works.end(), [&](const PlannedWork& work) {
    return work.object.id.empty() ? work.object.name == name : work.object.id == id;
  });
}

std::wstring nameOf(const MachinePicture& machine, const std::wstring& volume) {
  const auto found = machine.objects(L"volume").find(volume);
  return found == machine.objects(L"volume").end() ? std::wstring()
                                                   : found->second.member(L"name").toString();
}

/// The object that a planned one has become; empty where there is none.
std::wstring idOf(const PlannedObject& planned, const MachinePicture& machine) {
  if (!planned.object.id.empty()) return planned.object.id;
  const std::wstring type = utf8ToWide(planned.object.type);
  for (const auto& [id, object] : machine.objects(type)) {
    if (type == L"volume" && object.member(L"name").toString() == planned.object.name) return id;
    if (type != L"volume" && lineOf(type, id, machine) == lineOf(planned)) return id;
  }
  return {};
}

}  // namespace

bool PlannedChanges::startedByItself() const { return beganWork() || tookDiskIn(); }

bool PlannedChanges::tookDiskIn() const {
  const Ids known = told(L"disk", {L"changes", L"overwritten"});
  const auto& disks = m_before.objects(L"disk");
  return std::any_of(disks.begin(), disks.end(), [&](const auto& disk) {
    return known.count(disk.first) == 0 && m_before.arraysOf(disk.first).empty() &&
           !m_after.arraysOf(disk.first).empty();
  });
}

bool PlannedChanges::beganWork() const {
  return std::any_of(m_after.work().begin(), m_after.work().end(), [&](const auto& work) {
    const auto before = m_before.work().find(work.first);
    const bool isNew = before == m_before.work().end() || before->second != work.second;
    return isNew && !isTold(m_plan.work, work.first, nameOf(m_after, work.first));
  });
}

Ids PlannedChanges::told(const std::wstring& type, const std::set<std::wstring>& fates) const {
  Ids ids;
  for (const PlannedEffect& effect : m_plan.effects) {
    if (fates.count(effect.fate) == 0) continue;
    for (const PlannedObject& each : effect.objects) {
      if (utf8ToWide(each.object.type) == type) ids.insert(each.object.id);
    }
  }
  return ids;
}

void PlannedChanges::judgeComing(const std::wstring& type, const Ids& came,
                                 std::vector<std::string>& faults) const {
  std::multiset<std::string> planned;
  for (const PlannedEffect& effect : m_plan.effects) {
    for (const PlannedObject& each : effect.objects) {
      if (effect.fate == L"comes" && utf8ToWide(each.object.type) == type) planned.insert(lineOf(each));
    }
  }
  std::multiset<std::string> seen;
  for (const std::wstring& id : came) seen.insert(lineOf(type, id, m_after));
  addDifference(seen, planned, "came", faults);
  addDifference(planned, seen, "did not come", faults);
}

void PlannedChanges::judgeWork(std::vector<std::string>& faults) const {
  for (const PlannedWork& planned : m_plan.work) {
    const bool runs = std::any_of(m_after.work().begin(), m_after.work().end(), [&](const auto& work) {
      return insight::jobKindOf(work.second) == planned.kind &&
             isTold({planned}, work.first, nameOf(m_after, work.first));
    });
    if (!runs)
      faults.push_back(planned.kind + " of " + wideToUtf8(planned.object.name) + ": is not under way");
  }
}

std::vector<std::string> PlannedChanges::faults() const {
  std::vector<std::string> faults;
  for (const std::wstring& type : MachinePicture::types()) {
    const ObjectChanges changes = changesOf(type, m_before, m_after);
    const Ids going = told(type, {L"goes"});
    judgeComing(type, changes.came, faults);
    addDifference(type, changes.went, going, "went", faults);
    addDifference(type, going, changes.went, "did not go", faults);
    addDifference(type, changes.changed, told(type, {L"changes", L"overwritten"}), "changed", faults);
  }
  judgeWork(faults);
  return faults;
}

std::set<std::string> PlannedChanges::unseen() const {
  std::set<std::string> texts;
  for (const PlannedEffect& effect : m_plan.effects) {
    if (effect.fate != L"changes") continue;
    const ObjectChanges changes =
        changesOf(utf8ToWide(effect.objects.front().object.type), m_before, m_after);
    const bool isSeen = std::any_of(effect.objects.begin(), effect.objects.end(), [&](const auto& each) {
      return changes.changed.count(each.object.id) != 0;
    });
    if (!isSeen) texts.insert(wideToUtf8(effect.text));
  }
  return texts;
}

/// To the rounding of one member.
std::vector<std::string> PlannedChanges::faultsOfSizes(const MachinePicture& later) const {
  std::vector<std::string> faults;
  for (const PlannedEffect& effect : m_plan.effects) {
    for (const PlannedObject& each : effect.objects) {
      if (!each.aboutBytes) continue;
      const auto& objects = later.objects(utf8ToWide(each.object.type));
      const auto found = objects.find(idOf(each, later));
      if (found == objects.end()) {
        faults.push_back(lineOf(each) + ": is not there");
        continue;
      }
      const std::uint64_t size = std::stoull(found->second.member(L"totalSize").toString());
      const std::uint64_t off = std::max(size, *each.aboutBytes) - std::min(size, *each.aboutBytes);
      if (off <= kMebibyte) continue;
      faults.push_back(lineOf(each) + ": has " + std::to_string(size) + " bytes and not about " +
                       std::to_string(*each.aboutBytes));
    }
  }
  return faults;
}
