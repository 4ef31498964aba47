#include <gmock/gmock.h>

#include "listeners/volumes_listener_fixture.h"
#include "mirn_exception.h"
#include "support/by_name.h"

namespace {

using testing::IsEmpty;

struct ChangedField {
  std::string name;
  std::function<void(VolumeMaker&)> change;
  std::string told;
};

/// All fields that a change of a volume may tell, each alone.
class ToldChanges : public VolumesListenerTest, public testing::WithParamInterface<ChangedField> {};

TEST_P(ToldChanges, AreThoseThatDiffer) {
  m_session.volume(L"7").journalingDrive(L"41");
  whenActing(GetParam().change);
  EXPECT_EQ(put("7/size", body({{"size", "1"}})), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Volume, ToldChanges,
    testing::Values(
        ChangedField{"None", [](VolumeMaker&) {}, "volumeId = \"7\""},
        ChangedField{"Size", [](VolumeMaker& v) { v.totalSize((3ULL << 20) - 1); },
                     "size = \"2\", volumeId = \"7\""},
        ChangedField{"CachePolicy", [](VolumeMaker& v) { v.cachePolicy(CachePolicy::OFF); },
                     "cachePolicy = \"OFF\", volumeId = \"7\""},
        ChangedField{"RaidLevel", [](VolumeMaker& v) { v.raidLevel(RaidLevel::RAID_10); },
                     "raidLevel = \"RAID_10\", volumeId = \"7\""},
        ChangedField{"StripSize", [](VolumeMaker& v) { v.stripSize(StripSize::SIZE_8KB); },
                     "stripSize = \"SIZE_8KB\", volumeId = \"7\""},
        ChangedField{"RwhPolicy", [](VolumeMaker& v) { v.rwhPolicy(RwhPolicy::RWH_JOURNALING_DRIVE); },
                     "rwhPolicy = \"RWH_JOURNALING_DRIVE\", volumeId = \"7\""},
        ChangedField{"JournalingDrive", [](VolumeMaker& v) { v.journalingDrive(L"42"); },
                     "journalingDriveId = \"42\", volumeId = \"7\""},
        ChangedField{"NoJournalingDrive", [](VolumeMaker& v) { v.journalingDrive(L""); },
                     "journalingDriveId = null, volumeId = \"7\""},
        ChangedField{"NotState", [](VolumeMaker& v) { v.state(VolumeState::FAILED); }, "volumeId = \"7\""},
        ChangedField{"NotName", [](VolumeMaker& v) { v.name(L"Other"); }, "volumeId = \"7\""}),
    ByName());

struct VolumeChange {
  std::string name;
  std::string path;
  ServiceObject body;
};

/// All changes of a volume but its deletion and creation.
class VolumeChanges : public VolumesListenerTest, public testing::WithParamInterface<VolumeChange> {};

TEST_P(VolumeChanges, AnswerNullWhenTheVolumeIsGoneAfterwards) {
  m_session.duringAction = [this] { m_session.volumes.clear(); };
  EXPECT_EQ(put(GetParam().path, GetParam().body), "null");
  EXPECT_EQ(m_session.actions.size(), 1u);
}

TEST_P(VolumeChanges, AnswerNullWhenNothingCanBeReadAfterwards) {
  m_session.duringAction = [this] { m_session.loseEverything(); };
  EXPECT_EQ(put(GetParam().path, GetParam().body), "null");
}

TEST_P(VolumeChanges, PassAFailureOfTheActionUnchanged) {
  m_session.duringAction = [] { throw MirnException("Mirn_VOLUME_INVALID_STATE", "Refused"); };
  EXPECT_EQ(put(GetParam().path, GetParam().body), failed("Mirn_VOLUME_INVALID_STATE", "Refused"));
}

TEST_P(VolumeChanges, PassAFailureOfTheReadUnchanged) {
  m_session.failingRead = "getVolumes";
  EXPECT_EQ(put(GetParam().path, GetParam().body), failed("Mirn_OPERATION_FAILED", kReadFailure));
  EXPECT_THAT(m_session.actions, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Volume, VolumeChanges,
                         testing::Values(VolumeChange{"MarkNormal", "7/marknormal", {}},
                                         VolumeChange{"Rebuild", "7/rebuild", body({{"diskId", "43"}})},
                                         VolumeChange{"Level", "7/level", body({{"raidLevel", "RAID_0"}})},
                                         VolumeChange{"Init", "7/init", {}},
                                         VolumeChange{"Verify", "7/verify", body({{"action", "CANCEL"}})},
                                         VolumeChange{"Size", "7/size", body({{"size", "1"}})},
                                         VolumeChange{"CachePolicy", "7/cachepolicy",
                                                      body({{"cachePolicy", "OFF"}})},
                                         VolumeChange{"Name", "7/name", body({{"name", "Archive"}})},
                                         VolumeChange{"Rwh", "7/rwh", body({{"rwhPolicy", "RWH_OFF"}})}),
                         ByName());

}  // namespace
