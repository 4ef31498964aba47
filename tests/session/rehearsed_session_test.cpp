#include "rehearsed_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "guarded_session.h"
#include "support/action_cases.h"
#include "support/by_name.h"
#include "support/session_fixture.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kTimeout = 77;

class RehearsedActions : public SessionTest, public testing::WithParamInterface<ActionCase> {};

TEST_P(RehearsedActions, KeepTheCallOfTheDeed) {
  RehearsedSession rehearsed(m_session.picture(), kTimeout);
  EXPECT_THROW(GetParam().run(rehearsed), EndOfRehearsal);
  EXPECT_THAT(m_library.calls(), IsEmpty());
  const PreparedCall copy = rehearsed.deed().call.value();
  EXPECT_EQ(copy.operation, GetParam().operation());
  EXPECT_STREQ(copy.mappedErrorId, GetParam().mappedErrorId);
  EXPECT_EQ(copy.mappedStatus, GetParam().mappedStatus);
  EXPECT_EQ(copy.make(), VEX_STATUS_SUCCESS);
  EXPECT_THAT(m_library.callTexts(), ElementsAre(GetParam().call));
}

INSTANTIATE_TEST_SUITE_P(Actions, RehearsedActions, testing::ValuesIn(actionCases()), ByName());

class Rehearsed : public SessionTest {
 protected:
  Rehearsed() { givenPicture(); }

  std::vector<std::string> named(RehearsedSession& session) {
    std::vector<std::string> texts;
    for (const RehearsedDeed::NamedObject& object : session.deed().objects) {
      texts.push_back(wideToUtf8(object.type + L" " + object.id));
    }
    return texts;
  }
};

TEST_F(Rehearsed, RefusesWhatTheDeedRefuses) {
  RehearsedSession rehearsed(m_session.picture(), kTimeout);
  const EndDevice fixed = device(kFree2);
  EXPECT_EQ(failureOf([&] { rehearsed.removeDisk(fixed); }),
            (Failure{"NOT_SUPPORTED", "Action is not supported"}));
  EXPECT_EQ(failureOf([&] { rehearsed.unlock(23, UserLevel::kUser, std::wstring(33, L'x')); }),
            (Failure{"INVALID_PARAMETER", "Invalid locked item password"}));
  EXPECT_FALSE(rehearsed.deed().call);
}

TEST_F(Rehearsed, KeepsASettingWithinItsBounds) {
  const std::string before = m_settings.image();
  RehearsedSession rehearsed(m_session.picture(), kTimeout);
  EXPECT_EQ(rehearsed.getLocateTimeout(), kTimeout);
  EXPECT_FALSE(rehearsed.setLocateTimeout(0));
  EXPECT_FALSE(rehearsed.setLocateTimeout(3601));
  EXPECT_THAT(rehearsed.deed().settings, IsEmpty());
  EXPECT_TRUE(rehearsed.setLocateTimeout(3600));
  EXPECT_THAT(rehearsed.deed().settings, ElementsAre(testing::Pair(L"locate_timeout", 3600)));
  EXPECT_EQ(m_settings.image(), before);
}

TEST_F(Rehearsed, KeepsWhatIsLookedUpAndFoundOnce) {
  RehearsedSession rehearsed(m_session.picture(), kTimeout);
  const std::wstring disk = device(kFree1).id();
  const std::wstring other = device(kFree2).id();
  const std::wstring sata = controller(kSata).id();
  rehearsed.findEndDevice(L"unknown");
  rehearsed.findVolumeByName(L"Data");
  rehearsed.getEndDevices();
  rehearsed.findEndDevices({disk, L"unknown", other, disk});
  rehearsed.findEndDevice(disk);
  rehearsed.getControllerPorts(sata);
  rehearsed.findController(sata);
  EXPECT_THROW(rehearsed.getControllerArrays(L"unknown"), ListenerException);
  EXPECT_THAT(named(rehearsed), ElementsAre("disk " + wideToUtf8(disk), "disk " + wideToUtf8(other),
                                            "controller " + wideToUtf8(sata)));
}

TEST_F(Rehearsed, StaysWithItsPicture) {
  RehearsedSession rehearsed(m_session.picture(), kTimeout);
  givenPicture([](ScriptedMachine& machine) { machine.volumes.clear(); });
  EXPECT_EQ(rehearsed.getVolumes().size(), 2u);
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
}

struct Objection {};

TEST_F(Rehearsed, GuardLooksUnderTheOwnershipThatExchangesNeed) {
  bool isAllowed = false;
  GuardedSession guarded(m_session, [&] {
    onAnotherThread([this] {
      EXPECT_EQ(failureOf([this] { m_session.rescan(); }),
                (Failure{"Mirn_OPERATION_FAILED", "Timeout on access to protected resource"}));
    });
    EXPECT_THAT(m_library.actionTexts(), IsEmpty());
    if (!isAllowed) throw Objection();
  });
  EXPECT_THROW(guarded.rescan(), Objection);
  EXPECT_THAT(m_library.calls(), IsEmpty());
  isAllowed = true;
  guarded.rescan();
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexRescan()"));
}

TEST_F(Rehearsed, GuardLooksAheadOfTheStore) {
  const std::string before = m_settings.image();
  GuardedSession guarded(m_session, [] { throw Objection(); });
  EXPECT_THROW(guarded.setLocateTimeout(60), Objection);
  EXPECT_EQ(m_settings.image(), before);
  EXPECT_EQ(guarded.getLocateTimeout(), m_session.getLocateTimeout());
  EXPECT_EQ(guarded.getVolumes().size(), m_session.getVolumes().size());
}

}  // namespace
