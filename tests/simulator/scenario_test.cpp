#include "scenario/scenario.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/invariants.h"
#include "model/redundancy.h"
#include "scenario/generator.h"
#include "simulator/workbench.h"
#include "support/by_name.h"

namespace simulator {
namespace {

struct BadScenario {
  std::string name;
  std::string json;
  std::string message;
};

void PrintTo(const BadScenario& row, std::ostream* stream) { *stream << row.name; }

class RefusedScenario : public testing::TestWithParam<BadScenario> {};

TEST_P(RefusedScenario, SaysWhereAndWhy) {
  try {
    readScenario(GetParam().json);
    FAIL() << "was taken";
  } catch (const ScenarioError& error) {
    EXPECT_EQ(error.what(), GetParam().message);
  }
}

/// A machine of four disks with room for a bad part; `$` in a row stands for what is always there.
std::string machineWith(const std::string& disks, const std::string& rest) {
  return R"({"engines": [{"id": "E", "levels": [
      {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
       "stripSizes": ["SIZE_64KB"]},
      {"level": "RAID_5", "minDisks": 3, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
       "stripSizes": ["SIZE_64KB"]}]},
      {"id": "F", "ordanDrivesOnly": true, "levels": [
      {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
       "stripSizes": ["SIZE_64KB"]},
      {"level": "RAID_10", "minDisks": 3, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
       "stripSizes": ["SIZE_64KB"]}]}],
    "controllers": [{"id": "C", "name": "c", "type": "SATA", "engine": "E"},
                    {"id": "D", "name": "d", "type": "SATA"},
                    {"id": "S", "name": "s", "type": "NVMe", "engine": "F", "twoTbDiskSupport": false}],
    "devices": [{"id": "d0", "controller": "C", "totalSize": 1056964608},
                {"id": "d1", "controller": "C", "totalSize": 1056964608},
                {"id": "d2", "controller": "C", "totalSize": 1056964608},
                {"id": "d3", "controller": "D", "totalSize": 1056964608})" +
         disks + "]" + rest + "}";
}

/// A further disk on a controller without support for 2 TiB, whose engine takes Ordan drives only.
std::string strictDisk(const std::string& id, const std::string& keys) {
  return R"(, {"id": ")" + id + R"(", "controller": "S", )" + keys + "}";
}

/// One array and one volume on that controller.
std::string strictMachineWith(const std::string& disks, const std::string& volume) {
  const std::string plain = R"("totalSize": 1056964608)";
  const std::string ordan = R"(, "isOrdanNVMe": true)";
  return machineWith(strictDisk("s0", plain + ordan) + strictDisk("s1", plain + ordan) +
                         strictDisk("s2", plain + ordan) + strictDisk("foreign", plain) +
                         strictDisk("x8", plain + ordan + R"(, "x8Disk": "X8_A")") +
                         strictDisk("large", R"("totalSize": 3000000000000)" + ordan),
                     R"(, "arrays": [{"id": "A", "name": "a", )" + disks + R"(}],
                         "volumes": [{"id": "V", "name": "v", "array": "A", )" +
                         volume + "}]");
}

std::string volumeWith(const std::string& keys) {
  return machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}],
                             "volumes": [{"id": "V", "name": "v", "array": "A", )" +
                             keys + "}]");
}

