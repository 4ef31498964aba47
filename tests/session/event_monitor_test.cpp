#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <thread>

#include "support/session_fixture.h"
#include "vex_exception.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kOpenFailed[] = "Warning: Ordan (R) Mirn Plug-In: Failed to open a session";

/// A session whose event thread runs, wherever a test starts it.
class EventMonitor : public SessionTest {
 protected:
  /// The first picture is taken and the event thread waits for the first time.
  void started() {
    m_session.start();
    m_library.events().waitForEventWaits(1);
  }

  /// The event thread has had this answer and waits again.
  void afterWake(VEX_STATUS status = VEX_STATUS_SUCCESS) { m_library.events().wakeAndSettle(status); }

  void stopped() {
    m_library.events().release();
    m_session.stop();
  }

  void degradeData() {
    m_library.change(
        [](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_DEGRADED; });
  }

  VolumeState stateOfData() { return volume(kDataVolume).state(); }

  /// The calls of the event thread that are no reading.
  Texts eventCalls() { return textsOf(onlyOf(OperationKind::EVENT, m_library.calls())); }

  std::size_t picturesTaken() {
    std::size_t count = 0;
    for (const ScriptedCall& call : m_library.calls()) count += call.operation == "VexSessionOpen" ? 1 : 0;
    return count;
  }
};

// Start

TEST_F(EventMonitor, ConstructionCallsNoLibrary) { EXPECT_THAT(m_library.calls(), IsEmpty()); }

