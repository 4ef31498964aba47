#include "action_parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "support/by_name.h"
#include "support/model_samples.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What the library finds at an offset of a record.
template <class Value, class Record>
Value at(std::size_t offset, const Record& record) {
  Value value;
  std::memcpy(&value, reinterpret_cast<const char*>(&record) + offset, sizeof value);
  return value;
}

template <class Record>
std::string bytesAt(std::size_t offset, std::size_t count, const Record& record) {
  return std::string(reinterpret_cast<const char*>(&record) + offset, count);
}

std::string zeros(std::size_t count) { return std::string(count, '\0'); }

const Array kArray = complete<Array>().handle(41).build();
const RwhRequest kNoRwh;

VEX_CREATE_VOLUME_PARAMS creation(const std::wstring& name, StripSize stripSize = StripSize::SIZE_16KB,
                                  RaidLevel raidLevel = RaidLevel::RAID_5, const RwhRequest& rwh = kNoRwh) {
  return createVolumeParameters(kArray, name, stripSize, raidLevel, 0x1122334455667788, rwh);
}

VEX_CREATE_FROM_DISKS_PARAMS creationFromDisks(const std::vector<VEX_HANDLE>& disks,
                                               const std::wstring& name = L"Data",
                                               StripSize stripSize = StripSize::SIZE_16KB,
                                               RaidLevel raidLevel = RaidLevel::RAID_5,
                                               const RwhRequest& rwh = kNoRwh) {
  return createFromDisksParameters(disks, name, stripSize, raidLevel, 0x1122334455667788, 22, rwh);
}

RwhRequest journalingOn(VEX_HANDLE drive, RwhPolicy policy = RwhPolicy::RWH_JOURNALING_DRIVE) {
  return {{L"7", drive}, policy};
}

TEST(CreateVolumeParameters, StandWhereTheLibraryReadsThem) {
  const auto record = creation(L"Data", StripSize::SIZE_16KB, RaidLevel::RAID_5, journalingOn(25));
  EXPECT_EQ(at<std::uint32_t>(0, record), 41u) << "array";
  EXPECT_EQ(bytesAt(4, 17, record), "Data" + zeros(13)) << "name";
  EXPECT_EQ(bytesAt(21, 3, record), zeros(3)) << "no field";
  EXPECT_EQ(at<std::uint32_t>(24, record), 0x8u) << "strip size";
  EXPECT_EQ(at<std::uint32_t>(28, record), 8u) << "RAID level";
  EXPECT_EQ(at<std::uint64_t>(32, record), 0x1122334455667788u) << "size";
  EXPECT_EQ(at<std::uint32_t>(40, record), 2u) << "write-hole policy";
  EXPECT_EQ(at<std::uint32_t>(44, record), 25u) << "journaling drive";
}

TEST(CreateFromDisksParameters, StandWhereTheLibraryReadsThem) {
  const std::vector<VEX_HANDLE> disks = {23, 24};
  const auto record =
      creationFromDisks(disks, L"Data", StripSize::SIZE_16KB, RaidLevel::RAID_10, journalingOn(25));
  EXPECT_EQ(at<const VEX_HANDLE*>(0, record), disks.data());
  EXPECT_EQ(at<std::uint32_t>(8, record), 2u) << "number of disks";
  EXPECT_EQ(at<std::uint32_t>(12, record), 22u) << "source disk";
  EXPECT_EQ(bytesAt(16, 17, record), "Data" + zeros(13)) << "name";
  EXPECT_EQ(bytesAt(33, 3, record), zeros(3)) << "no field";
  EXPECT_EQ(at<std::uint32_t>(36, record), 0x8u) << "strip size";
  EXPECT_EQ(at<std::uint32_t>(40, record), 4u) << "RAID level";
  EXPECT_EQ(bytesAt(44, 4, record), zeros(4)) << "no field";
  EXPECT_EQ(at<std::uint64_t>(48, record), 0x1122334455667788u) << "size";
  EXPECT_EQ(at<std::uint32_t>(56, record), 2u) << "write-hole policy";
  EXPECT_EQ(at<std::uint32_t>(60, record), 25u) << "journaling drive";
}