const BadScenario kForms[] = {
    {"NoJson", "{", "not JSON at byte 1: incomplete JSON"},
    {"TextBehind", "{} x", "not JSON at byte 3: extra data"},
    {"NoObject", "[]", "the file: not an object"},
    {"UnknownKey", R"({"colour": 1})", "colour: unknown key"},
    {"UnknownKeyInside", R"({"rates": {"paintMiBps": 1}})", "rates.paintMiBps: unknown key"},
    {"NoList", R"({"devices": {}})", "devices: not an array"},
    {"NoNumber", R"({"rates": {"verifyMiBps": "fast"}})", "rates.verifyMiBps: not a whole number"},
    {"Fraction", R"({"rates": {"verifyMiBps": 1.5}})", "rates.verifyMiBps: not a whole number"},
    {"Negative", R"({"rates": {"verifyMiBps": -1}})", "rates.verifyMiBps: out of range"},
    {"TooLarge", R"({"rates": {"verifyMiBps": 4294967296}})", "rates.verifyMiBps: out of range"},
    {"NoFlag", R"({"system": {"passThroughSupport": 1}})", "system.passThroughSupport: not true or false"},
    {"NoText", R"({"controllers": [{"id": 7}]})", "controllers[0].id: not a text"},
    {"MissingKey", R"({"controllers": [{"id": "C"}]})", "controllers[0].name: missing"},
    {"EmptyId", R"({"engines": [{"id": ""}]})", "engines[0].id: is empty"},
    {"LongId", R"({"engines": [{"id": "123456789012345678901234"}]})", "engines[0].id: longer than 23 bytes"},
    {"NulInText", R"({"engines": [{"id": "a\u0000b"}]})", "engines[0].id: holds a NUL"},
    {"UnknownWord",
     R"({"controllers": [{"id": "A", "name": "", "type": "SATA"}, {"id": "B", "name": "", "type": "FOO"}]})",
     "controllers[1].type: unknown word \"FOO\""},
    {"UnknownWordInSet", R"({"engines": [{"id": "E", "rwhPolicies": ["RWH_OFF", "RWH_ON"]}]})",
     "engines[0].rwhPolicies[1]: unknown word \"RWH_ON\""},
    {"ShortAddress", R"({"controllers": [{"id": "A", "address": [1, 2, 3]}]})",
     "controllers[0].address: an address has four numbers from 0 to 255"},
    {"LargeAddress", R"({"controllers": [{"id": "A", "address": [1, 2, 3, 256]}]})",
     "controllers[0].address[3]: an address has four numbers from 0 to 255"},
    {"SameId", R"({"engines": [{"id": "A"}, {"id": "A"}]})",
     "engines[1].id: \"A\" is taken by another object"},
    {"SameHandle", R"({"engines": [{"id": "A", "handle": 7}, {"id": "B", "handle": 7}]})",
     "engines[1].handle: 7 is taken by engines[0]"},
    {"HandleOfASession", R"({"engines": [{"id": "A", "handle": 2147483648}]})",
     "engines[0].handle: out of range"},
    {"ReferenceToNothing", R"({"controllers": [{"id": "C", "name": "", "type": "SATA", "engine": "E"}]})",
     "controllers[0].engine: no object has the id \"E\""},
    {"ReferenceToAnotherKind", R"({"controllers": [{"id": "C", "name": "", "type": "SATA", "engine": "C"}]})",
     "controllers[0].engine: \"C\" is an object of another kind"},
};

