#include "jobs/operation_works.h"

#include <gtest/gtest.h>

#include "insight/machine/served_simulation.h"

namespace insight {
namespace {

TEST(OperationWorks, AreWhatThePluginDescribes) {
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  const auto works = operationWorksOf(served.as<ovra::described_plugin_1>().describe());
  EXPECT_EQ(works, (OperationWorks{{"addArrayDisks", "migrate"},
                                   {"changeVolumeLevel", "migrate"},
                                   {"createVolume", "migrate"},
                                   {"initializeVolume", "initialize"},
                                   {"rebuildVolume", "rebuild"},
                                   {"resizeVolume", "migrate"},
                                   {"verifyVolume", "verify"}}));
}

}  // namespace
}  // namespace insight
