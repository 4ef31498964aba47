#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "support/by_name.h"
#include "system/system_host.h"

namespace host {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ReadingTheMachine : public SystemHost {
 protected:
  void SetUp() override { serve(); }
  void TearDown() override { stop(); }
};

TEST_F(ReadingTheMachine, TellsStateVersionAndConfiguration) {
  const Reply state = get("mirn/state");
  EXPECT_EQ(state.status, 200u);
  EXPECT_EQ(state.type, "application/json");
  EXPECT_TRUE(state.body.at("inProgress").is_array());

  const Reply version = get("mirn/version");
  EXPECT_EQ(version.body.at("pluginVersion"), "5.4.0.1465");
  EXPECT_TRUE(version.body.at("volSetSizeSupport").is_bool());

  const boost::json::value timeout = get("mirn/config").body.at("locate_timeout");
  EXPECT_EQ(timeout.at("value"), 12);
  EXPECT_EQ(timeout.at("min"), 1);
  EXPECT_EQ(timeout.at("max"), 3600);
}

TEST_F(ReadingTheMachine, ListsControllersInTheirOrder) {
  EXPECT_THAT(textsUnder(list("mirn/controllers"), "type"), ElementsAre("Lyx", "SATA", "SATA", "NVMe"));
  const std::vector<std::string> names = textsUnder(list("mirn/controllers"), "name");
  EXPECT_THAT(names[1], testing::Not(testing::HasSubstr("sSATA")));
  EXPECT_THAT(names[2], testing::HasSubstr("sSATA"));
}

TEST_F(ReadingTheMachine, ShowsWhatTheDefaultMachineHolds) {
  EXPECT_THAT(list("mirn/arrays"), SizeIs(3));
  EXPECT_THAT(list("mirn/raids"), SizeIs(2));
  EXPECT_THAT(textsUnder(list("mirn/volumes"), "state"),
              testing::UnorderedElementsAre("NORMAL", "NORMAL", "NORMAL", "DEGRADED"));
  const std::vector<std::string> usages = textsUnder(list("mirn/enddevices"), "usage");
  EXPECT_THAT(usages, testing::AllOf(Contains("SPARE"), Contains("JOURNALING_DRIVE"),
                                     Contains("ARRAY_MEMBER"), Contains("PASS_THROUGH")));
  const std::vector<std::string> states = textsUnder(list("mirn/enddevices"), "state");
  EXPECT_GE(std::set<std::string>(states.begin(), states.end()).size(), 3u);
  EXPECT_FALSE(list("mirn/ports").empty());
}

TEST_F(ReadingTheMachine, EveryIdIsMadeOfDigitsAndEveryLinkResolves) {
  std::set<std::string> ids;
  for (const char* const target :
       {"mirn/controllers", "mirn/arrays", "mirn/volumes", "mirn/enddevices", "mirn/ports"}) {
    for (const std::string& id : textsUnder(list(target), "id")) {
      EXPECT_THAT(id, testing::MatchesRegex("[0-9]+"));
      EXPECT_TRUE(ids.insert(id).second) << id << " of " << target << " stands twice";
    }
  }
  for (const std::string& arrayId : textsUnder(list("mirn/volumes"), "arrayId"))
    EXPECT_EQ(ids.count(arrayId), 1u);
  for (const std::string& id : textsUnder(list("mirn/enddevices"), "controllerId"))
    EXPECT_EQ(ids.count(id), 1u);
  for (const std::string& id : textsUnder(list("mirn/ports"), "localDeviceId")) EXPECT_EQ(ids.count(id), 1u);
}

TEST_F(ReadingTheMachine, ReadsWhatHangsUnderAControllerAndAnArray) {
  const boost::json::object lyx = find("mirn/controllers", "type", "Lyx");
  const std::string controller = "mirn/controllers/" + std::string(lyx.at("id").as_string());
  EXPECT_THAT(textsUnder(list(controller + "/enddevices"), "controllerId"), Each(lyx.at("id").as_string()));
  EXPECT_FALSE(list(controller + "/arrays").empty());
  EXPECT_FALSE(list(controller + "/ports").empty());
  EXPECT_FALSE(list(controller + "/volumes").empty());

  const boost::json::object volume = find("mirn/volumes", "raidLevel", "RAID_1");
  const std::string array = "mirn/arrays/" + std::string(volume.at("arrayId").as_string());
  EXPECT_THAT(list(array + "/enddevices"), SizeIs(volume.at("numDisks").as_int64()));
  EXPECT_THAT(textsUnder(list(array + "/volumes"), "name"),
              Contains(std::string(volume.at("name").as_string())));
}

TEST_F(ReadingTheMachine, ReadsRaidCapabilityByRangeAndType) {
  for (const boost::json::value& raid : list("mirn/raids?range=info")) {
    EXPECT_TRUE(raid.as_object().contains("maxDisksPerArray"));
    EXPECT_FALSE(raid.as_object().contains("raidLevelInfo"));
  }
  for (const boost::json::value& raid : list("mirn/raids?range=level&type=RAID_5")) {
    EXPECT_FALSE(raid.as_object().contains("maxDisksPerArray"));
    EXPECT_THAT(textsUnder(raid.at("raidLevelInfo").as_array(), "raidLevel"), ElementsAre("RAID_5"));
  }
  const boost::json::object lyx = find("mirn/controllers", "type", "Lyx");
  const std::string raid = "mirn/raids/" + std::string(lyx.at("raidId").as_string());
  const boost::json::value level = list(raid + "?range=level&type=RAID_5").at(0).at("raidLevelInfo").at(0);
  EXPECT_EQ(level.at("defaultStripSizes").at("3"), "SIZE_64KB");
  EXPECT_EQ(level.at("defaultStripSizes").at("24"), "SIZE_16KB");
  EXPECT_THAT(textsUnder(list(raid + "/controllers"), "id"), Contains(std::string(lyx.at("id").as_string())));
}

TEST_F(ReadingTheMachine, AQuietMachineHasNoEvents) { EXPECT_THAT(list("mirn/events?time=3600"), IsEmpty()); }

struct Refusal {
  const char* name;
  const char* method;
  const char* target;
  const char* body;
  unsigned status;
  const char* errorId;  ///< Empty: none.
  const char* detail;
};

class RefusedRequests : public SystemHost, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedRequests, AreProblemDocuments) {
  serve();
  const Refusal& row = GetParam();
  const Reply reply = request(row.method, row.target, row.body);
  EXPECT_EQ(reply.status, row.status);
  EXPECT_EQ(reply.type, "application/problem+json");
  EXPECT_EQ(reply.body.at("detail"), row.detail);
  EXPECT_EQ(reply.body.at("status"), row.status);
  if (*row.errorId) {
    EXPECT_EQ(reply.body.at("errorId"), row.errorId);
  } else {
    EXPECT_FALSE(reply.body.as_object().contains("errorId"));
  }
  stop();
}

