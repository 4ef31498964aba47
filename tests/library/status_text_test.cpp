#include "status_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "vex_exception.h"

namespace {

struct StatusCase {
  VEX_STATUS status;
  const char* errorId;
  const char* text;
};

class StatusTextTest : public testing::TestWithParam<StatusCase> {};

TEST_P(StatusTextTest, StatusHasItsTextAndErrorId) {
  EXPECT_STREQ(statusToText(GetParam().status), GetParam().text);
  EXPECT_EQ(statusToErrorId(GetParam().status), GetParam().errorId);
}

TEST_P(StatusTextTest, ExceptionCarriesTheStatusAndSaysItsText) {
  const VexException failure(GetParam().status);
  EXPECT_EQ(failure.status, GetParam().status);
  EXPECT_STREQ(failure.what(), GetParam().text);
}

const char kUnknown[] = "Unknown Mirn error status";

INSTANTIATE_TEST_SUITE_P(
    Statuses, StatusTextTest,
    testing::Values(
        StatusCase{0, "INTERNAL_ERROR", "Function completed successfully"},
        StatusCase{1, "INTERNAL_ERROR", "Library was unable to allocate a new session"},
        StatusCase{2, "INVALID_PARAMETER", "Invalid parameter was passed"},
        StatusCase{3, "OBJECT_NOT_FOUND", "Invalid handle was passed to a function"},
        StatusCase{4, "INVALID_PARAMETER", "Strip size not valid for provided RAID level"},
        StatusCase{5, "INVALID_PARAMETER", "Invalid volume name"},
        StatusCase{6, "INVALID_PARAMETER", "Invalid volume size parameter"},
        StatusCase{7, "INVALID_PARAMETER", "Invalid RAID level parameter for volume creation/migration"},
        StatusCase{8, "INTERNAL_ERROR", "Session handle is invalid (previously destroyed)"},
        StatusCase{9, "INTERNAL_ERROR", "Failed to complete the call within the specified timeframe"},
        StatusCase{10, "INTERNAL_ERROR", "Function is not supported on this platform"},
        StatusCase{11, "INTERNAL_ERROR", "The library has already been initialized"},
        StatusCase{12, "Mirn_NOT_INITIALIZED", "The library is not initialized yet"},
        StatusCase{13, "INVALID_PARAMETER", "Not enough items (disks, etc) have been specified"},
        StatusCase{14, "NOT_SUPPORTED", "Action is not supported"},
        StatusCase{15, "Mirn_OPERATION_FAILED", "Function failed to complete"},
        StatusCase{16, "INTERNAL_ERROR", "Internal error occurred"},
        StatusCase{17, "INVALID_PARAMETER",
                   "Scope passed is either invalid or not valid for current operation"},
        StatusCase{18, "INTERNAL_ERROR", "Item not in appropriate state for action to complete successfully"},
        StatusCase{19, "INTERNAL_ERROR", "The limit of unlock attempts is reached"},
        StatusCase{20, "INTERNAL_ERROR", "Password is incorrect for locked item"},
        StatusCase{21, "INTERNAL_ERROR", "Invalid metadata size"},
        StatusCase{22, "INTERNAL_ERROR", "User is not permitted to execute the function"},
        StatusCase{23, "Mirn_OPERATION_FAILED", "Driver has returned a busy notification"},
        StatusCase{24, "INVALID_PARAMETER", "Too many items (disks, etc) have been specified"},
        StatusCase{25, "Mirn_OPERATION_FAILED", "Disable on-device cache failed"},
        StatusCase{26, "INTERNAL_ERROR", kUnknown},
        StatusCase{27, "NOT_SUPPORTED", "Raid level not supported"},
        StatusCase{28, "INVALID_PARAMETER", "Invalid RWH mode"},
        StatusCase{29, "NOT_SUPPORTED", "Unsupported disk"},
        StatusCase{30, "Mirn_OPERATION_FAILED", "Mark as normal failed"},
        StatusCase{31, "INVALID_PARAMETER", "Invalid number of disks"},
        StatusCase{32, "INTERNAL_ERROR", kUnknown}, StatusCase{33, "INTERNAL_ERROR", kUnknown},
        StatusCase{34, "INVALID_PARAMETER", "Invalid logical sector size"},
        StatusCase{35, "NOT_SUPPORTED", "Non-Ordan drive not supported"},
        StatusCase{36, "Mirn_OPERATION_FAILED", "Uncheck journaling drive failed"},
        StatusCase{37, "INVALID_PARAMETER", "Disk too small"},
        StatusCase{38, "INVALID_PARAMETER", "Disk on wrong controller"},
        StatusCase{39, "INVALID_PARAMETER", "Volume over 2 Tb not allowed"},
        StatusCase{40, "INVALID_PARAMETER", "Duplicated volume name"},
        StatusCase{41, "INVALID_PARAMETER", "Invalid Cache Mode"},
        StatusCase{42, "INVALID_PARAMETER", "Invalid Controller Mode"},
        StatusCase{43, "INVALID_PARAMETER", "Invalid Disk"},
        StatusCase{44, "INVALID_PARAMETER", "Invalid Cache Policy"},
        StatusCase{45, "INVALID_PARAMETER", "Invalid Volume"},
        StatusCase{46, "INVALID_PARAMETER", "Invalid handle for cache actions"},
        StatusCase{47, "INTERNAL_ERROR", kUnknown}, StatusCase{0xFFFFFFFF, "INTERNAL_ERROR", kUnknown}),
    [](const testing::TestParamInfo<StatusCase>& row) {
      return "Status" + std::to_string(row.param.status);
    });

TEST(StatusTextLifetimeTest, TextOutlivesTheCallsForOthers) {
  const char* const failed = statusToText(15);
  const char* const unknown = statusToText(4711);
  for (VEX_STATUS status = 0; status < 60; ++status) statusToText(status);
  EXPECT_STREQ(failed, "Function failed to complete");
  EXPECT_STREQ(unknown, kUnknown);
}

TEST(StatusTextLifetimeTest, TextsOfDifferentStatusesDiffer) {
  std::map<std::string, VEX_STATUS> statuses;
  for (VEX_STATUS status = 0; status < 60; ++status) {
    const std::string text = statusToText(status);
    if (text == kUnknown) continue;
    const auto [first, isNew] = statuses.emplace(text, status);
    EXPECT_TRUE(isNew) << status << " says what " << first->second << " says";
  }
  EXPECT_EQ(statuses.size(), 44U);
}

TEST(StatusTexts, OfAWrongStateAreTheArraysOwnAndTheSharedOneOfDisksAndVolumes) {
  EXPECT_EQ(statusOfInvalidState("Mirn_ARRAY_INVALID_STATE"), 16U);
  EXPECT_EQ(statusOfInvalidState("Mirn_DISK_INVALID_STATE"), 18U);
  EXPECT_EQ(statusOfInvalidState("Mirn_VOLUME_INVALID_STATE"), 18U);
}

TEST(VexExceptionTest, IsACopyableRuntimeError) {
  const VexException original(3);
  const VexException copy = original;
  const std::runtime_error& base = copy;
  EXPECT_STREQ(base.what(), "Invalid handle was passed to a function");
  EXPECT_EQ(copy.status, original.status);
}

TEST(VexExceptionTest, SuccessIsNotRaised) { EXPECT_NO_THROW(raiseUnlessSuccess(0)); }

TEST(VexExceptionTest, EveryOtherStatusIsRaisedAsItIs) {
  for (const VEX_STATUS status : {9U, 13U, 18U, 0xFFFFFFFFU}) {
    try {
      raiseUnlessSuccess(status);
      ADD_FAILURE() << status << " passed";
    } catch (const VexException& failure) {
      EXPECT_EQ(failure.status, status);
    }
  }
}

const std::map<RefusalKind, std::set<VEX_STATUS>>& statusesByKind() {
  static const std::map<RefusalKind, std::set<VEX_STATUS>> statuses = {
      {RefusalKind::kRequest, {2, 4, 5, 6, 7, 13, 24, 28, 31, 34, 37, 38, 39, 41, 42, 43, 44, 45, 46}},
      {RefusalKind::kState, {18, 40}},
      {RefusalKind::kAbsent, {3}},
      {RefusalKind::kUnsupported, {14, 27, 29, 35}},
      {RefusalKind::kOffline, {12, 23}},
  };
  return statuses;
}

TEST(StatusKinds, AreFailuresUnlessTheStatusTellsMore) {
  for (VEX_STATUS status = 0; status < 60; ++status) {
    RefusalKind expected = RefusalKind::kFailure;
    for (const auto& [kind, statuses] : statusesByKind()) {
      if (statuses.count(status) > 0) expected = kind;
    }
    EXPECT_EQ(statusToKind(status), expected) << status;
  }
}

TEST(StatusKinds, KnownStatusesAreThoseWithATextOfTheirOwn) {
  const std::vector<VEX_STATUS> known = knownStatuses();
  for (VEX_STATUS status = 0; status < 60; ++status) {
    const bool isKnown = std::find(known.begin(), known.end(), status) != known.end();
    EXPECT_EQ(isKnown, std::string(statusToText(status)) != kUnknown) << status;
  }
  EXPECT_TRUE(std::is_sorted(known.begin(), known.end()));
}

}  // namespace
