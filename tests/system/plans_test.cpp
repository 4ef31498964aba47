#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/json/array.hpp>
#include <string>

#include "system/insight_story.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr char kFreeSata1[] = "TB2T7790315";
constexpr char kFreeSata2[] = "TB2T7790318";

class PlanStory : public InsightStory {
 protected:
  void SetUp() override { begin(); }

  boost::json::object plan(const std::string& method, const std::string& target,
                           const boost::json::object& body = {}) {
    return done(method, target + "?dryRun=true", body).as_object();
  }

  /// "FATE TYPE NAME" of each object.
  static Words fates(const boost::json::object& plan) {
    Words lines;
    for (const auto& each : plan.at("effects").as_array()) {
      const boost::json::object& effect = each.as_object();
      for (const auto& object : effect.at("objects").as_array()) {
        std::string line = text(effect, "fate") + ' ' + text(object.as_object(), "type");
        if (object.as_object().contains("name")) line += ' ' + text(object.as_object(), "name");
        lines.push_back(line);
      }
    }
    return lines;
  }

  static Words texts(const boost::json::object& plan, const char* member) {
    Words all;
    for (const auto& each : plan.at(member).as_array()) {
      all.push_back(each.is_string() ? std::string(each.as_string()) : text(each.as_object(), "text"));
    }
    return all;
  }
};

TEST_F(PlanStory, ADeletionTellsWhatGoesAndWhatBecomesFree) {
  const boost::json::object told = plan("DELETE", ofVolume("Archive"));
  EXPECT_EQ(told.at("operation"), "VexVolumeDelete");
  EXPECT_EQ(told.at("libraryDecides"), true);
  EXPECT_THAT(texts(told, "lost"), ElementsAre("the volume Archive"));
  const Words all = fates(told);
  EXPECT_THAT(all, testing::Contains("goes volume Archive"));
  EXPECT_THAT(all, testing::Contains(testing::StartsWith("goes array ")));
  EXPECT_THAT(all, testing::Contains(testing::StartsWith("changes disk ")));
  EXPECT_THAT(told.at("work").as_array(), IsEmpty());
}

TEST_F(PlanStory, ACreationTellsWhatComesAndWhatIsOverwritten) {
  const boost::json::object order{{"source", "DISK"},
                                  {"name", "Pair"},
                                  {"raidLevel", "RAID_1"},
                                  {"size", "100000"},
                                  {"disks", idsOf({kFreeSata1, kFreeSata2})}};
  const boost::json::object told = plan("POST", "mirn/volumes", order);
  const std::string first = text(disk(kFreeSata1), "type") + ' ' + kFreeSata1;
  const std::string second = text(disk(kFreeSata2), "type") + ' ' + kFreeSata2;
  EXPECT_THAT(fates(told), UnorderedElementsAre("comes volume Pair", "comes array",
                                                "overwritten disk " + first, "overwritten disk " + second));
  EXPECT_THAT(texts(told, "lost"), UnorderedElementsAre("everything on " + first, "everything on " + second));
  const boost::json::object& volume = told.at("effects").at(0).at("objects").at(0).as_object();
  EXPECT_TRUE(volume.at("id").is_null());
  EXPECT_EQ(volume.at("level"), "RAID_1");
  EXPECT_EQ(volume.at("members").as_array().size(), 2U);
  EXPECT_EQ(volume.at("aboutTotalBytes"), "104857600000");
  EXPECT_THAT(find("mirn/volumes", "name", "System"), testing::Not(IsEmpty()));
}

TEST_F(PlanStory, WorkOfWhichNobodyKnowsHowLongItTakesIsToldSo) {
  const boost::json::object told =
      plan("PUT", ofVolume("Archive", "rebuild"), {{"diskId", idOf("OD3T2210A40C")}});
  ASSERT_EQ(told.at("work").as_array().size(), 1U);
  const boost::json::object& work = told.at("work").at(0).as_object();
  EXPECT_EQ(work.at("kind"), "rebuild");
  EXPECT_EQ(work.at("object").at("name"), "Archive");
  EXPECT_EQ(work.at("likelySeconds"), "unknown");
  EXPECT_EQ(told.at("redundancy").at(0).at("mayFailMeanwhile"), 0);
}

TEST_F(PlanStory, HowLongWorkTakesIsKnownOnceSuchWorkHasEnded) {
  const auto workOf = [this](const std::string& target, const boost::json::object& body) {
    const boost::json::array work = plan("PUT", target, body).at("work").as_array();
    EXPECT_EQ(work.size(), 1u);
    return work.at(0).as_object();
  };
  const boost::json::object rebuild{{"diskId", idOf("OD3T2210A40C")}};
  const boost::json::object verify{{"action", "START"}, {"repair", false}};
  EXPECT_EQ(workOf(ofVolume("Archive", "rebuild"), rebuild).at("likelySeconds"), "unknown");

  befall("fail-disk", "QV48021000A7");  // a spare takes over
  EXPECT_TRUE(comesTo([this] { return jobs("running") == Words{"rebuild of System: -"}; }));
  pass(10000);
  EXPECT_TRUE(comesTo([this] { return jobs("ended") == Words{"rebuild of System: completed"}; }));
  const auto median = answer("jobs/statistics?kind=rebuild").at("items").at(0).at("medianSeconds");
  ASSERT_TRUE(median.is_int64());

  const boost::json::object work = workOf(ofVolume("Archive", "rebuild"), rebuild);
  EXPECT_EQ(work.at("likelySeconds"), median);
  EXPECT_EQ(work.at("jobs"), 1);
  EXPECT_EQ(workOf(ofVolume("Archive", "verify"), verify).at("likelySeconds"), "unknown") << "another kind";
}

TEST_F(PlanStory, ADryRunIsTheSameWheneverItIsMadeAndLeavesNoTrace) {
  const std::string target = ofVolume("Archive");
  const std::string name = ofVolume("Archive", "name");
  const auto position = answer("health").at("position");
  const boost::json::object first = plan("DELETE", target);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(plan("DELETE", target), first);
  EXPECT_EQ(answer("health").at("position"), position) << "no event, and no change";

  // What is asked for later is written later.
  done("PUT", name, {{"name", "Attic"}});
  const auto ofRenaming = [this] { return entries("audit", "&text=renameVolume").size(); };
  EXPECT_TRUE(comesTo([&] { return ofRenaming() == 2; }));
  EXPECT_THAT(entries("audit", "&text=deleteVolume"), IsEmpty());
  EXPECT_EQ(volume("Attic").at("id"), first.at("effects").at(0).at("objects").at(0).at("id"));
}

}  // namespace

}  // namespace host
