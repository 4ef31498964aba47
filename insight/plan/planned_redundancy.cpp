#include "plan/planned_redundancy.h"

#include <algorithm>
#include <utility>

#include "health/tolerance.h"

namespace insight {

namespace {

constexpr char kVerify[] = "verify";  // the one work during which all redundancy is there

class Redundancies {
 public:
  explicit Redundancies(const MachineView& machine) : m_machine(machine) {}

  void add(const ObjectRef& volume, bool keeps) {
    const auto isSame = [&](const PlannedRedundancy& each) { return each.object == volume; };
    if (std::any_of(m_all.begin(), m_all.end(), isSame)) return;
    PlannedRedundancy redundancy{volume, {}, 0};
    if (const VolumeView* const known = m_machine.volume(volume.id)) {
      redundancy.now = toleranceOf(m_machine, *known).mayFail;
      if (keeps) redundancy.meanwhile = *redundancy.now;
    }
    m_all.push_back(redundancy);
  }

  std::vector<PlannedRedundancy> take() { return std::move(m_all); }

 private:
  const MachineView& m_machine;
  std::vector<PlannedRedundancy> m_all;
};

}  // namespace

std::vector<PlannedRedundancy> redundancyDuring(const Plan& plan, const MachineView& machine) {
  Redundancies all(machine);
  for (const PlannedWork& work : plan.work) all.add(work.object, work.kind == kVerify);
  for (const PlannedEffect& effect : plan.effects) {
    if (effect.fate != L"comes" && !effect.isIndirect) continue;
    for (const PlannedObject& each : effect.objects) {
      if (each.object.type == "volume") all.add(each.object, false);
    }
  }
  return all.take();
}

}  // namespace insight
