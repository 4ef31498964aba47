#include "raids_listener.h"

#include <gmock/gmock.h>

#include "listeners/order_of_checks.h"
#include "support/by_name.h"

namespace {

using testing::HasSubstr;
using testing::Not;

/// Engine 71 of a SATA controller and engine 72 of a Lyx one; both make RAID 5 and RAID 0, and only 72 makes
/// RAID 10. Levels are told out of order.
void arrangeRaids(FakeSession& session) {
  session.raids = {aRaid(L"72"), aRaid(L"71")};
  session.raidLevels[L"71"] = {aLevel(RaidLevel::RAID_5, StripSize::SIZE_16KB), aLevel(RaidLevel::RAID_0),
                               anUnsupportedLevel(RaidLevel::RAID_10)};
  session.raidLevels[L"72"] = {aLevel(RaidLevel::RAID_10), anUnsupportedLevel(RaidLevel::RAID_1),
                               aLevel(RaidLevel::RAID_5), aLevel(RaidLevel::RAID_0)};
  session.controllers = {aController(L"11").onRaid(L"71"), aLyxController(L"12").onRaid(L"72"),
                         aController(L"13").onRaid(L"72")};
}

class RaidsListenerTest : public ListenerTest<RaidsListener> {
 protected:
  RaidsListenerTest() { arrangeRaids(m_session); }