const BadScenario kContents[] = {
    {"LevelTwice",
     R"({"engines": [{"id": "E", "levels": [
        {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
         "stripSizes": ["SIZE_64KB"]},
        {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB",
         "stripSizes": ["SIZE_64KB"]}]}]})",
     "engines[0].levels[1].level: stands twice"},
    {"DefaultStripNotOffered",
     R"({"engines": [{"id": "E", "levels": [
        {"level": "RAID_0", "minDisks": 2, "maxDisks": 4, "defaultStripSize": "SIZE_64KB"}]}]})",
     "engines[0].levels[0].defaultStripSize: is not one of stripSizes"},
    {"EnabledButNotSupported",
     R"({"controllers": [{"id": "C", "name": "", "type": "SATA", "rohiEnabled": true}]})",
     "controllers[0].rohiEnabled: needs rohiSupported"},
    {"DiskWithoutSize", machineWith(R"(, {"id": "d4", "controller": "C"})", ""),
     "devices[4].totalSize: a disk needs more than 8 MiB"},
    {"MissingState",
     machineWith(R"(, {"id": "d4", "controller": "C", "totalSize": 1056964608, "state": "MISSING"})", ""),
     "devices[4].state: unknown word \"MISSING\""},
    {"SpareForWithoutSpare",
     machineWith(R"(, {"id": "d4", "controller": "C", "totalSize": 1056964608, "spareFor": "A"})",
                 R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}])"),
     "devices[4].spareFor: needs \"spare\""},
    {"BayOfNoFirstDevice",
     machineWith(R"(, {"id": "d4", "controller": "D", "totalSize": 1056964608, "bay": "d4"})", ""),
     "devices[4].bay: is not the first device of a bay"},
    {"TwoInABay",
     machineWith(R"(, {"id": "d4", "controller": "D", "totalSize": 1056964608, "bay": "d3"})", ""),
     "devices[4].presence: another device is in its bay"},
    {"BayOfAnotherController",
     machineWith(R"(, {"id": "d4", "controller": "C", "totalSize": 1056964608, "bay": "d3"})", ""),
     "devices[4].bay: is on another controller"},
    {"PortToItself", R"({"controllers": [{"id": "C", "name": "", "type": "SATA"}],
                         "ports": [{"id": "P", "device": "C", "connectedTo": "P"}]})",
     "ports[0].connectedTo: a port cannot be connected to itself"},
    {"ThreePortsOnACable", R"({"controllers": [{"id": "C", "name": "", "type": "SATA"}],
                         "ports": [{"id": "P", "device": "C", "connectedTo": "Q"}, {"id": "Q", "device": "C"},
                                   {"id": "R", "device": "C", "connectedTo": "Q"}]})",
     "ports[2].connectedTo: the far port is connected to another"},
    {"ArrayWithoutDisks", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": []}])"),
     "arrays[0].disks: an array needs a disk"},
    {"DiskTwice", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d0"]}])"),
     "arrays[0].disks[0]: stands twice"},
    {"DiskInTwoArrays", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]},
                                     {"id": "B", "name": "b", "disks": ["d2", "d1"]}])"),
     "arrays[1].disks[1]: is a member of another array"},
    {"DisksOfTwoControllers",
     machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d3"]}])"),
     "arrays[0].disks[1]: is on another controller than the first disk"},
    {"ArrayWithoutEngine", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d3"]}])"),
     "arrays[0].disks: their controller has no RAID engine"},
    {"LevelUnknownToTheEngine", volumeWith(R"("raidLevel": "RAID_1")"),
     "volumes[0].raidLevel: the engine has no such level"},
    {"LevelNeedsMoreDisks", volumeWith(R"("raidLevel": "RAID_5")"),
     "volumes[0].raidLevel: does not go with 2 disks on this engine"},
    {"StripUnknownToTheEngine", volumeWith(R"("raidLevel": "RAID_0", "stripSize": "SIZE_2KB")"),
     "volumes[0].stripSize: the engine does not have it at this level"},
    {"TooLargeAVolume", volumeWith(R"("raidLevel": "RAID_0", "size": 2097153024)"),
     "volumes[0].size: the volumes of the array take 1049624576 bytes of each disk, and a disk has "
     "1048576000"},
    {"HalfASector", volumeWith(R"("raidLevel": "RAID_0", "size": 1048576100)"),
     "volumes[0].size: is no whole number of sectors"},
    {"BadName", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}],
        "volumes": [{"id": "V", "name": " v", "array": "A", "raidLevel": "RAID_0"}])"),
     "volumes[0].name: is no volume name"},
    {"SameName", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}],
        "volumes": [{"id": "V", "name": "v", "array": "A", "raidLevel": "RAID_0", "size": 1048576},
                    {"id": "W", "name": "v", "array": "A", "raidLevel": "RAID_0"}])"),
     "volumes[1].name: is taken by another volume"},
    {"StaleStranger", volumeWith(R"("raidLevel": "RAID_0", "stale": ["d2"])"),
     "volumes[0].stale[0]: is not a disk of the volume's array"},
    {"StaleTwice", volumeWith(R"("raidLevel": "RAID_0", "stale": ["d0", "d0"])"),
     "volumes[0].stale[0]: stands twice"},
    {"BlankButNotStale", volumeWith(R"("raidLevel": "RAID_0", "blank": ["d0"])"),
     "volumes[0].blank[0]: is not among the stale"},
    {"CaughtUpButNotStale", volumeWith(R"("raidLevel": "RAID_0", "size": 1048576,
                   "work": {"kind": "MIGRATE", "catchUp": ["d0"]})"),
     "volumes[0].work.catchUp[0]: is not among the stale"},
    {"OrdinalTwice", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}],
        "volumes": [{"id": "V", "name": "v", "array": "A", "raidLevel": "RAID_0", "size": 1048576,
                     "arrayOrdinal": 0},
                    {"id": "W", "name": "w", "array": "A", "raidLevel": "RAID_0", "arrayOrdinal": 0}])"),
     "volumes[1].arrayOrdinal: is taken in its array"},
    {"EmptyArray", machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}])"),
     "arrays[0].disks: no volume stands on them, and the engine has no empty arrays"},
    {"OddRaid10", strictMachineWith(R"("disks": ["s0", "s1", "s2"])", R"("raidLevel": "RAID_10")"),
     "volumes[0].raidLevel: does not go with 3 disks on this engine"},
    {"OddRaid10BeforeAMigration",
     strictMachineWith(R"("disks": ["s0", "s1", "s2"])", R"("raidLevel": "RAID_0", "size": 1048576,
         "work": {"kind": "MIGRATE", "sourceLevel": "RAID_10"})"),
     "volumes[0].work.sourceLevel: does not go with the number of source disks"},
    {"MemberOver2Tb", strictMachineWith(R"("disks": ["s0", "large"])", R"("raidLevel": "RAID_0")"),
     "arrays[0].disks[1]: is over 2 TiB, and its controller takes no such disks"},
    {"MemberOfAnotherMake", strictMachineWith(R"("disks": ["s0", "foreign"])", R"("raidLevel": "RAID_0")"),
     "arrays[0].disks[1]: is no Ordan drive, and the engine takes no others"},
    {"X8BesideRedundancy",
     strictMachineWith(R"("disks": ["s0", "s1", "s2", "x8"])", R"("raidLevel": "RAID_10")"),
     "volumes[0].raidLevel: X8 disks are for RAID_0 only"},
    {"SpareOver2Tb", machineWith(strictDisk("large", R"("totalSize": 3000000000000, "spare": true)"), ""),
     "devices[4].spare: is over 2 TiB, and its controller takes no such disks"},
    {"SpareWithoutEngine",
     machineWith(R"(, {"id": "d4", "controller": "D", "totalSize": 1056964608, "spare": true})", ""),
     "devices[4].spare: its controller has no RAID engine"},
    {"WriteHoleOfRaid0", volumeWith(R"("raidLevel": "RAID_0", "rwhPolicy": "RWH_DISTRIBUTED")"),
     "volumes[0].rwhPolicy: the engine does not have it"},
    {"JournalWithoutPolicy", volumeWith(R"("raidLevel": "RAID_0", "journalingDrive": "d2")"),
     "volumes[0].journalingDrive: goes with the policy RWH_JOURNALING_DRIVE and no other"},
    {"WorkWithoutDisk", volumeWith(R"("raidLevel": "RAID_0", "work": {"kind": "REBUILD"})"),
     "volumes[0].work.disk: is not a disk of the volume's array"},
    {"VerifyOfRaid0", volumeWith(R"("raidLevel": "RAID_0", "work": {"kind": "VERIFY"})"),
     "volumes[0].work.kind: is for redundant levels only"},
    {"MigrationWithoutSize", volumeWith(R"("raidLevel": "RAID_0", "work": {"kind": "MIGRATE"})"),
     "volumes[0].size: a volume that migrates needs one"},
    {"MigrationFromAStranger",
     volumeWith(
         R"("raidLevel": "RAID_0", "size": 1048576, "work": {"kind": "MIGRATE", "sourceDisks": ["d2"]})"),
     "volumes[0].work.sourceDisks[0]: is not a disk of the volume's array"},
    {"MigrationFromNoData", volumeWith(R"("raidLevel": "RAID_0", "size": 1048576,
                   "work": {"kind": "MIGRATE", "sourceLevel": "RAID_5", "sourceDisks": ["d0"]})"),
     "volumes[0].work.sourceLevel: does not go with the number of source disks"},
    {"WorkPastItsEnd", volumeWith(R"("raidLevel": "RAID_0", "size": 1048576,
                   "work": {"kind": "MIGRATE", "elapsedMs": 9, "totalMs": 9})"),
     "volumes[0].work.elapsedMs: must be less than totalMs"},
};

