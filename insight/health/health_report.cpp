#include "health/health_report.h"

#include <algorithm>

#include "health/machine_causes.h"
#include "view/object_path.h"

namespace insight {

HealthReport healthOf(const MachineView& machine, std::uint64_t now, const std::vector<Cause>& others) {
  HealthReport report;
  report.position = machine.position;
  report.takenAt = machine.takenAt;
  report.causes = causesOf(machine, now);
  report.causes.insert(report.causes.end(), others.begin(), others.end());
  std::stable_sort(report.causes.begin(), report.causes.end(),
                   [](const Cause& one, const Cause& other) { return one.severity > other.severity; });
  if (!report.causes.empty()) report.severity = report.causes.front().severity;
  for (const VolumeView& volume : machine.volumes) {
    report.volumes.push_back({refOf(volume), toleranceOf(machine, volume)});
  }
  return report;
}

}  // namespace insight
