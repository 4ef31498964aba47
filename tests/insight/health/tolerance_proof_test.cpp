#include <gtest/gtest.h>

#include "insight/machine/random_machine.h"
#include "insight/machine/served_simulation.h"
#include "insight/machine/tolerance_proof.h"
#include "scenario/scenario.h"

namespace {

constexpr int kMachines = 50;

TEST(ToleranceOfRandomMachines, IsWhatTheSimulatedMachineCanLose) {
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(20261122);
  ToleranceProof proof;
  for (int number = 0; number < kMachines; ++number) {
    const std::string scenario = simulator::writeScenario(random.next());
    served.load(scenario);
    ASSERT_EQ(proof.judge(scenario, served.view()), "") << "machine " << number << ":\n" << scenario;
  }
  for (const char* const seen :
       {"exact RAID_0", "exact RAID_1", "exact RAID_5", "exact RAID_10", "in doubt"}) {
    EXPECT_GE(proof.tally().count(seen), 1U) << seen;
  }
  EXPECT_GT(proof.tally().at("sets"), 500U);
}

}  // namespace
