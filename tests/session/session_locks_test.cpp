#include "session_locks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/latch.hpp>
#include <thread>
#include <vector>

#include "mirn_exception.h"

namespace {

constexpr std::int64_t kAtOnce = 0;
constexpr std::int64_t kPatient = 60;

/// Runs `use` on another thread, to its end.
template <class Use>
void onAnotherThread(Use use) {
  std::thread(use).join();
}

template <class Acquire>
void expectTimeout(Acquire acquire) {
  try {
    acquire();
    FAIL() << "acquired";
  } catch (const MirnException& error) {
    EXPECT_STREQ(error.getErrorId(), "Mirn_OPERATION_FAILED");
    EXPECT_STREQ(error.what(), "Timeout on access to protected resource");
    EXPECT_STREQ(error.getMessage(), error.what());
  }
}

class SessionLocks : public testing::Test {
 protected:
  SessionMutex m_mutex;
};

TEST_F(SessionLocks, ReadersGoOnBesideAnAction) {
  const UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
  onAnotherThread([this] { EXPECT_TRUE(acquireShared(m_mutex, kAtOnce).owns_lock()); });
}

TEST_F(SessionLocks, ASecondActionTimesOut) {
  const UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
  onAnotherThread([this] { expectTimeout([this] { acquireUpgrade(m_mutex, kAtOnce); }); });
}

TEST_F(SessionLocks, NothingGoesOnBesideTheExchange) {
  UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
  const ExclusiveStep exchange(action);
  onAnotherThread([this] {
    expectTimeout([this] { acquireShared(m_mutex, kAtOnce); });
    expectTimeout([this] { acquireUpgrade(m_mutex, kAtOnce); });
    expectTimeout([this] { acquireUnique(m_mutex, kAtOnce); });
  });
}

TEST_F(SessionLocks, TheFirstSnapshotWaitsForReaders) {
  const SharedOwnership read = acquireShared(m_mutex, kAtOnce);
  onAnotherThread([this] { expectTimeout([this] { acquireUnique(m_mutex, kAtOnce); }); });
}

TEST_F(SessionLocks, AFailedAcquisitionLeavesTheLockAsItWas) {
  {
    const UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
    onAnotherThread([this] { expectTimeout([this] { acquireUpgrade(m_mutex, kAtOnce); }); });
  }
  EXPECT_TRUE(acquireUnique(m_mutex, kAtOnce).owns_lock());
}

TEST_F(SessionLocks, SteppingDownLetsReadersInAgain) {
  UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
  { const ExclusiveStep exchange(action); }
  onAnotherThread([this] { EXPECT_TRUE(acquireShared(m_mutex, kAtOnce).owns_lock()); });
}

TEST_F(SessionLocks, TheEventThreadWaitsUntilAnActionEnds) {
  boost::latch started(1);
  std::atomic<bool> actionEnded{false};
  std::thread eventThread;
  {
    const UpgradeOwnership action = acquireUpgrade(m_mutex, kAtOnce);
    eventThread = std::thread([&] {
      started.count_down();
      const UpgradeOwnership refresh = acquireUpgradeUntimed(m_mutex);
      EXPECT_TRUE(actionEnded);
    });
    started.wait();
    actionEnded = true;
  }
  eventThread.join();
}

// Readers that never pause would keep the plain shared mutex's writer waiting for as long as they read: then
// this test would not end.
TEST_F(SessionLocks, BusyReadersDoNotStarveTheExchange) {
  constexpr int kReaders = 8;
  std::atomic<bool> reading{true};
  std::atomic<std::uint64_t> reads{0};
  boost::latch allReading(kReaders);
  std::vector<std::thread> readers;
  readers.reserve(kReaders);
  for (int i = 0; i < kReaders; ++i) {
    readers.emplace_back([&] {
      for (bool first = true; reading; first = false) {
        const SharedOwnership read = acquireShared(m_mutex, kPatient);
        if (first) allReading.count_down();
        for (int held = 0; held < 1000; ++held) reads.fetch_add(1, std::memory_order_relaxed);
      }
    });
  }
  allReading.wait();
  for (int exchanges = 0; exchanges < 50; ++exchanges) {
    UpgradeOwnership action = acquireUpgrade(m_mutex, kPatient);
    const ExclusiveStep exchange(action);
  }
  reading = false;
  for (std::thread& reader : readers) reader.join();
  EXPECT_TRUE(acquireUnique(m_mutex, kAtOnce).owns_lock());
}

}  // namespace