INSTANTIATE_TEST_SUITE_P(Form, RefusedScenario, testing::ValuesIn(kForms), ByName());
INSTANTIATE_TEST_SUITE_P(Content, RefusedScenario, testing::ValuesIn(kContents), ByName());

const Volume& volumeOf(const Machine& machine, const std::string& name) {
  for (const auto& entry : machine.volumes) {
    if (entry.second.name == name) return entry.second;
  }
  throw std::out_of_range(name);
}

TEST(Scenario, AnEmptyFileIsAnEmptyMachine) {
  const Machine machine = readScenario("{}");
  EXPECT_EQ(machine.controllers.size(), 0U);
  EXPECT_EQ(machine.nextHandle, 1U);
}

TEST(Scenario, HandlesAreGivenInTheOrderOfTheFileAndAboveTheGreatestGiven) {
  const Machine machine =
      readScenario(R"({"engines": [{"id": "A"}, {"id": "B", "handle": 10}, {"id": "C"}]})");
  EXPECT_EQ(machine.engines.at(11).id, "A");
  EXPECT_EQ(machine.engines.at(10).id, "B");
  EXPECT_EQ(machine.engines.at(12).id, "C");
  EXPECT_EQ(machine.nextHandle, 13U);
}

TEST(Scenario, APortIsConnectedFromBothEnds) {
  const Machine machine = readScenario(R"({"controllers": [{"id": "C", "name": "", "type": "SATA"}],
      "ports": [{"id": "P", "device": "C", "connectedTo": "Q"}, {"id": "Q", "device": "C"}]})");
  EXPECT_EQ(machine.ports.at(2).connectedTo, 3U);
  EXPECT_EQ(machine.ports.at(3).connectedTo, 2U);
}

