#include "plan/affected_objects.h"

#include <gmock/gmock.h>

#include "insight/machine/small_machine.h"
#include "insight/plan/small_changes.h"
#include "support/body.h"
#include "support/by_name.h"

namespace insight {

namespace {

using Ids = std::vector<std::wstring>;

/// The small machine, and beside it: the volume W on the array A, too; D2 failed, and so V degraded; the
/// spare S with the journal of both; a free disk F; D0 in the port P, which is plugged into Q.
MachineView busyMachine() {
  MachineView machine = smallMachine();
  machine.disks[2].state = L"FAILED";
  DiskView free = machine.disks[3];
  free.id = L"F";
  free.usage = L"PASS_THROUGH";
  machine.disks.push_back(free);
  machine.volumes[0].state = L"DEGRADED";
  machine.volumes[0].journalingDriveId = L"S";
  machine.volumes.push_back(machine.volumes[0]);
  machine.volumes[1].id = L"W";
  machine.volumes[1].state = L"NORMAL";
  machine.ports = {{L"P", L"D0", L"Q"}, {L"Q", L"C", L"P"}, {L"R", L"C", {}}};
  machine.index();
  return machine;
}

struct MetRow {
  std::string name;
  const wchar_t* objectType;
  const wchar_t* objectId;
  const wchar_t* type;
  const wchar_t* relation;
  const wchar_t* where;
  Ids met;
};

class ObjectsMet : public testing::TestWithParam<MetRow> {};

TEST_P(ObjectsMet, AreThoseInTheRelationThatStandSo) {
  const MetRow& row = GetParam();
  const Operation operation = changeOf(row.objectType);
  const RequestArguments arguments(operation, {row.objectId}, {});
  OperationEffect effect;
  effect.type = row.type;
  effect.argument = L"objectId";
  effect.relation = row.relation;
  effect.where = row.where;
  EXPECT_EQ(objectsMetBy(effect, arguments, busyMachine()), row.met);
}

INSTANTIATE_TEST_SUITE_P(
    Relations, ObjectsMet,
    testing::Values(MetRow{"Itself", L"volume", L"V", L"volume", L"itself", L"", {L"V"}},
                    MetRow{"ItselfWhichIsNotThere", L"volume", L"X", L"volume", L"itself", L"", {}},
                    MetRow{"ArrayOfAVolume", L"volume", L"V", L"array", L"array", L"", {L"A"}},
                    MetRow{"ArrayOfAMember", L"disk", L"D0", L"array", L"array", L"", {L"A"}},
                    MetRow{"ArrayOfAFreeDisk", L"disk", L"F", L"array", L"array", L"", {}},
                    MetRow{"DisksOfAVolume", L"volume", L"V", L"disk", L"disks", L"", {L"D0", L"D1", L"D2"}},
                    MetRow{"VolumesOfAnArray", L"array", L"A", L"volume", L"volumes", L"", {L"V", L"W"}},
                    MetRow{"VolumesOnADisk", L"disk", L"D0", L"volume", L"volumes", L"", {L"V", L"W"}},
                    MetRow{"Journal", L"volume", L"V", L"disk", L"journal", L"", {L"S"}},
                    MetRow{"Ports", L"disk", L"D0", L"port", L"ports", L"", {L"P", L"Q"}},
                    MetRow{"VolumesBesideADisk", L"disk", L"F", L"volume", L"neighbours", L"", {L"V", L"W"}},
                    MetRow{"NothingOfAnotherWord", L"disk", L"D0", L"port", L"friends", L"", {}}),
    ByName());

INSTANTIATE_TEST_SUITE_P(
    Situations, ObjectsMet,
    testing::Values(
        MetRow{"ArrayThatAnotherVolumeKeeps", L"volume", L"V", L"array", L"array", L"kept", {L"A"}},
        MetRow{"ArrayThatIsNotEmptied", L"volume", L"V", L"array", L"array", L"emptied", {}},
        MetRow{"Member", L"disk", L"D0", L"disk", L"itself", L"member", {L"D0"}},
        MetRow{"NoSingleDisk", L"disk", L"D0", L"disk", L"itself", L"single", {}},
        MetRow{"SingleDisk", L"disk", L"F", L"disk", L"itself", L"single", {L"F"}},
        MetRow{"NoMember", L"disk", L"F", L"disk", L"itself", L"member", {}},
        MetRow{"LostMembers", L"volume", L"V", L"disk", L"disks", L"lost", {L"D2"}},
        MetRow{"LostMembersBesideADisk", L"disk", L"F", L"disk", L"neighbours", L"lost", {L"D2"}},
        MetRow{"Degraded", L"array", L"A", L"volume", L"volumes", L"degraded", {L"V"}},
        MetRow{"SharedJournal", L"volume", L"V", L"disk", L"journal", L"unshared", {}},
        MetRow{"OwnPort", L"disk", L"D0", L"port", L"ports", L"own", {L"P"}},
        MetRow{"PortOfTheOtherSide", L"disk", L"D0", L"port", L"ports", L"plugged", {L"Q"}},
        MetRow{"NothingUnderAnotherWord", L"disk", L"D0", L"disk", L"itself", L"blue", {}}),
    ByName());

TEST(ObjectsMetAlone, AreEmptiedAndUnshared) {
  MachineView machine = busyMachine();
  machine.volumes.pop_back();
  machine.index();
  const Operation operation = changeOfVolume();
  const RequestArguments arguments(operation, {L"V", L"change"}, {});
  const auto met = [&](const wchar_t* type, const wchar_t* relation, const wchar_t* where) {
    return objectsMetBy({L"changes", type, L"volumeId", relation, {}, {}, where, {}, {}}, arguments, machine);
  };
  EXPECT_EQ(met(L"array", L"array", L"emptied"), Ids{L"A"});
  EXPECT_EQ(met(L"array", L"array", L"kept"), Ids());
  EXPECT_EQ(met(L"disk", L"disks", L"emptied"), (Ids{L"D0", L"D1", L"D2"}));
  EXPECT_EQ(met(L"disk", L"journal", L"unshared"), Ids{L"S"});
}

TEST(ObjectsMetThatAreNotThere, AreForgottenRatherThanEmptiedOrUnshared) {
  MachineView machine = busyMachine();
  machine.volumes.pop_back();
  machine.disks[2].state = L"MISSING";
  machine.disks[3].state = L"MISSING";
  machine.index();
  const Operation operation = changeOfVolume();
  const RequestArguments arguments(operation, {L"V", L"change"}, {});
  const auto met = [&](const wchar_t* relation, const wchar_t* where) {
    return objectsMetBy({L"goes", L"disk", L"volumeId", relation, {}, {}, where, {}, {}}, arguments, machine);
  };
  EXPECT_EQ(met(L"disks", L"emptied"), (Ids{L"D0", L"D1"}));
  EXPECT_EQ(met(L"disks", L"forgotten"), Ids{L"D2"});
  EXPECT_EQ(met(L"disks", L"missing"), Ids{L"D2"});
  EXPECT_EQ(met(L"disks", L"lost"), Ids());
  EXPECT_EQ(met(L"journal", L"unshared"), Ids());
  EXPECT_EQ(met(L"journal", L"forgotten"), Ids{L"S"});
  machine.disks[1].state = L"FAILED";
  EXPECT_EQ(met(L"disks", L"missing"), Ids()) << "nobody knows which of two leaves";
  EXPECT_EQ(met(L"disks", L"lost"), (Ids{L"D1", L"D2"}));
}

TEST(ObjectsMetButSome, AreNotThoseOfTheOtherArgument) {
  const Operation operation = changeOfVolume();
  const ServiceObject order = body({{"disks", list({"S", "F"})}, {"diskId", "S"}});
  const RequestArguments arguments(operation, {L"V", L"change"}, order);
  EXPECT_EQ(objectsMetBy({L"overwritten", L"disk", L"disks", L"itself", {}, {}, {}, L"diskId", {}}, arguments,
                         busyMachine()),
            Ids{L"F"});
}

}  // namespace

}  // namespace insight
