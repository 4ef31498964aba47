#include "ports_listener.h"

#include <gmock/gmock.h>

#include "enddevices_listener.h"
#include "listeners/order_of_checks.h"
#include "mirn_exception.h"
#include "support/by_name.h"

namespace {

using testing::ElementsAre;

class PortsListenerTest : public ListenerTest<PortsListener> {
 protected:
  PortsListenerTest() { m_session.ports = {aPort(L"32"), aPort(L"31")}; }

  std::string locate(const char* state) { return put("31/locate", body({{"state", state}})); }
};

TEST_F(PortsListenerTest, ListsPortsInTheSessionsOrder) {
  EXPECT_EQ(get(""), forms({m_session.ports[0], m_session.ports[1]}));
  m_session.ports.clear();
  EXPECT_EQ(get(""), "[]");
}

TEST_F(PortsListenerTest, LocatingAnswersNull) {
  EXPECT_EQ(locate("ENABLED"), "null");
  EXPECT_THAT(m_session.actions, ElementsAre("locate(port 31, ENABLED)"));
}

TEST_F(PortsListenerTest, LocatingAPortThatIsLocatingIsPassedOn) {
  locate("ENABLED");
  EXPECT_EQ(locate("ENABLED"), "null");
  EXPECT_EQ(m_session.actions.size(), 2u);
}

TEST_F(PortsListenerTest, TheLedIsOnlyEverSwitchedOn) {
  for (const char* state : {"DISABLED", "OFF", "enabled"}) {
    expectRefused(locate(state), "INVALID_PARAMETER", "Invalid state parameter");
  }
}

TEST_F(PortsListenerTest, FailuresPassUnchanged) {
  m_session.duringAction = [] { throw MirnException("NOT_SUPPORTED", "Refused"); };
  EXPECT_EQ(locate("ENABLED"), failed("NOT_SUPPORTED", "Refused"));
  m_session.loseEverything();
  EXPECT_EQ(get(""), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

class EndDevicesListenerTest : public ListenerTest<EndDevicesListener> {
 protected:
};

TEST_F(EndDevicesListenerTest, ListsDevicesInTheSessionsOrder) {
  m_session.endDevices = {aDisk(L"42"), aDisk(L"41").deviceType(DeviceType::NON_DISK_STORAGE)};
  EXPECT_EQ(get(""), forms({m_session.disk(L"42"), m_session.disk(L"41")}));
}

TEST_F(EndDevicesListenerTest, FailuresPassUnchanged) {
  m_session.loseEverything();
  EXPECT_EQ(get(""), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

void arrangePort(FakeSession& session) { session.ports = {aPort(L"31")}; }

INSTANTIATE_TEST_SUITE_P(
    Ports, OrderOfChecks,
    testing::Values(
        checksOf<EndDevicesListener>("EndDevices", arrangePort, {HttpMethod::kGet}, {unknownParameter()}),
        checksOf<PortsListener>("List", arrangePort, {HttpMethod::kGet, ""}, {unknownParameter()}),
        checksOf<PortsListener>("Locate", arrangePort,
                                {HttpMethod::kPut, "31/locate", body({{"state", "ENABLED"}})},
                                {unknownField(), unknownParameter(),
                                 unknownObject("/locate", "OBJECT_NOT_FOUND", "Invalid port identifier"),
                                 refusedField("bad state", {"state", "DISABLED"}, "INVALID_PARAMETER",
                                              "Invalid state parameter")})),
    ByName());

}  // namespace