TEST(Scenario, AVolumeWithoutSizeTakesAllThatIsFree) {
  const Machine machine = readScenario(volumeWith(R"("raidLevel": "RAID_0")"));
  EXPECT_EQ(volumeOf(machine, "v").size, 2000 * kMiB);
}

TEST(Scenario, AFailedMemberDegradesARedundantVolume) {
  Machine machine = readScenario(
      machineWith(R"(, {"id": "d4", "controller": "C", "totalSize": 1056964608, "state": "FAILED"})",
                  R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1", "d4"]}],
           "volumes": [{"id": "V", "name": "v", "array": "A", "raidLevel": "RAID_5"}])"));
  EXPECT_EQ(stateOf(machine, volumeOf(machine, "v")), VolumeState::DEGRADED);
  EXPECT_EQ(findViolation(machine), "");
}

TEST(Scenario, AStateIsShortForAFactAndFactsStandBesideEachOther) {
  const std::string disks = R"(, {"id": "d4", "controller": "C", "totalSize": 1056964608, "state": "LOCKED"},
      {"id": "d5", "controller": "C", "totalSize": 1056964608, "locked": true},
      {"id": "d6", "controller": "C", "totalSize": 1056964608, "state": "UNSUPPORTED", "failed": true,
       "smartEvent": true})";
  const std::string kept = writeScenario(readScenario(machineWith(disks, "")));
  std::map<std::string, const EndDevice*> byId;
  const Machine machine = readScenario(kept);
  for (const auto& entry : machine.devices) byId[entry.second.id] = &entry.second;
  for (const char* const id : {"d4", "d5"}) EXPECT_EQ(stateOf(*byId[id]), DiskState::LOCKED) << id;
  EXPECT_EQ(stateOf(*byId["d6"]), DiskState::FAILED);
  EXPECT_EQ(byId["d6"]->condition, DiskState::UNSUPPORTED);
  EXPECT_TRUE(byId["d6"]->smartEvent);
}

