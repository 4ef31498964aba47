#include <gtest/gtest.h>

#include "model/capacity.h"
#include "model/names.h"
#include "support/by_name.h"

namespace simulator {
namespace {

struct ShareRow {
  std::string name;
  RaidLevel level;
  std::size_t disks;
  std::uint64_t sizeMiB;
  std::uint64_t shareMiB;
};

void PrintTo(const ShareRow& row, std::ostream* stream) { *stream << row.name; }

class Share : public testing::TestWithParam<ShareRow> {};

TEST_P(Share, IsWhatTheLevelTakesOfEachDisk) {
  EXPECT_EQ(shareOf(GetParam().level, GetParam().disks, GetParam().sizeMiB * kMiB),
            GetParam().shareMiB * kMiB);
}

INSTANTIATE_TEST_SUITE_P(Levels, Share,
                         testing::Values(ShareRow{"Raid0", RaidLevel::RAID_0, 4, 1000, 250},
                                         ShareRow{"Raid0Rounded", RaidLevel::RAID_0, 3, 1000, 334},
                                         ShareRow{"Raid1", RaidLevel::RAID_1, 2, 1000, 1000},
                                         ShareRow{"Raid10", RaidLevel::RAID_10, 4, 1000, 500},
                                         ShareRow{"Raid5", RaidLevel::RAID_5, 3, 1000, 500},
                                         ShareRow{"Raid5OfFive", RaidLevel::RAID_5, 5, 1001, 251},
                                         ShareRow{"Petabytes", RaidLevel::RAID_5, 5, 1ULL << 40, 1ULL << 38}),
                         ByName());

TEST(UsableSize, IsWholeMebibytesWithoutTheMetadata) {
  EndDevice disk;
  disk.totalSize = 1008 * kMiB + 12345;
  EXPECT_EQ(usableSize(disk), 1000 * kMiB);
  disk.totalSize = 8 * kMiB - 1;
  EXPECT_EQ(usableSize(disk), 0U);
  disk.totalSize = 1008 * kMiB;
  disk.type = DeviceType::NON_DISK_STORAGE;
  EXPECT_EQ(usableSize(disk), 0U);
}

struct NameRow {
  std::string name;
  std::string text;
  bool isTaken;
};

void PrintTo(const NameRow& row, std::ostream* stream) { *stream << row.name; }

class VolumeName : public testing::TestWithParam<NameRow> {};

TEST_P(VolumeName, IsPlain) { EXPECT_EQ(isVolumeName(GetParam().text), GetParam().isTaken); }

INSTANTIATE_TEST_SUITE_P(Texts, VolumeName,
                         testing::Values(NameRow{"Short", "a", true},
                                         NameRow{"Longest", "1234567890123456", true},
                                         NameRow{"TooLong", "12345678901234567", false},
                                         NameRow{"Empty", "", false}, NameRow{"BlankFirst", " a", false},
                                         NameRow{"BlankInside", "a b", true},
                                         NameRow{"BlankLast", "a ", true}, NameRow{"Backslash", "a\\", false},
                                         NameRow{"Tab", "a\t", false}, NameRow{"Delete", "a\x7F", false},
                                         NameRow{"Tilde", "~", true}, NameRow{"NotAscii", "\xC3\xA4", false}),
                         ByName());

}  // namespace
}  // namespace simulator
