#include "vex_codes.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

using Code = std::uint32_t;

// Looked up ahead of the library's own initialisation: this program's files come first.
const RaidLevel kLevelAtLoad = raidLevelFromVex(4);
const StripSize kSizeAtLoad = stripSizeFromVex(0x8000);
const std::uint32_t kCodeAtLoad = toVex(RaidLevel::RAID_5);

TEST(VexCodes, AreReadyDuringStaticInitialisation) {
  EXPECT_EQ(kLevelAtLoad, RaidLevel::RAID_10);
  EXPECT_EQ(kSizeAtLoad, StripSize::SIZE_64MB);
  EXPECT_EQ(kCodeAtLoad, 8U);
}

/// All codes up to 100, every single bit, and codes with several bits.
std::vector<Code> manyCodes() {
  std::vector<Code> codes = {0x21, 0x30, 0xFFFF, 0x80000001, 0xFFFFFFFF};
  for (Code code = 0; code <= 100; ++code) codes.push_back(code);
  for (unsigned bit = 7; bit < 32; ++bit) codes.push_back(Code{1} << bit);
  return codes;
}

/// `values` is all there is, and every other code gives `other`.
template <class Value>
void expectValues(Value (*fromVex)(Code), const std::map<Code, int>& values, int other) {
  for (const Code code : manyCodes()) {
    const auto row = values.find(code);
    EXPECT_EQ(static_cast<int>(fromVex(code)), row != values.end() ? row->second : other) << code;
  }
}

TEST(VexCodes, OfRaidLevelsAreBitsWithTenBelowFive) {
  expectValues(&raidLevelFromVex, {{1, 2}, {2, 3}, {4, 5}, {8, 4}, {0, 1}, {16, 1}}, 0);
}

TEST(VexCodes, OfStripSizesAreSingleBits) {
  std::map<Code, int> sizes = {{0, 17}};
  for (int n = 0; n <= 15; ++n) sizes[Code{1} << n] = n;
  expectValues(&stripSizeFromVex, sizes, 17);
}

TEST(VexCodes, OfSeveralStripSizesAreUnknown) {
  EXPECT_EQ(stripSizeFromVex(0x21), StripSize::SIZE_UNKNOWN);
  EXPECT_EQ(stripSizeFromVex(0x10000), StripSize::SIZE_UNKNOWN);
}

TEST(VexCodes, OfVolumeStatesSkipSome) {
  expectValues(&volumeStateFromVex,
               {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {9, 9}, {13, 10}, {16, 11}},
               0);
}

TEST(VexCodes, OfCachePolicies) { expectValues(&cachePolicyFromVex, {{1, 1}, {2, 2}, {3, 3}}, 0); }

TEST(VexCodes, OfWriteHolePoliciesAreOffUnlessTold) { expectValues(&rwhPolicyFromVex, {{1, 2}, {2, 3}}, 1); }

TEST(VexCodes, OfArrayStates) { expectValues(&arrayStateFromVex, {{1, 1}, {2, 2}}, 0); }

TEST(VexCodes, OfWriteCaches) { expectValues(&writeCacheStateFromVex, {{1, 1}, {2, 2}}, 0); }

TEST(VexCodes, OfControllerTypesStandInAnotherOrder) {
  expectValues(&controllerTypeFromVex, {{1, 1}, {2, 4}, {3, 2}, {4, 3}}, 0);
}

TEST(VexCodes, OfDeviceTypes) { expectValues(&deviceTypeFromVex, {{1, 1}, {2, 2}, {3, 3}}, 0); }

TEST(VexCodes, OfDiskTypes) { expectValues(&diskTypeFromVex, {{1, 1}, {2, 2}, {3, 3}}, 0); }

TEST(VexCodes, OfDiskStates) {
  expectValues(&diskStateFromVex,
               {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {9, 9}, {10, 10}}, 0);
}

TEST(VexCodes, OfDiskUsages) {
  expectValues(&diskUsageFromVex, {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}}, 0);
}

TEST(VexCodes, OfLinkSpeeds) { expectValues(&linkSpeedFromVex, {{1, 1}, {2, 2}, {3, 3}}, 0); }

TEST(VexCodes, OfPortLocalDevicesAreOneAhead) {
  expectValues(&portLocalDeviceTypeFromVex, {{1, 0}, {2, 1}}, static_cast<int>(PortLocalDeviceType::UNKNOWN));
}

/// The other way: `codes` is all there is, and every other value of the model gives `other`.
template <class Value>
void expectCodes(const std::map<int, Code>& codes, Code other) {
  for (int value = -1; value <= 100; ++value) {
    const auto row = codes.find(value);
    EXPECT_EQ(toVex(static_cast<Value>(value)), row != codes.end() ? row->second : other) << value;
  }
}

TEST(VexCodes, ForRaidLevelsLeaveTheRefusalToTheLibrary) {
  expectCodes<RaidLevel>({{1, 0}, {2, 1}, {3, 2}, {4, 8}, {5, 4}}, 0x80000000);
}

TEST(VexCodes, ForStripSizesAreZeroWithoutAPair) {
  std::map<int, Code> bits;
  for (int n = 0; n <= 15; ++n) bits[n] = Code{1} << n;
  expectCodes<StripSize>(bits, 0);
}

TEST(VexCodes, ForWriteHolePoliciesAreOffUnlessTold) { expectCodes<RwhPolicy>({{2, 1}, {3, 2}}, 0); }

TEST(VexCodes, ForCachePolicies) { expectCodes<CachePolicy>({{1, 1}, {2, 2}, {3, 3}}, 0); }

}  // namespace