TEST(Scenario, AVolumeThatLeavesItsOrdinalOutTakesTheFirstFreeOne) {
  const Machine machine =
      readScenario(machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1"]}],
        "volumes": [{"id": "V", "name": "v", "array": "A", "raidLevel": "RAID_0", "size": 1048576},
                    {"id": "W", "name": "w", "array": "A", "raidLevel": "RAID_0", "arrayOrdinal": 0}])"));
  EXPECT_EQ(volumeOf(machine, "v").ordinal, 1U);
  EXPECT_EQ(volumeOf(machine, "w").ordinal, 0U);
}

TEST(Scenario, WorkWithoutATimeTakesTheTimeOfItsRate) {
  const Machine machine =
      readScenario(machineWith("", R"(, "arrays": [{"id": "A", "name": "a", "disks": ["d0", "d1", "d2"]}],
              "rates": {"verifyMiBps": 100},
              "volumes": [{"id": "V", "name": "v", "array": "A", "raidLevel": "RAID_5", "work": {"kind": "VERIFY"}}])"));
  EXPECT_EQ(volumeOf(machine, "v").work->totalMs, 10000U);
}

struct WholeScenario {
  std::string name;
  std::string json;
};

void PrintTo(const WholeScenario& row, std::ostream* stream) { *stream << row.name; }

class AcceptedScenario : public testing::TestWithParam<WholeScenario> {};

TEST_P(AcceptedScenario, IsConsistent) { EXPECT_EQ(findViolation(readScenario(GetParam().json)), ""); }

TEST_P(AcceptedScenario, IsTheSameWrittenAndReadAgain) {
  const std::string once = writeScenario(readScenario(GetParam().json));
  EXPECT_EQ(writeScenario(readScenario(once)), once);
}

INSTANTIATE_TEST_SUITE_P(Scenario, AcceptedScenario,
                         testing::Values(WholeScenario{"Empty", "{}"},
                                         WholeScenario{"Embedded", std::string(embeddedScenario())},
                                         WholeScenario{"Workbench", kWorkbench},
                                         WholeScenario{"Generated", writeScenario(generateMachine(200))}),
                         ByName());

TEST(GeneratedScenario, HasAsManyDevicesAsAsked) {
  for (const std::uint32_t devices : {1U, 3U, 63U, 64U, 65U, 1000U}) {
    const Machine machine = readScenario(writeScenario(generateMachine(devices)));
    EXPECT_EQ(machine.devices.size(), devices);
    EXPECT_EQ(machine.controllers.size(), (devices + 63) / 64);
    EXPECT_EQ(findViolation(machine), "");
  }
}

TEST(EmbeddedScenario, ShowsAMachineWorthLookingAt) {
  const Machine machine = readScenario(embeddedScenario());
  EXPECT_EQ(machine.engines.size(), 2U);
  EXPECT_EQ(machine.controllers.size(), 4U);
  EXPECT_EQ(machine.arrays.size(), 3U);
  EXPECT_EQ(machine.volumes.size(), 4U);
  EXPECT_EQ(stateOf(machine, volumeOf(machine, "Archive")), VolumeState::DEGRADED);
  EXPECT_NE(volumeOf(machine, "Database").journalingDrive, 0U);
}

}  // namespace
}  // namespace simulator
