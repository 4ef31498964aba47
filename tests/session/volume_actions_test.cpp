#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/action_cases.h"
#include "support/assertion_output.h"
#include "support/by_name.h"
#include "support/model_samples.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const RwhRequest kNoRwh;

class VolumeActionTest : public SessionTest {
 protected:
  /// The record that the library's last action got.
  template <class Record>
  Record sent() {
    const ScriptedCalls actions = onlyOf(OperationKind::ACTION, m_library.calls());
    for (const ScriptedArgument& argument : actions.back().arguments) {
      if (argument.bytes.size() == sizeof(Record)) return argument.record<Record>();
    }
    throw std::logic_error("no such record in " + actions.back().text());
  }

  static EndDevice disk(VEX_HANDLE handle, const std::wstring& id) {
    return complete<EndDevice>().handle(handle).id(id).build();
  }

  void createVolume(const std::wstring& name, StripSize stripSize = StripSize::SIZE_128KB,
                    RaidLevel raidLevel = RaidLevel::RAID_5) {
    m_session.createVolume(m_array, name, stripSize, raidLevel, 0, kNoRwh);
  }

  void createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& sourceDiskId,
                             StripSize stripSize = StripSize::SIZE_128KB,
                             RaidLevel raidLevel = RaidLevel::RAID_5) {
    m_session.createVolumeFromDisks(disks, L"ABCDEFGHIJKLMNOPQRST", stripSize, raidLevel, 0, sourceDiskId,
                                    kNoRwh);
  }

  const Volume m_volume = complete<Volume>().handle(52).build();
  const Array m_array = complete<Array>().handle(41).build();
};

// Names

TEST_F(VolumeActionTest, CreateVolumeSendsTheFirstSixteenBytesOfALongName) {
  createVolume(L"ABCDEFGHIJKLMNOPQRST");
  EXPECT_EQ(std::string(sent<VEX_CREATE_VOLUME_PARAMS>().name, 17), std::string("ABCDEFGHIJKLMNOP") + '\0');
}

TEST_F(VolumeActionTest, CreateVolumeFromDisksSendsTheFirstSixteenBytesOfALongName) {
  createVolumeFromDisks({}, L"");
  EXPECT_EQ(std::string(sent<VEX_CREATE_FROM_DISKS_PARAMS>().name, 17),
            std::string("ABCDEFGHIJKLMNOP") + '\0');
}

TEST_F(VolumeActionTest, RenameSendsAllBytesOfTheLongestName) {
  m_session.rename(m_volume, std::wstring(16, L'\u20ac'));
  std::string name;
  for (int i = 0; i < 16; ++i) name += "\342\202\254";
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeRename(52, \"" + name + "\")"));
}

TEST_F(VolumeActionTest, RenameSendsAnEmptyName) {
  m_session.rename(m_volume, L"");
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeRename(52, \"\")"));
}

TEST_F(VolumeActionTest, RenameDemandsAShortName) {
  EXPECT_DEATH(m_session.rename(m_volume, L"ABCDEFGHIJKLMNOPQ"),
               failedAssertion("name.size() <= kMaxVolumeNameSize", "src\\mirn_session"));
}

