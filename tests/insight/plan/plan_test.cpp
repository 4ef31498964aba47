#include "plan/plan.h"

#include <gmock/gmock.h>

#include "insight/machine/small_machine.h"
#include "insight/plan/small_changes.h"
#include "support/body.h"

namespace insight {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;

OperationEffect effectOn(const wchar_t* fate, const wchar_t* type, const wchar_t* argument,
                         const wchar_t* relation = L"itself") {
  OperationEffect effect;
  effect.fate = fate;
  effect.type = type;
  effect.argument = argument;
  effect.relation = relation;
  effect.text = L"Of {" + effect.argument + L"}.";
  return effect;
}

/// The volume "New", of all that a request tells of it.
OperationEffect newVolume() {
  OperationEffect effect = effectOn(L"comes", L"volume", L"name");
  effect.becomes = {L"raidLevel", L"size", L"disks", L"arrayId", false};
  return effect;
}

OperationEffect changedVolume(bool fillsArray) {
  OperationEffect effect = effectOn(L"changes", L"volume", L"volumeId");
  effect.becomes = {L"raidLevel", L"size", L"disks", {}, fillsArray};
  return effect;
}

class PlanOfAChange : public testing::Test {
 protected:
  PlanOfAChange() {
    m_machine.arrays[0].diskCount = 3;
    m_machine.arrays[0].totalBytes = 3 * 1000 * kMebibyte;
    m_machine.arrays[0].freeBytes = 3 * 500 * kMebibyte;
    m_machine.volumes[0].totalBytes = 2 * 400 * kMebibyte;
    for (DiskView& disk : m_machine.disks) disk.totalBytes = 1000 * kMebibyte;
  }

  Plan plan(const OperationEffects& told, const ServiceObject& body = {}) const {
    const RequestArguments request(m_operation, {L"V", L"change"}, body);
    return planOf(request, told, m_machine, m_statistics);
  }

  static std::vector<std::wstring> names(const std::vector<ObjectRef>& objects) {
    std::vector<std::wstring> all;
    for (const ObjectRef& each : objects) all.push_back(each.name);
    return all;
  }

