#include <chrono>
#include <future>
#include <thread>

#include "simulator/workbench_fixture.h"

namespace {

constexpr std::uint32_t kLong = 600000;  // far longer than a test may take

class Event : public Workbench {
 protected:
  void SetUp() override {
    Workbench::SetUp();
    ASSERT_EQ(VexGetEventHandle(&m_event), 0U);
  }

  VEX_HANDLE event() const { return m_event; }

  /// Waits in a thread of its own, as long as it takes.
  std::future<VEX_STATUS> waitInBackground() {
    VexSimCapEventWait(kLong);
    std::uint64_t before = 0;
    VexSimCountCalls("VexEventWait", &before);
    auto result = std::async(std::launch::async, [this] { return VexEventWait(kLong, m_event); });
    for (std::uint64_t now = before; now == before; VexSimCountCalls("VexEventWait", &now)) {
      std::this_thread::yield();
    }
    return result;
  }

 private:
  VEX_HANDLE m_event = 0;
};

TEST_F(Event, NeedsAPlaceForItsHandle) { EXPECT_EQ(VexGetEventHandle(nullptr), 2U); }

TEST_F(Event, WithoutAChangeTheTimeRunsOut) { EXPECT_EQ(VexEventWait(0, event()), 9U); }

TEST_F(Event, ACapShortensTheWait) { EXPECT_EQ(VexEventWait(kLong, event()), 9U); }

TEST_F(Event, AHandleThatIsNoneIsRefused) {
  EXPECT_EQ(VexEventWait(0, 0), 3U);
  EXPECT_EQ(VexEventWait(0, event() + 1), 3U);
  EXPECT_EQ(VexFreeEventHandle(event() + 1), 3U);
}

TEST_F(Event, AChangeBetweenTwoWaitsIsNotLost) {
  ASSERT_EQ(VexSimPullDisk("a7"), 0U);
  EXPECT_EQ(VexEventWait(0, event()), 0U);
  EXPECT_EQ(VexEventWait(0, event()), 9U);
}

TEST_F(Event, WhatLeavesEverythingAsItWasIsNotTold) {
  EXPECT_EQ(VexRescan(), 0U);
  EXPECT_EQ(VexROHISetState(controller("A").controllerHandle, 0), 0U);
  EXPECT_EQ(VexVolumeRename(volumeHandle("five"), "five"), 0U);
  EXPECT_EQ(VexEventWait(0, event()), 9U);
  EXPECT_EQ(VexROHISetState(controller("A").controllerHandle, 1), 0U);
  EXPECT_EQ(VexEventWait(0, event()), 0U);
}

TEST_F(Event, EverySubscriberIsToldOnItsOwn) {
  VEX_HANDLE other = 0;
  ASSERT_EQ(VexGetEventHandle(&other), 0U);
  ASSERT_EQ(VexSimPullDisk("a7"), 0U);
  EXPECT_EQ(VexEventWait(0, event()), 0U);
  EXPECT_EQ(VexEventWait(0, other), 0U);
  EXPECT_EQ(VexFreeEventHandle(other), 0U);
  EXPECT_EQ(VexEventWait(0, other), 3U);
}

TEST_F(Event, NoChangeBeforeTheSubscriptionIsTold) {
  ASSERT_EQ(VexSimPullDisk("a7"), 0U);
  VEX_HANDLE late = 0;
  ASSERT_EQ(VexGetEventHandle(&late), 0U);
  EXPECT_EQ(VexEventWait(0, late), 9U);
}

TEST_F(Event, AWaiterWakesAtAChange) {
  auto waiter = waitInBackground();
  ASSERT_EQ(VexSimFailDisk("a0"), 0U);
  EXPECT_EQ(waiter.get(), 0U);
}

TEST_F(Event, AWaiterWakesAtTheEndOfWork) {
  ASSERT_EQ(VexSimPullDisk("a0"), 0U);
  ASSERT_EQ(VexSimInsertDisk("a0"), 0U);
  ASSERT_EQ(stateOf("mirror"), VEX_VOLUME_STATE_REBUILDING);
  ASSERT_EQ(VexEventWait(0, event()), 0U);
  auto waiter = waitInBackground();
  pass(4000);
  EXPECT_EQ(waiter.get(), 0U);
  EXPECT_EQ(stateOf("mirror"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Event, AWaiterWakesWhenWorkComesOnByAPercent) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), 0U);
  ASSERT_EQ(VexEventWait(0, event()), 0U);
  auto waiter = waitInBackground();
  pass(50);
  EXPECT_EQ(waiter.get(), 0U);
  EXPECT_EQ(volume("volume five").migrationProgress, 0xFFFFFFFFU / 100);
}

