#include "event_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "events/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Compares pictures and tells the events in the order of their recording, each as "severity type id".
class Comparison : public testing::Test {
 protected:
  using Volumes = std::vector<Volume>;
  using Devices = std::vector<EndDevice>;

  std::vector<std::wstring> events(const Volumes& before, const Volumes& after) {
    EventJournal journal;
    compareVolumes(before, after, journal);
    return told(journal);
  }

  std::vector<std::wstring> events(const Devices& before, const Devices& after) {
    EventJournal journal;
    compareEndDevices(before, after, journal);
    return told(journal);
  }

 private:
  static std::vector<std::wstring> told(const EventJournal& journal) {
    std::vector<std::wstring> texts;
    for (const auto& event : journal.getRecent(3600)) {
      texts.push_back(toText(event->severity()) + L" " + event->getTypeName() + L" " + subject(*event));
    }
    std::reverse(texts.begin(), texts.end());
    return texts;
  }

  static std::wstring subject(const mirn_events::base_event& event) {
    if (const auto* disk = dynamic_cast<const mirn_events::disk_event*>(&event)) return disk->device().id();
    const auto& volume = dynamic_cast<const mirn_events::volume_event&>(event).volume();
    return volume.id() + L" " + volume.name() + L" " + toText(volume.state());
  }
};

class VolumeComparison : public Comparison {};

TEST_F(VolumeComparison, OfEqualPicturesRecordsNothing) {
  const Volumes volumes{sampleVolume(L"1"), sampleVolume(L"2", VolumeState::UNKNOWN)};
  EXPECT_THAT(events(volumes, volumes), IsEmpty());
  EXPECT_THAT(events(Volumes{}, Volumes{}), IsEmpty());
}

TEST_F(VolumeComparison, LooksAtTheStateAlone) {
  EXPECT_THAT(events(Volumes{sampleVolume(L"1", VolumeState::NORMAL, L"Old")},
                     Volumes{sampleVolume(L"1", VolumeState::NORMAL, L"New")}),
              IsEmpty());
}

TEST_F(VolumeComparison, RecordsAllAsAddedAfterAnEmptyPicture) {
  EXPECT_THAT(events(Volumes{}, Volumes{sampleVolume(L"2"), sampleVolume(L"1", VolumeState::FAILED)}),
              ElementsAre(L"INFO VOLUME_ADDED 2 Data NORMAL", L"INFO VOLUME_ADDED 1 Data FAILED"));
}

TEST_F(VolumeComparison, RecordsDeletionsFirstAndThenTheRestInTheOrderOfTheNewPicture) {
  const Volumes before{sampleVolume(L"1"), sampleVolume(L"2"), sampleVolume(L"3"), sampleVolume(L"4")};
  const Volumes after{sampleVolume(L"5"), sampleVolume(L"4", VolumeState::FAILED), sampleVolume(L"6"),
                      sampleVolume(L"2", VolumeState::DEGRADED)};
  EXPECT_THAT(events(before, after),
              ElementsAre(L"INFO VOLUME_DELETED 1 Data NORMAL", L"INFO VOLUME_DELETED 3 Data NORMAL",
                          L"INFO VOLUME_ADDED 5 Data NORMAL", L"ERROR VOLUME_FAILED 4 Data FAILED",
                          L"INFO VOLUME_ADDED 6 Data NORMAL", L"WARNING VOLUME_DEGRADED 2 Data DEGRADED"));
}

TEST_F(VolumeComparison, KeepsTheOldVolumeForADeletionAndTheNewOneForAChange) {
  EXPECT_THAT(events(Volumes{sampleVolume(L"1", VolumeState::DEGRADED, L"Gone")}, Volumes{}),
              ElementsAre(L"INFO VOLUME_DELETED 1 Gone DEGRADED"));
  EXPECT_THAT(events(Volumes{sampleVolume(L"1", VolumeState::NORMAL, L"Old")},
                     Volumes{sampleVolume(L"1", VolumeState::LOCKED, L"New")}),
              ElementsAre(L"INFO VOLUME_LOCKED 1 New LOCKED"));
}

