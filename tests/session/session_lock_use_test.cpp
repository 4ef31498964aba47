#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "session/lock_record.h"
#include "support/action_cases.h"
#include "support/by_name.h"
#include "support/read_cases.h"
#include "support/session_fixture.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;

/// A session that tells which ownership of its lock is held while events are recorded.
class TellingSession : public ImpatientSession {
 public:
  std::vector<std::string> heldAtEvents;

 protected:
  void recordEvents(const MirnSnapshot& before, const MirnSnapshot& now) override {
    heldAtEvents.push_back(LockRecord::instance().held());
    MirnSession::recordEvents(before, now);
  }
};

/// What a session asks of its lock, and what it holds at each of its steps.
class SessionLockUse : public testing::Test {
 protected:
  SessionLockUse() {
    LockRecord::instance().reset();
    m_session.refresh(false);
    m_session.waitNoLongerThan(17);
    m_ids = {m_session.getControllers().at(0).id(), m_session.getRaids().at(0).id()};
    m_session.heldAtEvents.clear();
    m_library.clearCalls();
    m_locks.take();
  }

  void TearDown() override {
    m_library.events().release();
    m_session.stop();
    EXPECT_EQ(m_locks.held(), "none") << "in the end";
    LockRecord::instance().reset();
  }

  /// From now on each call of the library writes down what is held meanwhile.
  void watchCalls() {
    for (const char* const operation : {"VexSessionOpen", "VexGetSystemInfo", "VexSessionClose"}) {
      m_library.before(onEveryCall(operation),
                       [this](const ScriptedCall&) { m_heldAtPicture.push_back(m_locks.held()); });
    }
  }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  DefaultSettings m_settings;
  LogLines m_log;
  LockRecord& m_locks = LockRecord::instance();
  TellingSession m_session;
  ReadIds m_ids;
  std::vector<std::string> m_heldAtPicture;
};

// Reads

class EveryReadsLock : public SessionLockUse, public testing::WithParamInterface<ReadCase> {};

TEST_P(EveryReadsLock, IsSharedAskedForOnceWithinTheLimit) {
  GetParam().run(m_session, m_ids);
  EXPECT_THAT(m_locks.take(), ElementsAre("shared 17"));
}

INSTANTIATE_TEST_SUITE_P(Reads, EveryReadsLock, testing::ValuesIn(readCases()), ByName());

TEST_F(SessionLockUse, ThePictureWithItsTimesIsHadWithinTheLimit) {
  m_session.datedPicture();
  EXPECT_THAT(m_locks.take(), ElementsAre("shared 17"));
}

TEST_F(SessionLockUse, SettingsNeedNone) {
  EXPECT_TRUE(m_session.setLocateTimeout(60));
  m_session.getLocateTimeout();
  EXPECT_THAT(m_locks.take(), IsEmpty());
}

// Actions

class EveryActionsLock : public SessionLockUse, public testing::WithParamInterface<ActionCase> {
 protected:
  void act() { GetParam().run(m_session); }
};

TEST_P(EveryActionsLock, IsAskedForWithinTheLimitAndSteppedUpWithoutOne) {
  act();
  EXPECT_THAT(m_locks.take(), ElementsAre("upgrade 17", "exclusive"));
}

TEST_P(EveryActionsLock, LetsReadersInDuringTheCallAndNobodyWhileThePictureIsTaken) {
  std::string heldAtCall;
  m_library.before(onCall(GetParam().operation()), [&](const ScriptedCall&) { heldAtCall = m_locks.held(); });
  watchCalls();
  act();
  EXPECT_EQ(heldAtCall, "upgrade");
  EXPECT_THAT(m_heldAtPicture, ElementsAre("exclusive", "exclusive", "exclusive"));
  EXPECT_EQ(m_locks.held(), "none") << "afterwards";
}

TEST_P(EveryActionsLock, IsHeldWhileItsEventsAreRecorded) {
  act();
  EXPECT_THAT(m_session.heldAtEvents, ElementsAre("exclusive"));
}

