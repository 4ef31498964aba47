#include "messages.h"

#include <gtest/gtest.h>

namespace {

// The words of all others are shown where they are raised.
TEST(ListenerMessages, ThatNoPathRaisesHaveTheirWords) {
  EXPECT_STREQ(kMsgDeleteFirstVolume, L"Deleting the first volume in a two-volume array is not allowed");
  EXPECT_STREQ(kMsgJournalingDriveOnLinux, L"Journaling drive is not supported for RAID Write Hole on Linux");
  EXPECT_STREQ(kMsgReadPatrolOnLinux, L"Read patrol is not supported on Linux");
  EXPECT_STREQ(kMsgRohiOnLinux, L"Rebuild on hot insert is not supported on Linux");
}

TEST(ListenerMessages, ThatStandBehindAnotherCheckHaveTheirWords) {
  EXPECT_STREQ(kMsgTimeMissing, L"Time parameter missing");
  EXPECT_STREQ(kMsgInvalidVolumeId, L"Invalid volume identifier");
  EXPECT_STREQ(kMsgInvalidControllerId, L"Invalid controller identifier");
  EXPECT_STREQ(kMsgVolumeNameNotFound, L"Volume with provided name not found");
}

}  // namespace
