#include <gtest/gtest.h>

#include <map>
#include <string>

#include "health/health_report.h"
#include "insight/machine/random_machine.h"
#include "insight/machine/served_simulation.h"
#include "scenario/scenario.h"

namespace insight {
namespace {

constexpr int kMachines = 50;

/// Where health is told to differ from the state, what the state makes of the cause.
Severity asTheStateSees(const Cause& cause, const MachineView& machine) {
  if (cause.kind == "volume-degraded") {
    return machine.volume(cause.object.id)->state == L"DEGRADED" ? Severity::kWarning : Severity::kOk;
  }
  for (const char* const kind :
       {"volume-locked", "verify-errors", "journaling-drive-lost", "no-spare-fits"}) {
    if (cause.kind == kind) return Severity::kOk;
  }
  return cause.severity;
}

std::wstring stateBy(const HealthReport& report, const MachineView& machine) {
  Severity worst = Severity::kOk;
  for (const Cause& cause : report.causes) worst = std::max(worst, asTheStateSees(cause, machine));
  if (worst == Severity::kCritical) return L"FAILED";
  return worst >= Severity::kWarning ? L"WARNING" : L"NORMAL";
}

TEST(HealthOfRandomMachines, AgreesWithTheStateButWhereItIsToldToDiffer) {
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(7);
  std::map<std::wstring, int> seen;
  for (int number = 0; number < kMachines; ++number) {
    const std::string scenario = simulator::writeScenario(random.next());
    served.load(scenario);
    const MachineView machine = served.view();
    ASSERT_TRUE(machine.takenAt);
    const HealthReport report = healthOf(machine, *machine.takenAt);
    ASSERT_EQ(stateBy(report, machine), machine.serviceState) << "machine " << number << ":\n" << scenario;
    ++seen[machine.serviceState];
  }
  EXPECT_EQ(seen.size(), 3U);
}

}  // namespace
}  // namespace insight