TEST_F(VolumeActionTest, ANameThatIsNoTextReachesNoLibrary) {
  const std::wstring halfACharacter(1, wchar_t(0xD800));
  EXPECT_THROW(m_session.rename(m_volume, halfACharacter), std::range_error);
  EXPECT_THROW(createVolume(halfACharacter), std::range_error);
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

// Strip sizes and levels

TEST_F(VolumeActionTest, ANewMirrorHas64KilobyteStripsWhateverIsAsked) {
  createVolume(L"Data", StripSize::SIZE_128KB, RaidLevel::RAID_1);
  EXPECT_EQ(sent<VEX_CREATE_VOLUME_PARAMS>().stripSize, VEX_STRIP_SIZE_64KB);
  createVolumeFromDisks({}, L"", StripSize::SIZE_128KB, RaidLevel::RAID_1);
  EXPECT_EQ(sent<VEX_CREATE_FROM_DISKS_PARAMS>().stripSize, VEX_STRIP_SIZE_64KB);
}

TEST_F(VolumeActionTest, AVolumeThatBecomesAMirrorHasTheStripsThatAreAsked) {
  m_session.modifyRaidLevel(m_volume, StripSize::SIZE_128KB, RaidLevel::RAID_1, 0, {});
  EXPECT_EQ(sent<VEX_RAID_LEVEL_MODIFY_PARAMS>().stripSize, VEX_STRIP_SIZE_128KB);
}

TEST_F(VolumeActionTest, AnUnknownLevelIsLeftToTheLibrary) {
  m_library.answer(onCall("VexVolumeCreate"), VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED);
  EXPECT_EQ(failureOf([this] { createVolume(L"Data", StripSize::SIZE_64KB, RaidLevel::RAID_UNKNOWN); }),
            (Failure{"NOT_SUPPORTED", "Raid level not supported"}));
  EXPECT_EQ(sent<VEX_CREATE_VOLUME_PARAMS>().raidLevel, 0x80000000);
}

// Disks

TEST_F(VolumeActionTest, ModifyRaidLevelWithoutDisksSendsANullAddressAndZero) {
  m_session.modifyRaidLevel(m_volume, StripSize::SIZE_64KB, RaidLevel::RAID_5, 0, {});
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexRaidLevelModify(52, {" + u32(0x20) + u32(8) + u64(0) +
                                                   zeros(8) + u32(0) + zeros(4) + "; null})"));
}

struct SourceCase {
  const char* name;
  std::wstring sourceDiskId;
  VEX_HANDLE sent;
};

class SourceDisk : public VolumeActionTest, public testing::WithParamInterface<SourceCase> {};

TEST_P(SourceDisk, IsTheFirstDiskOfTheListWithThatId) {
  createVolumeFromDisks({disk(21, L"one"), disk(22, L"twins"), disk(23, L"twins"), disk(24, L"")},
                        GetParam().sourceDiskId);
  EXPECT_EQ(sent<VEX_CREATE_FROM_DISKS_PARAMS>().sourceDiskHandle, GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(Ids, SourceDisk,
                         testing::Values(SourceCase{"Known", L"one", 21},
                                         SourceCase{"KnownTwice", L"twins", 22},
                                         SourceCase{"NotInTheList", L"other", 0}, SourceCase{"None", L"", 0}),
                         ByName());

TEST_F(VolumeActionTest, CreateVolumeFromDisksDoesNotReadTheNewHandle) {
  m_library.change([](ScriptedMachine& machine) { machine.createdVolume = 0xFFFFFFFF; });
  EXPECT_EQ(failureOf([this] { createVolumeFromDisks({disk(21, L"one")}, L"one"); }), kNoFailure);
}

// Numbers

TEST_F(VolumeActionTest, VerifySendsWhetherToRepair) {
  m_session.verify(m_volume, true);
  m_session.verify(m_volume, false);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeVerify(52, 1)", "VexVolumeVerify(52, 0)"));
}

TEST_F(VolumeActionTest, ExpandHandsEverySizeOn) {
  m_session.expand(m_volume, 0);
  m_session.expand(m_volume, std::numeric_limits<std::uint64_t>::max());
  EXPECT_THAT(m_library.actionTexts(),
              ElementsAre("VexExpandVolume(52, 0)", "VexExpandVolume(52, 18446744073709551615)"));
}

TEST_F(VolumeActionTest, CachePoliciesHaveTheirNumbersAndAllOthersZero) {
  for (std::int32_t policy = 0; policy <= 5; ++policy)
    m_session.setCachePolicy(m_volume, CachePolicy(policy));
  EXPECT_THAT(m_library.actionTexts(),
              ElementsAre("VexVolumeSetCachePolicy(52, 0)", "VexVolumeSetCachePolicy(52, 1)",
                          "VexVolumeSetCachePolicy(52, 2)", "VexVolumeSetCachePolicy(52, 3)",
                          "VexVolumeSetCachePolicy(52, 0)", "VexVolumeSetCachePolicy(52, 0)"));
}

// Write-hole policy

struct RwhCase {
  const char* name;
  RwhPolicy policy;
  std::wstring driveId;
  std::string sent;
};

class SettingTheRwhPolicy : public VolumeActionTest, public testing::WithParamInterface<RwhCase> {};

TEST_P(SettingTheRwhPolicy, SendsDriveAndMode) {
  m_session.setRwhPolicy(m_volume, {{GetParam().driveId, 25}, GetParam().policy});
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeSetRwhPolicy(52, " + GetParam().sent + ")"));
}

INSTANTIATE_TEST_SUITE_P(
    Policies, SettingTheRwhPolicy,
    testing::Values(RwhCase{"None", RwhPolicy::NONE, L"", "0, 0"},
                    RwhCase{"Off", RwhPolicy::RWH_OFF, L"", "0, 0"},
                    RwhCase{"OffWithADrive", RwhPolicy::RWH_OFF, L"7", "25, 0"},
                    RwhCase{"Distributed", RwhPolicy::RWH_DISTRIBUTED, L"", "0, 1"},
                    RwhCase{"JournalingDrive", RwhPolicy::RWH_JOURNALING_DRIVE, L"7", "25, 2"},
                    RwhCase{"JournalingDriveWithoutADrive", RwhPolicy::RWH_JOURNALING_DRIVE, L"", "0, 2"},
                    RwhCase{"Other", RwhPolicy(4), L"7", "25, 0"}),
    ByName());

}  // namespace
