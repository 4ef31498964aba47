#include "snapshot_comparison.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <utility>

#include "common/open_objects.h"
#include "support/field_samples.h"
#include "support/model_samples.h"

void PrintTo(SnapshotDifference difference, std::ostream* out) {
  constexpr const char* kWords[] = {"none", "progress", "structure"};
  *out << kWords[static_cast<int>(difference)];
}

namespace {

constexpr wchar_t kRaid[] = L"61";

/// Two objects of each class, of which every field is published that can be.
MirnSnapshot sample() {
  EndDevice::Disk disk = sampleDisk();
  disk.type = DiskType::Lyx;
  disk.x8Disk = X8Disk::X8_A;
  Raid raid = complete<Raid>().build();
  raid.setLevels({complete<RaidLevelSupport>().build()});
  const Volume volume = complete<Volume>().rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).build();
  const EndDevice device = complete<EndDevice>().disk(disk).build();

  MirnSnapshot snapshot;
  snapshot.raids = {raid, complete<Raid>().id(L"62").build()};
  snapshot.controllers = {complete<Controller>().build(), complete<Controller>().id(L"12").build()};
  snapshot.arrays = {complete<Array>().build(), complete<Array>().id(L"22").build()};
  snapshot.endDevices = {device, complete<EndDevice>().id(L"42").build()};
  snapshot.ports = {complete<Port>().build(), complete<Port>().id(L"52").build()};
  snapshot.volumes = {volume, complete<Volume>().id(L"32").build()};
  snapshot.version = std::make_shared<Version>(complete<Version>().build());
  snapshot.controllerArrays = {{L"11", {L"21", L"22"}}, {L"12", {}}};
  snapshot.controllerPorts = {{L"11", {L"51"}}, {L"12", {L"52"}}};
  snapshot.controllerVolumes = {{L"11", {L"31", L"32"}}, {L"12", {}}};
  snapshot.raidLevels[kRaid].emplace(RaidLevel::RAID_5, complete<RaidLevelSupport>().build());
  snapshot.raidLevels[L"62"];
  return snapshot;
}

/// How far a snapshot differs that was changed so, seen from either side.
SnapshotDifference differenceBy(const std::function<void(MirnSnapshot&)>& change) {
  const MirnSnapshot before = sample();
  MirnSnapshot after = sample();
  change(after);
  const SnapshotDifference difference = differenceBetween(before, after);
  EXPECT_EQ(differenceBetween(after, before), difference);
  return difference;
}

// Objects

template <class Model>
Model& firstOf(MirnSnapshot& snapshot);
template <>
Raid& firstOf(MirnSnapshot& snapshot) {
  return snapshot.raids.front();
}
template <>
Controller& firstOf(MirnSnapshot& snapshot) {
  return snapshot.controllers.front();
}
template <>
Array& firstOf(MirnSnapshot& snapshot) {
  return snapshot.arrays.front();
}
template <>
EndDevice& firstOf(MirnSnapshot& snapshot) {
  return snapshot.endDevices.front();
}
template <>
Port& firstOf(MirnSnapshot& snapshot) {
  return snapshot.ports.front();
}
template <>
Volume& firstOf(MirnSnapshot& snapshot) {
  return snapshot.volumes.front();
}
template <>
Version& firstOf(MirnSnapshot& snapshot) {
  return *snapshot.version;
}
template <>
RaidLevelSupport& firstOf(MirnSnapshot& snapshot) {
  return snapshot.raidLevels.at(kRaid).at(RaidLevel::RAID_5);
}

template <class Model>
class ChangedField : public testing::Test {};

using Models = testing::Types<Array, Controller, EndDevice, Port, Raid, RaidLevelSupport, Version, Volume>;
TYPED_TEST_SUITE(ChangedField, Models, ByClass);

TYPED_TEST(ChangedField, CountsAsWhatItIs) {
  const auto changes = changesOf<TypeParam>();
  ASSERT_FALSE(changes.empty());
  for (const auto& change : changes) {
    const SnapshotDifference expected = change.weight == Weight::KEPT ? SnapshotDifference::kNone
                                        : change.isProgress           ? SnapshotDifference::kProgress
                                                                      : SnapshotDifference::kStructure;
    EXPECT_EQ(differenceBy([&](MirnSnapshot& after) { change.apply(firstOf<TypeParam>(after)); }), expected)
        << change.name;
  }
}

