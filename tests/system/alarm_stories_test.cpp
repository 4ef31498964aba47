#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "system/insight_story.h"

namespace host {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr char kSecondMirror[] = "QV48021000A7";
constexpr char kFreeSata[] = "TB2T7790315";

class AlarmStory : public InsightStory {
 protected:
  void SetUp() override { begin(); }

  bool isOpen(const std::string& line) {
    const Words open = alarms();
    return std::find(open.begin(), open.end(), line) != open.end();
  }

  /// What the history tells of one alarm, the oldest first.
  Words told(const boost::json::object& alarm) {
    return entries(
        "alarm", "&text=" + text(alarm, "kind") + "&objectId=" + text(alarm.at("object").as_object(), "id"));
  }
};

TEST_F(AlarmStory, EachCauseHasItsAlarmTheWorstFirstAndSinceThen) {
  const boost::json::object health = answer("health");
  const boost::json::object open = answer("alarms");
  Words ofHealth;
  Words ofAlarms;
  for (const auto& cause : health.at("causes").as_array()) {
    ofHealth.push_back(text(cause.as_object(), "id") + " since " + text(cause.as_object(), "since"));
  }
  std::vector<std::string> severities;
  for (const auto& each : open.at("items").as_array()) {
    ofAlarms.push_back(text(each.as_object(), "id") + " since " + text(each.as_object(), "since"));
    severities.push_back(text(each.as_object(), "severity"));
    EXPECT_EQ(each.at("state"), "open");
    EXPECT_EQ(each.at("count"), 1);
    EXPECT_TRUE(each.at("cleared").is_null());
    EXPECT_TRUE(each.at("acknowledged").is_null());
  }
  EXPECT_THAT(ofAlarms, testing::UnorderedElementsAreArray(ofHealth));
  EXPECT_EQ(severities, (Words{"critical", "warning", "warning", "info", "info", "info"}));
  EXPECT_EQ(open.at("position").at("epoch"), health.at("position").at("epoch"));
  EXPECT_EQ(items("alarms", 1), open.at("items"));
}

TEST_F(AlarmStory, AFailedDiskIsRaisedNoticedAndCleared) {
  befall("fail-disk", kSecondMirror);
  const boost::json::object disk = alarm("disk-failed of SATA QV48021000A7");
  const boost::json::object volume = alarm("volume-degraded of System");
  const std::string target = "alarms/" + text(disk, "id");

  const boost::json::object noticed = done("POST", target + "/acknowledge").as_object();
  EXPECT_EQ(noticed.at("acknowledged").at("by"), "first");
  EXPECT_EQ(done("POST", target + "/acknowledge"), noticed) << "who comes second changes nothing";
  EXPECT_EQ(answer(target), noticed);
  EXPECT_TRUE(alarm("volume-degraded of System").at("acknowledged").is_null());

  pass(10000);  // the spare takes over
  befall("pull-disk", kSecondMirror);
  EXPECT_TRUE(comesTo(
      [&] { return !isOpen("volume-degraded of System") && !isOpen("disk-failed of SATA QV48021000A7"); }));
  EXPECT_TRUE(comesTo([&] { return told(volume).size() == 2 && told(disk).size() == 3; })) << "it is kept";
  EXPECT_THAT(alarms("cleared"),
              testing::IsSupersetOf(Words{"volume-degraded of System", "disk-failed of SATA QV48021000A7"}));
  EXPECT_THAT(told(volume),
              ElementsAre("volume-degraded of System: raised", "volume-degraded of System: cleared"));
  EXPECT_THAT(told(disk), ElementsAre("disk-failed of SATA QV48021000A7: raised",
                                      "disk-failed of SATA QV48021000A7: acknowledged",
                                      "disk-failed of SATA QV48021000A7: cleared"));
  const boost::json::object cleared = answer(target);
  EXPECT_EQ(cleared.at("state"), "cleared");
  EXPECT_EQ(cleared.at("since"), disk.at("since"));
  EXPECT_EQ(cleared.at("acknowledged"), noticed.at("acknowledged"));
  EXPECT_TRUE(cleared.at("cleared").is_string());
  EXPECT_EQ(request("POST", target + "/acknowledge").status, 404u) << "it is not open any more";
}

TEST_F(AlarmStory, OneThatComesBackAtOnceCountsUp) {
  const std::string line = std::string("disk-smart of SATA ") + kFreeSata;
  befall("raise-smart-event", kFreeSata);
  const boost::json::object first = alarm(line);
  done("PUT", ofDisk(kFreeSata, "resetsmart"));
  EXPECT_TRUE(comesTo([&] { return !isOpen(line); }));
  befall("raise-smart-event", kFreeSata);
  const boost::json::object second = alarm(line);
  EXPECT_EQ(second.at("id"), first.at("id"));
  EXPECT_EQ(second.at("since"), first.at("since"));
  EXPECT_EQ(second.at("count"), 2);
  EXPECT_THAT(alarms("cleared"), Not(Contains(line)));
}

TEST_F(AlarmStory, HealthTellsSinceWhenTheAlarmIsOpen) {
  befall("raise-smart-event", kFreeSata);
  const boost::json::object raised = alarm(std::string("disk-smart of SATA ") + kFreeSata);
  const boost::json::object health = answer("health");
  std::string since;
  for (const auto& cause : health.at("causes").as_array()) {
    if (cause.at("id") == raised.at("id")) since = text(cause.as_object(), "since");
  }
  EXPECT_EQ(since, text(raised, "since"));
}

TEST_F(AlarmStory, WhatIsNotThereIsA404AndWhatMakesNoSenseA400) {
  EXPECT_EQ(get("alarms/disk-failed-0").status, 404u);
  EXPECT_EQ(request("POST", "alarms/disk-failed-0/acknowledge").status, 404u);
  for (const char* const query :
       {"state=closed", "state=", "limit=0", "limit=1001", "cursor=x", "cursor=t1.2.a", "colour=red"}) {
    EXPECT_EQ(get(std::string("alarms?") + query).status, 400u) << query;
  }
  EXPECT_EQ(get("alarms?state=cleared&cursor=p1.2.a").status, 400u) << "a cursor of the open ones";
  EXPECT_EQ(get("alarms/disk-failed-0?state=open").status, 400u);
}

}  // namespace

}  // namespace host