TEST_F(Event, WorkEndsOnTimeWhileSomebodyWaits) {
  ASSERT_EQ(VexSimPullDisk("a0"), 0U);
  ASSERT_EQ(VexSimInsertDisk("a0"), 0U);
  ASSERT_EQ(VexEventWait(0, event()), 0U);
  ASSERT_EQ(VexSimSetClockSpeed(100000), 0U);
  auto waiter = waitInBackground();
  EXPECT_EQ(waiter.get(), 0U);
  EXPECT_EQ(stateOf("mirror"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Event, AWaiterWakesWhenItIsCapped) {
  auto waiter = waitInBackground();
  ASSERT_EQ(VexSimCapEventWait(0), 0U);
  EXPECT_EQ(waiter.get(), 9U);
}

TEST_F(Event, AWaiterWakesAtTheEndOfTheLibrary) {
  auto waiter = waitInBackground();
  ASSERT_EQ(VexFinalize(), 0U);
  EXPECT_EQ(waiter.get(), 12U);
  ASSERT_EQ(VexInitialize(), 0U);
}

TEST_F(Event, ManyThreadsReadWhileTheMachineChanges) {
  std::vector<std::future<int>> readers;
  for (int thread = 0; thread < 4; ++thread) {
    readers.push_back(std::async(std::launch::async, [this] {
      int read = 0;
      for (int round = 0; round < 50; ++round) {
        for (const VEX_HANDLE handle : handles(VexGetVolumeHandles)) {
          VEX_VOLUME_INFO info = {};
          read += VexGetVolumeInfo(session(), handle, &info) == 0 ? 1 : 0;
        }
      }
      return read;
    }));
  }
  for (int round = 0; round < 50; ++round) {
    EXPECT_EQ(VexSimPullDisk("a0"), 0U);
    EXPECT_EQ(VexSimInsertDisk("a0"), 0U);
    pass(100);
  }
  for (auto& reader : readers) EXPECT_EQ(reader.get(), 50 * 7);
}

TEST_F(Event, ManyThreadsActWhileOthersWaitAndTimePasses) {
  const VEX_HANDLE volume = volumeHandle("five");
  const std::vector<VEX_HANDLE> disks = diskHandles({"a7", "a8", "a9"});
  std::vector<std::future<void>> threads;
  for (const VEX_HANDLE disk : disks) {
    threads.push_back(std::async(std::launch::async, [=] {
      for (int round = 0; round < 30; ++round) {
        EXPECT_EQ(VexDiskMarkAsSpare(disk, 0), 0U);
        VexVolumeVerify(volume, 0);  // refused while another thread's verification runs
        VexVolumeCancelVerify(volume);
        EXPECT_EQ(VexDiskUnmarkAsSpare(disk), 0U);
      }
    }));
  }
  threads.push_back(std::async(std::launch::async, [this] {
    for (int round = 0; round < 30; ++round) {
      const VEX_STATUS status = VexEventWait(1, event());
      EXPECT_TRUE(status == 0 || status == 9) << status;
    }
  }));
  for (int round = 0; round < 30; ++round) pass(100);
  for (auto& thread : threads) thread.get();
}

}  // namespace
