#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "common/open_objects.h"
#include "support/lines_of.h"

namespace {

/// What a change of one field does.
struct Effect {
  bool isSeen;  // in the published form
  bool isSameForm;
  bool isSameStructure;
};

template <class Model>
Effect effectOf(const FieldChange<Model>& change, const Model& before) {
  Model after = before;
  change.apply(after);
  return {linesOf(before.toServiceObject()) != linesOf(after.toServiceObject()), sameForm(before, after),
          sameStructure(before, after)};
}

template <class Model>
class FieldChanges : public testing::Test {};

using Models = testing::Types<Array, Controller, EndDevice, Port, Raid, RaidLevelSupport, Version, Volume>;
TYPED_TEST_SUITE(FieldChanges, Models);

TYPED_TEST(FieldChanges, LeaveACopyTheSame) {
  const TypeParam object = openObject<TypeParam>();
  const TypeParam copy = object;
  EXPECT_TRUE(sameForm(object, copy));
  EXPECT_TRUE(sameStructure(object, copy));
}

TYPED_TEST(FieldChanges, ShowInFormAndComparisonAlike) {
  const TypeParam object = openObject<TypeParam>();
  for (const auto& change : changesOf<TypeParam>()) {
    if (change.weight == Weight::DECIDING || change.name == "defaultStripSize") continue;
    const Effect effect = effectOf(change, object);
    EXPECT_EQ(effect.isSeen, change.weight != Weight::KEPT) << change.name;
    EXPECT_EQ(effect.isSameForm, !effect.isSeen) << change.name;
    EXPECT_EQ(effect.isSameStructure, !effect.isSeen || change.isProgress) << change.name;
  }
}

/// The fields of this model that `accept` accepts.
template <class Model, class Accept>
std::set<std::string> namesOf(Accept accept) {
  std::set<std::string> names;
  for (const auto& change : changesOf<Model>()) {
    if (accept(change)) names.insert(change.name);
  }
  return names;
}

template <class Model>
std::set<std::string> progressOf() {
  return namesOf<Model>([](const auto& change) { return change.isProgress; });
}

template <class Model>
std::set<std::string> unseenOf() {
  return namesOf<Model>([](const auto& change) { return change.weight == Weight::KEPT; });
}

using Names = std::set<std::string>;

TEST(ProgressFields, AreThePercentAndTheCountersOfAVolume) {
  EXPECT_EQ(progressOf<Volume>(), (Names{"migrProgress", "verify.badBlocks", "verify.errors"}));
  EXPECT_EQ(progressOf<Array>(), Names{});
  EXPECT_EQ(progressOf<Controller>(), Names{});
  EXPECT_EQ(progressOf<EndDevice>(), Names{});
  EXPECT_EQ(progressOf<Port>(), Names{});
  EXPECT_EQ(progressOf<Raid>(), Names{});
  EXPECT_EQ(progressOf<RaidLevelSupport>(), Names{});
  EXPECT_EQ(progressOf<Version>(), Names{});
}

TEST(UnseenFields, AreHandlesAndWhatOnlyTheProgramKnows) {
  EXPECT_EQ(unseenOf<Volume>(), (Names{"handle", "arrayHandle", "journalingDriveHandle"}));
  EXPECT_EQ(unseenOf<Array>(), Names{"handle"});
  EXPECT_EQ(unseenOf<Controller>(),
            (Names{"handle", "raidHandle", "address", "supportedFunctions.function420"}));
  EXPECT_EQ(unseenOf<EndDevice>(), (Names{"handle", "controllerHandle", "raidHandle", "arrayHandle",
                                          "phyHandle", "unpublishedNumber", "unpublishedSize"}));
  EXPECT_EQ(unseenOf<Port>(), (Names{"handle", "localDeviceHandle", "connectedPortHandle"}));
  EXPECT_EQ(unseenOf<Raid>(), Names{"handle"});
  EXPECT_EQ(unseenOf<RaidLevelSupport>(), Names{});
  EXPECT_EQ(unseenOf<Version>(), Names{});
}

/// The fields of which a change is seen by `sameForm`, though the form stays as it is.
template <class Model>
Names countedUnseen(const Model& object) {
  return namesOf<Model>([&](const auto& change) {
    const Effect effect = effectOf(change, object);
    return !effect.isSeen && !effect.isSameForm;
  });
}

/// The fields of which a change is seen nowhere, though clients see them of other objects.
template <class Model>
Names passedOver(const Model& object) {
  return namesOf<Model>([&](const auto& change) {
    const Effect effect = effectOf(change, object);
    return change.weight != Weight::KEPT && !effect.isSeen && effect.isSameForm;
  });
}

TEST(HiddenFields, DoNotCount) {
  EXPECT_EQ(passedOver(complete<EndDevice>().build()), (Names{"vendorId", "lyxDomain", "isOrdanNVMe"}));
  EXPECT_EQ(passedOver(complete<EndDevice>().deviceType(DeviceType::NON_DISK_STORAGE).build()),
            (Names{"vendorId", "lyxDomain", "isOrdanNVMe", "totalSize", "sectorSize.logical",
                   "sectorSize.physical", "freeSize", "writeCachePolicy", "systemDisk", "x8Disk"}));
  EXPECT_EQ(passedOver(openObject<RaidLevelSupport>()), Names{"defaultStripSize"});
}

TEST(HiddenFields, CountWhereTheyAreLinks) {
  EXPECT_EQ(countedUnseen(complete<Volume>().rwhPolicy(RwhPolicy::RWH_OFF).build()),
            Names{"journalingDriveId"});
  EXPECT_EQ(countedUnseen(complete<EndDevice>().build()), Names{});
}

TEST(RaidLevels, ComeAndGoWithTheirSupport) {
  const RaidLevelSupport supported = complete<RaidLevelSupport>().build();
  const RaidLevelSupport unsupported = complete<RaidLevelSupport>().supported(false).build();
  const RaidLevelSupport other = complete<RaidLevelSupport>().supported(false).minDisks(9).build();
  EXPECT_FALSE(sameForm(supported, unsupported));
  EXPECT_TRUE(sameForm(unsupported, other));

  Raid one = complete<Raid>().build();
  Raid two = one;
  one.setLevels({supported, unsupported});
  two.setLevels({other, supported});
  EXPECT_TRUE(sameForm(one, two));
  two.setLevels({supported, supported});
  EXPECT_FALSE(sameForm(one, two));
  two.setRange(RaidRange::kInfo);
  EXPECT_FALSE(sameForm(one, two));
}

}  // namespace
