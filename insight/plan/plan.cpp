#include "plan/plan.h"

#include <algorithm>

#include "plan/affected_objects.h"
#include "plan/plan_warnings.h"
#include "plan/planned_redundancy.h"
#include "plan/planned_shape.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

constexpr wchar_t kComes[] = L"comes";
constexpr wchar_t kGoes[] = L"goes";
constexpr wchar_t kOverwritten[] = L"overwritten";
constexpr wchar_t kVolume[] = L"volume";

class Planner {
 public:
  Planner(const RequestArguments& request, const OperationEffects& told, const MachineView& machine,
          const std::vector<JobStatistics>& statistics)
      : m_request(request), m_told(told), m_machine(machine), m_statistics(statistics) {}

  Plan run() {
    m_plan.position = m_machine.position;
    for (const OperationEffect& effect : m_told.effects) {
      if (m_request.fulfil(effect.when)) add(effect);
    }
    for (const OperationWork& work : m_told.works) {
      if (m_request.fulfil(work.when)) add(work);
    }
    m_plan.redundancy = redundancyDuring(m_plan, m_machine);
    m_plan.warnings = warningsOf(m_plan, m_machine);
    return std::move(m_plan);
  }

 private:
  void add(const OperationEffect& effect) {
    PlannedEffect planned{effect.fate, m_request.filledIn(effect.text, m_machine), objectsOf(effect),
                          effect.relation != L"itself"};
    if (planned.objects.empty()) return;
    addLosses(planned);
    m_plan.effects.push_back(std::move(planned));
  }

  std::vector<PlannedObject> objectsOf(const OperationEffect& effect) const {
    if (effect.argument.empty()) return settings(effect);
    std::vector<PlannedObject> objects;
    if (effect.fate == kComes) {
      objects.push_back(shapeOf(effect, {}, m_request, m_machine));
    } else {
      for (const std::wstring& id : objectsMetBy(effect, m_request, m_machine))
        objects.push_back(shapeOf(effect, id, m_request, m_machine));
    }
    return objects;
  }

  /// What no argument names is what the body does.
  std::vector<PlannedObject> settings(const OperationEffect& effect) const {
    std::vector<PlannedObject> objects;
    for (const std::wstring& name : m_request.given())
      objects.push_back({{wideToUtf8(effect.type), {}, name}, {}, {}, {}});
    return objects;
  }

  void addLosses(const PlannedEffect& effect) {
    for (const PlannedObject& each : effect.objects) {
      const ObjectRef& object = each.object;
      if (effect.fate == kGoes && object.type == "volume")
        m_plan.lost.push_back({object, L"the volume " + object.name});
      if (effect.fate == kOverwritten && object.type == "disk")
        m_plan.lost.push_back({object, L"everything on " + object.name});
    }
  }

  void add(const OperationWork& work) {
    const std::string kind = wideToUtf8(work.kind);
    for (const ObjectRef& volume : volumesAt(work.on)) m_plan.work.push_back(likely({kind, volume, {}, 0}));
  }

  /// The volume that the argument names, or those of the array; else the new one with that name.
  std::vector<ObjectRef> volumesAt(const std::wstring& argument) const {
    const std::wstring value = m_request.valueOf(argument);
    std::vector<ObjectRef> volumes;
    if (const VolumeView* const volume = m_machine.volume(value)) volumes.push_back(refOf(*volume));
    if (!volumes.empty()) return volumes;
    if (m_machine.array(value) == nullptr) return {{wideToUtf8(kVolume), {}, value}};
    for (const VolumeView& volume : m_machine.volumes) {
      if (volume.arrayId == value) volumes.push_back(refOf(volume));
    }
    return volumes;
  }

  /// As such work on this volume went before, or else on any.
  PlannedWork likely(PlannedWork work) const {
    const auto take = [&](const std::wstring& volume) {
      const auto found = std::find_if(m_statistics.begin(), m_statistics.end(), [&](const auto& each) {
        return each.kind == work.kind && each.volumeId == volume && each.medianSeconds;
      });
      if (found == m_statistics.end()) return false;
      work.likelySeconds = found->medianSeconds;
      work.jobs = found->completed;
      return true;
    };
    if (work.object.id.empty() || !take(work.object.id)) take({});
    return work;
  }

  const RequestArguments& m_request;
  const OperationEffects& m_told;
  const MachineView& m_machine;
  const std::vector<JobStatistics>& m_statistics;
  Plan m_plan;
};

}  // namespace

Plan planOf(const RequestArguments& request, const OperationEffects& told, const MachineView& machine,
            const std::vector<JobStatistics>& statistics) {
  return Planner(request, told, machine, statistics).run();
}

}  // namespace insight
