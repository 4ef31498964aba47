#include "session_lock_waits.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>
#include <boost/optional.hpp>
#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <functional>
#include <memory>
#include <string>
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
                   UpgradeOwnership ownership = acquireUpgrade(mutex, kAtOnce);
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

// What the mutex is asked for

using Clock = boost::chrono::steady_clock;

/// A mutex that nobody waits for. It knows no other clock, and no other way of being asked.
class AskedMutex {
 public:
  bool grants = true;
  std::vector<std::string> asked;
  boost::optional<Clock::time_point> limit;  ///< Of the last wait.

  bool try_lock_shared_until(Clock::time_point until) { return answer("shared", until); }
  bool try_lock_until(Clock::time_point until) { return answer("unique", until); }
  bool try_lock_upgrade_until(Clock::time_point until) { return answer("upgrade", until); }
  void lock_upgrade() { answer("upgrade", boost::none); }
  void unlock_upgrade_and_lock() { answer("step up", boost::none); }

  void unlock() { asked.emplace_back("leave unique"); }
  void unlock_shared() { asked.emplace_back("leave shared"); }
  void unlock_upgrade() { asked.emplace_back("leave upgrade"); }
  void unlock_and_lock_upgrade() { asked.emplace_back("step down"); }

 private:
  bool answer(const char* request, boost::optional<Clock::time_point> until) {
    EXPECT_FALSE(boost::this_thread::interruption_enabled()) << request;
    asked.emplace_back(request);
    limit = until;
    return grants;
  }
};

/// A wait with a limit, and what the mutex is asked for in it.
struct LimitedWait {
  const char* name;
  std::function<void(AskedMutex&, std::int64_t)> wait;
  const char* request;
  const char* leave;
};

class ALimitedWait : public testing::TestWithParam<LimitedWait> {
 protected:
  /// Looks for the limit of the wait between two moments that its call is between.
  void expectLimit(std::int64_t seconds) {
    const Clock::time_point before = Clock::now();
    GetParam().wait(m_mutex, seconds);
    ASSERT_TRUE(m_mutex.limit);
    EXPECT_GE(*m_mutex.limit, before + boost::chrono::seconds(seconds));
    EXPECT_LE(*m_mutex.limit, Clock::now() + boost::chrono::seconds(seconds));
  }

  AskedMutex m_mutex;
};

TEST_P(ALimitedWait, EndsNeitherBeforeNorAfterItsLimit) {
  for (const std::int64_t seconds : {0, 1, 30, 3600}) expectLimit(seconds);
}

TEST_P(ALimitedWait, AsksOnceAndLeavesWhatItGot) {
  GetParam().wait(m_mutex, 30);
  EXPECT_EQ(m_mutex.asked, (std::vector<std::string>{GetParam().request, GetParam().leave}));
}

TEST_P(ALimitedWait, AsksOnceAndSaysSoWhenItGetsNothing) {
  m_mutex.grants = false;
  expectTimeout([this] { GetParam().wait(m_mutex, 30); });
  EXPECT_EQ(m_mutex.asked, (std::vector<std::string>{GetParam().request}));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ALimitedWait,
    testing::Values(LimitedWait{"Shared", [](auto& mutex, auto seconds) { acquireShared(mutex, seconds); },
                                "shared", "leave shared"},
                    LimitedWait{"Unique", [](auto& mutex, auto seconds) { acquireUnique(mutex, seconds); },
                                "unique", "leave unique"},
                    LimitedWait{"Upgrade", [](auto& mutex, auto seconds) { acquireUpgrade(mutex, seconds); },
                                "upgrade", "leave upgrade"}),
    ByName());

TEST(AWaitWithoutALimit, IsThatOfTheEventThreadAndThatOfTheStep) {
  AskedMutex mutex;
  {
    boost::upgrade_lock<AskedMutex> refresh = acquireUpgradeUntimed(mutex);
    EXPECT_FALSE(mutex.limit);
    const ExclusiveStepOf<AskedMutex> exchange(refresh);
    EXPECT_FALSE(mutex.limit);
  }
  EXPECT_EQ(mutex.asked, (std::vector<std::string>{"upgrade", "step up", "step down", "leave upgrade"}));
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
