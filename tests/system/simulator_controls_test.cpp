#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/by_name.h"
#include "system/system_host.h"

namespace host {

using testing::HasSubstr;

namespace {

class SimulatorRoutes : public SystemHost {
 protected:
  void SetUp() override { serve({{"VEXL2_CLOCK_SPEED", "0"}}, {"--simulator-controls"}); }
  void TearDown() override { stop(); }

  Reply post(const std::string& control, const std::string& body = "") {
    return request("POST", "simulator/" + control, body);
  }
};

TEST_F(SimulatorRoutes, AreListedWithTheirArguments) {
  const boost::json::array controls = list("simulator");
  EXPECT_EQ(controls.size(), 15u);
  EXPECT_EQ(find("simulator", "name", "fail-calls").at("arguments"),
            (boost::json::array{"operation", "skip", "count", "status"}));
}

TEST_F(SimulatorRoutes, PutAMachineInPlaceOfThePresentOne) {
  EXPECT_EQ(post("load-scenario", R"({"scenario": {}})").status, 204u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 204u);
  EXPECT_TRUE(list("mirn/controllers").empty());
}

TEST_F(SimulatorRoutes, TellWhyAScenarioIsRefused) {
  const Reply reply = post("load-scenario", R"({"scenario": {"nothing": 1}})");
  EXPECT_EQ(reply.status, 400u);
  EXPECT_THAT(std::string(reply.body.at("detail").as_string()), HasSubstr("nothing"));
}

TEST_F(SimulatorRoutes, LetOperationsFailSoOftenAndThenNoMore) {
  EXPECT_EQ(post("fail-calls", R"({"operation": "VexRescan", "skip": 1, "count": 1, "status": 15})").status,
            204u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 204u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 500u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 204u);
  EXPECT_EQ(post("count-calls", R"({"operation": "VexRescan"})").body.at("calls"), 3);
}

TEST_F(SimulatorRoutes, ForgetAllOrders) {
  post("fail-calls", R"({"operation": "VexRescan", "count": 4294967295, "status": 15})");
  EXPECT_EQ(request("POST", "mirn/rescan").status, 500u);
  EXPECT_EQ(post("clear-faults").status, 204u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 204u);
}

TEST_F(SimulatorRoutes, SetTheSpeedOfTheClockTheDelayAndTheWait) {
  EXPECT_EQ(post("set-clock-speed", R"({"speed": 1000})").status, 204u);
  EXPECT_EQ(post("delay-calls", R"({"operation": "VexRescan", "milliseconds": 1})").status, 204u);
  EXPECT_EQ(post("cap-event-wait", R"({"milliseconds": 20})").status, 204u);
  EXPECT_EQ(post("check").status, 204u);
}

struct WrongRequest {
  const char* name;
  const char* method;
  const char* target;
  const char* body;
  unsigned status;
  const char* detail;
};

class WrongSimulatorRequests : public SimulatorRoutes, public testing::WithParamInterface<WrongRequest> {};

TEST_P(WrongSimulatorRequests, AreProblemDocuments) {
  const WrongRequest& row = GetParam();
  const Reply reply = request(row.method, row.target, row.body);
  EXPECT_EQ(reply.status, row.status);
  EXPECT_EQ(reply.type, "application/problem+json");
  EXPECT_EQ(reply.body.at("detail"), row.detail);
}

INSTANTIATE_TEST_SUITE_P(
    System, WrongSimulatorRequests,
    testing::Values(
        WrongRequest{"UnknownControl", "POST", "simulator/explode", "{}", 404,
                     "There is nothing under this path"},
        WrongRequest{"TooManySegments", "POST", "simulator/check/now", "", 404,
                     "There is nothing under this path"},
        WrongRequest{"ReadOfAControl", "GET", "simulator/check", "", 405, "This path takes other methods"},
        WrongRequest{"ChangeOfTheList", "POST", "simulator", "", 405, "This path takes other methods"},
        WrongRequest{"NoArguments", "POST", "simulator/fail-disk", "", 400, "The argument disk is missing"},
        WrongRequest{"NoObject", "POST", "simulator/fail-disk", "[]", 400, "The body is not an object"},
        WrongRequest{"UnknownArgument", "POST", "simulator/check", R"({"a": 1})", 400,
                     "The argument a is not known"},
        WrongRequest{"NumberAsDisk", "POST", "simulator/fail-disk", R"({"disk": 1})", 400,
                     "The argument disk is not a text"},
        WrongRequest{"TextAsNumber", "POST", "simulator/set-clock-speed", R"({"speed": "1"})", 400,
                     "The argument speed is not a number from 0 to 2^32-1"},
        WrongRequest{"SpeedTooHigh", "POST", "simulator/set-clock-speed", R"({"speed": 4294967296})", 400,
                     "The argument speed is not a number from 0 to 2^32-1"},
        WrongRequest{"TimeBackwards", "POST", "simulator/advance-clock", R"({"milliseconds": -1})", 400,
                     "The argument milliseconds is not a number from 0 to 2^63-1"},
        WrongRequest{"ScenarioAsText", "POST", "simulator/load-scenario", R"({"scenario": "{}"})", 400,
                     "The argument scenario is not an object"},
        WrongRequest{
            "UnknownDisk", "POST", "simulator/pull-disk", R"({"disk": "nobody"})", 404,
            "There is no such disk: name it by its identity text, its serial number or its published id"},
        WrongRequest{
            "DiskThatIsIn", "POST", "simulator/insert-disk", R"({"disk": "OPT00417"})", 409,
            "Item not in appropriate state for action to complete successfully: look at the disk's state, "
            "which is as ordered already or does not allow it"},
        WrongRequest{
            "NoOperation", "POST", "simulator/fail-calls", R"({"operation": "VexNothing", "status": 1})", 400,
            "Invalid parameter was passed: an operation is named as in VexRescan, and a device as it is "
            "listed"}),
    ByName());

TEST_F(SimulatorRoutes, TakeADiskByItsPublishedId) {
  const boost::json::object disk = find("mirn/enddevices", "serialNumber", "OPT00417");
  const std::string body = R"({"disk": ")" + std::string(disk.at("id").as_string()) + "\"}";
  EXPECT_EQ(post("pull-disk", body).status, 204u);
  EXPECT_EQ(request("POST", "mirn/rescan").status, 204u);
  EXPECT_EQ(post("pull-disk", body).status, 409u);
  EXPECT_EQ(post("insert-disk", body).status, 204u);
}

TEST_F(SimulatorRoutes, NeedTheToken) {
  HttpConnection connection(m_host->port());
  EXPECT_EQ(
      connection.exchange(HttpConnection::make("POST", "/api/v1/simulator/check", "wrong")).result_int(),
      401u);
}

TEST_F(SystemHost, WithoutTheOptionThereAreNoSimulatorRoutes) {
  serve();
  EXPECT_EQ(get("simulator").status, 404u);
  EXPECT_EQ(request("POST", "simulator/check").status, 404u);
  stop();
}

}  // namespace

}  // namespace host