TEST_F(VolumeComparison, MatchesIdsExactly) {
  EXPECT_THAT(events(Volumes{sampleVolume(L"a")}, Volumes{sampleVolume(L"A")}),
              ElementsAre(L"INFO VOLUME_DELETED a Data NORMAL", L"INFO VOLUME_ADDED A Data NORMAL"));
}

TEST_F(VolumeComparison, TakesTheFirstOldVolumeOfAnId) {
  const Volumes before{sampleVolume(L"1", VolumeState::LOCKED), sampleVolume(L"1", VolumeState::DEGRADED)};
  EXPECT_THAT(events(before, Volumes{sampleVolume(L"1")}),
              ElementsAre(L"INFO VOLUME_UNLOCKED 1 Data NORMAL"));
}

TEST_F(VolumeComparison, JudgesEveryNewVolumeOfAnId) {
  const Volumes after{sampleVolume(L"1"), sampleVolume(L"1", VolumeState::FAILED)};
  EXPECT_THAT(events(Volumes{sampleVolume(L"1")}, after), ElementsAre(L"ERROR VOLUME_FAILED 1 Data FAILED"));
}

TEST_F(VolumeComparison, RecordsNoDeletionOfTheSecondVolumeOfAnIdThatIsStillThere) {
  const Volumes before{sampleVolume(L"1"), sampleVolume(L"2"), sampleVolume(L"1", VolumeState::FAILED)};
  EXPECT_THAT(events(before, Volumes{sampleVolume(L"1")}), ElementsAre(L"INFO VOLUME_DELETED 2 Data NORMAL"));
  EXPECT_THAT(events(before, Volumes{sampleVolume(L"2")}),
              ElementsAre(L"INFO VOLUME_DELETED 1 Data NORMAL", L"INFO VOLUME_DELETED 1 Data FAILED"));
}

TEST_F(VolumeComparison, OfTwoVolumesOfAnIdJudgesBothByTheFirstOldOne) {
  const Volumes volumes{sampleVolume(L"1", VolumeState::LOCKED), sampleVolume(L"1", VolumeState::DEGRADED)};
  EXPECT_THAT(events(volumes, volumes), ElementsAre(L"WARNING VOLUME_DEGRADED 1 Data DEGRADED"));
}

TEST_F(VolumeComparison, OfALockedVolumeThatIsDegradedRecordsNoUnlocking) {
  EXPECT_THAT(events(Volumes{sampleVolume(L"1", VolumeState::LOCKED)},
                     Volumes{sampleVolume(L"1", VolumeState::DEGRADED)}),
              ElementsAre(L"WARNING VOLUME_DEGRADED 1 Data DEGRADED"));
}

/// What every pair of states records: a row for the new state, a column for the old one, a letter of
/// `kEvents` or a dot for nothing. State 12 is one that nobody knows.
const char* const kChanges[13] = {
    // old: 0123456789ABC, with A, B and C for 10, 11 and 12
    ".............",  // 0
    "N.NNirvfmurNN",  // 1: what ends tells its end
    "DD.DDDDDDDDDD",  // 2
    "FFF.FFFFFFFFF",  // 3
    "IIII.IIIIIIII",  // 4
    "RRRRR.RRRRRRR",  // 5: also from 10, which reads the same
    "VVVVVV.VVVVVV",  // 6
    "XXXXXXX.XXXXX",  // 7
    "GGGGGGGG.GGGG",  // 8
    "LLLLLLLLL.LLL",  // 9
    "RRRRRRRRRR.RR",  // 10
    "MMMMMMMMMMM.M",  // 11
    ".............",  // 12
};

