#include "strip_size.h"

#include <gtest/gtest.h>

#include "service_exceptions.h"
#include "support/by_name.h"
#include "support/fake_session.h"

namespace {

/// A SATA controller 11 and a Lyx controller 12 on one engine that names no default.
class DefaultStripSize : public testing::Test {
 protected:
  DefaultStripSize() {
    m_session.controllers = {aController(L"11").onRaid(L"61"), aLyxController(L"12").onRaid(L"61")};
    m_session.raids = {aRaid(L"61")};
    for (const auto level : {RaidLevel::RAID_INVALID, RaidLevel::RAID_0, RaidLevel::RAID_1, RaidLevel::RAID_5,
                             RaidLevel::RAID_10}) {
      m_session.raidLevels[L"61"].push_back(aLevel(level));
    }
  }

  /// For so many disks, the first of which is on this controller.
  StripSize of(RaidLevel level, const std::wstring& controllerId, std::size_t disks = 3,
               const Array* array = nullptr) {
    std::vector<EndDevice> list(disks, aDisk(L"42").onController(L"13").make());
    if (!list.empty()) list.front() = aDisk(L"41").onController(controllerId).make();
    return defaultStripSize(m_session, level, list, array);
  }

  /// The engine names this size for the level.
  void engineNames(RaidLevel level, StripSize stripSize) {
    m_session.raidLevels[L"61"] = {aLevel(level, stripSize)};
  }

