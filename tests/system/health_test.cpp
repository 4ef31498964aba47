#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "system/story.h"

namespace host {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr char kSecondMirror[] = "QV48021000A7";
constexpr char kFreeSata[] = "TB2T7790315";
constexpr std::uint32_t kAlways = 0xFFFFFFFF;

class HealthStory : public Story {
 protected:
  void SetUp() override { begin(); }

  boost::json::object health() {
    const Reply reply = get("health");
    EXPECT_EQ(reply.status, 200u) << reply.body;
    return reply.body.as_object();
  }

  /// "KIND of NAME" of each cause, in order.
  Words causes() {
    Words causes;
    const boost::json::object now = health();
    for (const auto& cause : now.at("causes").as_array()) {
      causes.push_back(text(cause.as_object(), "kind") + " of " +
                       text(cause.at("object").as_object(), "name"));
    }
    return causes;
  }

  /// Whether the picture is called old, or no longer, within the time for which one may be used.
  bool comesTo(bool isOld) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < deadline) {
      const Words now = causes();
      if ((std::count(now.begin(), now.end(), "picture-old of service") == 1) == isOld) return true;
    }
    return false;
  }

  boost::json::object ofVolumeIn(const boost::json::object& health, const std::string& name) {
    for (const auto& volume : health.at("volumes").as_array()) {
      if (text(volume.as_object(), "name") == name) return volume.as_object();
    }
    ADD_FAILURE() << "no " << name;
    return {};
  }
};

TEST_F(HealthStory, TheEmbeddedMachineHasItsFaults) {
  EXPECT_THAT(causes(), ElementsAre("volume-degraded of Archive", "disk-smart of SATA TB4T6610092",
                                    "disk-failed of NVME OD3T2210A409", "disk-locked of SATA QV96021044E0",
                                    "no-spare-fits of Archive_Array", "no-spare-fits of Data_Array"));
  const boost::json::object now = health();
  EXPECT_EQ(now.at("severity"), "critical");
  EXPECT_EQ(ofVolumeIn(now, "System").at("mayFail"), 1);
  EXPECT_EQ(ofVolumeIn(now, "System").at("exact"), true);
  EXPECT_EQ(ofVolumeIn(now, "Archive").at("mayFail"), 0);
  EXPECT_EQ(ofVolumeIn(now, "Archive").at("reason"), "a disk is lost already");
}

TEST_F(HealthStory, ARebuildIsCriticalUntilItIsDone) {
  EXPECT_THAT(causes(), Not(Contains("volume-degraded of System")));
  befall("fail-disk", kSecondMirror);
  EXPECT_THAT(causes(), Contains("volume-degraded of System"));
  EXPECT_EQ(ofVolumeIn(health(), "System").at("mayFail"), 0);
  pass(10000);
  EXPECT_THAT(causes(), Not(Contains("volume-degraded of System")));
  EXPECT_THAT(causes(), Contains("no-spare-fits of System_Array")) << "the spare was used up";
}

TEST_F(HealthStory, AStepIsARequestThatHelps) {
  befall("raise-smart-event", kFreeSata);
  const boost::json::array all = health().at("causes").as_array();
  const auto isMeant = [](const boost::json::value& cause) {
    return text(cause.at("object").as_object(), "name") == std::string("SATA ") + kFreeSata;
  };
  const auto cause = std::find_if(all.begin(), all.end(), isMeant);
  ASSERT_NE(cause, all.end());
  const auto& step = cause->at("steps").at(0);
  EXPECT_EQ(step.at("operation"), "resetDiskSmart");
  EXPECT_EQ(text(step.at("arguments").as_object(), "diskId"), idOf(kFreeSata));
  done("PUT", ofDisk(kFreeSata, "resetsmart"));
  EXPECT_THAT(causes(), Not(Contains("disk-smart of SATA " + std::string(kFreeSata))));
}

TEST_F(HealthStory, ALibraryThatRefusesMakesHealthUnknown) {
  control("fail-calls", {{"operation", "VexGetVolumeInfo"}, {"count", kAlways}, {"status", 15}});
  request("POST", "mirn/rescan");
  EXPECT_TRUE(comesTo(true));
  control("clear-faults");
  rescan();
  EXPECT_TRUE(comesTo(false));
}

}  // namespace

}  // namespace host