INSTANTIATE_TEST_SUITE_P(
    System, RefusedRequests,
    testing::Values(
        Refusal{"NoRoute", "GET", "mirn/nothing", "", 404, "", "There is nothing under this path"},
        Refusal{"RouteOfAnotherMethod", "GET", "mirn/rescan", "", 405, "", "This path takes other methods"},
        Refusal{"NoSingleVolume", "GET", "mirn/volumes/7", "", 405, "", "This path takes other methods"},
        Refusal{"UndeclaredParameter", "GET", "mirn/volumes?force=1", "", 400, "INVALID_PARAMETER",
                "Argument: force not allowed"},
        Refusal{"UnknownArray", "GET", "mirn/arrays/7/volumes", "", 404, "OBJECT_NOT_FOUND",
                "Array identifier not found"},
        Refusal{"UnknownController", "GET", "mirn/controllers/7/ports", "", 404, "OBJECT_NOT_FOUND",
                "Controller identifier not found"},
        Refusal{"RangeOfTheType", "GET", "mirn/raids?type=RAID_5", "", 400, "INVALID_PARAMETER",
                "RAID type parameter is supported for the level range only"},
        Refusal{"TimeoutTooHigh", "PUT", "mirn/config", R"({"locate_timeout": 3601})", 400,
                "INVALID_PARAMETER", "Timeout value is too high"},
        Refusal{"TimeoutNegative", "PUT", "mirn/config", R"({"locate_timeout": -1})", 400,
                "INVALID_PARAMETER", "Argument: locate_timeout not an unsigned integer type"},
        Refusal{"TimeoutBeyondSigned", "PUT", "mirn/config", R"({"locate_timeout": 18446744073709551615})",
                400, "INVALID_PARAMETER", "Timeout value is too low or negative"},
        Refusal{"NoConfiguration", "PUT", "mirn/config", "{}", 400, "INVALID_PARAMETER",
                "Configuration request cannot be empty"},
        Refusal{"NoBody", "PUT", "mirn/volumes/7/name", "", 400, "INVALID_PARAMETER",
                "Argument: root not an object type"},
        Refusal{"ManyFaults", "POST", "mirn/volumes", R"({"name": 1, "x": true})", 400, "INVALID_PARAMETER",
                "Argument: name not a string type. Argument: x not allowed. Arguments: raidLevel, source, "
                "size not present"}),
    ByName());

TEST_F(SystemHost, ALibraryThatCannotReadItsScenarioEndsTheHostWithAReason) {
  HostProcess refused(
      {"--module", MIRN_TEST_MODULE, "--port", "0", "--token-file", (m_folder / "token").string()},
      {{"MIRN_REGISTRY", MIRN_TEST_REGISTRY}, {"VEXL2_SCENARIO", (m_folder / "nothing.json").string()}});
  EXPECT_EQ(refused.awaitExit(), 1);
  const std::string errors = refused.errors();
  EXPECT_THAT(errors, testing::HasSubstr("nothing.json"));
  EXPECT_THAT(errors, testing::HasSubstr("Mirn VEX session could not be initialized"));
}

}  // namespace

}  // namespace host