  FakeSession m_session;
};

TEST_F(DefaultStripSize, IsUnknownWithoutDisks) {
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", 0), StripSize::SIZE_UNKNOWN);
}

TEST_F(DefaultStripSize, IsUnknownWithoutTheControllerOfTheFirstDisk) {
  EXPECT_EQ(of(RaidLevel::RAID_0, L"13"), StripSize::SIZE_UNKNOWN);
}

TEST_F(DefaultStripSize, IsWhatTheEngineNames) {
  engineNames(RaidLevel::RAID_0, StripSize::SIZE_16KB);
  EXPECT_EQ(of(RaidLevel::RAID_0, L"11"), StripSize::SIZE_16KB);
  EXPECT_EQ(of(RaidLevel::RAID_0, L"12"), StripSize::SIZE_16KB);
  engineNames(RaidLevel::RAID_5, StripSize::SIZE_32KB);
  EXPECT_EQ(of(RaidLevel::RAID_5, L"11"), StripSize::SIZE_32KB);
}

TEST_F(DefaultStripSize, IsUnknownWhereTheEngineNamesTheUnknownSize) {
  engineNames(RaidLevel::RAID_0, StripSize::SIZE_UNKNOWN);
  EXPECT_EQ(of(RaidLevel::RAID_0, L"11"), StripSize::SIZE_UNKNOWN);
}

TEST_F(DefaultStripSize, GoesByTheLevelWhereTheEngineNamesNone) {
  EXPECT_EQ(of(RaidLevel::RAID_0, L"11"), StripSize::SIZE_128KB);
  EXPECT_EQ(of(RaidLevel::RAID_1, L"11"), StripSize::SIZE_64KB);
  EXPECT_EQ(of(RaidLevel::RAID_5, L"11"), StripSize::SIZE_64KB);
  EXPECT_EQ(of(RaidLevel::RAID_10, L"11"), StripSize::SIZE_64KB);
  EXPECT_EQ(of(RaidLevel::RAID_INVALID, L"11"), StripSize::SIZE_UNKNOWN);
}

TEST_F(DefaultStripSize, GoesByTheLevelWhereTheControllerHasNoEngine) {
  m_session.raids.clear();
  EXPECT_EQ(of(RaidLevel::RAID_0, L"11"), StripSize::SIZE_128KB);
  EXPECT_EQ(of(RaidLevel::RAID_10, L"12"), StripSize::SIZE_64KB);
  EXPECT_EQ(of(RaidLevel::RAID_UNKNOWN, L"11"), StripSize::SIZE_UNKNOWN);
}

TEST_F(DefaultStripSize, OfRaid5OnLyxDoesNotAskTheEngine) {
  engineNames(RaidLevel::RAID_5, StripSize::SIZE_16KB);
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", 4), StripSize::SIZE_32KB);
}

TEST_F(DefaultStripSize, OfTheSecondRaid5OnLyxFollowsTheFirstOfTheArray) {
  const Array array = anArray(L"21").make();
  m_session.volumes = {
      aVolume(L"1").inArray(L"22").stripSize(StripSize::SIZE_8KB),
      aVolume(L"2").inArray(L"21").raidLevel(RaidLevel::RAID_0).stripSize(StripSize::SIZE_16KB),
      aVolume(L"3").inArray(L"21").stripSize(StripSize::SIZE_512KB),
      aVolume(L"4").inArray(L"21").stripSize(StripSize::SIZE_1MB)};
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", 25, &array), StripSize::SIZE_512KB);
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", 4), StripSize::SIZE_32KB) << "without an array";
  EXPECT_EQ(of(RaidLevel::RAID_5, L"11", 4, &array), StripSize::SIZE_64KB) << "not on Lyx";
}

TEST_F(DefaultStripSize, OfTheFirstRaid5OfAnArrayOnLyxGoesByTheDisks) {
  const Array array = anArray(L"21").make();
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", 8, &array), StripSize::SIZE_16KB);
}

TEST_F(DefaultStripSize, IsRequiredWhereNoneCanBeNamed) {
  try {
    requiredDefaultStripSize(m_session, RaidLevel::RAID_5, {}, nullptr);
    FAIL() << "no exception";
  } catch (const ListenerException& error) {
    EXPECT_STREQ(error.getErrorId(), "INTERNAL_ERROR");
    EXPECT_STREQ(error.what(), "Could not determine default strip size");
  }
}

struct LyxRow {
  std::size_t disks;
  StripSize stripSize;
  std::string name = "Disks" + std::to_string(disks);
};

class LyxRaid5 : public DefaultStripSize, public testing::WithParamInterface<LyxRow> {};

TEST_P(LyxRaid5, GoesByTheNumberOfDisks) {
  EXPECT_EQ(of(RaidLevel::RAID_5, L"12", GetParam().disks), GetParam().stripSize);
}

INSTANTIATE_TEST_SUITE_P(Table, LyxRaid5,
                         testing::Values(LyxRow{1, StripSize::SIZE_UNKNOWN},
                                         LyxRow{2, StripSize::SIZE_UNKNOWN}, LyxRow{3, StripSize::SIZE_64KB},
                                         LyxRow{4, StripSize::SIZE_32KB}, LyxRow{5, StripSize::SIZE_128KB},
                                         LyxRow{6, StripSize::SIZE_64KB}, LyxRow{7, StripSize::SIZE_128KB},
                                         LyxRow{8, StripSize::SIZE_16KB}, LyxRow{9, StripSize::SIZE_128KB},
                                         LyxRow{10, StripSize::SIZE_64KB}, LyxRow{11, StripSize::SIZE_128KB},
                                         LyxRow{12, StripSize::SIZE_32KB}, LyxRow{13, StripSize::SIZE_128KB},
                                         LyxRow{14, StripSize::SIZE_64KB}, LyxRow{15, StripSize::SIZE_128KB},
                                         LyxRow{16, StripSize::SIZE_8KB}, LyxRow{17, StripSize::SIZE_128KB},
                                         LyxRow{18, StripSize::SIZE_64KB}, LyxRow{19, StripSize::SIZE_128KB},
                                         LyxRow{20, StripSize::SIZE_32KB}, LyxRow{21, StripSize::SIZE_128KB},
                                         LyxRow{22, StripSize::SIZE_64KB}, LyxRow{23, StripSize::SIZE_128KB},
                                         LyxRow{24, StripSize::SIZE_16KB},
                                         LyxRow{25, StripSize::SIZE_UNKNOWN}),
                         ByName());

}  // namespace
