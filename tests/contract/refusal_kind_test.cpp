#include "refusal_kind.h"

#include <gtest/gtest.h>

#include <string>

#include "support/by_name.h"

namespace {

struct Word {
  const char* name;
  RefusalKind kind;
  std::wstring word;
};

class RefusalWord : public testing::TestWithParam<Word> {};

TEST_P(RefusalWord, IsThatOfTheKind) { EXPECT_EQ(toText(GetParam().kind), GetParam().word); }

INSTANTIATE_TEST_SUITE_P(RefusalKinds, RefusalWord,
                         testing::Values(Word{"Request", RefusalKind::kRequest, L"request"},
                                         Word{"Absent", RefusalKind::kAbsent, L"absent"},
                                         Word{"State", RefusalKind::kState, L"state"},
                                         Word{"Unsupported", RefusalKind::kUnsupported, L"unsupported"},
                                         Word{"Offline", RefusalKind::kOffline, L"offline"},
                                         Word{"Failure", RefusalKind::kFailure, L"failure"}),
                         ByName());

struct Id {
  const char* name;
  const char* errorId;
  RefusalKind kind;
};

class RefusalId : public testing::TestWithParam<Id> {};

TEST_P(RefusalId, StandsForItsKind) { EXPECT_EQ(kindOfErrorId(GetParam().errorId), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(RefusalKinds, RefusalId,
                         testing::Values(Id{"NoObject", "OBJECT_NOT_FOUND", RefusalKind::kAbsent},
                                         Id{"Parameter", "INVALID_PARAMETER", RefusalKind::kRequest},
                                         Id{"InvalidLevel", "Mirn_INVALID_RAID_LEVEL", RefusalKind::kRequest},
                                         Id{"UnsupportedLevel", "Mirn_UNSUPPORTED_RAID_LEVEL",
                                            RefusalKind::kRequest},
                                         Id{"Unsupported", "NOT_SUPPORTED", RefusalKind::kUnsupported},
                                         Id{"Disk", "Mirn_DISK_INVALID_STATE", RefusalKind::kState},
                                         Id{"Array", "Mirn_ARRAY_INVALID_STATE", RefusalKind::kState},
                                         Id{"Volume", "Mirn_VOLUME_INVALID_STATE", RefusalKind::kState},
                                         Id{"Offline", "Mirn_OFFLINE", RefusalKind::kOffline},
                                         Id{"NotInitialized", "Mirn_NOT_INITIALIZED", RefusalKind::kOffline},
                                         Id{"Internal", "INTERNAL_ERROR", RefusalKind::kFailure},
                                         Id{"Operation", "Mirn_OPERATION_FAILED", RefusalKind::kFailure},
                                         Id{"None", "", RefusalKind::kFailure}),
                         ByName());

}  // namespace
