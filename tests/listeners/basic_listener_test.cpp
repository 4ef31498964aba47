#include "basic_listener.h"

#include "listeners/order_of_checks.h"
#include "mirn_exception.h"
#include "service_exceptions.h"
#include "support/by_name.h"

namespace {

constexpr std::uint64_t kHighestUnsigned = 18446744073709551615ULL;

class BasicListenerTest : public ListenerTest<BasicListener> {
 protected:
  std::string putTimeout(std::uint64_t seconds) {
    ServiceObject request = body({});
    request.member(L"locate_timeout") = seconds;
    return put("config", request);
  }
};

TEST_F(BasicListenerTest, StateTellsTheServiceStateAndWhatRuns) {
  m_session.serviceState = L"WARNING";
  m_session.volumesInProgress = {aVolume(L"7").name(L"Data").state(VolumeState::REBUILDING),
                                 aVolume(L"5").name(L"Logs").state(VolumeState::VERIFYING)};
  EXPECT_EQ(get("state"),
            "inProgress[0].action = \"REBUILDING\", inProgress[0].objectID = \"7\", "
            "inProgress[0].objectName = \"Data\", inProgress[0].objectType = \"VOLUME\", "
            "inProgress[1].action = \"VERIFYING\", inProgress[1].objectID = \"5\", "
            "inProgress[1].objectName = \"Logs\", inProgress[1].objectType = \"VOLUME\", "
            "state = \"WARNING\"");
}

TEST_F(BasicListenerTest, StateWithoutARunningOperationHoldsAnEmptyArray) {
  EXPECT_EQ(get("state"), "inProgress = [], state = \"NORMAL\"");
}

TEST_F(BasicListenerTest, AFailureOfTheSecondReadFailsTheStateUnchanged) {
  m_session.failingRead = "getVolumesInProgress";
  EXPECT_EQ(get("state"), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

TEST_F(BasicListenerTest, VersionIsTheSessionsRecord) {
  EXPECT_EQ(get("version"), describe(complete<Version>().build().toServiceObject()));
}

TEST_F(BasicListenerTest, AMissingVersionPassesUnchanged) {
  m_session.failingRead = "getVersion";
  EXPECT_EQ(get("version"), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

TEST_F(BasicListenerTest, RescanActsOnceAndAnswersNull) {
  EXPECT_EQ(post("rescan"), "null");
  EXPECT_EQ(m_session.actions, std::vector<std::string>{"rescan()"});
}

TEST_F(BasicListenerTest, AFailedRescanPassesUnchanged) {
  m_session.duringAction = [] { throw MirnException("Mirn_OPERATION_FAILED", "Refused"); };
  EXPECT_EQ(post("rescan"), failed("Mirn_OPERATION_FAILED", "Refused"));
}

TEST_F(BasicListenerTest, ConfigurationIsToldInSignedNumbers) {
  m_session.locateTimeout = 120;
  EXPECT_EQ(get("config"),
            "locate_timeout.description = \"Defines timeout for LED Locate in seconds. When LED for port is "
            "on, it will flash for this amount of time and then turns off.\", "
            "locate_timeout.max = signed 3600, locate_timeout.min = signed 1, "
            "locate_timeout.type = \"integer\", locate_timeout.value = signed 120");
}

TEST_F(BasicListenerTest, ConfigurationGoesOnShowingTheOldValueAfterAChange) {
  m_session.locateTimeout = 120;
  EXPECT_EQ(putTimeout(60), "null");
  EXPECT_NE(get("config").find("locate_timeout.value = signed 120"), std::string::npos);
}

TEST_F(BasicListenerTest, BothBoundsOfTheTimeoutAreAccepted) {
  EXPECT_EQ(putTimeout(1), "null");
  EXPECT_EQ(putTimeout(3600), "null");
  EXPECT_EQ(m_session.actions, (std::vector<std::string>{"setLocateTimeout(1)", "setLocateTimeout(3600)"}));
}

TEST_F(BasicListenerTest, ATimeoutBelowTheBoundIsRefused) {
  expectRefused(putTimeout(0), "INVALID_PARAMETER", "Timeout value is too low or negative");
}

TEST_F(BasicListenerTest, ATimeoutAboveTheBoundIsRefused) {
  expectRefused(putTimeout(3601), "INVALID_PARAMETER", "Timeout value is too high");
}

TEST_F(BasicListenerTest, TheHighestTimeoutTurnsNegativeAndIsTooLow) {
  expectRefused(putTimeout(kHighestUnsigned), "INVALID_PARAMETER", "Timeout value is too low or negative");
}

TEST_F(BasicListenerTest, ASignedTimeoutIsNoUnsignedNumber) {
  ServiceObject request = body({});
  request.member(L"locate_timeout") = std::int64_t{60};
  expectInvalid(put("config", request), "Argument: locate_timeout not an unsigned integer type");
}

TEST_F(BasicListenerTest, AnEmptyConfigurationRequestIsRefused) {
  expectRefused(put("config", body({})), "INVALID_PARAMETER", "Configuration request cannot be empty");
}

TEST_F(BasicListenerTest, AConfigurationRequestMustBeAnObject) {
  expectInvalid(put("config"), "Argument: root not an object type");
}

TEST_F(BasicListenerTest, AnUnknownMemberOfTheConfigurationIsNotAllowed) {
  expectInvalid(put("config", body({{"colour", "red"}})), "Argument: colour not allowed");
}

TEST_F(BasicListenerTest, ChangingTheConfigurationTakesAnyParameter) {
  EXPECT_EQ(put("config", body({{"locate_timeout", 60u}}), {{L"force", L"1"}}), "null");
}

TEST_F(BasicListenerTest, AStoreThatRefusesIsAnInternalError) {
  m_session.storeRefuses = true;
  EXPECT_EQ(putTimeout(60),
            refused("INTERNAL_ERROR", "Could not change LED Locate timeout due to permission denied"));
  EXPECT_EQ(m_session.actions, std::vector<std::string>{"setLocateTimeout(60)"});
}

TEST_F(BasicListenerTest, OtherMethodsOnAPathAreNotFound) {
  EXPECT_EQ(get("rescan"), notFound());
  EXPECT_EQ(post("state"), notFound());
  EXPECT_EQ(remove("config"), notFound());
}

TEST_F(BasicListenerTest, ReadsIgnoreABody) {
  EXPECT_EQ(ask({HttpMethod::kGet, "state", body({{"x", true}}), {}}), "inProgress = [], state = \"NORMAL\"");
}

void arrangeNothing(FakeSession&) {}

INSTANTIATE_TEST_SUITE_P(
    Basic, OrderOfChecks,
    testing::Values(checksOf<BasicListener>("State", arrangeNothing, {HttpMethod::kGet, "state"},
                                            {unknownParameter()}),
                    checksOf<BasicListener>("Version", arrangeNothing, {HttpMethod::kGet, "version"},
                                            {unknownParameter()}),
                    checksOf<BasicListener>("GetConfig", arrangeNothing, {HttpMethod::kGet, "config"},
                                            {unknownParameter()}),
                    // Here the parameters come first.
                    checksOf<BasicListener>("Rescan", arrangeNothing, {HttpMethod::kPost, "rescan"},
                                            {unknownParameter(), unexpectedBody()})),
    ByName());

}  // namespace