  const Operation m_operation = changeOfVolume();
  MachineView m_machine = smallMachine();
  std::vector<JobStatistics> m_statistics;
};

TEST_F(PlanOfAChange, IsOfThePositionOfTheMachine) {
  const Plan made = plan({});
  EXPECT_EQ(made.position.epoch, L"0123456789abcdef");
  EXPECT_EQ(made.position.structure, 5U);
  EXPECT_THAT(made.effects, IsEmpty());
  EXPECT_THAT(made.lost, IsEmpty());
  EXPECT_THAT(made.warnings, IsEmpty());
}

TEST_F(PlanOfAChange, TellsOfANewVolumeInAnArray) {
  const Plan made =
      plan({{newVolume()}, {}},
           body({{"name", "New"}, {"raidLevel", "RAID_5"}, {"size", "0"}, {"arrayId", ServiceObject(L"A")}}));
  ASSERT_EQ(made.effects.size(), 1U);
  EXPECT_EQ(made.effects[0].fate, L"comes");
  EXPECT_EQ(made.effects[0].text, L"Of New.");
  ASSERT_EQ(made.effects[0].objects.size(), 1U);
  const PlannedObject& comes = made.effects[0].objects[0];
  EXPECT_EQ(comes.object, (ObjectRef{"volume", {}, L"New"}));
  EXPECT_EQ(comes.level, L"RAID_5");
  EXPECT_THAT(names(comes.members), ElementsAre(L"SATA N-D0", L"SATA N-D1", L"SATA N-D2"));
  EXPECT_EQ(comes.aboutBytes, 2 * 500 * kMebibyte);
  ASSERT_EQ(made.redundancy.size(), 1U);
  EXPECT_EQ(made.redundancy[0].now, std::nullopt);
  EXPECT_EQ(made.redundancy[0].meanwhile, 0U);
}

TEST_F(PlanOfAChange, TellsOfANewVolumeAndItsNewArray) {
  OperationEffect array = effectOn(L"comes", L"array", L"disks", L"array");
  array.becomes.disks = L"disks";
  m_machine.disks[3].freeBytes = 700 * kMebibyte;
  const Plan made =
      plan({{newVolume(), array}, {}},
           body({{"name", "New"}, {"raidLevel", "RAID_0"}, {"size", "100"}, {"disks", list({"S", "D0"})}}));
  ASSERT_EQ(made.effects.size(), 2U);
  const PlannedObject& volume = made.effects[0].objects.at(0);
  EXPECT_THAT(names(volume.members), ElementsAre(L"SATA N-S", L"SATA N-D0"));
  EXPECT_EQ(volume.aboutBytes, 100 * kMebibyte);
  const PlannedObject& comes = made.effects[1].objects.at(0);
  EXPECT_EQ(comes.object, (ObjectRef{"array", {}, {}}));
  EXPECT_THAT(names(comes.members), ElementsAre(L"SATA N-S", L"SATA N-D0"));
  EXPECT_EQ(comes.aboutBytes, 2 * 700 * kMebibyte);
  EXPECT_THAT(made.warnings,
              ElementsAre(L"The first disk that fails takes the data of the volume New along."));
}

TEST_F(PlanOfAChange, TellsHowLargeAVolumeGetsWhichTakesWhatIsFree) {
  const Plan made = plan({{changedVolume(false)}, {}}, body({{"size", "0"}}));
  EXPECT_EQ(made.effects.at(0).objects.at(0).aboutBytes, 2 * (400 + 500) * kMebibyte);
  EXPECT_THAT(made.effects[0].objects[0].members, IsEmpty()) << "they stay";
  EXPECT_EQ(made.effects[0].objects[0].level, L"") << "it stays";
}

TEST_F(PlanOfAChange, TellsHowLargeAVolumeGetsWhichFillsItsArrayAtAnotherLevel) {
  m_machine.disks[3].freeBytes = 900 * kMebibyte;
  const Plan made =
      plan({{changedVolume(true)}, {}}, body({{"raidLevel", "RAID_0"}, {"disks", list({"S"})}}));
  const PlannedObject& changed = made.effects.at(0).objects.at(0);
  EXPECT_EQ(changed.level, L"RAID_0");
  EXPECT_EQ(changed.aboutBytes, 4 * 900 * kMebibyte);
  EXPECT_EQ(changed.members.size(), 4U);
}

TEST_F(PlanOfAChange, TellsNoSizeThatStaysOrThatNobodyKnows) {
  EXPECT_EQ(plan({{changedVolume(false)}, {}}).effects.at(0).objects.at(0).aboutBytes, std::nullopt);
  const Plan strange = plan({{changedVolume(true)}, {}}, body({{"raidLevel", "RAID_7"}}));
  EXPECT_EQ(strange.effects.at(0).objects.at(0).aboutBytes, std::nullopt);
  const Plan wordy = plan({{changedVolume(false)}, {}}, body({{"size", "much"}}));
  EXPECT_EQ(wordy.effects.at(0).objects.at(0).aboutBytes, std::nullopt);
}

TEST_F(PlanOfAChange, LeavesOutEffectsThatDoNotCountAndThoseThatMeetNothing) {
  OperationEffect conditional = effectOn(L"changes", L"volume", L"volumeId");
  conditional.when = {L"name", {}};
  OperationEffect emptied = effectOn(L"goes", L"array", L"volumeId", L"array");
  emptied.where = L"kept";
  EXPECT_THAT(plan({{conditional, emptied}, {}}).effects, IsEmpty());
}

TEST_F(PlanOfAChange, TellsWhatIsLostByName) {
  const OperationEffects told{
      {effectOn(L"goes", L"volume", L"volumeId"), effectOn(L"overwritten", L"disk", L"disks"),
       effectOn(L"goes", L"array", L"volumeId", L"array"), effectOn(L"changes", L"disk", L"diskId")},
      {}};
  const Plan made = plan(told, body({{"disks", list({"S"})}, {"diskId", "D0"}}));
  ASSERT_EQ(made.lost.size(), 2U);
  EXPECT_EQ(made.lost[0].text, L"the volume Data");
  EXPECT_EQ(made.lost[0].object.id, L"V");
  EXPECT_EQ(made.lost[1].text, L"everything on SATA N-S");
  EXPECT_THAT(made.warnings, ElementsAre(L"The disk SATA N-S was a spare till now."));
}

TEST_F(PlanOfAChange, WarnsOfWhatTheSystemStandsOn) {
  m_machine.volumes[0].isSystemVolume = true;
  m_machine.disks[0].isSystemDisk = true;
  const OperationEffects told{
      {effectOn(L"goes", L"volume", L"volumeId"), effectOn(L"overwritten", L"disk", L"diskId")}, {}};
  EXPECT_THAT(plan(told, body({{"diskId", "D0"}})).warnings,
              ElementsAre(L"The volume Data holds the running system.",
                          L"The running system lies on the disk SATA N-D0."));
}

TEST_F(PlanOfAChange, WarnsOfAMachineThatCannotBeLookedAt) {
  m_machine.failedAt = kSmallMachineTakenAt + 1;
  m_machine.failure = L"Busy";
  EXPECT_THAT(plan({}).warnings, ElementsAre(L"The machine could not be looked at lately: Busy"));
  m_machine.failedAt = kSmallMachineTakenAt - 1;
  EXPECT_THAT(plan({}).warnings, IsEmpty());
}

TEST_F(PlanOfAChange, TellsTheWorkAndThatMeanwhileNoDiskMayFail) {
  const Plan made = plan({{}, {{L"migrate", L"volumeId", {}}}});
  ASSERT_EQ(made.work.size(), 1U);
  EXPECT_EQ(made.work[0].kind, "migrate");
  EXPECT_EQ(made.work[0].object.name, L"Data");
  EXPECT_EQ(made.work[0].likelySeconds, std::nullopt);
  ASSERT_EQ(made.redundancy.size(), 1U);
  EXPECT_EQ(made.redundancy[0].now, 1U);
  EXPECT_EQ(made.redundancy[0].meanwhile, 0U);
  EXPECT_THAT(made.warnings, ElementsAre(L"Meanwhile the volume Data can spare no disk."));
}

TEST_F(PlanOfAChange, TellsThatAVerificationKeepsTheRedundancy) {
  const Plan made = plan({{}, {{L"verify", L"volumeId", {L"name", L"START"}}}}, body({{"name", "START"}}));
  ASSERT_EQ(made.redundancy.size(), 1U);
  EXPECT_EQ(made.redundancy[0].meanwhile, 1U);
  EXPECT_THAT(made.warnings, IsEmpty());
  EXPECT_THAT(plan({{}, {{L"verify", L"volumeId", {L"name", L"START"}}}}, body({{"name", "CANCEL"}})).work,
              IsEmpty());
}

TEST_F(PlanOfAChange, TellsThatVolumesLoseTheirRedundancyWithADisk) {
  const OperationEffects told{{effectOn(L"changes", L"volume", L"diskId", L"volumes")}, {}};
  const Plan made = plan(told, body({{"diskId", "D0"}}));
  ASSERT_EQ(made.redundancy.size(), 1U);
  EXPECT_EQ(made.redundancy[0].now, 1U);
  EXPECT_EQ(made.redundancy[0].meanwhile, 0U);
  const OperationEffects renaming{{effectOn(L"changes", L"volume", L"volumeId")}, {}};
  EXPECT_THAT(plan(renaming).redundancy, IsEmpty());
}

TEST_F(PlanOfAChange, TellsTheWorkOnAllVolumesOfAnArrayAndOnANewOne) {
  const Plan inArray = plan({{}, {{L"migrate", L"arrayId", {}}}}, body({{"arrayId", ServiceObject(L"A")}}));
  ASSERT_EQ(inArray.work.size(), 1U);
  EXPECT_EQ(inArray.work[0].object.id, L"V");
  const Plan onNew = plan({{}, {{L"migrate", L"name", {}}}}, body({{"name", "New"}}));
  ASSERT_EQ(onNew.work.size(), 1U);
  EXPECT_EQ(onNew.work[0].object, (ObjectRef{"volume", {}, L"New"}));
}

TEST_F(PlanOfAChange, TellsHowLongSuchWorkTookOnThisVolumeOrElseOnAny) {
  m_statistics = {{"migrate", {}, 5, 4, 700}, {"rebuild", L"V", 1, 1, 3}};
  EXPECT_EQ(plan({{}, {{L"migrate", L"volumeId", {}}}}).work.at(0).likelySeconds, 700);
  EXPECT_EQ(plan({{}, {{L"migrate", L"volumeId", {}}}}).work.at(0).jobs, 4U);
  m_statistics.push_back({"migrate", L"V", 2, 2, 900});
  EXPECT_EQ(plan({{}, {{L"migrate", L"volumeId", {}}}}).work.at(0).likelySeconds, 900);
  m_statistics.back().medianSeconds.reset();
  EXPECT_EQ(plan({{}, {{L"migrate", L"volumeId", {}}}}).work.at(0).likelySeconds, 700);
  EXPECT_EQ(plan({{}, {{L"verify", L"volumeId", {}}}}).work.at(0).likelySeconds, std::nullopt);
}

TEST_F(PlanOfAChange, TellsTheSettingsThatAreNamed) {
  OperationEffect settings = effectOn(L"changes", L"setting", L"");
  settings.relation.clear();
  const Plan made = plan({{settings}, {}}, body({{"size", "3"}}));
  ASSERT_EQ(made.effects.size(), 1U);
  EXPECT_EQ(made.effects[0].objects.at(0).object, (ObjectRef{"setting", {}, L"size"}));
}

}  // namespace

}  // namespace insight
