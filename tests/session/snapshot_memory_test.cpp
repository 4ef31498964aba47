#include <gtest/gtest.h>

#include <iostream>

#include "mirn_session.h"
#include "scripted_library/large_machine.h"
#include "scripted_library/scripted_library.h"
#include "support/default_settings.h"
#include "support/process_resources.h"

namespace {

constexpr std::size_t kDevices = 10000;
constexpr std::size_t kMegabyte = 1000 * 1000;

TEST(SnapshotMemory, TenThousandDevicesStayBelowFifteenMegabytes) {
  const DefaultSettings settings;
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(large_machine::make(kDevices));
  MirnSession session;
  const std::size_t before = processResources().bytes;
  const MirnSnapshot snapshot = session.takeSnapshot();
  const std::size_t used = processResources().bytes - before;
  std::cout << kDevices << " devices: " << static_cast<double>(used) / kMegabyte << " MB\n";
  ASSERT_EQ(snapshot.endDevices.size(), kDevices);
  EXPECT_GT(used, kDevices * sizeof(EndDevice));  // or the heap is not what is measured here
  EXPECT_LT(used, 15 * kMegabyte);
}

}  // namespace
