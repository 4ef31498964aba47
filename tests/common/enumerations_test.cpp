#include "enumerations.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// Made before any test runs: the tables must be there.
const std::wstring kMadeAtLoad = toText(VolumeState::NORMAL) + toText(StripSize::NOT_AVAILABLE);

TEST(Enumerations, AreReadyDuringStaticInitialisation) { EXPECT_EQ(kMadeAtLoad, L"NORMALN/A"); }

/// Walks far beyond the table on both sides: `texts` is all there is, and all else reads `other`.
template <class Value>
void expectTexts(const std::map<int, std::wstring>& texts, const std::wstring& other) {
  for (int number = -3; number <= 100; ++number) {
    const auto row = texts.find(number);
    EXPECT_EQ(toText(static_cast<Value>(number)), row != texts.end() ? row->second : other) << number;
  }
  std::set<std::wstring> all = {other};
  for (const auto& row : texts) all.insert(row.second);
  const std::vector<std::wstring> words = wordsOf<Value>();
  EXPECT_EQ(std::set<std::wstring>(words.begin(), words.end()), all);
  EXPECT_EQ(words.size(), all.size());
}

TEST(EnumerationWords, ComeInTheOrderOfTheValues) {
  EXPECT_EQ(wordsOf<RwhPolicy>(),
            (std::vector<std::wstring>{L"RWH_OFF", L"RWH_DISTRIBUTED", L"RWH_JOURNALING_DRIVE"}));
  EXPECT_EQ(wordsOf<X8Disk>(), (std::vector<std::wstring>{L"X8_A", L"X8_B", L"UNKNOWN"}));
  EXPECT_EQ(wordsOf<ServiceState>(), (std::vector<std::wstring>{L"WARNING", L"NORMAL", L"FAILED"}));
}

TEST(EnumerationTexts, OfRaidLevels) {
  expectTexts<RaidLevel>({{0, L"RAID_UNKNOWN"},
                          {1, L"RAID_INVALID"},
                          {2, L"RAID_0"},
                          {3, L"RAID_1"},
                          {4, L"RAID_5"},
                          {5, L"RAID_10"}},
                         L"UNKNOWN");
}

const std::map<int, std::wstring> kStripSizes = {
    {0, L"SIZE_2KB"},   {1, L"SIZE_4KB"},   {2, L"SIZE_8KB"},     {3, L"SIZE_16KB"},  {4, L"SIZE_32KB"},
    {5, L"SIZE_64KB"},  {6, L"SIZE_128KB"}, {7, L"SIZE_256KB"},   {8, L"SIZE_512KB"}, {9, L"SIZE_1MB"},
    {10, L"SIZE_2MB"},  {11, L"SIZE_4MB"},  {12, L"SIZE_8MB"},    {13, L"SIZE_16MB"}, {14, L"SIZE_32MB"},
    {15, L"SIZE_64MB"}, {16, L"N/A"},       {17, L"SIZE_UNKNOWN"}};

TEST(EnumerationTexts, OfStripSizes) { expectTexts<StripSize>(kStripSizes, L"SIZE_UNKNOWN"); }

const std::map<int, std::wstring> kRwhPolicies = {
    {1, L"RWH_OFF"}, {2, L"RWH_DISTRIBUTED"}, {3, L"RWH_JOURNALING_DRIVE"}};

TEST(EnumerationTexts, OfWriteHolePolicies) { expectTexts<RwhPolicy>(kRwhPolicies, L"RWH_OFF"); }

const std::map<int, std::wstring> kEnableStates = {{1, L"DISABLED"}, {2, L"ENABLED"}};

TEST(EnumerationTexts, OfEnableStates) { expectTexts<EnableState>(kEnableStates, L"UNKNOWN"); }

TEST(EnumerationTexts, OfVolumeStatesWithTwoThatPrintAlike) {
  expectTexts<VolumeState>({{1, L"NORMAL"},
                            {2, L"DEGRADED"},
                            {3, L"FAILED"},
                            {4, L"INITIALIZING"},
                            {5, L"REBUILDING"},
                            {6, L"VERIFYING"},
                            {7, L"VERIFYING_AND_FIXING"},
                            {8, L"GENERAL_MIGRATION"},
                            {9, L"LOCKED"},
                            {10, L"REBUILDING"},
                            {11, L"NON_REDUNDANT_VOLUME_FAILED_DISK"}},
                           L"UNKNOWN");
}

