#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <chrono>
#include <future>

#include "support/action_cases.h"
#include "support/by_name.h"
#include "support/model_samples.h"
#include "support/read_cases.h"
#include "support/session_fixture.h"

namespace {

using namespace small_machine;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// What runs beside an action or a refresh runs from a hook in the middle of a library call, on a thread of
/// its own, and is over before that call goes on.
class SessionConcurrency : public SessionTest {
 protected:
  void setData(std::uint32_t state) {
    m_library.change([state](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = state; });
  }

  VolumeState stateOfData() { return volume(kDataVolume).state(); }

  std::vector<Failure> failuresOfAllReads() {
    std::vector<Failure> failures;
    for (const ReadCase& read : readCases()) {
      failures.push_back(failureOf([&] { read.run(m_session, m_ids); }));
    }
    return failures;
  }

  void SetUp() override {
    givenPicture();
    m_ids = {controller(kSata).id(), withHandle(m_session.getRaids(), kSataRaid).id()};
  }

 private:
  ReadIds m_ids;
};

// Reads

TEST_F(SessionConcurrency, ReadsGoOnWithTheOldPictureDuringTheLibraryCallOfAnAction) {
  during("VexRescan", [this] {
    setData(VEX_VOLUME_STATE_DEGRADED);
    EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
    EXPECT_EQ(stateOfData(), VolumeState::NORMAL);
  });
  m_session.rescan();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
}

TEST_F(SessionConcurrency, ReadsTimeOutWhileAnActionRenewsThePicture) {
  during("VexSessionOpen", [this] { EXPECT_THAT(failuresOfAllReads(), Each(kLockTimeout)); });
  m_session.rescan();
  EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
}

TEST_F(SessionConcurrency, ReadsAndActionsTimeOutWhileTheStartTakesItsPicture) {
  m_session.startWithPatience(0);
  during("VexSessionOpen", [this] {
    EXPECT_THAT(failuresOfAllReads(), Each(kLockTimeout));
    EXPECT_EQ(failureOf([this] { m_session.rescan(); }), kLockTimeout);
  });
  m_session.start();
  EXPECT_THAT(m_library.actionTexts(), IsEmpty());
  EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
}

TEST_F(SessionConcurrency, TheLocateTimeoutNeedsNoLock) {
  during("VexSessionOpen", [this] {
    EXPECT_EQ(m_session.getLocateTimeout(), 12);
    EXPECT_TRUE(m_session.setLocateTimeout(60));
  });
  m_session.rescan();
}

TEST_F(SessionConcurrency, ReadsGoOnWithTheOldPictureWhileARefreshTakesTheNewOne) {
  setData(VEX_VOLUME_STATE_DEGRADED);
  during("VexSessionClose", [this] {
    EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
    EXPECT_EQ(stateOfData(), VolumeState::NORMAL);
  });
  m_session.refresh(false);
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
}

TEST_F(SessionConcurrency, ReadersSeeOnePictureOrTheOther) {
  constexpr int kReaders = 3;
  m_session.start();
  m_library.recordCalls(false);
  std::atomic<bool> reading{true};
  boost::latch allReading(kReaders);
  std::vector<std::thread> readers;
  readers.reserve(kReaders);
  for (int i = 0; i < kReaders; ++i) {
    readers.emplace_back([&] {
      for (bool first = true; reading; first = false) {
        const auto volumes = m_session.getVolumes();
        EXPECT_EQ(volumes.at(0).state(), volumes.at(1).state());
        if (first) allReading.count_down();
      }
    });
  }
  allReading.wait();
  for (int exchange = 0; exchange < 20; ++exchange) {
    for (const std::uint32_t state : {VEX_VOLUME_STATE_DEGRADED, VEX_VOLUME_STATE_NORMAL}) {
      m_library.change([state](ScriptedMachine& machine) {
        machine.volumes.at(kSystemVolume).state = state;
        machine.volumes.at(kDataVolume).state = state;
      });
      m_session.refresh(false);
    }
  }
  reading = false;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(m_events.take().size(), 80u) << "every exchange was recorded";
}

TEST_F(SessionConcurrency, ReadersSeeNothingOfARestart) {
  constexpr int kReaders = 3;
  m_session.start();
  m_library.recordCalls(false);
  std::atomic<bool> reading{true};
  boost::latch allReading(kReaders);
  std::vector<std::thread> readers;
  readers.reserve(kReaders);
  for (int i = 0; i < kReaders; ++i) {
    readers.emplace_back([&] {
      for (bool first = true; reading; first = false) {
        EXPECT_EQ(m_session.getVolumes().size(), 2u);
        if (first) allReading.count_down();
      }
    });
  }
  allReading.wait();
  for (int life = 0; life < 20; ++life) {
    m_library.events().release();
    m_session.stop();
    m_library.events().reset();
    m_session.start();
  }
  reading = false;
  for (std::thread& reader : readers) reader.join();
  EXPECT_THAT(m_log.take(), IsEmpty());
}

// Host threads that are interrupted

/// Runs `use` on a thread of Boost that has been interrupted and has not noticed yet, and still has not when
/// `use` ends.
template <class Use>
void onAnInterruptedThread(Use use) {
  boost::latch interrupted(1);
  boost::thread host([&] {
    {
      const boost::this_thread::disable_interruption wait;
      interrupted.wait();
    }
    EXPECT_NO_THROW(use());
    EXPECT_THROW(boost::this_thread::interruption_point(), boost::thread_interrupted);
  });
  host.interrupt();
  interrupted.count_down();
  host.join();
}

TEST_F(SessionConcurrency, AnInterruptedThreadIsServedLikeAnyOther) {
  setData(VEX_VOLUME_STATE_DEGRADED);
  onAnInterruptedThread([this] {
    m_session.rescan();
    EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
  });
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
}

TEST_F(SessionConcurrency, AnInterruptedThreadTimesOutLikeAnyOther) {
  during("VexSessionOpen", [this] {
    onAnInterruptedThread([this] {
      EXPECT_THAT(failuresOfAllReads(), Each(kLockTimeout));
      EXPECT_EQ(failureOf([this] { m_session.rescan(); }), kLockTimeout);
    });
  });
  m_session.rescan();
  EXPECT_THAT(failuresOfAllReads(), Each(kNoFailure));
}

// Actions

TEST_F(SessionConcurrency, AnActionTimesOutWhileARefreshTakesAPicture) {
  during("VexSessionOpen", [this] { EXPECT_EQ(failureOf([this] { m_session.rescan(); }), kLockTimeout); });
  m_session.refresh(false);
  EXPECT_THAT(m_library.actionTexts(), IsEmpty());
}

class EveryConcurrentAction : public SessionConcurrency, public testing::WithParamInterface<ActionCase> {};

TEST_P(EveryConcurrentAction, TimesOutBesideAnotherWithoutALibraryCall) {
  during("VexDiskAssignStoragePool",
         [this] { EXPECT_EQ(failureOf([this] { GetParam().run(m_session); }), kLockTimeout); });
  m_session.assignStoragePool(kFree2, 1);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexDiskAssignStoragePool(24, 1)"));
  EXPECT_EQ(failureOf([this] { GetParam().run(m_session); }), kNoFailure) << "afterwards";
}

TEST_P(EveryConcurrentAction, KeepsOthersOutUntilItsPictureIsTaken) {
  std::vector<Failure> failures;
  const auto rescan = [&] { failures.push_back(failureOf([this] { m_session.rescan(); })); };
  during(GetParam().operation(), rescan);
  during("VexSessionOpen", rescan);
  during("VexSessionClose", rescan);
  GetParam().run(m_session);
  EXPECT_THAT(failures, ElementsAre(kLockTimeout, kLockTimeout, kLockTimeout));
}

INSTANTIATE_TEST_SUITE_P(Actions, EveryConcurrentAction, testing::ValuesIn(actionCases()), ByName());

TEST_F(SessionConcurrency, RefusalsAheadOfTheLockComeWhileItIsHeld) {
  during("VexSessionOpen", [this] {
    const EndDevice fixed = complete<EndDevice>().managedHotplug(false).build();
    EXPECT_EQ(failureOf([&] { m_session.removeDisk(fixed); }).errorId, "NOT_SUPPORTED");
    const std::wstring tooLong(33, L'p');
    EXPECT_EQ(failureOf([&] { m_session.unlock(kFree1, UserLevel::kUser, tooLong); }).errorId,
              "INVALID_PARAMETER");
  });
  m_session.rescan();
}

TEST_F(SessionConcurrency, AnActionWaitsForTheOneBeforeIt) {
  m_session.waitNoLongerThan(3600);
  std::thread second;
  inTheMiddleOf("VexRescan", [&] {
    boost::latch begun(1);
    second = std::thread([&] {
      begun.count_down();
      m_session.resetSmartEvent(kFree1);
    });
    begun.wait();
  });
  m_session.rescan();
  second.join();
  // Whole, one after the other.
  Texts order;
  for (const ScriptedCall& call : m_library.calls()) {
    if (call.kind != OperationKind::READING) order.push_back(call.text());
  }
  EXPECT_THAT(order, ElementsAre("VexRescan()", "VexSessionOpen(out)", "VexSessionClose(2)",
                                 "VexDiskResetSmartEvent(23)", "VexSessionOpen(out)", "VexSessionClose(3)"));
}

// The event thread

// Ten rounds take far less than half a millisecond, unless the thread pauses, and the shortest of pauses
// takes a twentieth of one. The quickest ten count, for the machine may be busy with others.
TEST_F(SessionConcurrency, TheEventThreadGoesBackToItsWaitAtOnceAfterAStatusThatBringsNoRefresh) {
  constexpr std::size_t kRounds = 2000;
  constexpr std::size_t kStretch = 10;
  using Clock = std::chrono::steady_clock;
  m_library.recordCalls(false);
  m_library.answer(onEveryCall("VexEventWait"), VEX_STATUS_BUSY);
  std::vector<Clock::time_point> moments;
  std::promise<void> over;
  m_library.before(onEveryCall("VexEventWait"), [&](const ScriptedCall&) {
    moments.push_back(Clock::now());
    if (moments.size() == kRounds) over.set_value();
  });
  std::future<void> end = over.get_future();
  m_session.start();
  end.wait();
  m_session.stop();
  Clock::duration quickest = Clock::duration::max();
  for (std::size_t i = kStretch; i < moments.size(); ++i) {
    quickest = std::min(quickest, moments[i] - moments[i - kStretch]);
  }
  EXPECT_LT(quickest, std::chrono::microseconds(500));
}

TEST_F(SessionConcurrency, TheEventThreadWaitsForAnActionWithoutALimit) {
  m_session.start();
  m_session.waitNoLongerThan(0);
  m_library.events().waitForEventWaits(1);
  m_library.clearCalls();
  inTheMiddleOf("VexRescan", [this] { m_library.events().wake(); });
  m_session.rescan();
  m_library.events().waitForEventWaits(2);
  // The picture of the action is closed before that of the event thread is opened.
  std::vector<bool> byThisThread;
  for (const ScriptedCall& call : m_library.calls()) {
    if (call.operation == "VexSessionOpen" || call.operation == "VexSessionClose") {
      byThisThread.push_back(call.thread == std::this_thread::get_id());
    }
  }
  EXPECT_THAT(byThisThread, ElementsAre(true, true, false, false));
  EXPECT_THAT(m_log.take(), IsEmpty());
}

}  // namespace
