#include "plan/room.h"

#include <gtest/gtest.h>

#include "insight/machine/small_machine.h"
#include "support/by_name.h"

namespace insight {

namespace {

using Ids = std::vector<std::wstring>;

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;
constexpr std::uint64_t kDisk = std::uint64_t{1} << 40U;  // of the small machine
constexpr std::uint64_t kKept = 8 * kMebibyte;

struct LevelRow {
  std::string name;
  const wchar_t* level;
  std::size_t disks;
  std::optional<std::uint64_t> data;
};

class DataDisks : public testing::TestWithParam<LevelRow> {};

TEST_P(DataDisks, AreWhatTheLevelLeaves) {
  EXPECT_EQ(dataDisksOf(GetParam().level, GetParam().disks), GetParam().data);
}

INSTANTIATE_TEST_SUITE_P(Levels, DataDisks,
                         testing::Values(LevelRow{"Striped", L"RAID_0", 3, 3},
                                         LevelRow{"Mirror", L"RAID_1", 3, 1},
                                         LevelRow{"Parity", L"RAID_5", 3, 2},
                                         LevelRow{"ParityOfNone", L"RAID_5", 0, std::nullopt},
                                         LevelRow{"StripedMirrors", L"RAID_10", 6, 3},
                                         LevelRow{"NotKnown", L"RAID_7", 3, std::nullopt}),
                         ByName());

/// The array gives what the library leaves of its disks.
MachineView measuredMachine() {
  MachineView machine = smallMachine();
  machine.arrays[0].diskCount = 3;
  machine.arrays[0].totalBytes = 3 * (kDisk - kKept);
  machine.arrays[0].freeBytes = 3 * 100 * kMebibyte;
  return machine;
}

TEST(Room, OfAMemberIsItsPartOfTheArray) {
  const MachineView machine = measuredMachine();
  EXPECT_EQ(memberBytesOf(machine, machine.arrays[0]), kDisk - kKept);
  EXPECT_EQ(freeOfMember(machine.arrays[0]), 100 * kMebibyte);
  EXPECT_EQ(memberBytesOf(machine, ArrayView{}), 0U);
  EXPECT_EQ(freeOfMember(ArrayView{}), 0U);
}

TEST(Room, OfAFreeDiskIsWhatItShows) {
  MachineView machine = measuredMachine();
  machine.disks[3].freeBytes = 77 * kMebibyte;
  EXPECT_EQ(memberBytesOf(machine, Ids{L"S"}), 77 * kMebibyte);
  EXPECT_EQ(memberBytesOf(machine, machine.arrays[0], {L"S"}), 77 * kMebibyte);
}

TEST(Room, OfASpareIsWhatTheLibraryLeavesOfOthers) {
  MachineView machine = measuredMachine();
  EXPECT_EQ(memberBytesOf(machine, Ids{L"S"}), kDisk - kKept);
  machine.disks[3].totalBytes = kDisk / 2;
  EXPECT_EQ(memberBytesOf(machine, Ids{L"S"}), kDisk / 2 - kKept);
  EXPECT_EQ(memberBytesOf(machine, machine.arrays[0], {L"S"}), kDisk / 2 - kKept);
}

TEST(Room, OfADiskOfWhichNobodyShowsAnythingIsAllOfIt) {
  EXPECT_EQ(memberBytesOf(smallMachine(), Ids{L"S"}), kDisk);
  EXPECT_EQ(memberBytesOf(smallMachine(), Ids{L"nobody"}), 0U);
}

TEST(Room, OfAVolumeOnEachDiskIsWholeMebibytes) {
  VolumeView volume = smallMachine().volumes[0];
  volume.totalBytes = 200 * kMebibyte;
  EXPECT_EQ(shareOf(volume), 100 * kMebibyte);
  ++volume.totalBytes;
  EXPECT_EQ(shareOf(volume), 101 * kMebibyte);
  volume.level = L"RAID_7";
  EXPECT_EQ(shareOf(volume), std::nullopt);
}

}  // namespace

}  // namespace insight
