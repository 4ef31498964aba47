#include "write_hole.h"

#include <gtest/gtest.h>

#include "service_exceptions.h"
#include "support/body.h"
#include "support/by_name.h"
#include "support/fake_session.h"
#include "text.h"

namespace {

/// What the request becomes: policy, and the drive with its handle, or the error id and words.
std::string parsed(const ServiceObject& request, RaidLevel level) {
  FakeSession session;
  session.endDevices = {aDisk(L"41"), aDisk(L"42").deviceType(DeviceType::NON_STORAGE),
                        aDisk(L"43").handle(0xFFFFFFFF)};
  try {
    const RwhRequest rwh = parseRwhRequest(request, session, level);
    return wideToUtf8(toText(rwh.policy)) + " on '" + wideToUtf8(rwh.journalingDrive.id) + "' " +
           std::to_string(rwh.journalingDrive.handle);
  } catch (const ListenerException& error) {
    return std::string(error.getErrorId()) + ": " + error.what();
  }
}

struct RwhRow {
  std::string name;
  RaidLevel level;
  ServiceObject request;
  std::string result;
};

class RwhRequests : public testing::TestWithParam<RwhRow> {};

TEST_P(RwhRequests, AreReadFromTheBody) {
  EXPECT_EQ(parsed(GetParam().request, GetParam().level), GetParam().result);
}

constexpr char kOff[] = "RWH_OFF on '' 0";
constexpr char kNotRaid5[] = "Mirn_INVALID_RAID_LEVEL: RAID Write Hole policy is supported for RAID 5 only";

INSTANTIATE_TEST_SUITE_P(
    Table, RwhRequests,
    testing::Values(
        RwhRow{"NoPolicy", RaidLevel::RAID_0, body({}), kOff},
        RwhRow{"NoPolicyIgnoresTheDrive", RaidLevel::RAID_5, body({{"journalingDriveId", "?"}}), kOff},
        RwhRow{"OffOnAnyLevel", RaidLevel::RAID_0, body({{"rwhPolicy", "RWH_OFF"}}), kOff},
        RwhRow{"OffIgnoresTheDrive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "?"}}), kOff},
        RwhRow{"UnknownPolicy", RaidLevel::RAID_5, body({{"rwhPolicy", "RWH_ON"}}),
               "INVALID_PARAMETER: Invalid RAID Write Hole policy"},
        RwhRow{"UnknownPolicyAheadOfTheLevel", RaidLevel::RAID_0, body({{"rwhPolicy", "RWH_ON"}}),
               "INVALID_PARAMETER: Invalid RAID Write Hole policy"},
        RwhRow{"DistributedOnRaid5", RaidLevel::RAID_5, body({{"rwhPolicy", "RWH_DISTRIBUTED"}}),
               "RWH_DISTRIBUTED on '' 0"},
        RwhRow{"DistributedIgnoresTheDrive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_DISTRIBUTED"}, {"journalingDriveId", "41"}}),
               "RWH_DISTRIBUTED on '' 0"},
        RwhRow{"DistributedOnRaid1", RaidLevel::RAID_1, body({{"rwhPolicy", "RWH_DISTRIBUTED"}}), kNotRaid5},
        RwhRow{"LevelAheadOfTheMissingDrive", RaidLevel::RAID_1,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}}), kNotRaid5},
        RwhRow{"MissingDrive", RaidLevel::RAID_5, body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}}),
               "INVALID_PARAMETER: Missing journaling drive identifier"},
        RwhRow{"BadDrive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "4/1"}}),
               "INVALID_PARAMETER: Invalid journaling drive identifier"},
        RwhRow{"UnknownDrive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "999"}}),
               "OBJECT_NOT_FOUND: Journaling drive identifier not found"},
        RwhRow{"Drive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "41"}}),
               "RWH_JOURNALING_DRIVE on '41' 1041"},
        RwhRow{"AnyDeviceAsDrive", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "42"}}),
               "RWH_JOURNALING_DRIVE on '42' 1042"},
        RwhRow{"DriveOfTheLastHandle", RaidLevel::RAID_5,
               body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, {"journalingDriveId", "43"}}),
               "RWH_JOURNALING_DRIVE on '43' 4294967295"},
        RwhRow{"LevelFromTheBody", RaidLevel::RAID_INVALID,
               body({{"raidLevel", "RAID_5"}, {"rwhPolicy", "RWH_DISTRIBUTED"}}), "RWH_DISTRIBUTED on '' 0"},
        RwhRow{"OtherLevelFromTheBody", RaidLevel::RAID_INVALID,
               body({{"raidLevel", "RAID_0"}, {"rwhPolicy", "RWH_DISTRIBUTED"}}), kNotRaid5},
        RwhRow{"NoLevelAnywhere", RaidLevel::RAID_INVALID, body({{"rwhPolicy", "RWH_DISTRIBUTED"}}),
               kNotRaid5},
        RwhRow{"TheVolumesLevelAheadOfTheBodys", RaidLevel::RAID_0,
               body({{"raidLevel", "RAID_5"}, {"rwhPolicy", "RWH_DISTRIBUTED"}}), kNotRaid5}),
    ByName());

}  // namespace
