#include <gtest/gtest.h>

#include "insight/machine/random_machine.h"
#include "insight/machine/served_simulation.h"
#include "scenario/scenario.h"

namespace {

constexpr int kMachines = 40;

TEST(ViewOfAServedMachine, ShowsWhichVolumesAreWorkedOn) {
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(20261122);
  std::size_t works = 0;
  for (int number = 0; number < kMachines; ++number) {
    served.load(simulator::writeScenario(random.next()));
    const insight::MachineView machine = served.view();
    for (const insight::WorkView& work : machine.work) {
      ASSERT_NE(machine.volume(work.volumeId), nullptr) << "machine " << number;
      EXPECT_EQ(machine.workOn(work.volumeId), work.action);
      ++works;
    }
  }
  EXPECT_GT(works, 5U);
}

}  // namespace