TEST_P(EveryActionsLock, IsLeftAfterAFailedAllocation) {
  m_library.before(onCall("VexGetVolumeInfo"), [](const ScriptedCall&) { throw std::bad_alloc(); });
  EXPECT_THROW(act(), std::bad_alloc);
  EXPECT_EQ(m_locks.held(), "none");
}

INSTANTIATE_TEST_SUITE_P(Actions, EveryActionsLock, testing::ValuesIn(actionCases()), ByName());

TEST_F(SessionLockUse, AConditionIsLookedAtWhereNoOtherActionComesBetween) {
  std::string held;
  m_session.carryOut({"", {}, {}, {}, [] { return VEX_STATUS_SUCCESS; }}, [&] { held = m_locks.held(); });
  EXPECT_EQ(held, "upgrade");
}

/// Without a limit there would be a request less, or another one.
TEST_F(SessionLockUse, AnActionOutlastsItsLimitWhileReadersLeave) {
  m_session.waitNoLongerThan(0);
  m_session.rescan();
  EXPECT_THAT(m_locks.take(), ElementsAre("upgrade 0", "exclusive"));
}

// The event thread

TEST_F(SessionLockUse, TheEventThreadWaitsForAnActionWithoutALimit) {
  m_session.waitNoLongerThan(0);
  m_session.refresh(false);
  EXPECT_THAT(m_locks.take(), ElementsAre("upgrade for ever", "exclusive"));
}

TEST_F(SessionLockUse, TheEventThreadLetsReadersInWhileItTakesAPicture) {
  watchCalls();
  m_session.refresh(false);
  EXPECT_THAT(m_heldAtPicture, ElementsAre("upgrade", "upgrade", "upgrade"));
}

TEST_F(SessionLockUse, TheEventThreadRecordsEventsWithoutTheLock) {
  m_session.refresh(false);
  EXPECT_THAT(m_session.heldAtEvents, ElementsAre("none"));
}

TEST_F(SessionLockUse, TheEventThreadLeavesTheLockAfterAFailedPicture) {
  m_library.answer(onCall("VexGetVolumeInfo"), VEX_STATUS_FAILED);
  m_session.refresh(false);
  EXPECT_THAT(m_locks.take(), ElementsAre("upgrade for ever"));
  EXPECT_THAT(m_session.heldAtEvents, IsEmpty());
  EXPECT_EQ(m_locks.held(), "none");
}

TEST_F(SessionLockUse, ARunningEventThreadDoesAllOfThat) {
  m_session.start();
  m_library.events().waitForEventWaits(1);
  m_locks.take();
  watchCalls();
  m_library.events().wakeAndSettle();
  EXPECT_THAT(m_locks.take(), ElementsAre("upgrade for ever", "exclusive"));
  EXPECT_THAT(m_heldAtPicture, ElementsAre("upgrade", "upgrade", "upgrade"));
  EXPECT_THAT(m_session.heldAtEvents, ElementsAre("none"));
}

// The start

TEST_F(SessionLockUse, AStartWaitsThirtySecondsAndLetsNobodyInWhileItTakesItsPicture) {
  watchCalls();
  m_session.start();
  EXPECT_THAT(m_locks.take(), ElementsAre("unique 30"));
  EXPECT_THAT(m_heldAtPicture, ElementsAre("exclusive", "exclusive", "exclusive"));
  EXPECT_THAT(m_session.heldAtEvents, IsEmpty());
}

TEST_F(SessionLockUse, AfterAStartEverybodyWaitsThirtySeconds) {
  m_session.start();
  m_library.events().waitForEventWaits(1);
  m_locks.take();
  m_session.getVolumes();
  m_session.rescan();
  EXPECT_THAT(m_locks.take(), ElementsAre("shared 30", "upgrade 30", "exclusive"));
}

}  // namespace
