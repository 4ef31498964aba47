#include "raidlevelsupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PublishedRaidLevel, HasEveryKeyAndNoOther) {
  const RaidLevelSupport level = complete<RaidLevelSupport>().build();
  EXPECT_EQ(linesOf(level.toServiceObject()), (Lines{
                                                  "created = true",
                                                  "defaultStripSize = \"SIZE_64KB\"",
                                                  "evenDiskCount = false",
                                                  "maxDisks = 24",
                                                  "migrSupport[0].raidLevel = \"RAID_0\"",
                                                  "migrSupport[0].requiresDisk = false",
                                                  "migrSupport[1].raidLevel = \"RAID_10\"",
                                                  "migrSupport[1].requiresDisk = true",
                                                  "minDisks = 3",
                                                  "oddDiskCount = true",
                                                  "raidLevel = \"RAID_5\"",
                                                  "stripSizesSupported[0] = \"SIZE_16KB\"",
                                                  "stripSizesSupported[1] = \"SIZE_128KB\"",
                                              }));
}

TEST(PublishedRaidLevel, ShowsStripSizesByDisksInsteadOfTheOneDefault) {
  RaidLevelSupport level = complete<RaidLevelSupport>().build();
  level.setDefaultStripSizes({{3, StripSize::SIZE_64KB}, {12, StripSize::SIZE_32KB}});
  const auto form = level.toServiceObject();
  EXPECT_FALSE(form.hasKey(L"defaultStripSize"));
  EXPECT_EQ(linesOf(form.member(L"defaultStripSizes")), (Lines{"12 = \"SIZE_32KB\"", "3 = \"SIZE_64KB\""}));
}

TEST(PublishedRaidLevel, LeavesTheStripSizeOfNoDiskCountOut) {
  RaidLevelSupport level = complete<RaidLevelSupport>().build();
  level.setDefaultStripSizes({{-1, StripSize::SIZE_128KB}, {3, StripSize::SIZE_64KB}});
  EXPECT_EQ(linesOf(level.toServiceObject().member(L"defaultStripSizes")), Lines{"3 = \"SIZE_64KB\""});
}

TEST(PublishedRaidLevel, ShowsAnEmptyTableOfStripSizes) {
  RaidLevelSupport level = complete<RaidLevelSupport>().build();
  level.setDefaultStripSizes({});
  EXPECT_EQ(linesOf(level.toServiceObject().member(L"defaultStripSizes")), Lines{"{}"});
}

TEST(PublishedRaidLevel, HasAnUnknownDefaultWhereNoneIsGiven) {
  const auto form = complete<RaidLevelSupport>().defaultStripSize(boost::none).build().toServiceObject();
  EXPECT_EQ(form.member(L"defaultStripSize").toString(), L"SIZE_UNKNOWN");
}

TEST(PublishedRaidLevel, HasAnEmptyListWithoutMigrationTargets) {
  const auto form = complete<RaidLevelSupport>().migrSupport({}).build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"migrSupport")), Lines{"[]"});
}

TEST(RaidLevelSchema, TellsOneStripSizeOrOneForEachNumberOfDisks) {
  const auto properties = RaidLevelSupport::schema().member(L"properties");
  const auto one = properties.member(L"defaultStripSize");
  const auto several = properties.member(L"defaultStripSizes");
  EXPECT_EQ(one.member(L"condition").toString(), L"one strip size fits every number of disks");
  EXPECT_EQ(one.member(L"type").toString(), L"string");
  EXPECT_EQ(several.member(L"condition").toString(), L"the strip size depends on the number of disks");
  EXPECT_EQ(several.member(L"type").toString(), L"object");
  const auto word = several.member(L"additionalProperties");
  EXPECT_EQ(word.member(L"type").toString(), L"string");
  EXPECT_EQ(linesOf(word.member(L"enum")), linesOf(one.member(L"enum")));
}

TEST(RaidLevelSchema, TellsListsOfWordsAndOfObjects) {
  const auto properties = RaidLevelSupport::schema().member(L"properties");
  const auto sizes = properties.member(L"stripSizesSupported");
  EXPECT_EQ(sizes.member(L"type").toString(), L"array");
  EXPECT_EQ(linesOf(sizes.member(L"items").member(L"enum")).at(16), R"([16] = "N/A")");
  const auto targets = properties.member(L"migrSupport");
  EXPECT_EQ(targets.member(L"type").toString(), L"array");
  EXPECT_EQ(linesOf(targets.member(L"items").member(L"required")),
            (std::vector<std::string>{R"([0] = "raidLevel")", R"([1] = "requiresDisk")"}));
}

TEST(PublishedRaidLevel, OfRaid1HasNoStripSizes) {
  const auto form = complete<RaidLevelSupport>()
                        .raidLevel(RaidLevel::RAID_1)
                        .stripSizesSupported({})
                        .defaultStripSize(StripSize::NOT_AVAILABLE)
                        .build()
                        .toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"stripSizesSupported")), Lines{"[]"});
  EXPECT_EQ(form.member(L"defaultStripSize").toString(), L"N/A");
}

}  // namespace
