#include "health/tolerance.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace insight {
namespace {

/// A volume of `level` on `disks` disks, with nothing wrong.
struct Sound {
  explicit Sound(const std::wstring& level = L"RAID_5", std::uint64_t disks = 4) {
    VolumeView volume;
    volume.id = L"V";
    volume.arrayId = L"A";
    volume.state = L"NORMAL";
    volume.level = level;
    volume.diskCount = disks;
    volume.isInitialized = true;
    machine.volumes.push_back(volume);
    for (std::uint64_t i = 0; i < disks; ++i) {
      DiskView disk;
      disk.id = L"D" + std::to_wstring(i);
      disk.arrayId = L"A";
      disk.state = L"NORMAL";
      machine.disks.push_back(disk);
    }
  }

  Tolerance tolerance() {
    machine.index();
    return toleranceOf(machine, machine.volumes.front());
  }

  MachineView machine;
};

struct LevelCase {
  const char* name;
  const wchar_t* level;
  std::uint64_t disks;
  std::uint64_t mayFail;
};

class SoundVolume : public testing::TestWithParam<LevelCase> {};

TEST_P(SoundVolume, MayLoseWhatItsLevelDoesWithout) {
  for (const wchar_t* const state : {L"NORMAL", L"VERIFYING", L"VERIFYING_AND_FIXING"}) {
    Sound sound(GetParam().level, GetParam().disks);
    sound.machine.volumes.front().state = state;
    const Tolerance tolerance = sound.tolerance();
    EXPECT_EQ(tolerance.mayFail, GetParam().mayFail);
    EXPECT_TRUE(tolerance.isExact);
    EXPECT_EQ(tolerance.reason, "");
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, SoundVolume,
                         testing::Values(LevelCase{"Raid0", L"RAID_0", 2, 0},
                                         LevelCase{"Raid1", L"RAID_1", 2, 1},
                                         LevelCase{"Raid1OfThree", L"RAID_1", 3, 2},
                                         LevelCase{"Raid5", L"RAID_5", 3, 1},
                                         LevelCase{"Raid10", L"RAID_10", 4, 1}),
                         ByName());

struct DoubtCase {
  const char* name;
  void (*spoil)(MachineView& machine);
  const char* reason;
};

class DoubtfulVolume : public testing::TestWithParam<DoubtCase> {};

TEST_P(DoubtfulVolume, ClaimsNothingAndSaysWhy) {
  Sound sound;
  GetParam().spoil(sound.machine);
  const Tolerance tolerance = sound.tolerance();
  EXPECT_EQ(tolerance.mayFail, 0U);
  EXPECT_FALSE(tolerance.isExact);
  EXPECT_EQ(tolerance.reason, GetParam().reason);
}

VolumeView& volumeOf(MachineView& machine) { return machine.volumes.front(); }

INSTANTIATE_TEST_SUITE_P(
    Doubts, DoubtfulVolume,
    testing::Values(
        DoubtCase{"Degraded", [](MachineView& m) { volumeOf(m).state = L"DEGRADED"; },
                  "a disk is lost already"},
        DoubtCase{"Rebuilding", [](MachineView& m) { volumeOf(m).state = L"REBUILDING"; },
                  "the redundancy is being written again"},
        DoubtCase{"Initializing", [](MachineView& m) { volumeOf(m).state = L"INITIALIZING"; },
                  "the redundancy is being written for the first time"},
        DoubtCase{"Migrating", [](MachineView& m) { volumeOf(m).state = L"GENERAL_MIGRATION"; },
                  "the data are being laid out anew"},
        DoubtCase{"Locked", [](MachineView& m) { volumeOf(m).state = L"LOCKED"; }, "the volume is locked"},
        DoubtCase{"Failed", [](MachineView& m) { volumeOf(m).state = L"FAILED"; }, "the volume has failed"},
        DoubtCase{"FailedForADisk",
                  [](MachineView& m) { volumeOf(m).state = L"NON_REDUNDANT_VOLUME_FAILED_DISK"; },
                  "the volume has failed"},
        DoubtCase{"UnknownState", [](MachineView& m) { volumeOf(m).state = L"UNKNOWN"; },
                  "the state of the volume is unknown"},
        DoubtCase{"WordOfALaterVersion", [](MachineView& m) { volumeOf(m).state = L"RESTING"; },
                  "the state of the volume is unknown"},
        DoubtCase{"WorkBehindANormalState",
                  [](MachineView& m) {
                    m.work.push_back({L"V", L"REBUILDING"});
                  },
                  "the redundancy is being written again"},
        DoubtCase{"MarkOfAMigration", [](MachineView& m) { volumeOf(m).isMigrating = true; },
                  "the data are being laid out anew"},
        DoubtCase{"NeverInitialized", [](MachineView& m) { volumeOf(m).isInitialized = false; },
                  "the redundancy was never written"},
        DoubtCase{"MemberFailed", [](MachineView& m) { m.disks.back().state = L"FAILED"; },
                  "a disk of it is not as it should be"},
        DoubtCase{"MemberUnknown", [](MachineView& m) { m.disks.front().state = L"UNKNOWN"; },
                  "a disk of it is not as it should be"},
        DoubtCase{"MemberGone", [](MachineView& m) { m.disks.pop_back(); }, "not all its disks can be seen"},
        DoubtCase{"UnknownLevel", [](MachineView& m) { volumeOf(m).level = L"UNKNOWN"; },
                  "the level is unknown"}),
    ByName());

TEST(Tolerance, OfRaid0WithoutInitializationIsExact) {
  Sound sound(L"RAID_0", 2);
  sound.machine.volumes.front().isInitialized = false;
  EXPECT_TRUE(sound.tolerance().isExact);
}

TEST(Tolerance, DoesNotCountWorkOnAnotherVolume) {
  Sound sound;
  sound.machine.work.push_back({L"OTHER", L"REBUILDING"});
  EXPECT_EQ(sound.tolerance().mayFail, 1U);
}

TEST(Tolerance, OfAMirrorWithoutDisksIsNone) {
  const Tolerance tolerance = Sound(L"RAID_1", 0).tolerance();
  EXPECT_EQ(tolerance.mayFail, 0U);
  EXPECT_FALSE(tolerance.isExact);
}

}  // namespace
}  // namespace insight
