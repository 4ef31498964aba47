#include "plan/plan_warnings.h"

#include <algorithm>

namespace insight {

namespace {

class Warnings {
 public:
  explicit Warnings(const MachineView& machine) : m_machine(machine) {}

  void look(const std::wstring& fate, const PlannedObject& each) {
    const ObjectRef& object = each.object;
    const bool isLost = fate == L"goes" || fate == L"overwritten";
    if (const VolumeView* const volume = m_machine.volume(object.id)) {
      if (isLost && volume->isSystemVolume) add(L"The volume " + object.name + L" holds the running system.");
    }
    if (const DiskView* const disk = m_machine.disk(object.id)) {
      if (isLost && disk->isSystemDisk) add(L"The running system lies on the disk " + object.name + L'.');
      if (isLost && disk->usage == L"SPARE") add(L"The disk " + object.name + L" was a spare till now.");
    }
    if (fate == L"comes" && each.level == L"RAID_0")
      add(L"The first disk that fails takes the data of the volume " + object.name + L" along.");
  }

  void look(const PlannedRedundancy& redundancy) {
    const std::wstring& name = redundancy.object.name;
    if (redundancy.now && redundancy.meanwhile < *redundancy.now)
      add(L"Meanwhile the volume " + name + L" can spare no disk.");
  }

  void look(const ovra::PluginPosition&) {
    const bool isOld = m_machine.failedAt && (!m_machine.takenAt || *m_machine.failedAt > *m_machine.takenAt);
    if (isOld) add(L"The machine could not be looked at lately: " + m_machine.failure);
  }

  std::vector<std::wstring> take() { return std::move(m_all); }

 private:
  void add(const std::wstring& warning) {
    if (std::find(m_all.begin(), m_all.end(), warning) == m_all.end()) m_all.push_back(warning);
  }

  const MachineView& m_machine;
  std::vector<std::wstring> m_all;
};

}  // namespace

std::vector<std::wstring> warningsOf(const Plan& plan, const MachineView& machine) {
  Warnings warnings(machine);
  for (const PlannedEffect& effect : plan.effects) {
    for (const PlannedObject& each : effect.objects) warnings.look(effect.fate, each);
  }
  for (const PlannedRedundancy& redundancy : plan.redundancy) warnings.look(redundancy);
  warnings.look(plan.position);
  return warnings.take();
}

}  // namespace insight