const std::map<char, std::wstring> kEvents{
    {'N', L"INFO VOLUME_NORMAL"},
    {'i', L"INFO VOLUME_INITIALIZE_COMPLETE"},
    {'r', L"INFO VOLUME_REBUILD_COMPLETE"},
    {'v', L"INFO VOLUME_VERIFY_STOP"},
    {'f', L"INFO VOLUME_VERIFY_AND_FIX_STOP"},
    {'m', L"INFO VOLUME_MIGRATION_COMPLETE"},
    {'u', L"INFO VOLUME_UNLOCKED"},
    {'D', L"WARNING VOLUME_DEGRADED"},
    {'F', L"ERROR VOLUME_FAILED"},
    {'I', L"INFO VOLUME_INITIALIZE_STARTED"},
    {'R', L"INFO VOLUME_REBUILD_STARTED"},
    {'V', L"INFO VOLUME_VERIFY_STARTED"},
    {'X', L"INFO VOLUME_VERIFY_AND_FIX_STARTED"},
    {'G', L"INFO VOLUME_MIGRATION_STARTED"},
    {'L', L"INFO VOLUME_LOCKED"},
    {'M', L"ERROR VOLUME_MASTER_DISK_FAILED"},
};

TEST_F(VolumeComparison, RecordsEveryChangeOfStateAsTheTableSays) {
  for (std::int32_t before = 0; before < 13; ++before) {
    for (std::int32_t after = 0; after < 13; ++after) {
      const auto state = static_cast<VolumeState>(after);
      const auto recorded = events(Volumes{sampleVolume(L"1", static_cast<VolumeState>(before))},
                                   Volumes{sampleVolume(L"1", state)});
      const char expected = kChanges[after][before];
      std::vector<std::wstring> texts;
      if (expected != '.') texts.push_back(kEvents.at(expected) + L" 1 Data " + toText(state));
      EXPECT_EQ(recorded, texts) << "from " << before << " to " << after;
    }
  }
}

class DeviceComparison : public Comparison {
 protected:
  static EndDevice device(const std::wstring& id, DiskState state = DiskState::NORMAL) {
    return sampleDevice({id, state});
  }

  std::vector<std::wstring> change(DiskState before, DiskState after) {
    return events(Devices{device(L"1", before)}, Devices{device(L"1", after)});
  }

  std::vector<std::wstring> removal(DiskType type, DiskUsage usage) {
    return events(Devices{sampleDevice({L"1", DiskState::NORMAL, type, usage})}, Devices{});
  }
};

TEST_F(DeviceComparison, OfEqualPicturesRecordsNothing) {
  const Devices devices{device(L"1"), device(L"2", DiskState::FAILED)};
  EXPECT_THAT(events(devices, devices), IsEmpty());
}

TEST_F(DeviceComparison, RecordsAllAsAddedAfterAnEmptyPicture) {
  EXPECT_THAT(events(Devices{}, Devices{device(L"2"), device(L"1", DiskState::FAILED)}),
              ElementsAre(L"INFO DISK_ADDED 2", L"INFO DISK_ADDED 1"));
}

TEST_F(DeviceComparison, RecordsRemovalsFirstAndThenTheRestInTheOrderOfTheNewPicture) {
  const Devices before{device(L"1"), device(L"2"), device(L"3"), device(L"4")};
  const Devices after{device(L"5"), device(L"4", DiskState::FAILED), device(L"6"),
                      device(L"2", DiskState::SMART_EVENT_TRIGGERED)};
  EXPECT_THAT(events(before, after),
              ElementsAre(L"INFO DISK_REMOVED 1", L"INFO DISK_REMOVED 3", L"INFO DISK_ADDED 5",
                          L"ERROR DISK_FAILED 4", L"INFO DISK_ADDED 6", L"WARNING DISK_SMART 2"));
}