TEST_F(EventMonitor, StartTakesAPictureAndRecordsNothing) {
  started();
  EXPECT_EQ(m_session.getVolumes().size(), 2u);
  EXPECT_EQ(picturesTaken(), 1u);
  EXPECT_THAT(m_events.take(), IsEmpty());
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(EventMonitor, StartTakesThePictureItselfAndLeavesTheWaitingToTheEventThread) {
  started();
  for (const ScriptedCall& call : m_library.calls()) {
    EXPECT_EQ(call.thread != std::this_thread::get_id(), call.kind == OperationKind::EVENT) << call.text();
  }
}

TEST_F(EventMonitor, StartLimitsTheWaitForALockToThirtySeconds) {
  started();
  EXPECT_EQ(m_session.longestWait(), 30);
}

TEST_F(EventMonitor, ASecondStartDoesNothing) {
  started();
  m_library.clearCalls();
  m_session.start();
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(EventMonitor, AFailedFirstPictureIsLoggedAndTheNextWakeUpFillsIt) {
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  started();
  EXPECT_THAT(m_log.take(), ElementsAre(kOpenFailed));
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
  EXPECT_EQ(m_session.getServiceState(), L"NORMAL");
  EXPECT_THAT(m_events.take(), IsEmpty());

  afterWake();
  EXPECT_EQ(m_session.getVolumes().size(), 2u);
  EXPECT_EQ(m_session.getVersion().vexVersion(), L"8.7.6.5432");
  EXPECT_THAT(m_events.take(),
              ElementsAre("VOLUME_ADDED INFO System", "VOLUME_ADDED INFO Data", "DISK_ADDED INFO SN21",
                          "DISK_ADDED INFO SN22", "DISK_ADDED INFO SN23", "DISK_ADDED INFO SN24",
                          "DISK_ADDED INFO SN25", "DISK_ADDED INFO SN26", "DISK_ADDED INFO SN27"));
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(EventMonitor, AFailedFirstPictureIsFilledByTheNextActionToo) {
  m_library.answer(onCall("VexGetVolumeInfo"), VEX_STATUS_FAILED);
  started();
  EXPECT_THAT(m_log.take(),
              ElementsAre("Warning: Ordan (R) Mirn Plug-In: Error occurred while taking a snapshot"));
  m_session.rescan();
  EXPECT_EQ(m_session.getVolumes().size(), 2u);
  EXPECT_EQ(m_events.take().size(), 9u);
}

TEST_F(EventMonitor, ARestartWhosePictureFailsServesAnEmptyOne) {
  started();
  ASSERT_EQ(m_session.getVolumes().size(), 2u);
  stopped();
  m_library.events().reset();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  started();
  EXPECT_THAT(m_log.take(), ElementsAre(kOpenFailed));
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
  EXPECT_THAT(m_session.getControllers(), IsEmpty());
  EXPECT_EQ(failureOf([this] { m_session.getVersion(); }).text, "Version is not available yet");
  EXPECT_THAT(m_events.take(), IsEmpty());

  afterWake();
  EXPECT_EQ(m_session.getVolumes().size(), 2u);
  EXPECT_EQ(m_events.take().size(), 9u) << "everything is new again";
}

TEST_F(EventMonitor, ARestartWhosePictureCannotBeClosedServesAnEmptyOne) {
  started();
  stopped();
  m_library.events().reset();
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_THROW(m_session.start(), VexException);
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
}

TEST_F(EventMonitor, AStartWithoutAThreadToBeHadSaysSoAndCanBeTriedAgain) {
  m_session.runOutOfThreadsOnce();
  try {
    m_session.start();
    FAIL() << "no failure";
  } catch (const std::system_error& failure) {
    EXPECT_EQ(failure.code(), std::errc::resource_unavailable_try_again);
  }
  EXPECT_EQ(picturesTaken(), 1u);
  EXPECT_THAT(eventCalls(), IsEmpty());

  m_session.start();
  ASSERT_EQ(picturesTaken(), 2u) << "no trace of the first";
  m_library.events().waitForEventWaits(1);
  degradeData();
  afterWake();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
}

TEST_F(EventMonitor, AStartThatDoesNotGetTheLockInTimeSaysSoAndCanBeTriedAgain) {
  givenPicture();
  m_session.startWithPatience(0);
  during("VexRescan", [this] {
    EXPECT_EQ(failureOf([this] { m_session.start(); }), kLockTimeout);
    EXPECT_EQ(m_session.getVolumes().size(), 2u) << "the picture stays";
  });
  m_session.rescan();
  EXPECT_EQ(picturesTaken(), 1u) << "that of the action";
  EXPECT_THAT(eventCalls(), IsEmpty()) << "no thread";
  EXPECT_THAT(m_log.take(), IsEmpty());

  started();
  EXPECT_EQ(picturesTaken(), 2u);
}

TEST_F(EventMonitor, ARefusedCloseLeavesStartAsItIs) {
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_THROW(m_session.start(), VexException);
  EXPECT_THAT(eventCalls(), IsEmpty()) << "no thread";
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
  EXPECT_THAT(m_log.take(), IsEmpty());
  started();
  EXPECT_EQ(m_session.getVolumes().size(), 2u) << "a later start succeeds";
}

// Stop

TEST_F(EventMonitor, SubscribesOnceWaitsFiveSecondsAtATimeAndUnsubscribesOnce) {
  started();
  const std::string wait = eventCalls().back();
  afterWake();
  stopped();
  const Texts calls = eventCalls();
  EXPECT_EQ(calls.front(), "VexGetEventHandle(out)");
  for (std::size_t i = 1; i + 1 < calls.size(); ++i) EXPECT_EQ(calls[i], wait);
  const std::string handle = calls.back().substr(calls.back().find('('));
  EXPECT_EQ(calls.back(), "VexFreeEventHandle" + handle);
  EXPECT_EQ(wait, "VexEventWait(5000, " + handle.substr(1));
  EXPECT_NE(handle, "(0)");
}

TEST_F(EventMonitor, StopsAgainWithoutEffect) {
  started();
  stopped();
  m_library.clearCalls();
  m_session.stop();
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(EventMonitor, StartsAgainAfterAStop) {
  started();
  stopped();
  degradeData();
  m_library.events().reset();
  started();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
  EXPECT_THAT(m_events.take(), IsEmpty()) << "a first picture is not compared";
}

TEST_F(EventMonitor, AStopWithoutAStartDoesNothing) {
  m_session.stop();
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(EventMonitor, TheEndOfASessionEndsItsThread) {
  {
    MirnSession other;
    other.start();
    m_library.events().waitForEventWaits(1);
    m_library.events().release();
  }
  EXPECT_EQ(m_library.calls().back().operation, "VexFreeEventHandle");
}

/// Ends the session while its thread waits, and then lets that wait end with `status`.
class TheLastWait : public EventMonitor, public testing::WithParamInterface<VEX_STATUS> {
 protected:
  void stoppedDuringTheWait() {
    const ovra::PluginPosition position = m_session.changes().position();
    std::thread stopper([this] { m_session.stop(); });
    // Whoever waits for a change is sent away once the thread shall end.
    EXPECT_FALSE(m_session.changes().waitForChange(position, std::numeric_limits<std::int64_t>::max()));
    m_library.events().wake(GetParam());
    m_library.events().release();
    stopper.join();
  }

  static bool bringsAPicture() {
    return GetParam() == VEX_STATUS_SUCCESS || GetParam() == VEX_STATUS_TIMEOUT;
  }
};

TEST_P(TheLastWait, BringsAPictureAsEveryOtherAndNoWaitMore) {
  started();
  degradeData();
  stoppedDuringTheWait();
  EXPECT_THAT(eventCalls(), SizeIs(3)) << "a handle, a wait, and the handle back";
  EXPECT_EQ(picturesTaken(), bringsAPicture() ? 2u : 1u);
  EXPECT_EQ(stateOfData(), bringsAPicture() ? VolumeState::DEGRADED : VolumeState::NORMAL);
  EXPECT_THAT(m_events.take(), SizeIs(bringsAPicture() ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(Statuses, TheLastWait,
                         testing::Values(VEX_STATUS_SUCCESS, VEX_STATUS_TIMEOUT, VEX_STATUS_BUSY));

// Wake-ups

TEST_F(EventMonitor, AWakeUpWithoutAChangeRecordsNothing) {
  started();
  afterWake();
  EXPECT_EQ(picturesTaken(), 2u);
  EXPECT_THAT(m_events.take(), IsEmpty());
}

TEST_F(EventMonitor, AWakeUpRenewsThePictureAndRecordsTheChange) {
  started();
  degradeData();
  EXPECT_EQ(stateOfData(), VolumeState::NORMAL);
  afterWake();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
  EXPECT_THAT(m_events.take(), ElementsAre("VOLUME_DEGRADED WARNING Data"));
}

TEST_F(EventMonitor, ATimeOutRenewsThePictureAsWell) {
  started();
  degradeData();
  afterWake(VEX_STATUS_TIMEOUT);
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
}

TEST_F(EventMonitor, EveryOtherStatusGoesOnAtOnceWithoutAPicture) {
  started();
  degradeData();
  m_library.clearCalls();
  for (VEX_STATUS status = 1; status <= 47; ++status) {
    if (status == VEX_STATUS_TIMEOUT) continue;
    afterWake(status);
  }
  EXPECT_EQ(eventCalls().size(), 46u);
  EXPECT_EQ(eventCalls(), m_library.callTexts()) << "nothing but waits";
  EXPECT_EQ(stateOfData(), VolumeState::NORMAL);
}

TEST_F(EventMonitor, ARefusedSubscriptionIsNotNoticed) {
  m_library.answer(onCall("VexGetEventHandle"), VEX_STATUS_FAILED);
  started();
  EXPECT_THAT(eventCalls(), ElementsAre("VexGetEventHandle(out)", "VexEventWait(5000, 0)"));
  degradeData();
  afterWake();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
  stopped();
  EXPECT_EQ(eventCalls().back(), "VexFreeEventHandle(0)");
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(EventMonitor, AFailedPictureIsLoggedAndTheNextWakeUpTriesAgain) {
  started();
  degradeData();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  afterWake();
  EXPECT_THAT(m_log.take(), ElementsAre(kOpenFailed));
  EXPECT_EQ(stateOfData(), VolumeState::NORMAL) << "the old picture stays";
  EXPECT_THAT(m_events.take(), IsEmpty());
  afterWake();
  EXPECT_EQ(stateOfData(), VolumeState::DEGRADED);
  EXPECT_THAT(m_events.take(), ElementsAre("VOLUME_DEGRADED WARNING Data"));
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(EventMonitor, RecordsVolumesAheadOfDisksAndWhatIsGoneAheadOfTheRest) {
  started();
  m_library.change([](ScriptedMachine& machine) {
    machine.endDevices.remove(kLyxDisk3);
    machine.endDevices.at(kFree1).diskState = VEX_DISK_STATE_FAILED;
    machine.addDisk(80, kSata);
    machine.volumes.remove(kSystemVolume);
    machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_FAILED;
    machine.addVolume(81, "New", kArray, VEX_RAID_LEVEL_0);
  });
  afterWake();
  EXPECT_THAT(m_events.take(),
              ElementsAre("VOLUME_DELETED INFO System", "VOLUME_FAILED ERROR Data", "VOLUME_ADDED INFO New",
                          "DISK_REMOVED INFO SN27", "DISK_FAILED ERROR SN23", "DISK_ADDED INFO SN80"));
}

TEST_F(EventMonitor, ADeviceThatIsMissingFromTheStartRecordsNothingUntilItIsGone) {
  started();
  m_library.change(
      [](ScriptedMachine& machine) { machine.addDisk(80, kSata).diskState = VEX_DISK_STATE_MISSING; });
  afterWake();
  EXPECT_THAT(m_events.take(), IsEmpty());
  m_library.change([](ScriptedMachine& machine) { machine.endDevices.remove(80); });
  afterWake();
  EXPECT_THAT(m_events.take(), ElementsAre("DISK_REMOVED INFO SN80"));
}

// The end of the process

using EventMonitorDeathTest = EventMonitor;

TEST_F(EventMonitorDeathTest, ARefusedCloseOnTheEventThreadEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        m_session.start();
        m_library.events().waitForEventWaits(1);
        m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
        m_library.events().wakeAndSettle();
      },
      "VexException");
}

TEST_F(EventMonitorDeathTest, AFailedAllocationOnTheEventThreadEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        m_session.start();
        m_library.events().waitForEventWaits(1);
        m_library.before(onCall("VexGetVolumeInfo"), [](const ScriptedCall&) { throw std::bad_alloc(); });
        m_library.events().wakeAndSettle();
      },
      "bad_alloc");
}

}  // namespace