  /// The engine as a request with this range and these levels publishes it.
  static Raid published(const std::wstring& id, RaidRange range, std::vector<RaidLevelSupport> levels = {}) {
    Raid raid = aRaid(id).make();
    raid.setRange(range);
    raid.setLevels(std::move(levels));
    return raid;
  }
  static std::string formsOf(const std::vector<Raid>& raids) {
    ServiceObject list = ServiceObject::array();
    std::size_t count = 0;
    for (const Raid& raid : raids) list.at(count++) = raid.toServiceObject();
    return describe(list);
  }
  static RaidLevelSupport lyxRaid5() {
    RaidLevelSupport level = aLevel(RaidLevel::RAID_5);
    level.setDefaultStripSizes(kRaid5DefaultStripByDisks);
    return level;
  }
  static std::vector<RaidLevelSupport> levelsOf71() {
    return {aLevel(RaidLevel::RAID_0), aLevel(RaidLevel::RAID_5, StripSize::SIZE_16KB)};
  }
  static std::vector<RaidLevelSupport> levelsOf72() {
    return {aLevel(RaidLevel::RAID_0), lyxRaid5(), aLevel(RaidLevel::RAID_10)};
  }
};

TEST_F(RaidsListenerTest, WithoutARangeTellsInformationAndSupportedLevelsInOrder) {
  EXPECT_EQ(get(""), formsOf({published(L"72", RaidRange::kAll, levelsOf72()),
                              published(L"71", RaidRange::kAll, levelsOf71())}));
}

TEST_F(RaidsListenerTest, TheInfoRangeLooksUpNoLevel) {
  EXPECT_EQ(get("", {{L"range", L"info"}}),
            formsOf({published(L"72", RaidRange::kInfo), published(L"71", RaidRange::kInfo)}));
  EXPECT_EQ(m_session.reads["getRaidLevels"], 0);
  EXPECT_EQ(m_session.reads["getControllers"], 0);
}

TEST_F(RaidsListenerTest, TheLevelRangeTellsLevelsAlone) {
  EXPECT_EQ(get("", {{L"range", L"level"}}), formsOf({published(L"72", RaidRange::kLevel, levelsOf72()),
                                                      published(L"71", RaidRange::kLevel, levelsOf71())}));
}

TEST_F(RaidsListenerTest, TheLevelRangeOfAnEngineWithoutLevelsIsNull) {
  m_session.raids = {aRaid(L"71")};
  m_session.raidLevels[L"71"] = {anUnsupportedLevel(RaidLevel::RAID_0)};
  EXPECT_EQ(get("", {{L"range", L"level"}}), "[0] = null");
}

TEST_F(RaidsListenerTest, ALevelFilterTellsOneLevelOfEachEngine) {
  EXPECT_EQ(
      get("", {{L"range", L"level"}, {L"type", L"RAID_5"}}),
      formsOf({published(L"72", RaidRange::kLevel, {lyxRaid5()}),
               published(L"71", RaidRange::kLevel, {aLevel(RaidLevel::RAID_5, StripSize::SIZE_16KB)})}));
  EXPECT_EQ(m_session.reads["getRaidLevels"], 0);
}

TEST_F(RaidsListenerTest, StripSizesByDisksStandAtRaid5OfALyxEngineOnly) {
  const std::string stripSizes = "defaultStripSizes.3 = \"SIZE_64KB\"";
  EXPECT_THAT(get("72", {{L"range", L"level"}, {L"type", L"RAID_5"}}), HasSubstr(stripSizes));
  EXPECT_THAT(get("72", {{L"range", L"level"}, {L"type", L"RAID_10"}}), Not(HasSubstr("defaultStripSizes")));
  EXPECT_THAT(get("71", {{L"range", L"level"}}), Not(HasSubstr("defaultStripSizes")));
}

TEST_F(RaidsListenerTest, ALyxControllerElsewhereDoesNotMatter) {
  m_session.raids = {aRaid(L"72"), aRaid(L"71")};
  m_session.controller(L"12").onRaid(L"73");
  EXPECT_THAT(get(""), Not(HasSubstr("defaultStripSizes")));
}

TEST_F(RaidsListenerTest, AnUnsupportedLevelOfTheFilterStopsTheWholeRequest) {
  const std::string words = "Provided RAID level is not supported";
  expectRefused(get("", {{L"range", L"level"}, {L"type", L"RAID_10"}}), "INVALID_PARAMETER", words);
  EXPECT_THAT(get("72", {{L"range", L"level"}, {L"type", L"RAID_10"}}), HasSubstr("RAID_10"));
}

TEST_F(RaidsListenerTest, OneEngineIsAnArrayOfOne) {
  EXPECT_EQ(get("71"), formsOf({published(L"71", RaidRange::kAll, levelsOf71())}));
}

TEST_F(RaidsListenerTest, AnUnknownEngineHasTwoWordings) {
  EXPECT_EQ(get("999"), refused("OBJECT_NOT_FOUND", "Invalid RAID identifier"));
  EXPECT_EQ(get("999/controllers"), refused("OBJECT_NOT_FOUND", "RAID identifier not found"));
}

TEST_F(RaidsListenerTest, ListsTheControllersOfAnEngine) {
  EXPECT_EQ(get("72/controllers"), forms({m_session.controller(L"12"), m_session.controller(L"13")}));
  m_session.controllers.clear();
  EXPECT_EQ(get("72/controllers"), "[]");
}

TEST_F(RaidsListenerTest, TheControllersTakeNoRange) {
  expectInvalid(get("72/controllers", {{L"range", L"info"}}), "Argument: range not allowed");
}

TEST_F(RaidsListenerTest, FailuresOfTheReadsPassUnchanged) {
  m_session.loseEverything();
  for (const char* path : {"", "71", "71/controllers"}) {
    EXPECT_EQ(get(path), failed("Mirn_OPERATION_FAILED", kReadFailure)) << path;
  }
}

const std::string kNoRange = "no range";
const std::string kNoType = "no type";

const std::string kAnswered = "answered";
const std::string kBadRange = refused("INVALID_PARAMETER", "Invalid range parameter");
const std::string kBadType = refused("INVALID_PARAMETER", "Invalid RAID level");
const std::string kUnsupported = refused("INVALID_PARAMETER", "Provided RAID level is not supported");
const std::string kNeedsLevelRange =
    refused("INVALID_PARAMETER", "RAID type parameter is supported for the level range only");

struct QueryRow {
  std::string range;
  std::string type;
  std::string outcome;
};

/// Every range with every kind of type.
class RaidQueries : public RaidsListenerTest, public testing::WithParamInterface<QueryRow> {};

TEST_P(RaidQueries, AreJudgedRangeFirst) {
  RequestParameters parameters;
  if (GetParam().range != kNoRange) parameters[L"range"] = utf8ToWide(GetParam().range);
  if (GetParam().type != kNoType) parameters[L"type"] = utf8ToWide(GetParam().type);
  const std::string outcome = get("71", parameters);
  EXPECT_EQ(outcome.find("Exception") == std::string::npos ? kAnswered : outcome, GetParam().outcome)
      << GetParam().range << ", " << GetParam().type;
}

std::vector<QueryRow> rowsOf(const std::string& range, const std::vector<std::string>& outcomes) {
  const std::vector<std::string> types = {kNoType,        "",       "RAID_5", "RAID_10",
                                          "RAID_INVALID", "RAID_6", "XYZ",    "RAID_UNKNOWN"};
  std::vector<QueryRow> rows;
  for (std::size_t i = 0; i < types.size(); ++i) rows.push_back({range, types[i], outcomes[i]});
  return rows;
}

std::vector<QueryRow> allQueries() {
  const auto& ok = kAnswered;
  const auto& lv = kNeedsLevelRange;
  const auto& no = kUnsupported;
  const auto& bt = kBadType;
  const auto& br = kBadRange;
  std::vector<QueryRow> rows;
  const auto add = [&rows](const std::vector<QueryRow>& more) {
    rows.insert(rows.end(), more.begin(), more.end());
  };
  //               none ""  R5  R10 INV R6  XYZ UNKNOWN
  add(rowsOf(kNoRange, {ok, ok, lv, lv, no, no, bt, bt}));
  add(rowsOf("info", {ok, ok, lv, lv, no, no, bt, bt}));
  add(rowsOf("level", {ok, ok, ok, no, no, no, bt, bt}));
  add(rowsOf("", {br, br, br, br, br, br, br, br}));
  add(rowsOf("Level", {br, br, br, br, br, br, br, br}));
  return rows;
}

INSTANTIATE_TEST_SUITE_P(Matrix, RaidQueries, testing::ValuesIn(allQueries()));

Fault parameterFault(const std::wstring& name, const std::wstring& value, const std::string& outcome) {
  return {"bad parameter", [=](Situation& s) { s.request.parameters[name] = value; }, outcome};
}

INSTANTIATE_TEST_SUITE_P(
    Raids, OrderOfChecks,
    testing::Values(
        checksOf<RaidsListener>("List", arrangeRaids,
                                {HttpMethod::kGet, "71", {}, {{L"range", L"level"}, {L"type", L"RAID_5"}}},
                                {unknownParameter(), parameterFault(L"range", L"all", kBadRange),
                                 parameterFault(L"type", L"RAID_INVALID", kUnsupported),
                                 parameterFault(L"type", L"XYZ", kBadType),
                                 parameterFault(L"range", L"info", kNeedsLevelRange),
                                 unknownObject("", "OBJECT_NOT_FOUND", "Invalid RAID identifier"),
                                 parameterFault(L"type", L"RAID_10", kUnsupported)}),
        checksOf<RaidsListener>("Controllers", arrangeRaids, {HttpMethod::kGet, "71/controllers"},
                                {unknownParameter(), unknownObject("/controllers", "OBJECT_NOT_FOUND",
                                                                   "RAID identifier not found")})),
    ByName());

}  // namespace