TEST(RaidLevelModifyParameters, StandWhereTheLibraryReadsThem) {
  const std::vector<VEX_HANDLE> disks = {23, 24, 25};
  const auto record =
      raidLevelModifyParameters(StripSize::SIZE_64MB, RaidLevel::RAID_0, 0x1122334455667788, disks);
  EXPECT_EQ(at<std::uint32_t>(0, record), 0x8000u) << "strip size";
  EXPECT_EQ(at<std::uint32_t>(4, record), 1u) << "RAID level";
  EXPECT_EQ(at<std::uint64_t>(8, record), 0x1122334455667788u) << "size";
  EXPECT_EQ(at<const VEX_HANDLE*>(16, record), disks.data());
  EXPECT_EQ(at<std::uint32_t>(24, record), 3u) << "number of disks";
  EXPECT_EQ(bytesAt(28, 4, record), zeros(4)) << "no field";
}

TEST(UnlockParameters, StandWhereTheLibraryReadsThem) {
  const auto master = unlockParameters(UserLevel::kMaster, "secret");
  EXPECT_EQ(bytesAt(0, 32, master), "secret" + zeros(26));
  EXPECT_EQ(at<std::uint32_t>(32, master), 1u);
  EXPECT_EQ(at<std::uint32_t>(32, unlockParameters(UserLevel::kUser, "secret")), 0u);
}

TEST(UnlockParameters, APasswordOfTheWholeFieldHasNoTerminator) {
  const auto record = unlockParameters(UserLevel::kUser, std::string(32, 'p'));
  EXPECT_EQ(bytesAt(0, 32, record), std::string(32, 'p'));
  EXPECT_EQ(at<std::uint32_t>(32, record), 0u);
}

struct NameCase {
  const char* name;
  std::wstring given;
  std::string sent;  ///< Without the zeros behind it.
};

class NameInARecord : public testing::TestWithParam<NameCase> {};

TEST_P(NameInARecord, IsSentInUtf8AndCutAtSixteenBytes) {
  const std::string field = GetParam().sent + zeros(17 - GetParam().sent.size());
  EXPECT_EQ(bytesAt(4, 17, creation(GetParam().given)), field);
  EXPECT_EQ(bytesAt(16, 17, creationFromDisks({}, GetParam().given)), field);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameInARecord,
    testing::Values(NameCase{"Empty", L"", ""}, NameCase{"Short", L"Data", "Data"},
                    NameCase{"Sixteen", L"ABCDEFGHIJKLMNOP", "ABCDEFGHIJKLMNOP"},
                    NameCase{"Twenty", L"ABCDEFGHIJKLMNOPQRST", "ABCDEFGHIJKLMNOP"},
                    NameCase{"NotAscii", L"L\u00f6we", "L\303\266we"},
                    NameCase{"CutWithinACharacter", L"ABCDEFGHIJKLMNO\u00f6", "ABCDEFGHIJKLMNO\303"},
                    NameCase{"SixteenWideCharacters", std::wstring(16, L'\u20ac'),
                             "\342\202\254\342\202\254\342\202\254\342\202\254\342\202\254\342"}),
    ByName());

struct RaidLevelCase {
  const char* name;
  RaidLevel level;
  std::uint32_t code;
};

class RaidLevelInARecord : public testing::TestWithParam<RaidLevelCase> {};

TEST_P(RaidLevelInARecord, HasTheLibrarysCode) {
  const auto [name, level, code] = GetParam();
  EXPECT_EQ(creation(L"", StripSize::SIZE_4KB, level).raidLevel, code);
  EXPECT_EQ(creationFromDisks({}, L"", StripSize::SIZE_4KB, level).raidLevel, code);
  EXPECT_EQ(raidLevelModifyParameters(StripSize::SIZE_4KB, level, 0, {}).raidLevel, code);
}

INSTANTIATE_TEST_SUITE_P(Levels, RaidLevelInARecord,
                         testing::Values(RaidLevelCase{"Unknown", RaidLevel::RAID_UNKNOWN, 0x80000000},
                                         RaidLevelCase{"Invalid", RaidLevel::RAID_INVALID, 0},
                                         RaidLevelCase{"Raid0", RaidLevel::RAID_0, 1},
                                         RaidLevelCase{"Raid1", RaidLevel::RAID_1, 2},
                                         RaidLevelCase{"Raid5", RaidLevel::RAID_5, 8},
                                         RaidLevelCase{"Raid10", RaidLevel::RAID_10, 4},
                                         RaidLevelCase{"Other", RaidLevel(6), 0x80000000}),
                         ByName());

