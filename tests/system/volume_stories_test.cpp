#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/story.h"

namespace host {

using testing::AllOf;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;

namespace {

class VolumeStory : public Story {
 protected:
  /// A volume of 20000 MiB, which the machine works through at 100 MiB a second and disk.
  boost::json::object make(const std::string& name, const std::string& level, const Words& disks) {
    return done("POST", "mirn/volumes",
                {{"name", name},
                 {"raidLevel", level},
                 {"source", "DISK"},
                 {"size", "20000"},
                 {"disks", idsOf(disks)}})
        .as_object();
  }

  void beginWithFreeDisks() { begin("six_free_disks.json"); }
};

TEST_F(VolumeStory, AVolumeMadeFromDisksInitialises) {
  beginWithFreeDisks();
  const boost::json::object made = make("Data", "RAID_5", {"OD0B0", "OD0B1", "OD0B2"});
  EXPECT_EQ(made, volume("Data"));
  EXPECT_EQ(text(made, "state"), "NORMAL");
  EXPECT_EQ(text(made, "stripSize"), "SIZE_64KB");
  EXPECT_EQ(text(made, "totalSize"), "20971520000");
  EXPECT_EQ(made.at("initialized"), false);
  EXPECT_EQ(usageOf("OD0B1"), "ARRAY_MEMBER");

  EXPECT_EQ(done("PUT", ofVolume("Data", "init")).at("state"), "INITIALIZING");
  EXPECT_EQ(progressOf("Data"), 0);
  pass(50);
  EXPECT_EQ(progressOf("Data"), 49) << "the simulated count stops short of a half, and percents are cut";
  EXPECT_EQ(get("mirn/state").body.at("inProgress").at(0).at("objectName"), "Data");
  EXPECT_EQ(refusal("PUT", ofVolume("Data", "init")), "Mirn_VOLUME_INVALID_STATE");
  pass(50);
  EXPECT_EQ(stateOf("Data"), "NORMAL");
  EXPECT_EQ(volume("Data").at("initialized"), true);
  EXPECT_TRUE(get("mirn/state").body.at("inProgress").as_array().empty());
  EXPECT_THAT(journal(), ElementsAre("VOLUME_INITIALIZE_COMPLETE of Data",
                                     "VOLUME_INITIALIZE_STARTED of Data", "VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, AMirrorBecomesARaid5WithTheDefaultStrip) {
  beginWithFreeDisks();
  make("Data", "RAID_1", {"OD0B0", "OD0B1"});
  EXPECT_EQ(refusal("PUT", ofVolume("Data", "level"), {{"raidLevel", "RAID_5"}}), "INVALID_PARAMETER")
      << "it takes a third disk";
  const boost::json::value answer =
      done("PUT", ofVolume("Data", "level"), {{"raidLevel", "RAID_5"}, {"disks", idsOf({"OD0B2"})}});
  EXPECT_EQ(answer.at("raidLevel"), "RAID_5");
  EXPECT_THAT(answer.at("disks").as_array(), SizeIs(3));
  EXPECT_EQ(stateOf("Data"), "GENERAL_MIGRATION");
  EXPECT_EQ(text(volume("Data"), "stripSize"), "SIZE_64KB");
  EXPECT_EQ(volume("Data").at("migration"), true);
  EXPECT_EQ(usageOf("OD0B2"), "ARRAY_MEMBER");
  pass(10000);
  EXPECT_EQ(stateOf("Data"), "NORMAL");
  EXPECT_EQ(volume("Data").at("numDisks"), 3);
  EXPECT_THAT(journal(), ElementsAre("VOLUME_MIGRATION_COMPLETE of Data", "VOLUME_MIGRATION_STARTED of Data",
                                     "VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, AStripeBecomesARaid5WithTheStripThatFitsItsDisks) {
  beginWithFreeDisks();
  make("Data", "RAID_0", {"OD0B0", "OD0B1", "OD0B2"});
  EXPECT_EQ(text(volume("Data"), "stripSize"), "SIZE_128KB");
  const boost::json::value answer =
      done("PUT", ofVolume("Data", "level"), {{"raidLevel", "RAID_5"}, {"disks", idsOf({"OD0B3"})}});
  EXPECT_EQ(answer.at("stripSize"), "SIZE_32KB") << "that of four disks";
  pass(10000);
  EXPECT_THAT(journal(), ElementsAre("VOLUME_MIGRATION_COMPLETE of Data", "VOLUME_MIGRATION_STARTED of Data",
                                     "VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, AnArrayGrowsAndItsVolumeAfterIt) {
  beginWithFreeDisks();
  const boost::json::object made = make("Data", "RAID_5", {"OD0B0", "OD0B1", "OD0B2"});
  const std::string array = "mirn/arrays/" + text(made, "arrayId");
  EXPECT_THAT(done("PUT", array, {{"disks", idsOf({"OD0B3"})}}).at("disks").as_array(), SizeIs(4));
  EXPECT_EQ(stateOf("Data"), "GENERAL_MIGRATION");
  EXPECT_EQ(refusal("PUT", array, {{"disks", idsOf({"OD0B4"})}}), "Mirn_ARRAY_INVALID_STATE");
  pass(10000);
  EXPECT_EQ(stateOf("Data"), "NORMAL");
  EXPECT_THAT(list(array + "/enddevices"), SizeIs(4));

  EXPECT_FALSE(done("PUT", ofVolume("Data", "size"), {{"size", "60000"}}).as_object().empty());
  pass(10000);
  EXPECT_EQ(text(volume("Data"), "totalSize"), "62914560000");
  EXPECT_THAT(journal(), ElementsAre("VOLUME_MIGRATION_COMPLETE of Data", "VOLUME_MIGRATION_STARTED of Data",
                                     "VOLUME_MIGRATION_COMPLETE of Data", "VOLUME_MIGRATION_STARTED of Data",
                                     "VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, AVolumeIsRenamedVerifiedAndDeleted) {
  beginWithFreeDisks();
  make("Data", "RAID_5", {"OD0B0", "OD0B1", "OD0B2"});
  EXPECT_EQ(refusal("PUT", ofVolume("Data", "verify"), {{"action", "START"}, {"repair", false}}),
            "Mirn_VOLUME_INVALID_STATE")
      << "it is not initialised";
  done("PUT", ofVolume("Data", "init"));
  pass(100);
  EXPECT_EQ(done("PUT", ofVolume("Data", "name"), {{"name", "Archive"}}).at("name"), "Archive");

  EXPECT_FALSE(done("PUT", ofVolume("Archive", "verify"), {{"action", "START"}, {"repair", false}})
                   .as_object()
                   .empty());
  pass(10);
  EXPECT_THAT(progressOf("Archive"), AllOf(Gt(0), Lt(100)));
  done("PUT", ofVolume("Archive", "verify"), {{"action", "CANCEL"}});
  EXPECT_EQ(stateOf("Archive"), "NORMAL");
  EXPECT_EQ(progressOf("Archive"), 0);

  EXPECT_TRUE(done("DELETE", ofVolume("Archive")).is_null());
  EXPECT_THAT(list("mirn/volumes"), IsEmpty());
  EXPECT_THAT(list("mirn/arrays"), IsEmpty());
  EXPECT_EQ(usageOf("OD0B0"), "PASS_THROUGH");
  EXPECT_THAT(journal(), ElementsAre("VOLUME_DELETED of Archive", "VOLUME_VERIFY_STOP of Archive",
                                     "VOLUME_VERIFY_STARTED of Archive", "VOLUME_INITIALIZE_COMPLETE of Data",
                                     "VOLUME_INITIALIZE_STARTED of Data", "VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, AVolumeTakesTheWriteHolePoliciesOneAfterTheOther) {
  beginWithFreeDisks();
  make("Data", "RAID_5", {"OD0B0", "OD0B1", "OD0B2"});
  const std::string rwh = ofVolume("Data", "rwh");
  EXPECT_EQ(done("PUT", rwh, {{"rwhPolicy", "RWH_DISTRIBUTED"}}).at("rwhPolicy"), "RWH_DISTRIBUTED");
  EXPECT_EQ(refusal("PUT", rwh, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"}}), "INVALID_PARAMETER");
  EXPECT_EQ(
      refusal("PUT", rwh, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", idOf("OD0B0")}}),
      "INVALID_PARAMETER")
      << "a member cannot hold the journal";
  const boost::json::value answer =
      done("PUT", rwh, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", idOf("OD0B5")}});
  EXPECT_EQ(text(answer.as_object(), "journalingDriveId"), idOf("OD0B5"));
  EXPECT_EQ(usageOf("OD0B5"), "JOURNALING_DRIVE");
  EXPECT_EQ(text(volume("Data"), "journalingDriveId"), idOf("OD0B5"));
  EXPECT_TRUE(done("PUT", rwh, {{"rwhPolicy", "RWH_OFF"}}).at("journalingDriveId").is_null());
  EXPECT_EQ(usageOf("OD0B5"), "PASS_THROUGH");
  EXPECT_THAT(journal(), ElementsAre("VOLUME_ADDED of Data"));
}

TEST_F(VolumeStory, ARefusalOfTheLibraryChangesNothing) {
  begin();
  control("fail-calls", {{"operation", "VexVolumeRename"}, {"status", 22}});
  const Reply refused = put(ofVolume("Scratch", "name"), R"({"name":"Other"})");
  EXPECT_EQ(refused.status, 500u);
  EXPECT_EQ(refused.body.at("errorId"), "INTERNAL_ERROR");
  EXPECT_EQ(refused.body.at("detail"), "User is not permitted to execute the function");
  EXPECT_EQ(stateOf("Scratch"), "NORMAL");
  done("PUT", ofVolume("Scratch", "name"), {{"name", "Other"}});
  EXPECT_EQ(stateOf("Other"), "NORMAL");
  EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace

}  // namespace host
