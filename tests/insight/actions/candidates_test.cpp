#include "actions/candidates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/actions/small_catalogue.h"
#include "insight/machine/small_machine.h"

namespace insight {
namespace {

using testing::ElementsAre;
using Words = std::vector<std::wstring>;

/// An argument of an operation on the volume of the small machine.
class Candidates : public testing::Test {
 protected:
  Candidates() {
    m_machine.raids.push_back(
        {L"R", {{L"RAID_0", {L"SIZE_4KB"}}, {L"RAID_5", {L"SIZE_64KB", L"SIZE_128KB"}}}});
    m_machine.raids.push_back({L"OTHER", {{L"RAID_1", {}}}});
    m_operation.id = L"change";
    m_operation.argument = L"volumeId";
    m_operation.segments = {L"{volumeId}"};
    m_field.name = L"asked";
    m_field.type = L"text";
  }

  CandidateQuestion question() const { return {m_operation, m_field, L"V", m_given}; }

  Words values(const wchar_t* from, const wchar_t* of, const Words& usages = {}) {
    m_field.candidates = CandidateSource{from, of, usages};
    return values();
  }
  Words values() const {
    Words values;
    for (const Candidate& each : candidatesFor(question(), m_machine)) values.push_back(each.value);
    return values;
  }

  MachineView m_machine = smallMachine();
  Operation m_operation;
  OperationField m_field;
  std::map<std::wstring, std::wstring> m_given;
};

TEST_F(Candidates, AreDisksOfTheUsagesBehindTheControllerOfTheObject) {
  DiskView other = m_machine.disks.back();
  other.id = L"ELSEWHERE";
  other.controllerId = L"X";
  m_machine.disks.push_back(other);
  m_machine.index();
  EXPECT_THAT(values(L"disk", L"volumeId", {L"SPARE"}), ElementsAre(L"S"));
  EXPECT_THAT(values(L"disk", L"", {L"SPARE"}), ElementsAre(L"S", L"ELSEWHERE"));
  EXPECT_THAT(values(L"disk", L"volumeId"), ElementsAre(L"D0", L"D1", L"D2", L"S"));
  const auto disks = candidatesFor(question(), m_machine);
  EXPECT_EQ(disks.front().object, (ObjectRef{"disk", L"D0", L"SATA N-D0"}));
}

TEST_F(Candidates, AreTheDisksThatAnotherArgumentNames) {
  m_given[L"disks"] = L"D1,NONE,D0";
  EXPECT_THAT(values(L"disks", L""), ElementsAre(L"D1", L"D0"));
}

TEST_F(Candidates, AreArrays) { EXPECT_THAT(values(L"array", L""), ElementsAre(L"A")); }

TEST_F(Candidates, AreLevelsOfTheEngineOfTheObject) {
  EXPECT_THAT(values(L"level", L"volumeId"), ElementsAre(L"RAID_0", L"RAID_5"));
  m_operation.argument.clear();
  EXPECT_THAT(values(L"level", L""), ElementsAre(L"RAID_0", L"RAID_5", L"RAID_1"));
}

TEST_F(Candidates, AreStripsOfTheLevelThatIsGivenOrThatTheVolumeHas) {
  EXPECT_THAT(values(L"strip", L"raidLevel"), ElementsAre(L"SIZE_64KB", L"SIZE_128KB"));
  m_given[L"raidLevel"] = L"RAID_0";
  EXPECT_THAT(values(L"strip", L"raidLevel"), ElementsAre(L"SIZE_4KB"));
}

TEST_F(Candidates, AreWordsOrAYesAndANo) {
  m_field.words = {L"START", L"CANCEL"};
  EXPECT_THAT(values(), ElementsAre(L"START", L"CANCEL"));
  m_field.type = L"boolean";
  EXPECT_THAT(values(), ElementsAre(L"true", L"false"));
}

TEST_F(Candidates, OfASizeAreItsBounds) {
  EXPECT_TRUE(values(L"size", L"volumeId").empty());
  constexpr std::uint64_t kMebibyte = 1U << 20U;
  m_machine.volumes.front().totalBytes = 100 * kMebibyte;
  m_machine.arrays.front().freeBytes = 50 * kMebibyte + 7;
  const auto bounds = sizeBoundsFor(question(), m_machine);
  ASSERT_TRUE(bounds.has_value());
  EXPECT_EQ(bounds->least, 101U);
  EXPECT_EQ(bounds->most, 150U);
  m_field.candidates->of = L"arrayId";
  EXPECT_FALSE(sizeBoundsFor(question(), m_machine).has_value()) << "no array is named";
  m_given[L"arrayId"] = L"A";
  EXPECT_EQ(sizeBoundsFor(question(), m_machine)->most, 50U);
}

TEST_F(Candidates, AreJudgedEach) {
  values(L"disk", L"volumeId");
  std::vector<Candidate> disks = candidatesFor(question(), m_machine);
  RehearsingPlugin plugin([](const auto& segments, const ServiceObject& body) {
    EXPECT_EQ(segments.front(), L"V");
    if (body.member(L"asked").toString() == L"D1") throw ListenerException("NOT_SUPPORTED", "Not this one");
  });
  judge(disks, question(), plugin);
  EXPECT_TRUE(disks[0].isAllowed);
  EXPECT_FALSE(disks[1].isAllowed);
  EXPECT_EQ(disks[1].errorId, L"NOT_SUPPORTED");
  EXPECT_EQ(disks[1].words, L"Not this one");
  EXPECT_TRUE(disks[3].isAllowed);
}

TEST_F(Candidates, AreJudgedWithWhatElseIsKnown) {
  OperationField list;
  list.name = L"disks";
  list.type = L"list";
  m_operation.fields = {list};
  m_field.whenField = L"source";
  m_field.whenWord = L"DISK";
  m_field.words = {L"ONE"};
  m_given[L"disks"] = L"D0,D1";
  std::vector<Candidate> words = candidatesFor(question(), m_machine);
  int asked = 0;
  RehearsingPlugin plugin([&](const auto&, const ServiceObject& body) {
    ++asked;
    EXPECT_EQ(body.member(L"source").toString(), L"DISK");
    EXPECT_TRUE(body.member(L"disks").isArray());
  });
  judge(words, question(), plugin);
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace insight
