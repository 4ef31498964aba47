#include "plan/affected_objects.h"

#include <algorithm>
#include <functional>
#include <map>

#include "view/object_path.h"

namespace insight {

namespace {

using Ids = std::vector<std::wstring>;

bool contains(const Ids& ids, const std::wstring& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

/// The objects of one type that stand to others in a relation.
class Relations {
 public:
  Relations(const MachineView& machine, const std::wstring& type, Ids values)
      : m_machine(machine), m_type(type), m_values(std::move(values)) {}

  Ids find(const std::wstring& relation) const {
    using Finder = Ids (Relations::*)() const;
    static const std::map<std::wstring, Finder> kFinders{
        {L"itself", &Relations::itself},        {L"array", &Relations::arrays},
        {L"volumes", &Relations::inArrays},     {L"disks", &Relations::inArrays},
        {L"journal", &Relations::journals},     {L"ports", &Relations::ports},
        {L"neighbours", &Relations::neighbours}};
    const auto found = kFinders.find(relation);
    return found == kFinders.end() ? Ids() : (this->*found->second)();
  }

 private:
  Ids itself() const {
    Ids ids;
    for (const std::wstring& value : m_values) {
      if (objectNamed(m_machine, m_type, value)) ids.push_back(value);
    }
    return ids;
  }

  Ids arrays() const {
    Ids arrays;
    for (const std::wstring& value : m_values) {
      for (const std::wstring& array : arraysOf(m_machine, value)) {
        if (!contains(arrays, array)) arrays.push_back(array);
      }
    }
    return arrays;
  }

  Ids inArrays() const {
    const Ids wanted = arrays();
    return those([&](const auto& each) { return contains(wanted, each.arrayId); });
  }

  Ids journals() const {
    Ids drives;
    for (const std::wstring& value : m_values) {
      const VolumeView* const volume = m_machine.volume(value);
      if (volume != nullptr && m_machine.disk(volume->journalingDriveId) != nullptr)
        drives.push_back(volume->journalingDriveId);
    }
    return drives;
  }

  /// The disks' own, and then those that they are plugged into.
  Ids ports() const {
    Ids own;
    Ids plugged;
    for (const PortView& port : m_machine.ports) {
      if (!contains(m_values, port.deviceId)) continue;
      own.push_back(port.id);
      if (!port.connectedId.empty()) plugged.push_back(port.connectedId);
    }
    own.insert(own.end(), plugged.begin(), plugged.end());
    return own;
  }

  Ids neighbours() const {
    Ids controllers;
    for (const std::wstring& value : m_values) {
      if (const DiskView* const disk = m_machine.disk(value)) controllers.push_back(disk->controllerId);
    }
    return those([&](const auto& each) {
      const ArrayView* const array = m_machine.array(each.arrayId);
      return array != nullptr && std::any_of(array->controllerIds.begin(), array->controllerIds.end(),
                                             [&](const auto& id) { return contains(controllers, id); });
    });
  }

  /// Of the volumes or of the disks, whichever the type means.
  template <class Suits>
  Ids those(const Suits& suits) const {
    if (m_type == L"volume") return those(m_machine.volumes, suits);
    return m_type == L"disk" ? those(m_machine.disks, suits) : Ids();
  }

  template <class View, class Suits>
  static Ids those(const std::vector<View>& views, const Suits& suits) {
    Ids ids;
    for (const View& each : views) {
      if (suits(each)) ids.push_back(each.id);
    }
    return ids;
  }

  const MachineView& m_machine;
  const std::wstring& m_type;
  const Ids m_values;
};

/// How an object stands before the request.
class Situations {
 public:
  Situations(const MachineView& machine, Ids values) : m_machine(machine), m_values(std::move(values)) {}

  bool holds(const std::wstring& where, const std::wstring& id) const {
    using Judge = bool (Situations::*)(const std::wstring&) const;
    static const std::map<std::wstring, Judge> kJudges{
        {L"emptied", &Situations::isEmptied},     {L"kept", &Situations::isKept},
        {L"member", &Situations::isMember},       {L"single", &Situations::isSingle},
        {L"missing", &Situations::isLoneMissing}, {L"forgotten", &Situations::isForgotten},
        {L"lost", &Situations::isLost},           {L"degraded", &Situations::isDegraded},
        {L"unshared", &Situations::isUnshared},   {L"own", &Situations::isOwn},
        {L"plugged", &Situations::isPlugged}};
    if (where.empty()) return true;
    const auto found = kJudges.find(where);
    return found != kJudges.end() && (this->*found->second)(id);
  }

 private:
  bool isMissing(const std::wstring& id) const {
    const DiskView* const disk = m_machine.disk(id);
    return disk != nullptr && disk->state == L"MISSING";
  }
  bool isEmptied(const std::wstring& id) const { return !isMissing(id) && standsEmpty(id); }
  bool isForgotten(const std::wstring& id) const {
    return isMissing(id) && standsEmpty(id) && bearsNoJournal(id);
  }
  bool isLoneMissing(const std::wstring& id) const {
    const DiskView* const disk = m_machine.disk(id);
    if (!isMissing(id)) return false;
    const auto members = m_machine.membersOf(disk->arrayId);
    return std::count_if(members.begin(), members.end(),
                         [](const DiskView* each) { return isLostMember(*each); }) == 1;
  }
  bool standsEmpty(const std::wstring& id) const {
    const Ids arrays = arraysOf(m_machine, id);
    return std::none_of(m_machine.volumes.begin(), m_machine.volumes.end(), [&](const VolumeView& volume) {
      return contains(arrays, volume.arrayId) && !contains(m_values, volume.id);
    });
  }
  bool isKept(const std::wstring& id) const { return !standsEmpty(id); }
  bool isMember(const std::wstring& id) const { return !arraysOf(m_machine, id).empty(); }
  bool isSingle(const std::wstring& id) const { return !isMember(id); }
  bool isLost(const std::wstring& id) const {
    const DiskView* const disk = m_machine.disk(id);
    return disk != nullptr && isLostMember(*disk) && !isLoneMissing(id);
  }
  bool isDegraded(const std::wstring& id) const {
    const VolumeView* const volume = m_machine.volume(id);
    return volume != nullptr && volume->state == L"DEGRADED";
  }
  bool isUnshared(const std::wstring& id) const { return !isMissing(id) && bearsNoJournal(id); }
  bool bearsNoJournal(const std::wstring& id) const {
    return std::none_of(m_machine.volumes.begin(), m_machine.volumes.end(), [&](const VolumeView& volume) {
      return volume.journalingDriveId == id && !contains(m_values, volume.id);
    });
  }
  bool isOwn(const std::wstring& id) const {
    return std::any_of(m_machine.ports.begin(), m_machine.ports.end(), [&](const PortView& port) {
      return port.id == id && contains(m_values, port.deviceId);
    });
  }
  bool isPlugged(const std::wstring& id) const { return !isOwn(id); }

  const MachineView& m_machine;
  const Ids m_values;
};

}  // namespace

Ids arraysOf(const MachineView& machine, const std::wstring& id) {
  std::wstring array;
  if (machine.array(id) != nullptr) array = id;
  if (const DiskView* const disk = machine.disk(id)) array = disk->arrayId;
  if (const VolumeView* const volume = machine.volume(id)) array = volume->arrayId;
  return array.empty() ? Ids() : Ids{array};
}

bool isLostMember(const DiskView& disk) {
  static const Ids kServing{L"NORMAL", L"SMART_EVENT_TRIGGERED", L"LOCKED", L"UNKNOWN"};
  return !disk.arrayId.empty() && !contains(kServing, disk.state);
}

Ids objectsMetBy(const OperationEffect& effect, const RequestArguments& arguments,
                 const MachineView& machine) {
  const Ids values = arguments.valuesOf(effect.argument);
  const Ids kept = arguments.valuesOf(effect.except);
  const Situations situations(machine, values);
  Ids met;
  for (const std::wstring& id : Relations(machine, effect.type, values).find(effect.relation)) {
    if (!contains(kept, id) && situations.holds(effect.where, id)) met.push_back(id);
  }
  return met;
}

}  // namespace insight
