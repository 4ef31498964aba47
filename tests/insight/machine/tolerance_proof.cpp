#include "insight/machine/tolerance_proof.h"

#include <algorithm>
#include <vector>

#include "engine/incidents.h"
#include "health/tolerance.h"
#include "model/redundancy.h"
#include "rules/apply.h"
#include "scenario/scenario.h"
#include "text.h"

using simulator::Handle;
using simulator::Machine;
using simulator::Volume;

namespace {

/// A disk that has failed or is out cannot fail; that it is lost is what counts.
void fail(Machine& machine, Handle disk) {
  simulator::apply(machine,
                   [&](Machine& changed) { simulator::failDisk(changed, changed.devices.at(disk)); });
}

bool serves(const Machine& machine, Handle volume) {
  return simulator::healthOf(machine, machine.volumes.at(volume)) != simulator::Health::LOST;
}

const insight::VolumeView* viewOf(const insight::MachineView& view, const std::string& name) {
  const auto found = std::find_if(view.volumes.begin(), view.volumes.end(),
                                  [&](const auto& volume) { return wideToUtf8(volume.name) == name; });
  return found == view.volumes.end() ? nullptr : &*found;
}

}  // namespace

std::string ToleranceProof::judge(const std::string& scenario, const insight::MachineView& view) {
  m_scenario = scenario;
  const Machine machine = simulator::readScenario(scenario);
  for (const auto& entry : machine.volumes) {
    std::string fault = judge(machine, entry.second, view);
    if (!fault.empty()) return fault;
  }
  return {};
}

std::string ToleranceProof::judge(const Machine& machine, const Volume& volume,
                                  const insight::MachineView& view) {
  const insight::VolumeView* const shown = viewOf(view, volume.name);
  if (shown == nullptr) return "volume " + volume.name + " is not shown";
  const insight::Tolerance tolerance = insight::toleranceOf(view, *shown);
  const std::string claim = "volume " + volume.name + " in state " + wideToUtf8(shown->state) + ", mayFail " +
                            std::to_string(tolerance.mayFail);
  ++m_tally[tolerance.isExact ? "exact " + wideToUtf8(shown->level) : "in doubt"];
  // Of one that serves no longer nothing is claimed.
  if (!serves(machine, volume.handle)) {
    return tolerance.mayFail == 0 && !tolerance.isExact ? "" : claim + ": it does not serve now";
  }
  if (!servesWithoutAny(machine, volume, tolerance.mayFail)) return claim + ": too much";
  if (!tolerance.isExact) return {};
  return servesWithoutAny(machine, volume, tolerance.mayFail + 1) ? claim + ": not exact" : "";
}

bool ToleranceProof::servesWithoutAny(const Machine& machine, const Volume& volume, std::uint64_t count) {
  const std::vector<Handle> disks = machine.arrays.at(volume.array).disks;
  if (count > disks.size()) return false;
  std::vector<bool> isChosen(disks.size(), false);
  std::fill_n(isChosen.begin(), count, true);
  do {
    Machine trial = simulator::readScenario(m_scenario);
    for (std::size_t place = 0; place < disks.size(); ++place) {
      if (isChosen[place]) fail(trial, disks[place]);
    }
    ++m_tally["sets"];
    if (!serves(trial, volume.handle)) return false;
  } while (std::prev_permutation(isChosen.begin(), isChosen.end()));
  return true;
}
