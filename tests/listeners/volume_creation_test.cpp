#include <gmock/gmock.h>

#include "listeners/creation_requests.h"
#include "mirn_exception.h"
#include "volumes_listener.h"

namespace {

using testing::ElementsAre;

class VolumeCreation : public ListenerTest<VolumesListener> {
 protected:
  VolumeCreation() { arrangeSystem(m_session); }

  /// Posts a good request with these changes.
  std::string create(ServiceObject request, std::initializer_list<BodyField> changes = {}) {
    for (const BodyField& change : changes) set(request, change);
    return post("", request);
  }
};

class CreationInAnArray : public VolumeCreation {};
class CreationFromDisks : public VolumeCreation {};

TEST_F(CreationInAnArray, TellsTheWholeVolume) {
  const VolumeMaker created = aVolume(L"9").name(L"Data").inArray(L"21");
  m_session.duringAction = [this, created] { m_session.volumes.push_back(created); };
  EXPECT_EQ(create(arrayRequest()), describe(created.make().toServiceObject()));
  EXPECT_THAT(m_session.actions,
              ElementsAre("createVolume(array 21, \"Data\", SIZE_64KB, RAID_5, 0, RWH_OFF)"));
}

TEST_F(CreationInAnArray, AnswersNullWhenTheVolumeIsNotThereAfterwards) {
  EXPECT_EQ(create(arrayRequest()), "null");
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(CreationInAnArray, PassesAFailureOfTheActionUnchanged) {
  m_session.duringAction = [] { throw MirnException("NOT_SUPPORTED", "Refused"); };
  EXPECT_EQ(create(arrayRequest()), failed("NOT_SUPPORTED", "Refused"));
}

TEST_F(CreationInAnArray, TakesTheStripSizeAndPolicyOfTheRequest) {
  create(arrayRequest(),
         {{"stripSize", "SIZE_16KB"}, {"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "61"}});
  EXPECT_THAT(m_session.actions, ElementsAre("createVolume(array 21, \"Data\", SIZE_16KB, RAID_5, 0, "
                                             "RWH_JOURNALING_DRIVE on 61 handle 1061)"));
}

TEST_F(CreationInAnArray, OfASecondVolumeTakesSizeZeroOnly) {
  expectRefused(create(arrayRequest(), {{"size", "1024"}}), "INVALID_PARAMETER",
                "Size of the second volume must be 0");
  EXPECT_EQ(create(arrayRequest(), {{"size", "0"}}), "null");
}

TEST_F(CreationInAnArray, OfAFirstVolumeTakesAnySize) {
  create(arrayRequest(), {{"arrayId", "22"}, {"size", "1024"}, {"raidLevel", "RAID_0"}});
  EXPECT_THAT(m_session.actions,
              ElementsAre("createVolume(array 22, \"Data\", SIZE_128KB, RAID_0, 1024, RWH_OFF)"));
}

TEST_F(CreationInAnArray, OfASecondRaid5OnLyxTakesTheStripSizeOfTheFirst) {
  m_session.volume(L"1").raidLevel(RaidLevel::RAID_5).stripSize(StripSize::SIZE_512KB);
  create(arrayRequest());
  EXPECT_THAT(m_session.actions,
              ElementsAre("createVolume(array 21, \"Data\", SIZE_512KB, RAID_5, 0, RWH_OFF)"));
}

TEST_F(CreationInAnArray, GivesAMirrorADefaultStripSize) {
  create(arrayRequest(), {{"raidLevel", "RAID_1"}});
  EXPECT_THAT(m_session.actions, ElementsAre("createVolume(array 21, \"Data\", N/A, RAID_1, 0, RWH_OFF)"));
}

TEST_F(CreationInAnArray, AllowsX8DisksForRaid0) {
  m_session.disk(L"42").x8(X8Disk::X8_A);
  create(arrayRequest(), {{"raidLevel", "RAID_0"}});
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(CreationInAnArray, RefusesTheFieldsOfTheOtherSource) {
  expectInvalid(create(arrayRequest(), {{"disks", list({"51"})}}), "Argument: disks not allowed");
  expectInvalid(create(arrayRequest(), {{"diskId", "51"}}), "Argument: diskId not allowed");
}

TEST_F(CreationInAnArray, NeedsTheArray) {
  expectInvalid(
      post("", body({{"source", "ARRAY"}, {"size", "0"}, {"raidLevel", "RAID_5"}, {"name", "Data"}})),
      "Argument: arrayId not present");
}

TEST_F(CreationInAnArray, JudgesTheJournalingDriveWhateverThePolicy) {
  expectRefused(create(arrayRequest(), {{"journalingDriveId", "999"}}), "OBJECT_NOT_FOUND",
                "Disk identifier not found");
}

TEST_F(CreationFromDisks, TellsTheWholeVolume) {
  const VolumeMaker created = aVolume(L"9").name(L"Data");
  m_session.duringAction = [this, created] { m_session.volumes.push_back(created); };
  EXPECT_EQ(create(disksRequest()), describe(created.make().toServiceObject()));
  EXPECT_THAT(m_session.actions,
              ElementsAre("createVolumeFromDisks(disks 51 52 53, \"Data\", SIZE_64KB, RAID_5, "
                          "1024, \"\", RWH_OFF)"));
}

TEST_F(CreationFromDisks, AnswersNullWhenNothingCanBeReadAfterwards) {
  m_session.duringAction = [this] { m_session.loseEverything(); };
  EXPECT_EQ(create(disksRequest()), "null");
}

TEST_F(CreationFromDisks, PassesAFailureOfTheActionUnchanged) {
  m_session.duringAction = [] { throw MirnException("NOT_SUPPORTED", "Refused"); };
  EXPECT_EQ(create(disksRequest()), failed("NOT_SUPPORTED", "Refused"));
}

TEST_F(CreationFromDisks, KeepsTheOrderOfTheDisksAndTakesTheSourceDisk) {
  create(disksRequest(), {{"disks", list({"53", "51"})},
                          {"diskId", "51"},
                          {"stripSize", "SIZE_8KB"},
                          {"rwhPolicy", "RWH_JOURNALING_DRIVE"},
                          {"journalingDriveId", "61"}});
  EXPECT_THAT(m_session.actions,
              ElementsAre("createVolumeFromDisks(disks 53 51, \"Data\", SIZE_8KB, RAID_5, 1024, \"51\", "
                          "RWH_JOURNALING_DRIVE on 61 handle 1061)"));
}

TEST_F(CreationFromDisks, LeavesTheStripSizeOfAMirrorUnknown) {
  create(disksRequest(), {{"raidLevel", "RAID_1"}});
  EXPECT_THAT(m_session.actions, ElementsAre("createVolumeFromDisks(disks 51 52 53, \"Data\", SIZE_UNKNOWN, "
                                             "RAID_1, 1024, \"\", RWH_OFF)"));
}

TEST_F(CreationFromDisks, OfRaid5OnLyxGoesByTheNumberOfDisks) {
  create(disksRequest(), {{"disks", list({"51", "52", "53", "61"})}});
  EXPECT_THAT(m_session.actions, ElementsAre("createVolumeFromDisks(disks 51 52 53 61, \"Data\", SIZE_32KB, "
                                             "RAID_5, 1024, \"\", RWH_OFF)"));
}

TEST_F(CreationFromDisks, OfTwentyFiveOnLyxHasNoDefaultStripSize) {
  ServiceObject disks = list({});
  for (std::size_t i = 0; i < 25; ++i) disks.at(i) = std::wstring(L"51");
  expectRefused(create(disksRequest(), {{"disks", disks}}), "INTERNAL_ERROR",
                "Could not determine default strip size");
}

TEST_F(CreationFromDisks, RefusesTheFieldOfTheOtherSource) {
  expectInvalid(create(disksRequest(), {{"arrayId", "21"}}), "Argument: arrayId not allowed");
}

TEST_F(CreationFromDisks, NeedsDisks) {
  expectRefused(create(disksRequest(), {{"disks", list({})}}), "INVALID_PARAMETER",
                "Disks array cannot be empty");
}

TEST_F(CreationFromDisks, TakesElementsByTheirTextForm) {
  ServiceObject disks = list({"51"});
  disks.at(1) = std::uint64_t{52};
  create(disksRequest(), {{"disks", disks}, {"raidLevel", "RAID_0"}});
  EXPECT_EQ(m_session.actions.size(), 1u);
  disks.at(1) = ServiceObject::null();
  m_session.actions.clear();
  expectRefused(create(disksRequest(), {{"disks", disks}}), "INVALID_PARAMETER", "Invalid disk identifier");
}

TEST_F(CreationFromDisks, AllowsX8DisksForRaid0) {
  m_session.disk(L"52").x8(X8Disk::X8_B);
  create(disksRequest(), {{"raidLevel", "RAID_0"}});
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(CreationFromDisks, TakesANameOfSixteenCharacters) {
  create(disksRequest(), {{"name", "0123456789abcdef"}});
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_F(VolumeCreation, RefusesATextThatIsNoLevel) {
  for (const char* level : {"RAID_UNKNOWN", "RAID_7", "raid_5"}) {
    expectRefused(create(disksRequest(), {{"raidLevel", level}}), "INVALID_PARAMETER", "Invalid RAID level");
  }
}

TEST_F(VolumeCreation, LetsAKnownLevelThatIsUnusablePassTheFirstCheck) {
  for (const char* level : {"RAID_INVALID", "RAID_6"}) {
    expectRefused(create(disksRequest(), {{"raidLevel", level}}), "INTERNAL_ERROR",
                  "Could not determine default strip size");
  }
  create(disksRequest(), {{"raidLevel", "RAID_INVALID"}, {"stripSize", "SIZE_8KB"}});
  EXPECT_THAT(m_session.actions, ElementsAre("createVolumeFromDisks(disks 51 52 53, \"Data\", SIZE_8KB, "
                                             "RAID_INVALID, 1024, \"\", RWH_OFF)"));
}

TEST_F(VolumeCreation, RefusesAStripSizeOfAMirrorAsARequestError) {
  const std::string words = "Parameter stripSize is not supported for RAID 1";
  expectInvalid(create(disksRequest(), {{"raidLevel", "RAID_1"}, {"stripSize", "SIZE_64KB"}}), words);
  expectInvalid(create(arrayRequest(), {{"raidLevel", "RAID_1"}, {"stripSize", "SIZE_64KB"}}), words);
}

TEST_F(VolumeCreation, RefusesEvenNoWriteHolePolicyOnAnotherLevel) {
  expectRefused(create(disksRequest(), {{"raidLevel", "RAID_0"}, {"rwhPolicy", "RWH_OFF"}}), "NOT_SUPPORTED",
                "RAID Write Hole policy is supported for RAID 5 only");
}

TEST_F(VolumeCreation, ComparesTheSourceExactly) {
  expectRefused(create(disksRequest(), {{"source", "disk"}}), "INVALID_PARAMETER",
                "Invalid source parameter");
}

TEST_F(VolumeCreation, NamesAllMissingFieldsAtOnce) {
  expectInvalid(post("", body({})), "Arguments: raidLevel, source, name, size not present");
}

}  // namespace
