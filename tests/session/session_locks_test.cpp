#include "session_locks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "mirn_exception.h"
#include "support/by_name.h"

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

// Threads that their host interrupts

/// Keeps others out for as long as it lives.
using Obstacle = std::shared_ptr<void>;

Obstacle read(SessionMutex& mutex) {
  return std::make_shared<SharedOwnership>(acquireShared(mutex, kAtOnce));
}

Obstacle action(SessionMutex& mutex) {
  return std::make_shared<UpgradeOwnership>(acquireUpgrade(mutex, kAtOnce));
}

Obstacle exchange(SessionMutex& mutex) {
  struct Exchange {
    explicit Exchange(SessionMutex& mutex) : action(acquireUpgrade(mutex, kAtOnce)), step(action) {}
    UpgradeOwnership action;
    ExclusiveStep step;
  };
  return std::make_shared<Exchange>(mutex);
}

/// A wait for one kind of ownership, and what there is to wait for.
struct WaitCase {
  const char* name;
  Obstacle (*obstacle)(SessionMutex&);
  std::function<void(SessionMutex&)> wait;
  bool shutsTheDoor;  ///< New readers are kept out by the wait.
};

class AnInterruptedWait : public SessionLocks, public testing::WithParamInterface<WaitCase> {
 protected:
  enum class Moment { kAhead, kWhileItWaits };

  void interruptAndLetBy(Moment moment) {
    Obstacle obstacle = GetParam().obstacle(m_mutex);
    boost::latch begin(1);
    boost::latch begun(1);
    boost::thread host([&] {
      {
        const boost::this_thread::disable_interruption wait;
        begin.wait();
      }
      begun.count_down();
      EXPECT_NO_THROW(GetParam().wait(m_mutex));
      EXPECT_TRUE(boost::this_thread::interruption_enabled());
      EXPECT_THROW(boost::this_thread::interruption_point(), boost::thread_interrupted);
    });
    if (moment == Moment::kAhead) host.interrupt();
    begin.count_down();
    begun.wait();
    letItWait();
    if (moment == Moment::kWhileItWaits) host.interrupt();
    obstacle.reset();
    host.join();
    EXPECT_TRUE(m_mutex.try_lock()) << "the mutex is whole";
  }

 private:
  /// A wait of writers shows. One of readers doesn't: it gets the time that it needs, most often.
  void letItWait() {
    if (!GetParam().shutsTheDoor) {
      for (int turn = 0; turn < 50; ++turn) std::this_thread::yield();
      return;
    }
    while (m_mutex.try_lock_shared()) {
      m_mutex.unlock_shared();
      std::this_thread::yield();
    }
  }
};

TEST_P(AnInterruptedWait, IsNotCutShortByAnInterruptionAhead) { interruptAndLetBy(Moment::kAhead); }

TEST_P(AnInterruptedWait, IsNotCutShortByAnInterruptionMeanwhile) {
  interruptAndLetBy(Moment::kWhileItWaits);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, AnInterruptedWait,
    testing::Values(
        WaitCase{"SharedForTheExchange", exchange, [](auto& mutex) { acquireShared(mutex, kPatient); },
                 false},
        WaitCase{"UpgradeForAnAction", action, [](auto& mutex) { acquireUpgrade(mutex, kPatient); }, false},
        WaitCase{"UntimedUpgradeForAnAction", action, [](auto& mutex) { acquireUpgradeUntimed(mutex); },
                 false},
        WaitCase{"UniqueForAnAction", action, [](auto& mutex) { acquireUnique(mutex, kPatient); }, false},
        WaitCase{"UniqueForAReader", read, [](auto& mutex) { acquireUnique(mutex, kPatient); }, true},
        WaitCase{"StepForAReader", read,
                 [](auto& mutex) {
                   UpgradeOwnership ownership = acquireUpgrade(mutex, kPatient);
                   const ExclusiveStep step(ownership);
                 },
                 true}),
    ByName());

TEST_F(SessionLocks, AnInterruptedThreadTimesOutLikeAnyOther) {
  const Obstacle obstacle = exchange(m_mutex);
  boost::thread host([this] {
    boost::this_thread::disable_interruption ahead;
    while (!boost::this_thread::interruption_requested()) boost::this_thread::yield();
    const boost::this_thread::restore_interruption interruptible(ahead);
    expectTimeout([this] { acquireShared(m_mutex, kAtOnce); });
    expectTimeout([this] { acquireUpgrade(m_mutex, kAtOnce); });
    expectTimeout([this] { acquireUnique(m_mutex, kAtOnce); });
    EXPECT_TRUE(boost::this_thread::interruption_requested());
  });
  host.interrupt();
  host.join();
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
