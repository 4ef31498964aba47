#include "insight/machine/plan_proof.h"

#include <gmock/gmock.h>

#include "insight/machine/random_machine.h"
#include "scenario/scenario.h"

namespace {

using testing::IsEmpty;

constexpr int kChanges = 200;

TEST(PlansForRandomMachines, AreWhatTheChangesDoToThem) {
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(20261122);
  PlanProof proof(served, 20261122);
  for (int number = 0; number < kChanges; ++number) {
    const std::string scenario = simulator::writeScenario(random.next());
    ASSERT_THAT(proof.judge(scenario), IsEmpty()) << proof.asked() << "\nof machine " << number << ":\n"
                                                  << scenario;
  }
  const auto times = [&](const std::string& what) {
    const auto found = proof.tally().find(what);
    return found == proof.tally().end() ? std::size_t{0} : found->second;
  };
  EXPECT_GT(times("done"), kChanges / 2U);
  for (const char* const operation :
       {"addArrayDisks", "changeVolumeLevel", "clearDisk", "createVolume", "deleteVolume", "initializeVolume",
        "rebuildVolume", "removeDisk", "resizeVolume", "setDiskSpare", "setVolumeWriteHolePolicy",
        "verifyVolume"}) {
    EXPECT_GT(times(std::string("done: ") + operation), 0U) << operation;
  }
  EXPECT_LT(10 * times("refused"), 3 * (times("refused") + times("work by itself") + times("done")));
}

}  // namespace
