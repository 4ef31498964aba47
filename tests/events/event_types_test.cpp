#include "event_types.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Texts {
  std::int32_t value;
  std::wstring name;
  std::wstring description;
};

std::string byValue(const testing::TestParamInfo<Texts>& row) {
  return row.param.value < 0 ? "Negative" : "Value" + std::to_string(row.param.value);
}

class DiskEventTexts : public testing::TestWithParam<Texts> {};

TEST_P(DiskEventTexts, AreThoseOfTheTable) {
  const auto type = static_cast<DiskEventType>(GetParam().value);
  EXPECT_EQ(typeName(type), GetParam().name);
  EXPECT_EQ(descriptionText(type), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Events, DiskEventTexts,
    testing::Values(Texts{0, L"DISK_UNKNOWN", L"has unknown state"},
                    Texts{1, L"DISK_SMART", L"reported SMART event"}, Texts{2, L"DISK_FAILED", L"failed"},
                    Texts{3, L"DISK_UNLOCKED", L"was unlocked"}, Texts{4, L"DISK_ADDED", L"was added"},
                    Texts{5, L"DISK_REMOVED", L"was removed"}, Texts{6, L"DISK_MISSING", L"is missing"},
                    Texts{7, L"DISK_UNKNOWN", L"has unknown state"},
                    Texts{-1, L"DISK_UNKNOWN", L"has unknown state"}),
    byValue);

class VolumeEventTexts : public testing::TestWithParam<Texts> {};

TEST_P(VolumeEventTexts, AreThoseOfTheTable) {
  const auto type = static_cast<VolumeEventType>(GetParam().value);
  EXPECT_EQ(typeName(type), GetParam().name);
  EXPECT_EQ(descriptionText(type), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Events, VolumeEventTexts,
    testing::Values(Texts{0, L"VOLUME_UNKNOWN", L"has unknown state"},
                    Texts{1, L"VOLUME_ADDED", L"was added"},
                    Texts{2, L"VOLUME_REBUILD_STARTED", L"rebuild was started"},
                    Texts{3, L"VOLUME_REBUILD_COMPLETE", L"rebuild was completed"},
                    Texts{4, L"VOLUME_VERIFY_STARTED", L"verify was started"},
                    Texts{5, L"VOLUME_VERIFY_STOP", L"verify was stopped"},
                    Texts{6, L"VOLUME_VERIFY_AND_FIX_STARTED", L"verify and fix was started"},
                    Texts{7, L"VOLUME_VERIFY_AND_FIX_STOP", L"verify and fix was stopped"},
                    Texts{8, L"VOLUME_MIGRATION_STARTED", L"migration was started"},
                    Texts{9, L"VOLUME_MIGRATION_COMPLETE", L"migration was completed"},
                    Texts{10, L"VOLUME_INITIALIZE_STARTED", L"initialization was started"},
                    Texts{11, L"VOLUME_INITIALIZE_COMPLETE", L"initialization was completed"},
                    Texts{12, L"VOLUME_DEGRADED", L"was degraded"}, Texts{13, L"VOLUME_FAILED", L"failed"},
                    Texts{14, L"VOLUME_UNLOCKED", L"was unlocked"},
                    Texts{15, L"VOLUME_DELETED", L"was deleted"},
                    Texts{16, L"VOLUME_SYNCING_STARTED", L"syncing was started"},
                    Texts{17, L"VOLUME_SYNCING_COMPLETED", L"syncing was completed"},
                    Texts{18, L"VOLUME_RECOVERY_DISK_DATA_INVALID", L"- data invalid on the recovery disk"},
                    Texts{19, L"VOLUME_MASTER_DISK_DATA_INVALID", L"- data invalid on the master disk"},
                    Texts{20, L"VOLUME_MASTER_DISK_FAILED", L"- master disk failed"},
                    Texts{21, L"VOLUME_RECOVERY_DISK_FAILED", L"- recovery disk failed"},
                    Texts{22, L"VOLUME_REVERSE_SYNC_STARTED", L"reverse sync was started"},
                    Texts{23, L"VOLUME_REVERSE_SYNC_COMPLETE", L"reverse sync was completed"},
                    Texts{24, L"VOLUME_LOCKED", L"was locked"},
                    Texts{25, L"VOLUME_NORMAL", L"was changed to normal state"},
                    Texts{26, L"VOLUME_UNKNOWN", L"has unknown state"},
                    Texts{-1, L"VOLUME_UNKNOWN", L"has unknown state"}),
    byValue);

TEST(EventSeverityText, IsThatOfTheTable) {
  EXPECT_EQ(toText(static_cast<EventSeverity>(0)), L"NONE");
  EXPECT_EQ(toText(static_cast<EventSeverity>(1)), L"INFO");
  EXPECT_EQ(toText(static_cast<EventSeverity>(2)), L"WARNING");
  EXPECT_EQ(toText(static_cast<EventSeverity>(3)), L"ERROR");
  EXPECT_EQ(toText(static_cast<EventSeverity>(4)), L"UNDEFINED");
  EXPECT_EQ(toText(static_cast<EventSeverity>(-1)), L"UNDEFINED");
}

TEST(VolumeEventType, OfALockStandsOutOfLine) {
  EXPECT_EQ(static_cast<std::int32_t>(VolumeEventType::VOLUME_LOCKED), 24);
  EXPECT_EQ(static_cast<std::int32_t>(VolumeEventType::VOLUME_DELETED), 15);
}

}  // namespace