TEST_F(DeviceComparison, RecordsNothingOfADeviceThatIsFirstSeenMissing) {
  EXPECT_THAT(events(Devices{}, Devices{device(L"1", DiskState::MISSING)}), IsEmpty());
}

TEST_F(DeviceComparison, RecordsADiskThatGoesMissingAndThenDisappears) {
  EXPECT_THAT(change(DiskState::NORMAL, DiskState::MISSING), ElementsAre(L"INFO DISK_MISSING 1"));
  EXPECT_THAT(events(Devices{device(L"1", DiskState::MISSING)}, Devices{}),
              ElementsAre(L"INFO DISK_REMOVED 1"));
}

TEST_F(DeviceComparison, RecordsNoRemovalOfAnArrayMemberOfUnknownType) {
  EXPECT_THAT(removal(DiskType::UNKNOWN, DiskUsage::ARRAY_MEMBER), IsEmpty());
  EXPECT_THAT(removal(DiskType::UNKNOWN, DiskUsage::SPARE), ElementsAre(L"INFO DISK_REMOVED 1"));
  EXPECT_THAT(removal(DiskType::SATA, DiskUsage::ARRAY_MEMBER), ElementsAre(L"INFO DISK_REMOVED 1"));
}

TEST_F(DeviceComparison, OfALockedDiskThatFailsRecordsTheUnlockingAlone) {
  EXPECT_THAT(change(DiskState::LOCKED, DiskState::FAILED), ElementsAre(L"INFO DISK_UNLOCKED 1"));
}

TEST_F(DeviceComparison, TakesTheFirstOldDeviceOfAnId) {
  const Devices before{device(L"1", DiskState::LOCKED), device(L"1", DiskState::FAILED)};
  EXPECT_THAT(events(before, Devices{device(L"1")}), ElementsAre(L"INFO DISK_UNLOCKED 1"));
}

TEST_F(DeviceComparison, JudgesEveryNewDeviceOfAnId) {
  const Devices after{device(L"1"), device(L"1", DiskState::FAILED)};
  EXPECT_THAT(events(Devices{device(L"1")}, after), ElementsAre(L"ERROR DISK_FAILED 1"));
}

TEST_F(DeviceComparison, OfTwoDevicesOfAnIdJudgesBothByTheFirstOldOne) {
  const Devices devices{device(L"1"), device(L"2"), device(L"1", DiskState::FAILED)};
  EXPECT_THAT(events(devices, devices), ElementsAre(L"ERROR DISK_FAILED 1"));
}

/// The same for disks.
const char* const kDiskChanges[12] = {
    // old: 0123456789AB, where 11 is a state that nobody knows
    ".......U....",  // 0
    ".......U....",  // 1
    "MM.MMMMUMMMM",  // 2 missing
    "FFF.FFFUFFFF",  // 3 failed
    "SSSS.SSUSSSS",  // 4 SMART event
    ".......U....",  // 5
    ".......U....",  // 6 normal
    "............",  // 7 locked
    ".......U....",  // 8
    ".......U....",  // 9
    ".......U....",  // 10
    ".......U....",  // 11
};

const std::map<char, std::wstring> kDiskEvents{{'U', L"INFO DISK_UNLOCKED 1"},
                                               {'M', L"INFO DISK_MISSING 1"},
                                               {'S', L"WARNING DISK_SMART 1"},
                                               {'F', L"ERROR DISK_FAILED 1"}};

TEST_F(DeviceComparison, RecordsEveryChangeOfStateAsTheTableSays) {
  for (std::int32_t before = 0; before < 12; ++before) {
    for (std::int32_t after = 0; after < 12; ++after) {
      const char expected = kDiskChanges[after][before];
      std::vector<std::wstring> texts;
      if (expected != '.') texts.push_back(kDiskEvents.at(expected));
      EXPECT_EQ(change(static_cast<DiskState>(before), static_cast<DiskState>(after)), texts)
          << "from " << before << " to " << after;
    }
  }
}

}  // namespace