TEST(EnumerationTexts, OfCachePolicies) {
  expectTexts<CachePolicy>({{1, L"OFF"}, {2, L"WRITE_THROUGH"}, {3, L"WRITE_BACK"}, {4, L"NOT_SUPPORTED"}},
                           L"UNKNOWN");
}

TEST(EnumerationTexts, OfArrayStates) {
  expectTexts<ArrayState>({{1, L"NORMAL"}, {2, L"STATE_BUSY"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfWriteCacheStates) {
  expectTexts<WriteCacheState>({{1, L"OFF"}, {2, L"ON"}, {3, L"NOT_SUPPORTED"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfControllerTypesWithALowerCaseE) {
  expectTexts<ControllerType>({{1, L"SATA"}, {2, L"NVMe"}, {3, L"Lyx"}, {4, L"SCU"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfControllerModes) {
  expectTexts<ControllerMode>({{1, L"AHCI"}, {2, L"RAID"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfDeviceTypes) {
  expectTexts<DeviceType>({{1, L"DISK"}, {2, L"NON_DISK_STORAGE"}, {3, L"NON_STORAGE"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfLinkSpeeds) {
  expectTexts<LinkSpeed>({{1, L"1.5 Gb/s"}, {2, L"3 Gb/s"}, {3, L"6 Gb/s"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfDiskTypesWithAnUpperCaseE) {
  expectTexts<DiskType>({{1, L"SATA"}, {2, L"NVME"}, {3, L"Lyx"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfDiskStates) {
  expectTexts<DiskState>({{1, L"OFFLINE"},
                          {2, L"MISSING"},
                          {3, L"FAILED"},
                          {4, L"SMART_EVENT_TRIGGERED"},
                          {5, L"CONFIG_IS_UPREV"},
                          {6, L"NORMAL"},
                          {7, L"LOCKED"},
                          {8, L"MANUAL_OFFLINE"},
                          {9, L"INCOMPATIBLE"},
                          {10, L"UNSUPPORTED"}},
                         L"UNKNOWN");
}

TEST(EnumerationTexts, OfDiskUsages) {
  expectTexts<DiskUsage>({{1, L"ARRAY_MEMBER"},
                          {2, L"PASS_THROUGH"},
                          {3, L"OFFLINE_ARRAY"},
                          {4, L"SPARE"},
                          {5, L"ARRAY_MEMBER_READONLY_MOUNT"},
                          {6, L"PASS_THRU_READONLY_MOUNT"},
                          {7, L"JOURNALING_DRIVE"}},
                         L"UNKNOWN");
}

TEST(EnumerationTexts, OfX8Disks) { expectTexts<X8Disk>({{2, L"X8_A"}, {3, L"X8_B"}}, L"UNKNOWN"); }

TEST(EnumerationTexts, OfPortLocalDeviceTypes) {
  expectTexts<PortLocalDeviceType>({{0, L"CONTROLLER"}, {1, L"END_DEVICE"}}, L"UNKNOWN");
}

TEST(EnumerationTexts, OfServiceStates) {
  EXPECT_EQ(toText(static_cast<ServiceState>(0)), L"WARNING");
  EXPECT_EQ(toText(static_cast<ServiceState>(1)), L"NORMAL");
  EXPECT_EQ(toText(static_cast<ServiceState>(2)), L"FAILED");
}

TEST(EnumerationTexts, OfAServiceStateOutsideTheTableDoNotExist) {
  for (const int number : {-1, 3, 99}) {
    try {
      toText(static_cast<ServiceState>(number));
      FAIL() << number;
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(), "Invalid argument");
    }
  }
}

/// Every text that any table of ours holds, and some that none does.
std::set<std::wstring> manyTexts() {
  std::set<std::wstring> texts = {L"",       L" ",       L"UNKNOWN",       L"NOT_SUPPORTED", L"RAID_7",
                                  L"raid_5", L"RAID_5 ", L"RAID_UNKNOWN",  L"RAID_INVALID",  L"SIZE_3KB",
                                  L"n/a",    L"1",       L"NORMAL",        L"RWH",           L"Enabled",
                                  L"OFF",    L"ON",      L"WRITE_THROUGH", L"WRITE_BACK",    L"RAID_50"};
  for (const auto* table : {&kStripSizes, &kRwhPolicies, &kEnableStates}) {
    for (const auto& row : *table) texts.insert(row.second);
  }
  return texts;
}

template <class Value>
void expectValues(Value (*fromText)(const std::wstring&), const std::map<std::wstring, int>& values,
                  int other) {
  for (const auto& [text, value] : values) EXPECT_EQ(static_cast<int>(fromText(text)), value) << text.c_str();
  for (const std::wstring& text : manyTexts()) {
    if (values.count(text) > 0) continue;
    EXPECT_EQ(static_cast<int>(fromText(text)), other) << text.c_str();
  }
}

std::map<std::wstring, int> turned(const std::map<int, std::wstring>& table) {
  std::map<std::wstring, int> result;
  for (const auto& [value, text] : table) result[text] = value;
  return result;
}

TEST(EnumerationValues, OfRaidLevelsTellAnUnusableLevelFromAWordThatIsNone) {
  expectValues(&raidLevelFromText,
               {{L"RAID_0", 2},
                {L"RAID_1", 3},
                {L"RAID_5", 4},
                {L"RAID_10", 5},
                {L"RAID_2", 1},
                {L"RAID_3", 1},
                {L"RAID_4", 1},
                {L"RAID_6", 1},
                {L"RAID_01", 1},
                {L"RAID_INVALID", 1},
                {L"RAID_UNKNOWN", 0}},
               0);
}

TEST(EnumerationValues, OfRaid6AndRaid7Differ) {
  EXPECT_EQ(raidLevelFromText(L"RAID_6"), RaidLevel::RAID_INVALID);
  EXPECT_EQ(raidLevelFromText(L"RAID_7"), RaidLevel::RAID_UNKNOWN);
}

TEST(EnumerationValues, OfStripSizesAcceptNotAvailable) {
  expectValues(&stripSizeFromText, turned(kStripSizes), 17);
  EXPECT_EQ(static_cast<int>(stripSizeFromText(L"N/A")), 16);
}

TEST(EnumerationValues, OfWriteHolePolicies) { expectValues(&rwhPolicyFromText, turned(kRwhPolicies), 0); }

TEST(EnumerationValues, OfEnableStates) { expectValues(&enableStateFromText, turned(kEnableStates), 0); }

TEST(EnumerationValues, OfCachePoliciesDoNotTakeNotSupported) {
  expectValues(&cachePolicyFromText,
               {{L"OFF", 1}, {L"WRITE_THROUGH", 2}, {L"WRITE_BACK", 3}, {L"UNKNOWN", 0}}, 0);
  EXPECT_EQ(cachePolicyFromText(L"NOT_SUPPORTED"), CachePolicy::UNKNOWN);
}

TEST(StripSizeBits, PairEverySizeButNotAvailable) {
  const auto& bits = stripSizeBits();
  ASSERT_EQ(bits.size(), 17U);
  for (int n = 0; n <= 15; ++n) EXPECT_EQ(bits.left.at(static_cast<StripSize>(n)), 1U << n) << n;
  EXPECT_EQ(bits.left.at(StripSize::SIZE_UNKNOWN), 0U);
  EXPECT_EQ(bits.left.count(StripSize::NOT_AVAILABLE), 0U);
}

TEST(Raid5DefaultStripByDisks, HoldsThreeToTwentyFourDisks) {
  const std::map<std::int32_t, std::wstring> expected = {
      {3, L"SIZE_64KB"},   {4, L"SIZE_32KB"},   {5, L"SIZE_128KB"},  {6, L"SIZE_64KB"},   {7, L"SIZE_128KB"},
      {8, L"SIZE_16KB"},   {9, L"SIZE_128KB"},  {10, L"SIZE_64KB"},  {11, L"SIZE_128KB"}, {12, L"SIZE_32KB"},
      {13, L"SIZE_128KB"}, {14, L"SIZE_64KB"},  {15, L"SIZE_128KB"}, {16, L"SIZE_8KB"},   {17, L"SIZE_128KB"},
      {18, L"SIZE_64KB"},  {19, L"SIZE_128KB"}, {20, L"SIZE_32KB"},  {21, L"SIZE_128KB"}, {22, L"SIZE_64KB"},
      {23, L"SIZE_128KB"}, {24, L"SIZE_16KB"}};
  std::map<std::int32_t, std::wstring> actual;
  for (const auto& [disks, size] : kRaid5DefaultStripByDisks) actual[disks] = toText(size);
  EXPECT_EQ(actual, expected);
}

}  // namespace
