#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/story.h"

namespace host {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The disks of the embedded machine that the stories are about.
constexpr char kFirstMirror[] = "QV48021000A1";
constexpr char kSecondMirror[] = "QV48021000A7";
constexpr char kSpare[] = "QV48021001C3";
constexpr char kFreeSata[] = "TB2T7790315";
constexpr char kFreeLyx[] = "OD1T9930B1F0";
constexpr char kMemberOfData[] = "OD1T9930B11A";

class DiskStory : public Story {
 protected:
  void SetUp() override { begin(); }

  std::string stateOfDisk(const std::string& serialNumber) { return text(disk(serialNumber), "state"); }
};

TEST_F(DiskStory, TheSpareTakesOverFromALostDisk) {
  befall("fail-disk", kSecondMirror);
  EXPECT_EQ(stateOf("System"), "REBUILDING");
  EXPECT_EQ(usageOf(kSpare), "ARRAY_MEMBER");
  EXPECT_EQ(get("mirn/state").body.at("inProgress").at(0).at("action"), "REBUILDING");
  EXPECT_EQ(progressOf("System"), 0);
  pass(1000);
  const std::int64_t progress = progressOf("System");
  EXPECT_GT(progress, 0);
  pass(1000);
  EXPECT_GT(progressOf("System"), progress);
  pass(1000);
  EXPECT_EQ(stateOf("System"), "NORMAL");
  EXPECT_EQ(progressOf("System"), 0);
  EXPECT_THAT(journal(), ElementsAre("VOLUME_REBUILD_COMPLETE of System", "DISK_FAILED of SATA QV48021000A7",
                                     "VOLUME_REBUILD_STARTED of System"));
}

TEST_F(DiskStory, ASecondLossDuringTheRebuildFailsTheVolume) {
  befall("fail-disk", kSecondMirror);
  pass(1000);
  befall("fail-disk", kFirstMirror);
  EXPECT_EQ(stateOf("System"), "FAILED");
  EXPECT_EQ(get("mirn/state").body.at("state"), "FAILED");
  pass(10000);
  EXPECT_EQ(stateOf("System"), "FAILED") << "there is nothing to rebuild from";
  EXPECT_THAT(journal(), ElementsAre("DISK_FAILED of SATA QV48021000A1", "VOLUME_FAILED of System",
                                     "DISK_FAILED of SATA QV48021000A7", "VOLUME_REBUILD_STARTED of System"));
}

TEST_F(DiskStory, WithoutASpareTheVolumeStaysDegradedUntilItIsTold) {
  done("PUT", ofDisk(kSpare, "spare"), {{"action", "UNMARK"}});
  befall("fail-disk", kSecondMirror);
  EXPECT_EQ(stateOf("System"), "DEGRADED");
  EXPECT_EQ(done("PUT", ofVolume("System", "rebuild"), {{"diskId", idOf(kFreeSata)}}).at("state"),
            "REBUILDING");
  pass(10000);
  EXPECT_EQ(stateOf("System"), "NORMAL");
  EXPECT_EQ(usageOf(kFreeSata), "ARRAY_MEMBER");
  EXPECT_THAT(journal(), ElementsAre("VOLUME_REBUILD_COMPLETE of System", "VOLUME_REBUILD_STARTED of System",
                                     "DISK_FAILED of SATA QV48021000A7", "VOLUME_DEGRADED of System"));
}

TEST_F(DiskStory, ADiskIsMarkedAsSpareAndUnmarked) {
  EXPECT_EQ(done("PUT", ofDisk(kFreeSata, "spare"), {{"action", "MARK"}}).at("usage"), "SPARE");
  EXPECT_EQ(refusal("PUT", ofDisk(kFreeSata, "spare"), {{"action", "MARK"}}), "Mirn_DISK_INVALID_STATE");
  EXPECT_EQ(done("PUT", ofDisk(kFreeSata, "spare"), {{"action", "UNMARK"}}).at("usage"), "PASS_THROUGH");
  EXPECT_EQ(refusal("PUT", ofDisk(kFreeSata, "spare"), {{"action", "UNMARK"}}), "Mirn_DISK_INVALID_STATE");
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(DiskStory, AHotPlugDiskIsTakenOutAndComesBack) {
  EXPECT_EQ(refusal("DELETE", ofDisk(kFreeSata)), "NOT_SUPPORTED") << "it has no hot-plug";
  EXPECT_TRUE(done("DELETE", ofDisk(kFreeLyx)).is_null());
  EXPECT_THAT(textsUnder(list("mirn/enddevices"), "serialNumber"),
              testing::Not(testing::Contains(std::string(kFreeLyx))));
  befall("insert-disk", kFreeLyx);
  EXPECT_EQ(usageOf(kFreeLyx), "PASS_THROUGH");
  EXPECT_THAT(journal(), ElementsAre("DISK_ADDED of Lyx OD1T9930B1F0", "DISK_REMOVED of Lyx OD1T9930B1F0"));
}

TEST_F(DiskStory, AMemberTakenOutIsMissingAndRebuiltWhenItComesBack) {
  done("DELETE", ofDisk(kMemberOfData));
  EXPECT_EQ(stateOf("Database"), "DEGRADED");
  EXPECT_EQ(stateOf("Scratch"), "FAILED");
  befall("insert-disk", kMemberOfData);
  EXPECT_EQ(stateOf("Database"), "REBUILDING");
  EXPECT_EQ(stateOf("Scratch"), "NORMAL");
  pass(100000);
  EXPECT_EQ(stateOf("Database"), "NORMAL");
  EXPECT_THAT(journal(), ElementsAre("VOLUME_REBUILD_COMPLETE of Database", "VOLUME_NORMAL of Scratch",
                                     "VOLUME_REBUILD_STARTED of Database", "DISK_MISSING of Lyx OD1T9930B11A",
                                     "VOLUME_FAILED of Scratch", "VOLUME_DEGRADED of Database"));
}

TEST_F(DiskStory, ASmartEventIsTakenBackAndALockIsSeen) {
  befall("raise-smart-event", kFreeSata);
  EXPECT_EQ(done("PUT", ofDisk(kFreeSata, "resetsmart")).at("state"), "NORMAL");
  befall("lock-disk", kFreeSata);
  EXPECT_EQ(stateOfDisk(kFreeSata), "LOCKED");
  EXPECT_THAT(journal(), ElementsAre("DISK_SMART of SATA TB2T7790315"));
}

TEST_F(DiskStory, ALocateLightIsSwitchedOn) {
  const std::string controller = text(find("mirn/controllers", "type", "Lyx"), "id");
  const boost::json::array ports = list("mirn/controllers/" + controller + "/ports");
  const std::string port = "mirn/ports/" + text(ports.at(0).as_object(), "id") + "/locate";
  EXPECT_TRUE(done("PUT", port, {{"state", "ENABLED"}}).is_null());
  EXPECT_EQ(callsOf("VexPortLocate"), 1u);
  EXPECT_EQ(refusal("PUT", port, {{"state", "DISABLED"}}), "INVALID_PARAMETER") << "it goes out by itself";
  EXPECT_EQ(callsOf("VexPortLocate"), 1u);
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(DiskStory, ReadPatrolAndRebuildOnHotInsertAreSwitched) {
  const auto lyx = [this] { return find("mirn/controllers", "type", "Lyx"); };
  const std::string controller = "mirn/controllers/" + text(lyx(), "id");
  EXPECT_EQ(done("PUT", controller + "/readpatrol", {{"state", "DISABLED"}}).at("state"), "DISABLED");
  EXPECT_EQ(lyx().at("readPatrol").at("enabled"), false);
  EXPECT_EQ(done("PUT", controller + "/rohi", {{"state", "DISABLED"}}).at("state"), "DISABLED");
  EXPECT_EQ(lyx().at("rohi").at("enabled"), false);
  EXPECT_EQ(done("PUT", controller + "/rohi", {{"state", "ENABLED"}}).at("state"), "ENABLED");
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(DiskStory, WithRebuildOnHotInsertADiskPutInServesAtOnce) {
  befall("pull-disk", kFreeLyx);
  befall("fail-disk", kMemberOfData);
  EXPECT_EQ(stateOf("Database"), "DEGRADED");
  befall("insert-disk", kFreeLyx);
  EXPECT_EQ(stateOf("Database"), "REBUILDING");
  EXPECT_EQ(usageOf(kFreeLyx), "ARRAY_MEMBER");
  EXPECT_THAT(journal(), ElementsAre("DISK_ADDED of Lyx OD1T9930B1F0", "VOLUME_FAILED of Scratch",
                                     "VOLUME_REBUILD_STARTED of Database", "DISK_FAILED of Lyx OD1T9930B11A",
                                     "VOLUME_MASTER_DISK_FAILED of Scratch", "VOLUME_DEGRADED of Database",
                                     "DISK_REMOVED of Lyx OD1T9930B1F0"));
}

/// With the monitor at work, and no request that would renew the picture.
TEST_F(SystemHost, TheMonitorSeesALostDiskByItself) {
  serve({{"VEXL2_CLOCK_SPEED", "0"}}, {"--simulator-controls"});
  EXPECT_EQ(request("POST", "simulator/fail-disk", R"({"disk":"QV48021000A7"})").status, 204u);
  while (list("mirn/events?time=86400").size() < 2) {
  }
  EXPECT_THAT(textsUnder(list("mirn/events?time=86400"), "event_type"),
              testing::UnorderedElementsAre("DISK_FAILED", "VOLUME_REBUILD_STARTED"));
  stop();
}

}  // namespace

}  // namespace host
