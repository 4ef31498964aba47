#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/action_cases.h"
#include "support/assertion_output.h"
#include "support/by_name.h"
#include "support/model_samples.h"
#include "support/session_fixture.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;

using ActionTest = SessionTest;

TEST_F(ActionTest, StatusesWithAnotherIdDifferBetweenDisksArraysAndVolumes) {
  const auto failure = [this](const char* operation, VEX_STATUS status, const auto& action) {
    m_library.answer(onCall(operation), status);
    return failureOf(action);
  };
  const std::string invalidState = "Item not in appropriate state for action to complete successfully";
  const std::string internalError = "Internal error occurred";
  const auto clear = [this] { m_session.clearMetadata(kFree1); };
  EXPECT_EQ(failure("VexDiskClearMetadata", 18, clear), (Failure{"Mirn_DISK_INVALID_STATE", invalidState}));
  EXPECT_EQ(failure("VexDiskClearMetadata", 16, clear), (Failure{"INTERNAL_ERROR", internalError}));
  const auto add = [this] { m_session.addDisks(kArray, {}); };
  EXPECT_EQ(failure("VexAddDisksToArray", 18, add), (Failure{"INTERNAL_ERROR", invalidState}));
  EXPECT_EQ(failure("VexAddDisksToArray", 16, add), (Failure{"Mirn_ARRAY_INVALID_STATE", internalError}));
  const auto reset = [this] { m_session.resetSmartEvent(kFree1); };
  EXPECT_EQ(failure("VexDiskResetSmartEvent", 18, reset), (Failure{"INTERNAL_ERROR", invalidState}));
}

struct SwitchCase {
  const char* name;
  EnableState state;
  const char* sent;
};

class SwitchingAction : public ActionTest, public testing::WithParamInterface<SwitchCase> {};

TEST_P(SwitchingAction, SendsOneForEnabledAlone) {
  const std::string sent = GetParam().sent;
  m_session.setWriteCacheState(41, GetParam().state);
  m_session.setReadPatrolState(11, GetParam().state);
  m_session.setRohiState(11, GetParam().state);
  m_session.locate(complete<Port>().handle(63).build(), GetParam().state);
  EXPECT_THAT(
      m_library.actionTexts(),
      ElementsAre("VexArraySetWriteCacheState(41, " + sent + ")", "VexReadPatrolSetState(11, " + sent + ")",
                  "VexROHISetState(11, " + sent + ")", "VexPortLocate(63, " + sent + ")"));
}

INSTANTIATE_TEST_SUITE_P(States, SwitchingAction,
                         testing::Values(SwitchCase{"Unknown", EnableState::UNKNOWN, "0"},
                                         SwitchCase{"Disabled", EnableState::DISABLED, "0"},
                                         SwitchCase{"Enabled", EnableState::ENABLED, "1"},
                                         SwitchCase{"Other", EnableState(3), "0"}),
                         ByName());

TEST_F(ActionTest, MarkAsSpareHandsTheArrayOnUnchanged) {
  m_session.markAsSpare(kFree1, 0);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexDiskMarkAsSpare(23, 0)"));
}

TEST_F(ActionTest, AddDisksWithoutDisksSendsANullPointerAndZero) {
  m_session.addDisks(kArray, {});
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexAddDisksToArray(41, null, 0, 0)"));
}

// Removing a disk

TEST_F(ActionTest, RemoveDiskIsRefusedWithoutManagedHotplug) {
  const EndDevice fixed = complete<EndDevice>().managedHotplug(false).build();
  EXPECT_EQ(failureOf([&] { m_session.removeDisk(fixed); }),
            (Failure{"NOT_SUPPORTED", "Action is not supported"}));
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(ActionTest, RemoveDiskGoesByThePictureAndNotByTheLibrary) {
  givenPicture([](ScriptedMachine& machine) {
    for (const VEX_HANDLE disk : {kMember1, kFree1}) machine.endDevices.at(disk).managedHotplug = 1;
    machine.volumes.at(kSystemVolume).state = VEX_VOLUME_STATE_DEGRADED;
  });
  EXPECT_EQ(failureOf([this] { m_session.removeDisk(device(kMember1)); }).errorId, "NOT_SUPPORTED");
  EXPECT_EQ(failureOf([this] { m_session.removeDisk(device(kFree1)); }), kNoFailure);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexPhyRemove(33, 1)"));
}

// Unlocking a disk

struct PasswordCase {
  const char* name;
  std::wstring password;
  std::string sent;  ///< UTF-8; empty: refused.
};

class UnlockPassword : public ActionTest, public testing::WithParamInterface<PasswordCase> {};

TEST_P(UnlockPassword, HasAtMostThirtyTwoBytes) {
  const Failure failure =
      failureOf([this] { m_session.unlock(kFree1, UserLevel::kUser, GetParam().password); });
  if (GetParam().sent.empty()) {
    EXPECT_EQ(failure, (Failure{"INVALID_PARAMETER", "Invalid locked item password"}));
    EXPECT_THAT(m_library.calls(), IsEmpty());
  } else {
    EXPECT_EQ(failure, kNoFailure);
    EXPECT_THAT(m_library.actionTexts(),
                ElementsAre("VexDiskUnlock(23, {" + fieldBytes(GetParam().sent, 32) + u32(0) + "})"));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Passwords, UnlockPassword,
    testing::Values(PasswordCase{"OneCharacter", L"p", "p"},
                    PasswordCase{"ThirtyOne", std::wstring(31, L'p'), std::string(31, 'p')},
                    PasswordCase{"ThirtyTwo", std::wstring(32, L'p'), std::string(32, 'p')},
                    PasswordCase{"ThirtyThree", std::wstring(33, L'p'), ""},
                    PasswordCase{"ThirtyTwoBytesOfUtf8", std::wstring(10, L'\u20ac') + L"pp",
                                 "\342\202\254\342\202\254\342\202\254\342\202\254\342\202\254"
                                 "\342\202\254\342\202\254\342\202\254\342\202\254\342\202\254pp"},
                    PasswordCase{"ThirtyThreeBytesOfUtf8", std::wstring(11, L'\u20ac'), ""}),
    ByName());

TEST_F(ActionTest, UnlockSendsAnEmptyPassword) {
  m_session.unlock(kFree1, UserLevel::kUser, L"");
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexDiskUnlock(23, {" + zeros(36) + "})"));
}

TEST_F(ActionTest, UnlockRefusesAPasswordThatIsNoText) {
  EXPECT_THROW(m_session.unlock(kFree1, UserLevel::kUser, std::wstring(1, wchar_t(0xD800))),
               std::range_error);
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(ActionTest, UnlockDemandsOneOfTwoLevels) {
  EXPECT_DEATH(
      m_session.unlock(kFree1, UserLevel(2), L"secret"),
      failedAssertion("UserLevel::kMaster == level || UserLevel::kUser == level", "src\\mirn_session"));
}

}  // namespace
