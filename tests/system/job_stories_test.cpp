#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/insight_story.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kSecondMirror[] = "QV48021000A7";
constexpr char kSpare[] = "QV48021001C3";
constexpr char kFreeSata[] = "TB2T7790315";

class JobStory : public InsightStory {
 protected:
  void SetUp() override { begin(); }

  /// Whether it goes from running to ended; gives it as it is then.
  boost::json::object ended(const std::string& id) {
    EXPECT_TRUE(comesTo([&] { return answer("jobs/" + id).at("state") == "ended"; }));
    return answer("jobs/" + id);
  }

  void beginRebuild() {
    done("PUT", ofDisk(kSpare, "spare"), {{"action", "UNMARK"}});
    befall("fail-disk", kSecondMirror);
    done("PUT", ofVolume("System", "rebuild"), {{"diskId", idOf(kFreeSata)}});
  }
};

TEST_F(JobStory, ARebuildIsAJobOfWhoAskedForIt) {
  beginRebuild();
  const boost::json::object begun = onlyJob("running");
  EXPECT_EQ(begun.at("kind"), "rebuild");
  EXPECT_EQ(begun.at("actor"), "first");
  EXPECT_EQ(begun.at("object").at("name"), "System");
  EXPECT_EQ(begun.at("start"), begun.at("seenFrom"));
  EXPECT_EQ(begun.at("percent"), 0);
  EXPECT_TRUE(begun.at("timeLeftSeconds").is_null());
  const std::string id = text(begun, "id");

  for (int step = 1; step <= 6; ++step) {
    const auto percent = progressOf("System");
    pass(200);
    ASSERT_GT(progressOf("System"), percent);
    const auto shown = progressOf("System");
    EXPECT_TRUE(comesTo([&] { return answer("jobs/" + id).at("percent") == shown; }));
  }
  const boost::json::object running = answer("jobs/" + id);
  EXPECT_TRUE(running.at("percentPerHour").is_double() || running.at("percentPerHour").is_int64());
  EXPECT_TRUE(running.at("timeLeftSeconds").is_int64());

  pass(10000);
  const boost::json::object job = ended(id);
  EXPECT_EQ(job.at("outcome"), "completed");
  EXPECT_EQ(job.at("start"), begun.at("start"));
  EXPECT_TRUE(job.at("end").is_string());
  EXPECT_TRUE(job.at("timeLeftSeconds").is_null());
  EXPECT_THAT(jobs("running"), IsEmpty());
  EXPECT_THAT(jobs("ended"), ElementsAre("rebuild of System: completed"));
  EXPECT_THAT(entries("job", "&actor=first"),
              ElementsAre("rebuild of System: begun", "rebuild of System: completed"));
}

TEST_F(JobStory, WhatTheMachineBeginsIsItsOwn) {
  befall("fail-disk", kSecondMirror);
  const boost::json::object job = onlyJob("running");
  EXPECT_EQ(job.at("kind"), "rebuild");
  EXPECT_EQ(job.at("actor"), "machine");
  EXPECT_TRUE(job.at("start").is_string());
}

TEST_F(JobStory, WorkThatIsStoppedWasCancelled) {
  done("PUT", ofVolume("Database", "verify"), {{"action", "START"}, {"repair", false}});
  const boost::json::object begun = onlyJob("running");
  EXPECT_EQ(begun.at("kind"), "verify");
  done("PUT", ofVolume("Database", "verify"), {{"action", "CANCEL"}});
  EXPECT_EQ(ended(text(begun, "id")).at("outcome"), "cancelled");
}

TEST_F(JobStory, WorkOnWhatIsLostHasFailed) {
  befall("fail-disk", kSecondMirror);
  const boost::json::object begun = onlyJob("running");
  befall("fail-disk", "QV48021000A1");
  EXPECT_EQ(ended(text(begun, "id")).at("outcome"), "failed");
}

TEST_F(JobStory, StatisticsCountByKindAndByVolume) {
  EXPECT_THAT(answer("jobs/statistics").at("items").as_array(), IsEmpty());
  beginRebuild();
  const std::string id = text(onlyJob("running"), "id");
  pass(10000);
  ended(id);
  const boost::json::array all = answer("jobs/statistics").at("items").as_array();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_TRUE(all.at(0).at("volumeId").is_null());
  EXPECT_EQ(text(all.at(1).as_object(), "volumeId"), text(volume("System"), "id"));
  for (const auto& each : all) {
    EXPECT_EQ(each.at("kind"), "rebuild");
    EXPECT_EQ(each.at("count"), 1);
    EXPECT_EQ(each.at("completed"), 1);
    EXPECT_TRUE(each.at("medianSeconds").is_int64());
  }
  EXPECT_EQ(answer("jobs/statistics?kind=rebuild").at("items"), all);
  EXPECT_THAT(answer("jobs/statistics?kind=verify").at("items").as_array(), IsEmpty());
}

TEST_F(JobStory, AKindIsPickedOut) {
  beginRebuild();
  const boost::json::object job = onlyJob("running");
  EXPECT_EQ(items("jobs?kind=rebuild").size(), 1u);
  EXPECT_EQ(items("jobs?kind=verify").size(), 0u);
  pass(10000);
  ended(text(job, "id"));
  EXPECT_EQ(items("jobs?state=ended&kind=rebuild").size(), 1u);
  EXPECT_EQ(items("jobs?state=ended&kind=verify").size(), 0u);
}

TEST_F(JobStory, WhatIsNotThereIsA404AndWhatMakesNoSenseA400) {
  EXPECT_EQ(get("jobs/0-1").status, 404u);
  for (const char* const query : {"state=paused", "state=", "kind=", "limit=x", "cursor=c1", "colour=red"}) {
    EXPECT_EQ(get(std::string("jobs?") + query).status, 400u) << query;
  }
  EXPECT_EQ(get("jobs?state=ended&cursor=p1.2.a").status, 400u) << "a cursor of the running ones";
  EXPECT_EQ(get("jobs/statistics?state=ended").status, 400u);
  EXPECT_EQ(get("jobs/0-1?limit=1").status, 400u);
}

}  // namespace

}  // namespace host