TEST(SnapshotComparison, FindsNothingBetweenPicturesThatAgree) {
  EXPECT_EQ(differenceBetween(sample(), sample()), SnapshotDifference::kNone);
  EXPECT_EQ(differenceBetween({}, {}), SnapshotDifference::kNone);
}

TEST(SnapshotComparison, CountsALinkThatIsNotPublished) {
  const auto difference =
      differenceBy([](MirnSnapshot& after) { after.volumes.back().setJournalingDriveId(L"another drive"); });
  EXPECT_EQ(difference, SnapshotDifference::kStructure);
}

TEST(SnapshotComparison, SeesAChangeBehindOneOfProgress) {
  const auto difference = differenceBy([](MirnSnapshot& after) {
    after.volumes.front() =
        complete<Volume>().rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE).migrProgress(41).build();
    after.ports.back().setLocalDeviceId(L"42");
  });
  EXPECT_EQ(difference, SnapshotDifference::kStructure);
}

// Lists and maps

struct ListCase {
  const char* name;
  std::function<void(MirnSnapshot&)> change;
};

template <class Member>
std::vector<ListCase> casesOfList(const char* name, Member MirnSnapshot::*list) {
  return {
      {name, [list](MirnSnapshot& after) { (after.*list).pop_back(); }},
      {name, [list](MirnSnapshot& after) { (after.*list).push_back((after.*list).front()); }},
      {name, [list](MirnSnapshot& after) { std::swap((after.*list).front(), (after.*list).back()); }},
  };
}

std::vector<ListCase> casesOfIds(const char* name, MirnSnapshot::IdLists MirnSnapshot::*lists) {
  return {
      {name, [lists](MirnSnapshot& after) { (after.*lists).erase(L"12"); }},
      {name, [lists](MirnSnapshot& after) { (after.*lists)[L"13"]; }},
      {name, [lists](MirnSnapshot& after) { (after.*lists)[L"11"].pop_back(); }},
      {name, [lists](MirnSnapshot& after) { (after.*lists)[L"12"].push_back(L"99"); }},
  };
}

std::vector<ListCase> allListCases() {
  std::vector<ListCase> cases = {
      {"version", [](MirnSnapshot& after) { after.version.reset(); }},
      {"levels", [](MirnSnapshot& after) { after.raidLevels.erase(L"62"); }},
      {"levels", [](MirnSnapshot& after) { after.raidLevels[L"63"]; }},
      {"levels", [](MirnSnapshot& after) { after.raidLevels.at(kRaid).clear(); }},
      {"levels",
       [](MirnSnapshot& after) {
         after.raidLevels.at(L"62").emplace(RaidLevel::RAID_5, complete<RaidLevelSupport>().build());
       }},
  };
  for (const auto& more : {
           casesOfList("raids", &MirnSnapshot::raids),
           casesOfList("controllers", &MirnSnapshot::controllers),
           casesOfList("arrays", &MirnSnapshot::arrays),
           casesOfList("end devices", &MirnSnapshot::endDevices),
           casesOfList("ports", &MirnSnapshot::ports),
           casesOfList("volumes", &MirnSnapshot::volumes),
           casesOfIds("arrays of a controller", &MirnSnapshot::controllerArrays),
           casesOfIds("ports of a controller", &MirnSnapshot::controllerPorts),
           casesOfIds("volumes of a controller", &MirnSnapshot::controllerVolumes),
       }) {
    cases.insert(cases.end(), more.begin(), more.end());
  }
  return cases;
}

TEST(SnapshotComparison, CountsWhatIsMoreOrLessOrElsewhere) {
  int row = 0;
  for (const ListCase& each : allListCases()) {
    EXPECT_EQ(differenceBy(each.change), SnapshotDifference::kStructure) << each.name << ", " << row;
    ++row;
  }
}

TEST(SnapshotComparison, TakesAVersionForWhatItSays) {
  const auto difference =
      differenceBy([](MirnSnapshot& after) { after.version = std::make_shared<Version>(*after.version); });
  EXPECT_EQ(difference, SnapshotDifference::kNone);
}

}  // namespace
