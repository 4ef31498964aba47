#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "status_text.h"
#include "support/action_cases.h"
#include "support/by_name.h"
#include "support/session_fixture.h"
#include "vex_exception.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr VEX_STATUS kLastStatus = 47;

std::vector<std::string> operationsOf(const ScriptedCalls& calls) {
  std::vector<std::string> operations;
  for (const ScriptedCall& call : calls) operations.push_back(call.operation);
  return operations;
}

class EveryAction : public SessionTest, public testing::WithParamInterface<ActionCase> {
 protected:
  void act() { GetParam().run(m_session); }

  void givenAnswer(VEX_STATUS status) { m_library.answer(onCall(GetParam().operation()), status); }

  /// During the library's call, whatever its answer.
  void givenThatAVolumeDegrades() {
    m_library.before(onCall(GetParam().operation()), [this](const ScriptedCall&) {
      m_library.change([](ScriptedMachine& machine) {
        machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_DEGRADED;
      });
    });
  }

  VolumeState stateInThePicture() { return volume(kDataVolume).state(); }

  static Failure failureFor(VEX_STATUS status) {
    const bool mapped = status == GetParam().mappedStatus;
    return {mapped ? GetParam().mappedErrorId : statusToErrorId(status), statusToText(status)};
  }
};

TEST_P(EveryAction, MakesItsOneLibraryCall) {
  act();
  EXPECT_THAT(m_library.actionTexts(), ElementsAre(GetParam().call));
}

TEST_P(EveryAction, TakesAPictureAfterItsCall) {
  m_session.takeSnapshot();
  std::vector<std::string> expected = operationsOf(m_library.takeCalls());
  expected.insert(expected.begin(), GetParam().operation());
  act();
  EXPECT_EQ(operationsOf(m_library.calls()), expected);
}

TEST_P(EveryAction, RaisesTheIdAndTextOfEachStatus) {
  m_library.recordCalls(false);
  for (VEX_STATUS status = 1; status <= kLastStatus; ++status) {
    givenAnswer(status);
    EXPECT_EQ(failureOf([this] { act(); }), failureFor(status)) << "status " << status;
  }
}

TEST_P(EveryAction, ShowsWhatItDid) {
  givenPicture();
  givenThatAVolumeDegrades();
  act();
  EXPECT_EQ(stateInThePicture(), VolumeState::DEGRADED);
  EXPECT_THAT(m_events.take(), ElementsAre("VOLUME_DEGRADED WARNING Data"));
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_P(EveryAction, ShowsWhatItDidBeforeItReportsAFailure) {
  givenPicture();
  givenThatAVolumeDegrades();
  givenAnswer(VEX_STATUS_INVALID_STATE);
  try {
    act();
    FAIL() << "no failure";
  } catch (const MirnException& failure) {
    EXPECT_THAT(m_events.take(), ElementsAre("VOLUME_DEGRADED WARNING Data"));
    EXPECT_STREQ(failure.what(), "Item not in appropriate state for action to complete successfully");
  }
  EXPECT_EQ(stateInThePicture(), VolumeState::DEGRADED);
}

TEST_P(EveryAction, OnlyLogsAFailedPicture) {
  givenPicture();
  givenThatAVolumeDegrades();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  EXPECT_EQ(failureOf([this] { act(); }), kNoFailure);
  EXPECT_THAT(m_log.take(), ElementsAre("Warning: Ordan (R) Mirn Plug-In: Failed to open a session"));
  EXPECT_THAT(m_events.take(), IsEmpty());
  EXPECT_EQ(stateInThePicture(), VolumeState::NORMAL) << "the old picture stays";
}

TEST_P(EveryAction, ReportsItsStatusAlsoWithAFailedPicture) {
  givenPicture();
  givenAnswer(VEX_STATUS_BUSY);
  m_library.answer(onCall("VexGetVolumeInfo"), VEX_STATUS_FAILED);
  EXPECT_EQ(failureOf([this] { act(); }), failureFor(VEX_STATUS_BUSY));
  EXPECT_THAT(m_log.take(),
              ElementsAre("Warning: Ordan (R) Mirn Plug-In: Error occurred while taking a snapshot"));
}

TEST_P(EveryAction, HandsARefusedCloseOnAsItIsAndLeavesTheLock) {
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_THROW(act(), VexException);
  m_library.clearCalls();
  EXPECT_EQ(failureOf([this] { act(); }), kNoFailure);
  EXPECT_THAT(m_library.actionTexts(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Actions, EveryAction, testing::ValuesIn(actionCases()), ByName());

TEST(Actions, AreTwentySeven) { EXPECT_THAT(actionCases(), SizeIs(27)); }

}  // namespace