TEST(StripSizeInARecord, IsTheBitOfTheSize) {
  for (std::int32_t size = 0; size < 16; ++size) {
    const std::uint32_t bit = 1u << size;
    EXPECT_EQ(creation(L"", StripSize(size)).stripSize, bit) << size;
    EXPECT_EQ(creationFromDisks({}, L"", StripSize(size)).stripSize, bit) << size;
    EXPECT_EQ(raidLevelModifyParameters(StripSize(size), RaidLevel::RAID_1, 0, {}).stripSize, bit) << size;
  }
}

TEST(StripSizeInARecord, IsZeroForASizeWithoutABit) {
  for (const StripSize size : {StripSize::NOT_AVAILABLE, StripSize::SIZE_UNKNOWN, StripSize(18)}) {
    EXPECT_EQ(creation(L"", size).stripSize, 0u);
    EXPECT_EQ(creationFromDisks({}, L"", size).stripSize, 0u);
    EXPECT_EQ(raidLevelModifyParameters(size, RaidLevel::RAID_5, 0, {}).stripSize, 0u);
  }
}

TEST(StripSizeInARecord, OfANewMirrorIsAlways64Kilobytes) {
  for (std::int32_t size = 0; size < 18; ++size) {
    EXPECT_EQ(creation(L"", StripSize(size), RaidLevel::RAID_1).stripSize, 0x20u) << size;
    EXPECT_EQ(creationFromDisks({}, L"", StripSize(size), RaidLevel::RAID_1).stripSize, 0x20u) << size;
  }
}

TEST(StripSizeInARecord, OfAVolumeThatBecomesAMirrorIsTheOneGiven) {
  EXPECT_EQ(raidLevelModifyParameters(StripSize::SIZE_128KB, RaidLevel::RAID_1, 0, {}).stripSize, 0x40u);
}

struct RwhCase {
  const char* name;
  RwhPolicy policy;
  std::uint32_t code;
};

class RwhInARecord : public testing::TestWithParam<RwhCase> {};

TEST_P(RwhInARecord, HasTheCodeOfThePolicyAndTheDriveWhateverThePolicy) {
  const RwhRequest rwh = journalingOn(25, GetParam().policy);
  const auto inArray = creation(L"", StripSize::SIZE_4KB, RaidLevel::RAID_5, rwh);
  EXPECT_EQ(inArray.rwhPolicy, GetParam().code);
  EXPECT_EQ(inArray.journalingDriveHandle, 25u);
  const auto fromDisks = creationFromDisks({}, L"", StripSize::SIZE_4KB, RaidLevel::RAID_5, rwh);
  EXPECT_EQ(fromDisks.rwhPolicy, GetParam().code);
  EXPECT_EQ(fromDisks.journalingDriveHandle, 25u);
}

INSTANTIATE_TEST_SUITE_P(Policies, RwhInARecord,
                         testing::Values(RwhCase{"None", RwhPolicy::NONE, 0},
                                         RwhCase{"Off", RwhPolicy::RWH_OFF, 0},
                                         RwhCase{"Distributed", RwhPolicy::RWH_DISTRIBUTED, 1},
                                         RwhCase{"JournalingDrive", RwhPolicy::RWH_JOURNALING_DRIVE, 2},
                                         RwhCase{"Other", RwhPolicy(4), 0}),
                         ByName());

TEST(JournalingDriveHandle, IsZeroForADriveWithoutAnId) {
  EXPECT_EQ(journalingDriveHandle({{L"", 25}, RwhPolicy::RWH_JOURNALING_DRIVE}), 0u);
  EXPECT_EQ(journalingDriveHandle({{L"7", 25}, RwhPolicy::RWH_OFF}), 25u);
}

TEST(Handles, KeepTheOrderOfTheDevices) {
  const auto disk = [](VEX_HANDLE handle) { return complete<EndDevice>().handle(handle).build(); };
  EXPECT_THAT(handlesOf({disk(24), disk(21), disk(24)}), ElementsAre(24, 21, 24));
}

TEST(Handles, OfNoDevicesAreANullPointerAndZero) {
  EXPECT_THAT(handlesOf({}), IsEmpty());
  EXPECT_EQ(handlesOrNull({}), nullptr);
  EXPECT_EQ(handleCount({}), 0u);
  EXPECT_EQ(creationFromDisks({}).disks, nullptr);
  EXPECT_EQ(creationFromDisks({}).diskCount, 0u);
  const auto modification = raidLevelModifyParameters(StripSize::SIZE_4KB, RaidLevel::RAID_5, 0, {});
  EXPECT_EQ(modification.disks, nullptr);
  EXPECT_EQ(modification.diskCount, 0u);
}

}  // namespace
