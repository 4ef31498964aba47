#include "raid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

class PublishedRaid : public testing::Test {
 protected:
  static RaidLevelSupport level(RaidLevel value, bool supported = true) {
    return complete<RaidLevelSupport>().raidLevel(value).supported(supported).build();
  }

  ovra::data_transfer::ServiceObject form(RaidRange range, std::vector<RaidLevelSupport> levels) {
    m_raid.setRange(range);
    m_raid.setLevels(std::move(levels));
    return m_raid.toServiceObject();
  }

  static Lines keysOf(const ovra::data_transfer::ServiceObject& form) {
    Lines keys;
    for (const auto& member : form.asObject()) keys.push_back(wideToUtf8(member.first));
    return keys;
  }

  static Lines raidLevelsOf(const ovra::data_transfer::ServiceObject& form) {
    Lines levels;
    const auto& list = form.member(L"raidLevelInfo");
    EXPECT_TRUE(list.isArray());
    const auto end = list.end();
    for (auto entry = list.begin(); entry != end; ++entry) {
      levels.push_back(wideToUtf8((*entry).value->member(L"raidLevel").toString()));
    }
    return levels;
  }

  const Lines m_information = {
      "createFromExistingSupport = false",
      "dedicatedSpareSupport = true",
      "emptyArraysSupport = true",
      "globalSpareSupport = false",
      "maxDisksPerArray = 24",
      "maxRaidDisksSupported = 48",
      "maxVolumesPerArray = 2",
      "maxVolumesPerHba = 12",
      "raidEnabled = true",
      "raidId = \"61\"",
  };
  Raid m_raid = complete<Raid>().build();
};

TEST_F(PublishedRaid, ShowsItsOwnInformationAloneAsTheSessionGivesIt) {
  EXPECT_EQ(linesOf(m_raid.toServiceObject()), m_information);
}

TEST_F(PublishedRaid, AddsTheLevelsInTheWholeRange) {
  const auto whole = form(RaidRange::kAll, {level(RaidLevel::RAID_0), level(RaidLevel::RAID_5)});
  EXPECT_EQ(raidLevelsOf(whole), (Lines{"RAID_0", "RAID_5"}));
  EXPECT_EQ(keysOf(whole).size(), m_information.size() + 1);
}

TEST_F(PublishedRaid, PublishesALevelInItsOwnForm) {
  const RaidLevelSupport raid5 = level(RaidLevel::RAID_5);
  const auto whole = form(RaidRange::kLevel, {raid5});
  EXPECT_EQ(linesOf(*(*whole.member(L"raidLevelInfo").begin()).value), linesOf(raid5.toServiceObject()));
}

TEST_F(PublishedRaid, LeavesTheLevelsOutInTheRangeOfInformation) {
  EXPECT_EQ(linesOf(form(RaidRange::kInfo, {level(RaidLevel::RAID_0)})), m_information);
}

TEST_F(PublishedRaid, HasItsIdAndLevelsOnlyInTheRangeOfLevels) {
  const auto levels = form(RaidRange::kLevel, {level(RaidLevel::RAID_0)});
  EXPECT_EQ(keysOf(levels), (Lines{"raidId", "raidLevelInfo"}));
  EXPECT_EQ(levels.member(L"raidId").toString(), L"61");
}

TEST_F(PublishedRaid, IsNullInTheRangeOfLevelsWithoutALevel) {
  EXPECT_TRUE(form(RaidRange::kLevel, {}).isNull());
}

TEST_F(PublishedRaid, LeavesNoGapForALevelThatIsNotSupported) {
  const auto levels = form(RaidRange::kLevel, {level(RaidLevel::RAID_0), level(RaidLevel::RAID_1, false),
                                               level(RaidLevel::RAID_5), level(RaidLevel::RAID_10, false)});
  EXPECT_EQ(raidLevelsOf(levels), (Lines{"RAID_0", "RAID_5"}));
}

TEST_F(PublishedRaid, HasNoLevelKeyWhenNoLevelIsSupported) {
  EXPECT_EQ(keysOf(form(RaidRange::kLevel, {level(RaidLevel::RAID_0, false)})), Lines{"raidId"});
}

TEST_F(PublishedRaid, KeepsTheOrderOfItsLevels) {
  const auto levels = form(RaidRange::kLevel, {level(RaidLevel::RAID_10), level(RaidLevel::RAID_0)});
  EXPECT_EQ(raidLevelsOf(levels), (Lines{"RAID_10", "RAID_0"}));
}

}  // namespace
