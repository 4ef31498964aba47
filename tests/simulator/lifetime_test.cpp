#include <gtest/gtest.h>

#include "simulator/workbench_fixture.h"
#include "vexl2_simulator.h"

namespace {

TEST(Lifetime, NothingWorksBeforeInitialize) {
  VEX_HANDLE handle = 0;
  std::uint32_t count = 0;
  VEX_SYSTEM_INFO info = {};
  EXPECT_EQ(VexFinalize(), 12U);
  EXPECT_EQ(VexSessionOpen(&handle), 12U);
  EXPECT_EQ(VexSessionClose(1), 12U);
  EXPECT_EQ(VexRescan(), 12U);
  EXPECT_EQ(VexGetSystemInfo(&info), 12U);
  EXPECT_EQ(VexGetVolumeHandles(1, 0, 0, nullptr, &count), 12U);
  EXPECT_EQ(VexGetEventHandle(&handle), 12U);
  EXPECT_EQ(VexEventWait(0, 1), 12U);
  EXPECT_EQ(VexFreeEventHandle(1), 12U);
  EXPECT_EQ(VexSimPullDisk("a0"), 12U);
  EXPECT_EQ(VexSimAdvanceClock(1), 12U);
}

using Session = Workbench;

TEST_F(Session, TheLibraryIsInitializedOnce) { EXPECT_EQ(VexInitialize(), 11U); }

TEST_F(Session, NeedsAPlaceForItsHandle) { EXPECT_EQ(VexSessionOpen(nullptr), 2U); }

TEST_F(Session, IsGoneAfterItsClose) {
  VEX_HANDLE other = 0;
  ASSERT_EQ(VexSessionOpen(&other), 0U);
  EXPECT_NE(other, session());
  EXPECT_EQ(VexSessionClose(other), 0U);
  EXPECT_EQ(VexSessionClose(other), 8U);
  std::uint32_t count = 0;
  EXPECT_EQ(VexGetVolumeHandles(other, 0, 0, nullptr, &count), 8U);
}

TEST_F(Session, HandlesAreNeverGivenTwice) {
  VEX_HANDLE first = 0;
  VEX_HANDLE second = 0;
  ASSERT_EQ(VexSessionOpen(&first), 0U);
  ASSERT_EQ(VexSessionClose(first), 0U);
  ASSERT_EQ(VexSessionOpen(&second), 0U);
  EXPECT_NE(first, second);
  EXPECT_EQ(VexSessionClose(second), 0U);
}

TEST_F(Session, AreLimited) {
  std::vector<VEX_HANDLE> opened;
  VEX_HANDLE handle = 0;
  VEX_STATUS status = 0;
  while ((status = VexSessionOpen(&handle)) == 0) opened.push_back(handle);
  EXPECT_EQ(status, 1U);
  EXPECT_EQ(opened.size(), 1023U);
  for (const VEX_HANDLE each : opened) EXPECT_EQ(VexSessionClose(each), 0U);
}

TEST_F(Session, EndsWithTheLibrary) {
  ASSERT_EQ(VexFinalize(), 0U);
  ASSERT_EQ(VexSimLoadText(kWorkbench), 0U);
  ASSERT_EQ(VexInitialize(), 0U);
  std::uint32_t count = 0;
  EXPECT_EQ(VexGetVolumeHandles(session(), 0, 0, nullptr, &count), 8U);
}

}  // namespace
