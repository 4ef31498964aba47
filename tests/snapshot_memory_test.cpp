#include <gtest/gtest.h>
#include <malloc.h>

#include <iostream>

#include "mirn_session.h"
#include "scripted_library/large_machine.h"
#include "scripted_library/scripted_library.h"
#include "support/machine_settings.h"

namespace {

constexpr std::size_t kDevices = 10000;
constexpr std::size_t kMegabyte = 1000 * 1000;

/// What has been allocated and not been given back, by the whole process.
std::size_t bytesInUse() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

TEST(SnapshotMemory, TenThousandDevicesStayBelowFortyMegabytes) {
  const MachineSettings settings{12};
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(large_machine::make(kDevices));
  MirnSession session;
  const std::size_t before = bytesInUse();
  const MirnSnapshot snapshot = session.takeSnapshot();
  const std::size_t used = bytesInUse() - before;
  std::cout << kDevices << " devices: " << static_cast<double>(used) / kMegabyte << " MB\n";
  ASSERT_EQ(snapshot.endDevices.size(), kDevices);
  EXPECT_GT(used, kDevices * sizeof(EndDevice));  // or the heap is not what is measured here
  EXPECT_LT(used, 40 * kMegabyte);
}

}  // namespace
