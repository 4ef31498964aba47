#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "system/story.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

constexpr char kFreeSata[] = "TB2T7790315";

class ActionStory : public Story {
 protected:
  void SetUp() override { begin(); }

  std::string idOfVolume(const std::string& name) { return text(volume(name), "id"); }

  boost::json::object answer(const std::string& target) {
    const Reply reply = get("actions/" + target);
    EXPECT_EQ(reply.status, 200u) << target << ": " << reply.body;
    return reply.body.is_object() ? reply.body.as_object() : boost::json::object();
  }

  /// "OPERATION WORD VERDICT" of each action.
  Words actions(const std::string& target) {
    const boost::json::object found = answer(target);
    Words lines;
    for (const auto& each : found.at("actions").as_array()) {
      const boost::json::object& action = each.as_object();
      std::string line = text(action, "operation") + ' ';
      if (action.at("word").is_string()) line += text(action, "word") + ' ';
      lines.push_back(line + text(action, "verdict"));
    }
    return lines;
  }

  /// "VALUE" of each that is allowed, "-VALUE" of the others.
  Words candidates(const std::string& target) {
    const boost::json::object found = answer(target);
    Words lines;
    for (const auto& each : found.at("items").as_array()) {
      lines.push_back((each.at("allowed").as_bool() ? "" : "-") + text(each.as_object(), "value"));
    }
    return lines;
  }
};

TEST_F(ActionStory, TheLookRefusesAsTheDeedDoes) {
  const std::string target = "disk/" + idOf(kFreeSata);
  EXPECT_THAT(actions(target),
              ElementsAre("clearDisk allowed", "setDiskSpare MARK allowed", "setDiskSpare UNMARK allowed",
                          "markDiskNormal allowed", "resetDiskSmart allowed", "removeDisk refused"));
  const boost::json::object found = answer(target);
  const boost::json::object& removal = found.at("actions").as_array().back().as_object();
  const Reply deed = request("DELETE", ofDisk(kFreeSata));
  EXPECT_EQ(removal.at("errorId"), deed.body.at("errorId"));
  EXPECT_EQ(removal.at("words"), deed.body.at("detail"));
}

TEST_F(ActionStory, TheLookAtAVolumeTellsWhatIsNeeded) {
  EXPECT_THAT(actions("volume/" + idOfVolume("System")),
              IsSupersetOf({"verifyVolume START needs", "rebuildVolume needs", "renameVolume needs",
                            "deleteVolume allowed"}));
  EXPECT_THAT(actions("service/service"), IsSupersetOf({"rescan allowed", "createVolume DISK needs"}));
}

TEST_F(ActionStory, CandidatesOfARebuildAreTheDisksOfTheController) {
  const std::string target = "volume/" + idOfVolume("Archive") + "/rebuildVolume/diskId";
  EXPECT_THAT(candidates(target), ElementsAre(idOf("OD3T2210A40C"), idOf("OD3T2210A40F")));
  const boost::json::object first = answer(target + "?limit=1");
  ASSERT_EQ(first.at("items").as_array().size(), 1U);
  const boost::json::object second = answer(target + "?limit=1&cursor=" + text(first, "next"));
  EXPECT_EQ(text(second.at("items").at(0).as_object(), "value"), idOf("OD3T2210A40F"));
  EXPECT_TRUE(second.at("next").is_null());
}

TEST_F(ActionStory, ASizeHasBounds) {
  const boost::json::object page = answer("volume/" + idOfVolume("System") + "/resizeVolume/size");
  EXPECT_TRUE(page.at("items").as_array().empty());
  EXPECT_TRUE(page.at("size").is_object());
  EXPECT_EQ(page.at("libraryDecides"), true);
}

TEST_F(ActionStory, WhatIsNotThereIsA404AndAWrongPageA400) {
  EXPECT_EQ(get("actions/volume/1").status, 404u);
  const std::string target = "actions/volume/" + idOfVolume("System");
  EXPECT_EQ(get(target + "/clearDisk/diskId").status, 404u);
  EXPECT_EQ(get(target + "/rebuildVolume/colour").status, 404u);
  EXPECT_EQ(get(target + "/rebuildVolume/diskId?limit=0").status, 400u);
  EXPECT_EQ(get(target + "/rebuildVolume/diskId?cursor=x").status, 400u);
  EXPECT_EQ(get(target + "/rebuildVolume/diskId?colour=red").status, 400u);
}

}  // namespace

}  // namespace host
