#include "controllers_listener.h"

#include <gmock/gmock.h>

#include "listeners/order_of_checks.h"
#include "mirn_exception.h"
#include "support/by_name.h"

namespace {

using testing::ElementsAre;

void arrangeController(FakeSession& session) {
  session.controllers = {aController(L"11"), aController(L"12")};
  session.endDevices = {aDisk(L"41").onController(L"12"), aDisk(L"42").onController(L"11"),
                        aDisk(L"43").onController(L"12")};
  session.arrays = {anArray(L"21"), anArray(L"22")};
  session.ports = {aPort(L"31"), aPort(L"32")};
  session.volumes = {aVolume(L"1"), aVolume(L"2")};
  session.controllerArrays[L"12"] = {L"22"};
  session.controllerPorts[L"12"] = {L"31", L"32"};
  session.controllerVolumes[L"12"] = {L"2"};
}

class ControllersListenerTest : public ListenerTest<ControllersListener> {
 protected:
  ControllersListenerTest() { arrangeController(m_session); }

  /// The names in the order of the list.
  std::vector<std::string> listed() {
    const ServiceObject answer =
        makeOn<ControllersListener>(m_session)->handleRequest(HttpMethod::kGet, {}, {}, {});
    std::vector<std::string> names;
    for (auto position = answer.begin(); position != answer.end(); ++position) {
      names.push_back(wideToUtf8((*position).value->member(L"name").toString()));
    }
    return names;
  }
};

ControllerMaker controllerOf(ControllerType type, const std::wstring& name, VEX_HANDLE handle) {
  return aController(std::to_wstring(handle)).type(type).name(name).handle(handle);
}

TEST_F(ControllersListenerTest, ListsTheFormsOfControllers) {
  EXPECT_EQ(get(""), forms({m_session.controller(L"11"), m_session.controller(L"12")}));
}

TEST_F(ControllersListenerTest, ListsTheMainSataControllerAheadOfTheSecondaryWhateverTheHandles) {
  m_session.controllers = {controllerOf(ControllerType::SATA, L"Ordan sSATA", 1),
                           controllerOf(ControllerType::SATA, L"Ordan SATA", 2)};
  EXPECT_THAT(listed(), ElementsAre("Ordan SATA", "Ordan sSATA"));
  m_session.controllers = {controllerOf(ControllerType::SATA, L"Ordan SATA", 1),
                           controllerOf(ControllerType::SATA, L"Ordan sSATA", 2)};
  EXPECT_THAT(listed(), ElementsAre("Ordan SATA", "Ordan sSATA"));
}

TEST_F(ControllersListenerTest, ListsANameThatHoldsBothWordsAsSecondary) {
  m_session.controllers = {controllerOf(ControllerType::SATA, L"SATA or sSATA", 1),
                           controllerOf(ControllerType::SATA, L"SATA", 2)};
  EXPECT_THAT(listed(), ElementsAre("SATA", "SATA or sSATA"));
}

TEST_F(ControllersListenerTest, ComparesNamesOfSataControllersByCase) {
  m_session.controllers = {controllerOf(ControllerType::SATA, L"B SSATA", 1),
                           controllerOf(ControllerType::SATA, L"A SATA", 2)};
  EXPECT_THAT(listed(), ElementsAre("B SSATA", "A SATA")) << "both are main controllers";
}

TEST_F(ControllersListenerTest, ListsLyxAheadOfEveryOtherType) {
  m_session.controllers = {
      controllerOf(ControllerType::SCU, L"SCU", 1), controllerOf(ControllerType::SATA, L"SATA", 2),
      controllerOf(ControllerType::UNKNOWN, L"other", 3), controllerOf(ControllerType::NVMe, L"NVMe", 4),
      controllerOf(ControllerType::Lyx, L"Lyx", 5)};
  EXPECT_THAT(listed(), ElementsAre("Lyx", "other", "SATA", "NVMe", "SCU")) << "the others by type";
}

TEST_F(ControllersListenerTest, ListsControllersOfOneTypeByHandle) {
  for (const auto type : {ControllerType::Lyx, ControllerType::NVMe, ControllerType::SCU}) {
    m_session.controllers = {controllerOf(type, L"third", 30), controllerOf(type, L"first SATA", 10),
                             controllerOf(type, L"second sSATA", 20)};
    EXPECT_THAT(listed(), ElementsAre("first SATA", "second sSATA", "third"));
  }
}

TEST_F(ControllersListenerTest, TheOrderOfTheSessionsListDoesNotMatter) {
  std::vector<ControllerMaker> makers = {
      controllerOf(ControllerType::Lyx, L"0", 9), controllerOf(ControllerType::SATA, L"1 SATA", 7),
      controllerOf(ControllerType::SATA, L"2 other", 1), controllerOf(ControllerType::SATA, L"3 sSATA", 5),
      controllerOf(ControllerType::NVMe, L"4", 3)};
  std::vector<std::size_t> order = {0, 1, 2, 3, 4};
  do {
    m_session.controllers.clear();
    for (const std::size_t index : order) m_session.controllers.push_back(makers[index]);
    EXPECT_THAT(listed(), ElementsAre("0", "1 SATA", "2 other", "3 sSATA", "4"));
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ControllersListenerTest, ListsTheDevicesOfAController) {
  EXPECT_EQ(get("12/enddevices"), forms({m_session.disk(L"41"), m_session.disk(L"43")}));
}

TEST_F(ControllersListenerTest, ListsWhatTheSessionHoldsUnderAController) {
  EXPECT_EQ(get("12/arrays"), forms({m_session.array(L"22")}));
  EXPECT_EQ(get("12/ports"), forms({m_session.ports[0], m_session.ports[1]}));
  EXPECT_EQ(get("12/volumes"), forms({m_session.volume(L"2")}));
}

TEST_F(ControllersListenerTest, AnUnknownControllersDevicesAreNotFound) {
  EXPECT_EQ(get("999/enddevices"), refused("OBJECT_NOT_FOUND", "Controller identifier not found"));
}

TEST_F(ControllersListenerTest, TheSessionReportsAnUnknownControllerOfTheOtherLists) {
  for (const char* path : {"999/arrays", "999/ports", "999/volumes"}) {
    EXPECT_EQ(get(path), refused("OBJECT_NOT_FOUND", "Controller identifier not found")) << path;
  }
  EXPECT_EQ(m_session.reads["getControllers"], 0) << "the listener does not look";
}

TEST_F(ControllersListenerTest, FailuresOfTheReadsPassUnchanged) {
  m_session.loseEverything();
  for (const char* path : {"", "12/enddevices", "12/arrays", "12/ports", "12/volumes"}) {
    EXPECT_EQ(get(path), failed("Mirn_OPERATION_FAILED", kReadFailure)) << path;
  }
}

struct SwitchRow {
  std::string name;
  std::string path;
  ControllerMaker& (ControllerMaker::*turn)(bool);
  ControllerMaker& (ControllerMaker::*turnOther)(bool);
  std::string action;
};

/// The two switches differ in name only.
class Switches : public ControllersListenerTest, public testing::WithParamInterface<SwitchRow> {
 protected:
  std::string putState(const char* state) { return put(GetParam().path, body({{"state", state}})); }
  void turn(bool enabled) { (m_session.controller(L"12").*GetParam().turn)(enabled); }
};

TEST_P(Switches, AreSetByHandleAndTellTheNewState) {
  m_session.duringAction = [this] { turn(true); };
  EXPECT_EQ(putState("ENABLED"), "controllerId = \"12\", state = \"ENABLED\"");
  m_session.duringAction = [this] { turn(false); };
  EXPECT_EQ(putState("DISABLED"), "controllerId = \"12\", state = \"DISABLED\"");
  EXPECT_THAT(m_session.actions, ElementsAre(GetParam().action + "(handle 1012, ENABLED)",
                                             GetParam().action + "(handle 1012, DISABLED)"));
}

TEST_P(Switches, SetToTheirPresentValueTellTheIdAlone) {
  turn(true);
  EXPECT_EQ(putState("ENABLED"), "controllerId = \"12\"");
}

TEST_P(Switches, TellTheStateWhereTheyAreNotSupportedToo) {
  m_session.controller(L"12").unsupportedSwitches(false);
  EXPECT_EQ(putState("DISABLED"), "controllerId = \"12\"");
  m_session.duringAction = [this] { m_session.controller(L"12").unsupportedSwitches(true); };
  EXPECT_EQ(putState("ENABLED"), "controllerId = \"12\", state = \"ENABLED\"");
  EXPECT_EQ(m_session.actions.size(), 2u);
}

TEST_P(Switches, DoNotTellOfTheOtherOne) {
  m_session.duringAction = [this] { (m_session.controller(L"12").*GetParam().turnOther)(true); };
  EXPECT_EQ(putState("ENABLED"), "controllerId = \"12\"");
}

TEST_P(Switches, TakeNoOtherWord) {
  for (const char* state : {"ON", "enabled", "UNKNOWN"}) {
    expectRefused(putState(state), "INVALID_PARAMETER", "Invalid state parameter");
  }
}

TEST_P(Switches, ReportAFailureOfTheActionUnderTheListenersClass) {
  m_session.duringAction = [] { throw MirnException("NOT_SUPPORTED", "Refused"); };
  EXPECT_EQ(putState("ENABLED"), refused("NOT_SUPPORTED", "Refused"));
}

TEST_P(Switches, PassAFailureOfTheReadUnchanged) {
  m_session.failingRead = "getControllers";
  EXPECT_EQ(putState("ENABLED"), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

TEST_P(Switches, AnswerNullWhenTheControllerIsGoneAfterwards) {
  m_session.duringAction = [this] { m_session.controllers.clear(); };
  EXPECT_EQ(putState("ENABLED"), "null");
  EXPECT_EQ(m_session.actions.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Controllers, Switches,
                         testing::Values(SwitchRow{"ReadPatrol", "12/readpatrol",
                                                   &ControllerMaker::readPatrol, &ControllerMaker::rohi,
                                                   "setReadPatrolState"},
                                         SwitchRow{"Rohi", "12/rohi", &ControllerMaker::rohi,
                                                   &ControllerMaker::readPatrol, "setRohiState"}),
                         ByName());

std::vector<Fault> switchFaults(const std::string& rest) {
  return {
      unknownField(),
      unknownParameter(),
      unknownObject(rest, "OBJECT_NOT_FOUND", "Controller identifier not found"),
      refusedField("bad state", {"state", "ON"}, "INVALID_PARAMETER", "Invalid state parameter"),
  };
}

std::vector<Fault> listFaults(const std::string& rest) {
  return {unknownParameter(), unknownObject(rest, "OBJECT_NOT_FOUND", "Controller identifier not found")};
}

INSTANTIATE_TEST_SUITE_P(
    Controllers, OrderOfChecks,
    testing::Values(
        checksOf<ControllersListener>("List", arrangeController, {HttpMethod::kGet, ""},
                                      {unknownParameter()}),
        checksOf<ControllersListener>("EndDevices", arrangeController, {HttpMethod::kGet, "12/enddevices"},
                                      {unknownParameter(), unknownObject("/enddevices", "OBJECT_NOT_FOUND",
                                                                         "Controller identifier not found")}),
        checksOf<ControllersListener>("Arrays", arrangeController, {HttpMethod::kGet, "12/arrays"},
                                      listFaults("/arrays")),
        checksOf<ControllersListener>("Ports", arrangeController, {HttpMethod::kGet, "12/ports"},
                                      listFaults("/ports")),
        checksOf<ControllersListener>("Volumes", arrangeController, {HttpMethod::kGet, "12/volumes"},
                                      listFaults("/volumes")),
        checksOf<ControllersListener>("ReadPatrol", arrangeController,
                                      {HttpMethod::kPut, "12/readpatrol", body({{"state", "ENABLED"}})},
                                      switchFaults("/readpatrol")),
        checksOf<ControllersListener>("Rohi", arrangeController,
                                      {HttpMethod::kPut, "12/rohi", body({{"state", "ENABLED"}})},
                                      switchFaults("/rohi"))),
    ByName());

}  // namespace
